"""What every part of a whole flow needs: processes that end with the test, and waiting for conditions."""

import contextlib
import ctypes
import os
import signal
import subprocess
import time

# Far beyond what anything takes on a busy machine; who waits this long waits in vain.
PATIENCE_SECONDS = 60

_PR_SET_PDEATHSIG = 1
_libc = ctypes.CDLL(None)


def wait_until(condition, what):
    """The first true answer of `condition`."""
    deadline = time.monotonic() + PATIENCE_SECONDS
    while time.monotonic() < deadline:
        answer = condition()
        if answer:
            return answer
        time.sleep(0.02)
    raise TimeoutError(f"waited in vain for {what}")


class Processes:
    """Processes that run beside the test, each in a process group of its own; what they print goes to files.

    All of them end with the `with` statement, which prints the files when it fails.
    """

    def __init__(self, log_folder):
        self._log_folder = log_folder
        self._running = []
        os.makedirs(log_folder)

    def start(self, name, command, environment, prepare=None, **options):
        def before_exec():
            _libc.prctl(_PR_SET_PDEATHSIG, signal.SIGKILL)
            if prepare:
                prepare()

        with open(self.log_path(name), "ab") as log:
            process = subprocess.Popen(
                command,
                env=environment,
                start_new_session=True,
                preexec_fn=before_exec,
                **{"stdin": subprocess.DEVNULL, "stdout": log, "stderr": log, **options},
            )
        self._running.append(process)
        return process

    def log_path(self, name):
        return os.path.join(self._log_folder, name + ".log")

    def log(self, name):
        with open(self.log_path(name), encoding="utf-8", errors="replace") as file:
            return file.read()

    def __enter__(self):
        return self

    def __exit__(self, failure, *_):
        self._end()
        if failure:
            self._print_logs()

    def _print_logs(self):
        for file in sorted(os.listdir(self._log_folder)):
            print(f"--- {file}\n{self.log(file.removesuffix('.log'))[-4000:]}")

    def _end(self):
        """In order where they take the hint: a display leaves its lock behind otherwise."""
        for process in reversed(self._running):
            _signal_group(process, signal.SIGTERM)
        for process in reversed(self._running):
            with contextlib.suppress(subprocess.TimeoutExpired):
                process.wait(timeout=5)
            _signal_group(process, signal.SIGKILL)
            process.wait()
        self._running.clear()


def _signal_group(process, number):
    with contextlib.suppress(ProcessLookupError):
        os.killpg(process.pid, number)
