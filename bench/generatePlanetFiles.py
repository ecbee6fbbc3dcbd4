#!/usr/bin/env python3
"""Made-up antennas as Planet files: generatePlanetFiles.py FOLDER COUNT

The same count gives the same files. Each has the header that makers write, then 360 points of azimuth and 360 of
elevation, one degree apart: a main lobe, side lobes of its own number and a ripple, so that no two antennas are alike.
"""
import math
import pathlib
import random
import sys

DEEPEST = 45.0  # dB below the peak; patterns of makers end about there


def lobe(angle, width, lobes, ripple):
    """Attenuation in dB at an angle off the peak, both cuts alike."""
    off = math.radians((angle + 180) % 360 - 180)
    main = 12 * (math.degrees(off) / width) ** 2
    side = 18 + 9 * abs(math.sin(lobes * off)) + ripple
    return min(main, side, DEEPEST)


def cut(title, make, width, lobes):
    lines = [f"{title} 360"]
    for angle in range(360):
        loss = 0.0 if angle == 0 else lobe(angle, width, lobes, make.uniform(0, 3))
        lines.append(f"{angle} {loss:.2f}")
    return lines


def antenna(number):
    """The lines of one file."""
    make = random.Random(number)
    frequency = make.choice((450, 800, 900, 1800, 2100, 2600, 3500))
    width, height = make.uniform(20, 110), make.uniform(4, 30)
    gain = 10 * math.log10(32000 / (width * height))
    return [
        f"NAME Bench {number:05d} {frequency} MHz",
        "MAKE Nobody",
        f"FREQUENCY {frequency}",
        f"H_WIDTH {width:.1f}",
        f"V_WIDTH {height:.1f}",
        f"FRONT_TO_BACK {make.uniform(20, 35):.1f}",
        f"GAIN {gain:.2f} {make.choice(('dBd', 'dBi'))}",
        f"TILT {make.randrange(0, 10)}",
        *cut("HORIZONTAL", make, width, make.randrange(3, 9)),
        *cut("VERTICAL", make, height, make.randrange(6, 14)),
    ]


def generate(folder, count):
    """Writes the files that are not there yet and gives their paths in order."""
    folder = pathlib.Path(folder)
    folder.mkdir(parents=True, exist_ok=True)
    paths = [folder / f"{number:05d}.msi" for number in range(1, count + 1)]
    for number, path in enumerate(paths, 1):
        if not path.exists():
            path.write_bytes("".join(line + "\r\n" for line in antenna(number)).encode("ascii"))
    return paths


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    generate(sys.argv[1], int(sys.argv[2]))
