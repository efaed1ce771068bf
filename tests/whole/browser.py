"""A headless Chromium, driven over the DevTools protocol the way a person drives it: by pointer and keyboard."""

import json
import os

from parts import wait_until

_FLAGS = [
    "--headless",
    "--remote-debugging-pipe",
    "--disable-gpu",
    "--disable-dev-shm-usage",
    "--disable-background-networking",
    "--disable-component-update",
    "--no-first-run",
    "--password-store=basic",
]

# The browser reads commands from this descriptor and writes answers to the next one.
_BROWSER_READS = 3


class Browser:
    def __init__(self, desktop, profile, may_open_velmo_from):
        self._next_id = 0
        self._received = b""
        self._page = None
        _write_consent(profile, may_open_velmo_from)
        commands_out, self._commands = os.pipe()
        self._answers, answers_in = os.pipe()
        desktop.start(
            "browser",
            ["chromium", *_FLAGS, *_sandbox(), "--user-data-dir=" + profile, "about:blank"],
            prepare=lambda: _become_pipe(commands_out, answers_in),
            close_fds=False,
        )
        os.close(commands_out)
        os.close(answers_in)

    def open(self, address):
        target = self._call("Target.createTarget", {"url": address})["targetId"]
        self._page = self._call("Target.attachToTarget", {"targetId": target, "flatten": True})["sessionId"]

    def wait_for(self, selector):
        is_there = f"document.readyState === 'complete' && {_element(selector)} !== null"
        wait_until(lambda: self._evaluate(is_there), selector)

    def text(self):
        return self._evaluate("document.body.innerText")

    def value(self, selector):
        return self._evaluate(_element(selector) + ".value")

    def type(self, selector, text):
        self.click(selector)
        self._call("Input.insertText", {"text": text}, self._page)

    def click(self, selector):
        self.wait_for(selector)
        x, y = self._evaluate(
            f"(() => {{ const box = {_element(selector)}.getBoundingClientRect();"
            " return [box.x + box.width / 2, box.y + box.height / 2]; })()"
        )
        for event in ("mousePressed", "mouseReleased"):
            self._call(
                "Input.dispatchMouseEvent",
                {"type": event, "x": x, "y": y, "button": "left", "clickCount": 1},
                self._page,
            )

    def close(self):
        self._call("Browser.close")

    def _evaluate(self, expression):
        answer = self._call("Runtime.evaluate", {"expression": expression, "returnByValue": True}, self._page)
        return answer["result"].get("value")

    def _call(self, method, parameters=None, page=None):
        self._next_id += 1
        message = {"id": self._next_id, "method": method, "params": parameters or {}}
        if page:
            message["sessionId"] = page
        os.write(self._commands, json.dumps(message).encode() + b"\0")
        while True:
            answer = json.loads(self._next_message())
            if answer.get("id") != self._next_id:
                continue  # an event, which nobody waits for
            assert "error" not in answer, f"{method}: {answer['error']}"
            return answer["result"]

    def _next_message(self):
        while b"\0" not in self._received:
            piece = os.read(self._answers, 65536)
            assert piece, "the browser is gone"
            self._received += piece
        message, self._received = self._received.split(b"\0", 1)
        return message


def _element(selector):
    return f"document.querySelector({json.dumps(selector)})"


def _sandbox():
    return ["--no-sandbox"] if os.getuid() == 0 else []


def _become_pipe(commands_out, answers_in):
    # By way of numbers that are surely neither of the two wanted ones.
    spare = [os.dup(commands_out), os.dup(answers_in)]
    for wanted, descriptor in enumerate(spare, _BROWSER_READS):
        os.dup2(descriptor, wanted)


def _write_consent(profile, origin):
    """What "always allow" leaves behind when the browser has asked whether the page may open Velmo."""
    os.makedirs(os.path.join(profile, "Default"))
    consent = {"protocol_handler": {"allowed_origin_protocol_pairs": {origin: {"velmo": True}}}}
    with open(os.path.join(profile, "Default", "Preferences"), "w", encoding="utf-8") as file:
        json.dump(consent, file)
