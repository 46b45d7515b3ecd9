# SPDX-License-Identifier: MIT
"""Two users: one has keys only, the other a mouse only and types nothing but words and names of files."""
import re

from desk import WIDTH

# Each command by its key and by its way through the menus.
COMMANDS = {
    "import": ("ctrl+i", ["文件", "导入"]),
    "search": ("ctrl+k", ["转到", "转到台账"]),
    "range": ("ctrl+r", ["查看", "区间、汇总与走势", "^区间", "选择区间"]),
    "find": ("ctrl+f", ["编辑", "查找\\(F"]),
    "summary": ("ctrl+m", ["查看", "区间、汇总与走势", "期间汇总"]),
    "plot": ("ctrl+g", ["查看", "区间、汇总与走势", "走势图"]),
    "preview": ("ctrl+shift+p", ["文件", "打印预览"]),
    "export": ("ctrl+shift+s", ["文件", "导出"]),
    "hide": ("ctrl+shift+h", ["查看", "隐藏当前列"]),
    "quit": ("ctrl+q", ["文件", "退出"]),
}


class Hand:
    def __init__(self, desk, sight):
        self.desk = desk
        self.sight = sight

    def name_file(self, title, path, button):
        """In a file dialog: the field of the name has the focus, and its text is selected."""
        dialog = self.sight.await_one("dialog", title)
        self.enter_name(dialog, str(path))
        self.accept_file(dialog, button)
        self.sight.await_gone("dialog", title)

    def journal(self):
        return self.sight.await_one("table", "^(商品|供应商)")

    def await_text(self, role, pattern):
        return self.sight.await_one(role, pattern)


class Keyboard(Hand):
    name = "keyboard"

    def command(self, name):
        self.desk.key(COMMANDS[name][0])

    def enter_name(self, dialog, path):
        self.desk.key("ctrl+a")
        self.desk.type(path)

    def accept_file(self, dialog, button):
        self.desk.key("Return")

    def press(self, button, inside=None):
        """By the access key that the button shows."""
        node = self.sight.await_one("push button", button, inside)
        self.desk.key("alt+" + re.search(r"\((\w)\)", node.get_name())[1].lower())

    def choose_receipts(self, dialog):
        self.desk.key("alt+r", "Down")

    def take_subject(self, text):
        self.sight.await_that(text, lambda: self.sight.item("list", text))
        self.desk.key("Return")

    def show_month(self, month):
        self.desk.key("alt+b")
        self.desk.type(month)
        self.desk.key("alt+z")
        self.desk.type(month)
        self.desk.key("Return", "Escape")

    def show_bill(self, number):
        self.go_to(number)
        self.desk.key("ctrl+b")

    def go_to(self, text):
        """To the line that has the text, whatever was the current one."""
        self.desk.key("ctrl+Home")
        self.command("find")
        self.desk.key("ctrl+a")
        self.desk.type(text)
        self.await_text("label", "^第 1 条，共 1 条")
        self.desk.key("Return", "Escape")

    def stand_at(self, text):
        self.go_to(text)

    def close_bill(self):
        self.desk.key("Escape")

    def step_through_hits(self):
        self.desk.key("F3", "alt+k")

    def close_find(self):
        self.desk.key("Escape")

    def close_plot(self):
        self.desk.key("Right", "ctrl+g")

    def close_summary(self):
        self.desk.key("Escape", "ctrl+m", "ctrl+m")

    def select_amounts(self, first, last):
        self.go_to(first)
        self.desk.key("End", *["shift+Down"] * 3)

    def save_preview(self, dialog):
        self.desk.key("ctrl+s")

    def close_preview(self, dialog):
        self.desk.key("Escape")

    def hide_remarks(self):
        self.desk.key("Home", "Right", "Right")
        self.command("hide")

    def reopen(self, program, file):
        self.desk.start(program, file)


class Mouse(Hand):
    name = "mouse"

    def click(self, node, *words):
        self.desk.click(self.sight.middle(node), *words)

    def command(self, name):
        *path, last = COMMANDS[name][1]
        for step in path + [last]:
            node = self.sight.await_that(step, lambda step=step: self.sight.placed("menu item", step))
            self.click(node)

    def enter_name(self, dialog, path):
        self.click(self.sight.await_one("text", "文件名称", dialog), "--repeat", 3)
        self.desk.type(path)

    def accept_file(self, dialog, button):
        """Until it is pressed: the first click closes the list of names that came up while they were typed."""
        title = dialog.get_name()

        def is_gone():
            self.click(self.sight.await_one("push button", button, dialog))
            return self.sight.gone_soon("dialog", title)

        self.sight.await_that(f"the end of {title}", is_gone)

    def press(self, button, inside=None):
        self.click(self.sight.await_one("push button", button, inside))

    def choose(self, chooser, item):
        self.click(chooser)
        self.click(self.sight.await_that(item, lambda: self.sight.item("list", item)))

    def choose_receipts(self, dialog):
        self.choose(self.sight.await_one("combo box", "出库（销售）", dialog), "入库（采购）")

    def take_subject(self, text):
        self.click(self.sight.await_that(text, lambda: self.sight.item("list", text)))

    def show_month(self, month):
        """The last one, and back from there."""
        self.choose(self.sight.await_one("combo box", "^全部$"), "最末期间")
        self.await_text("label", "显示 . 行")
        self.press("前一区间")

    def cell(self, text):
        return self.sight.await_that(text, lambda: self.sight.cell(self.journal(), text))

    def show_bill(self, number):
        self.click(self.cell(number), "--repeat", 2, "--delay", 60)

    def stand_at(self, text):
        self.click(self.cell(text))

    def close_bill(self):
        self.press("关闭\\(C")

    def step_through_hits(self):
        self.press("下一个")
        self.click(self.sight.await_one("check box", "列表"))

    def close_find(self):
        self.press("关闭查找")

    def close_plot(self):
        self.press("^关闭$", self.sight.await_one("frame", "^走势图$"))

    def close_summary(self):
        self.press("^关闭$", self.sight.await_one("frame", "^期间汇总$"))

    def select_amounts(self, first, last):
        def place(text):
            return WIDTH - 75, self.sight.middle(self.cell(text))[1]

        self.desk.drag(place(first), place(last))

    def save_preview(self, dialog):
        self.press("存为 PDF", dialog)

    def close_preview(self, dialog):
        self.press("关闭", dialog)

    def hide_remarks(self):
        x, _ = self.sight.middle(self.cell("摘要"))
        _, y = self.sight.middle(self.cell("CG202502-012"))
        self.desk.click((x, y))
        self.command("hide")

    def reopen(self, program, file):
        """Without a name, which opens the file that was opened last."""
        self.desk.start(program)
