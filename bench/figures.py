#!/usr/bin/python3
"""Measures the application beside bare programs and prints the table: figures.py SECONDS, on a desktop of its own.

Ours and the bare program take turns or run side by side, so that whatever else the machine does disturbs both.
"""
import subprocess
import sys
import time
from pathlib import Path

from desktop import BIN, Program, Sim, XembedTray
from table import Figure, heading, table

STARTS = 50
SETTLED = 15  # seconds after the start at which memory is read
ROUNDS = 5  # of memory and polling
POLL_PERIOD = 2  # seconds
PATIENCE = 120  # seconds for any one program


def run(*command):
    command = [str(part) for part in command]
    print("Measuring with", Path(command[0]).name, *command[1:2], file=sys.stderr)
    return subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True,
                          stdin=subprocess.DEVNULL, timeout=PATIENCE).stdout


def columns(*command):
    """The columns of what a program prints, a round in each line."""
    return [list(column) for column in zip(*(map(float, line.split()) for line in run(*command).splitlines()))]


def start():
    # The first start warms the page cache.
    bare, ours = (times[1:] for times in columns(BIN / "dock_time", STARTS + 1, BIN / "bare_tray", BIN / "quorbit"))
    return [Figure("From exec to the icon docked", "ms", ours, "tray", bare, "ratio", 1.5)]


def memory(pid, kind):
    fields = dict(line.split(":") for line in Path(f"/proc/{pid}/smaps_rollup").read_text().splitlines()[1:])
    return int(fields[kind].split()[0]) / 1024


def processor_time(pid):
    """Milliseconds, with threads that have ended; this is how the kernel numbers the clock of another process."""
    return time.clock_gettime(~pid << 3 | 2) * 1000


def watch(service, seconds, samples):
    """One round of memory and processor time, both programs side by side."""
    with Program(BIN / "bare_poller", service.url.split("?")[0], service.token) as bare, Program(BIN / "quorbit") as ours:
        programs = {"bare": bare.pid, "ours": ours.pid}
        time.sleep(SETTLED)
        for name, pid in programs.items():
            samples["dirty", name].append(memory(pid, "Private_Dirty"))
            samples["proportional", name].append(memory(pid, "Pss"))
        polls = service.requests("/api/status")
        before = {name: processor_time(pid) for name, pid in programs.items()}
        time.sleep(seconds)
        for name, pid in programs.items():
            samples["polling", name].append((processor_time(pid) - before[name]) * 60 / seconds)
        polls = service.requests("/api/status") - polls
        if abs(polls - 2 * seconds / POLL_PERIOD) > 2:
            sys.exit(f"{polls} polls by two programs in {seconds} s: there is nothing to compare")


def running(seconds):
    samples = {(what, who): [] for what in ("dirty", "proportional", "polling") for who in ("bare", "ours")}
    with Sim("full", "--log") as service, XembedTray():
        for number in range(ROUNDS):
            print(f"Measuring a running program, {number + 1} of {ROUNDS}", file=sys.stderr)
            watch(service, seconds / ROUNDS, samples)

    def figure(name, unit, what, *limit):
        return Figure(name, unit, samples[what, "ours"], "poller", samples[what, "bare"], *limit)

    return [figure(f"Private dirty memory {SETTLED} s after the start", "MB", "dirty", "difference", 6),
            figure("Proportional memory then", "MB", "proportional", "difference", None),
            figure("Processor time of a minute of polling", "ms", "polling", "ratio", 1.3)]


def decoding():
    parse, decode = columns(BIN / "bench_decode")
    return [Figure("Decode and publish 1,000 history entries", "ms", decode, "parse", parse, "ratio")]


def views():
    first, later = columns(BIN / "bench_filter")
    return [Figure("Filter 10,000 entries, first key", "ms", first),
            Figure("Filter 10,000 entries, later key", "ms", later),
            Figure("First key press to painted list of 10,000 entries", "ms", *columns(BIN / "bench_views", "key"),
                   limit=16),
            Figure("Frame of a drag among 200 cards", "ms", *columns(BIN / "bench_views", "drag"), limit=16)]


def download():
    return [Figure("Memory that a download of 300 MB takes, its server included", "MB",
                   *columns(BIN / "bench_download"), limit=20)]


def main():
    seconds = float(sys.argv[1])
    print(heading(), flush=True)
    with Sim("full"):
        figures = start()
    figures += running(seconds) + decoding() + views() + download()
    print(table(figures))
    sys.exit(any(figure.is_exceeded() for figure in figures))


if __name__ == "__main__":
    main()
