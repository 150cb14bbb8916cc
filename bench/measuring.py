"""What the measuring scripts share: processor times, medians, an installation, Wine."""
import os
import pathlib
import resource
import shlex
import statistics
import subprocess

ROOT = pathlib.Path(__file__).resolve().parent.parent
MINGW = "x86_64-w64-mingw32-g++-posix"


def processor_time(command, folder=None):
    """Seconds of user and system time that a command and its children take; it must succeed."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    done = subprocess.run([str(word) for word in command], cwd=folder, capture_output=True, text=True)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    if done.returncode != 0:
        raise SystemExit(f"{command[0]} failed:\n{done.stdout[-2000:]}{done.stderr[-2000:]}")
    return after.ru_utime - before.ru_utime + after.ru_stime - before.ru_stime


def median_ratio(numbers, references):
    """The median of the ratios of runs that were made side by side."""
    return statistics.median(a / b for a, b in zip(numbers, references))


def translate(stage, source, folder):
    """Builds a copy of a source with an installation, keeps the C++ files, and gives the command line
    that orvanec ran."""
    folder.mkdir(parents=True, exist_ok=True)
    copy = folder / source.name
    copy.write_bytes(source.read_bytes())
    done = subprocess.run([stage / "orvanec", copy, "--keep-cpp"], cwd=folder, capture_output=True,
                          text=True)
    if done.returncode != 0:
        raise SystemExit(f"{source.name} does not build:\n{done.stdout[-2000:]}{done.stderr[-2000:]}")
    line = next(line for line in done.stdout.splitlines() if line.startswith("  Command: "))
    return shlex.split(line.removeprefix("  Command: "))


def real_time():
    """The start of a command line that runs before all other programs of the machine; empty where that
    is not allowed."""
    words = ["chrt", "--rr", "5"]
    try:
        allowed = subprocess.run([*words, "true"], capture_output=True).returncode == 0
    except FileNotFoundError:
        allowed = False
    return words if allowed else []


def wine(function, *words, under=()):
    """Runs a function of tests/support/wine.sh in the prefix without a screen; gives its output.
    "under" is the start of the command line."""
    script = ". tests/support/wine.sh; wine_up null || exit; " + function + ' "$@"'
    done = subprocess.run([*under, "bash", "-c", script, "bash", *[str(word) for word in words]], cwd=ROOT,
                          capture_output=True, text=True,
                          env={**os.environ, "ORVANE_TEST_TIMEOUT": "600"})
    if done.returncode != 0:
        raise SystemExit(f"{function} {words} failed:\n{done.stdout[-2000:]}{done.stderr[-2000:]}")
    return done.stdout
