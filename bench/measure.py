#!/usr/bin/env python3
"""Runs the program's operations and their peers in alternation and prints a table; see `compare`."""

import argparse
import filecmp
import math
import os
import platform
import random
import shutil
import statistics
import subprocess
import sys
import tempfile
import time
from dataclasses import dataclass, field
from pathlib import Path
from typing import Callable, Optional

HERE = Path(__file__).resolve().parent
BUILD = HERE.parent / "build" / "bench"
OPERATIONS = BUILD / "bench" / "bench_operations"
SIMULATOR = BUILD / "bench" / "bench_simulator"
COMPANION = BUILD / "cases" / "tarnel-cases"
CORES = os.cpu_count()
os.environ["QT_QPA_PLATFORM"] = "offscreen"

Figures = dict[str, float]


def told(command, **variables) -> Figures:
    """Runs a command that times itself and prints lines of "<name> <number>"."""
    done = subprocess.run([str(word) for word in command], capture_output=True, text=True,
                          env={**os.environ, **variables})
    if done.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))}: {done.stderr}")
    return {name: float(value) for name, value in map(str.split, done.stdout.splitlines())}


def ours(operation, *arguments, **variables) -> Figures:
    return told([OPERATIONS, operation, *arguments], **variables)


def script(operation, *arguments) -> Figures:
    return told([sys.executable, HERE / "peers.py", operation, *arguments])


def timed(command, **variables) -> Figures:
    """Runs a shell command that doesn't time itself."""
    begin = time.perf_counter()
    subprocess.run(command, shell=True, check=True, stdout=subprocess.DEVNULL,
                   env={**os.environ, **variables})
    return {"seconds": time.perf_counter() - begin}


def fill_memory(size):
    """In a process of its own: what is started by this one inherits the largest size that it had."""
    if size > 0:
        subprocess.run([sys.executable, "-c", "import mmap, sys; size = int(sys.argv[1]); "
                        "mmap.mmap(-1, size)[::mmap.PAGESIZE] = bytes(size // mmap.PAGESIZE)",
                        str(size)], check=True)


@dataclass
class Operation:
    """What is done by us and by the peers; each takes the folder of the inputs."""
    name: str
    ours: Callable[[Path], Figures]
    peers: dict[str, Callable[[Path], Figures]]
    goals: dict[str, float]
    """The largest ratio of our time to a peer's."""
    most: Optional[float] = None
    """The largest time of ours, in seconds."""
    most_share: Optional[float] = None
    """The largest share of our own processor time in the wall time."""
    memory: int = 0
    """The bytes that a side fills anew: taken and given back before each side, so that none pays for
    what a virtual machine has returned to its host meanwhile."""
    note: Callable[[dict[str, list[Figures]]], str] = lambda figures: ""
    rounds: dict[str, list[Figures]] = field(default_factory=dict)

    def run_round(self, folder: Path):
        """Another side begins each round."""
        sides = [("ours", self.ours), *self.peers.items()]
        first = len(self.rounds.get("ours", [])) % len(sides)
        for name, side in sides[first:] + sides[:first]:
            fill_memory(self.memory)
            self.rounds.setdefault(name, []).append(side(folder))

    def seconds(self, side):
        return statistics.median(figures["seconds"] for figures in self.rounds[side])

    def ratio(self, peer):
        """Of two neighbours in time, since what else the machine does changes from round to round."""
        pairs = zip(self.rounds["ours"], self.rounds[peer])
        return statistics.median(mine["seconds"] / theirs["seconds"] for mine, theirs in pairs)

    def lines(self):
        note = self.note(self.rounds)
        mine = f"{self.seconds('ours'):.3f} s"
        if self.most is not None:
            met = "yes" if self.seconds("ours") <= self.most else "NO"
            yield [self.name, mine, "", "", "", f"{self.most} s", met, note]
        if self.most_share is not None:
            share = largest(self.rounds, "share")
            yield [f"{self.name}: own processor time", f"{100 * share:.1f} %", "wall time", "", "",
                   f"{100 * self.most_share:.0f} %", "yes" if share < self.most_share else "NO", note]
        for peer in self.peers:
            goal = self.goals.get(peer)
            met = "" if goal is None else "yes" if self.ratio(peer) <= goal else "NO"
            yield [self.name, mine, peer, f"{self.seconds(peer):.3f} s", f"{self.ratio(peer):.2f}",
                   "" if goal is None else f"{goal}", met, note]


def removed(path: Path, run: Callable[[Path], Figures]) -> Figures:
    """What was made is taken away again, untimed."""
    figures = run(path)
    shutil.rmtree(path)
    return figures


def largest(figures, name):
    return max(one[name] for one in figures["ours"])


def peak(figures):
    return f"peak {largest(figures, 'peak_kib') / 1024:.0f} MiB"


# The inputs, each made where it is asked for first.

def made(make):
    """Lets `make(folder, <numbers>)` return the path of an input and write it if it isn't there."""
    def path_of(folder: Path, *numbers) -> Path:
        path = folder / "-".join([make.__name__, *map(str, numbers)])
        if not path.exists():
            make(path, *numbers)
        return path
    return path_of


@made
def tables(path: Path, rows):
    """A deck with so many rows in each of its six datasets."""
    path.mkdir()
    ours("make-deck", path, rows)


@made
def job(path: Path, cases, megabytes):
    """Deck, job and columns of a job whose data file has about that size."""
    path.mkdir()
    ours("make-job", path, cases, megabytes)


@made
def few_cases(path: Path, cases):
    """The first cases of a job with a small data file: their run is to be measured, no copying."""
    shutil.copytree(job(path.parent, 10000, 0) / "JobSpec", path)
    matrix = path / "input_jobID-Matrix.csv"
    matrix.write_text("".join(matrix.read_text().splitlines(keepends=True)[:cases + 1]))


@made
def prepared(path: Path, cases):
    """Such cases, prepared to be run elsewhere."""
    ours("distributed", few_cases(path.parent, cases), path)


@made
def ended(path: Path, cases):
    """Such cases that have been run."""
    prepared(path.parent, cases).rename(path)
    companion("run", path, "-j", CORES, "--simulator", SIMULATOR)


@made
def template(path: Path):
    """The files of 1,000 prepared cases as links to the same files: what cp reads stays in memory."""
    source = job(path.parent, 1000, 2) / "JobSpec"
    for number in range(1000):
        case = path / f"Job{number}"
        (case / f"deck{number}_data").mkdir(parents=True)
        os.link(source / "deck_data" / "0.h5", case / f"deck{number}_data" / "0.h5")
        for ending in (".zek", ".ynd"):
            os.link(source / f"deck{ending}", case / f"deck{number}{ending}")
        for name in ("geometry.stl", "materials.txt", "settings.txt"):
            os.link(source / name, case / name)


@made
def results(path: Path, cases, lines):
    """Each case's CSV as the simulator exports it: 11 columns."""
    numbers = random.Random(7)
    rows = ["EXTRACTED DATA", "TIME:,0", "TIME," + ",".join(f"Query {n}" for n in range(1, 11))]
    for line in range(lines):
        rows.append(",".join([f"{line * 0.01:.2f}"] + [f"{numbers.random():.6g}" for _ in range(10)]))
    text = "\n".join(rows) + "\n"
    for number in range(cases):
        case = path / f"Job{number}"
        case.mkdir(parents=True)
        (case / "results.csv").write_text(text.replace("TIME:,0", f"TIME:,{number}"))


# The operations.

def deck_operations():
    deck = lambda folder, rows=20000: tables(folder, rows) / "deck.zek"
    data = lambda folder: tables(folder, 20000) / "deck_data" / "0.h5"
    return [
        Operation("deck read", lambda f: ours("deck-read", deck(f)),
                  {"h5py into dicts": lambda f: script("deck-read", data(f)),
                   "plain H5Dread": lambda f: ours("deck-plain-read", data(f))},
                  {"h5py into dicts": 1.0, "plain H5Dread": 2.5}, note=peak),
        Operation("tree and entries", lambda f: ours("tree", deck(f)),
                  {"our deck read": lambda f: ours("deck-read", deck(f)),
                   "half the rows": lambda f: ours("tree", deck(f, 10000))},
                  {"our deck read": 4, "half the rows": 2.2}, note=peak),
    ]


def held(figures):
    return f"{largest(figures, 'held_kib') / 50000:.1f} KiB held per case"


def matrix_operations():
    large = lambda folder: job(folder, 50000, 0)
    matrix = lambda folder: large(folder) / "JobSpec" / "input_jobID-Matrix.csv"
    columns = lambda folder: (large(folder) / "columns.json", folder / "script.csv")
    return [
        Operation("matrix, text alone",
                  lambda f: ours("matrix-text", large(f), 50000, f / "text.csv"),
                  {"script": lambda f: script("matrix-text", *columns(f))}, {"script": 0.35}),
        Operation("matrix with records", lambda f: ours("matrix", large(f), 50000, f),
                  {"script, text alone": lambda f: script("matrix-text", *columns(f))},
                  {"script, text alone": 1.0}, note=peak),
        Operation("matrix load", lambda f: ours("matrix-load", large(f) / "JobSpec"),
                  {"script, lists of floats": lambda f: script("matrix-load", matrix(f))},
                  {"script, lists of floats": 0.8}, note=held),
    ]


def folder_operations():
    source = lambda folder: job(folder, 1000, 2) / "JobSpec"
    return [Operation(
        "case folders",
        lambda f: removed(f / "cases", lambda to: ours("folders", source(f), to)),
        {"cp -r": lambda f: removed(f / "copies", lambda to: timed(f"cp -r {template(f)} {to}")),
         "script": lambda f: removed(f / "scripted", lambda to: script("folders", source(f), to))},
        {"cp -r": 1.3, "script": 0.6}, memory=3 * 2**30)]


def run(folder, operation, cases, *arguments, **variables):
    """What a run has prepared is removed."""
    source = few_cases(folder, cases)
    return removed(source / "JobFileLocation",
                   lambda _: ours(operation, source, SIMULATOR, *arguments, **variables))


def compute(folder):
    figures = run(folder, "run", 40, CORES, BENCH_SIMULATOR="compute")
    return {**figures, "share": figures["cpu"] / figures["seconds"]}


def run_operations():
    return [
        Operation("dispatch", lambda f: run(f, "run", 2000, 2),
                  {"parallel -j2": lambda f: timed(f"seq 2000 | parallel -j2 {SIMULATOR}"),
                   "xargs -P2": lambda f: timed(f"seq 2000 | xargs -P2 -n1 {SIMULATOR}"),
                   "script": lambda f: script("run", SIMULATOR, 2000, 2)},
                  {"parallel -j2": 0.6, "xargs -P2": 3}),
        Operation("no theft", compute,
                  {f"xargs -P{CORES}":
                   lambda f: timed(f"seq 40 | xargs -P{CORES} -n1 {SIMULATOR}",
                                   BENCH_SIMULATOR="compute")},
                  {f"xargs -P{CORES}": 1.03}, most_share=0.02),
        Operation("cancel", lambda f: run(f, "cancel", 16, BENCH_SIMULATOR="wait"), {}, {}, most=0.3),
    ]


def collation_operations():
    root = lambda folder: results(folder, 200, 12000)
    return [Operation(
        "collation", lambda f: ours("collate", root(f), f / "collated.csv"),
        {"script": lambda f: script("collate", root(f), f / "scripted.csv"),
         "cat": lambda f: timed(f"cat {root(f)}/*/*.csv > {f}/concatenated.csv")},
        {"script": 0.25}, note=peak)]


def companion(command, root, *options, **variables) -> Figures:
    """The wall time and the largest resident size of the program that runs prepared cases."""
    begin = time.perf_counter()
    child = subprocess.Popen([COMPANION, command, root, *map(str, options)], stdout=subprocess.DEVNULL,
                             env={**os.environ, **variables})
    _, state, usage = os.wait4(child.pid, 0)
    if command == "run" and state != 0:
        sys.exit(f"tarnel-cases {command} {root} has failed")
    return {"seconds": time.perf_counter() - begin, "peak_kib": usage.ru_maxrss}


def with_output(folder, megabytes):
    return companion("run", prepared(folder, 16), "-j", "2", "--only", "all", "--simulator", SIMULATOR,
                     BENCH_SIMULATOR=str(megabytes))


def companion_operations():
    return [
        Operation("companion: dispatch",
                  lambda f: companion("run", prepared(f, 2000), "-j", "2", "--only", "all",
                                      "--simulator", SIMULATOR),
                  {"parallel -j2 --joblog --results":
                   lambda f: removed(f / "logs", lambda logs: timed(
                       f"seq 2000 | parallel -j2 --joblog {f}/joblog --results {logs} {SIMULATOR}"))},
                  {"parallel -j2 --joblog --results": 1.0}, note=peak),
        Operation("companion: status of 10,000", lambda f: companion("status", ended(f, 10000)), {}, {},
                  most=0.5, note=peak),
        Operation("companion: 64 MiB of output", lambda f: with_output(f, 64),
                  {"1 MiB of output": lambda f: with_output(f, 1)}, {}, note=peak_of_both),
    ]


def peak_of_both(figures):
    less = max(one["peak_kib"] for one in figures["1 MiB of output"])
    return f"peak {largest(figures, 'peak_kib') / 1024:.1f} MiB, with 1 MiB {less / 1024:.1f} MiB"


def require_same(folder: Path):
    """The script does the same work as we do: its files are ours, byte for byte."""
    for mine, theirs in (("text.csv", "script.csv"), ("collated.csv", "scripted.csv")):
        pair = folder / mine, folder / theirs
        if all(path.exists() for path in pair) and not filecmp.cmp(*pair, shallow=False):
            sys.exit(f"{mine} isn't what the script has written")


# Cost against size.

SIZES = {
    "matrix with records": [
        (cases, lambda f, n: ours("matrix", job(f, n, 0), n, f)) for cases in (1000, 10000, 50000)],
    "matrix load": [
        (cases, lambda f, n: ours("matrix-load", job(f, n, 0) / "JobSpec"))
        for cases in (1000, 10000, 50000)],
    "deck read": [
        (rows, lambda f, n: ours("deck-read", tables(f, n) / "deck.zek"))
        for rows in (1000, 10000, 20000)],
    "tree and entries": [
        (rows, lambda f, n: ours("tree", tables(f, n) / "deck.zek"))
        for rows in (1000, 10000, 20000)],
}


def costs_against_size(folder, rounds):
    """Medians of the seconds by the name of the operation, as pairs of size and cost."""
    return {name: [(size, statistics.median(run(folder, size)["seconds"] for _ in range(rounds)))
                   for size, run in sizes]
            for name, sizes in SIZES.items()}


def plot(costs, path: Path):
    """Both axes logarithmic and alike: a cost in step with the size rises by 45 degrees."""
    left, top, decade = 60, 20, 140
    x = lambda size: left + decade * (math.log10(size) - 3)
    y = lambda seconds: top - decade * math.log10(seconds)
    shapes = ['<rect width="100%" height="100%" fill="white"/>']
    for size in (1000, 10000, 100000):
        shapes.append(f'<path d="M{x(size):.0f} {top}V{y(0.001):.0f}" stroke="#ccc"/>'
                      f'<text x="{x(size):.0f}" y="{y(0.001) + 18:.0f}" text-anchor="middle">'
                      f'{size:,}</text>')
    for seconds in (0.001, 0.01, 0.1, 1):
        shapes.append(f'<path d="M{left} {y(seconds):.0f}H{x(100000):.0f}" stroke="#ccc"/>'
                      f'<text x="{left - 6}" y="{y(seconds) + 4:.0f}" text-anchor="end">'
                      f'{seconds:g} s</text>')
    colours = ("#1f6fb2", "#d1761c", "#2b8a3e", "#9c36b5")
    for row, (colour, (name, points)) in enumerate(zip(colours, costs.items())):
        line = " ".join(f"{x(size):.1f},{y(seconds):.1f}" for size, seconds in points)
        unit = "rows" if name in ("deck read", "tree and entries") else "cases"
        shapes.append(f'<polyline points="{line}" fill="none" stroke="{colour}" stroke-width="2"/>'
                      f'<text x="{left + 12}" y="{top + 20 + 18 * row}" fill="{colour}">'
                      f'{name} ({unit})</text>')
    path.write_text('<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 370 470" width="370" '
                    'font-family="sans-serif" font-size="12">\n' + "\n".join(shapes) + "\n</svg>\n")


def print_costs(costs):
    print_table(["Operation", "Size", "Seconds", "Per 1,000"],
                [[name, f"{size:,}", f"{seconds:.4f}", f"{1000 * seconds / size:.4f}"]
                 for name, points in costs.items() for size, seconds in points])


# The report.

HEADINGS = ["Operation", "Ours", "Peer", "Peer's", "Ratio", "Goal", "Met", "Besides"]


def print_table(headings, rows):
    rows = [headings, ["---"] * len(headings)] + list(rows)
    widths = [max(len(row[column]) for row in rows) for column in range(len(headings))]
    for row in rows:
        print("| " + " | ".join(cell.ljust(width) for cell, width in zip(row, widths)) + " |")
    print(flush=True)


def machine():
    with open("/proc/cpuinfo") as info:
        model = next(line.split(":", 1)[1].strip() for line in info if line.startswith("model name"))
    memory = os.sysconf("SC_PAGE_SIZE") * os.sysconf("SC_PHYS_PAGES") / 2**30
    return (f"{CORES} cores of {model}, {memory:.0f} GiB, Linux {platform.release()}, "
            f"load {' '.join(f'{load:.1f}' for load in os.getloadavg())}")


def all_operations():
    return (deck_operations() + matrix_operations() + folder_operations() + run_operations()
            + collation_operations() + companion_operations())


def chosen(arguments):
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--only", default="", help="operations whose names start so, separated by commas")
    parser.add_argument("--sizes", type=Path, metavar="SVG",
                        help="cost against size as well, and a plot of it")
    return parser.parse_args(arguments)


def main():
    choice = chosen(sys.argv[1:])
    operations = [each for each in all_operations() if each.name.startswith(tuple(choice.only.split(",")))]
    with tempfile.TemporaryDirectory(prefix="tarnel-bench-") as name:
        folder = Path(name)
        print(machine(), flush=True)
        for operation in operations:
            for _ in range(choice.rounds):
                operation.run_round(folder)
            require_same(folder)
            print(f"{operation.name}: {choice.rounds} rounds", file=sys.stderr)
        print_table(HEADINGS, [line for each in operations for line in each.lines()])
        if choice.sizes:
            costs = costs_against_size(folder, choice.rounds)
            print_costs(costs)
            plot(costs, choice.sizes)
        print(machine())


if __name__ == "__main__":
    main()
