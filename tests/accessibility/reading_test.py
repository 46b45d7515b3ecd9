#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""tests/accessibility/reading_test.py PROGRAM [WORD...]: reads the window as somebody who cannot see it, by the accessibility
bus, with real keys, on an X server and a session bus of its own. With words it does only the parts that contain one. Prints
one line for each thing that must hold and ends with 1 if one does not, or with 77 where something that it needs is missing."""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

SKIPPED = 77
PYTHON = "/usr/bin/python3"  # the one for which a system has the library of the bus
NEEDED = ("Xvfb", "xdotool", "dbus-run-session")
SERVICE = pathlib.Path("/usr/share/dbus-1/services/org.a11y.Bus.service")


def knows_the_bus(python):
    return pathlib.Path(python).exists() and subprocess.run(
        [python, "-c", "import gi; gi.require_version('Atspi', '2.0'); from gi.repository import Atspi"],
        stderr=subprocess.DEVNULL).returncode == 0


def main():
    missing = [program for program in NEEDED if shutil.which(program) is None]
    if not SERVICE.exists():
        missing.append("at-spi2-core")
    python = next((each for each in (sys.executable, PYTHON) if knows_the_bus(each)), None)
    if python is None:
        missing.append("gir1.2-atspi-2.0 for python3-gi")
    if missing:
        print("reading_test: skipped, because these are missing:", *missing)
        return SKIPPED
    with tempfile.TemporaryDirectory() as folder:
        return read_in(folder, python)


def read_in(folder, python):
    server = subprocess.Popen(["Xvfb", "-displayfd", "1", "-screen", "0", "1366x768x24", "-nolisten", "tcp", "-noreset"],
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    places = {name: os.path.join(folder, name) for name in ("HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR")}
    for place in places.values():
        os.mkdir(place, 0o700)
    environment = dict(os.environ, **places, DISPLAY=":" + server.stdout.readline().decode().strip(), XAUTHORITY="",
                       QT_QPA_PLATFORM="xcb", QT_SCALE_FACTOR="1", QT_STYLE_OVERRIDE="fusion", LC_ALL="C.UTF-8",
                       QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", PYTHONDONTWRITEBYTECODE="1", GSETTINGS_BACKEND="memory")
    script = pathlib.Path(__file__).resolve().with_name("reading.py")
    try:
        return subprocess.run(["dbus-run-session", "--", python, script, folder, *sys.argv[1:]], env=environment).returncode
    finally:
        server.terminate()
        server.wait()


if __name__ == "__main__":
    sys.exit(main())
