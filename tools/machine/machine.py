"""A private, clean Windows machine for one program: a Wine prefix and an X display of its own.

    with Machine(locale="sv_SE.UTF-8", dpi=144) as machine:
        machine.run(["build/debug/tests/data/day_store_test.exe"])

A machine takes about a second, because its prefix is copied from a template that is made once and kept in build/machine.
Machines share no files, registry or display, so tests run in parallel without an effect on each other. When a machine is
closed, it ends its own processes by id. If its owner is killed, the kernel ends the children, and the next machine removes
the folder.
"""
import contextlib
import fcntl
import os
import shutil
import signal
import subprocess
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))
PROJECT = os.path.dirname(os.path.dirname(HERE))
MACHINES = os.path.join(PROJECT, "build", "machine")
TEMPLATE = os.path.join(MACHINES, "template")

# Fonts of Windows that the program requests, and their replacements.
FONTS = {"Arial": "Liberation Sans", "Times New Roman": "Liberation Serif", "Courier New": "Liberation Mono",
         "Segoe UI": "Liberation Sans", "Tahoma": "Liberation Sans", "MS Shell Dlg": "Liberation Sans",
         "MS Shell Dlg 2": "Liberation Sans", "MS Sans Serif": "Liberation Sans"}

# Files above this size in a prefix are Wine's libraries, which no program changes. A new prefix gets hard links to them.
LARGE = 32 * 1024


class MachineError(Exception):
    """The machine could not be created or does not answer. This is not a failure of the program under test."""


def wait_until(condition, seconds, what):
    """Returns the first true value of condition(); raises MachineError when there is none in time."""
    end = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise MachineError(f"no {what} within {seconds} s")
        time.sleep(0.02)


def wine_environment(prefix, home, locale, display=None):
    """The caller's environment without the variables that would make machines differ."""
    env = {name: value for name, value in os.environ.items()
           if not name.startswith(("LC_", "WINE", "CUPS_")) and name not in ("LANG", "LANGUAGE", "DISPLAY", "XAUTHORITY")}
    # No menu entries on the host, and no prompts to install components that this program does not use. Of Wine's messages
    # only those about the machine, such as a display that cannot be used.
    env.update(WINEPREFIX=prefix, WINEARCH="win64", WINEDEBUG=os.environ.get("WINEDEBUG", "-all,err+winediag"),
               WINEDLLOVERRIDES="winemenubuilder.exe,mscoree,mshtml=", HOME=home, LANG=locale, LC_ALL=locale)
    if display:
        env["DISPLAY"] = display
    return env


def quiet(command, env, **more):
    return subprocess.run(command, env=env, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                          stderr=subprocess.DEVNULL, **more)


def end_wine(env):
    """Ends the programs of this prefix and waits until its registry is written."""
    quiet(["wineserver", "-k"], env)
    quiet(["wineserver", "-w"], env)


def add_to_registry_file(path, key, values):
    """Adds values to a key in the registry file of a prefix that is not running. This is faster than a registry editor."""
    name = "[" + key.replace("\\", "\\\\") + "]"
    with open(path, encoding="utf-8") as file:
        lines = file.read().split("\n")
    found = next((at for at, line in enumerate(lines) if line.startswith(name)), None)
    if found is None:
        lines += [name]
        found = len(lines) - 1
    names = {line.partition("=")[0] for line in values}
    end = next((at for at in range(found + 1, len(lines)) if not lines[at]), len(lines))
    kept = [line for line in lines[found + 1:end] if line.partition("=")[0] not in names]
    lines[found + 1:end] = kept + values
    with open(path, "w", encoding="utf-8") as file:
        file.write("\n".join(lines) + "\n")


def wine_version():
    return subprocess.run(["wine", "--version"], capture_output=True, text=True, check=True,
                          env=dict(os.environ, WINEDEBUG="-all")).stdout.strip()


def make_prefix(prefix, home):
    """Creates a prefix, usable for any locale. This takes about ten seconds."""
    os.makedirs(home, exist_ok=True)
    env = wine_environment(prefix, home, "en_US.UTF-8")
    quiet(["wineboot", "--init"], env, timeout=180)
    quiet(["wineserver", "-w"], env, timeout=180)
    registry = os.path.join(prefix, "user.reg")
    if not os.path.exists(registry):
        raise MachineError("wineboot created no prefix in " + prefix)
    add_to_registry_file(registry, r"Software\Wine\Fonts\Replacements", [f'"{k}"="{v}"' for k, v in FONTS.items()])
    # A program that crashes ends at once, with its exception as exit code. Wine's debugger would end it with 0.
    add_to_registry_file(os.path.join(prefix, "system.reg"), r"Software\Microsoft\Windows NT\CurrentVersion\AeDebug",
                         ['"Debugger"="none"'])
    # Documents, Desktop and other folders are links to the home of the user who created the prefix. A machine has its own.
    for folder, names, _ in os.walk(os.path.join(prefix, "drive_c", "users")):
        for name in names:
            path = os.path.join(folder, name)
            if os.path.islink(path):
                os.unlink(path)
                os.mkdir(path)


@contextlib.contextmanager
def machines_locked():
    """Locks the folder that all machines share."""
    os.makedirs(MACHINES, exist_ok=True)
    with open(os.path.join(MACHINES, "lock"), "w", encoding="utf-8") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)
        yield


def prepare_template():
    """Creates the prefix that all machines copy, if there is none for this version of Wine and of this file."""
    with open(os.path.abspath(__file__), encoding="utf-8") as file:
        recipe = wine_version() + "\n" + file.read()
    stamp = os.path.join(TEMPLATE, "recipe")
    if os.path.exists(stamp):
        with open(stamp, encoding="utf-8") as file:
            if file.read() == recipe:
                return
    shutil.rmtree(TEMPLATE, ignore_errors=True)
    with tempfile.TemporaryDirectory(dir=MACHINES) as home:
        make_prefix(TEMPLATE, home)
    with open(stamp, "w", encoding="utf-8") as file:
        file.write(recipe)


def copy_prefix(source, target):
    def place(a, b):
        if os.path.getsize(a) > LARGE and not a.endswith(".reg"):
            os.link(a, b)
        else:
            shutil.copy2(a, b)
    shutil.copytree(source, target, symlinks=True, copy_function=place)


def sweep():
    """Removes the folders of machines whose owner was killed. An owner keeps its lock until it ends."""
    for name in os.listdir(MACHINES):
        folder = os.path.join(MACHINES, name)
        if not name.startswith("run-"):
            continue
        with contextlib.suppress(OSError), open(os.path.join(folder, "owner"), encoding="utf-8") as lock:
            fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
            shutil.rmtree(folder, ignore_errors=True)


def start_child(command, env, **more):
    """Starts a process that the kernel ends when this process ends."""
    return subprocess.Popen(["setpriv", "--pdeathsig", "TERM", "--", *command], env=env, stdin=subprocess.DEVNULL, **more)


def end_child(process):
    if process is None or process.poll() is not None:
        return
    process.terminate()
    try:
        process.wait(5)
    except subprocess.TimeoutExpired:
        process.kill()
        process.wait()


class Display:
    """An X server on a free number, with a window manager. Without a window manager no window becomes active. title_bar
    lists the elements of a title bar: N icon, L caption, I minimise, M maximise, C close."""

    def __init__(self, folder, size="1280x1024", title_bar="NLIMC"):
        self.server = self.manager = None
        log = open(os.path.join(folder, "display.log"), "ab")
        env = {k: v for k, v in os.environ.items() if k not in ("DISPLAY", "XAUTHORITY")}
        reader, writer = os.pipe()
        try:
            self.server = start_child(["Xvfb", "-displayfd", str(writer), "-screen", "0", size + "x24", "-nolisten", "tcp",
                                       "-noreset"], env, stdout=log, stderr=log, pass_fds=[writer])
            os.close(writer)
            with os.fdopen(reader) as answer:
                number = answer.readline().strip()
            if not number:
                raise MachineError("Xvfb does not start: see " + log.name)
            self.name = ":" + number
            # This layout has a key for every letter of both languages. xdotool loses the capitals of letters without a key.
            subprocess.run(["setxkbmap", "-display", self.name, "se"], env=env, check=True)
            ready = os.path.join(folder, "window-manager-ready")
            with contextlib.suppress(FileNotFoundError):
                os.unlink(ready)
            self.manager = start_child(["openbox", "--sm-disable", "--config-file", self._manager_settings(folder, title_bar),
                                        "--startup", "touch " + os.path.basename(ready)],
                                       dict(env, DISPLAY=self.name, HOME=folder), stdout=log, stderr=log, cwd=folder)
            wait_until(lambda: os.path.exists(ready), 20, "window manager")
        except BaseException:
            self.close()
            raise
        finally:
            log.close()

    @staticmethod
    def _manager_settings(folder, title_bar):
        with open(os.path.join(HERE, "openbox.xml"), encoding="utf-8") as file:
            settings = file.read().replace("@TITLE_BAR@", title_bar)
        path = os.path.join(folder, "openbox.xml")
        with open(path, "w", encoding="utf-8") as file:
            file.write(settings)
        return path

    def close(self):
        end_child(self.manager)
        end_child(self.server)

    def xdotool(self, *words):
        """Runs xdotool on this display and returns its output."""
        answer = subprocess.run(["xdotool", *map(str, words)], env=dict(os.environ, DISPLAY=self.name),
                                capture_output=True, text=True, check=False)
        return answer.stdout.strip()

    def window(self, program, seconds=60):
        """Waits for an active X window and returns it. Raises MachineError if the program ends before."""
        def active():
            if program.poll() is not None:
                raise MachineError(f"the program ended with {program.returncode} and showed no window")
            return self.xdotool("getactivewindow")
        return wait_until(active, seconds, "window of the program")

    def wait_still(self):
        """Waits until two screenshots in a row are equal. Gives up after some seconds: a caret may be blinking."""
        before = None
        for _ in range(12):
            now = subprocess.run(["import", "-display", self.name, "-window", "root", "rgb:-"], capture_output=True,
                                 check=True).stdout
            if now == before:
                return
            before = now
            time.sleep(0.2)

    def picture(self, path, window=None):
        """Writes the screen, or one X window with its frame, as a PNG."""
        os.makedirs(os.path.dirname(os.path.abspath(path)), exist_ok=True)
        what = ["-frame", "-window", str(window)] if window else ["-window", "root"]
        self.wait_still()
        subprocess.run(["import", "-display", self.name, *what, "+repage", path], check=True)


class Machine:
    """locale: a locale of the C library; it determines language, number format and ANSI code page in Wine. dpi: the DPI
    setting of the user. printer: starts a private print server. title_bar: as for Display."""

    def __init__(self, locale="en_US.UTF-8", dpi=96, printer=False, title_bar="NLIMC"):
        self.locale, self.dpi, self.title_bar = locale, dpi, title_bar
        self.display = self.lock = self.environment = None
        self.printing = os.path.join(HERE, "printing") if printer else None
        with machines_locked():
            prepare_template()
            sweep()
            self.folder = tempfile.mkdtemp(prefix="run-", dir=MACHINES)
            self.lock = open(os.path.join(self.folder, "owner"), "w", encoding="utf-8")
            fcntl.flock(self.lock, fcntl.LOCK_EX)
        try:
            self._start()
        except BaseException:
            self.close()
            raise

    def _start(self):
        self.prefix = os.path.join(self.folder, "prefix")
        self.home = os.path.join(self.folder, "home")
        os.mkdir(self.home)
        copy_prefix(TEMPLATE, self.prefix)
        add_to_registry_file(os.path.join(self.prefix, "user.reg"), r"Control Panel\Desktop",
                             [f'"LogPixels"=dword:{self.dpi:08x}'])
        self.display = Display(self.folder, title_bar=self.title_bar)
        self.environment = wine_environment(self.prefix, self.home, self.locale, self.display.name)
        if self.printing:
            # One NAME=VALUE a line, such as the address of the server.
            answer = subprocess.run([self.printing, "start", self.folder], stdout=subprocess.PIPE, text=True, check=True)
            self.environment.update(line.split("=", 1) for line in answer.stdout.splitlines() if "=" in line)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        """Ends all programs of the machine and removes its folder. A second call does nothing."""
        if self.environment:
            end_wine(self.environment)
        if self.environment and self.printing:
            subprocess.run([self.printing, "stop", self.folder], check=False)
        self.environment = None
        if self.display:
            self.display.close()
        shutil.rmtree(self.folder, ignore_errors=True)
        if self.lock:
            self.lock.close()

    def path(self, windows_path):
        """The path on the host of a file on drive C: of the machine."""
        drive, _, rest = windows_path.partition(":\\")
        if drive.upper() != "C":
            raise ValueError(windows_path)
        return os.path.join(self.prefix, "drive_c", *rest.split("\\"))

    def install(self, program, windows_folder):
        """Copies a program into a folder of the machine, which it can write to. Returns its Windows path."""
        folder = self.path(windows_folder)
        os.makedirs(folder, exist_ok=True)
        name = os.path.basename(program)
        shutil.copy(program, os.path.join(folder, name))
        return windows_folder + "\\" + name

    def start(self, command, **more):
        """Starts a Windows program; passes more to Popen."""
        return subprocess.Popen(["setpriv", "--pdeathsig", "KILL", "--", "wine", *command],
                                **{"env": self.environment, "stdin": subprocess.DEVNULL, **more})

    def run(self, command, **more):
        """Runs a Windows program and returns its exit code."""
        return self.start(command, **more).wait()


def exit_on_signals():
    """Turns SIGTERM, which a test runner sends at a timeout, and SIGHUP into SystemExit, so that with-blocks clean up."""
    def leave(number, _):
        raise SystemExit(128 + number)
    for number in (signal.SIGTERM, signal.SIGHUP):
        signal.signal(number, leave)
