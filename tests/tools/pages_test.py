#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The pages of the tree keep what they promise: links lead somewhere, and what they print as C++ compiles in a host that has the
public headers alone. pages_test.py [INCLUDE_FOLDERS [COMPILER]]; the folders are those of the toolkit, joined by commas. Without them
only links are tested.

A block of C++ is the body of a function, unless it has a main() or the line above it is `<!-- file scope -->`. What the blocks of a page
take for granted stands in comments of the page: `<!-- snippets`, declarations, `-->`. One below `<!-- a sketch -->` has gaps to be
filled."""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
TOOLKIT = [folder for folder in (sys.argv[1] if len(sys.argv) > 1 else "").split(",") if folder]
COMPILER = sys.argv[2] if len(sys.argv) > 2 else "g++"
FLAGS = ["-std=c++20", "-fsyntax-only", "-fPIC", "-Wall", "-Wextra", "-Werror", "-Wno-unused-variable", "-Wno-unused-function",
         "-Wno-unused-but-set-variable"]
COMPILED = ["README.md", "docs/quick-start.md", "docs/guide.md", "docs/cookbook.md", "docs/grid.md", "docs/upgrading.md"]


def pages():
    for folder, below, files in os.walk(ROOT):
        below[:] = [name for name in below if name not in ("build", ".git", "node_modules")]
        for name in files:
            if name.endswith(".md"):
                yield pathlib.Path(folder) / name


def without_code(text):
    text = re.sub(r"^ *```.*?^ *```", "", text, flags=re.S | re.M)
    return re.sub(r"`[^`\n]*`", "", re.sub(r"<!--.*?-->", "", text, flags=re.S))


def slug(heading):
    words = re.sub(r"\[([^\]]*)\]\([^)]*\)", r"\1", heading).replace("`", "").strip().lower()
    return re.sub(r"[^\w\- ]", "", words).replace(" ", "-")


def anchors(page):
    text = re.sub(r"^ *```.*?^ *```", "", page.read_text(encoding="utf-8"), flags=re.S | re.M)
    found = set()
    for heading in re.findall(r"^#+ (.*)$", text, re.M):
        anchor = slug(heading)
        number = 0
        while anchor in found:
            number += 1
            anchor = f"{slug(heading)}-{number}"
        found.add(anchor)
    return found


def broken_links(page):
    for target in re.findall(r"\]\(([^)\s]+)\)", without_code(page.read_text(encoding="utf-8"))):
        if re.match(r"[a-z]+:", target):
            continue
        path, _, anchor = target.partition("#")
        file = page.parent / path if path else page
        if not file.exists():
            yield f"{page.relative_to(ROOT)}: {target}: there is no such file"
        elif anchor and file.suffix == ".md" and anchor not in anchors(file):
            yield f"{page.relative_to(ROOT)}: {target}: there is no such heading"


def source_of(page):
    """All blocks of a page as one source, of which every line tells where it comes from."""
    includes, code = [], []

    def take(name, line, text, at_file_scope):
        if not at_file_scope:
            code.append(f"[[maybe_unused]] void {name}() {{")
        elif name:
            code.append(f"namespace {name} {{")
        for each in text:
            line += 1
            if each.startswith("#"):
                includes.extend([f'#line {line} "{page}"', each])
            else:
                code.extend([f'#line {line} "{page}"', each])
        if name:
            code.append("}")

    lines = page.read_text(encoding="utf-8").splitlines()
    at = blocks = 0
    while at < len(lines):
        begin = at
        at += 1
        if lines[begin] == "<!-- snippets":
            while lines[at] != "-->":
                at += 1
            take("", begin + 1, lines[begin + 1:at], True)
        elif re.match(r" *```cpp$", lines[begin]):
            while lines[at].strip() != "```":
                at += 1
            if lines[begin - 1] == "<!-- a sketch -->":
                continue
            blocks += 1
            text = lines[begin + 1:at]
            file_scope = lines[begin - 1] == "<!-- file scope -->" or any(re.match(r"int main\(", each) for each in text)
            take(f"Block{blocks}", begin + 1, text, file_scope)
    return "\n".join(includes + code) + "\n", blocks


class Pages(unittest.TestCase):
    def test_links_lead_somewhere(self):
        self.assertEqual([broken for page in sorted(pages()) for broken in broken_links(page)], [])

    def test_a_broken_link_and_a_broken_anchor_are_found(self):
        with tempfile.TemporaryDirectory(dir=ROOT) as folder:
            page = pathlib.Path(folder) / "page.md"
            page.write_text("# One\n\n[a](page.md#one) [b](none.md) [c](#two)\n```\n[d](none)\n```\n")
            self.assertEqual(len(list(broken_links(page))), 2)

    def test_blocks_compile_with_the_public_headers_alone(self):
        if not TOOLKIT or shutil.which(COMPILER) is None:
            self.skipTest("the toolkit's headers or the compiler are not here")
        for name in COMPILED:
            source, blocks = source_of(ROOT / name)
            with self.subTest(page=name), tempfile.TemporaryDirectory() as folder:
                self.assertGreater(blocks, 0)
                file = pathlib.Path(folder) / "page.cc"
                file.write_text(source, encoding="utf-8")
                done = subprocess.run([COMPILER, *FLAGS, f"-I{ROOT / 'include'}",
                                       *(f"-isystem{place}" for place in TOOLKIT), file], capture_output=True, text=True)
                if done.returncode != 0:
                    self.fail(done.stderr)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
