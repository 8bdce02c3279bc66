#!/usr/bin/python3
"""Runs a command on a desktop of its own: with_desktop.py COMMAND...

The desktop is an X server without a screen, a session bus, a screen-reader bus and a window manager, with a home and
runtime folder that are gone afterwards; DESKTOP_HOME names a home that stays. Trays, portals and services are up to the
command. Exits as the command does, or fails when a sanitizer reported a fault in any program that was started on the
desktop, however that program ended.
"""
import os
import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path

FONTS = Path(__file__).resolve().parents[2] / "tests/support/fonts.conf"


def start(started, env, *command):
    """Starts what the desktop is made of, and gives back what it says on that descriptor when it is there."""
    read, write = os.pipe()
    started.append(subprocess.Popen([part.format(write) for part in command], env=env, pass_fds=[write],
                                    stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))
    os.close(write)
    with os.fdopen(read) as pipe:
        return pipe.readline().strip()


def main():
    passing = Path(tempfile.mkdtemp(prefix="quorbit-desktop-"))
    home = Path(os.environ.get("DESKTOP_HOME", passing))
    runtime, reports = passing / "runtime", passing / "reports"
    runtime.mkdir(mode=0o700)
    reports.mkdir()
    env = {key: value for key, value in os.environ.items() if not key.startswith(("XDG_", "DBUS_", "WAYLAND_", "QT_"))}
    env |= {
        "HOME": str(home),
        "XDG_RUNTIME_DIR": str(runtime),
        "XDG_CONFIG_HOME": str(home / ".config"),
        "XDG_DATA_HOME": str(home / ".local/share"),
        "XDG_CURRENT_DESKTOP": "test",
        "GTK_USE_PORTAL": "0",
        "NO_AT_BRIDGE": "0",
        "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
        "FONTCONFIG_FILE": str(FONTS),
        "PYTHONPATH": str(Path(__file__).resolve().parent),  # desktop.py, for whatever is run
        "LANG": env.get("LANG", "C.UTF-8"),
    }
    # Not every check looks at how a program ended.
    for options in ("ASAN_OPTIONS", "UBSAN_OPTIONS"):
        env[options] = ":".join(filter(None, [env.get(options), f"log_path={reports}/report"]))
    started = []
    try:
        size = os.environ.get("DESKTOP_SIZE", "1280x1000")
        env["DISPLAY"] = ":" + start(started, env, "Xvfb", "-displayfd", "{}", "-screen", "0", f"{size}x24", "-noreset",
                                     "-nolisten", "tcp")
        env["DBUS_SESSION_BUS_ADDRESS"] = start(started, env, "dbus-daemon", "--session", "--nofork",
                                                "--print-address={}")
        started.append(subprocess.Popen(["openbox", "--startup", f"touch {passing}/managed"], env=env,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))
        while not (passing / "managed").exists():
            time.sleep(0.01)
        result = subprocess.call(sys.argv[1:], env=env)
        for report in reports.iterdir():
            print(f"== {report.name}", report.read_text(errors="replace"), sep="\n", file=sys.stderr)
            result = 1
        return result
    finally:
        for process in reversed(started):
            process.terminate()
        for process in started:
            try:
                process.wait(5)
            except subprocess.TimeoutExpired:
                process.kill()
        shutil.rmtree(passing, ignore_errors=True)


if __name__ == "__main__":
    sys.exit(main())
