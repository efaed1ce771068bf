"""A person's desktop session on one device: a home, a message bus, an unlocked keyring and a display, all private."""

import base64
import json
import os
import socket
import struct
import subprocess

from parts import PATIENCE_SECONDS, wait_until

KEYCHAIN_ACCOUNT = "com.tarnwell.velmo.mac.authToken"

# Whatever address the desktop opens ends up in a file: a headless browser takes no addresses from a second start.
_BROWSER = """#!/bin/sh
printf '%s\\n' "$1" >> "{addresses}"
"""

_BROWSER_ENTRY = """[Desktop Entry]
Type=Application
Name=Browser
Exec={program} %u
MimeType=x-scheme-handler/http;
"""


class Desktop:
    def __init__(self, root, name, velmo, processes, service_url):
        self.name = name
        self._home = os.path.join(root, name)
        self._velmo = velmo
        self._processes = processes
        self.environment = {
            "PATH": os.environ["PATH"],
            "LANG": "C.UTF-8",
            "HOME": self._home,
            "XDG_CONFIG_HOME": self._path("config"),
            "XDG_DATA_HOME": self._path("data"),
            "XDG_CACHE_HOME": self._path("cache"),
            "XDG_RUNTIME_DIR": self._path("run"),
            "TMPDIR": self._path("tmp"),
            "VELMO_SERVICE_URL": service_url,
        }
        for variable in ("ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"):
            if variable in os.environ:
                self.environment[variable] = os.environ[variable]
        for folder in ("config", "data/applications", "cache", "run", "tmp"):
            os.makedirs(self._path(folder), mode=0o700)
        self._install_browser()
        self._start_bus()
        self._start_keyring()
        self._start_display()

    def velmo(self, *words, expect=0):
        """Runs the command and answers its standard output; what it logged goes to the command's log."""
        run = self._run(self._velmo, *words)
        with open(self._processes.log_path(self._name_of(words)), "ab") as log:
            log.write(run.stderr)
        assert run.returncode == expect, f"velmo {' '.join(words)}: {run.returncode}, {run.stderr.decode()}"
        return run.stdout.decode()

    def start_velmo(self, *words):
        """A `velmo` that runs beside the test, with all its output in the command's log."""
        return self._processes.start(self._name_of(words), [self._velmo, *words], self.environment)

    def log(self, *words):
        """What `velmo` with that command, or without one, has printed so far."""
        return self._processes.log(self._name_of(words))

    def log_of(self, name):
        """What a program that was started by that name has printed so far."""
        return self._processes.log(f"{self.name}-{name}")

    def _name_of(self, words):
        return "-".join([self.name, "velmo", *words[:1]])

    def start(self, name, command, **options):
        return self._processes.start(f"{self.name}-{name}", command, self.environment, **options)

    def opened_address(self):
        """The address the desktop was asked to open."""
        path = self._path("addresses")
        wait_until(lambda: os.path.exists(path) and os.path.getsize(path), "an opened address")
        with open(path, encoding="utf-8") as file:
            address = file.readline().strip()
        os.remove(path)
        return address

    def token(self):
        """What the keyring holds for the session; empty when there is nothing."""
        return self._run("secret-tool", "lookup", "account", KEYCHAIN_ACCOUNT).stdout.decode()

    def user(self):
        """The stored record of who is signed in."""
        return base64.b64decode(self.velmo("defaults", "read", "velmoUser")).decode()

    def words(self):
        return [element["word"] for element in self._stored("velmoDictionary")]

    def snippets(self):
        return {element["trigger"]: element["expansion"] for element in self._stored("velmoSnippets")}

    def _stored(self, key):
        return json.loads(self.velmo("defaults", "read", key))

    def _path(self, name):
        return os.path.join(self._home, name)

    def _install_browser(self):
        program = self._path("browser")
        with open(program, "w", encoding="utf-8") as file:
            file.write(_BROWSER.format(addresses=self._path("addresses")))
        os.chmod(program, 0o755)
        with open(self._path("data/applications/browser.desktop"), "w", encoding="utf-8") as file:
            file.write(_BROWSER_ENTRY.format(program=program))
        with open(self._path("config/mimeapps.list"), "w", encoding="utf-8") as file:
            file.write("[Default Applications]\nx-scheme-handler/http=browser.desktop\n")

    def _start_bus(self):
        address = "unix:path=" + self._path("bus")
        self.start("bus", ["dbus-daemon", "--session", "--nofork", "--nosyslog", "--address=" + address])
        wait_until(lambda: os.path.exists(self._path("bus")), "the message bus")
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address

    def _start_keyring(self):
        command = ["gnome-keyring-daemon", "--foreground", "--unlock", "--components=secrets"]
        keyring = self.start("keyring", command, stdin=subprocess.PIPE)
        with keyring.stdin as password:
            password.write(b"a password\n")
        name = "org.freedesktop.secrets"
        appeared = self._run("gdbus", "wait", "--session", "--timeout", str(PATIENCE_SECONDS - 1), name)
        assert appeared.returncode == 0, "the keyring does not start"

    def _start_display(self):
        self.environment["DISPLAY"] = wait_until(self._own_display, "a display")

    def _own_display(self):
        """Servers that start at the same time can take the same number, by which only one of them is reached then."""
        reading, writing = os.pipe()
        command = ["Xvfb", "-displayfd", str(writing), "-screen", "0", "1280x800x24", "-nolisten", "tcp", "-noreset"]
        server = self.start("display", command, pass_fds=[writing])
        os.close(writing)
        with os.fdopen(reading) as answer:
            number = answer.readline().strip()
        if number and _listener("/tmp/.X11-unix/X" + number) == server.pid:
            return ":" + number
        server.kill()
        return None

    def _run(self, *command):
        return subprocess.run(
            command,
            env=self.environment,
            stdin=subprocess.DEVNULL,
            capture_output=True,
            timeout=PATIENCE_SECONDS,
            check=False,
        )


def _listener(path):
    """The process that listens there, if any."""
    with socket.socket(socket.AF_UNIX) as connection:
        try:
            connection.connect(path)
        except OSError:
            return None
        credentials = connection.getsockopt(socket.SOL_SOCKET, socket.SO_PEERCRED, struct.calcsize("iii"))
        return struct.unpack("iii", credentials)[0]
