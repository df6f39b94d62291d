"""The packages under test, and a machine to install them on."""
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
PROJECT = os.path.dirname(os.path.dirname(HERE))
sys.path.insert(0, os.path.join(PROJECT, "tests", "e2e"))
from driver import EXIT, KEY, SAVE, Eyes, Machine, MachineError, Program, end_politely_when_told, until  # noqa: E402, F401

RIGHTS = os.environ.get("ODOMIRA_RIGHTS",
                        os.path.join(PROJECT, "build", "debug", "tests", "packaging", "odomira_rights.exe"))
RELEASE = os.path.join(PROJECT, "build", "release")
PACKAGE = os.path.join(PROJECT, "packaging", "package")
with open(os.path.join(PROJECT, "CMakeLists.txt"), encoding="utf-8") as project:
    VERSION = re.search(r"project\(Odomira VERSION ([0-9.]+)", project.read())[1]
SETUP = os.path.join(RELEASE, f"odomira-{VERSION}-setup.exe")
ENTRY = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Odomira"


def package(version, folder, recipe=PACKAGE, **more):
    """Packages the built program under any version; returns the paths of setup and zip."""
    subprocess.run([recipe, os.path.join(RELEASE, "odomira.exe"), version, folder], check=True, **more)
    return [os.path.join(folder, f"odomira-{version}-{kind}") for kind in ("setup.exe", "portable.zip")]


class InstalledProgram(Program):
    """The program where the setup puts it; nothing is there before."""

    name = "odomira.exe"

    def __init__(self, machine, folder="C:\\Odomira"):
        self.machine, self.folder = machine, folder
        self.processes = []
        self.last_click = (None, 0.0)
        self.eyes = Eyes(machine)

    def start_as_user(self):
        """By somebody who is no administrator."""
        process = self.machine.start([RIGHTS, "user", self.folder + "\\" + self.name])
        self.processes.append(process)
        return process

    def ready(self):
        """The main window, in front and with the keyboard."""
        main = self.main_window()
        self.x("search", "--onlyvisible", "--name", "^Odomira$", "windowactivate")
        until(lambda: self.eyes.ask("focus")["window"] == main.handle, "active main window")
        return main

    def add_day(self, button, distance, route):
        """The first of this month, with the dialog, as a user does, and saves."""
        self.ready().button(button).click()
        dialog = self.dialog()
        dialog.control("ComboBox", nth=1).choose("1")
        dialog.control("Edit", nth=1).type(distance)
        dialog.control("Edit", nth=2).type(route)
        dialog.button("OK").click()
        dialog.wait_gone()
        self.ready()
        self.menu(*SAVE)
        until(lambda: route.encode() in (self.journal or b""), "saved journal")

    def end(self):
        self.ready()
        self.menu(*EXIT)
        self.wait_end()


class Wizard(Program):
    """The setup's windows, or the uninstaller's, which runs from a copy of itself under another name."""

    def __init__(self, program, name):
        self.machine, self.eyes, self.name = program.machine, program.eyes, name
        self.last_click = (None, 0.0)

    def page(self, text):
        """The window, once it shows this text somewhere."""
        def found():
            for window in self.windows():
                if any(text in one.text for one in window.controls()):
                    return window
            return None
        return until(found, f"page with '{text}'")

    def press(self, page, text):
        next(one for one in page.controls("Button") if one.text.replace("&", "") == text).click()


class Installation(unittest.TestCase):
    """A clean machine. Nothing is installed on it unless a story does so."""

    locale = "en_US.UTF-8"

    @classmethod
    def setUpClass(cls):
        end_politely_when_told()
        if not os.path.exists(SETUP):
            raise MachineError(f"no {SETUP}: cmake --build --preset release --target package makes it")

    def setUp(self):
        self.machine = Machine(self.locale)
        self.addCleanup(self.machine.close)
        # Wine's server writes what it is asked into the errors of the program that started it.
        self.requests = os.path.join(self.machine.folder, "requests")
        with open(self.requests, "wb") as file:
            self.machine.run([RIGHTS, "key", "Software"], stdout=subprocess.DEVNULL, stderr=file)
        self.program = InstalledProgram(self.machine)
        self.addCleanup(self.end)

    def end(self):
        """The machine first: with it ends what still runs on it."""
        self.machine.close()
        self.program.close()

    def put(self, setup=SETUP):
        """Downloads the setup, so to say; returns its path on the machine."""
        name = "C:\\" + os.path.basename(setup)
        shutil.copy(setup, self.machine.path(name))
        return name

    def install(self, *options, expect=0, **more):
        self.assertEqual(self.machine.run([self.put(), "/S", *options], **more), expect)

    def upgrade(self, version):
        with tempfile.TemporaryDirectory() as folder:
            setup = self.put(package(version, folder)[0])
        self.assertEqual(self.machine.run([setup, "/S"]), 0)

    def uninstall(self):
        """The way that "Apps & features" takes when nobody is to be asked."""
        self.machine.run(self.entry("QuietUninstallString").replace('"', "").rsplit(" ", 1))
        until(lambda: self.entry("DisplayName") is None, "end of the uninstaller")

    def entry(self, name):
        return self.program.eyes.ask("settings-read", ENTRY, name)

    def ask(self, *words):
        """What odomira_rights answers."""
        return subprocess.run(["wine", RIGHTS, *words], env=self.machine.environment, capture_output=True, text=True,
                              check=True).stdout.strip()

    def rights_given(self, object_name):
        """The lists of rights that a program has asked the system to set for a file, as (flags, mask, who) each."""
        asked, names, given = {}, {}, []
        with open(self.requests, encoding="utf-8", errors="replace") as file:
            for line in file:
                thread = line[:4]
                if match := re.search(r" create_file\(.*name=L\"\\\\\?\?\\\\([^\"]*)\"", line):
                    asked[thread] = match[1].replace("\\\\", "\\")
                elif match := re.search(r" create_file\(\) = .*handle=(\w+)", line):
                    names[thread, match[1]] = asked.get(thread, "")
                elif match := re.search(r" set_security_object\( handle=(\w+)", line):
                    if names.get((thread, match[1]), "").lower() == object_name.lower():
                        given.append(re.findall(r"flags=(\w+),mask=(\w+),sid=([-S0-9]+)", line))
        return given
