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


def full_page(path):
    """A page of 255 objects in rows."""
    nodes = "".join(
        "\t<node>\n\t\t<type>object</type>\n\t\t<!-- object_id 0 -->\n"
        f"\t\t<name>server{i:03}</name>\n\t\t<description>Rack 7</description>\n"
        f"\t\t<x_position>{6.0 * (i % 17 - 8):.2f}</x_position>\n"
        f"\t\t<y_position>{5.5 * (i // 17 - 7):.2f}</y_position>\n"
        "\t\t<model>server.obj</model>\n\t</node>\n"
        for i in range(255)
    )
    path.write_bytes(
        (
            '<?xml version="1.0" encoding="utf-8" ?>\n<page>\n\t<offv>004</offv>\n'
            "\t<properties>\n\t\t<x_position>0.00</x_position>\n"
            "\t\t<y_position>0.00</y_position>\n\t\t<colour>\n\t\t\t<red>-1.00</red>\n"
            "\t\t\t<green>-1.00</green>\n\t\t\t<blue>-1.00</blue>\n\t\t</colour>\n"
            f"\t</properties>\n{nodes}</page>\n"
        ).encode().replace(b"\n", b"\r\n")
    )


def idle(name, variant, program, *arguments):
    """Shares of one core that an idle window takes; frames that it drew while it was minimised."""
    values = {line[0]: float(line[1]) for line in run(variant, program, *arguments)}
    visible, loop = values["idle/visible"], values["idle/loop"]
    shares = {
        "loop": loop,
        "drawing": visible - loop,
        "minimised": values["idle/minimised"],
    }
    entries = [
        {"name": f"{name}/{kind}", "real_time": share, "time_unit": "percent"}
        for kind, share in shares.items()
    ]
    frames = values["idle/minimised_frames"]
    return [*entries, {"name": f"{name}/frames_minimised", "real_time": frames, "time_unit": "frames"}]


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
    for program in (
        build / "bench_frame.exe",
        build / "bench_selection.exe",
        build / "bench_menu.exe",
        build / "bench_dialogs.exe",
    ):
        for line in run(variant, program):
            benchmarks.append(entry(line[0], [float(value) for value in line[1:]], "us"))
    for kind, ours, peer in (
        ("first_frame", "orvanel", "bare"),
        ("frame", "orvanel", "bare"),
        ("preview_frame", "control", "main_window"),
    ):
        times = {item["name"]: item["real_time"] for item in benchmarks}
        ratio = times[f"{kind}/{ours}"] / times[f"{kind}/{peer}"]
        benchmarks.append({"name": f"{kind}/ratio", "real_time": ratio, "time_unit": "times"})
    full_page(build / "full.orvl")
    benchmarks += idle("idle", variant, build / "orvanel_idle.exe")
    benchmarks += idle("idle/255", variant, build / "orvanel_idle.exe", folder + "\\full.orvl")
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
