"""start.py PROGRAM [JOURNAL]: installs the program in .run/ and runs it there. This is the second half of ./run."""
import fcntl
import filecmp
import os
import shutil
import subprocess
import sys

PROJECT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
sys.path.insert(0, os.path.join(PROJECT, "tests", "machine"))
from machine import Display, MachineError, end_politely_when_told, end_wine, make_prefix, wine_environment  # noqa: E402

GROUND = os.path.join(PROJECT, ".run")
PREFIX = os.path.join(GROUND, "wine")
FOLDER = os.path.join(PREFIX, "drive_c", "Odomira")
PICTURE = os.path.join(GROUND, "odomira.png")


def only_one():
    """The lock of the one program that runs here; its owner keeps it until it ends."""
    os.makedirs(GROUND, exist_ok=True)
    lock = open(os.path.join(GROUND, "lock"), "w", encoding="utf-8")
    try:
        fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
    except OSError:
        sys.exit("Odomira is already running here. Close it first.")
    return lock


def may_replace(journal, target):
    if not sys.stdin.isatty():
        sys.exit(f"{target} is there already and is kept.\n"
                 f"Run this in a terminal to be asked whether {journal} shall replace it, or move it away first.")
    answer = input(f"{target} is there already. Replace it by {journal}? [y/N] ")
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
    """Beside the journal, under a new name first: a file in use is never written into."""
    target = os.path.join(FOLDER, "odomira.exe")
    shutil.copyfile(program, target + ".new")
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
    print(f"Odomira runs; its journal is {os.path.join(FOLDER, 'datasource.jrn')}", flush=True)
    return subprocess.run(["setpriv", "--pdeathsig", "TERM", "--", "wine", program], env=env, check=False).returncode


def show_on_a_virtual_display(program, env):
    print("There is no display: Odomira starts on a virtual one.", flush=True)
    display = Display(GROUND)
    try:
        env["DISPLAY"] = display.name
        with subprocess.Popen(["setpriv", "--pdeathsig", "KILL", "--", "wine", program], env=env) as running:
            window = display.window(running)
            display.picture(PICTURE, window)
            print(f"A picture of its window is in {PICTURE}\nNobody can reach that window, so Odomira is ended again.",
                  flush=True)
            end_wine(env)
    finally:
        end_wine(env)
        display.close()
    return 0


def main():
    end_politely_when_told()
    lock = only_one()
    if not os.path.exists(os.path.join(PREFIX, "user.reg")):
        print("Preparing Wine for the first start", flush=True)
        make_prefix(PREFIX, os.path.join(GROUND, "home"))
    os.makedirs(FOLDER, exist_ok=True)
    if len(sys.argv) > 2:
        put_in_place(sys.argv[2])
    program = install(sys.argv[1])
    env = users_environment()
    try:
        result = run_for_the_user(program, env) if display_works() else show_on_a_virtual_display(program, env)
    except (MachineError, KeyboardInterrupt) as error:
        end_wine(env)
        sys.exit(f"run: {error or 'interrupted'}")
    lock.close()
    sys.exit(result)


if __name__ == "__main__":
    main()
