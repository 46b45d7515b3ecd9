#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""A host takes this tree in by add_subdirectory(): it configures, has warnings of its own and names of its own, and finds
nothing forced on it. embedding_test.py CMAKE COMPILER"""
import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

TREE = pathlib.Path(__file__).resolve().parent.parent.parent
CMAKE, COMPILER = sys.argv[1:3]

HOST = """
cmake_minimum_required(VERSION 3.25)
project(Host LANGUAGES CXX)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
# Names that a host may have as well.
add_executable(stockbook other.cc)
add_executable(plain main.cc)
foreach(name app base control grid sheet qt base_tests journal_tests window_host grid_only load_bench stockbook_tests)
  add_custom_target(${name})
endforeach()
enable_testing()
add_subdirectory(@TREE@ control)
target_link_libraries(stockbook PRIVATE Stockbook::Qt Stockbook::Databases)
# Compiled alone: nothing that generates code stands before it.
target_link_libraries(plain PRIVATE Stockbook::Base)

function(check_names folder)
  get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
  foreach(target IN LISTS targets)
    if(NOT target MATCHES "^stockbook_")
      message(FATAL_ERROR "the target ${target} takes a name of the host")
    endif()
  endforeach()
  get_property(folders DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
  foreach(below IN LISTS folders)
    check_names(${below})
  endforeach()
endfunction()
check_names(@TREE@)
"""
# What the tree itself is not allowed: a lost fraction, a sign, a shadow, a variable that is not used.
MAIN = """
#include "stockbook/base/money.h"
int main() {
  int cents = 2.75;
  unsigned count = cents;
  { int cents = 1; }
  return stockbook::base::Money().IsZero() ? 0 : static_cast<int>(count);
}
"""


class Embedded(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.host = pathlib.Path(folder.name)
        cls.build = cls.host / "build"
        (cls.host / "CMakeLists.txt").write_text(HOST.replace("@TREE@", TREE.as_posix()), encoding="utf-8")
        for name in ("main.cc", "other.cc"):
            (cls.host / name).write_text(MAIN, encoding="utf-8")
        done = subprocess.run([CMAKE, "-S", cls.host, "-B", cls.build, "-G", "Ninja", f"-DCMAKE_CXX_COMPILER={COMPILER}"],
                              capture_output=True, text=True, encoding="utf-8")
        assert done.returncode == 0, done.stdout + done.stderr
        commands = json.loads((cls.build / "compile_commands.json").read_text(encoding="utf-8"))
        # The libraries' sources are compiled several at a time.
        cls.of_the_tree = next(each["command"] for each in commands if "stockbook_base.dir" in each["command"])
        cls.commands = {pathlib.Path(each["file"]).name: each["command"] for each in commands}

    def test_warnings_stay_those_of_the_host(self):
        for source in ("main.cc", "other.cc"):
            self.assertNotIn("-W", self.commands[source])
            self.assertNotIn("-ffp-contract", self.commands[source])
        done = subprocess.run([CMAKE, "--build", self.build, "--target", "CMakeFiles/plain.dir/main.cc.o"],
                              capture_output=True, text=True, encoding="utf-8")
        self.assertEqual(done.returncode, 0, done.stdout)

    def test_the_tree_has_its_warnings_but_they_are_no_errors(self):
        self.assertIn("-Wconversion", self.of_the_tree)
        self.assertNotIn("-Werror", self.of_the_tree)

    def test_the_build_type_is_left_to_the_host(self):
        self.assertIn("CMAKE_BUILD_TYPE:STRING=\n", (self.build / "CMakeCache.txt").read_text(encoding="utf-8"))
        self.assertNotIn("-O3", self.commands["main.cc"])

    def test_no_compiler_cache_is_put_before_the_compiler(self):
        rules = (self.build / "CMakeFiles" / "rules.ninja").read_text(encoding="utf-8")
        commands = [line for line in rules.split("\n") if line.strip().startswith("command =") and COMPILER in line]
        self.assertNotEqual(commands, [])
        self.assertEqual([line for line in commands if "ccache" in line.split(COMPILER)[0]], [])

    def test_nothing_but_the_libraries_is_built(self):
        sources = [each for each in self.commands if each.endswith(("_test.cc", "_bench.cc"))]
        self.assertEqual(sources, [])
        self.assertNotIn("main_window.cc", self.commands)
        tests = subprocess.run(["ctest", "--test-dir", self.build, "-N"], capture_output=True, text=True, check=True)
        self.assertIn("Total Tests: 0", tests.stdout)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
