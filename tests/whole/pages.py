"""The pages of a device, as a person uses them: every edit is stored, and pushed to the account."""

import queue
import subprocess
import threading

from parts import PATIENCE_SECONDS


class Pages:
    def __init__(self, desktop, program):
        self._process = desktop.start("pages", [program], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self._answers = queue.Queue()
        threading.Thread(target=self._read_answers, daemon=True).start()

    def add_word(self, word):
        self._do("add-word", word)

    def remove_word(self, word):
        self._do("remove-word", word)

    def add_snippet(self, trigger, expansion):
        self._do("add-snippet", trigger, expansion)

    def sync(self):
        self.begin_sync()
        self.finish_sync()

    def begin_sync(self):
        self._send("sync")

    def finish_sync(self):
        self._expect("sync")

    def wait_for_pushes(self):
        self._do("idle")

    def close(self):
        self._process.stdin.close()
        assert self._process.wait(PATIENCE_SECONDS) == 0

    def _do(self, *words):
        self._send(*words)
        self._expect(words[0])

    def _send(self, *words):
        self._process.stdin.write("\t".join(words).encode() + b"\n")
        self._process.stdin.flush()

    def _expect(self, command):
        answer = self._answers.get(timeout=PATIENCE_SECONDS)
        assert answer == command + " ok", f"{command}: {answer}"

    def _read_answers(self):
        for line in self._process.stdout:
            self._answers.put(line.decode().strip())
