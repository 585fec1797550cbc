"""The vendor's server as the program sees it: through the system's proxy, which runs in the test."""

import re
import socket
import subprocess
import tempfile
import threading
import time

from orvanel import WINE, run_wine

SETTINGS_KEY = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Internet Settings"
BROWSER_KEY = r"HKLM\Software\Classes\http\shell\open\command"
CHUNKS = 20  # that the program reads the installer in


def head(length, status="200 OK"):
    return f"HTTP/1.1 {status}\r\nConnection: close\r\nContent-Length: {length}\r\n\r\n".encode()


class UpdateServer:
    """Listens on a free port of this machine; what it answers can be changed while it runs."""

    GOOD = "200 OK"

    def __init__(self, installer):
        self.installer = installer
        self.reset()
        self.listener = socket.create_server(("127.0.0.1", 0))
        self.port = self.listener.getsockname()[1]
        threading.Thread(target=self.listen, daemon=True).start()

    def reset(self):
        """A version newer than any, answered at once; an installer that takes some seconds."""
        self.connections = 0
        self.requests = []
        self.version = "1.5"
        self.may_tell_version = threading.Event()
        self.may_tell_version.set()
        self.may_send_installer = threading.Event()
        self.may_send_installer.set()
        self.broken_off_after = None  # bytes of the installer
        self.installer_status = self.GOOD
        self.chunk_pause = 0.3  # seconds

    def speak(self):
        self.may_tell_version.set()
        self.may_send_installer.set()

    def close(self):
        self.speak()
        self.listener.close()

    def listen(self):
        while True:
            try:
                connection, _ = self.listener.accept()
            except OSError:
                return
            self.connections += 1
            threading.Thread(target=self.answer, args=(connection,), daemon=True).start()

    def answer(self, connection):
        with connection:
            connection.settimeout(60)
            request = b""
            while b"\r\n\r\n" not in request:
                received = connection.recv(4096)
                if not received:
                    return
                request += received
            self.requests.append(request.decode("latin-1"))
            try:
                self.reply(connection, request.split()[1].decode("latin-1"))
            except OSError:
                pass  # the program hung up

    def reply(self, connection, url):
        if url.endswith("/current_version.xml"):
            self.may_tell_version.wait(60)
            document = f"<?xml version=\"1.0\"?>\n<current_version>{self.version}</current_version>\n"
            connection.sendall(head(len(document)) + document.encode())
        elif url.endswith("/orvanel_setup.exe"):
            self.send_installer(connection)
        else:
            connection.sendall(head(0, "404 Not Found"))

    def send_installer(self, connection):
        self.may_send_installer.wait(60)
        connection.sendall(head(len(self.installer), self.installer_status))
        end = self.broken_off_after or len(self.installer)
        size = len(self.installer) // CHUNKS + 1
        for start in range(0, end, size):
            connection.sendall(self.installer[start : min(start + size, end)])
            time.sleep(self.chunk_pause)

    def asked_for(self, name):
        return [request for request in self.requests if request.split()[1].endswith("/" + name)]


def registry_value(key, *name):
    """Type and text of a value as the registry has it, or None."""
    for line in run_wine("reg", "query", key, *(name and ("/v", *name) or ("/ve",))).splitlines():
        match = re.search(r"(REG_\w+)\s+(.*)", line)
        if match:
            return match[1], match[2].strip()
    return None


class RegistryValue:
    """A value of the registry that is put back as it was. No name: the key's default value."""

    def __init__(self, key, name, kind, text):
        self.key = key
        self.name = ("/v", name) if name else ("/ve",)
        self.before = registry_value(key, *filter(None, [name]))
        self.write(kind, text)

    def write(self, kind, text):
        run_wine("reg", "add", self.key, *self.name, "/t", kind, "/d", text, "/f")

    def restore(self):
        if self.before:
            self.write(*self.before)
        else:
            run_wine("reg", "delete", self.key, *self.name, "/f")


def answers_during(seconds, program):
    """Starts asking the windows for answers; the function returned waits for {class: (ms, count)}."""
    output = tempfile.TemporaryFile()
    process = subprocess.Popen(
        [str(WINE), str(program), str(int(seconds * 1000))], stdout=output, stderr=subprocess.DEVNULL
    )

    def result():
        process.wait(seconds + 60)
        output.seek(0)
        lines = [line.split("|") for line in output.read().decode().splitlines() if "|" in line]
        return {name: (float(longest), int(count)) for name, longest, count in lines}

    return result
