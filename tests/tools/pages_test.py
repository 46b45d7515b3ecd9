#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The pages of the tree keep what they promise: links lead somewhere, Doxygen makes a book of them without a warning, what they print
as C++ compiles in a host that has the public headers alone, and the quick start shows a journal.
pages_test.py [INCLUDE_FOLDERS [COMPILER [LIBRARIES HOST]]]: the toolkit's headers, joined by commas; what the quick start is linked with,
the same way; the reference host, which makes its inventory. What is not given is not tested.

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
import types
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.dont_write_bytecode = True
sys.path.insert(0, str(ROOT / "docs/doxygen"))
import headers  # noqa: E402
import pages as book_pages  # noqa: E402

TOOLKIT = [folder for folder in (sys.argv[1] if len(sys.argv) > 1 else "").split(",") if folder]
COMPILER = sys.argv[2] if len(sys.argv) > 2 else "g++"
LIBRARIES = [library for library in (sys.argv[3] if len(sys.argv) > 3 else "").split(",") if library]
HOST = sys.argv[4] if len(sys.argv) > 4 else ""
FLAGS = ["-std=c++20", "-fPIC", "-Wall", "-Wextra", "-Werror", "-Wno-unused-variable", "-Wno-unused-function",
         "-Wno-unused-but-set-variable"]
FOLDERS = [f"-I{ROOT / 'include'}", *(f"-isystem{folder}" for folder in TOOLKIT)]
COMPILED = ["README.md", "docs/quick-start.md", "docs/guide.md", "docs/cookbook.md", "docs/grid.md", "docs/upgrading.md"]

# Says what stands in the windows of a program once it waits for events, and ends it.
WATCH = r"""
#include <QApplication>
#include <QLabel>
#include <QTimer>
#include <cstdio>
#include <stockbook/qt/stockbook_widget.h>
static void Say() {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    for (QLabel* label : window->findChildren<QLabel*>()) std::printf("%s\n", qUtf8Printable(label->text()));
    for (auto* journal : window->findChildren<stockbook::qt::StockbookWidget*>()) std::printf("rows %d\n", journal->Rows());
  }
  QCoreApplication::exit(0);
}
static void Watch() { QTimer::singleShot(0, Say); }
Q_COREAPP_STARTUP_FUNCTION(Watch)
"""


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
    """What a page includes, all of its blocks as one source, and how many they are; every line tells where it comes from."""
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
    return includes, code, blocks


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
        # As one source, a namespace for each page, since most of the work is to read the headers.
        all_includes, all_code = [], []
        for number, name in enumerate(COMPILED):
            includes, code, blocks = source_of(ROOT / name)
            self.assertGreater(blocks, 0, name)
            all_includes += includes
            all_code += [f"namespace page{number} {{", *code, "}"]
        with tempfile.TemporaryDirectory() as folder:
            file = pathlib.Path(folder) / "pages.cc"
            file.write_text("\n".join(all_includes + all_code) + "\n", encoding="utf-8")
            done = subprocess.run([COMPILER, *FLAGS, "-fsyntax-only", *FOLDERS, file], capture_output=True, text=True)
            if done.returncode != 0:
                self.fail(done.stderr)

    def test_the_quick_start_shows_a_journal_in_a_form(self):
        if not LIBRARIES or not HOST or shutil.which(COMPILER) is None:
            self.skipTest("shared libraries, the reference host or the compiler are not here")
        page = (ROOT / "docs/quick-start.md").read_text(encoding="utf-8")
        program = re.search(r"^`main\.cc`:\n\n```cpp\n(.*?)^```$", page, re.S | re.M)[1]
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            (folder / "main.cc").write_text(program, encoding="utf-8")
            (folder / "watch.cc").write_text(WATCH, encoding="utf-8")
            places = {f"-Wl,-rpath,{pathlib.Path(library).parent}" for library in LIBRARIES}
            done = subprocess.run([COMPILER, *FLAGS, *FOLDERS, "main.cc", "watch.cc", "-o", "quick", *LIBRARIES, *places],
                                  cwd=folder, capture_output=True, text=True)
            self.assertEqual(done.returncode, 0, done.stderr)
            subprocess.run([HOST, "sample", "stock.db"], cwd=folder, check=True, capture_output=True)
            done = subprocess.run([folder / "quick"], cwd=folder, env=dict(os.environ, QT_QPA_PLATFORM="offscreen"),
                                  capture_output=True, text=True, encoding="utf-8", timeout=120)
            self.assertEqual(done.returncode, 0, done.stderr)
            self.assertRegex(done.stdout, r"(?m)^已读入：商品:.+\[全部仓库\]$")
            self.assertRegex(done.stdout, r"(?m)^rows [1-9]\d+$")

    def test_headers_are_shown_as_doxygen_reads_them(self):
        shown = headers.show("// SPDX\n\n// What it is.\nclass A {\n  int b = 0;  // in twips\n  float c = 0;    // in pixels\n};\n\n// Alone.\n\nint c;\n// Base\nint d;\n", {})
        self.assertIn("/// What it is.\nclass A {", shown)
        self.assertIn("int b = 0;  ///< in twips", shown)
        self.assertIn("float c = 0;  ///< in pixels", shown)
        self.assertIn("\n// Alone.\n", shown)
        self.assertIn("\n// Base\n", shown)

    def test_what_is_said_of_several_members_is_shown_at_each(self):
        shown = headers.show("class A {\n public:\n  // Both in twips.\n  int a() const { return a_; }\n  void SetLimit(\n      int twips);\n"
                             "  // Alone.\n  int b();\n  // These throw.\n  A operator+(A a) {\n    return a;\n  }\n  void c();\n\n  int d();\n};\n", {})
        self.assertIn("/// Both in twips.\n  int a() const", shown)
        self.assertIn("/// Both in twips.\n  void SetLimit(\n      int twips);\n  /// Alone.\n  int b();", shown)
        self.assertIn("/// These throw.\n  A operator+(A a) {\n    return a;\n  }\n  /// These throw.\n  void c();\n\n  int d();", shown)

    def test_readers_writers_and_properties_share_what_is_said_of_one(self):
        shown = headers.show("class A {\n  Q_PROPERTY(float Zoom READ Zoom WRITE SetZoom)\n  Q_PROPERTY(int Row READ Row)\n public:\n"
                             "  // From 0.5 to 3;\n  // 1 unless set.\n  float Zoom() const;\n  void SetZoom(float zoom);\n"
                             "  // -1 where there is none.\n  int Row() const;\n};\n", {"Zoom": "How large."})
        said = "/// How large.\n  ///\n  /// From 0.5 to 3;\n  /// 1 unless set.\n  "
        for declaration in ("Q_PROPERTY(float Zoom", "float Zoom()", "void SetZoom("):
            self.assertIn(said + declaration, shown)
        self.assertIn("/// -1 where there is none.\n  Q_PROPERTY(int Row", shown)

    def test_heights_are_properties_with_their_words(self):
        shown = headers.show("#define STOCKBOOK_HEIGHT(Name) \\\n  Q_PROPERTY(double Name)\n\n  // In twips.\n  STOCKBOOK_HEIGHT(Least)\n", {})
        self.assertNotIn("#define", shown)
        self.assertIn("/// In twips.\n  Q_PROPERTY(double Least READ Least WRITE WriteLeast", shown)
        self.assertIn("/// In twips.\n  float Least() const;", shown)

    def test_a_member_without_a_comment_is_refused_unless_it_is_a_plain_field(self):
        docs = types.ModuleType("docs")
        docs.__file__ = str(ROOT / "tools/docs")
        exec(compile(pathlib.Path(docs.__file__).read_text(encoding="utf-8"), docs.__file__, "exec"), docs.__dict__)
        warning = "a.h:1: warning: Member {} of {} stockbook::A is not documented."
        for member, of in (("Rows() const (function)", "class"), ("Zoom (property)", "class"), ("Told() (signal)", "class"),
                           ("Any() const (function)", "struct"), ("Take (typedef)", "class"), ("kMost (variable)", "class"),
                           ("operator+(A other) const (function)", "class")):
            self.assertEqual(len(docs.complaints(warning.format(member, of))), 1, member)
        for member, of in (("row (variable)", "struct"), ("kNone (enumvalue)", "class"), ("operator==(const A &) const =default (function)", "struct"),
                           ("operator=(A &&) noexcept (function)", "class"), ("A(A &&other) noexcept (function)", "class"),
                           ("paintEvent(QPaintEvent *event) override (function)", "class")):
            self.assertEqual(docs.complaints(warning.format(member, of)), [], member)

    def test_the_contents_lead_to_every_page_once(self):
        order = [page.relative_to(ROOT / "docs").as_posix() for page in book_pages.in_order()]
        self.assertEqual(order[:2], ["index.md", "quick-start.md"])
        self.assertEqual(sorted(order), sorted(page.relative_to(ROOT / "docs").as_posix() for page in (ROOT / "docs").rglob("*.md")))
        self.assertEqual(order.index("guide/properties.md"), order.index("guide.md") + 1)

    def test_classes_in_pages_lead_to_the_reference(self):
        self.assertEqual(book_pages.of_words("`qt::SheetWidget` or `KeyID`"),
                         '<code>@ref stockbook::qt::SheetWidget "qt::SheetWidget"</code> or `KeyID`')

    def test_doxygen_makes_a_book_of_every_page_and_class(self):
        if shutil.which("doxygen") is None:
            self.skipTest("doxygen is not here (Debian: doxygen qt6-documentation-tools)")
        with tempfile.TemporaryDirectory() as name:
            book = pathlib.Path(name)
            done = subprocess.run([sys.executable, ROOT / "tools/docs", "--no-install", "--out", book], capture_output=True, text=True)
            if "qhelpgenerator is not here" in done.stderr:
                self.skipTest(done.stderr.strip())
            self.assertEqual(done.returncode, 0, done.stderr)
            start = (book / "html/index.html").read_text(encoding="utf-8")
            self.assertIn('href="page_docs_quick-start.html"', start)
            self.assertIn('href="classstockbook_1_1qt_1_1StockbookWidget.html"', start)
            for page in (ROOT / "docs").glob("*.md"):
                self.assertTrue(page.stem == "index" or (book / f"html/page_docs_{page.stem}.html").exists(), page)
            # Every link within the book leads to a file of it.
            for page in (book / "html").glob("page_*.html"):
                for target in re.findall(r'(?:href|src)="([^"#:]+)["#]', page.read_text(encoding="utf-8")):
                    self.assertTrue((page.parent / target).exists(), f"{page.name}: {target}")
            tags = (book / "stockbook.tag").read_text(encoding="utf-8")
            self.assertIn("<name>stockbook::qt::StockbookWidget</name>", tags)
            self.assertEqual((book / "stockbook.qch").read_bytes()[:15], b"SQLite format 3")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
