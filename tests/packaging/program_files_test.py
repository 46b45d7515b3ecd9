#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""What lies beside the program where it is installed says what the program says of itself: manual page, completion, desktop file,
type of its files, data for software centres. program_files_test.py PROGRAM BUILD [unittest's arguments]: BUILD is the folder of the
build, which holds what is made of templates. A check whose tool is not here says so and is skipped."""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as xml

TREE = pathlib.Path(__file__).resolve().parent.parent.parent
PACKAGING = TREE / "packaging"
PROGRAM, BUILD = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve() / "packaging"
OPTION = re.compile(r"(?<![\w-])-(?:-[a-z][a-z0-9-]*|[a-z](?![\w-]))")
TYPE = "application/vnd.stockbook.inventory"


def run(*arguments, **others):
    return subprocess.run([str(argument) for argument in arguments], capture_output=True, text=True, encoding="utf-8", **others)


def needs(tool):
    return unittest.skipUnless(shutil.which(tool), f"{tool} is not here")


# The templates are filled in where the packages are configured.
filled = unittest.skipUnless((BUILD / "stockbook.1").exists(), "this build has no packages")


def commands():
    overview = run(PROGRAM, "--help").stdout
    return re.findall(r"^  (\w+) +\S", overview.partition("Commands:")[2], re.M)


def options(command):
    """The options that the command's help names."""
    return set(OPTION.findall(run(PROGRAM, command, "--help").stdout))


@filled
class ManualPage(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        # The words as they are read: without requests, fonts and escapes.
        source = (BUILD / "stockbook.1").read_text(encoding="utf-8")
        cls.source = source
        text = re.sub(r"\\f.|\\&", "", source).replace(r"\-", "-").replace(r"\(aq", "'").replace(r"\(dq", '"')
        parts = re.split(r'^\.SS "?stockbook \[?(\w+)', text.partition(".SH JOURNALS")[0], flags=re.M)
        cls.sections = {name: set(OPTION.findall(said)) for name, said in zip(parts[1::2], parts[2::2])}
        cls.shared = set(OPTION.findall(text.partition(".SH JOURNALS")[2]))

    def test_tells_every_command_in_the_order_of_the_help(self):
        self.assertEqual(list(self.sections), commands())

    def test_tells_every_option_of_every_command(self):
        for command in commands():
            missing = options(command) - self.sections[command] - self.shared
            self.assertFalse(missing, f"the manual page does not tell {missing} of '{command}'")

    def test_tells_no_option_that_the_program_does_not_have(self):
        known = set()
        for command in commands():
            # What the shared part tells of the journals is not told again.
            also = {"--from", "--to", "--password-file"}
            self.assertFalse(self.sections[command] - options(command) - also, command)
            known |= options(command)
        self.assertFalse(self.shared - known)

    def test_names_the_version(self):
        self.assertIn(run(PROGRAM, "--version").stdout.split()[1], self.source.splitlines()[1])

    @needs("groff")
    def test_is_set_without_a_warning(self):
        done = run("groff", "-man", "-ww", "-Tutf8", "-Kutf8", BUILD / "stockbook.1")
        self.assertEqual((done.returncode, done.stderr), (0, ""))


@needs("bash")
class Completion(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        for name in ("stock one.db", "sales.csv"):
            (cls.folder / name).touch()
        (cls.folder / "deep").mkdir()

    def complete(self, *words):
        """What bash offers for the last of the words."""
        script = f"""source '{PACKAGING}/completions/stockbook'
COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _stockbook stockbook; printf '%s\\n' "${{COMPREPLY[@]}}" """
        done = run("bash", "--norc", "-uc", script, "bash", "stockbook", *words, cwd=self.folder)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        return [word for word in done.stdout.split("\n") if word]

    def test_begins_with_every_command(self):
        offered = self.complete("")
        self.assertEqual([word for word in offered if not (self.folder / word).exists()], commands())
        self.assertEqual(self.complete("ex"), ["export"])

    def test_offers_every_option_of_every_command_and_no_other(self):
        for command in commands():
            offered = self.complete(command, "x.db", "-")
            self.assertEqual(sorted(offered), sorted(options(command) | {"--help"}), command)

    def test_offers_the_options_of_open_where_no_command_is_named(self):
        self.assertEqual(sorted(self.complete("-")), sorted(options("open") | {"--help", "--version"}))
        self.assertEqual(self.complete("stock one.db", "--jo"), ["--journal"])

    def test_offers_the_choices_of_an_option(self):
        self.assertEqual(self.complete("export", "--journal", "s"), ["supplier"])
        self.assertEqual(self.complete("export", "--format", ""), ["csv", "tsv", "ndjson", "xlsx"])
        self.assertEqual(self.complete("plot", "--format", ""), ["png", "pdf", "svg"])
        self.assertEqual(self.complete("print", "--paper", "=", "le"), ["letter"])
        self.assertEqual(self.complete("print", "--paper", "="), ["a3", "a4", "a5", "letter"])
        self.assertEqual(self.complete("export", "--product", ""), [])

    def test_offers_only_choices_that_the_help_names(self):
        for command in commands():
            said = run(PROGRAM, command, "--help").stdout
            for option in options(command):
                offered = self.complete(command, option, "") if option not in ("-o", "--output") else []
                words = [word for word in offered if not (self.folder / word).exists()]
                # A number of a range is not named by itself.
                for word in words:
                    self.assertTrue(word.isdigit() or word in said, f"{command} {option} {word}")

    def test_offers_files(self):
        self.assertEqual(sorted(self.complete("doctor", "s")), ["sales.csv", "stock one.db"])
        self.assertEqual(self.complete("print", "x.db", "-o", "de"), ["deep"])


@needs("zsh")
class CompletionOfZsh(unittest.TestCase):
    def options_offered(self, command):
        """What the completion tells zsh's own function of the command's options."""
        script = f"""_arguments() {{ print -rl -- "$@" }}; _describe() {{ }}
words=(stockbook {command} ''); CURRENT=3; source '{PACKAGING}/completions/_stockbook'"""
        done = run("zsh", "-fc", script)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        specs = [re.sub(r"^\([^)]*\)", "", line).lstrip("*") for line in done.stdout.splitlines()]
        return [re.match(r"-[a-z0-9-]+", spec).group(0) for spec in specs if re.match(r"-[a-z0-9-]+\[", spec)]

    def test_offers_every_option_of_every_command_and_no_other(self):
        for command in commands():
            self.assertEqual(sorted(self.options_offered(command)), sorted(options(command) | {"--help"}), command)

    def test_offers_every_command_in_the_order_of_the_help(self):
        said = (PACKAGING / "completions" / "_stockbook").read_text(encoding="utf-8")
        self.assertEqual(re.findall(r"^    '(\w+):", said, re.M), commands())


class DesktopFile(unittest.TestCase):
    def setUp(self):
        self.lines = (PACKAGING / "stockbook.desktop").read_text(encoding="utf-8").splitlines()

    @needs("desktop-file-validate")
    def test_is_valid(self):
        done = run("desktop-file-validate", PACKAGING / "stockbook.desktop")
        self.assertEqual((done.returncode, done.stdout), (0, ""))

    def test_has_a_chinese_and_an_english_name(self):
        self.assertIn("Name=Stockbook", self.lines)
        self.assertIn("Name[zh_CN]=库存账", self.lines)

    def test_opens_the_type_that_is_declared(self):
        self.assertIn(f"MimeType={TYPE};", self.lines)
        self.assertIn(TYPE, (PACKAGING / "stockbook.xml").read_text(encoding="utf-8"))

    def test_has_its_icon_in_the_sizes_that_are_installed(self):
        listed = (PACKAGING / "CMakeLists.txt").read_text(encoding="utf-8")
        for size in re.search(r"foreach\(size ([0-9 ]+)\)", listed).group(1).split():
            head = (PACKAGING / "icons" / f"stockbook-{size}.png").read_bytes()[:24]
            self.assertEqual(head[16:24], int(size).to_bytes(4, "big") * 2)
        xml.parse(PACKAGING / "icons" / "stockbook.svg")


@needs("update-mime-database")
class FileType(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        packages = cls.folder / "mime" / "packages"
        packages.mkdir(parents=True)
        shutil.copy(PACKAGING / "stockbook.xml", packages)
        shutil.copy("/usr/share/mime/packages/freedesktop.org.xml", packages)
        cls.made = run("update-mime-database", cls.folder / "mime")
        assert run(PROGRAM, "sample", cls.folder / "stock.db", "--lines", "20").returncode == 0

    def type_of(self, path):
        surroundings = dict(os.environ, XDG_DATA_DIRS=str(self.folder), XDG_DATA_HOME=str(self.folder / "none"))
        said = run("gio", "info", "-a", "standard::content-type", path, env=surroundings)
        return said.stdout.split("standard::content-type:")[-1].strip()

    def test_is_taken_into_the_database_of_types(self):
        self.assertEqual(self.made.returncode, 0, self.made.stderr)
        self.assertTrue((self.folder / "mime" / "application" / "vnd.stockbook.inventory.xml").exists())

    @needs("gio")
    def test_is_that_of_an_inventory_and_of_no_other_database(self):
        self.assertEqual(self.type_of(self.folder / "stock.db"), TYPE)
        other = self.folder / "other.db"
        inventory = bytearray((self.folder / "stock.db").read_bytes())
        inventory[68:72] = bytes(4)
        other.write_bytes(inventory)
        self.assertEqual(self.type_of(other), "application/vnd.sqlite3")


@filled
class SoftwareCentre(unittest.TestCase):
    @needs("appstreamcli")
    def test_takes_the_data_of_the_program(self):
        done = run("appstreamcli", "validate", "--no-net", BUILD / "stockbook.metainfo.xml")
        self.assertEqual(done.returncode, 0, done.stdout)

    def test_is_told_every_release_of_the_changelog(self):
        released = re.findall(r"^## \[([0-9.]+)\]", (TREE / "CHANGELOG.md").read_text(encoding="utf-8"), re.M)
        told = xml.parse(BUILD / "stockbook.metainfo.xml").getroot().findall("releases/release")
        self.assertEqual([release.get("version") for release in told], released)


class Changelog(unittest.TestCase):
    MAINTAINER = "Stockbook developers <stockbook@example.org>"

    def make(self, changelog):
        return run(PACKAGING / "deb" / "make-changelog", changelog, "0.1.0-1", self.MAINTAINER,
                   env=dict(os.environ, SOURCE_DATE_EPOCH="0"))

    def test_has_an_entry_for_every_version(self):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "CHANGELOG.md"
            path.write_text("# Changelog\n\n## [Unreleased]\n\n### Fixed\n\n- A point\n  in two lines of [a page](x.md).\n\n"
                            "## [0.0.9] - 2026-03-04\n\n- `import` is new.\n", encoding="utf-8")
            done = self.make(path)
        self.assertEqual(done.stdout, f"""stockbook (0.1.0-1) unstable; urgency=medium

  [ Fixed ]
  * A point in two lines of a page.

 -- {self.MAINTAINER}  Thu, 01 Jan 1970 00:00:00 +0000

stockbook (0.0.9-1) unstable; urgency=medium

  * import is new.

 -- {self.MAINTAINER}  Wed, 04 Mar 2026 00:00:00 +0000

""")

    @needs("dpkg-parsechangelog")
    def test_is_read_by_the_packaging_tools(self):
        done = run("dpkg-parsechangelog", "-l", "-", "-S", "Version", input=self.make(TREE / "CHANGELOG.md").stdout)
        self.assertTrue(done.stdout.strip().endswith("-1"), done.stderr)


if __name__ == "__main__":
    del sys.argv[1:3]
    unittest.main(verbosity=2)
