#!/usr/bin/python3
"""windows.py TROVEL [--rounds N] [--count N] [--out FILE]

Measures the setup windows on a private X display: the times to painted pixels, the work that they
cause while they are open, and the memory that they leave behind. Writes a Markdown table."""
import argparse
import os
import statistics
import time

from harness.desktop import Desktop
from harness.driver import DOWN, RETURN, RIGHT_ARROW, UP
from harness.setup_windows import (
    CHANGE_APP, ONBOARDING, PERMISSIONS, RECORDER, setup_windows, wait_for_setup_window)
from harness.waiting import wait_until
from usage import cpu_ms, memory, wakeups

ROWS = {"change app": (CHANGE_APP, [DOWN, DOWN, RIGHT_ARROW, UP]),
        "hotkey recorder": (RECORDER, [DOWN] * 3), "permissions": (PERMISSIONS, [DOWN] * 7)}
WIDTH, HEIGHT = 120, 20  # of the part that is watched, in pixels
FRAME_SECONDS = 0.016
FADE_SECONDS = 0.12


class Middle:
    """The pixels in the middle of the screen, where every window lies."""

    def __init__(self, desktop):
        width, height = desktop.size
        self._desktop = desktop
        self._place = (width // 2 - WIDTH // 2, height * 2 // 5, WIDTH, HEIGHT)
        self._before = self._pixels()

    def wait_for_paint(self):
        """The moment, in monotonic seconds, at which almost all of it is another than before."""
        def is_painted():
            changed = sum(now != before for now, before in zip(self._pixels(), self._before))
            return changed > 0.9 * len(self._before)
        wait_until(is_painted, "a window is painted")
        return time.monotonic()

    def _pixels(self):
        return list(self._desktop.observer.screenshot(self._place).getdata())


def open_from_menu(desktop, keys):
    """Opens a window; returns the milliseconds from the key that chooses it to its pixels."""
    desktop.driver.move((20, 20))
    middle = Middle(desktop)
    desktop.processes.run(os.environ["TROVEL_BINARY"])
    desktop.observer.wait_for_menu()
    for key in keys:
        desktop.driver.press(key)
    mark = desktop.tap.mark()
    desktop.driver.press(RETURN)
    painted = middle.wait_for_paint()
    return painted * 1e3 - desktop.tap.since(mark)[0].time


def close(desktop, program, size):
    wait_until(lambda: setup_windows(desktop, program, size), "the window is managed")[0].close()
    wait_until(lambda: not program.windows(), "the window is gone")


def first_start(rounds):
    times = []
    for _ in range(rounds):
        with Desktop(size=(1920, 1080)) as desktop:
            desktop.paint()
            middle = Middle(desktop)
            since = time.monotonic()
            program = desktop.start_program(None, wait=False)
            times.append((middle.wait_for_paint() - since) * 1e3)
            wait_for_setup_window(desktop, program, ONBOARDING)
            program.terminate()
    return statistics.median(times)


def opening(desktop, program, rounds):
    for name, (size, keys) in ROWS.items():
        times = []
        for _ in range(rounds):
            times.append(open_from_menu(desktop, keys))
            close(desktop, program, size)
        yield f"choice in the menu, and its leaving the screen, to the {name} window, ms", "-", \
            statistics.median(times)


def opening_by_hotkey(rounds):
    """Without the grants the hotkey opens the permissions window, with nothing else to wait for."""
    times = []
    with Desktop(size=(1920, 1080)) as desktop:
        desktop.paint()
        program = desktop.start_program({}, environment={"XDG_SESSION_TYPE": "wayland"})
        for _ in range(rounds):
            middle = Middle(desktop)
            mark = desktop.tap.mark()
            desktop.driver.press_hotkey()
            painted = middle.wait_for_paint()
            pressed = [event for event in desktop.tap.since(mark) if event.kind == "key down"][-1]
            times.append(painted * 1e3 - pressed.time)
            close(desktop, program, PERMISSIONS)
        program.terminate()
    return statistics.median(times)


def work(desktop, program):
    size, keys = ROWS["change app"]
    open_from_menu(desktop, keys)
    window = wait_for_setup_window(desktop, program, size)
    rounds = 40
    desktop.driver.move(window.point(window.tile(1)))
    time.sleep(0.5)
    before = cpu_ms(program.pid)
    for index in range(rounds):
        desktop.driver.move(window.point(window.tile(2 if index % 2 == 0 else 1)))
        time.sleep(FADE_SECONDS + 0.05)
    frames = rounds * FADE_SECONDS / FRAME_SECONDS
    yield "a frame of two cards' fading: CPU, ms", "< 1", (cpu_ms(program.pid) - before) / frames
    time.sleep(0.5)
    cpu, wake = cpu_ms(program.pid), wakeups(program.pid)
    time.sleep(10)
    yield "10 s with that window open and still: CPU, ms", "0", cpu_ms(program.pid) - cpu
    yield "the same: wake-ups", "0", wakeups(program.pid) - wake
    close(desktop, program, size)
    size, keys = ROWS["permissions"]
    open_from_menu(desktop, keys)
    time.sleep(2)
    cpu = cpu_ms(program.pid)
    time.sleep(10)
    yield "a second with the permissions window open: CPU, ms", "< 0.5", \
        (cpu_ms(program.pid) - cpu) / 10
    close(desktop, program, size)


def growth(desktop, program, count):
    names = list(ROWS)

    def open_and_close(index):
        size, keys = ROWS[names[index % len(names)]]
        open_from_menu(desktop, keys)
        close(desktop, program, size)
    for index in range(10):
        open_and_close(index)
    before = memory(program.pid)["anonymous"]
    for index in range(count):
        open_and_close(index)
    yield f"memory's growth over {count} windows opened and closed, MiB", "0", \
        memory(program.pid)["anonymous"] - before


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("trovel")
    parser.add_argument("--rounds", type=int, default=7)
    parser.add_argument("--count", type=int, default=100)
    parser.add_argument("--out", default="/dev/stdout")
    options = parser.parse_args()
    os.environ["TROVEL_BINARY"] = os.path.abspath(options.trovel)
    rows = [("start of the process to the painted first window, ms", "≤ 140",
             first_start(options.rounds)),
            ("hotkey without grants to the painted permissions window, ms", "≤ 60",
             opening_by_hotkey(options.rounds))]
    with Desktop(size=(1920, 1080)) as desktop:
        desktop.paint()
        program = desktop.start_program({})
        rows += opening(desktop, program, options.rounds)
        rows += work(desktop, program)
        rows += growth(desktop, program, options.count)
        program.terminate()
    with open(options.out, "w", encoding="utf-8") as file:
        file.write("| step | Trovel | reach |\n|---|---:|---:|\n")
        for step, reach, value in rows:
            file.write(f"| {step} | {value:.2f} | {reach} |\n")


if __name__ == "__main__":
    main()
