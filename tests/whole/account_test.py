#!/usr/bin/env python3
"""An account from sign-in to sign-out with real parts: browser, keyring, message bus, local service, and two devices.

Everything lives below one temporary folder, which is also where secrets are looked for at the end.
"""

import argparse
import contextlib
import json
import os
import random
import re
import sqlite3
import subprocess
import tempfile

from browser import Browser
from desktop import Desktop
from gate import Gate
from pages import Pages
from parts import PATIENCE_SECONDS, Processes, wait_until
from secrets_watch import ProcessListWatch, files_with

DICTIONARY = "/api/sync/dictionary"
SNIPPETS = "/api/sync/snippets"


class Device:
    """A desktop whose programs reach the service through a gate of their own."""

    def __init__(self, root, name, programs, processes):
        self.gate = Gate()
        self._root = root
        self._programs = programs
        self.desktop = Desktop(root, name, os.path.join(programs, "velmo"), processes, self.gate.origin)
        self.pages = None

    def sign_in(self, names=()):
        """Fills the sign-in page in as a person does. Answers the identity token that went through the browser."""
        signing_in = self.desktop.start_velmo("sign-in")
        address = self.desktop.opened_address()
        assert address.startswith(self.gate.origin + "/auth/authorize?"), address
        browser = Browser(self.desktop, os.path.join(self._root, self.desktop.name + "-browser"), self.gate.origin)
        browser.open(address)
        browser.type("#email", "kari@example.org")
        for field, name in names:
            browser.type(field, name)
        browser.click("button[type=submit]")
        browser.wait_for("[name=id_token]")
        identity_token = browser.value("[name=id_token]")
        browser.click("button[type=submit]")
        assert signing_in.wait(PATIENCE_SECONDS) == 0
        assert "Signed in as kari@example.org" in self.desktop.log("sign-in")
        browser.close()
        return identity_token

    def open_pages(self):
        self.pages = Pages(self.desktop, os.path.join(self._programs, "account_pages"))


class Story:
    def __init__(self, root, programs, processes):
        self._data = os.path.join(root, "service")
        self._processes = processes
        service = [os.path.join(programs, "velmo-local-service"), "--port", "0", "--data-dir", self._data]
        self._processes.start("service", service, {**os.environ, "HOME": root})
        self.devices = [Device(root, name, programs, self._processes) for name in ("first", "second")]
        self._wait_for_service()

    def forget_sessions(self):
        """The service no longer knows who is signed in."""
        file = os.path.join(self._data, "accounts.sqlite")
        with contextlib.closing(sqlite3.connect(file, timeout=PATIENCE_SECONDS)) as accounts:
            accounts.execute("DELETE FROM session")
            accounts.commit()

    def _wait_for_service(self):
        ready = re.compile(r"is ready on http://127\.0\.0\.1:(\d+)")
        port = int(wait_until(lambda: ready.search(self._processes.log("service")), "the service").group(1))
        for device in self.devices:
            device.gate.service_port = port


def step(text):
    print("· " + text, flush=True)


def sign_both_in(first, second):
    step("the first device signs in, by its running application")
    application = first.desktop.start_velmo()
    wait_until(lambda: "[Velmo Mac] Ready" in first.desktop.log(), "the application")
    identity_tokens = [first.sign_in((("#given_name", "Kari"), ("#family_name", "Nordmann")))]
    assert '"name":"Kari Nordmann"' in first.desktop.user()

    step("the second device signs in, without an application")
    identity_tokens.append(second.sign_in())
    tokens = [first.desktop.token(), second.desktop.token()]
    assert all(tokens) and tokens[0] != tokens[1], "each device has a session of its own"
    return application, identity_tokens, tokens


def begin_alike(first, second):
    for device in (first, second):
        device.open_pages()
    for word in ("Oslo", "fjord"):
        first.pages.add_word(word)
    first.pages.add_snippet("adr", "Storgata 1")
    first.pages.wait_for_pushes()
    expect_agreement(first, second, ["Oslo", "fjord"], {"adr": "Storgata 1"})


def expect_agreement(first, second, words, snippets=None):
    for device in (second, first, second):
        device.pages.sync()
    found = [device.desktop.words() for device in (first, second)]
    assert found == [words, words], f"{found} where {words} was expected"
    found = [device.desktop.snippets() for device in (first, second)]
    assert found == [snippets or found[0]] * 2, f"{found} where {snippets} was expected"


def edit_between_pull_and_push(first, second):
    step("the first device adds and removes while the second is between its pull and its push")
    second.pages.add_word("Tromsø")
    second.pages.add_snippet("mvh", "Vennlig hilsen")
    second.pages.wait_for_pushes()
    holds = [second.gate.hold_request("PUT", path) for path in (DICTIONARY, SNIPPETS)]
    second.pages.begin_sync()
    for hold in holds:
        hold.wait_until_reached()
    first.pages.add_word("Bodø")
    first.pages.remove_word("Oslo")
    first.pages.add_snippet("tlf", "22 22 22 22")
    first.pages.wait_for_pushes()
    for hold in holds:
        hold.release()
    second.pages.finish_sync()
    snippets = {"adr": "Storgata 1", "mvh": "Vennlig hilsen", "tlf": "22 22 22 22"}
    expect_agreement(first, second, ["Bodø", "Tromsø", "fjord"], snippets)


def edit_during_the_pull(first, second):
    step("both devices edit while the account's words are on their way to the second")
    hold = second.gate.hold_reply("GET", DICTIONARY)
    second.pages.begin_sync()
    hold.wait_until_reached()
    second.pages.remove_word("Tromsø")
    second.pages.add_word("Ås")
    first.pages.remove_word("Bodø")
    first.pages.add_word("Lofoten")
    first.pages.wait_for_pushes()
    hold.release()
    second.pages.finish_sync()
    second.pages.wait_for_pushes()
    expect_agreement(first, second, ["Lofoten", "fjord", "Ås"])


def dictate_at_once(root, devices):
    step("both devices dictate at once, and the account counts both")
    recording = os.path.join(root, "dictation.wav")
    sentence = "the meeting will start at ten in the morning"
    subprocess.run(["flite", "-voice", "rms", "-t", sentence, "-o", recording], check=True)
    dictating = [device.desktop.start_velmo("dictate", recording) for device in devices]
    for process in dictating:
        assert process.wait(PATIENCE_SECONDS) == 0
    words = sum(len(json.loads(device.desktop.velmo("history", "--json"))[0]["text"].split()) for device in devices)
    assert words
    for device in devices:
        device.pages.sync()
        assert f"Pulled stats: server={words}w/2s" in device.desktop.log_of("pages")


def edit_at_random(devices, rounds, seed):
    """Each word is added or removed by one device, so what has to come out is known."""
    step(f"{rounds} rounds of random edits at random moments (seed {seed})")
    chance = random.Random(seed)
    expected = set(devices[0].desktop.words())
    for number in range(rounds):
        holds = []
        for device in devices:
            hold = chance.choice((device.gate.hold_request, device.gate.hold_reply))
            holds.append(hold(chance.choice(("GET", "PUT")), DICTIONARY))
            device.pages.begin_sync()
            holds[-1].wait_until_reached()
        removable = chance.sample(sorted(expected), min(len(devices), len(expected)))
        for device, removed in zip(devices, removable, strict=False):
            device.pages.remove_word(removed)
            expected.remove(removed)
        for device in devices:
            for added in (f"ord{number}a{device.desktop.name}", f"ord{number}b{device.desktop.name}"):
                device.pages.add_word(added)
                expected.add(added)
        for hold in chance.sample(holds, len(holds)):
            hold.release()
        for device in devices:
            device.pages.finish_sync()
            device.pages.wait_for_pushes()
        expect_agreement(*devices, sorted(expected))


def sign_both_out(first, second, application, forget_sessions):
    for device in (first, second):
        device.pages.close()

    step("the first device signs out; what it keeps stays")
    words = first.desktop.words()
    first.desktop.velmo("sign-out")
    first.desktop.velmo("sync", expect=1)
    assert first.desktop.words() == words
    first.desktop.velmo("quit")
    assert application.wait(PATIENCE_SECONDS) == 0
    assert first.desktop.token() == ""

    step("the service forgets the second device, which signs itself out")
    forget_sessions()
    hold = second.gate.hold_reply("POST", "/api/auth/me")
    synchronising = second.desktop.start_velmo("sync")
    hold.wait_until_reached()
    wait_until(lambda: second.desktop.log("sync").count("(pull failed)") == 2, "all but the last answer")
    hold.release()
    assert synchronising.wait(PATIENCE_SECONDS) == 1
    assert "🔑 [Auth] Token expired, signing out" in second.desktop.log("sync")
    assert second.desktop.token() == ""
    second.desktop.velmo("sync", expect=1)


def expect_no_secret(root, watch, identity_tokens, tokens):
    step("no token in any file, log or process list")
    shown = watch.end()
    assert any(b"sign-in" in text for text in shown), "the watch has seen nothing"
    for token in tokens:
        assert not any(token.encode() in text for text in shown), "a token in the process list"
        assert files_with(token, root) == []
    for token in identity_tokens:  # spent, and yet
        assert files_with(token, os.path.join(root, "logs")) == []


def tell(root, programs, rounds, seed):
    watch = ProcessListWatch(root)
    with Processes(os.path.join(root, "logs")) as processes:
        story = Story(root, programs, processes)
        application, identity_tokens, tokens = sign_both_in(*story.devices)
        begin_alike(*story.devices)
        edit_between_pull_and_push(*story.devices)
        edit_during_the_pull(*story.devices)
        if rounds:
            dictate_at_once(root, story.devices)
            edit_at_random(story.devices, rounds, seed)
        sign_both_out(*story.devices, application, story.forget_sessions)
    expect_no_secret(root, watch, identity_tokens, tokens)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("programs", help="folder of velmo and velmo-local-service")
    parser.add_argument("--rounds", type=int, default=0, help="also dictate, and edit at random in so many rounds")
    parser.add_argument("--seed", type=int, default=random.randrange(1_000_000))
    parser.add_argument("--keep", action="store_true", help="keep the homes and logs of both devices")
    options = parser.parse_args()
    with contextlib.ExitStack() as stack:
        if options.keep:
            root = tempfile.mkdtemp(prefix="velmo-account-")
            print(f"Homes and logs are in {root}")
        else:
            root = stack.enter_context(tempfile.TemporaryDirectory(prefix="velmo-account-"))
        tell(root, os.path.abspath(options.programs), options.rounds, options.seed)


if __name__ == "__main__":
    main()
