#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The recipes of other package managers, and what is written down beside them, agree with the tree. recipes_test.py CMAKE
[unittest's arguments]. Neither vcpkg nor Conan is needed: the recipes are read, and vcpkg's runs with its commands stubbed."""
import ast
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

TREE = pathlib.Path(__file__).resolve().parent.parent.parent
PACKAGING = TREE / "packaging"
CMAKE = sys.argv[1]
COMMANDS = ("vcpkg_check_features", "vcpkg_cmake_configure", "vcpkg_cmake_install", "vcpkg_cmake_config_fixup",
            "vcpkg_fixup_pkgconfig", "vcpkg_install_copyright")


def text(path):
    return (TREE / path).read_text(encoding="utf-8")


VERSION = re.search(r"project\(Stockbook VERSION ([0-9.]+)", text("CMakeLists.txt")).group(1)
OPTIONS = set(re.findall(r"^option\((STOCKBOOK_\w+)", text("CMakeLists.txt"), re.M))


class Vcpkg(unittest.TestCase):
    def run_port(self):
        with tempfile.TemporaryDirectory() as folder:
            script = pathlib.Path(folder) / "port.cmake"
            stubs = "".join(f'function({name})\n  message("{name};${{ARGN}}")\nendfunction()\n' for name in COMMANDS)
            script.write_text(f'{stubs}set(CURRENT_PACKAGES_DIR "{folder}")\nset(PORT stockbook)\n'
                              f'include("{PACKAGING.as_posix()}/vcpkg/portfile.cmake")\n', encoding="utf-8")
            done = subprocess.run([CMAKE, "-P", script], capture_output=True, text=True, encoding="utf-8")
            self.assertTrue((pathlib.Path(folder) / "share" / "stockbook" / "usage").exists())
        self.assertEqual(done.returncode, 0, done.stderr)
        return {line.split(";")[0]: line.split(";")[1:] for line in done.stderr.splitlines() if ";" in line}

    def test_builds_the_tree_it_lies_in_with_options_that_the_tree_has(self):
        calls = self.run_port()
        self.assertEqual(set(calls), set(COMMANDS))
        configured = calls["vcpkg_cmake_configure"]
        self.assertEqual(configured[1], TREE.as_posix())
        named = set(re.findall(r"STOCKBOOK_\w+", " ".join(configured + calls["vcpkg_check_features"])))
        self.assertFalse(named - OPTIONS)

    def test_has_the_version_of_the_tree_and_features_that_exist(self):
        manifest = json.loads(text("packaging/vcpkg/vcpkg.json"))
        self.assertEqual(manifest["version-semver"], VERSION)
        features = re.findall(r"^    (\w+) STOCKBOOK_", text("packaging/vcpkg/portfile.cmake"), re.M)
        self.assertEqual(set(features), set(manifest["features"]))
        self.assertLessEqual(set(manifest["default-features"]), set(manifest["features"]))


class Conan(unittest.TestCase):
    def test_is_python_and_names_options_that_the_tree_has(self):
        recipe = text("packaging/conan/conanfile.py")
        ast.parse(text("packaging/conan/test_package/conanfile.py"))
        parts = next(node.iter for node in ast.walk(ast.parse(recipe))
                     if isinstance(node, ast.For) and getattr(node.target, "id", "") == "part")
        named = {f"STOCKBOOK_{part}" for part in ast.literal_eval(parts)}
        named |= set(re.findall(r'cache_variables\["(STOCKBOOK_\w+)"\]', recipe))
        self.assertGreater(len(named), 5)
        self.assertFalse(named - OPTIONS)

    def test_takes_every_folder_along_that_the_libraries_are_built_of(self):
        recipe = text("packaging/conan/conanfile.py")
        for folder in ("cmake", "include", "src", "packaging"):
            self.assertIn(f'"{folder}/*"', recipe)

    def test_finds_the_version_where_it_stands(self):
        expression = re.search(r're\.search\((r".*?"), said\)', text("packaging/conan/conanfile.py")).group(1)
        self.assertEqual(re.search(ast.literal_eval(expression), text("CMakeLists.txt")).group(1), VERSION)


if __name__ == "__main__":
    del sys.argv[1:2]
    unittest.main(verbosity=2)
