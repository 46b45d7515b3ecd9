# SPDX-License-Identifier: MIT
"""The program as the accessibility bus tells it to a screen reader, with real keys. See reading_test.py."""
import os
import subprocess
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402  (only after its version is chosen)

PATIENCE = float(os.environ.get("STOCKBOOK_PATIENCE", "300"))  # seconds: far longer than the slowest machine needs
POLL = 0.02
HEARD = ("object:state-changed:focused", "object:state-changed:showing", "object:state-changed:checked",
         "object:property-change:accessible-name",
         "object:property-change:accessible-description")


def states(thing):
    return {state.value_nick for state in thing.get_state_set().get_states()}


def labels(thing):
    """The names of what labels it."""
    return [relation.get_target(index).get_name() for relation in thing.get_relation_set()
            if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY
            for index in range(relation.get_n_targets())]


def children(thing):
    return [thing.get_child_at_index(index) for index in range(thing.get_child_count())]


def find(thing, role, name=""):
    """The first one that is shown, with the role and with the text in its name; None without one. Tables are not entered."""
    if thing is None or "showing" not in states(thing):
        return None
    if thing.get_role_name() == role and name in thing.get_name():
        return thing
    if thing.get_role_name() == "table":
        return None
    return next((found for child in children(thing) if (found := find(child, role, name)) is not None), None)


def find_all(thing, role):
    if thing is None or "showing" not in states(thing):
        return []
    return ([thing] if thing.get_role_name() == role else []) + [
        found for child in children(thing) for found in find_all(child, role)]


class Reader:
    """Listens to the program that it has started. `focus` is what was last said to have the focus, `focused` all since
    forget(), `changed` what has had a new name or description since then, `appeared` what is new to the eye and `ticked`
    which check marks were set or taken away."""

    def __init__(self, command):
        self.focus = None
        self.focused = []
        self.changed = []
        self.appeared = []
        self.ticked = []
        self.listener = Atspi.EventListener.new(self.hear)
        for event in HEARD:
            self.listener.register(event)
        self.process = subprocess.Popen(command, stdin=subprocess.DEVNULL)
        self.program = self.wait("the program on the bus", self.find_program)

    def hear(self, event):
        kind = event.type.split(":")[-1]
        if kind == "showing":
            if event.detail1:
                self.appeared.append(event.source)
        elif kind == "checked":
            self.ticked.append((event.source, event.detail1 == 1))
        elif kind != "focused":
            self.changed.append((kind, event.source))
        elif event.detail1:
            self.focus = event.source
            self.focused.append(event.source)

    def find_program(self):
        return next((each for each in children(Atspi.get_desktop(0))
                     if each is not None and each.get_process_id() == self.process.pid and each.get_child_count() > 0), None)

    def catch_up(self):
        """Hears all that the program has said up to now: it has answered a question by then, which is never cached."""
        Atspi.Component.get_extents(self.program.get_child_at_index(0), Atspi.CoordType.SCREEN)
        self.listen()

    def settle(self):
        """Until the keys that the program knows of have been passed on: the registry, which it asks about each, answers in the
        order in which it is asked, and so does the program."""
        Atspi.Component.get_extents(Atspi.get_desktop(0), Atspi.CoordType.SCREEN)
        self.catch_up()

    def forget(self):
        self.catch_up()
        self.focused, self.changed, self.appeared, self.ticked = [], [], [], []

    @staticmethod
    def listen():
        context = GLib.MainContext.default()
        while context.pending():
            context.iteration(False)

    def wait(self, what, ask):
        """Until `ask` answers with something, which is returned. What is gone meanwhile is no answer."""
        until = time.monotonic() + PATIENCE
        while True:
            self.listen()
            try:
                if answer := ask():
                    print("ok   ", what, flush=True)
                    return answer
            except GLib.GError:
                pass
            if self.ended() or time.monotonic() > until:
                raise AssertionError(f"this never comes: {what}; {self.told()}")
            time.sleep(POLL)

    def ended(self):
        return getattr(self, "process", None) is not None and self.process.poll() is not None

    def told(self):
        try:
            return f"the focus is at {self.focus and (self.focus.get_role_name(), self.focus.get_name())}"
        except GLib.GError as error:
            return f"the focus is at something that has gone ({error.message})"

    def keys(self, *keys):
        subprocess.run(["xdotool", "key", *keys], check=True)

    def type(self, text):
        subprocess.run(["xdotool", "type", text], check=True)

    def window(self, name):
        """The window with the text in its title, once it is shown; it gets the keys, as no window manager gives them."""
        found = self.wait(f"window {name}", lambda: next(
            (each for each in children(self.program) if each is not None and name in each.get_name()
             and each.get_role_name() in ("frame", "dialog", "alert") and "showing" in states(each)), None))
        identity = self.wait(f"its place on the screen", lambda: subprocess.run(
            ["xdotool", "search", "--onlyvisible", "--pid", str(self.process.pid), "--name", name], text=True,
            stdout=subprocess.PIPE).stdout.split())
        subprocess.run(["xdotool", "windowfocus", identity[-1]], check=True)
        self.wait("it is active", lambda: "active" in states(found))
        return found

    def gone(self, name):
        self.wait(f"window {name} is closed", lambda: not any(
            each is not None and name in each.get_name() and "showing" in states(each) for each in children(self.program)))

    def focus_on(self, role, name=""):
        return self.wait(f"focus on {role} {name}", lambda: self.focus is not None and self.focus.get_role_name() == role
                         and name in self.focus.get_name() and self.focus)

    def end(self):
        self.process.terminate()
        self.process.wait(PATIENCE)


assert os.environ.get("DBUS_SESSION_BUS_ADDRESS"), "a session bus of its own is needed"
