#!/usr/bin/env python3
"""What the desktop application costs: the time to its ready line, and memory and wake-ups at rest, before and after a
hundred dictations.

usage: bench/at_rest.py FOLDER_OF_THE_PROGRAMS [DICTATIONS]

Runs on a private display with window manager, tray and editor, a private bus and a virtual microphone. Measure on a quiet
machine; wake-ups are voluntary context switches of all threads.
"""

import ast
import glob
import http.server
import os
import statistics
import subprocess
import sys
import tempfile
import threading
import time

sys.path.insert(0, os.path.join(os.path.dirname(__file__), "../tests/whole"))
from desktop import Desktop  # noqa: E402
from parts import Processes, wait_until  # noqa: E402

LAUNCHES = 9
REST_SECONDS = 10
# Pooled threads end after half a minute without work.
SETTLING_SECONDS = 35
# Shorter recordings are thrown away.
RECORDING_SECONDS = 0.35

MICROPHONE = """load-module module-native-protocol-unix
load-module module-null-sink sink_name=voice
load-module module-remap-source master=voice.monitor source_name=microphone
set-default-source microphone
"""


class Service(http.server.BaseHTTPRequestHandler):
    """Understands everything at once."""

    protocol_version = "HTTP/1.1"

    def do_POST(self):
        self.rfile.read(int(self.headers["Content-Length"]))
        reply = b'{"text": "This is what was said.", "detectedLanguage": "en"}'
        self.send_response(200)
        self.send_header("Content-Length", str(len(reply)))
        self.end_headers()
        self.wfile.write(reply)

    def log_message(self, *_):
        pass


def start_service():
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Service)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    return f"http://127.0.0.1:{server.server_port}"


def set_up(desktop, root):
    desktop.start("windows", ["openbox", "--sm-disable"])
    desktop.start("tray", ["trayer", "--edge", "top"])
    desktop.start("editor", ["xterm", "-e", "cat"])  # reads the texts, which would wait to be read otherwise
    script = os.path.join(root, "microphone.pa")
    with open(script, "w", encoding="utf-8") as file:
        file.write(MICROPHONE)
    desktop.start("sound", ["pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no", "-F", script])
    wait_until(lambda: subprocess.run(["pactl", "info"], env=desktop.environment, capture_output=True).returncode == 0,
               "the sound server")
    desktop.velmo("defaults", "write", "velmoOnboardingComplete", "--bool", "true")


def drain(stream):
    while stream.read(1 << 16):
        pass


def launch(program, environment):
    """A running application, and the milliseconds it took to its ready line."""
    begin = time.monotonic()
    process = subprocess.Popen([program], env=environment, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    while b"Ready" not in process.stdout.readline():
        pass
    took = (time.monotonic() - begin) * 1000
    threading.Thread(target=drain, args=(process.stdout,), daemon=True).start()
    return process, took


def memory(pid):
    """MiB that are resident, and that the process has written to: those nothing else shares."""
    with open(f"/proc/{pid}/smaps_rollup", encoding="ascii") as file:
        sizes = dict(line.split(":", 1) for line in file if ":" in line)
    kib = {name: int(size.split()[0]) for name, size in sizes.items() if size.endswith("kB\n")}
    return kib["Rss"] / 1024, kib["Private_Dirty"] / 1024


def switches(pid):
    total = 0
    for path in glob.glob(f"/proc/{pid}/task/*/status"):
        with open(path, encoding="utf-8") as file:
            total += sum(int(line.split()[1]) for line in file if line.startswith("voluntary"))
    return total


def report(what, process):
    time.sleep(SETTLING_SECONDS)
    before = switches(process.pid)
    time.sleep(REST_SECONDS)
    wake_ups = (switches(process.pid) - before) / REST_SECONDS
    resident, private = memory(process.pid)
    print(f"{what}: {resident:.1f} MiB resident, {private:.1f} MiB private, {wake_ups:.1f} wake-ups a second", flush=True)


def command(desktop, word):
    """What `velmo WORD` prints, without the time that program takes to start."""
    name = "com.tarnwell.velmo"
    call = ["gdbus", "call", "--session", "--dest", name, "--object-path", "/com/tarnwell/velmo",
            "--method", name + ".Commands.Run", f"['{word}']"]
    run = subprocess.run(call, env=desktop.environment, capture_output=True, text=True, check=True)
    status, output, message = ast.literal_eval(run.stdout)
    assert status == 0, message
    return output


def dictate(desktop):
    command(desktop, "start")
    time.sleep(RECORDING_SECONDS)
    command(desktop, "stop")
    wait_until(lambda: command(desktop, "status") == "idle\n", "the end of a dictation")


def main():
    programs = os.path.abspath(sys.argv[1])
    dictations = int(sys.argv[2]) if len(sys.argv) > 2 else 100
    velmo = os.path.join(programs, "velmo")
    with tempfile.TemporaryDirectory() as root, Processes(os.path.join(root, "logs")) as processes:
        desktop = Desktop(root, "desktop", velmo, processes, start_service())
        set_up(desktop, root)
        times = []
        for _ in range(LAUNCHES):
            process, took = launch(velmo, desktop.environment)
            times.append(took)
            process.terminate()
            process.wait()
        median, worst = statistics.median(times), max(times)
        print(f"launch to ready: median {median:.0f} ms, worst {worst:.0f} ms of {LAUNCHES}", flush=True)
        process, _ = launch(velmo, desktop.environment)
        report("at rest", process)
        for _ in range(dictations):
            dictate(desktop)
        report(f"after {dictations} dictations", process)
        process.terminate()
        process.wait()


main()
