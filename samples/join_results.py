#!/usr/bin/env python3
"""Sample: joins the cases' inputs with their results on the case number.

    join_results.py input_jobID-Matrix.csv CollatedResults.csv [--response "Run-out (m)"]
                    [--measured 0.248] [--plot response.png]

Prints one line per case: its number, the parameters that vary, the response and, with a measured
value, the distance to it. A response is the last value of a result in the simulator's layout, or
a column of the sample's analysis script. The plot shows the response over each parameter that
varies, a line for each combination of the others, and the measured value. It needs matplotlib;
nothing else does.
"""

import argparse
import csv
import pathlib
import sys


MOST_TICKS = 8


def parse_arguments():
    parser = argparse.ArgumentParser(description="Join a job's matrix with its results.")
    parser.add_argument("matrix", type=pathlib.Path)
    parser.add_argument("results", type=pathlib.Path)
    parser.add_argument("--response", help="which result; the first one if not given")
    parser.add_argument("--measured", type=float, help="value of the experiment")
    parser.add_argument("--plot", type=pathlib.Path, help="picture to write")
    return parser.parse_args()


def read_rows(path):
    with open(path, newline="", encoding="latin-1") as stream:
        return [row for row in csv.reader(stream, quoting=csv.QUOTE_NONE) if row]


def number(text):
    return float({"true": "1", "false": "0"}.get(text, text))


def read_varied(path):
    """Names of the parameters that vary, and their values by case number."""
    heading, *lines = read_rows(path)
    names = heading[1:-1]
    cases = {int(line[0]): [number(cell) for cell in line[1:1 + len(names)]] for line in lines}
    varied = [i for i in range(len(names)) if len({values[i] for values in cases.values()}) > 1]
    return ([names[i] for i in varied],
            {case: [values[i] for i in varied] for case, values in cases.items()})


def results_by_case(path):
    """Result name to value for each case, from either layout of the collated file."""
    rows = {}
    for line in read_rows(path):
        rows.setdefault(int(line[0]), []).append(line[1:-1])
    if rows.pop(-1, None) is not None:
        return {case: dict(zip(lines[0], map(float, lines[1]))) for case, lines in rows.items()}
    return {case: table_of(lines) for case, lines in rows.items()}


def table_of(lines):
    titles = [line[0] for line in lines]
    start = titles.index("TIME") + 1 if "TIME" in titles else len(lines)
    last = {line[0]: float(line[-1]) for line in lines[start:]}
    last.update((line[0], float(line[1])) for line in lines[:start] if is_single_number(line))
    return last


def is_single_number(line):
    if len(line) != 2 or line[0] == "TIME:":
        return False
    try:
        float(line[1])
    except ValueError:
        return False
    return True


def join(cases, results, response):
    joined = []
    for case, values in sorted(cases.items()):
        result = results.get(case)
        if not result:
            print(f"case {case} has no results", file=sys.stderr)
            continue
        name = response or next(iter(result))
        if name not in result:
            raise ValueError(f'no result "{name}", there are: {", ".join(result)}')
        joined.append((case, values, name, result[name]))
    if not joined:
        raise ValueError("no case has results")
    return joined


def print_table(names, joined, measured):
    heading = ["case", *names, joined[0][2]] + (["off by"] if measured is not None else [])
    print("\t".join(heading))
    for case, values, _, value in joined:
        cells = [str(case)] + [f"{v:g}" for v in values] + [f"{value:g}"]
        print("\t".join(cells + ([f"{value - measured:g}"] if measured is not None else [])))
    if measured is not None:
        nearest = min(joined, key=lambda row: abs(row[3] - measured))
        print(f"nearest to {measured:g}: case {nearest[0]}")


def series_by_other_values(joined, i):
    """For each combination of the other parameters' values, its points over parameter i."""
    series = {}
    for _, values, _, value in joined:
        others = tuple(values[:i] + values[i + 1:])
        series.setdefault(others, []).append((values[i], value))
    return {others: sorted(points) for others, points in sorted(series.items())}


def plot_parameter(panel, names, joined, i):
    others = [name for j, name in enumerate(names) if j != i]
    for values, points in series_by_other_values(joined, i).items():
        label = ", ".join(f"{value:g}" for value in values)
        panel.plot(*zip(*points), "o-", label=label or None)
    tried = sorted({row[1][i] for row in joined})
    if len(tried) <= MOST_TICKS:
        panel.set_xticks(tried)
    panel.set_xlabel(names[i])
    panel.grid(alpha=0.3)
    if others:
        panel.legend(title=",\n".join(others), fontsize="small", title_fontsize="small")


def plot(names, joined, measured, target):
    try:
        import matplotlib
    except ImportError:
        raise ValueError("a plot needs matplotlib, which is not installed") from None
    matplotlib.use("Agg")
    from matplotlib import pyplot
    if not names:
        raise ValueError("no parameter varies, there is nothing to plot against")
    figure, panels = pyplot.subplots(1, len(names), squeeze=False, sharey=True,
                                     figsize=(4.5 * len(names), 4), layout="constrained")
    for i, panel in enumerate(panels[0]):
        plot_parameter(panel, names, joined, i)
        if measured is not None:
            panel.axhline(measured, color="black", linestyle="--")
    if measured is not None:
        panels[0][-1].annotate(f"measured\n{measured:g}", (1, measured), xytext=(4, 0), va="center",
                               xycoords=("axes fraction", "data"), textcoords="offset points")
    panels[0][0].set_ylabel(joined[0][2])
    figure.savefig(target, dpi=100)


def main():
    arguments = parse_arguments()
    try:
        names, cases = read_varied(arguments.matrix)
        joined = join(cases, results_by_case(arguments.results), arguments.response)
        print_table(names, joined, arguments.measured)
        if arguments.plot:
            plot(names, joined, arguments.measured, arguments.plot)
    except (OSError, ValueError, IndexError) as failure:
        print(f"join_results.py: {failure}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
