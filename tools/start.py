"""start.py PROGRAM [JOURNAL]: installs the program in .run/ and runs it there. This is the second half of ./run."""
import fcntl
import filecmp
import os
import shutil
import subprocess
import sys

PROJECT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
sys.path.insert(0, os.path.join(PROJECT, "tools", "machine"))
from machine import Display, MachineError, end_wine, exit_on_signals, make_prefix, wine_environment  # noqa: E402

RUN_FOLDER = os.path.join(PROJECT, ".run")
PREFIX = os.path.join(RUN_FOLDER, "wine")
FOLDER = os.path.join(PREFIX, "drive_c", "Odomira")
COMPLETE = os.path.join(PREFIX, "complete")  # exists in a prefix that is not from an interrupted start
PICTURE = os.path.join(RUN_FOLDER, "odomira.png")


def lock_run_folder():
    """Locks the folder for one running program. The lock is released when the returned file is closed."""
    os.makedirs(RUN_FOLDER, exist_ok=True)
    lock = open(os.path.join(RUN_FOLDER, "lock"), "w", encoding="utf-8")
    try:
        fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
    except OSError:
        sys.exit("Odomira is already running here. Close it first.")
    return lock


def prepare_wine():
    """Creates the Wine prefix at the first start. A prefix from an interrupted start, which has neither COMPLETE nor the
    folder of the program, is created again. Any other prefix is kept: it may have a journal, also under another name."""
    if not os.path.exists(COMPLETE) and not os.path.isdir(FOLDER):
        print("Preparing Wine for the first start", flush=True)
        if os.path.isdir(PREFIX):
            end_wine(users_environment())
            shutil.rmtree(PREFIX)
        make_prefix(PREFIX, os.path.join(RUN_FOLDER, "home"))
    os.makedirs(FOLDER, exist_ok=True)
    with open(COMPLETE, "w", encoding="utf-8"):
        pass


def may_replace(journal, target):
    if not sys.stdin.isatty():
        sys.exit(f"{target} already exists and is kept.\n"
                 f"To replace it by {journal}, run this in a terminal and confirm, or move the file away first.")
    answer = input(f"{target} already exists. Replace it by {journal}? [y/N] ")
    return answer.strip().lower() in ("y", "yes")


def put_in_place(journal):
    if not os.path.isfile(journal):
        sys.exit(f"There is no journal {journal}.")
    target = os.path.join(FOLDER, "datasource.jrn")
    if os.path.exists(target):
        if filecmp.cmp(journal, target, shallow=False):
            return
        if not may_replace(journal, target):
            sys.exit("Nothing is changed.")
    shutil.copyfile(journal, target)


def install(program):
    """Copies the program and the guides to the journal's folder. Renaming complete copies never writes to a file in use."""
    for name in ("guide.html", "guide.sv.html", os.path.basename(program)):
        target = os.path.join(FOLDER, name)
        shutil.copyfile(os.path.join(os.path.dirname(program), name), target + ".new")
        os.replace(target + ".new", target)
    return target


def display_works():
    return bool(os.environ.get("DISPLAY")) and subprocess.run(
        ["xdotool", "getdisplaygeometry"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False).returncode == 0


def users_environment():
    names = (os.environ.get("LC_ALL"), os.environ.get("LANG"))
    locale = next((name for name in names if name and name not in ("C", "POSIX", "C.UTF-8")), "en_US.UTF-8")
    env = wine_environment(PREFIX, os.path.expanduser("~"), locale, os.environ.get("DISPLAY"))
    if "XAUTHORITY" in os.environ:
        env["XAUTHORITY"] = os.environ["XAUTHORITY"]
    return env


def run_for_the_user(program, env):
    print(f"Odomira is running. Its journal is {os.path.join(FOLDER, 'datasource.jrn')}", flush=True)
    return subprocess.run(["setpriv", "--pdeathsig", "TERM", "--", "wine", program], env=env, check=False).returncode


def show_on_a_virtual_display(program, env):
    print("There is no display. Odomira starts on a virtual display.", flush=True)
    display = Display(RUN_FOLDER)
    try:
        env["DISPLAY"] = display.name
        with subprocess.Popen(["setpriv", "--pdeathsig", "KILL", "--", "wine", program], env=env) as running:
            window = display.window(running)
            display.picture(PICTURE, window)
            print(f"A picture of its window is in {PICTURE}\nNobody can use the virtual display, so Odomira is closed.",
                  flush=True)
            end_wine(env)
    finally:
        end_wine(env)
        display.close()
    return 0


def main():
    exit_on_signals()
    lock = lock_run_folder()
    env = users_environment()
    try:
        prepare_wine()
        if len(sys.argv) > 2:
            put_in_place(sys.argv[2])
        program = install(sys.argv[1])
        result = run_for_the_user(program, env) if display_works() else show_on_a_virtual_display(program, env)
    except (MachineError, subprocess.TimeoutExpired, KeyboardInterrupt) as error:
        end_wine(env)
        sys.exit(f"run: {str(error) or 'interrupted'}")
    lock.close()
    sys.exit(result)


if __name__ == "__main__":
    main()
