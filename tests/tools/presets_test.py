#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The presets compile with what they are there for: checked preconditions while developing and under the sanitizers,
hardened programs for users. presets_test.py CMAKE"""
import json
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

TREE = pathlib.Path(__file__).resolve().parent.parent.parent
CMAKE = sys.argv[1]
# The smallest part of the tree that the switches reach.
SMALL = [f"-DSTOCKBOOK_{part}=OFF" for part in ("TESTS", "APP", "BENCH", "EXAMPLES")] + ["-DSTOCKBOOK_CORE_ONLY=ON"]


def configured(preset):
    """The command that compiles the room base, or one source of it."""
    with tempfile.TemporaryDirectory() as folder:
        build = pathlib.Path(folder)
        done = subprocess.run([CMAKE, "--preset", preset, "-B", build, *SMALL], cwd=TREE, capture_output=True, text=True,
                              encoding="utf-8")
        assert done.returncode == 0, done.stdout + done.stderr
        commands = json.loads((build / "compile_commands.json").read_text(encoding="utf-8"))
        return next(each["command"] for each in commands if "stockbook_base.dir/" in each["command"])


class Presets(unittest.TestCase):
    def test_developing_checks_the_preconditions_of_the_standard_library(self):
        command = configured("dev")
        self.assertIn("-D_GLIBCXX_ASSERTIONS", command)
        self.assertNotIn("-DNDEBUG", command)

    def test_the_sanitizers_check_them_too(self):
        # The second one compiles by clang, which only a build machine needs.
        for preset in ("asan", "ci-asan") if shutil.which("clang++") else ("asan",):
            command = configured(preset)
            self.assertIn("-fsanitize=address,undefined", command, preset)
            self.assertIn("-D_GLIBCXX_ASSERTIONS", command, preset)

    def test_what_users_get_is_hardened(self):
        command = configured("release")
        for switch in ("-D_FORTIFY_SOURCE=2", "-fstack-protector-strong", "-O"):
            self.assertIn(switch, command)
        # What goes into shared libraries can be loaded anywhere as well.
        self.assertRegex(command, " -fPI[CE] ")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
