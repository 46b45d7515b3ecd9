#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The samples for Windows run to their last line, by a component that is registered and one that is not; a script that dies
under Wine ends like one that is well, so the line is what counts. windows_samples_test.py WINE COMPONENT HOST"""
import pathlib
import subprocess
import sys
import unittest

TREE = pathlib.Path(__file__).resolve().parent.parent.parent
WINE, COMPONENT, HOST = (pathlib.Path(path).resolve() for path in sys.argv[1:4])


def run(*words):
    """What a program of Windows writes."""
    done = subprocess.run([WINE, *words], cwd=TREE, capture_output=True, timeout=300, stdin=subprocess.DEVNULL, check=False)
    return done.stdout.decode("utf-8", errors="replace").replace("\r", "").rstrip("\n").split("\n")


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


def script():
    return [line.rstrip() for line in run("cscript", "//nologo", windows_path(TREE / "examples/windows/journal.vbs"))]


class WithTheComponentRegistered(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        run("regsvr32", "/s", windows_path(COMPONENT))

    @classmethod
    def tearDownClass(cls):
        run("regsvr32", "/s", "/u", windows_path(COMPONENT))

    def test_the_script_asks_the_class(self):
        lines = script()
        self.assertEqual(lines[:1], ["Format name: Stockbook"])
        self.assertIn("error 6", lines[-2])
        self.assertEqual(lines[-1], "journal.vbs: done")

    def test_the_host_finds_the_class(self):
        self.assertEqual(run(HOST, "--seconds", "1")[-1], "host: done")


class WithoutTheComponentRegistered(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        # Whoever was stopped in the middle of these tests has left it.
        run("regsvr32", "/s", "/u", windows_path(COMPONENT))

    def test_the_script_does_not_come_to_its_end(self):
        self.assertNotEqual(script()[-1:], ["journal.vbs: done"])

    def test_the_host_shows_the_control_and_hears_it(self):
        lines = run(HOST, "--dll", windows_path(COMPONENT), "--seconds", "1")
        self.assertIn("CommandExecute: Load", lines)
        self.assertIn("references left: 0", lines)
        self.assertEqual(lines[-1], "host: done")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
