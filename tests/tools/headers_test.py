#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The public headers compile in a host that is stricter than this tree: warnings are errors, the toolkit's keywords are off,
and words that hosts like for macros are taken. headers_test.py INCLUDE_FOLDER TOOLKIT_FOLDERS, the latter joined by commas; each
room's headers are one source, because `make check` compiles every header alone."""
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

INCLUDE = pathlib.Path(sys.argv[1])
TOOLKIT = [folder for folder in sys.argv[2].split(",") if folder]
FLAGS = ["-std=c++20", "-fsyntax-only", "-fPIC", "-Werror", "-Wall", "-Wextra", "-Wpedantic", "-Wconversion",
         "-Wsign-conversion", "-Wshadow", "-Wold-style-cast", "-Wnon-virtual-dtor", "-Woverloaded-virtual",
         "-DQT_NO_KEYWORDS", "-DQT_NO_CAST_FROM_ASCII", "-DQT_NO_CAST_TO_ASCII", "-DQT_NO_URL_CAST_FROM_STRING"]


class PublicHeaders(unittest.TestCase):
    def compile_with(self, compiler):
        if shutil.which(compiler) is None:
            self.skipTest(f"{compiler} is not installed")
        rooms = {}
        for header in sorted(INCLUDE.rglob("*.h")):
            name = header.relative_to(INCLUDE).as_posix()
            rooms.setdefault(name.split("/")[1], []).append(name)
        self.assertIn("qt", rooms)
        for room, headers in rooms.items():
            with self.subTest(room=room), tempfile.TemporaryDirectory() as folder:
                source = pathlib.Path(folder) / "host.cc"
                source.write_text("".join(f"#include <{header}>\n" for header in headers))
                done = subprocess.run([compiler, *FLAGS, "-I", INCLUDE, *(f"-isystem{place}" for place in TOOLKIT), source],
                                      capture_output=True, text=True)
                self.assertEqual((done.returncode, done.stderr), (0, ""))

    def test_compile_by_gcc(self):
        self.compile_with("g++")

    def test_compile_by_clang(self):
        self.compile_with("clang++")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
