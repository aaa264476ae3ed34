#!/usr/bin/env python3
"""Prints our time divided by the best peer's, from the JSON output of vlx_bench.

    vlx_bench --benchmark_format=json >bench.json; bench/ratios.py bench.json

A ratio below 1 is a row in which we are ahead. Processor time is compared, which a busy machine
disturbs less; with repetitions the medians.
"""

import json
import sys

OURS = "vlx"


def times_of(document):
    """The time in nanoseconds and the bytes per second of each row, by (work/case, who)."""
    unit = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}
    rows = {}
    has_medians = any(b.get("aggregate_name") == "median" for b in document["benchmarks"])
    for row in document["benchmarks"]:
        if row.get("error_occurred"):
            print(f"skipped: {row['name']}: {row.get('error_message')}", file=sys.stderr)
            continue
        if has_medians != (row.get("aggregate_name") == "median"):
            continue
        case, who = row["run_name"].rsplit("/", 1)
        time = row["cpu_time"] * unit[row["time_unit"]]
        rows.setdefault(case, {})[who] = (time, row.get("bytes_per_second"))
    return rows


def shown(time, rate):
    if rate:
        return f"{rate / 1e9:.2f} GB/s"
    return f"{time:.1f} ns" if time < 1e3 else f"{time / 1e3:.1f} us"


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    with open(sys.argv[1], encoding="utf-8") as file:
        rows = times_of(json.load(file))
    print(f"{'work':<32} {'ours':>12} {'best peer':>12}  {'':<20} {'ratio':>6}")
    for case, times in sorted(rows.items()):
        peers = {who: row for who, row in times.items() if who != OURS}
        if OURS not in times or not peers:
            continue
        best = min(peers, key=lambda who: peers[who][0])
        ratio = times[OURS][0] / peers[best][0]
        ours, theirs = shown(*times[OURS]), shown(*peers[best])
        print(f"{case:<32} {ours:>12} {theirs:>12}  {best:<20} {ratio:>6.2f}")


if __name__ == "__main__":
    main()
