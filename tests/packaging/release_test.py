#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""A release, made in a scratch clone of this tree's files: what is refused, what is changed, and what comes out. Nothing is compiled
here. release_test.py [unittest's arguments]"""
import hashlib
import json
import os
import pathlib
import re
import shutil
import subprocess
import tarfile
import tempfile
import unittest

TREE = pathlib.Path(__file__).resolve().parent.parent.parent
FILES = ("CMakeLists.txt", "CHANGELOG.md", "CITATION.cff", "LICENSE", "tools/release", "tools/write-sbom",
         "packaging/vcpkg/vcpkg.json", "docs/dependencies.md")
SURROUNDINGS = dict(os.environ, GIT_AUTHOR_NAME="Tests", GIT_AUTHOR_EMAIL="tests@example.org", GIT_COMMITTER_NAME="Tests",
                    GIT_COMMITTER_EMAIL="tests@example.org", GIT_CONFIG_NOSYSTEM="1", GIT_CONFIG_GLOBAL="/dev/null",
                    GIT_AUTHOR_DATE="2026-01-02T03:04:05Z", GIT_COMMITTER_DATE="2026-01-02T03:04:05Z")
TESTED = ("--tested", "make test")
CHANGELOG = "# Changelog\n\n## [Unreleased]\n\n### Added\n\n- Something new.\n\n## [0.0.9] - 2026-01-01\n\n- Something old.\n"


@unittest.skipUnless(shutil.which("git") and shutil.which("gzip"), "git or gzip is not here")
class Release(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.clone = pathlib.Path(folder.name)
        for name in FILES:
            (self.clone / name).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(TREE / name, self.clone / name)
        (self.clone / "CHANGELOG.md").write_text(CHANGELOG, encoding="utf-8")
        (self.clone / ".gitignore").write_text("/build/\n", encoding="utf-8")
        self.git("init", "--quiet", "--initial-branch=main")
        self.commit("Everywhere: Begin")

    def run_in_clone(self, *arguments):
        return subprocess.run(arguments, cwd=self.clone, capture_output=True, text=True, encoding="utf-8", env=SURROUNDINGS)

    def git(self, *arguments):
        done = self.run_in_clone("git", *arguments)
        self.assertEqual(done.returncode, 0, done.stderr)
        return done.stdout.strip()

    def commit(self, subject):
        self.git("add", "--all")
        self.git("commit", "--quiet", "--allow-empty", "--message", subject)

    def release(self, *arguments, only="source,sbom"):
        return self.run_in_clone("tools/release", *arguments, "--only", only)

    def read(self, name):
        return (self.clone / name).read_text(encoding="utf-8")

    def expect_refused(self, done, why):
        self.assertNotEqual(done.returncode, 0)
        self.assertIn(why, done.stderr)
        self.assertEqual(self.git("tag"), self.tags)
        self.assertEqual(self.git("log", "--format=%s"), self.log)

    def remember(self):
        self.tags, self.log = self.git("tag"), self.git("log", "--format=%s")

    def test_changes_the_version_commits_and_tags(self):
        done = self.release("9.1.0", *TESTED)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(self.git("log", "-1", "--format=%s"), "Everywhere: Release 9.1.0")
        self.assertIn("project(Stockbook VERSION 9.1.0 ", self.read("CMakeLists.txt"))
        self.assertEqual(json.loads(self.read("packaging/vcpkg/vcpkg.json"))["version-semver"], "9.1.0")
        self.assertRegex(self.read("CITATION.cff"), r"(?m)^version: 9\.1\.0\ndate-released: \d{4}-\d\d-\d\d$")
        self.assertRegex(self.read("CHANGELOG.md"),
                         r"## \[Unreleased\]\n\n## \[9\.1\.0\] - \d{4}-\d\d-\d\d\n\n### Added\n\n- Something new\.\n\n## \[0\.0\.9\]")
        self.assertEqual(self.git("cat-file", "-t", "v9.1.0"), "tag")
        message = self.git("tag", "--list", "--format=%(contents)", "v9.1.0")
        self.assertEqual(message, "Stockbook 9.1.0\n\nTested: make test\n\n### Added\n\n- Something new.")
        self.assertEqual(self.git("status", "--porcelain"), "")

    def test_a_second_release_follows_the_first(self):
        self.release("9.1.0", *TESTED)
        self.remember()
        self.expect_refused(self.release("9.2.0", *TESTED), "tells nothing under 'Unreleased'")
        (self.clone / "CHANGELOG.md").write_text(self.read("CHANGELOG.md").replace("[Unreleased]\n", "[Unreleased]\n\n- More.\n"),
                                                 encoding="utf-8")
        self.commit("Docs: Tell more")
        self.remember()
        self.expect_refused(self.release("9.0.5", *TESTED), "v9.1.0 is not older than 9.0.5")
        self.expect_refused(self.release("9.1.0", *TESTED), "tagged already, on another commit")
        done = self.release("9.2.0", *TESTED)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(self.git("tag").split(), ["v9.1.0", "v9.2.0"])
        self.assertEqual(len(re.findall("date-released", self.read("CITATION.cff"))), 1)

    def test_makes_artefacts_with_checksums_and_the_same_bytes_again(self):
        self.release("9.1.0", *TESTED)
        folder = self.clone / "build" / "release-artefacts"
        names = ["SHA256SUMS", "stockbook-9.1.0.spdx.json", "stockbook-9.1.0.tar.gz"]
        self.assertEqual(sorted(path.name for path in folder.iterdir()), names)
        sums = self.read("build/release-artefacts/SHA256SUMS")
        for line in sums.splitlines():
            digest, name = line.split("  ")
            self.assertEqual(hashlib.sha256((folder / name).read_bytes()).hexdigest(), digest)
        self.assertEqual(len(sums.splitlines()), 2)
        with tarfile.open(folder / "stockbook-9.1.0.tar.gz") as archive:
            self.assertIn("stockbook-9.1.0/CMakeLists.txt", archive.getnames())
        done = self.release("9.1.0")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(self.read("build/release-artefacts/SHA256SUMS"), sums)
        self.assertEqual(self.git("rev-list", "--count", "HEAD"), "2")

    def test_tells_what_the_release_is_made_of(self):
        self.release("9.1.0", *TESTED)
        said = json.loads(self.read("build/release-artefacts/stockbook-9.1.0.spdx.json"))
        self.assertEqual((said["spdxVersion"], said["dataLicense"]), ("SPDX-2.3", "CC0-1.0"))
        packages = {package["SPDXID"]: package for package in said["packages"]}
        self.assertEqual(len(packages), len(said["packages"]))
        for package in said["packages"]:
            self.assertRegex(package["SPDXID"], r"^SPDXRef-[A-Za-z0-9.-]+$")
            self.assertTrue({"name", "downloadLocation", "filesAnalyzed", "licenseDeclared"} <= set(package))
        relations = {relation["spdxElementId"]: relation["relationshipType"] for relation in said["relationships"]}
        self.assertEqual(set(relations), set(packages) - {"SPDXRef-stockbook"} | {"SPDXRef-DOCUMENT"})
        self.assertEqual(relations["SPDXRef-deb-libsqlite3-dev"], "DEPENDENCY_OF")
        self.assertEqual(relations["SPDXRef-deb-libgtest-dev"], "TEST_TOOL_OF")
        self.assertEqual(relations["SPDXRef-deb-cmake"], "BUILD_TOOL_OF")
        self.assertEqual(relations["SPDXRef-deb-fonts-noto-cjk"], "RUNTIME_DEPENDENCY_OF")
        named = re.findall(r"`(lib[a-z0-9.+-]+-dev)`", self.read("docs/dependencies.md"))
        self.assertLessEqual({f"SPDXRef-deb-{name}" for name in named}, set(packages))
        archive = (self.clone / "build" / "release-artefacts" / "stockbook-9.1.0.tar.gz").read_bytes()
        self.assertEqual(packages["SPDXRef-stockbook"]["checksums"][0]["checksumValue"], hashlib.sha256(archive).hexdigest())

    def test_a_rehearsal_changes_nothing(self):
        done = self.release("9.1.0", *TESTED, "--dry-run")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("would commit 'Everywhere: Release 9.1.0' and tag it v9.1.0", done.stdout)
        self.assertEqual((self.git("tag"), self.git("status", "--porcelain"), self.git("rev-list", "--count", "HEAD")), ("", "", "1"))
        self.assertFalse((self.clone / "build").exists())

    def test_refuses_what_cannot_be_released(self):
        self.remember()
        self.expect_refused(self.release("9.1", *TESTED), "is no version")
        self.expect_refused(self.release("9.1.0"), "say what was tested")
        self.expect_refused(self.release("9.1.0", *TESTED, only="sources"), "there is no part sources")
        (self.clone / "LICENSE").write_text("changed\n", encoding="utf-8")
        self.expect_refused(self.release("9.1.0", *TESTED), "not committed")
        self.git("checkout", "--quiet", "LICENSE")
        self.git("checkout", "--quiet", "-b", "other")
        self.expect_refused(self.release("9.1.0", *TESTED), "on the branch main")


class Versions(unittest.TestCase):
    def test_are_the_same_wherever_they_stand(self):
        version = re.search(r"project\(Stockbook VERSION ([0-9.]+)", (TREE / "CMakeLists.txt").read_text(encoding="utf-8")).group(1)
        self.assertIn(f"\nversion: {version}\n", (TREE / "CITATION.cff").read_text(encoding="utf-8"))


if __name__ == "__main__":
    unittest.main(verbosity=2)
