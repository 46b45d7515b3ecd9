# SPDX-License-Identifier: MIT
"""What is told when something fails; see reading_test.py."""
import pathlib
import sqlite3
import sys

from bus import find, find_all, states
from journal import WINDOW, Journal, hold, say_what_they_are

ISSUES = "出库记录"


def rename_table(old, new):
    with sqlite3.connect(pathlib.Path(sys.argv[1]) / WINDOW) as inventory:
        inventory.execute(f'ALTER TABLE "{old}" RENAME TO "{new}"')
    inventory.close()


def read_failed_load(reader):
    journal = Journal(reader)
    journal.go(2)
    rows = journal.rows()
    rename_table(ISSUES, "moved")
    reader.forget()
    reader.keys("F5")
    notice = reader.wait("a notice", lambda: find(journal.frame, "notification", ISSUES))
    hold("it says what failed", notice.get_name().startswith("台账没有载入："), notice.get_name())
    hold("it is shown, too", find(notice, "label", notice.get_name()) is not None)
    reader.wait("it was announced", lambda: notice in reader.appeared)
    hold("the old journal is still there", journal.rows() == rows, journal.rows())
    buttons = find_all(notice, "push button")
    hold("its buttons", [each.get_name() for each in buttons] == ["重试(Y)", "关闭提示"], [each.get_name() for each in buttons])
    # By the keys of the fields, as whoever cannot see the letter finds it.
    reader.keys("ctrl+r", "shift+Tab")
    for _ in range(30):
        before = reader.focus
        if before in buttons:
            break
        reader.keys("Tab")
        reader.wait("the focus moves on", lambda: reader.focus != before)
    hold("the keys reach them", reader.focus in buttons, reader.told())
    say_what_they_are([reader.focus])
    rename_table("moved", ISSUES)
    reader.keys("alt+y")
    reader.wait("the notice has gone", lambda: find(journal.frame, "notification") is None)
    hold("the journal is there", Journal(reader).rows() == rows)


def ask_for_a_file_that_is_none(reader, opening, title):
    """Returns the dialog that says so."""
    Journal(reader).go(2)
    file = pathlib.Path(sys.argv[1]) / "letter.db"
    file.write_text("Dear Sir or Madam,\n" * 100, encoding="utf-8")
    reader.keys("ctrl+o")
    reader.window(opening)
    reader.focus_on("text")
    reader.type(str(file))
    reader.keys("Return")
    return reader.window(title)


def read_unreadable_file(reader):
    dialog = ask_for_a_file_that_is_none(reader, "打开数据库", "打不开数据库")
    hold("it is an alert", dialog.get_role_name() == "alert", dialog.get_role_name())
    told = [each.get_name() for each in find_all(dialog, "label")]
    hold("which file", "打不开“letter.db”。" in told, told)
    hold("and why", any("不是 SQLite 数据库" in each for each in told), told)
    button = reader.focus_on("push button", "关闭(C)")
    hold("it can be pressed", "focusable" in states(button))
    reader.keys("Return")
    reader.gone("打不开数据库")
    hold("the journal is still there", Journal(reader).rows() > 2)


PARTS = (read_failed_load, read_unreadable_file)
