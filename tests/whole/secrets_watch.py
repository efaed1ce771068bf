"""Looks for secrets where none may be: in files, and in what the process list shows of our processes."""

import os
import threading


class ProcessListWatch:
    """Collects, all the time, the command lines and environments of the processes that live below a folder."""

    def __init__(self, folder):
        self._marker = folder.encode()
        self._seen = set()
        self._stop = threading.Event()
        self._thread = threading.Thread(target=self._watch, daemon=True)
        self._thread.start()

    def end(self):
        self._stop.set()
        self._thread.join()
        return self._seen

    def _watch(self):
        while not self._stop.wait(0.05):
            for process in filter(str.isdigit, os.listdir("/proc")):
                self._look_at(process)

    def _look_at(self, process):
        environment = _content(f"/proc/{process}/environ")
        if self._marker in environment:
            self._seen.update((environment, _content(f"/proc/{process}/cmdline")))


def files_with(secret, folder):
    """The files below the folder that hold the secret, in the encodings that programs write texts in."""
    forms = [secret.encode(), secret.encode("utf-16-le"), secret.encode("utf-16-be")]
    found = []
    for parent, _, names in os.walk(folder):
        for path in (os.path.join(parent, name) for name in names):
            content = _content(path) if os.path.isfile(path) else b""
            if any(form in content for form in forms):
                found.append(path)
    return found


def _content(path):
    try:
        with open(path, "rb") as file:
            return file.read()
    except OSError:  # it is gone, or not ours to read
        return b""
