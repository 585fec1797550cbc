"""Runs the Wine benchmarks of one variant and records them in Google Benchmark's JSON layout.

    record.py win32 out.json
"""

import datetime
import json
import os
import pathlib
import platform
import statistics
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
ROUNDS = 15


def run(variant, program, *arguments):
    wine = ROOT / "tools" / f"wine{variant.removeprefix('win')}.sh"
    result = subprocess.run(
        [str(wine), str(program), *arguments], capture_output=True, text=True, timeout=600, check=True
    )
    return [line.split() for line in result.stdout.splitlines() if line.strip()]


def entry(name, samples, unit):
    if min(samples) < 0:
        raise SystemExit(f"{name}: a sample failed")
    return {
        "name": name,
        "real_time": statistics.median(samples),
        "min": min(samples),
        "max": max(samples),
        "samples": len(samples),
        "time_unit": unit,
    }


def main():
    variant, out = sys.argv[1], sys.argv[2]
    build = ROOT / "build" / variant
    folder = f"Z:{build}".replace("/", "\\")
    starts = run(
        variant,
        build / "bench" / "wine" / "bench_start.exe",
        str(ROUNDS),
        folder + "\\orvanel_first_frame.exe",
        folder + "\\bench\\wine\\bare_window.exe",
    )
    benchmarks = [
        entry(name, [float(value) for value in line[1:]], "ms")
        for name, line in zip(("first_frame/orvanel", "first_frame/bare"), starts)
    ]
    for program in (build / "bench_frame.exe", build / "bench" / "wine" / "bench_menu.exe"):
        for line in run(variant, program):
            benchmarks.append(entry(line[0], [float(value) for value in line[1:]], "us"))
    for kind in ("first_frame", "frame"):
        times = {item["name"]: item["real_time"] for item in benchmarks}
        ratio = times[f"{kind}/orvanel"] / times[f"{kind}/bare"]
        benchmarks.append({"name": f"{kind}/ratio", "real_time": ratio, "time_unit": "times"})
    for item in benchmarks:
        print(f"{variant} {item['name']:24} {item['real_time']:10.2f} {item['time_unit']}")
    record = {
        "context": {
            "date": datetime.datetime.now().astimezone().isoformat(timespec="seconds"),
            "host_name": platform.node(),
            "machine": platform.machine(),
            "num_cpus": os.cpu_count(),
            "variant": variant,
        },
        "benchmarks": benchmarks,
    }
    pathlib.Path(out).write_text(json.dumps(record, indent=1) + "\n")


main()
