#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The Debian packages, of a small project whose components have the shape of this tree's: two libraries, headers, a plugin, a
program, a page. packages_test.py CMAKE COMPILER [unittest's arguments]"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

TREE = pathlib.Path(__file__).resolve().parent.parent.parent
CMAKE, COMPILER = sys.argv[1:3]
CPACK = pathlib.Path(CMAKE).with_name("cpack")
VERSION = "1.2.3"
LISTS = """
cmake_minimum_required(VERSION 3.25)
project(Stockbook VERSION @VERSION@ LANGUAGES CXX)
include(GNUInstallDirs)
set(CMAKE_SKIP_RPATH ON)
set(stockbook_soversion 1)
link_libraries(-Wl,-z,relro,-z,now)
add_library(inner SHARED inner.cc)
add_library(outer SHARED outer.cc)
target_link_libraries(outer PRIVATE inner)
set_target_properties(inner outer PROPERTIES VERSION @VERSION@ SOVERSION 1)
install(TARGETS inner outer LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT development)
install(FILES inner.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/stockbook COMPONENT development)
add_library(plugin MODULE plugin.cc)
target_link_libraries(plugin PRIVATE outer)
install(TARGETS plugin LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/qt6/plugins/designer COMPONENT designer)
install(DIRECTORY html DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/stockbook COMPONENT documentation)
add_executable(stockbook_host main.cc)
target_link_libraries(stockbook_host PRIVATE outer)
set_target_properties(stockbook_host PROPERTIES OUTPUT_NAME stockbook)
# A library that the program loads by itself, looked for in a folder of its own.
file(WRITE ${CMAKE_SOURCE_DIR}/program/CMakeLists.txt "find_package(PkgConfig)\npkg_check_modules(STOCKBOOK_ZIP libzip)\n")
add_subdirectory(program)
add_subdirectory(@TREE@/packaging packaging)
"""
SOURCES = {
    "inner.h": "int Inner(int);\n",
    "inner.cc": '#include "inner.h"\n#include <cstdio>\nint Inner(int n) { return std::printf("%d", n); }\n',
    "outer.cc": '#include <cstdio>\n#include "inner.h"\nint Outer(int n) { return std::puts("outer") + Inner(n); }\n',
    "plugin.cc": '#include <cstdio>\nint Outer(int);\nint Plugged() { return std::puts("plugged") + Outer(2); }\n',
    "main.cc": "int Outer(int);\nint main(int argc, char**) { return Outer(argc); }\n",
    "html/index.html": "<!DOCTYPE html>\n<html><head><title>Book</title></head><body>Book</body></html>\n",
    "CHANGELOG.md": "# Changelog\n\n## [Unreleased]\n\n- Something new.\n\n## [1.2.2] - 2026-01-02\n\n- Something old.\n",
}
NAMES = ("libstockbook-dev", "libstockbook1", "qt6-stockbook-designer", "stockbook", "stockbook-doc")


def run(*arguments, **others):
    return subprocess.run([str(argument) for argument in arguments], capture_output=True, text=True, encoding="utf-8", **others)


HAS_ZIP = bool(shutil.which("pkg-config")) and run("pkg-config", "--exists", "libzip").returncode == 0


@unittest.skipUnless(shutil.which("dpkg-shlibdeps") and shutil.which("fakeroot"), "dpkg-dev or fakeroot is not here")
class Packages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        for name, said in {**SOURCES, "CMakeLists.txt": LISTS.replace("@TREE@", TREE.as_posix()).replace("@VERSION@", VERSION)}.items():
            (cls.folder / name).parent.mkdir(exist_ok=True)
            (cls.folder / name).write_text(said, encoding="utf-8")
        cls.build = cls.folder / "build"
        for step in ((CMAKE, "-S", cls.folder, "-B", cls.build, "-G", "Ninja", f"-DCMAKE_CXX_COMPILER={COMPILER}",
                      "-DCMAKE_INSTALL_PREFIX=/usr", "-DCMAKE_BUILD_TYPE=Release"), (CMAKE, "--build", cls.build)):
            done = run(*step)
            assert done.returncode == 0, done.stdout + done.stderr
        cls.packages = cls.pack("packed")

    @classmethod
    def pack(cls, folder):
        done = run(CPACK, "-G", "DEB", "-B", cls.folder / folder, cwd=cls.build, env=dict(os.environ, SOURCE_DATE_EPOCH="1700000000"))
        assert done.returncode == 0, done.stdout + done.stderr
        return {path.name.partition("_")[0]: path for path in (cls.folder / folder).glob("*.deb")}

    def field(self, package, name):
        return run("dpkg-deb", "-f", self.packages[package], name).stdout.strip()

    def contents(self, package):
        return set(re.findall(r" \./(\S+[^/\s])(?: ->|$)", run("dpkg-deb", "-c", self.packages[package]).stdout, re.M))

    def test_are_made_of_every_component_that_has_files(self):
        self.assertEqual(tuple(sorted(self.packages)), NAMES)
        for name in NAMES:
            self.assertEqual(self.field(name, "Version"), f"{VERSION}-1")
            self.assertRegex(self.field(name, "Maintainer"), r"^[^<>]+ <[^@<>]+@[^@<>]+>$")
        summaries = {self.field(name, "Description").splitlines()[0] for name in NAMES}
        self.assertEqual(len(summaries), len(NAMES))

    def test_need_each_other_in_the_same_version(self):
        for name in ("libstockbook-dev", "qt6-stockbook-designer"):
            self.assertIn(f"libstockbook1 (= {VERSION}-1)", self.field(name, "Depends"))
        self.assertIn("libc6", self.field("libstockbook1", "Depends"))
        self.assertNotIn("stockbook", self.field("libstockbook1", "Depends"))

    @unittest.skipUnless(HAS_ZIP, "libzip-dev is not here")
    def test_recommend_what_the_program_loads_by_itself(self):
        self.assertRegex(self.field("stockbook", "Recommends"), r"(^|, )libzip\d+")

    def test_of_libraries_tell_others_and_the_loader(self):
        self.assertEqual(run("dpkg-deb", "-I", self.packages["libstockbook1"], "triggers").stdout.strip(), "activate-noawait ldconfig")
        shlibs = run("dpkg-deb", "-I", self.packages["libstockbook1"], "shlibs").stdout.split("\n")
        self.assertIn(f"libinner 1 libstockbook1 (>= {VERSION}-1)", shlibs)
        for name in NAMES:
            self.assertNotEqual(run("dpkg-deb", "-I", self.packages[name], "postinst").returncode, 0)

    def test_put_everything_into_its_place(self):
        program = self.contents("stockbook")
        for path in ("bin/stockbook", "share/applications/stockbook.desktop", "share/mime/packages/stockbook.xml",
                     "share/man/man1/stockbook.1.gz", "share/metainfo/org.example.stockbook.metainfo.xml",
                     "share/icons/hicolor/scalable/apps/stockbook.svg", "share/icons/hicolor/48x48/apps/stockbook.png",
                     "share/bash-completion/completions/stockbook", "share/zsh/vendor-completions/_stockbook"):
            self.assertIn(f"usr/{path}", program)
        libraries = self.contents("libstockbook1")
        self.assertTrue(any(re.match(r"usr/lib/[^/]+/libinner\.so\.1$", path) for path in libraries), libraries)
        self.assertFalse([path for path in libraries if path.endswith((".so", ".h"))])
        book = self.contents("stockbook-doc")
        self.assertIn("usr/share/doc/stockbook/html/index.html", book)
        self.assertIn("usr/share/doc-base/stockbook-doc.stockbook", book)
        self.assertEqual(self.field("stockbook-doc", "Architecture"), "all")
        for name in NAMES:
            for path in ("copyright", "changelog.Debian.gz"):
                self.assertIn(f"usr/share/doc/{name}/{path}", self.contents(name))

    def test_have_the_same_bytes_when_they_are_made_again(self):
        again = self.pack("again")
        for name in NAMES:
            self.assertEqual(again[name].read_bytes(), self.packages[name].read_bytes(), name)

    @unittest.skipUnless(shutil.which("lintian"), "lintian is not here")
    def test_have_no_error_that_lintian_finds(self):
        done = run("lintian", "--allow-root", *self.packages.values())
        self.assertFalse([line for line in done.stdout.splitlines() if line.startswith("E:")])


if __name__ == "__main__":
    del sys.argv[1:3]
    unittest.main(verbosity=2)
