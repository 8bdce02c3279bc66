"""The table of figures, in Markdown."""
import os
import statistics
import subprocess
import textwrap
import time
from dataclasses import dataclass
from pathlib import Path
from typing import Optional


def number(value):
    return f"{value:.0f}" if abs(value) >= 100 else f"{value:.1f}" if abs(value) >= 10 else f"{value:.2f}"


def spread(values, unit="", sign=""):
    """The median, and the quartiles between which half of the runs lie."""
    middle = f"{sign}{number(statistics.median(values))}{unit}"
    if len(values) < 4:
        return middle
    low, _, high = statistics.quantiles(values, n=4, method="inclusive")
    return f"{middle} ({number(low)}–{number(high)})"


@dataclass
class Figure:
    name: str
    unit: str
    ours: list
    bare_name: str = ""
    bare: Optional[list] = None
    compared: str = ""  # how ours is set beside the bare program: "ratio", "difference" or not at all
    limit: Optional[float] = None  # for what is compared, or else for ours

    def comparison(self):
        """Round by round."""
        if self.compared == "ratio":
            return [ours / bare for ours, bare in zip(self.ours, self.bare)]
        if self.compared == "difference":
            return [ours - bare for ours, bare in zip(self.ours, self.bare)]
        return self.ours

    def is_exceeded(self):
        return self.limit is not None and statistics.median(self.comparison()) > self.limit

    def row(self):
        unit, sign = {"ratio": (" ×", ""), "difference": (f" {self.unit}", "+")}.get(self.compared, (f" {self.unit}", ""))
        positive = statistics.median(self.comparison()) >= 0
        return [self.name, spread(self.ours, f" {self.unit}"),
                f"{self.bare_name}: {spread(self.bare, f' {self.unit}')}" if self.bare else "",
                spread(self.comparison(), unit, sign if positive else "") if self.compared else "",
                "" if self.limit is None else f"{sign}{self.limit:g}{unit}",
                "" if self.limit is None else "**EXCEEDED**" if self.is_exceeded() else "kept"]


def table(figures):
    titles = ["Figure", "Quorbit", "Bare program", "Beside it", "Limit", ""]
    lines = [titles, ["---"] * len(titles), *(figure.row() for figure in figures)]
    return "\n".join("| " + " | ".join(cells) + " |" for cells in lines)


def output(*command):
    """What a command prints; nothing where it is missing or fails."""
    try:
        return subprocess.run(command, capture_output=True, text=True, check=True,
                              cwd=Path(__file__).parent).stdout.strip()
    except (OSError, subprocess.CalledProcessError):
        return ""


def heading():
    cpu = next((line.split(":")[1].strip() for line in Path("/proc/cpuinfo").read_text().splitlines()
                if line.startswith("model name")), os.uname().machine)
    changed = " with changes" if output("git", "status", "--porcelain", "--untracked-files=no") else ""
    text = (f"Measured {time.strftime('%Y-%m-%d %H:%M', time.gmtime())} UTC at commit "
            f"{output('git', 'rev-parse', '--short', 'HEAD') or 'unknown'}{changed}, on {os.cpu_count()} cores of "
            f"{cpu} with Linux {os.uname().release} and Qt {output('pkg-config', '--modversion', 'Qt6Core')}, load "
            f"{os.getloadavg()[0]:.1f} before. Medians; half of the runs lie between the numbers in parentheses.")
    return textwrap.fill(text, 120) + "\n"
