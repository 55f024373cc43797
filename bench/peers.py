#!/usr/bin/env python3
"""What an engineer would script: each operation of the program, done with the means of Python.

`peers.py <operation> <arguments>` does one and prints "seconds <number>", as bench_operations does.
"""

import csv
import itertools
import json
import os
import re
import resource
import shutil
import subprocess
import sys
import time
from concurrent.futures import ThreadPoolExecutor

import h5py

MODELS = "CreatorData/0/PhysicsModels/"
DATASETS = [
    "CreatorData/0/Interactions",
    MODELS + "SurfaceSurface/Hertz-Mindlin with JKR/data",
    MODELS + "SurfaceSurface/Linear Spring/data",
    MODELS + "SurfaceSurface/Hysteretic Spring/interactions",
    MODELS + "SurfaceSurface/Edinburgh Elasto-Plastic Adhesion/data",
    MODELS + "SurfaceGeometry/Hertz-Mindlin with JKR/data",
]


def read_deck(data_file):
    """Every dataset into a dict from the pair's key to its numbers."""
    deck = {}
    with h5py.File(data_file, "r") as file:
        for path in DATASETS:
            rows = file[path][()]
            names = [name for name in rows.dtype.names if rows.dtype[name].kind == "S"]
            numbers = [name for name in rows.dtype.names if name not in names]
            keys = zip(*(rows[name].tolist() for name in names))
            values = zip(*(rows[name].tolist() for name in numbers))
            deck[path] = {b"<>".join(key).decode(): value for key, value in zip(keys, values)}
    return deck


def write_matrix(columns_file, path):
    """All combinations of the columns' values, the last column changing fastest."""
    with open(columns_file) as file:
        job = json.load(file)
    formats = ("%s" if isinstance(column[0], str) else "%g" for column in job["columns"])
    line = "%d," + ",".join(formats) + "," + job["options"] + "\n"
    with open(path, "w") as file:
        file.write(job["heading"] + "\n")
        for number, row in enumerate(itertools.product(*job["columns"])):
            file.write(line % (number, *row))


def load_matrix(path):
    """The cases as lists of floats and flags."""
    flags = {"true": 1.0, "false": 0.0}
    with open(path, newline="") as file:
        lines = csv.reader(file)
        next(lines)
        return [[flags[cell] if cell in flags else float(cell) for cell in line[1:-1]]
                for line in lines]


def prepare_folders(job, case_root):
    """A folder per case with copies of all files, the case's values in the copy of the deck."""
    cases = load_matrix(os.path.join(job, "input_jobID-Matrix.csv"))
    additional = [name for name in os.listdir(job) if name.endswith((".stl", ".txt"))
                  and name != "Additional File Directory.txt"]
    os.mkdir(case_root)
    for number, values in enumerate(cases):
        folder = os.path.join(case_root, f"Job{number}")
        data = os.path.join(folder, f"deck{number}_data")
        os.makedirs(data)
        for ending in (".zek", ".ynd"):
            shutil.copy(os.path.join(job, "deck" + ending), f"{folder}/deck{number}{ending}")
        for name in additional:
            shutil.copy(os.path.join(job, name), folder)
        shutil.copy(os.path.join(job, "deck_data/0.h5"), data)
        write_values(os.path.join(data, "0.h5"), values)


def write_values(data_file, values):
    """The first columns are the interactions in the order of their keys."""
    with h5py.File(data_file, "r+") as file:
        for path in (DATASETS[0], DATASETS[2]):
            dataset = file[path]
            rows = dataset[()]
            numbers = [name for name in rows.dtype.names if rows.dtype[name].kind == "f"]
            rows.sort(order=rows.dtype.names[0])
            for row, name in itertools.product(range(len(rows)), numbers):
                rows[name][row] = values.pop(0)
            dataset[()] = rows


def run_cases(simulator, count, at_a_time):
    with ThreadPoolExecutor(int(at_a_time)) as pool:
        list(pool.map(lambda number: subprocess.run([simulator, str(number)], check=True),
                      range(int(count))))


def turned(path):
    """The header rows of a simulator's CSV, then its columns as rows."""
    rows, columns, inside, table = [], [], False, False
    with open(path, newline="") as file:
        for line in csv.reader(file):
            if line[0] == "EXTRACTED DATA":
                inside = True
                continue
            if line[0] in ("TIME:", "TIME"):
                table = line[0] == "TIME"
            if inside:
                (columns if table else rows).append(line)
    return rows + [list(column) for column in zip(*columns)]


def collate(case_root, path):
    cases = {}
    for folder, _, names in os.walk(case_root):
        for name in names:
            if name.endswith(".csv"):
                number = int(re.match(r"Job(\d+)", os.path.basename(folder))[1])
                cases[number] = turned(os.path.join(folder, name))
    with open(path, "w") as file:
        for number in sorted(cases):
            for row in cases[number]:
                file.write(f"{number}," + ",".join(row) + ",\n")
            file.write("\n")


OPERATIONS = {
    "deck-read": read_deck,
    "matrix-text": write_matrix,
    "matrix-load": load_matrix,
    "folders": prepare_folders,
    "run": run_cases,
    "collate": collate,
}

if __name__ == "__main__":
    begin = time.perf_counter()
    OPERATIONS[sys.argv[1]](*sys.argv[2:])
    print("seconds %.6f" % (time.perf_counter() - begin))
    print("peak_kib", resource.getrusage(resource.RUSAGE_SELF).ru_maxrss)
