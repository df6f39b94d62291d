"""measure.py [ROUNDS]: takes every measurement of ./bench, prints the table and draws how the cost grows.

Whatever is compared is run in turn, ROUNDS times each (a quarter of that for the long ones), in one run on one machine; what is told is
the median. Where the user may, everything runs at a high priority, so that other work of the computer weighs less.
"""
import contextlib
import csv
import glob
import os
import shutil
import statistics
import subprocess
import sys
import threading
import time

import plot

HERE = os.path.dirname(os.path.abspath(__file__))
PROJECT = os.path.dirname(HERE)
sys.path.insert(0, os.path.join(PROJECT, "tests", "machine"))
from machine import Machine, end_politely_when_told, wait_until  # noqa: E402

RELEASE = os.path.join(PROJECT, "build", "release")
TOOLS = os.path.join(RELEASE, "benchmark")
JOURNAL = os.path.join(PROJECT, "tests", "samples", "full-20480.jrn")
PLOT = os.path.join(PROJECT, "docs", "images", "growth.svg")
SIZES = [100, 300, 1000, 3000, 10000, 20480]
FOLDER = "C:\\Bench"
HEADER = 2     # lines of the journal file that are no entries
FRAME = 16.0   # milliseconds
PATIENCE = 1200


def numbers(machine, *command):
    """What a program of this folder tells: {name: [numbers]}."""
    answer = machine.start(command, stdout=subprocess.PIPE, text=True)
    told = {}
    for line in answer.stdout:
        name, _, number = line.rstrip().partition("\t")
        if not number:
            sys.exit(f"bench: {' '.join(command)}: {line}")
        told.setdefault(name, []).append(float(number))
    if answer.wait() != 0:
        sys.exit(f"bench: {' '.join(command)} ended with {answer.returncode}")
    return told


def place_journal(machine, entries):
    with open(JOURNAL, "rb") as file:
        lines = file.readlines()
    with open(os.path.join(machine.path(FOLDER), "datasource.jrn"), "wb") as file:
        file.writelines(lines[:HEADER + entries])


def measured(machine, what, entries, rounds):
    place_journal(machine, entries)
    told = numbers(machine, FOLDER + "\\odomira_bench.exe", what, str(rounds))
    if told["entries"] != [entries]:
        sys.exit(f"bench: {told['entries']} entries instead of {entries}")
    return told


def middle(values):
    return statistics.median(values)


def ratio(ours, theirs):
    """Of the pairs that were measured one after the other: what disturbs a pair disturbs both."""
    return statistics.median(a / b for a, b in zip(ours, theirs))


class Watch(threading.Thread):
    """The peak memory of the programs that turn this machine's print jobs into PDF, while it runs."""

    def __init__(self, folder):
        super().__init__(daemon=True)
        self.folder, self.peak, self.over = folder, 0, False

    def run(self):
        while not self.over:
            for status in glob.glob("/proc/[0-9]*/status"):
                with contextlib.suppress(OSError, ValueError, StopIteration):
                    with open(os.path.join(os.path.dirname(status), "cmdline"), encoding="utf-8") as file:
                        command = file.read()
                    if command.startswith("gs\0") and self.folder in command:
                        with open(status, encoding="utf-8") as file:
                            line = next(line for line in file if line.startswith("VmHWM"))
                        self.peak = max(self.peak, int(line.split()[1]))
            time.sleep(0.05)


def journal_rows():
    """The rows of the report as a sheet has them: date, distance, route."""
    with open(JOURNAL, encoding="cp1252", newline="") as file:
        for line in list(file)[HEADER:]:
            line = line.rstrip("\r\n")
            yield line[:10], line[11:17].strip(), line[18:]


def office(folder, source):
    """LibreOffice turns the rows into a PDF; returns (seconds, peak KiB, bytes of the file)."""
    target = os.path.join(folder, "office")
    shutil.rmtree(target, ignore_errors=True)
    begin = time.monotonic()
    process = subprocess.Popen(
        ["soffice", "-env:UserInstallation=file://" + os.path.join(folder, "profile"), "--headless", "--norestore",
         "--convert-to", "pdf:calc_pdf_Export", "--outdir", target, source],
        env=dict(os.environ, HOME=folder), stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    taken = time.monotonic() - begin
    made = glob.glob(os.path.join(target, "*.pdf"))
    if status != 0 or not made:
        sys.exit("bench: LibreOffice made no PDF")
    return taken, usage.ru_maxrss, os.path.getsize(made[0])


def printed(machine, what):
    """Prints into the queue; returns (what was told, seconds until the PDF is there, peak KiB of its maker, bytes)."""
    folder = machine.environment["ODOMIRA_PRINTED"]
    before = set(glob.glob(folder + "/*.pdf"))
    watch = Watch(folder)
    watch.start()
    begin = time.monotonic()
    told = numbers(machine, FOLDER + "\\odomira_bench.exe", what, "Paper")
    made = wait_until(lambda: set(glob.glob(folder + "/*.pdf")) - before, PATIENCE, "printed document").pop()
    taken = time.monotonic() - begin
    watch.over = True
    watch.join()
    return told, taken, watch.peak, os.path.getsize(made)


# ---- the measurements: each returns rows (what, ours, beside what, theirs, ratio, target) ----

def start(rounds):
    with Machine() as machine:
        watch = machine.install(os.path.join(TOOLS, "odomira_stopwatch.exe"), FOLDER)
        commands = [machine.install(os.path.join(TOOLS, "odomira_bare_window.exe"), FOLDER),
                    machine.install(os.path.join(TOOLS, "odomira_bare_controls.exe"), FOLDER),
                    "notepad.exe " + FOLDER + "\\datasource.jrn",
                    machine.install(os.path.join(RELEASE, "odomira.exe"), FOLDER)]
        place_journal(machine, SIZES[-1])
        notepad = os.path.getsize(machine.path("C:\\windows\\notepad.exe"))
        answer = machine.start([watch, str(rounds + 1), *commands], stdout=subprocess.PIPE, text=True)
        lines = [line.split("\t") for line in answer.stdout]
        if answer.wait() != 0:
            sys.exit("bench: a program does not start")
    # The first round finds nothing in the memory of the computer.
    lines = lines[len(commands):]
    times = [[float(line[1]) for line in lines if int(line[0]) == number] for number in range(len(commands))]
    peaks = [middle([int(line[2]) for line in lines if int(line[0]) == number]) for number in range(len(commands))]
    contents = [{int(line[3]) for line in lines if int(line[0]) == number} for number in (2, 3)]
    if min(map(min, contents)) == 0:
        sys.exit("bench: a window was counted as usable that showed nothing yet")
    bare, controls, pad, ours = times
    size = os.path.getsize(os.path.join(RELEASE, "odomira.exe"))
    name = "start to a usable window"
    return [(name, ms(ours), "a bare window", ms(bare), ratio(ours, bare), "1.5"),
            (name, ms(ours), "a bare window with these controls", ms(controls), ratio(ours, controls), ""),
            (name, ms(ours), "notepad with the same file", ms(pad), ratio(ours, pad), "1"),
            ("peak working set", kib(peaks[3]), "notepad with the same file", kib(peaks[2]), peaks[3] / peaks[2], ""),
            ("program file", kib(size / 1024), "notepad", kib(notepad / 1024), size / notepad, "")]


def journal(told):
    return [("load", ms(told["load"]), "bare conversions of the fields", ms(told["bare load"]),
             ratio(told["load"], told["bare load"]), "2"),
            ("save", ms(told["save"]), "bare conversions of the fields", ms(told["bare save"]),
             ratio(told["save"], told["bare save"]), "2")]


def window(told):
    return [("rebuild of tree and list after a change", ms(told["rebuild"]), "a frame", "16 ms",
             middle(told["rebuild"]) / FRAME, "1"),
            ("click on a month", ms(told["month click"]), "a frame", "16 ms", middle(told["month click"]) / FRAME, "1")]


def report(rounds):
    with Machine(printer=True) as machine:
        machine.install(os.path.join(TOOLS, "odomira_bench.exe"), FOLDER)
        place_journal(machine, SIZES[-1])
        sheet = os.path.join(machine.folder, "rows.csv")
        with open(sheet, "w", encoding="utf-8", newline="") as file:
            csv.writer(file).writerows([("Date", "km", "Route"), *journal_rows()])
        few = os.path.join(machine.folder, "few.csv")
        shutil.copy(sheet, few)
        office(machine.folder, few)  # makes the profile of its user, once in a lifetime
        ours, theirs, words = [], [], []
        for _ in range(rounds):
            ours.append(printed(machine, "report"))
            words.append(printed(machine, "words"))
            theirs.append(office(machine.folder, sheet))
    spooled = [one[0]["report"][0] for one in ours]
    bare = [one[0]["words"][0] for one in words]
    rows = [one[0]["report rows"][0] for one in ours]
    times = [[one[at] for one in both] for at, both in ((1, ours), (0, theirs))]
    peaks = [middle([one[0]["peak KiB"][0] for one in ours]), middle([one[1] for one in theirs])]
    makers = middle([one[2] for one in ours])
    sizes = [middle([one[3] for one in ours]) / 1024, middle([one[2] for one in theirs]) / 1024]
    soffice = "LibreOffice, rows as CSV"
    return [("report of 56 years: rows worked out", ms(rows), "", "", None, ""),
            ("report of 56 years: into the queue", ms(spooled), "only its words, by bare calls", ms(bare),
             ratio(spooled, bare), ""),
            ("report of 56 years: until the PDF", seconds(times[0]), soffice, seconds(times[1]), ratio(*times), "1"),
            ("report of 56 years: peak memory", kib(peaks[0]), soffice, kib(peaks[1]), peaks[0] / peaks[1], ""),
            ("the same, of the printer's PDF maker", kib(makers), soffice, kib(peaks[1]), makers / peaks[1], ""),
            ("report of 56 years: file", kib(sizes[0]), soffice, kib(sizes[1]), sizes[0] / sizes[1], "")]


def adding(told):
    total = middle(told["add all"])
    return [(f"adding {SIZES[-1]:,} days one by one", ms(told["add all"]), "", f"{total / SIZES[-1] * 1000:.0f} µs a day",
             None, "")]


# ---- the table ----

def ms(values):
    value = middle(values)
    return f"{value:.0f} ms" if value >= 100 else f"{value:.1f} ms"


def seconds(values):
    return f"{middle(values):.1f} s"


def kib(value):
    return f"{value:,.0f} KiB"


def table(rows):
    lines = ["| what | Odomira | beside | there | ratio | target |", "|---|--:|---|--:|--:|--:|"]
    for what, ours, beside, theirs, quotient, target in rows:
        lines.append(f"| {what} | {ours} | {beside} | {theirs} | {'' if quotient is None else f'{quotient:.2f}'} "
                     f"| {'≤ ' + target if target else ''} |")
    return "\n".join(lines)


def main():
    end_politely_when_told()
    rounds = int(sys.argv[1]) if len(sys.argv) > 1 else 9
    with contextlib.suppress(PermissionError):
        os.nice(-19)
    rows = []
    print("Starting programs", flush=True)
    rows += start(rounds)
    costs = {"load": [], "save": [], "add all": [], "rebuild": [], "month click": []}
    with Machine() as machine:
        machine.install(os.path.join(TOOLS, "odomira_bench.exe"), FOLDER)
        for entries in SIZES:
            print(f"A journal of {entries} entries", flush=True)
            full = entries == SIZES[-1]
            told = measured(machine, "journal", entries, rounds)
            told |= measured(machine, "window", entries, rounds)
            told |= measured(machine, "adding", entries, max(1, rounds // 4))
            for name, series in costs.items():
                series.append((entries, middle(told[name])))
            if full:
                rows += journal(told) + window(told) + adding(told)
    plot.draw(PLOT, costs, FRAME)
    print("Printing", flush=True)
    rows += report(max(1, rounds // 4))
    text = table(rows)
    with open(os.path.join(PROJECT, "build", "bench.md"), "w", encoding="utf-8") as file:
        file.write(text + "\n")
    print(text)


if __name__ == "__main__":
    main()
