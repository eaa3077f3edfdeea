"""Shows Trovel's main job on a display of its own, and checks it from outside: the hotkey is
pressed, a region dragged, and the picture pasted into a chat page and sent. Succeeds only if the
page received exactly the pixels of the region and its form was submitted."""

import argparse
import os
import struct
import sys
import time
from pathlib import Path

from PIL import Image

import scene
from harness.desktop import Desktop
from harness.driver import KEY_2, KEY_V, RETURN
from harness.waiting import wait_until

CHAT_PAGE = Path(__file__).with_name("chat.html")
SIZE = (1280, 720)
CHAT_RECTANGLE = (660, 60, 560, 600)
PREFERENCES = {"preferredAIApp": "Chrome", "autoSendEnabled": True}


def say(text):
    print(text, flush=True)


class Timeline:
    """What happened when, in milliseconds since the hotkey went down. The X server and this
    process read the same monotonic clock, so that key presses, windows and the page's reports
    stand on one scale."""

    def __init__(self):
        self._start = None

    def begin(self, key_event):
        self._start = key_event.time
        say("\n      ms  what an onlooker sees")
        self.at(key_event.time, "the hotkey goes down")

    def now(self, what):
        self.at(time.monotonic() * 1000, what)

    def at(self, milliseconds, what):
        """`milliseconds` of the monotonic clock, or of the X server's, which is its lower half."""
        passed = (int(milliseconds) - self._start) % 2**32
        say(f"  {passed:6d}  {what}")


class Demonstration:
    def __init__(self, desktop, output):
        self._desktop = desktop
        self._output = output
        self._timeline = Timeline()
        self._tap = desktop.tap.mark()

    def run(self):
        say("Opening a desktop, a chat in Chromium, and Trovel ...")
        self._desktop.paint(scene.draw(SIZE))
        browser = self._desktop.start_browser(
            rectangle=CHAT_RECTANGLE, page=CHAT_PAGE, options=("--test-type",))
        self._page = browser.page
        self._program = self._desktop.start_program(PREFERENCES)
        wait_until(lambda: self._desktop.observer.active_window() == browser.window.id,
                   "the chat is in front")
        before = self._keep("before")
        self._select(before)
        self._deliver()
        received = self._received()
        received.save(self._output / "received.png")
        self._keep("after")
        return self._judge(received, before.crop(scene.REGION))

    def _select(self, before):
        left, top, right, bottom = scene.REGION
        driver = self._desktop.driver
        driver.press_hotkey()
        self._timeline.begin(self._tapped("key down", KEY_2))
        self._program.wait_for_overlay()
        self._timeline.now("the overlay covers the screen")
        driver.drag((left, top), (right, bottom), steps=24, release=False)
        self._timeline.at(self._tapped("button down", 1).time, "a drag begins")
        inside = (left + 1, top + 1, right - 1, bottom - 1)
        wait_until(lambda: self._keep("during").crop(inside) == before.crop(inside),
                   "the selection is clear, the rest dimmed")
        driver.button_up()
        self._timeline.at(self._tapped("button up", 1).time, "the region is chosen")
        self._tap = self._desktop.tap.mark()
        self._program.wait_for_no_overlay()
        self._timeline.now("the overlay is gone")

    def _deliver(self):
        self._desktop.clipboard.wait_for_owner()
        self._timeline.now("the picture is on the clipboard")
        self._timeline.at(self._tapped("button down", 1).time, "Trovel clicks into the chat")
        self._timeline.at(self._tapped("key down", KEY_V).time, "Trovel pastes")
        self._report("paste", "the page has the picture")
        self._timeline.at(self._tapped("key down", RETURN).time, "Trovel presses Return")
        self._report("submit", "the message is sent")
        self._page.wait_for("shown")

    def _received(self):
        """The picture as the page decoded it."""
        body = self._page.wait_for("pixels").body
        size = struct.unpack_from("<II", body)
        return Image.frombytes("RGBA", size, body[8:])

    def _judge(self, received, expected):
        say("")
        if received.size != expected.size:
            say(f"FAILED: the page received {received.size} pixels instead of {expected.size}.")
            return False
        if received.tobytes() != expected.convert("RGBA").tobytes():
            expected.save(self._output / "expected.png")
            say("FAILED: the page received other pixels than the region's.")
            return False
        if self._page.count("submit") != 1 or self._page.count("paste") != 1:
            say("FAILED: the message was not sent exactly once.")
            return False
        say(f"The page received {received.width} x {received.height} pixels, each as it was on the "
            f"screen, and sent them once.")
        return True

    def _tapped(self, kind, detail):
        """Waits for a key or button event, whoever caused it."""
        def found():
            return [event for event in self._desktop.tap.since(self._tap)
                    if (event.kind, event.detail) == (kind, detail)]

        return wait_until(found, f"{kind} {detail}", 10)[0]

    def _report(self, kind, what):
        self._timeline.at(self._page.wait_for(kind).seconds * 1000, what)

    def _keep(self, name):
        picture = self._desktop.observer.screenshot()
        picture.save(self._output / f"{name}.png")
        return picture


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--program", type=Path, required=True)
    parser.add_argument("--output", type=Path, required=True)
    arguments = parser.parse_args()
    arguments.output.mkdir(parents=True, exist_ok=True)
    os.environ["TROVEL_BINARY"] = str(arguments.program.resolve())
    with Desktop(size=SIZE) as desktop:
        try:
            succeeded = Demonstration(desktop, arguments.output).run()
        except AssertionError as failure:
            say(f"\nFAILED: {failure}")
            succeeded = False
    say(f"Pictures of before, during and after lie in {arguments.output}.")
    sys.exit(0 if succeeded else 1)


if __name__ == "__main__":
    main()
