#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""tests/com/window_desk.py HOST DLL [--pictures FOLDER] [--scale PERCENT]: uses the component, which HOST places in a window
by AtlAxWin, with real keys and a real mouse, under Wine on an X server of its own. Prints one line for each thing that
must hold and ends with 1 if one does not, or with 77 where there is no X server to be had. With --pictures it saves what
the window shows."""
import argparse
import os
import pathlib
import shutil
import struct
import subprocess
import sys
import tempfile
import time
import zlib

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
PATIENCE = 300  # seconds: far longer than the slowest machine needs
SKIPPED = 77


class Desk:
    """An X server without a physical screen, and the host on it."""

    def __init__(self, host, dll, percent):
        self.folder = tempfile.TemporaryDirectory()
        self.server = subprocess.Popen(["Xvfb", "-displayfd", "1", "-screen", "0", "1600x1200x24", "-fbdir", self.folder.name],
                                       stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        # A prefix of its own, because its desktop ends with the X server.
        prefix = os.environ.get("STOCKBOOK_WINE_PREFIX", str(ROOT / "build" / "wine-desk"))
        self.environment = dict(os.environ, DISPLAY=":" + self.server.stdout.readline().decode().strip(),
                                STOCKBOOK_WINE_PREFIX=prefix, WINEPREFIX=prefix)
        wine = str(ROOT / "tools" / "wine")
        subprocess.run([wine, "reg", "add", r"HKCU\Control Panel\Desktop", "/v", "LogPixels", "/t", "REG_DWORD", "/d",
                        str(96 * percent // 100), "/f"], env=self.environment, stdout=subprocess.DEVNULL, check=True)
        # The next one reads it.
        subprocess.run(["wineserver", "-k"], env=self.environment)
        self.host = subprocess.Popen([wine, host, "Z:" + str(pathlib.Path(dll).resolve())], env=self.environment,
                                     stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)

    def ask(self, command):
        self.host.stdin.write((command + "\n").encode())
        self.host.stdin.flush()
        answer = {}
        while True:
            line = self.host.stdout.readline().decode("utf-8").rstrip("\r\n")
            if line == ".":
                return answer
            if not line and self.host.poll() is not None:
                raise RuntimeError("the host has ended")
            name, _, value = line.partition("=")
            answer[name] = value

    def do(self, *words):
        subprocess.run(["xdotool", *map(str, words)], env=self.environment, check=True)

    def click(self, at, button=1):
        self.do("mousemove", *at)
        self.do("click", button)

    def middle(self, line, column):
        left, top, width, height = map(int, self.ask(f"cell {line} {column}")["rect"].split())
        return left + width // 2, top + height // 2

    def becomes(self, what, wanted):
        """Waits until the state has the value, or one that `wanted` accepts."""
        accepts = wanted if callable(wanted) else lambda value: value == wanted
        until = time.monotonic() + PATIENCE
        while True:
            value = self.ask("state").get(what, "")
            if accepts(value):
                print("ok   ", what, value[:100], flush=True)
                return
            if time.monotonic() > until:
                raise AssertionError(f"{what} stays {value!r}")
            time.sleep(0.05)

    def settle(self, seconds=1.0):
        """For pictures only: nothing depends on what is painted by then."""
        time.sleep(seconds)

    def picture(self, path, area):
        data = (pathlib.Path(self.folder.name) / "Xvfb_screen0").read_bytes()
        header = struct.unpack(">25I", data[:100])
        start, stride = header[0] + header[19] * 12, header[12]
        left, top, width, height = area
        rows = []
        for y in range(top, top + height):
            line = data[start + y * stride + left * 4:start + y * stride + (left + width) * 4]
            rgb = bytearray(width * 3)
            rgb[0::3], rgb[1::3], rgb[2::3] = line[2::4], line[1::4], line[0::4]
            rows.append(b"\0" + bytes(rgb))

        def chunk(kind, content):
            return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))

        path.write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)) +
                         chunk(b"IDAT", zlib.compress(b"".join(rows), 9)) + chunk(b"IEND", b""))

    def end(self):
        try:
            self.host.stdin.close()
            self.host.wait(60)
        finally:
            self.host.kill()
            subprocess.run(["wineserver", "-k"], env=self.environment)
            self.server.kill()
            self.folder.cleanup()


def use(desk, save):
    """What a user does, one thing after the other."""
    loaded = desk.ask("load")
    assert loaded["attached"] == "0" and loaded["loaded"] == "-1", loaded
    desk.becomes("focus", "grid")
    save("loaded")
    # Selecting, extending, copying.
    desk.click(desk.middle(3, 1))
    desk.becomes("current", lambda value: value.startswith("3 "))
    desk.do("key", "shift+Down")
    desk.becomes("end", lambda value: value.startswith("4 "))
    desk.do("key", "ctrl+c")
    desk.becomes("clipboard", lambda value: "\\n" in value or value.count("\\t") > 0)
    # The menu of the cells, left by Escape; the sheet keeps the keyboard.
    desk.click(desk.middle(3, 1), 3)
    desk.becomes("menu", lambda value: "复制" in value)
    save("menu")
    desk.do("key", "Escape")
    desk.becomes("menu", "")
    desk.becomes("focus", "grid")
    # The menu of a caption, with the field chooser.
    desk.click(desk.middle(0, 2), 3)
    desk.becomes("menu", lambda value: "冻结列" in value)
    desk.do("key", "Up", "Right")
    desk.becomes("menu", lambda value: " x|" in value and "冻结列" not in value)
    save("fields")
    desk.do("key", "Escape", "Escape")
    desk.becomes("menu", "")
    # Folding the period of the first node by its key.
    desk.click(desk.middle(2, 0))
    desk.becomes("current", lambda value: value.startswith("2 "))
    lines = int(desk.ask("cell 2 0")["lines"])
    desk.do("key", "minus")
    until = time.monotonic() + PATIENCE
    while int(desk.ask("cell 2 0")["lines"]) >= lines:
        assert time.monotonic() < until, "the period stays open"
        time.sleep(0.05)
    assert desk.ask("cell 2 0")["collapsed"] == "1"
    print("ok    folded")
    save("folded")
    # A smaller window scrolls.
    desk.ask("size 700 300")
    desk.becomes("view", lambda value: int(value.split()[0]) < 700)
    desk.do("mousemove", *desk.middle(1, 1))
    desk.do("click", 5)
    desk.becomes("top", lambda value: value not in ("0", "1"))
    # A column that is frozen by the access key of its menu stays while the others scroll.
    frozen = desk.ask("state")["frozen"]
    desk.click(desk.middle(0, 1), 3)
    desk.becomes("menu", lambda value: "冻结列" in value)
    desk.do("key", "z")
    desk.becomes("frozen", lambda value: value != frozen)
    place, left = desk.ask("cell 0 1")["rect"], desk.ask("state")["left"]
    desk.do("mousemove", *desk.middle(0, 1))
    desk.do("click", "--repeat", 3, 7)
    desk.becomes("left", lambda value: value != left)
    assert desk.ask("cell 0 1")["rect"] == place
    save("frozen", 700, 300)
    # The keyboard leaves for the form's next control, comes back, and moves on from where it was.
    desk.do("key", "Tab")
    desk.becomes("focus", "before")
    desk.do("key", "Tab")
    desk.becomes("focus", "grid")
    current = desk.ask("state")["current"]
    desk.do("key", "Down")
    desk.becomes("current", lambda value: value != current)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("host")
    parser.add_argument("dll")
    parser.add_argument("--pictures", type=pathlib.Path)
    parser.add_argument("--scale", type=int, default=100)
    options = parser.parse_args()
    missing = [program for program in ("Xvfb", "xdotool", "wine") if shutil.which(program) is None]
    if missing:
        print("window_desk: skipped without", *missing)
        return SKIPPED
    desk = Desk(options.host, options.dll, options.scale)

    def save(name, width=1000, height=620):
        if options.pictures:
            desk.settle()
            desk.picture(options.pictures / f"{name}-{options.scale}.png", (0, 0, width, height))

    try:
        use(desk, save)
    finally:
        desk.end()
    print("window_desk: everything holds")
    return 0


if __name__ == "__main__":
    sys.exit(main())
