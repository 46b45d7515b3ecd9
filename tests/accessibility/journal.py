# SPDX-License-Identifier: MIT
"""The journal in the window on the bus, and what has to hold of it; see reading_test.py."""
from bus import Atspi, find, labels, states

WINDOW = "journal.db"
TRIES = 20


def hold(what, is_so, *told):
    if not is_so:
        raise AssertionError(f"this does not hold: {what}: {told}")
    print("ok   ", what, flush=True)


class Journal:
    """The table of the journal on the bus."""

    def __init__(self, reader):
        self.reader = reader
        self.frame = reader.window(WINDOW)
        self.table = reader.wait("the journal", lambda: find(self.frame, "table", "商品:"))

    def rows(self):
        return Atspi.Table.get_n_rows(self.table)

    def cell(self, row, column=0):
        return Atspi.Table.get_accessible_at(self.table, row, column)

    def place(self, cell):
        index = cell.get_index_in_parent()
        return Atspi.Table.get_row_at_index(self.table, index), Atspi.Table.get_column_at_index(self.table, index)

    def go(self, row, column=0):
        """By keys, from wherever they were."""
        Atspi.Component.grab_focus(self.cell(1, 0))
        self.reader.keys("ctrl+Home", *["Down"] * row, *["Right"] * column)
        self.is_at(row, column)

    def is_at(self, row, column):
        self.reader.wait(f"the focus is at row {row}, column {column}", lambda: self.reader.focus is not None
                         and self.reader.focus.get_role_name() == "table cell"
                         and self.reader.focus.get_parent() == self.table
                         and self.place(self.reader.focus) == (row, column))

    def nodes(self):
        return [row for row in range(self.rows()) if "expandable" in states(self.cell(row))]


def open_menu(reader, bar, letter):
    """Returns it. The toolkit shows a shortcut's menu at once but asks the bus about every key before it passes it on: the menu
    may hear of Alt only after it has opened, and closes. Then Alt and the letter are pressed again."""
    for _ in range(TRIES):
        reader.forget()
        reader.keys(f"alt+{letter}")
        # News of the journal may come after those of the menu.
        reader.wait("focus on a menu item", lambda: any(each.get_role_name() == "menu item" for each in reader.focused))
        reader.settle()
        if popup := find(bar, "popup menu"):
            return popup
    raise AssertionError(f"the menu of Alt+{letter} does not stay open; {reader.told()}")


def close_menu(reader, journal, bar):
    """One key after the other: one for a window that is closing is lost."""
    reader.keys("Escape")
    reader.wait("the menu has gone", lambda: find(bar, "popup menu") is None)
    reader.settle()
    reader.keys("Escape")
    reader.wait("back in the journal", lambda: reader.focus.get_parent() == journal.table)


def field_of(focus):
    """A table tells its current cell."""
    return focus.get_parent() if focus.get_role_name() == "table cell" else focus


def bar_of(field):
    """What it stands in together with buttons."""
    bar = field.get_parent()
    while find(bar, "push button") is None:
        bar = bar.get_parent()
    return bar


def fields_by_tab(reader, count):
    """Every field that the key reaches, and back to the first."""
    seen = []
    for _ in range(count):
        before = field_of(reader.focus)
        reader.keys("Tab")
        reader.wait("the focus moves on", lambda: field_of(reader.focus) != before)
        if field_of(reader.focus) in seen:
            return seen
        seen.append(field_of(reader.focus))
    raise AssertionError(f"Tab does not come back; {reader.told()}")


def say_what_they_are(fields):
    for field in fields:
        role, name, description = field.get_role_name(), field.get_name(), field.get_description()
        # The name of a combo box is what it shows, here as everywhere.
        told = labels(field) if role == "combo box" else [name]
        hold(f"{role} is told as {told}", any(told), role, name)
        hold("its description is plain", "<" not in description and "&" not in description, description)
