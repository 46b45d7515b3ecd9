# SPDX-License-Identifier: MIT
"""What is read of the window in English; see reading_test.py. The grid, its band and the data are Chinese in it as well."""
import pathlib
import re
import sys

from bus import children, find, find_all, labels, states
from failures import ask_for_a_file_that_is_none
from journal import Journal, bar_of, close_menu, fields_by_tab, hold, open_menu, say_what_they_are

HAN = re.compile("[\u4e00-\u9fff]")
BILL = re.compile(r"[A-Z]{2}\d{6}-\d{4}")
MENUS = {"f": "File", "e": "Edit", "v": "View", "g": "Go", "h": "Help"}
FIELDS = ["Kind of journal", "Product", "Depot", "2nd quantity", "Tax", "Hide amounts", "Load", "table"]
WRITTEN = ("label", "push button", "toggle button", "check box", "radio button", "panel", "page tab")
TABLE = "date,bill,product,quantity\n2025-01-02,XS1,bolt,10\n"


def hold_english(what, texts):
    foreign = [text for text in texts if HAN.search(text)]
    hold(f"{what} is English", not foreign, foreign)


def texts_of(part):
    """Of what the window itself says there, and not of the data, which has a label or is the name of a bill."""
    return [text for role in WRITTEN for each in find_all(part, role) if not labels(each)
            for text in (each.get_name(), each.get_description()) if not BILL.search(text)]


def read_english_menus(reader):
    journal = Journal(reader)
    bar = find(journal.frame, "menu bar")
    names = [each.get_name() for each in children(bar)]
    hold("the menus", names == list(MENUS.values()), names)
    journal.go(2)
    for key, name in MENUS.items():
        popup = open_menu(reader, bar, key)
        items = [each.get_name() for role in ("menu item", "check menu item", "menu") for each in find_all(popup, role)]
        hold("it has items", len(items) > 0 and all(items), items)
        hold_english(f"menu {name}", [item for item in items if "anguage" not in item])
        close_menu(reader, journal, bar)


def read_english_fields(reader):
    Journal(reader).go(2)
    fields = fields_by_tab(reader, 20)
    say_what_they_are(fields)
    told = [field.get_role_name() if field.get_role_name() == "table" else (labels(field) or [field.get_name()])[0]
            for field in fields]
    hold("the fields, as the eye meets them", told == FIELDS, told)
    hold_english("what they say of themselves", [field.get_description() for field in fields])


def read_english_find_bar(reader):
    journal = Journal(reader)
    journal.go(0)
    reader.keys("ctrl+f")
    words = reader.focus_on("text")
    hold("the field has a label", labels(words) == ["Find what"], labels(words))
    told = texts_of(bar_of(words))
    hold("the bar has texts", "Close the find bar" in told, told)
    hold_english("the find bar", told)
    reader.type("0001")
    reader.wait("the count", lambda: re.match(r"1 of \d+", words.get_description()))
    reader.keys("Escape")
    reader.wait("back in the journal", lambda: reader.focus.get_parent() == journal.table)


def read_english_dialogs(reader):
    for key, title in (("ctrl+l", "Columns"), ("ctrl+b", "Bill — "), ("ctrl+shift+p", "Print preview"), ("F1", "Keys and version")):
        Journal(reader).go(2)
        reader.keys(key)
        dialog = reader.window(title)
        reader.wait("the keys are in it", lambda: reader.focus is not None and "focused" in states(reader.focus)
                    and find(dialog, reader.focus.get_role_name(), reader.focus.get_name()) == reader.focus
                    or title == "Columns")
        if title == "Print preview":
            reader.keys("ctrl+u")
            setup = reader.window("Page set-up")
            say_what_they_are(fields_by_tab(reader, 20))
            hold_english("Page set-up", texts_of(setup))
            reader.keys("Escape")
            reader.gone("Page set-up")
            reader.window(title)
        say_what_they_are([each for each in fields_by_tab(reader, 20) if each.get_role_name() != "table cell"])
        hold_english(title, texts_of(dialog))
        reader.keys("Escape")
        reader.gone(title)


def read_english_import(reader):
    Journal(reader).go(2)
    table = pathlib.Path(sys.argv[1]) / "english.csv"
    table.write_text(TABLE, encoding="utf-8")
    reader.keys("ctrl+i")
    reader.window("Import a table")
    reader.focus_on("text")
    reader.type(str(table))
    reader.keys("Return")
    dialog = reader.window("Import — english.csv")
    reader.wait("what is in the table", lambda: find(dialog, "table", "Preview"))
    fields = fields_by_tab(reader, 40)
    say_what_they_are(fields)
    hold_english("the import", texts_of(dialog) + [label for field in fields for label in labels(field)])
    reader.keys("Escape")
    reader.gone("Import — english.csv")


def read_english_failure(reader):
    dialog = ask_for_a_file_that_is_none(reader, "Open a database", "The database cannot be opened")
    told = [each.get_name() for each in find_all(dialog, "label")]
    hold("which file", any("letter.db" in each and not HAN.search(each) for each in told), told)
    reader.focus_on("push button", "Close")
    reader.keys("Return")
    reader.gone("The database cannot be opened")


PARTS = (read_english_menus, read_english_fields, read_english_find_bar, read_english_dialogs, read_english_import,
         read_english_failure)
