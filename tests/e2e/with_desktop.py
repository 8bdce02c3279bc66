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
from pathlib import Path

FONTS = Path(__file__).resolve().parent.parent / "support" / "fonts.conf"


def start_display(started):
    read, write = os.pipe()
    size = os.environ.get("DESKTOP_SIZE", "1280x1000")
    server = ["Xvfb", "-displayfd", str(write), "-screen", "0", f"{size}x24", "-nolisten", "tcp", "-noreset"]
    started.append(subprocess.Popen(server, pass_fds=[write], stderr=subprocess.DEVNULL))
    os.close(write)
    with os.fdopen(read) as pipe:
        number = pipe.readline().strip()
    if not number:
        sys.exit("no X server")
    return f":{number}"


def start_bus(started, env):
    bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address"], env=env, text=True,
                           stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    started.append(bus)
    return bus.stdout.readline().strip()


def collect_reports(env, folder):
    """Has the sanitizers write what they find to files, because not every check looks at how a program ended."""
    folder.mkdir()
    for options in ("ASAN_OPTIONS", "UBSAN_OPTIONS"):
        env[options] = ":".join(filter(None, [env.get(options), f"log_path={folder}/report"]))


def print_reports(folder):
    """Whether there were any."""
    reports = sorted(folder.iterdir())
    for report in reports:
        print(f"== {report.name}", report.read_text(errors="replace"), sep="\n", file=sys.stderr)
    return bool(reports)


def main():
    passing = Path(tempfile.mkdtemp(prefix="quorbit-desktop-"))
    home = Path(os.environ.get("DESKTOP_HOME", passing))
    runtime = passing / "runtime"
    runtime.mkdir(mode=0o700)
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
        "LANG": env.get("LANG", "C.UTF-8"),
    }
    reports = passing / "reports"
    collect_reports(env, reports)
    started = []
    try:
        env["DISPLAY"] = start_display(started)
        env["DBUS_SESSION_BUS_ADDRESS"] = start_bus(started, env)
        started.append(subprocess.Popen(["openbox"], env=env, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))
        result = subprocess.call(sys.argv[1:], env=env)
        return 1 if print_reports(reports) else result
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
