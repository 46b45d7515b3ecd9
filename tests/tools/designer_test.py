#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The plugin for Qt Designer is built where the shared libraries are, whatever the folder was configured for before.
designer_test.py CMAKE COMPILER"""
import pathlib
import subprocess
import sys
import tempfile
import unittest

TREE = pathlib.Path(__file__).resolve().parent.parent.parent
CMAKE, COMPILER = sys.argv[1:3]
LIBRARIES = [f"-DSTOCKBOOK_{part}=OFF" for part in ("TESTS", "APP", "BENCH", "EXAMPLES")]


class Plugin(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.build = pathlib.Path(folder.name)

    def configure(self, *switches):
        done = subprocess.run([CMAKE, "-S", TREE, "-B", self.build, "-G", "Ninja", f"-DCMAKE_CXX_COMPILER={COMPILER}",
                               *LIBRARIES, *switches], capture_output=True, text=True, encoding="utf-8")
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        return done.stdout

    def has_plugin(self):
        return "stockbook_designer" in (self.build / "build.ninja").read_text(encoding="utf-8")

    def test_goes_and_comes_with_the_shared_libraries(self):
        self.configure()
        self.assertFalse(self.has_plugin())
        at_hand = "UiPlugin is missing" not in self.configure("-DSTOCKBOOK_SHARED=ON")
        self.assertEqual(self.has_plugin(), at_hand)
        self.configure("-DSTOCKBOOK_SHARED=OFF", "-DSTOCKBOOK_STATIC=ON")
        self.assertFalse(self.has_plugin())

    def test_stays_away_when_it_is_not_wanted(self):
        self.configure("-DSTOCKBOOK_SHARED=ON", "-DSTOCKBOOK_DESIGNER=OFF")
        self.assertFalse(self.has_plugin())

    def test_finds_the_libraries_below_its_prefix_and_says_nothing_of_the_system_s(self):
        if "UiPlugin is missing" in self.configure("-DSTOCKBOOK_SHARED=ON", "-DCMAKE_INSTALL_PREFIX=/opt/stock"):
            self.skipTest("Qt UiPlugin is missing")
        self.assertIn("$ORIGIN/../", self.install_script())
        self.configure("-DCMAKE_INSTALL_PREFIX=/usr")
        self.assertNotIn("$ORIGIN", self.install_script())

    def install_script(self):
        return (self.build / "cmake_install.cmake").read_text(encoding="utf-8")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
