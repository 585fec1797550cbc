#!/usr/bin/python3
"""Writes the model library: models/*.obj with a material library each.

    tools/make_models.py            writes the files
    tools/make_models.py --check    compares the files with what would be written
    tools/make_models.py --list     shows names, categories, sizes and triangle counts
"""
import argparse
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
from model_maker import devices, documents, mesh, network, palette, tools  # noqa: E402

FOLDER = pathlib.Path(__file__).resolve().parent.parent / "models"

# File name without ".obj", display name and category (19 characters at most each), shape.
MODELS = [
    ("server", "Server", "Devices", devices.server),
    ("rack", "Server Rack", "Devices", devices.rack),
    ("computer", "Computer", "Devices", devices.computer),
    ("laptop", "Laptop", "Devices", devices.laptop),
    ("printer", "Printer", "Devices", devices.printer),
    ("drive", "Hard Drive", "Devices", devices.drive),
    ("phone", "Phone", "Devices", devices.phone),
    ("chip", "Processor", "Devices", devices.chip),
    ("adapter", "Adapter Card", "Devices", devices.adapter),
    ("router", "Router", "Network", network.router),
    ("switch", "Network Switch", "Network", network.switch),
    ("access_point", "Access Point", "Network", network.access_point),
    ("firewall", "Firewall", "Network", network.firewall),
    ("globe", "Globe", "Network", network.globe),
    ("network", "Network", "Network", network.network),
    ("cloud", "Cloud", "Network", network.cloud),
    ("folder", "Folder", "Documents", documents.folder),
    ("document", "Document", "Documents", documents.document),
    ("notepad", "Notepad", "Documents", documents.notepad),
    ("mail", "Mail", "Documents", documents.mail),
    ("book", "Book", "Documents", documents.book),
    ("database", "Database", "Documents", tools.database),
    ("terminal", "Terminal", "Tools", documents.terminal),
    ("chart", "Chart", "Tools", documents.chart),
    ("gear", "Gear", "Tools", tools.gear),
    ("services", "Services", "Tools", tools.services),
    ("tools", "Tools", "Tools", tools.tools),
    ("blocks", "Blocks", "Tools", tools.blocks),
    ("calculator", "Calculator", "Tools", devices.calculator),
    ("clock", "Clock", "Tools", devices.clock),
    ("magnifier", "Magnifier", "Tools", network.magnifier),
    ("lock", "Lock", "Tools", network.lock),
    ("shield", "Shield", "Tools", network.shield),
    ("user", "User", "People", tools.user),
    ("users", "Group", "People", tools.users),
    ("page_orvanel", "Page", "Pages", documents.page_orvanel),
]


def files_of(entry):
    """File name and text of a model's two files."""
    stem, name, category, shape = entry
    text, materials = mesh.obj_text(name, category, stem + ".mtl", shape())
    return {stem + ".obj": text, stem + ".mtl": palette.mtl_text(materials)}


def write(files):
    FOLDER.mkdir(exist_ok=True)
    for name, text in files.items():
        (FOLDER / name).write_bytes(text.encode("ascii"))
    print("%d files written to %s" % (len(files), FOLDER))
    return 0


def check(files):
    present = {p.name for p in FOLDER.iterdir()} if FOLDER.is_dir() else set()
    wrong = ["missing: " + n for n in sorted(files.keys() - present)]
    wrong += ["not made here: " + n for n in sorted(present - files.keys())]
    wrong += ["differs: " + n for n in sorted(files.keys() & present)
              if (FOLDER / n).read_bytes() != files[n].encode("ascii")]
    print("\n".join(wrong) or "%d files are up to date" % len(files))
    return 1 if wrong else 0


def show():
    for stem, name, category, shape in MODELS:
        solids = shape()
        sizes = " ".join("%5.2f..%4.2f" % pair for pair in mesh.bounds(solids))
        print("%-14s %-16s %-10s %s  %5d triangles" %
              (stem, name, category, sizes, sum(len(s.triangles) for s in solids)))
    return 0


def main():
    parser = argparse.ArgumentParser(description="Writes the model library.")
    parser.add_argument("--check", action="store_true", help="compare instead of writing")
    parser.add_argument("--list", action="store_true", help="show what the library holds")
    arguments = parser.parse_args()
    if arguments.list:
        return show()
    files = {}
    for entry in MODELS:
        files.update(files_of(entry))
    return check(files) if arguments.check else write(files)


if __name__ == "__main__":
    sys.exit(main())
