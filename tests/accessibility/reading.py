# SPDX-License-Identifier: MIT
"""What is read of the window; see reading_test.py, which starts this."""
import os
import pathlib
import subprocess
import sys

import english
import failures
from bus import PATIENCE, Atspi, Reader, children, find, find_all, labels, states
from journal import WINDOW, Journal, bar_of, close_menu, fields_by_tab, hold, open_menu, say_what_they_are

MENUS = ["文件(F)", "编辑(E)", "查看(V)", "转到(G)", "帮助(H)"]
CAPTIONS = ["单据", "类型", "摘要", "单价", "入库/出库 数量", "入库/出库 金额", "库存单价", "库存数量", "库存金额"]
TABLE = ("日期,单据号,商品编号,数量,单价,往来单位\n"
         "2025-01-02,XS1,螺栓,10,2.50,甲公司\n2025-01-05,XS2,螺栓,3,4.00,乙公司\n2025-13-05,XS3,螺栓,3,4.00,乙公司\n")


def read_table(reader):
    journal = Journal(reader)
    captions = [Atspi.Table.get_column_description(journal.table, column)
                for column in range(Atspi.Table.get_n_columns(journal.table))]
    hold("the captions", captions == CAPTIONS, captions)
    headers = [Atspi.Table.get_column_header(journal.table, column) for column in range(len(captions))]
    hold("the captions are headers", all(each.get_role_name() == "table column header" for each in headers))
    hold("the headers say the captions", [each.get_name() for each in headers] == captions)
    hold("the title of the window begins with the subject", reader.window(WINDOW).get_name().startswith(
        journal.table.get_name()), journal.table.get_name())
    hold("the band above says the same", find(journal.frame, "label", journal.table.get_name()) is not None)
    hold("the first row is what was brought forward", "期初" in journal.cell(0).get_name(), journal.cell(0).get_name())
    hold("a row is called by its bill", Atspi.Table.get_row_description(journal.table, 2) == journal.cell(2).get_name())
    hold("numbers as they are shown", "." in journal.cell(2, 8).get_name(), journal.cell(2, 8).get_name())


def read_current_cell(reader):
    journal = Journal(reader)
    journal.go(0)
    for key, row, column in (("Down", 1, 0), ("Down", 2, 0), ("Right", 2, 1), ("End", 2, 8), ("Home", 2, 0), ("Up", 1, 0)):
        reader.keys(key)
        journal.is_at(row, column)
        hold("the cell is the focused one", {"focused", "selected"} <= states(reader.focus), states(reader.focus))
        hold("it says what is shown", reader.focus.get_name() == journal.cell(row, column).get_name())
    # Into another field and back: the cell has the last word, not the table.
    reader.keys("ctrl+r")
    reader.focus_on("combo box")
    reader.forget()
    reader.keys("Escape")
    reader.wait("the table has the focus", lambda: journal.table in reader.focused)
    journal.is_at(1, 0)


def read_periods(reader):
    journal = Journal(reader)
    node = journal.nodes()[0]
    rows = journal.rows()
    journal.go(node)
    for key, state, description, fewer in (("minus", "collapsed", "已折叠", True), ("plus", "expanded", "已展开", False)):
        reader.forget()
        reader.keys(key)
        reader.wait(f"the period is {state}", lambda: state in states(journal.cell(node))
                    and ("accessible-description", journal.cell(node)) in reader.changed)
        cell = journal.cell(node)
        hold("only that", len({"expanded", "collapsed"} & states(cell)) == 1, states(cell))
        hold("it is said", cell.get_description() == description, cell.get_description())
        hold("its lines are there or not", (journal.rows() < rows) == fewer, journal.rows())
    hold("a line is neither", "expandable" not in states(journal.cell(node + 1)) and not journal.cell(node + 1).get_description())
    reader.keys("ctrl+shift+l")
    reader.wait("all periods are closed", lambda: journal.nodes() and all(
        "collapsed" in states(journal.cell(row)) for row in journal.nodes()))
    reader.keys("ctrl+shift+e")
    reader.wait("all periods are open", lambda: journal.rows() == rows and all(
        "expanded" in states(journal.cell(row)) for row in journal.nodes()))


def read_find_bar(reader):
    journal = Journal(reader)
    journal.go(0)
    reader.keys("ctrl+f")
    words = reader.focus_on("text", "查找")
    hold("it has a label", labels(words) == ["查找(D)"], labels(words))
    bar = bar_of(words)
    told = [each.get_name() for role in ("check box", "toggle button", "push button") for each in find_all(bar, role)]
    hold("and so has all beside it", all(told) and {"区分大小写", "全字匹配", "通配符(I)", "关闭查找"} <= set(told), told)
    reader.forget()
    reader.type("0001")
    reader.wait("the count", lambda: words.get_description().startswith("第 1 条，共 ")
                and ("accessible-description", words) in reader.changed)
    reader.wait("the same is shown", lambda: find(journal.frame, "label", words.get_description()) is not None)
    reader.keys("alt+k")
    hits = reader.wait("the list of hits", lambda: find(journal.frame, "table", "查找结果"))
    reader.forget()
    reader.keys("F3")
    reader.wait("the second hit", lambda: words.get_description().startswith("第 2 条，共 "))
    reader.catch_up()
    hold("the focus stays in the field", reader.focused == [], [each.get_role_name() for each in reader.focused])
    reader.keys("Down")
    reader.wait("in the list", lambda: reader.focus.get_role_name() == "table cell" and reader.focus.get_parent() == hits)
    reader.keys("Escape")
    reader.wait("back in the journal", lambda: reader.focus.get_parent() == journal.table)
    reader.keys("ctrl+f")
    reader.focus_on("text", "查找")
    reader.type("zzz")
    reader.wait("nothing found", lambda: words.get_description() == "没有找到")
    reader.forget()
    reader.keys("Escape")
    reader.wait("back in the journal", lambda: reader.focus.get_parent() == journal.table)
    roles = {each.get_role_name() for each in reader.focused}
    hold("by no other field", roles <= {"table", "table cell"}, roles)


def read_message_line(reader):
    journal = Journal(reader)
    bar = find(journal.frame, "status bar")
    hold("what was read", find(bar, "label", "已读入：") is not None, [each.get_name() for each in find_all(bar, "label")])
    issue = next(row for row in range(journal.rows()) if "销售单" in journal.cell(row).get_name())
    reader.forget()
    journal.go(issue)
    line = reader.wait("where the issue came from", lambda: find(bar, "label", "出库自"))
    hold("it was announced", ("accessible-name", line) in reader.changed)
    hold("how many lines there are", any("行" in each.get_name() for each in find_all(bar, "label")))


def read_menus(reader):
    journal = Journal(reader)
    bar = find(journal.frame, "menu bar")
    hold("the menus", [each.get_name() for each in children(bar)] == MENUS, [each.get_name() for each in children(bar)])
    journal.go(2)
    for menu, item, key in (("f", "打印预览", "Ctrl+Shift+P"), ("e", "查找(F)", "Ctrl+F"), ("g", "查看单据", "Ctrl+B")):
        popup = open_menu(reader, bar, menu)
        items = [each for each in find_all(popup, "menu item") if "showing" in states(each)]
        hold("each item has a name", all(each.get_name() for each in items))
        found = find(popup, "menu item", item)
        hold(f"{item} has its key", key in Atspi.Action.get_key_binding(found, 0), Atspi.Action.get_key_binding(found, 0))
        reader.forget()
        reader.keys("Down")
        reader.wait("the item", lambda: reader.focused and reader.focused[-1] in items)
        close_menu(reader, journal, bar)


def read_context_menu(reader):
    journal = Journal(reader)
    for key in ("Menu", "shift+F10"):
        journal.go(2)
        reader.keys(key, "Down")
        reader.focus_on("menu item", "查看单据")
        reader.forget()
        reader.keys("Escape")
        reader.wait("the table has the focus", lambda: journal.table in reader.focused)
        reader.wait("back at a cell", lambda: reader.focus.get_parent() == journal.table)


def read_field_chooser(reader):
    journal = Journal(reader)
    journal.go(2, 2)
    reader.keys("ctrl+Menu", "Up", "Right")
    reader.focus_on("menu item", "单据")
    hidden = lambda: len(CAPTIONS) - Atspi.Table.get_n_columns(journal.table)
    reader.keys("Down")
    field = reader.focus_on("menu item", "类型")
    for key, shown in (("space", False), ("Return", True)):
        reader.forget()
        reader.keys(key)
        reader.wait("the tick is told", lambda: (field, shown) in reader.ticked)
        hold("it is set or not", ("checked" in states(field)) == shown, states(field))
        reader.wait("the journal has the column or not", lambda: hidden() == (0 if shown else 1))
        hold("the menu is still there", "showing" in states(field))
    reader.keys("Escape")
    reader.wait("the list of columns has gone", lambda: "showing" not in states(field))
    reader.settle()
    reader.keys("Escape")
    reader.wait("back in the journal", lambda: reader.focus.get_parent() == journal.table)


def read_fields(reader):
    journal = Journal(reader)
    journal.go(2)
    fields = fields_by_tab(reader, 20)
    say_what_they_are(fields)
    told = [field.get_role_name() if field.get_role_name() == "table" else (labels(field) or [field.get_name()])[0]
            for field in fields]
    wanted = ["台账类型", "商品(P)", "仓库(W)", "双数量(2)", "税额(T)", "隐藏金额(A)", "载入(L)", "table"]
    hold("the fields, as the eye meets them", told == wanted, told)


def read_bill(reader):
    journal = Journal(reader)
    journal.go(2)
    reader.keys("ctrl+b")
    dialog = reader.window("查看单据")
    facts = {label: value.get_name() for value in find_all(dialog, "label") for label in labels(value)}
    hold("the head of the bill", facts.get("日期") == journal.cell(2).get_name().split(" ")[0], facts)
    lines = find(dialog, "table", "单据的行")
    hold("its captions", Atspi.Table.get_column_description(lines, 0) == "编号")
    say_what_they_are(fields_by_tab(reader, 10))
    reader.keys("Escape")
    reader.gone("查看单据")


def read_columns(reader):
    Journal(reader).go(2)
    reader.keys("ctrl+l")
    dialog = reader.window("列设置")
    columns = reader.wait("the columns", lambda: find(dialog, "tree", "台账的列"))
    names = [each.get_name() for each in children(columns) if each.get_role_name() == "table cell"]
    hold("each column of the journal", set(CAPTIONS) <= set(names), names)
    reader.keys("Down")
    reader.wait("the next column", lambda: reader.focus.get_role_name() == "table cell" and "checked" in states(reader.focus))
    fields = fields_by_tab(reader, 20)
    say_what_they_are(fields)
    reader.keys("Escape")
    reader.gone("列设置")


def read_preview(reader):
    Journal(reader).go(2)
    reader.keys("ctrl+shift+p")
    dialog = reader.window("打印预览")
    reader.wait("the page", lambda: reader.focus.get_name().startswith("第 1 页，共 "))
    area = reader.focus
    reader.forget()
    reader.keys("Next")
    reader.wait("the second page", lambda: area.get_name().startswith("第 2 页，共 ")
                and ("accessible-name", area) in reader.changed)
    reader.keys("ctrl+u")
    reader.window("页面设置")
    say_what_they_are(fields_by_tab(reader, 20))
    reader.keys("Escape")
    reader.gone("页面设置")
    reader.window("打印预览")
    say_what_they_are(fields_by_tab(reader, 10) + find_all(dialog, "push button"))
    reader.keys("Escape")
    reader.gone("打印预览")


def read_panels(reader):
    journal = Journal(reader)
    journal.go(2)
    reader.keys("ctrl+m")
    reader.wait("a line of the panel", lambda: reader.focus.get_parent().get_name() == "期间汇总")
    reader.keys("ctrl+g")
    plot = reader.focus_on("filler", "走势图")
    reader.forget()
    reader.keys("Right")
    reader.wait("its line is told", lambda: "　结存 " in plot.get_description()
                and ("accessible-description", plot) in reader.changed)
    reader.keys("Return")
    reader.wait("back in the journal", lambda: reader.focus.get_parent() == journal.table)
    # Through the periods, whose line in the panel follows and keeps quiet.
    journal.go(0)
    reader.forget()
    last = journal.nodes()[2] + 1
    reader.keys(*["Down"] * last)
    journal.is_at(last, 0)
    reader.catch_up()
    strangers = [each.get_name() for each in reader.focused if each.get_parent() != journal.table]
    hold("the focus never leaves the journal", strangers == [], strangers)
    reader.keys("ctrl+m", "ctrl+m", "ctrl+g", "ctrl+g")


def read_import(reader):
    Journal(reader).go(2)
    table = pathlib.Path(sys.argv[1]) / "moves.csv"
    table.write_text(TABLE, encoding="utf-8")
    reader.keys("ctrl+i")
    reader.window("导入表格")
    reader.focus_on("text")
    reader.type(str(table))
    reader.keys("Return")
    dialog = reader.window("导入 — moves.csv")
    lines = reader.wait("what is in the table", lambda: find(dialog, "table", "预览"))
    cells = [each.get_name() for each in children(lines)]
    hold("lines and captions", {"XS1", "螺栓", "单据号"} <= set(cells), cells)
    told = [each.get_name() for each in find_all(dialog, "label")]
    hold("what would be skipped", any("将跳过 1 行" in each for each in told), told)
    fields = fields_by_tab(reader, 40)
    say_what_they_are(fields)
    boxes = [label for field in fields if field.get_role_name() == "combo box" for label in labels(field)]
    for wanted in ("编码", "分隔符", "小数点", "正数为", "商品编号", "日期", "数量", "单价", "往来单位"):
        hold(f"a field for {wanted}", any(label.startswith(wanted) for label in boxes), boxes)
    reader.keys("Escape")
    reader.gone("导入 — moves.csv")


PARTS = (read_table, read_current_cell, read_periods, read_find_bar, read_message_line, read_menus, read_context_menu,
         read_field_chooser, read_fields, read_bill, read_columns, read_preview, read_panels, read_import)


def read(command, parts):
    reader = Reader(command)
    try:
        for part in parts:
            print("part", part.__name__, flush=True)
            part(reader)
    finally:
        reader.end()


def main():
    folder, program, *words = sys.argv[1:]
    inventory = os.path.join(folder, WINDOW)
    subprocess.run([program, "sample", inventory, "--lines", "400"], check=True, stdout=subprocess.DEVNULL, timeout=PATIENCE)
    for language, parts in (("zh", PARTS + failures.PARTS), ("en", english.PARTS)):
        wanted = [part for part in parts if not words or any(word in part.__name__ for word in words)]
        if wanted:
            read([program, "open", inventory, "--language", language], wanted)
    print("reading: everything holds")


main()
