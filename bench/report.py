#!/usr/bin/python3
"""Turns Google Benchmark JSON output into a comparison table and a bar chart.

Rows are named "<Operation>/<impl>/<W>x<H>" with impl rvpcv, opencv or memcpy. For every
operation and size the report gives both times, ratio = OpenCV time / rvpcv time (above 1: rvpcv
is faster) and, where a memcpy row of the same bytes exists, rvpcv's bandwidth as a percentage
of memcpy's. Each time is the fastest repetition (--stat min, the default: on a shared machine
other load only ever adds time) or the median aggregate (--stat median).

Several JSON files (runs of the same binary) may be given: times come from the first, and the
ratios of the others are listed next to it, so run-to-run noise is visible in the table.

usage: report.py [--time cpu|real] [--title T] --md OUT.md --png OUT.png RUN.json [RUN2.json...]
"""

import argparse
import json
import os
import re
import sys

import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt  # noqa: E402
from matplotlib import ticker  # noqa: E402

NAME_RE = re.compile(r"^(?P<op>.+)/(?P<impl>rvpcv|opencv|memcpy)/(?P<w>\d+)x(?P<h>\d+)$")
UNIT_NS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}


def load_run(path, time_field, stat):
    """Returns {(op, (w, h)): {impl: time_ns}} from one benchmark JSON file."""
    with open(path) as f:
        data = json.load(f)
    medians, singles = {}, {}
    for b in data.get("benchmarks", []):
        if b.get("error_occurred"):
            continue
        name = b.get("run_name", b["name"])
        m = NAME_RE.match(name)
        if not m:
            continue
        key = (m["op"], (int(m["w"]), int(m["h"])))
        t = float(b[time_field]) * UNIT_NS[b.get("time_unit", "ns")]
        if b.get("run_type") == "aggregate":
            if b.get("aggregate_name") == "median":
                medians.setdefault(key, {})[m["impl"]] = t
        else:
            # The fastest repetition: the one least disturbed by other load.
            cur = singles.setdefault(key, {})
            cur[m["impl"]] = min(t, cur.get(m["impl"], t))
    chosen, fallback = (singles, medians) if stat == "min" else (medians, singles)
    for key, impls in fallback.items():
        for impl, t in impls.items():
            chosen.setdefault(key, {}).setdefault(impl, t)
    return chosen


def fmt_time(ns):
    if ns >= 1e6:
        return "%.2f ms" % (ns / 1e6)
    if ns >= 1e3:
        return "%.1f us" % (ns / 1e3)
    return "%.0f ns" % ns


def main():
    ap = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    ap.add_argument("runs", nargs="+", help="benchmark JSON files")
    ap.add_argument("--md", required=True)
    ap.add_argument("--png", required=True)
    ap.add_argument("--time", choices=["cpu", "real"], default="cpu",
                    help="cpu_time (default: least affected by a shared machine) or real_time")
    ap.add_argument("--stat", choices=["min", "median"], default="min",
                    help="fastest repetition (default) or the median aggregate")
    ap.add_argument("--title", default="rvpcv vs OpenCV, single-threaded")
    args = ap.parse_args()

    field = "cpu_time" if args.time == "cpu" else "real_time"
    runs = [load_run(p, field, args.stat) for p in args.runs]
    first = runs[0]
    # Sorted by operation, larger sizes first: with random interleaving the file order is random.
    keys = sorted((k for k in first if "rvpcv" in first[k] and "opencv" in first[k]),
                  key=lambda k: (k[0], -k[1][0] * k[1][1]))
    if not keys:
        sys.exit("report.py: no rvpcv/opencv pairs in %s" % args.runs[0])

    def ratio(run, key):
        r = run.get(key, {})
        if "rvpcv" in r and "opencv" in r and r["rvpcv"] > 0:
            return r["opencv"] / r["rvpcv"]
        return None

    lines = [
        "# %s" % args.title,
        "",
        "Times are %s (%s time) from `%s`; ratio = OpenCV time / rvpcv time (above 1: rvpcv "
        "faster). memcpy %% = rvpcv bandwidth as a percentage of a memcpy moving the same bytes."
        % ("the fastest repetitions" if args.stat == "min" else "medians", args.time,
           os.path.basename(args.runs[0])),
        "",
    ]
    other = len(runs) > 1
    head = "| operation | size | rvpcv | OpenCV | ratio |"
    sep = "|---|---|---:|---:|---:|"
    if other:
        head += " ratio, other runs |"
        sep += "---:|"
    head += " memcpy % |"
    sep += "---:|"
    lines += [head, sep]
    for key in keys:
        op, (w, h) = key
        r = first[key]
        row = "| %s | %dx%d | %s | %s | %.2f |" % (op, w, h, fmt_time(r["rvpcv"]),
                                                 fmt_time(r["opencv"]), ratio(first, key))
        if other:
            others = [ratio(run, key) for run in runs[1:]]
            row += " %s |" % ", ".join("%.2f" % x if x else "-" for x in others)
        row += " %s |" % ("%.0f%%" % (100.0 * r["memcpy"] / r["rvpcv"]) if "memcpy" in r else "")
        lines.append(row)
    with open(args.md, "w") as f:
        f.write("\n".join(lines) + "\n")

    # Chart: one panel per size, one bar per operation (first run), other runs as black dots,
    # on a log scale so that 0.8x and 1.25x look equally far from parity.
    sizes = []
    for _, s in keys:
        if s not in sizes:
            sizes.append(s)
    ops = []
    for op, _ in keys:
        if op not in ops:
            ops.append(op)
    fig, axes = plt.subplots(len(sizes), 1, figsize=(max(8, 0.42 * len(ops) + 2), 3.6 * len(sizes)),
                             sharex=True, squeeze=False)
    colors = ["#3a78b5", "#e0892b", "#5aa55a", "#b54a4a"]
    for si, s in enumerate(sizes):
        ax = axes[si][0]
        xs, ys = [], []
        for oi, op in enumerate(ops):
            v = ratio(first, (op, s))
            if v is None:
                continue
            xs.append(oi)
            ys.append(v)
            ax.text(oi, v, "%.2f" % v, ha="center", va="bottom", fontsize=6)
            for run in runs[1:]:
                o = ratio(run, (op, s))
                if o is not None:
                    ax.plot([oi], [o], "k.", markersize=4)
        ax.bar(xs, ys, 0.7, color=colors[si % len(colors)])
        ax.set_yscale("log")
        lo = min(ys + [1.0]) / 1.25
        hi = max(ys + [1.0]) * 1.25
        ax.set_ylim(lo, hi)
        plain = ticker.FuncFormatter(lambda v, _: "%g" % v)
        ax.yaxis.set_major_formatter(plain)
        ax.yaxis.set_minor_formatter(plain if hi / lo < 20 else ticker.NullFormatter())
        ax.tick_params(axis="y", which="minor", labelsize=7)
        ax.axhline(1.0, color="black", linewidth=0.8)
        ax.set_ylabel("OpenCV / rvpcv time")
        ax.set_title("%dx%d" % s, fontsize=9)
        ax.grid(axis="y", which="both", alpha=0.3)
    axes[-1][0].set_xticks(range(len(ops)))
    axes[-1][0].set_xticklabels(ops, rotation=60, ha="right", fontsize=8)
    fig.suptitle(args.title + (" (dots: other runs)" if other else ""))
    fig.tight_layout()
    fig.savefig(args.png, dpi=110)
    print("wrote %s and %s" % (args.md, args.png))


if __name__ == "__main__":
    main()
