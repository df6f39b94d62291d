"""measure.py [--record] [ROUNDS]: runs all measurements of ./bench, prints the table and draws the growth of the costs.

The results are in build/bench.md and build/growth.svg; --record also copies them to docs/.

Programs that are compared run in turn on one machine, ROUNDS times each (long ones a quarter of that). The result is the
median. If the user has the right, all programs run at a high priority, so that other processes have less effect.
"""
import argparse
import contextlib
import csv
import glob
import os
import pathlib
import re
import shutil
import statistics
import subprocess
import sys
import threading
import time

import plot

HERE = os.path.dirname(os.path.abspath(__file__))
PROJECT = os.path.dirname(HERE)
sys.path.insert(0, os.path.join(PROJECT, "tools", "machine"))
from machine import Machine, exit_on_signals, wait_until  # noqa: E402

RELEASE = os.path.join(PROJECT, "build", "release")
TOOLS = os.path.join(RELEASE, "benchmark")
JOURNAL = os.path.join(PROJECT, "tests", "samples", "full-20480.jrn")
TABLE = os.path.join(PROJECT, "build", "bench.md")
PLOT = os.path.join(PROJECT, "build", "growth.svg")
RECORD = os.path.join(PROJECT, "docs", "performance.md")
RECORDED_PLOT = os.path.join(PROJECT, "docs", "images", "growth.svg")
TABLE_HEAD = "| what | Odomira | compared with | its value | ratio | target |"
SIZES = [100, 300, 1000, 3000, 10000, 20480]
FOLDER = "C:\\Bench"
HEADER = 2     # lines of the journal file that are no entries
FRAME = 16.0   # milliseconds
TIMEOUT = 120


def numbers(machine, *command, at=None):
    """Runs a program and returns its results: {name: [numbers]}. The dictionary at gets the time of each name."""
    answer = machine.start(command, stdout=subprocess.PIPE, text=True)
    results = {}
    for line in answer.stdout:
        name, _, number = line.rstrip().partition("\t")
        if not number:
            sys.exit(f"bench: {' '.join(command)}: {line}")
        results.setdefault(name, []).append(float(number))
        if at is not None:
            at[name] = time.monotonic()
    if answer.wait() != 0:
        sys.exit(f"bench: {' '.join(command)} ended with {answer.returncode}")
    return results


def place_journal(machine, entries):
    with open(JOURNAL, "rb") as file:
        lines = file.readlines()
    with open(os.path.join(machine.path(FOLDER), "datasource.jrn"), "wb") as file:
        file.writelines(lines[:HEADER + entries])


def measured(machine, what, entries, rounds):
    place_journal(machine, entries)
    results = numbers(machine, FOLDER + "\\odomira_bench.exe", what, str(rounds))
    if results["entries"] != [entries]:
        sys.exit(f"bench: {results['entries']} entries instead of {entries}")
    return results


def middle(values):
    return statistics.median(values)


def ratio(ours, theirs):
    """The median of the ratios of values measured in succession, which a disturbance affects alike."""
    return statistics.median(a / b for a, b in zip(ours, theirs))


class Watch(threading.Thread):
    """Measures the peak memory of the programs that convert this machine's print jobs to PDF."""

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


def journal_rows(entries):
    """The rows of the report as those of a spreadsheet: date, distance, route."""
    with open(JOURNAL, encoding="cp1252", newline="") as file:
        for line in list(file)[HEADER:HEADER + entries]:
            line = line.rstrip("\r\n")
            yield line[:10], line[11:17].strip(), line[18:]


class Print:
    """One printed report: the results of the program, the seconds until its PDF exists, and the PDF's size and pages."""

    def __init__(self, seconds, pdf, results=None, peak=0):
        self.seconds, self.results, self.peak = seconds, results, peak
        self.bytes = os.path.getsize(pdf)
        self.pages = int(re.search(r"^Pages: +(\d+)", output("pdfinfo", pdf), re.MULTILINE)[1])


def output(*command):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout


def office(folder, source):
    """Converts the rows to PDF with LibreOffice, without a window and without the print queue."""
    target = os.path.join(folder, "office")
    shutil.rmtree(target, ignore_errors=True)
    begin = time.monotonic()
    process = subprocess.Popen(
        ["soffice", "-env:UserInstallation=" + pathlib.Path(folder, "profile").as_uri(), "--headless", "--norestore",
         "--convert-to", "pdf:calc_pdf_Export", "--outdir", target, source],
        env=dict(os.environ, HOME=folder), stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    taken = time.monotonic() - begin
    made = glob.glob(os.path.join(target, "*.pdf"))
    if status != 0 or not made:
        sys.exit("bench: LibreOffice created no PDF")
    return Print(taken, made[0], peak=usage.ru_maxrss)


def documents(machine):
    return set(glob.glob(machine.environment["ODOMIRA_PRINTED"] + "/*.pdf"))


def next_document(machine, before):
    return wait_until(lambda: documents(machine) - before, TIMEOUT, "printed document").pop()


def printed(machine, what, entries):
    """Prints the newest entries. The clock starts when the program has loaded its journal."""
    before = documents(machine)
    watch = Watch(machine.environment["ODOMIRA_PRINTED"])
    watch.start()
    moments = {}
    results = numbers(machine, FOLDER + "\\odomira_bench.exe", what, "Paper", str(entries), at=moments)
    made = next_document(machine, before)
    taken = time.monotonic() - moments["ready"]
    watch.over = True
    watch.join()
    return Print(taken, made, results, watch.peak)


def notepad(machine, file):
    """Prints a file with notepad on the same printer. The clock starts when OK is pressed in the printer dialog."""
    before = documents(machine)
    process = machine.start(["notepad.exe", "/p", file])

    def dialog():
        return machine.display.xdotool("search", "--onlyvisible", "--name", "^Print$")
    window = wait_until(dialog, TIMEOUT, "dialog").split()[0]
    while dialog():
        # A key that comes before the dialog has the focus is lost.
        machine.display.xdotool("windowactivate", window)
        time.sleep(0.5)
        begin = time.monotonic()
        machine.display.xdotool("key", "Return")
        time.sleep(0.1)
    made = next_document(machine, before)
    taken = time.monotonic() - begin
    machine.run(["taskkill", "/f", "/im", "notepad.exe"], stdout=subprocess.DEVNULL)  # Wine's keeps its window open
    process.wait()
    return Print(taken, made)


# ---- the measurements: each returns rows (what, ours, compared with, theirs, ratio, target) ----

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
    # In the first round the files are not in the cache of the host.
    lines = lines[len(commands):]
    times = [[float(line[1]) for line in lines if int(line[0]) == number] for number in range(len(commands))]
    peaks = [middle([int(line[2]) for line in lines if int(line[0]) == number]) for number in range(len(commands))]
    contents = [{int(line[3]) for line in lines if int(line[0]) == number} for number in (2, 3)]
    if min(map(min, contents)) == 0:
        sys.exit("bench: an empty window was counted as usable")
    bare, controls, pad, ours = times
    size = os.path.getsize(os.path.join(RELEASE, "odomira.exe"))
    name = "start to a usable window"
    return [(name, ms(ours), "a bare window", ms(bare), ratio(ours, bare), ""),
            (name, ms(ours), "a bare window with these controls", ms(controls), ratio(ours, controls), "1.35"),
            (name, ms(ours), "notepad with the same file", ms(pad), ratio(ours, pad), "1"),
            ("peak working set", kib(peaks[3]), "notepad with the same file", kib(peaks[2]), peaks[3] / peaks[2], "1"),
            ("program file", kib(size / 1024), "notepad", kib(notepad / 1024), size / notepad, "")]


def journal(results):
    return [("load", ms(results["load"]), "bare conversions of the fields", ms(results["bare load"]),
             ratio(results["load"], results["bare load"]), "0.6"),
            ("save", ms(results["save"]), "bare conversions of the fields", ms(results["bare save"]),
             ratio(results["save"], results["bare save"]), "0.4")]


def window(results):
    return [("rebuild of tree and list after a change", ms(results["rebuild"]), "a frame", "16 ms",
             middle(results["rebuild"]) / FRAME, "1"),
            ("click on a month", ms(results["month click"]), "a frame", "16 ms",
             middle(results["month click"]) / FRAME, "1")]


def per_page(what, ours, theirs):
    """Rows that compare the costs of one page with those of notepad."""
    name = "notepad, the same rows"
    costs = [[[one.seconds * 1000 / one.pages for one in both] for both in (ours, theirs)],
             [[one.bytes / 1024 / one.pages for one in both] for both in (ours, theirs)]]
    return [(what + ": a page", ms(costs[0][0]), name, ms(costs[0][1]), ratio(*costs[0]), "1"),
            (what + ": size of a page", kib(middle(costs[1][0]), 1), name, kib(middle(costs[1][1]), 1), ratio(*costs[1]),
             "1")]


def report(what, entries, rounds, office_target):
    """The report of the newest entries, beside notepad and LibreOffice with the same rows."""
    with Machine(printer=True) as machine:
        machine.install(os.path.join(TOOLS, "odomira_bench.exe"), FOLDER)
        place_journal(machine, SIZES[-1])
        rows = list(journal_rows(entries))
        sheet = os.path.join(machine.folder, "rows.csv")
        with open(sheet, "w", encoding="utf-8", newline="") as file:
            csv.writer(file).writerows([("Date", "km", "Route"), *rows])
        with open(os.path.join(machine.path(FOLDER), "rows.txt"), "w", encoding="cp1252", newline="\r\n") as file:
            file.writelines(f"{date} {distance:>8} {route}\n" for date, distance, route in rows)
        office(machine.folder, sheet)  # creates its user profile, which is not measured
        ours, pad, calc, words = [], [], [], []
        for _ in range(rounds):
            ours.append(printed(machine, "report", entries))
            pad.append(notepad(machine, FOLDER + "\\rows.txt"))
            calc.append(office(machine.folder, sheet))
            words.append(printed(machine, "words", entries))
    times = [[one.seconds for one in some] for some in (ours, pad, calc)]
    spooled = [[one.results[name][0] for one in some] for some, name in ((ours, "report"), (words, "words"))]
    lines = [(what + ", until the PDF is there", seconds(times[0]), f"notepad, the same rows on {pad[0].pages} pages",
              seconds(times[1]), ratio(times[0], times[1]), ""),
             (what + f", {ours[0].pages} pages", seconds(times[0]), "LibreOffice, rows as CSV", seconds(times[2]),
              ratio(times[0], times[2]), office_target),
             *per_page(what, ours, pad),
             (what + ": into the queue", ms(spooled[0]), "its text alone, by bare calls", ms(spooled[1]),
              ratio(*spooled), "")]
    if entries == SIZES[-1]:
        peaks = [middle(values) for values in ([one.results["peak KiB"][0] for one in ours], [one.peak for one in calc],
                                               [one.peak for one in ours])]
        lines += [(what + ": rows formed", ms([one.results["report rows"][0] for one in ours]), "", "", None, ""),
                  (what + ": peak memory", kib(peaks[0]), "LibreOffice, rows as CSV", kib(peaks[1]), peaks[0] / peaks[1],
                   ""),
                  ("the same, of the PDF converter", kib(peaks[2]), "LibreOffice, rows as CSV", kib(peaks[1]),
                   peaks[2] / peaks[1], "")]
    return lines


def adding(results):
    total = middle(results["add all"])
    return [(f"adding {SIZES[-1]:,} days one by one", ms(results["add all"]), "",
             f"{total / SIZES[-1] * 1000:.0f} µs a day", None, "")]


# ---- the table ----

def ms(values):
    value = middle(values)
    return f"{value:.0f} ms" if value >= 100 else f"{value:.1f} ms"


def seconds(values):
    return f"{middle(values):.2f} s"


def kib(value, decimals=0):
    return f"{value:,.{decimals}f} KiB"


def table(rows):
    lines = [TABLE_HEAD, "|---|--:|---|--:|--:|--:|"]
    for what, ours, beside, theirs, quotient, target in rows:
        lines.append(f"| {what} | {ours} | {beside} | {theirs} | {'' if quotient is None else f'{quotient:.2f}'} "
                     f"| {'≤ ' + target if target else ''} |")
    return "\n".join(lines)


def record(text):
    """Replaces the table and the picture in docs/."""
    with open(RECORD, encoding="utf-8") as file:
        lines = file.read().split("\n")
    start = lines.index(TABLE_HEAD)
    end = next(at for at in range(start, len(lines)) if not lines[at].startswith("|"))
    with open(RECORD, "w", encoding="utf-8") as file:
        file.write("\n".join(lines[:start] + text.split("\n") + lines[end:]))
    shutil.copyfile(PLOT, RECORDED_PLOT)


def main():
    exit_on_signals()
    parser = argparse.ArgumentParser()
    parser.add_argument("--record", action="store_true")
    parser.add_argument("rounds", nargs="?", type=int, default=9)
    options = parser.parse_args()
    rounds = options.rounds
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
            results = measured(machine, "journal", entries, rounds)
            results |= measured(machine, "window", entries, rounds)
            results |= measured(machine, "adding", entries, max(1, rounds // 4))
            for name, series in costs.items():
                series.append((entries, middle(results[name])))
            if full:
                rows += journal(results) + window(results) + adding(results)
    plot.draw(PLOT, costs, FRAME)
    for what, entries, times, target in (("a month", 31, rounds, "1"), ("a year", 366, rounds, "1"),
                                         ("56 years", SIZES[-1], max(1, rounds // 4), "")):
        print("Printing " + what, flush=True)
        rows += report("report of " + what, entries, times, target)
    text = table(rows)
    with open(TABLE, "w", encoding="utf-8") as file:
        file.write(text + "\n")
    if options.record:
        record(text)
    print(text)


if __name__ == "__main__":
    main()
