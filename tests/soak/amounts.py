"""The amounts of the Python tests of this folder: a short slice under ./test, all of it under ./soak."""
import os


def amount(short_slice, long_run):
    return long_run if os.environ.get("ODOMIRA_SOAK") == "long" else short_slice


def seed():
    """The seed of this run's random choices: the same seed gives the same run."""
    return int(os.environ.get("ODOMIRA_SEED", "20040212"))


def closing_report(findings, **counts):
    """Prints the line that ./soak collects: closing_report(0, clicks=20000) prints "soak: 20000 clicks, 0 findings"."""
    did = "".join(f"{count} {what.replace('_', ' ')}, " for what, count in counts.items())
    print(f"soak: {did}{findings} findings", flush=True)
