"""A private, clean Windows machine for one program: a Wine prefix and an X display of its own.

    with Machine(locale="sv_SE.UTF-8", dpi=144) as machine:
        machine.run(["build/debug/tests/data/day_store_test.exe"])

A machine takes about a second, because its prefix is copied from a template that is made once and kept in build/machine.
Nothing is shared between two machines, so tests run side by side and none finds what another left in the registry.
Everything a machine starts ends with it, by process id; if its owner is killed, the kernel ends the children and the
next machine removes the folder.
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
GROUND = os.path.join(PROJECT, "build", "machine")
TEMPLATE = os.path.join(GROUND, "template")

# What a user's Windows has, under the names that the program asks for.
FONTS = {"Arial": "Liberation Sans", "Times New Roman": "Liberation Serif", "Courier New": "Liberation Mono",
         "Segoe UI": "Liberation Sans", "Tahoma": "Liberation Sans", "MS Shell Dlg": "Liberation Sans",
         "MS Shell Dlg 2": "Liberation Sans", "MS Sans Serif": "Liberation Sans"}

# Files above this size in a prefix are Wine's own libraries, which nobody writes to: a new prefix links to them.
LARGE = 32 * 1024


class MachineError(Exception):
    """The machine could not be made or does not answer; says nothing about the program under test."""


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
    """The caller's environment, less everything that would make one machine differ from another."""
    env = {name: value for name, value in os.environ.items()
           if not name.startswith(("LC_", "WINE", "CUPS_")) and name not in ("LANG", "LANGUAGE", "DISPLAY", "XAUTHORITY")}
    # No menu entries on the host, and no questions about components that this program does not use.
    env.update(WINEPREFIX=prefix, WINEARCH="win64", WINEDEBUG=os.environ.get("WINEDEBUG", "-all"),
               WINEDLLOVERRIDES="winemenubuilder.exe,mscoree,mshtml=", HOME=home, LANG=locale, LC_ALL=locale)
    if display:
        env["DISPLAY"] = display
    return env


def quiet(command, env, **more):
    return subprocess.run(command, env=env, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                          stderr=subprocess.DEVNULL, **more)


def end_wine(env):
    """Ends the programs of this prefix only, and waits until its registry is written."""
    quiet(["wineserver", "-k"], env)
    quiet(["wineserver", "-w"], env)


def add_to_registry_file(path, key, values):
    """Adds values to a key of a prefix that is not running: far quicker than starting a registry editor in it."""
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
    """A fresh prefix, usable for any locale; takes about ten seconds."""
    os.makedirs(home, exist_ok=True)
    env = wine_environment(prefix, home, "en_US.UTF-8")
    quiet(["wineboot", "--init"], env, timeout=180)
    quiet(["wineserver", "-w"], env, timeout=180)
    registry = os.path.join(prefix, "user.reg")
    if not os.path.exists(registry):
        raise MachineError("wineboot has made no prefix in " + prefix)
    add_to_registry_file(registry, r"Software\Wine\Fonts\Replacements", [f'"{k}"="{v}"' for k, v in FONTS.items()])
    # A program that crashes ends at once, without a window that waits for an answer.
    add_to_registry_file(registry, r"Software\Wine\WineDbg", ['"ShowCrashDialog"=dword:00000000'])
    # Documents, Desktop and the like lead to the home of whoever made the prefix: a machine has its own.
    for folder, names, _ in os.walk(os.path.join(prefix, "drive_c", "users")):
        for name in names:
            path = os.path.join(folder, name)
            if os.path.islink(path):
                os.unlink(path)
                os.mkdir(path)


@contextlib.contextmanager
def alone():
    """One machine at a time enters the ground that all of them share."""
    os.makedirs(GROUND, exist_ok=True)
    with open(os.path.join(GROUND, "lock"), "w", encoding="utf-8") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)
        yield


def prepare_template():
    """Makes the prefix that all machines are copied from, once for a version of Wine; the first who needs it does it."""
    with open(os.path.abspath(__file__), encoding="utf-8") as file:
        recipe = wine_version() + "\n" + file.read()
    stamp = os.path.join(TEMPLATE, "recipe")
    if os.path.exists(stamp):
        with open(stamp, encoding="utf-8") as file:
            if file.read() == recipe:
                return
    shutil.rmtree(TEMPLATE, ignore_errors=True)
    with tempfile.TemporaryDirectory(dir=GROUND) as home:
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
    """Removes the folders of machines whose owner was killed. An owner holds a lock for as long as it lives."""
    for name in os.listdir(GROUND):
        folder = os.path.join(GROUND, name)
        if not name.startswith("run-"):
            continue
        with contextlib.suppress(OSError), open(os.path.join(folder, "owner"), encoding="utf-8") as lock:
            fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
            shutil.rmtree(folder, ignore_errors=True)


def start_child(command, env, **more):
    """A helper process that ends with us, whatever ends us."""
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
    """An X server on a free number with a window manager: without one, no window ever becomes the active one."""

    def __init__(self, folder, size="1280x1024"):
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
            # A keyboard with a key for every letter of both languages; those it lacks would lose their capitals.
            subprocess.run(["setxkbmap", "-display", self.name, "se"], env=env, check=True)
            ready = os.path.join(folder, "window-manager-ready")
            with contextlib.suppress(FileNotFoundError):
                os.unlink(ready)
            self.manager = start_child(["openbox", "--sm-disable", "--config-file", os.path.join(HERE, "openbox.xml"),
                                        "--startup", "touch " + os.path.basename(ready)],
                                       dict(env, DISPLAY=self.name, HOME=folder), stdout=log, stderr=log, cwd=folder)
            wait_until(lambda: os.path.exists(ready), 20, "window manager")
        except BaseException:
            self.close()
            raise
        finally:
            log.close()

    def close(self):
        end_child(self.manager)
        end_child(self.server)

    def xdotool(self, *words):
        """Mouse, keyboard and windows of this display; returns what xdotool prints."""
        answer = subprocess.run(["xdotool", *map(str, words)], env=dict(os.environ, DISPLAY=self.name),
                                capture_output=True, text=True, check=False)
        return answer.stdout.strip()

    def window(self, program, seconds=60):
        """The X window that is active, as soon as there is one; MachineError when the program ends before."""
        def active():
            if program.poll() is not None:
                raise MachineError(f"the program ended with {program.returncode} and showed no window")
            return self.xdotool("getactivewindow")
        return wait_until(active, seconds, "window of the program")

    def wait_still(self):
        """Until two looks in a row show the same screen; a blinking caret ends the wait after some seconds."""
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
    """Locale: of the C library, it gives Wine its language, number format and ANSI code page. dpi: the user's setting.
    printer: with a private print server, if tests/machine/printing is there."""

    def __init__(self, locale="en_US.UTF-8", dpi=96, printer=False):
        self.locale, self.dpi = locale, dpi
        self.display = self.lock = self.environment = None
        self.printing = os.path.join(HERE, "printing") if printer else None
        with alone():
            prepare_template()
            sweep()
            self.folder = tempfile.mkdtemp(prefix="run-", dir=GROUND)
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
        self.display = Display(self.folder)
        self.environment = wine_environment(self.prefix, self.home, self.locale, self.display.name)
        if self.printing:
            # One NAME=VALUE a line, such as where the server listens.
            answer = subprocess.run([self.printing, "start", self.folder], stdout=subprocess.PIPE, text=True, check=True)
            self.environment.update(line.split("=", 1) for line in answer.stdout.splitlines() if "=" in line)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        """Ends everything that runs here; may be called twice."""
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
        """Where a file of the machine's drive C: lies on this computer."""
        drive, _, rest = windows_path.partition(":\\")
        if drive.upper() != "C":
            raise ValueError(windows_path)
        return os.path.join(self.prefix, "drive_c", *rest.split("\\"))

    def install(self, program, windows_folder):
        """Puts a program into a folder of the machine, where it may keep files beside itself; returns its Windows path."""
        folder = self.path(windows_folder)
        os.makedirs(folder, exist_ok=True)
        name = os.path.basename(program)
        shutil.copy(program, os.path.join(folder, name))
        return windows_folder + "\\" + name

    def start(self, command, **more):
        """Starts a Windows program; more goes to Popen."""
        return subprocess.Popen(["setpriv", "--pdeathsig", "KILL", "--", "wine", *command],
                                **{"env": self.environment, "stdin": subprocess.DEVNULL, **more})

    def run(self, command, **more):
        """Runs a Windows program to its end and returns its exit code."""
        return self.start(command, **more).wait()


def end_politely_when_told():
    """A test runner that gives up sends SIGTERM: the with-blocks must still end what they have started."""
    def leave(number, _):
        raise SystemExit(128 + number)
    for number in (signal.SIGTERM, signal.SIGHUP):
        signal.signal(number, leave)
