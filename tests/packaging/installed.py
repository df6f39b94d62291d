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
from driver import EXIT, KEY, SAVE, Eyes, Machine, MachineError, Program, exit_on_signals, until  # noqa: E402, F401

RIGHTS = os.environ.get("ODOMIRA_RIGHTS",
                        os.path.join(PROJECT, "build", "debug", "tests", "packaging", "odomira_rights.exe"))
RELEASE = os.path.join(PROJECT, "build", "release")
PACKAGE = os.path.join(PROJECT, "packaging", "package")
with open(os.path.join(PROJECT, "CMakeLists.txt"), encoding="utf-8") as project:
    VERSION = re.search(r"project\(Odomira VERSION ([0-9.]+)", project.read())[1]
SETUP = os.path.join(RELEASE, f"odomira-{VERSION}-setup.exe")
GUIDES = ["guide.html", "guide.sv.html"]
INSTALLED = ["datasource.jrn", *GUIDES, "odomira.exe", "uninstall.exe"]
ENTRY = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Odomira"


def package(version, folder, recipe=PACKAGE, program=os.path.join(RELEASE, "odomira.exe"), **more):
    """Packages the built program under any version; returns the paths of setup and zip."""
    subprocess.run([recipe, program, version, folder], check=True, **more)
    return [os.path.join(folder, f"odomira-{version}-{kind}") for kind in ("setup.exe", "portable.zip")]


class InstalledProgram(Program):
    """The program in the folder that setup installs it into. Nothing is copied there before."""

    name = "odomira.exe"

    def __init__(self, machine, folder="C:\\Odomira"):
        self.machine, self.folder = machine, folder
        self.processes = []
        self.last_click = (None, 0.0)
        self.eyes = Eyes(machine)

    def start_as_user(self):
        """Starts the program as a user who is not an administrator."""
        process = self.machine.start([RIGHTS, "user", self.folder + "\\" + self.name])
        self.processes.append(process)
        return process

    def ready(self):
        """Activates the main window, waits until it is active, and returns it."""
        main = self.main_window()
        self.x("search", "--onlyvisible", "--name", "^Odomira$", "windowactivate")
        until(lambda: self.eyes.ask("focus")["window"] == main.handle, "active main window")
        return main

    def add_day(self, button, distance, route):
        """Adds the first day of this month with the dialog and saves the journal."""
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
    """The windows of setup or of the uninstaller, which runs from a copy of itself with another name."""

    def __init__(self, program, name):
        self.machine, self.eyes, self.name = program.machine, program.eyes, name
        self.last_click = (None, 0.0)

    def page(self, text):
        """Waits for a window with this text in one of its controls, and returns it."""
        def found():
            for window in self.windows():
                if any(text in one.text.replace("&", "") for one in window.controls()):
                    return window
            return None
        return until(found, f"page with '{text}'")

    def press(self, page, text):
        next(one for one in page.controls("Button") if one.text.replace("&", "") == text).click()


class Installation(unittest.TestCase):
    """A clean machine on which the program is not installed."""

    locale = "en_US.UTF-8"

    @classmethod
    def setUpClass(cls):
        exit_on_signals()
        if not os.path.exists(SETUP):
            raise MachineError(f"no {SETUP}: run cmake --build --preset release --target package")

    def setUp(self):
        self.machine = Machine(self.locale)
        self.addCleanup(self.machine.close)
        # Wine's server logs its requests to its own standard error. With -p it runs until the machine is closed; without
        # it, the server exits some seconds after the last program.
        self.requests = os.path.join(self.machine.folder, "requests")
        with open(self.requests, "wb") as file:
            subprocess.run(["wineserver", "-p"], env=self.machine.environment, stderr=file, check=True)
        # Wine's services start with the first program and inherit its output. They would keep a pipe open.
        self.machine.run([RIGHTS, "key", "Software"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.program = InstalledProgram(self.machine)
        self.addCleanup(self.end)

    def end(self):
        """Closes the machine first, which ends the programs that still run on it."""
        self.machine.close()
        self.program.close()

    def copy_setup(self, setup=SETUP):
        """Copies the setup file to the machine and returns its path there."""
        name = "C:\\" + os.path.basename(setup)
        shutil.copy(setup, self.machine.path(name))
        return name

    def install(self, *options, expect=0, **more):
        self.assertEqual(self.machine.run([self.copy_setup(), "/S", *options], **more), expect)

    def another_version(self, version):
        """Copies the setup file of another version to the machine and returns its path there."""
        with tempfile.TemporaryDirectory() as folder:
            return self.copy_setup(package(version, folder)[0])

    def upgrade(self, version, **more):
        self.assertEqual(self.machine.run([self.another_version(version), "/S"], **more), 0)

    def uninstall(self):
        """Uninstalls silently, with the command that "Apps & features" runs."""
        self.machine.run(self.entry("QuietUninstallString").replace('"', "").rsplit(" ", 1))
        until(lambda: self.entry("DisplayName") is None, "end of the uninstaller")

    def entry(self, name):
        return self.program.eyes.ask("settings-read", ENTRY, name)

    def ask(self, *words):
        """Runs odomira_rights and returns its output."""
        return subprocess.run(["wine", RIGHTS, *words], env=self.machine.environment, capture_output=True, text=True,
                              check=True).stdout.strip()

    def environment_with_request_log(self):
        """The environment of a program whose requests rights_set() and owners_set() read."""
        return dict(self.machine.environment, WINEDEBUG="+server")

    def owners_set(self, object_name):
        """The owners that a program has set for a file."""
        return [re.search(r"owner=<?(S[-0-9]+)", line)[1] for line in self.security_requests(object_name)]

    def rights_set(self, object_name):
        """The access control lists that a program has set for a file. Each entry is (flags, mask, SID)."""
        return [re.findall(r"flags=(\w+),mask=(\w+),sid=([-S0-9]+)", line)
                for line in self.security_requests(object_name)]

    def security_requests(self, object_name):
        asked, names, given = {}, {}, []
        with open(self.requests, encoding="utf-8", errors="replace") as file:
            for line in file:
                thread = line[:4]
                if match := re.search(r" create_file\(.*name=L\"\\\\\?\?\\\\([^\"]*)\"", line):
                    asked[thread] = match[1].replace("\\\\", "\\")
                elif match := re.search(r" create_file\(\) = .*handle=(\w+)", line):
                    names[thread, match[1]] = asked.get(thread, "")
                elif match := re.search(r" close_handle\( handle=(\w+)", line):
                    names.pop((thread, match[1]), None)
                elif match := re.search(r" set_security_object\( handle=(\w+)", line):
                    if names.get((thread, match[1]), "").lower() == object_name.lower():
                        given.append(line)
        return given
