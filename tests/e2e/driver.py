"""Drives the built program from another process: reads its windows, sends mouse and keyboard input, reads its files.

    class Saving(Story):
        journal = "two-days.jrn"

        def test_it(self):
            self.main.button("Add...").click()
            dialog = self.program.dialog("...")

A Story gets a clean machine, a folder with the program in it, and the program started. The content of a control is read
from the window each time. Actions return at once; `until` waits for their effect.
"""
import json
import os
import queue
import shutil
import subprocess
import sys
import threading
import time
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
TESTS = os.path.dirname(HERE)
PROJECT = os.path.dirname(TESTS)
sys.path.insert(0, os.path.join(PROJECT, "tools", "machine"))
from machine import Machine, MachineError, exit_on_signals, wait_until  # noqa: E402

PROGRAM = os.environ.get("ODOMIRA_PROGRAM", os.path.join(PROJECT, "build", "release", "odomira.exe"))
EYES = os.environ.get("ODOMIRA_EYES", os.path.join(PROJECT, "build", "debug", "tests", "e2e", "odomira_eyes.exe"))
SAMPLES = os.path.join(TESTS, "samples")
PICTURES = os.path.join(PROJECT, "build", "e2e")
KEY = "Software\\Velmora\\Tav\\"
TIMEOUT = 20
DOUBLE_CLICK = 0.6


class Gone(Exception):
    """A window or control that does not exist, or no longer exists."""


class Eyes:
    """Sends requests to odomira_eyes.exe, which reads the windows inside Windows."""

    def __init__(self, machine):
        self.process = machine.start([EYES], stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.answers = queue.Queue()
        threading.Thread(target=self._listen, daemon=True).start()

    def _listen(self):
        for line in self.process.stdout:
            self.answers.put(line)

    def ask(self, *words):
        self.process.stdin.write(("\t".join(map(str, words)) + "\n").encode())
        self.process.stdin.flush()
        try:
            answer = json.loads(self.answers.get(timeout=60))
        except queue.Empty:
            raise MachineError(f"no answer to {words}") from None
        if "problem" in answer:
            raise Gone(f"{words}: {answer['problem']}")
        return answer["answer"]

    def close(self):
        self.process.stdin.close()
        self.process.wait(TIMEOUT)
        self.process.stdout.close()


def until(condition, what, seconds=TIMEOUT):
    """Returns the first true value of condition(). A window that is closed meanwhile counts as false."""
    def tried():
        try:
            return condition()
        except Gone:
            return None
    try:
        return wait_until(tried, seconds, what)
    except MachineError as error:
        raise AssertionError(str(error)) from None


class Control:
    """A window or control. Its properties are read from the window each time."""

    def __init__(self, program, handle):
        self.program, self.handle = program, handle

    def _now(self):
        return self.program.eyes.ask("window", self.handle)

    text = property(lambda self: self._now()["text"])
    cls = property(lambda self: self._now()["cls"])
    rect = property(lambda self: self._now()["rect"])
    client = property(lambda self: self._now()["client"])
    enabled = property(lambda self: self._now()["enabled"])
    visible = property(lambda self: self._now()["visible"])
    minimised = property(lambda self: self._now()["minimised"])
    owner = property(lambda self: self._now()["owner"])
    checked = property(lambda self: self.program.eyes.ask("number", self.handle, "checked") == 1)
    lines = property(lambda self: self.program.eyes.ask("lines", self.handle)["lines"])
    index = property(lambda self: self.program.eyes.ask("lines", self.handle)["index"])
    nodes = property(lambda self: self.program.eyes.ask("nodes", self.handle))

    @property
    def selection(self):
        """First and last position of the selection in an edit."""
        both = self.program.eyes.ask("number", self.handle, "selection")
        return both & 0xFFFF, both >> 16

    @property
    def focused(self):
        return self.program.eyes.ask("focus")["control"] == self.handle

    @property
    def exists(self):
        try:
            return self._now()["visible"]
        except Gone:
            return False

    def click(self, x=None, y=None, count=1):
        """Clicks with the left button in the middle, or at a point relative to the top left corner."""
        left, top, right, bottom = self.rect
        self.program.click((left + right) // 2 if x is None else left + x, (top + bottom) // 2 if y is None else top + y,
                           count)

    def click_line(self, index, count=1):
        """Clicks a line of a list box. The line must be visible."""
        left, top, right, bottom = self.program.eyes.ask("line-box", self.handle, index)
        self.program.click((left + right) // 2, (top + bottom) // 2, count)

    def click_node(self, *path):
        """Clicks a node of a tree, given by its texts from the root: ("2004", "March")."""
        def found():
            trail = []
            for node in self.nodes:
                trail = trail[:node["level"]] + [node["text"]]
                if tuple(trail) == path and node["rect"]:
                    return node["rect"]
            return None
        left, top, right, bottom = until(found, f"tree node {path}")
        self.program.click((left + right) // 2, (top + bottom) // 2)

    def selected_node(self):
        trail = []
        for node in self.nodes:
            trail = trail[:node["level"]] + [node["text"]]
            if node["selected"]:
                return tuple(trail)
        return None

    def type(self, text):
        """Replaces the text of an edit, with the keyboard."""
        self.click()
        until(lambda: self.focused, "focus on the edit")
        self.program.keys("Home", "shift+End")
        self.program.write(text)
        until(lambda: self.text == text, f"'{text}' in the edit, which contains '{self.text}'")

    def choose(self, text):
        """Selects a line of a combo box: tabs to it and presses arrow keys."""
        self.program.focus(self)
        wanted = self.lines.index(text)
        while self.index != wanted:
            before = self.index
            self.program.keys("Down" if before < wanted else "Up")
            until(lambda before=before: self.index != before, "next line of the combo box")


class Window(Control):
    """A top-level window with its controls."""

    def controls(self, cls=None, text=None):
        found = self.program.eyes.ask("controls", self.handle)
        return [Control(self.program, one["handle"]) for one in found
                if one["visible"] and (cls is None or one["cls"].lower() == cls.lower())
                and (text is None or one["text"] == text)]

    def control(self, cls=None, text=None, nth=0):
        """The nth visible control of this class and text; waits for it."""
        def found():
            all_of_them = self.controls(cls, text)
            return all_of_them[nth] if len(all_of_them) > nth else None
        return until(found, f"control {cls or ''} '{text or ''}' number {nth} in '{self.text}'")

    def button(self, text):
        return self.control("Button", text)

    def texts(self, cls="Static"):
        return [one.text for one in self.controls(cls)]

    def resize(self, width, height):
        """Asks the X11 window manager; the program may correct the size."""
        self.program.x("windowsize", self.program.x("getactivewindow"), width, height)

    def close(self):
        """Presses Alt+F4 in the active window."""
        self.program.keys("alt+F4")

    def wait_gone(self):
        until(lambda: not self.exists, "closed window")


class MessageBox(Window):
    """A question or message of the program."""

    @property
    def message(self):
        found = self.program.eyes.ask("controls", self.handle)
        return next(one["text"] for one in found if one["id"] == 0xFFFF)

    @property
    def buttons(self):
        return [one.text.replace("&", "") for one in self.controls("Button")]

    @property
    def default(self):
        """The button that Enter presses."""
        found = self.program.eyes.ask("controls", self.handle)
        return next(one["text"].replace("&", "") for one in found if one["cls"] == "Button" and one["style"] & 0xF == 1)

    def answer(self, text):
        next(one for one in self.controls("Button") if one.text.replace("&", "") == text).click()
        self.wait_gone()


class Program:
    """The program, copied to a folder of the machine: its processes, files and windows."""

    folder = "C:\\Odomira"

    def __init__(self, machine):
        if not os.path.exists(PROGRAM):
            raise MachineError(f"{PROGRAM} is not built")
        self.machine = machine
        self.name = os.path.basename(PROGRAM)
        self.processes = []
        self.last_click = (None, 0.0)
        machine.install(PROGRAM, self.folder)
        self.eyes = Eyes(machine)

    def path(self, name):
        return os.path.join(self.machine.path(self.folder), name)

    def start(self):
        """Starts the program and returns its process, without waiting for a window."""
        process = self.machine.start([self.folder + "\\" + self.name])
        self.processes.append(process)
        return process

    def wait_end(self, seconds=TIMEOUT):
        """Waits for the end of the process that was started last, and returns its exit code."""
        until(lambda: self.processes[-1].poll() is not None, "end of the program", seconds)
        return self.processes[-1].returncode

    def close(self):
        """Waits for the processes. Call it after the machine is closed, which ends them."""
        self.eyes.close()
        for process in self.processes:
            process.wait(TIMEOUT)

    # ---- files and settings ----

    @property
    def journal(self):
        """The bytes of the journal file, or None."""
        try:
            with open(self.path("datasource.jrn"), "rb") as file:
                return file.read()
        except FileNotFoundError:
            return None

    @journal.setter
    def journal(self, content):
        with open(self.path("datasource.jrn"), "wb") as file:
            file.write(content)

    def setting(self, section, name):
        return self.eyes.ask("settings-read", KEY + section, name)

    def set_setting(self, section, name, text):
        if not self.eyes.ask("settings-write", KEY + section, name, text):
            raise MachineError(f"cannot write {section}\\{name}")

    # ---- windows ----

    def windows(self):
        """The visible windows of the program, the topmost first."""
        return [Window(self, one["handle"]) for one in self.eyes.ask("windows", self.name)]

    def main_window(self):
        def found():
            for one in self.eyes.ask("windows", self.name):
                if not one["owner"] and not one["message"]:
                    return Window(self, one["handle"])
            if self.processes and self.processes[-1].poll() is not None:
                raise AssertionError(f"the program ended with {self.processes[-1].returncode} and shows no main window")
            return None
        return until(found, "main window of the running program", 60)

    def dialog(self, title=None):
        """The topmost window that has an owner and is no message box."""
        def found():
            for one in self.eyes.ask("windows", self.name):
                if one["owner"] and not one["message"] and one["cls"] != "#32768" and title in (None, one["text"]):
                    return Window(self, one["handle"])
            return None
        return until(found, f"dialog '{title or ''}'")

    def message_boxes(self):
        return [MessageBox(self, one["handle"]) for one in self.eyes.ask("windows", self.name) if one["message"]]

    def message_box(self):
        """Waits until the topmost message box has its buttons and is active, and returns it."""
        def found():
            boxes = self.message_boxes()
            ready = boxes and boxes[0].buttons and self.eyes.ask("focus")["window"] == boxes[0].handle
            return boxes[0] if ready else None
        return until(found, "message box")

    # ---- mouse and keyboard ----

    def x(self, *words):
        return self.machine.display.xdotool(*words)

    def click(self, x, y, count=1):
        """Waits before a second click at the same point, so that only count=2 is a double-click."""
        spot, when = self.last_click
        if spot == (x, y):
            time.sleep(max(0.0, DOUBLE_CLICK - (time.monotonic() - when)))
        self.x("mousemove", x, y, "click", "--repeat", count, "--delay", 60, 1)
        self.last_click = ((x, y), time.monotonic())

    def keys(self, *names):
        """Presses keys, given by their X names, one after the other: keys("Home", "shift+End")."""
        self.x("key", "--delay", 15, *names)

    def write(self, text):
        self.x("type", "--delay", 15, "--", text)

    def focus(self, control):
        """Presses Tab until the control has the focus."""
        for _ in range(40):
            if control.focused:
                return
            before = self.eyes.ask("focus")["control"]
            self.keys("Tab")
            until(lambda before=before: self.eyes.ask("focus")["control"] != before, "next control by Tab")
        raise AssertionError("Tab does not reach the control")

    def menu(self, column, *rows):
        """Chooses an item from the menu bar of the active window by the positions of the menu, the item and the item in
        its submenu. Positions start at 0, without separators. The mouse opens the first menu; keys do the rest."""
        window = Window(self, self.eyes.ask("focus")["window"])
        left, top, _, _ = window.client
        self.click(left + 12, top - 9 * self.machine.dpi // 96)
        place = self._open_menus(1)
        for _ in range(column):
            self.keys("Right")
            until(lambda before=place: self._open_menus(1) != before, "next menu")
            place = self._open_menus(1)
        for depth, row in enumerate(rows):
            if depth > 0:
                self.keys("Right")
                self._open_menus(depth + 1)
            self.keys("Home", *["Down"] * row)
        self.keys("Return")

    def _open_menus(self, count):
        """Waits until count menus are open, and returns their rectangles."""
        def found():
            menus = [one["rect"] for one in self.eyes.ask("windows", self.name) if one["cls"] == "#32768"]
            return menus if len(menus) == count else None
        return until(found, f"{count} open menus")


# Positions of the menu items: menu(*SAVE).
REVERT, SAVE, PRINT, EXIT = (0, 0), (0, 1), (0, 2), (0, 3)
SETTINGS, USERINFO = (1, 0), (1, 1)
PRODUCT_PAGE, MAKER_PAGE, ABOUT = (2, 0, 0), (2, 0, 1), (2, 1)


class Story(unittest.TestCase):
    """A test of the running program. A class chooses the machine, and the journal and settings on it."""

    locale = "en_US.UTF-8"
    dpi = 96
    printer = False
    journal = None  # a file of tests/samples, or bytes
    settings = {}   # {("Settings", "Language"): "100"}

    @classmethod
    def setUpClass(cls):
        exit_on_signals()

    def setUp(self):
        self.machine = Machine(self.locale, self.dpi, self.printer)
        self.addCleanup(self.machine.close)
        self.program = Program(self.machine)
        self.addCleanup(self._end)
        self.addCleanup(self._save_picture_of_failure)
        if isinstance(self.journal, bytes):
            self.program.journal = self.journal
        elif self.journal:
            shutil.copy(os.path.join(SAMPLES, self.journal), self.program.path("datasource.jrn"))
        for (section, name), text in self.settings.items():
            self.program.set_setting(section, name, text)
        self.prepare()
        self.program.start()
        self.main = self.program.main_window() if self.waits_for_main_window else None

    def _end(self):
        self.machine.close()
        self.program.close()

    waits_for_main_window = True

    def prepare(self):
        """Called before the program starts."""

    def _save_picture_of_failure(self):
        result = self._outcome.result
        if any(test is self for test, _ in result.failures + result.errors):
            path = os.path.join(PICTURES, self.id() + ".png")
            self.machine.display.picture(path)
            print(f"A picture of the screen is in {path}", file=sys.stderr)

    def until(self, condition, what):
        return until(condition, what)

    # ---- the main window ----

    @property
    def days(self):
        return self.main.control("ListBox")

    @property
    def tree(self):
        return self.main.control("SysTreeView32")

    def expect_days(self, *lines):
        self.until(lambda: self.days.lines == list(lines), f"list of {lines}, which contains {self.days.lines}")

    def fill_day(self, dialog, day=None, distance=None, route=None):
        """Fills the add or edit dialog. Does not press OK."""
        if day is not None:
            dialog.control("ComboBox", nth=1).choose(day)
        if distance is not None:
            dialog.control("Edit", nth=1).type(distance)
        if route is not None:
            dialog.control("Edit", nth=2).type(route)

    def delete_line(self, index):
        self.days.click_line(index)
        self.until(lambda: self.main.button("Delete").enabled, "enabled Delete button")
        self.main.button("Delete").click()
        return self.program.message_box()

    def saved(self, *lines):
        """The bytes of a journal file with these lines."""
        header = ["'Source file for Odomira", "'Do not change this file unless absolutely sure."]
        return "".join(line + "\r\n" for line in header + list(lines)).encode("cp1252")
