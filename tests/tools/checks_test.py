#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The checks of the tree find what they are there for: each is run on a small tree with one thing wrong."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

TOOLS = pathlib.Path(__file__).resolve().parent.parent.parent / "tools"
HEADER = "// SPDX-License-Identifier: MIT\n#pragma once\n"
SOURCE = "// SPDX-License-Identifier: MIT\n"


class Tree(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)

    def write(self, name, text):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")

    def check(self, tool, *arguments):
        done = subprocess.run([sys.executable, TOOLS / tool, "--root", self.root, *arguments], capture_output=True,
                              text=True, encoding="utf-8")
        return done.returncode, done.stdout

    def accepts(self, tool, *arguments):
        status, output = self.check(tool, *arguments)
        self.assertEqual((status, output.count("\n")), (0, 1), output)

    def refuses(self, tool, message, *arguments):
        status, output = self.check(tool, *arguments)
        self.assertEqual(status, 1, output)
        self.assertIn(message, output)


class Layers(Tree):
    def setUp(self):
        super().setUp()
        self.write("src/base/money.h", HEADER + "#include <string>\n")
        self.write("src/journal/loader.h", HEADER + '#include "base/money.h"\n')
        self.write("src/grid/layout.h", HEADER)
        self.write("CMakeLists.txt", "stockbook_room(base)\nstockbook_room(journal DEPENDS base columns platform)\n")

    def test_arrows_of_the_table_are_accepted(self):
        self.accepts("check-layers")

    def test_an_arrow_to_a_neighbour_is_refused(self):
        self.write("src/grid/pictures.h", HEADER + '#include "journal/loader.h"\n')
        self.refuses("check-layers", "src/grid/pictures.h:3: no arrow leads from grid to journal")

    def test_an_arrow_upwards_is_refused(self):
        self.write("src/base/date.cc", SOURCE + '#  include "journal/loader.h" // why\n')
        self.refuses("check-layers", "src/base/date.cc:2: no arrow leads from base to journal")

    def test_folders_of_a_room_know_each_other_one_way(self):
        self.write("src/sheet/contents/sheet.h", HEADER)
        self.write("src/sheet/view/view.h", HEADER + '#include "sheet/contents/sheet.h"\n')
        self.accepts("check-layers")
        self.write("src/sheet/contents/sheet.cc", SOURCE + '#include "sheet/contents/sheet.h"\n'
                   '#include "sheet/view/view.h"\n')
        self.refuses("check-layers", "src/sheet/contents/sheet.cc:3: no arrow leads from sheet/contents to sheet/view")

    def test_a_folder_that_is_not_in_the_table_is_refused(self):
        self.write("src/sheet/helpers/all.h", HEADER)
        self.write("src/sheet/view/view.h", HEADER + '#include "sheet/helpers/all.h"\n')
        self.refuses("check-layers", "sheet/helpers is not a folder of the table")

    def test_a_toolkit_header_in_a_toolkit_free_room_is_refused(self):
        self.write("src/journal/loader.cc", SOURCE + "#include <QString>\n")
        self.refuses("check-layers", "src/journal may not include <QString>")

    def test_a_database_header_is_accepted_in_its_own_folder_alone(self):
        self.write("src/databases/sqlite/statement.cc", SOURCE + "#include <sqlite3.h>\n")
        self.accepts("check-layers")
        self.write("src/databases/dialect/parser.cc", SOURCE + "#include <sqlite3.h>\n")
        self.refuses("check-layers", "src/databases may not include <sqlite3.h>")

    def test_a_relative_include_is_refused(self):
        self.write("src/journal/loader.cc", SOURCE + '#include "../grid/layout.h"\n')
        self.refuses("check-layers", "includes are written from src/")

    def test_a_public_header_that_includes_a_private_one_is_refused(self):
        self.write("include/stockbook/base/date.h", HEADER)
        self.write("include/stockbook/journal/loads.h", HEADER + '#include "stockbook/base/date.h"\n')
        self.accepts("check-layers")
        self.write("include/stockbook/journal/loads.h", HEADER + '#include "journal/loader.h"\n')
        self.refuses("check-layers", "include/stockbook/journal/loads.h:3: "
                     '"journal/loader.h" is private, and a public header may not include it')

    def test_a_computed_include_is_refused(self):
        self.write("src/journal/loader.cc", SOURCE + "#include LOADER\n")
        self.refuses("check-layers", "a computed #include cannot be checked")

    def test_a_file_outside_the_rooms_is_refused(self):
        self.write("src/utils/misc.h", HEADER)
        self.refuses("check-layers", "utils is not a room")

    def test_an_edge_that_only_the_build_declares_is_refused(self):
        self.write("CMakeLists.txt", "stockbook_room(grid DEPENDS base columns platform journal)\n")
        self.refuses("check-layers", "the edges of grid are base columns platform journal")

    def test_the_folder_of_the_sheets_widget_knows_nothing_of_the_journals(self):
        self.write("include/stockbook/control/stockbook.h", HEADER)
        self.write("include/stockbook/qt/colour.h", HEADER)
        self.write("include/stockbook/qt/stockbook_widget.h", HEADER + '#include "stockbook/qt/colour.h"\n'
                   '#include "stockbook/control/stockbook.h"\n')
        self.write("src/qt/stockbook_widget.cc", SOURCE + '#include "stockbook/qt/stockbook_widget.h"\n')
        self.write("src/qt/sheet/colour.cc", SOURCE + '#include "stockbook/qt/colour.h"\n')
        self.accepts("check-layers")
        self.write("src/qt/sheet/canvas.cc", SOURCE + '#include "stockbook/control/stockbook.h"\n')
        self.refuses("check-layers", "src/qt/sheet/canvas.cc:2: no arrow leads from qt_sheet to control")
        self.write("src/qt/sheet/canvas.cc", SOURCE + '#include "stockbook/qt/stockbook_widget.h"\n')
        self.refuses("check-layers", "src/qt/sheet/canvas.cc:2: no arrow leads from qt/sheet to qt/")
        self.write("src/qt/sheet/canvas.cc", SOURCE)
        self.write("include/stockbook/qt/colour.h", HEADER + '#include "stockbook/control/stockbook.h"\n')
        self.refuses("check-layers", "include/stockbook/qt/colour.h:3: no arrow leads from qt_sheet to control")

    def test_a_library_linked_to_a_toolkit_free_room_is_refused(self):
        self.write("CMakeLists.txt", "stockbook_room(sheet DEPENDS base columns platform LINK Qt6::Gui)\n")
        self.refuses("check-layers", "sheet is toolkit-free")


class Style(Tree):
    def test_a_tidy_tree_is_accepted(self):
        self.write("src/base/money.h", HEADER)
        self.write("src/base/money.cc", SOURCE + '#include "base/money.h"\n')
        self.accepts("check-style")

    def test_a_missing_licence_line_is_refused(self):
        self.write("src/base/money.h", "#pragma once\n")
        self.refuses("check-style", "the first line is not the licence line")

    def test_a_missing_pragma_once_is_refused(self):
        self.write("src/base/money.h", SOURCE)
        self.refuses("check-style", "#pragma once is missing")

    def test_four_hundred_lines_are_the_most(self):
        self.write("src/base/money.h", HEADER + "\n" * 398)
        self.accepts("check-style")
        self.write("src/base/money.h", HEADER + "\n" * 399)
        self.refuses("check-style", "401 lines; at most 400")

    def test_another_header_before_the_own_one_is_refused(self):
        self.write("src/base/money.h", HEADER)
        self.write("src/base/money.cc", SOURCE + '#include <string>\n#include "base/money.h"\n')
        self.refuses("check-style", "money.h is not the first include")

    def test_malformed_text_is_refused(self):
        (self.root / "src").mkdir()
        (self.root / "src" / "a.cc").write_bytes(b"// SPDX-License-Identifier: MIT\n// \xff\n")
        self.refuses("check-style", "not UTF-8 at byte")


class Conformance(Tree):
    ROW = "| A line is added | `src/journal/loader.cc` (`AddLine`) | `Loader.AddsALine` |\n"

    def setUp(self):
        super().setUp()
        self.write("src/journal/loader.cc", SOURCE + "void AddLine() {}\n")
        self.write("tests/journal/loader_test.cc", SOURCE + "TEST(Loader, AddsALine) {}\nTEST_F(Loader,\n  Ends) {}\n")
        self.write("docs/conformance.md", "# Rules\n\n[Loading](conformance/loading.md)\n")
        self.write_rows(self.ROW)

    def write_rows(self, rows):
        self.write("docs/conformance/loading.md", "# Loading\n\n| Rule | Code | Test |\n|---|---|---|\n" + rows)

    def refuses_row(self, row, message):
        self.write_rows(row)
        self.refuses("check-conformance", "docs/conformance/loading.md:5: " + message)

    def test_rows_whose_code_and_test_are_there_are_accepted(self):
        self.write("tests/scenarios/opening.txt", "Title: Opening a journal\n# a remark\n")
        self.write_rows(self.ROW + "| A bar \\| ends it | `src/journal/loader.cc` | `Loader.Ends`, `Opening a journal`, "
                        "`tests/scenarios/opening.txt` |\n\n| Key | Width |\n|---|---|\n| a | 2 |\n")
        self.accepts("check-conformance")

    def test_a_file_that_is_not_there_is_refused(self):
        self.refuses_row(self.ROW.replace("loader.cc", "pass.cc"), "src/journal/pass.cc is not there")

    def test_a_word_that_is_not_in_the_file_is_refused(self):
        self.refuses_row(self.ROW.replace("`AddLine`", "`DropLine`"), "DropLine does not occur in src/journal/loader.cc")

    def test_a_test_that_is_not_there_is_refused(self):
        self.refuses_row(self.ROW.replace("AddsALine", "AddsTwo"), "no test or scenario is called Loader.AddsTwo")

    def test_a_scenario_that_is_not_there_is_refused(self):
        self.refuses_row(self.ROW.replace("Loader.AddsALine", "tests/scenarios/a.txt"), "no test or scenario is called")

    def test_a_cell_that_names_nothing_is_refused(self):
        self.refuses_row("| A line is added | `src/journal/loader.cc` | none yet |\n", "the test is not written as")
        self.refuses_row("| A line is added | | `Loader.Ends` |\n", "the code is not written as")
        self.refuses_row("| | `src/journal/loader.cc` | `Loader.Ends` |\n", "the rule is missing")
        self.refuses_row("| A|B | `src/journal/loader.cc` | `Loader.Ends` |\n", "4 cells instead of three")

    def test_a_rule_that_stands_twice_is_refused(self):
        self.write_rows(self.ROW + self.ROW)
        self.refuses("check-conformance", "loading.md:6: the same rule stands at docs/conformance/loading.md:5")

    def test_a_page_that_the_index_does_not_link_is_refused(self):
        self.write("docs/conformance.md", "# Rules\n")
        self.refuses("check-conformance", "says nothing of docs/conformance/loading.md")

    def test_a_step_of_the_architecture_that_is_not_there_is_refused(self):
        steps = "| Step | Code |\n|---|---|\n| A line is added | `src/journal/loader.cc` (`%s`) |\n"
        self.write("docs/architecture.md", steps % "AddLine")
        self.accepts("check-conformance")
        self.write("docs/architecture.md", steps % "DropLine")
        self.refuses("check-conformance", "docs/architecture.md:3: DropLine does not occur in src/journal/loader.cc")

    def test_no_row_at_all_is_refused(self):
        self.write_rows("")
        self.refuses("check-conformance", "no row anywhere")


class Translations(Tree):
    SAID = 'menu.Add(tr("打开(&O)..."));\nlabel.setText(HostText("第 %1 页" // why\n  "，共 %2 页"));\n'

    def setUp(self):
        super().setUp()
        self.say(self.SAID)
        self.translate({"打开(&O)...": "&Open...", "第 %1 页，共 %2 页": "Page %1 of %2"})

    def say(self, text):
        self.write("apps/stockbook/window/menu.cc", SOURCE + text)

    def translate(self, known):
        messages = "".join(f"<message><source>{text.replace('&', '&amp;')}</source><translation>{english.replace('&', '&amp;')}"
                           "</translation></message>" for text, english in known.items())
        self.write("apps/stockbook/translations/stockbook_en.ts",
                   f'<TS version="2.1"><context><name>stockbook</name>{messages}</context></TS>')

    def test_texts_that_are_translated_are_accepted(self):
        self.accepts("check-translations")

    def test_a_text_that_is_missing_is_refused(self):
        self.say(self.SAID + 'tr("关闭");\n')
        self.refuses("check-translations", "apps/stockbook/window/menu.cc:5: “关闭” is not translated")

    def test_a_text_that_goes_around_the_translation_is_refused(self):
        self.say(self.SAID + 'Set(QStringLiteral("关闭"));\n')
        self.refuses("check-translations", "menu.cc:5: “关闭” goes around tr()")

    def test_a_translation_without_the_placeholders_is_refused(self):
        self.translate({"打开(&O)...": "&Open...", "第 %1 页，共 %2 页": "Page %1"})
        self.refuses("check-translations", "has other placeholders than its translation")

    def test_a_translation_without_the_key_is_refused(self):
        self.translate({"打开(&O)...": "Open...", "第 %1 页，共 %2 页": "Page %1 of %2"})
        self.refuses("check-translations", "has a key after '&'")

    def test_a_translation_that_is_still_chinese_is_refused(self):
        self.translate({"打开(&O)...": "&Open...", "第 %1 页，共 %2 页": "第 %1 of %2"})
        self.refuses("check-translations", "is still Chinese")

    def test_missing_texts_are_added_unfinished(self):
        self.say(self.SAID + 'tr("关闭");\n')
        self.check("check-translations", "--add")
        texts = (self.root / "apps/stockbook/translations/stockbook_en.ts").read_text(encoding="utf-8")
        self.assertIn('<source>关闭</source>\n        <translation type="unfinished">', texts)
        self.assertIn("<translation>&amp;Open...</translation>", texts)
        self.refuses("check-translations", "“关闭” is not translated")


class Rooms(Tree):
    def setUp(self):
        super().setUp()
        self.write("src/base/money.h", HEADER)
        self.write("src/journal/loader.cc", SOURCE + '#include "base/money.h"\n#include "journal/loader.h"\n')
        self.write("apps/host/main.cc", SOURCE + '#include "journal/loader.h"\n')
        self.write("docs/architecture.md", "# Rooms\n<!-- rooms: drawn by tools/draw-rooms -->\n<!-- rooms: end -->\nEnd\n")

    def test_the_drawing_has_a_row_and_a_mark_for_what_a_room_includes(self):
        self.accepts("draw-rooms")
        self.accepts("draw-rooms", "--check")
        page = (self.root / "docs" / "architecture.md").read_text(encoding="utf-8")
        self.assertIn("           base journal\nbase        .      .\njournal     x      .\napps/host   .      x\n", page)
        self.assertTrue(page.startswith("# Rooms\n<!-- rooms") and page.endswith("-->\nEnd\n"), page)

    def test_a_drawing_of_another_tree_is_refused(self):
        self.accepts("draw-rooms")
        self.write("apps/host/main.cc", SOURCE + '#include "base/money.h"\n')
        self.refuses("draw-rooms", "is not the one of the tree", "--check")

    def test_a_circle_is_refused(self):
        self.write("src/base/date.cc", SOURCE + '#include "journal/loader.h"\n')
        self.refuses("draw-rooms", "form a circle")

    def test_a_page_without_the_marks_is_refused(self):
        self.write("docs/architecture.md", "# Rooms\n")
        self.refuses("draw-rooms", "lacks the lines")


if __name__ == "__main__":
    unittest.main()
