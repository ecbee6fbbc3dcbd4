#!/usr/bin/env python3
"""The rival: Planet files into SQLite, file by file, as a script would be written for the job.

rivalImport.py [--one-transaction] [--no-sync] [--no-index] DATABASE FILE...

It does the import's whole work: the same header keywords, angles brought into range, attenuation made into gain, the
azimuth cut shifted to its peak, values held at the lowest valid one, an ID for each antenna, an index on the ID.
Without --one-transaction each antenna is a transaction of its own, so that a file that fails leaves nothing behind.
"""
import argparse
import sqlite3

LOWEST = -50.0

TABLES = """
CREATE TABLE antenna (id TEXT PRIMARY KEY, name TEXT, gain REAL, gain_units TEXT, f_low REAL, f_high REAL,
                      freq_units TEXT);
CREATE TABLE horizontal (id TEXT, angle REAL, value REAL);
CREATE TABLE vertical (id TEXT, angle REAL, value REAL);
"""
INDICES = """
CREATE INDEX horizontal_id ON horizontal (id);
CREATE INDEX vertical_id ON vertical (id);
"""


def azimuth(angle):
    while angle < 0:
        angle += 360
    while angle > 360:
        angle -= 360
    return angle


def elevation(angle):
    angle = -angle
    return angle + 360 if angle < -180 else angle


def read_header(lines, antenna):
    for line in lines:
        fields = line.split()
        if not fields:
            continue
        keyword = fields[0].upper()
        if keyword == "NAME":
            antenna["name"] = " ".join(fields[1:])
        elif keyword == "FREQUENCY":
            antenna["frequency"] = float(fields[1])
        elif keyword == "GAIN":
            antenna["gain"] = float(fields[1])
            antenna["units"] = fields[2] if len(fields) > 2 else "dBd"
        elif keyword == "HORIZONTAL":
            return
    raise ValueError("the file ends within its header")


def read_points(lines, gain, turn):
    points = []
    for line in lines:
        fields = line.split()
        try:
            points.append((turn(float(fields[0])), gain - abs(float(fields[1]))))
        except (ValueError, IndexError):
            if fields and fields[0].upper() == "VERTICAL":
                break
    return points


def read_planet(path):
    antenna = {"name": "", "frequency": 0.0, "gain": 0.0, "units": "dBd"}
    with open(path, encoding="cp1252") as file:
        lines = iter(file)
        read_header(lines, antenna)
        gain = antenna["gain"]
        horizontal = read_points(lines, gain, azimuth)
        vertical = read_points(lines, gain, elevation)
    if horizontal and antenna["units"][:2].upper() == "DB":
        offset = gain - max(value for _, value in horizontal)
        horizontal = [(angle, value + offset) for angle, value in horizontal]
    return antenna, horizontal, vertical


def store(connection, number, antenna, horizontal, vertical):
    identity = f"R0001{number:07d}"
    frequency = antenna["frequency"]
    connection.execute("INSERT INTO antenna VALUES (?, ?, ?, ?, ?, ?, 'MHz')",
                       (identity, antenna["name"], antenna["gain"], antenna["units"], frequency, frequency))
    for table, points in (("horizontal", horizontal), ("vertical", vertical)):
        connection.executemany(f"INSERT INTO {table} VALUES (?, ?, ?)",
                               ((identity, angle, max(value, LOWEST)) for angle, value in points))


def main():
    options = argparse.ArgumentParser()
    options.add_argument("--one-transaction", action="store_true")
    options.add_argument("--no-sync", action="store_true", help="leave the writing to the system, as after a close")
    options.add_argument("--no-index", action="store_true", help="an index on the antennas alone")
    options.add_argument("database")
    options.add_argument("files", nargs="+")
    chosen = options.parse_args()
    connection = sqlite3.connect(chosen.database, isolation_level=None)
    if chosen.no_sync:
        connection.execute("PRAGMA synchronous = OFF")
    connection.executescript(TABLES)
    if not chosen.no_index:
        connection.executescript(INDICES)
    if chosen.one_transaction:
        connection.execute("BEGIN")
    for number, path in enumerate(chosen.files, 1):
        antenna = read_planet(path)
        if not chosen.one_transaction:
            connection.execute("BEGIN")
        store(connection, number, *antenna)
        if not chosen.one_transaction:
            connection.execute("COMMIT")
    if chosen.one_transaction:
        connection.execute("COMMIT")
    connection.close()


if __name__ == "__main__":
    main()
