#!/usr/bin/env python3
"""Times the import of made-up Planet files against the rival, in one run.

importBench.py VANTRELIX MEASURE [--files N] [--rounds N] [--work FOLDER]

Each round runs every competitor once, one behind the other, so that whatever else the machine does meets them alike; a
ratio is taken within its round and the median of the rounds is told. Both libraries are compared point for point before
anything is said, and a difference ends the run. The last table has the peak memory for growing numbers of files.
"""
import argparse
import json
import os
import pathlib
import shutil
import sqlite3
import statistics
import subprocess
import sys
import tempfile

from generatePlanetFiles import generate

HERE = pathlib.Path(__file__).resolve().parent
LIBRARY = "AMSR0001"
HALF_DIGIT = 0.5e-4 + 1e-9  # the tables have four decimals
RIVALS = {
    "rival, a transaction an antenna": [],
    "the same, not waiting for the disk": ["--no-sync"],
    "the same, no index on the points": ["--no-sync", "--no-index"],
    "rival, one transaction": ["--one-transaction"],
}


class Bench:
    def __init__(self, chosen, work):
        self.vantrelix, self.measure = os.path.abspath(chosen.vantrelix), os.path.abspath(chosen.measure)
        self.work = pathlib.Path(work)
        self.suite, self.database = self.work / "suite", self.work / "rival.db"

    def measured(self, command):
        done = subprocess.run([self.measure, *map(str, command)], stderr=subprocess.PIPE, text=True, check=False)
        if done.returncode != 0:
            sys.exit(f"{command[0]} ended with {done.returncode}:\n{done.stderr[-2000:]}")
        figures = json.loads(done.stderr.strip().splitlines()[-1])
        figures["cpu"] = figures["user"] + figures["system"]
        return figures

    def asked(self, *arguments):
        command = [self.vantrelix, "--suite", self.suite, "--json", *arguments]
        return json.loads(subprocess.run(command, stdout=subprocess.PIPE, check=True).stdout)

    def run_ours(self, files):
        shutil.rmtree(self.suite, ignore_errors=True)
        self.asked("suite", "init", self.suite)
        return self.measured([self.vantrelix, "--suite", self.suite, "--json", "import", "generic", LIBRARY, *files])

    def run_rival(self, options, files):
        self.database.unlink(missing_ok=True)
        return self.measured([sys.executable, HERE / "rivalImport.py", *options, self.database, *files])

    # ---- Whether both did the same job ----

    def rows(self, prefix, fields):
        dump = self.asked("table", "dump", self.suite / "ANTENNAS" / f"{prefix}{LIBRARY[3:]}.DBF")
        return [tuple(row[field] for field in fields) for row in dump["rows"]]

    def compare(self, files):
        connection = sqlite3.connect(self.database)
        ours = self.rows("AMS", ("ATYPE_ID", "ANTENNA", "GAIN", "GAIN_UN", "F_LOW", "F_HIGH", "FREQ_UN"))
        same("antennas", ours, connection.execute("SELECT * FROM antenna ORDER BY id").fetchall(), len(files))
        for prefix, fields, table in (("AHD", ("HOR_AZ", "HOR_FIELD"), "horizontal"),
                                      ("AVD", ("VERT_ANGLE", "VERT_FIELD"), "vertical")):
            theirs = connection.execute(f"SELECT * FROM {table} ORDER BY id, rowid").fetchall()
            same(f"{table} points", self.rows(prefix, ("ATYPE_ID", *fields)), theirs, 360 * len(files))
        for identity, *_ in ours[:: max(1, len(ours) // 10)]:
            self.compare_shown(connection, identity)
        connection.close()

    def compare_shown(self, connection, identity):
        shown = self.asked("show", LIBRARY, identity)
        for table in ("horizontal", "vertical"):
            query = f"SELECT angle, value FROM {table} WHERE id = ? ORDER BY angle"
            same(f"{table} points shown of {identity}", [tuple(point) for point in shown[table]],
                 connection.execute(query, (identity,)).fetchall(), 360)


def alike(ours, theirs):
    if isinstance(ours, str) or isinstance(theirs, str):
        return str(ours).rstrip() == str(theirs)
    return ours is not None and theirs is not None and abs(ours - theirs) <= HALF_DIGIT


def same(what, ours, theirs, count):
    if len(ours) != count or len(theirs) != count:
        sys.exit(f"{what}: {len(ours)} of ours, {len(theirs)} of the rival's, {count} in the files")
    for mine, other in zip(ours, theirs):
        if not all(alike(a, b) for a, b in zip(mine, other)):
            sys.exit(f"{what}: {mine} of ours, {other} of the rival's")


def machine():
    name = "unknown processor"
    try:
        with open("/proc/cpuinfo", encoding="ascii", errors="replace") as lines:
            name = next(line.split(":", 1)[1].strip() for line in lines if line.startswith("model name"))
    except (OSError, StopIteration):
        pass
    return f"{name}, {os.cpu_count()} cores, Python {sys.version.split()[0]}, SQLite {sqlite3.sqlite_version}"


def race(bench, files, rounds):
    runs = {"vantrelix": []} | {name: [] for name in RIVALS}
    for number in range(rounds):
        runs["vantrelix"].append(bench.run_ours(files))
        for name, options in RIVALS.items():
            runs[name].append(bench.run_rival(options, files))
            if number == 0:
                bench.compare(files)
    return runs


def tell_race(runs):
    print("| | wall s | CPU s | times our wall | times our CPU |\n|---|---|---|---|---|")
    for name, figures in runs.items():
        best = [min(run[kind] for run in figures) for kind in ("wall", "cpu")]
        ratios = [statistics.median(run[kind] / ours[kind] for run, ours in zip(figures, runs["vantrelix"]))
                  for kind in ("wall", "cpu")]
        print(f"| {name} | {best[0]:.2f} | {best[1]:.2f} | {ratios[0]:.1f} | {ratios[1]:.1f} |", flush=True)


def tell_memory(bench, files):
    print("\n| files | vantrelix peak MiB | wall s | CPU s | rival peak MiB |\n|---|---|---|---|---|")
    for count in (100, 1000, 5000):
        ours, rival = bench.run_ours(files[:count]), bench.run_rival(["--no-sync"], files[:count])
        print(f"| {count} | {ours['peak_kib'] / 1024:.1f} | {ours['wall']:.2f} | {ours['cpu']:.2f} | "
              f"{rival['peak_kib'] / 1024:.1f} |", flush=True)


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("vantrelix")
    options.add_argument("measure")
    options.add_argument("--files", type=int, default=1000)
    options.add_argument("--rounds", type=int, default=5)
    options.add_argument("--work", help="where the files are; kept, and used again")
    chosen = options.parse_args()
    with tempfile.TemporaryDirectory() as scratch:
        work = pathlib.Path(chosen.work or scratch)
        files = [str(path) for path in generate(work / "planet", max(chosen.files, 5000))]
        bench = Bench(chosen, work)
        print(f"{machine()}\n\n{chosen.files} files, {chosen.rounds} rounds\n", flush=True)
        tell_race(race(bench, files[: chosen.files], chosen.rounds))
        tell_memory(bench, files)


if __name__ == "__main__":
    main()
