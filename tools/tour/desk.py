# SPDX-License-Identifier: MIT
"""A desk for tools/draw-tour: an X server without a physical screen, a window manager and a session bus of its own, and the
program on it."""
import os
import pathlib
import shutil
import struct
import subprocess
import tempfile
import time

PATIENCE = float(os.environ.get("STOCKBOOK_TOUR_PATIENCE", "120"))  # seconds: far longer than a slow machine needs
WIDTH, HEIGHT = 1024, 640
NEEDED = {"Xvfb": "xvfb", "xdotool": "xdotool", "openbox": "openbox", "dbus-daemon": "dbus-daemon"}
# The window fills the small screen; its dialogs stay in front of it.
MANAGER = """<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew></focus>
  <placement><policy>Smart</policy><center>yes</center></placement>
  <theme><name>Clearlooks</name><titleLayout>NLC</titleLayout></theme>
  <desktops><number>1</number><popupTime>0</popupTime></desktops>
  <keyboard/>
  <applications><application class="stockbook" type="normal"><maximized>yes</maximized></application></applications>
</openbox_config>
"""


def missing_packages():
    return [package for program, package in NEEDED.items() if shutil.which(program) is None]


class Desk:
    def __init__(self, display):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="stockbook-tour."))
        self.home = self.folder / "home"
        self.home.mkdir()
        self.program = None
        self.processes = []
        place = [] if display is None else [f":{display}"]
        number = self.begin("Xvfb", *place, "-displayfd", "1", "-screen", "0", f"{WIDTH}x{HEIGHT}x24", "-nolisten", "tcp",
                            "-noreset", "-fbdir", self.folder)
        bus = self.begin("dbus-daemon", "--session", "--print-address", "--nofork", "--nopidfile")
        # The bus of the accessibility is started by the first who asks for it, in this environment.
        os.environ.update(DISPLAY=f":{number}", DBUS_SESSION_BUS_ADDRESS=bus, HOME=str(self.home),
                          XDG_RUNTIME_DIR=str(self.folder), XDG_CONFIG_HOME=str(self.home / ".config"),
                          XDG_DATA_HOME=str(self.home / ".local" / "share"), XDG_CACHE_HOME=str(self.home / ".cache"),
                          LC_ALL="C.UTF-8", QT_QPA_PLATFORM="xcb", QT_SCALE_FACTOR="1", QT_STYLE_OVERRIDE="fusion",
                          QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", XAUTHORITY="")
        rules = self.folder / "rc.xml"
        rules.write_text(MANAGER, encoding="utf-8")
        self.processes.append(subprocess.Popen(["openbox", "--config-file", str(rules)], stdout=subprocess.DEVNULL,
                                               stderr=subprocess.DEVNULL))

    def begin(self, *command):
        """Starts what tells where it is to be found."""
        process = subprocess.Popen(list(map(str, command)), stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.processes.append(process)
        told = process.stdout.readline().decode().strip()
        if not told:
            raise RuntimeError(f"{command[0]} did not start")
        return told

    def start(self, *command):
        self.program = subprocess.Popen(list(map(str, command)), cwd=self.home)

    def wait(self):
        status = self.program.wait(PATIENCE)
        assert status == 0, f"the program ended with {status}"

    def end(self):
        for process in ([self.program] if self.program else []) + self.processes[::-1]:
            process.terminate()
            process.wait(PATIENCE)
        shutil.rmtree(self.folder, ignore_errors=True)

    def do(self, *words):
        subprocess.run(["xdotool", *map(str, words)], check=True)

    def key(self, *keys):
        self.do("key", "--clearmodifiers", *keys)

    def type(self, text):
        self.do("type", "--delay", "20", text)

    def click(self, at, *words):
        self.do("mousemove", *at, "click", *words, 1)

    def drag(self, start, stop):
        middle = [(one + other) // 2 for one, other in zip(start, stop)]
        self.do("mousemove", *start, "mousedown", 1, "mousemove", *middle, "mousemove", *stop, "mouseup", 1)

    def rows(self):
        """The rows of the screen, four bytes a pixel: blue, green, red, nothing."""
        data = (self.folder / "Xvfb_screen0").read_bytes()
        header = struct.unpack(">25I", data[:100])
        start, stride = header[0] + header[19] * 12, header[12]
        return [data[start + y * stride:start + y * stride + WIDTH * 4] for y in range(HEIGHT)]

    def settled(self, seconds=0.4, at_most=3):
        """The screen once nothing has changed on it for a while, or but for a blinking cursor: for pictures only, no step
        depends on it."""
        until = time.monotonic() + at_most
        before, since = self.rows(), time.monotonic()
        while time.monotonic() < until and time.monotonic() - since < seconds:
            time.sleep(0.1)
            now = self.rows()
            if now != before:
                before, since = now, time.monotonic()
        return before
