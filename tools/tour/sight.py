# SPDX-License-Identifier: MIT
"""What a screen reader would find in the program's windows: fields, buttons, menus and tables by their names, with their
places on the screen, so that the mouse needs to know none, and whoever waits waits for what a user would see."""
import re
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

from desk import PATIENCE  # noqa: E402

PROGRAM = "stockbook"
CLOSED = ("table", "tree table", "tree", "list")  # whose cells are many


class Sight:
    def __init__(self):
        Atspi.init()

    def application(self):
        desktop = Atspi.get_desktop(0)
        desktop.clear_cache()
        for place in range(desktop.get_child_count()):
            child = desktop.get_child_at_index(place)
            if child is not None and child.get_name() == PROGRAM:
                child.set_cache_mask(Atspi.Cache.NONE)
                return child
        return None

    def shown(self, node=None):
        """Everything that is on the screen, except the cells of tables and lists."""
        node = node or self.application()
        if node is None:
            return
        for place in range(node.get_child_count()):
            child = node.get_child_at_index(place)
            if child is None:
                continue
            if child.get_state_set().contains(Atspi.StateType.SHOWING):
                yield child
            if child.get_role_name() not in CLOSED:
                yield from self.shown(child)

    def find(self, role, name, inside=None):
        """The last one of the role whose name has the pattern: dialogs come after the window."""
        found = None
        try:
            for node in self.shown(inside):
                if node.get_role_name() == role and re.search(name, node.get_name() or ""):
                    found = node
        except GLib.Error:  # something closed meanwhile
            return None
        return found

    def await_that(self, what, holds):
        until = time.monotonic() + PATIENCE
        while time.monotonic() < until:
            try:
                value = holds()
            except GLib.Error:
                value = None
            if value:
                return value
            time.sleep(0.05)
        raise AssertionError(f"nothing came: {what}")

    def await_one(self, role, name, inside=None):
        return self.await_that(f"{role} {name}", lambda: self.find(role, name, inside))

    def await_gone(self, role, name):
        return self.await_that(f"the end of {role} {name}", lambda: self.find(role, name) is None)

    def gone_soon(self, role, name):
        time.sleep(0.5)
        return self.find(role, re.escape(name)) is None

    def placed(self, role, name):
        """One that has come to its place: a menu names its items before it opens."""
        node = self.find(role, name)
        return node if node is not None and self.area(node)[1] > 0 else None

    def parts(self, node):
        for place in range(node.get_child_count()):
            child = node.get_child_at_index(place)
            if child is not None:
                yield child

    def item(self, role, text):
        """The first shown item of an open list with the text."""
        for node in self.shown():
            if node.get_role_name() == role:
                for part in self.parts(node):
                    if text in (part.get_name() or "") and part.get_state_set().contains(Atspi.StateType.SHOWING):
                        return part
        return None

    def cell(self, table, text):
        """The first cell of a table with the text."""
        return next((part for part in self.parts(table) if text in (part.get_name() or "")), None)

    def shown_cells(self, table):
        return [part.get_name() for part in self.parts(table) if part.get_state_set().contains(Atspi.StateType.SHOWING)]

    def current_cell(self, table):
        """The text of the cell that has the keys, "" for none."""
        return next((part.get_name() for part in self.parts(table)
                     if part.get_state_set().contains(Atspi.StateType.FOCUSED)), "")

    @staticmethod
    def middle(node):
        x, y, width, height = Sight.area(node)
        return x + width // 2, y + height // 2

    @staticmethod
    def area(node):
        area = node.get_extents(Atspi.CoordType.SCREEN)
        return area.x, area.y, area.width, area.height
