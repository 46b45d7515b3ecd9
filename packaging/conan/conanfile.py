# SPDX-License-Identifier: MIT
"""The recipe for Conan 2: conan create packaging/conan. It packs the tree that it lies in, as it stands."""
import pathlib
import re

from conan import ConanFile
from conan.errors import ConanInvalidConfiguration
from conan.tools.build import check_min_cppstd
from conan.tools.cmake import CMake, CMakeDeps, CMakeToolchain, cmake_layout
from conan.tools.files import copy, rmdir

TREE = pathlib.Path(__file__).resolve().parent.parent.parent


class StockbookRecipe(ConanFile):
    name = "stockbook"
    license = "MIT"
    description = "Stock journals as an embeddable control: a toolkit-free core and a Qt 6 widget"
    topics = ("qt", "widget", "inventory", "grid")
    package_type = "library"
    settings = "os", "arch", "compiler", "build_type"
    options = {"shared": [True, False], "fPIC": [True, False], "qt": [True, False], "postgres": [True, False],
               "odbc": [True, False]}
    default_options = {"shared": False, "fPIC": True, "qt": True, "postgres": False, "odbc": False, "qt/*:shared": True,
                       "libpq/*:shared": True, "odbc/*:shared": True}

    def set_version(self):
        # The one place where the version stands.
        said = (TREE / "CMakeLists.txt").read_text(encoding="utf-8")
        self.version = re.search(r"project\(Stockbook VERSION ([0-9.]+)", said).group(1)

    def export_sources(self):
        for pattern in ("CMakeLists.txt", "LICENSE", "CHANGELOG.md", "cmake/*", "include/*", "src/*", "packaging/*"):
            copy(self, pattern, str(TREE), self.export_sources_folder)

    def configure(self):
        if self.options.shared:
            self.options.rm_safe("fPIC")
        if not self.options.qt:
            self.options.rm_safe("postgres")
            self.options.rm_safe("odbc")

    def validate(self):
        check_min_cppstd(self, "20")
        if self.settings.os != "Linux":
            raise ConanInvalidConfiguration("The libraries are built for Linux; for Windows there is a component of its own")

    def layout(self):
        cmake_layout(self)

    def requirements(self):
        if self.options.qt:
            self.requires("qt/[>=6.4 <7]", transitive_headers=True, transitive_libs=True)
            self.requires("sqlite3/[>=3.40 <4]")
        # They are loaded by their first caller: their headers are compiled against, and nothing is linked.
        if self.options.get_safe("postgres"):
            self.requires("libpq/[>=15 <18]")
        if self.options.get_safe("odbc"):
            self.requires("odbc/[>=2.3 <3]")

    def generate(self):
        CMakeDeps(self).generate()
        toolchain = CMakeToolchain(self)
        toolchain.cache_variables["STOCKBOOK_CORE_ONLY"] = not self.options.qt
        toolchain.cache_variables["STOCKBOOK_POSTGRES"] = bool(self.options.get_safe("postgres"))
        toolchain.cache_variables["STOCKBOOK_ODBC"] = bool(self.options.get_safe("odbc"))
        for part in ("APP", "TESTS", "BENCH", "EXAMPLES", "WERROR", "DESKTOP_FILES"):
            toolchain.cache_variables[f"STOCKBOOK_{part}"] = False
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        copy(self, "LICENSE", self.source_folder, str(pathlib.Path(self.package_folder) / "licenses"))
        CMake(self).install()
        rmdir(self, str(pathlib.Path(self.package_folder) / "share" / "doc"))

    def package_info(self):
        # Users find the package by its own files, with the components and targets that they have everywhere.
        self.cpp_info.set_property("cmake_find_mode", "none")
        self.cpp_info.builddirs.append("lib/cmake/Stockbook")
