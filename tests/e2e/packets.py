"""What the program sends, to the packet: it runs where nothing else uses the network."""

import contextlib
import os
import pathlib

from orvanel import PREFIX, wait_for

# A network of its own in which everything leaves by the loopback device, which counts it, wherever it
# is bound for. Wine looks this machine up by its name when it starts: this one needs no name server.
ALONE = (
    "unshare",
    "--net",
    "--uts",
    "sh",
    "-c",
    "hostname localhost && ip link set lo up && ip route add default dev lo &&"
    ' { ip -6 route add default dev lo 2>/dev/null; exec "$@"; }',
    "sh",
)


def wine_servers():
    """Processes that open the sockets of the programs in our prefix; none when no program runs."""
    return [process for process in pathlib.Path("/proc").glob("[0-9]*") if serves_us(process)]


def serves_us(process):
    try:
        if not (process / "comm").read_text().startswith("wineserver"):
            return False
        settings = dict(
            line.split("=", 1) for line in (process / "environ").read_text().split("\0") if "=" in line
        )
        return os.path.samefile(f"{process}/root{settings['WINEPREFIX']}", PREFIX)
    except (OSError, KeyError):
        return False  # it has ended, or is none of Wine's as we start it


@contextlib.contextmanager
def network_alone():
    """In here a program that is started through ALONE gets a Wine server in that network."""
    wait_for(lambda: not wine_servers(), 60, "Wine to end")
    yield
    wait_for(lambda: not wine_servers(), 60, "Wine to end")


def packets_sent():
    (server,) = wine_servers()
    devices = (server / "net" / "dev").read_text().splitlines()[2:]
    return sum(int(device.split(":")[1].split()[9]) for device in devices)
