"""What the checks of bad weather have in common: the hostile service, and the program that has to get through it."""
import json
import os
import re
import subprocess
import sys
import time
from pathlib import Path

from desktop import BIN, HOME, Atspi, Gio, GLib, Program, application_node, node, press, wait_for

PATHS = ("/api/status", "/api/settings", "/api/devices", "/api/history")
FRAME = 0.016
# Short of what a blocked loop takes; a sanitizer slows the program down several times.
WORST = 1.5 if b"libasan" in (BIN / "quorbit").read_bytes() else 0.45


def process_of_bus():
    """The process that passes on what is asked through the accessibility tree."""
    session = Gio.bus_get_sync(Gio.BusType.SESSION)
    address = session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None,
                                Gio.DBusCallFlags.NONE, -1, None).unpack()[0]
    bus = Gio.DBusConnection.new_for_address_sync(
        address, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None,
        None)
    name = "org.freedesktop.DBus"
    return bus.call_sync(name, "/org/freedesktop/DBus", name, "GetConnectionUnixProcessID",
                         GLib.Variant("(s)", (name,)), None, Gio.DBusCallFlags.NONE, -1, None).unpack()[0]


BUS = process_of_bus()


def state(number):
    """A whole state of the service; what is seen of it tells the number."""
    status = {"device_id": "10b4", "device_name": f"computer {number}", "port": 80808, "paused": False,
              "peers": [{"device_id": "77aa", "name": "Office Linux"}], "last_activity": "Received text"}
    settings = {"device_name": "Studio", "port": 80808, "file_size_cap_mb": number, "sync_text": True,
                "sync_image": True, "sync_files": True, "kvm_enabled": False, "kvm_side": "right"}
    device = {"device_id": "77aa", "name": f"device {number}", "platform": "linux", "fingerprint": "sha256:9f86d081",
              "online": True, "last_seen": 80808, "paired_at": 1}
    entry = {"id": 80808, "type": "text", "source": "Office Linux", "label": f"copy {number}", "time": 1}
    return dict(zip(PATHS, map(json.dumps, (status, settings, [device], [entry]))))


class Service:
    """The hostile service, and the files that tell of it in each of the homes."""

    def __init__(self, *homes):
        self.homes, self.token, self.number = homes or (HOME,), 0, 0
        self.process = subprocess.Popen([sys.executable, Path(__file__).with_name("hostile.py")], text=True,
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.calm()
        self.listen()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.stdin.close()
        self.process.wait(5)
        self.process.stdout.close()

    def tell(self, **order):
        self.process.stdin.write(json.dumps(order) + "\n")
        self.process.stdin.flush()
        return json.loads(self.process.stdout.readline())

    def calm(self):
        """Answers as it should, with something new."""
        self.number += 1
        self.tell(good=state(self.number), bad={}, faults={})

    def storm(self, faults):
        """Answers some paths by a fault, with a body that tells `bad`, and the others as before."""
        self.tell(good=state(self.number), bad=state(self.bad), faults=faults)

    @property
    def bad(self):
        return self.number + 500

    def listen(self, port=0):
        self.port = self.tell(listen=True, port=port)["port"]
        self.token += 1
        for home in self.homes:
            self.write_files(home)

    def write_files(self, home):
        folder = home / "Library/Application Support/Quorbit"
        folder.mkdir(parents=True, exist_ok=True)
        (folder / "ui-url").write_text(f"http://127.0.0.1:{self.port}/\n")
        (folder / "ui-token").write_text(f"token-{self.token}\n")

    def close(self):
        self.tell(listen=False)


class Witness(Program):
    """The program with its panel, seen through the accessibility tree."""

    def __init__(self, env=None, wrapper=(), alone=False, expected=""):
        # As started by the session it opens no panel by itself, which would close a menu that is open elsewhere.
        first = {} if alone else {"DESKTOP_AUTOSTART_ID": "weather"}
        super().__init__(*wrapper, BIN / "quorbit", env={**(env or {}), **first})
        self.again = None if alone else lambda: Program(*wrapper, BIN / "quorbit", env=env)
        self.expected = expected

    def open(self):
        """The panel, which without a tray is an ordinary window, and the settings."""
        wait_for("the program", lambda: node(self.pid, showing=False), 20)
        if self.again:
            with self.again() as second:
                second.process.wait(15)
        self.quit = wait_for("the panel", lambda: node(self.pid, "push button", "Quit Quorbit"), 20)
        self.panel = node(self.pid, "frame", "Quorbit")
        self.switch = node(self.pid, "check box", "Pause syncing")
        press(node(self.pid, "push button", "Settings…"))
        self.settings = wait_for("the window", lambda: node(self.pid, "frame", "Settings"), 20)
        self.tabs = {name: node(self.pid, "page tab", name) for name in ("Overview", "Sync", "KVM", "Devices", "About")}
        return self

    @staticmethod
    def find(window, role, pattern=""):
        """The first of that role whose name matches, and the match."""
        todo = [window]
        while todo:
            this = todo.pop()
            try:
                this.clear_cache()
                if this.get_role_name() == role and this.get_state_set().contains(Atspi.StateType.SHOWING):
                    if found := re.match(pattern, this.get_name()):
                        return this, found
                children = [this.get_child_at_index(i) for i in range(min(this.get_child_count(), 30))]
                todo.extend(child for child in reversed(children) if child)
            except GLib.Error:
                continue
        return None

    def number(self, path):
        """The number of the state that is shown of that path."""
        window, role, pattern, tab = {"/api/status": (self.panel, "label", r"computer (\d+)", None),
                                      "/api/settings": (self.settings, "spin button", "", "Sync"),
                                      "/api/devices": (self.settings, "label", r"device (\d+)", "Devices"),
                                      "/api/history": (self.panel, "push button", r"copy (\d+)", None)}[path]
        if tab:
            press(self.tabs[tab])
        shown, text = wait_for(f"what {path} tells", lambda: self.find(window, role, pattern), 20)
        return int(text[1]) if text.groups() else int(Atspi.Value.get_current_value(shown))

    def waiting(self, tasks):
        """How long those on the way of an answer have been ready to run while others did."""
        return sum(int(Path("/proc", task, "schedstat").read_text().split()[1]) for task in tasks) / 1e9

    def pulse(self, until=lambda: True, least=0.5, most=20):
        """Asks the main thread for something again and again, and gives back how long it took to answer."""
        threads = [entry for entry in Path(f"/proc/{self.pid}/task").iterdir()
                   if entry.name == str(self.pid) or (entry / "comm").read_text().startswith("QDBus")]
        tasks = [*threads, f"self/task/{os.getpid()}", f"{BUS}/task/{BUS}"]
        taken, began = [], time.monotonic()
        while (passed := time.monotonic() - began) < least or not until():
            if passed > most:
                raise AssertionError(f"the fault was not met within {most} s")
            for _ in range(20):
                waited, start = self.waiting(tasks), time.monotonic()
                try:
                    Atspi.Component.get_extents(self.quit, Atspi.CoordType.SCREEN)
                except GLib.Error:
                    pass  # It took longer than the library waits.
                taken.append(max(0, time.monotonic() - start - (self.waiting(tasks) - waited)))
                time.sleep(0.002)
        taken.sort()
        return taken

    def complaints(self):
        """What went wrong as far as can be seen from outside."""
        if not self.running():
            return f"ended with {self.process.returncode}: {self.printed()}"
        return "\n".join(line for line in self.printed().splitlines()
                         if not self.expected or not re.search(self.expected, line))


def check_pulse(test, taken, name):
    median, worst = taken[len(taken) // 2], taken[-1]
    print(f"{name}: {median * 1000:.1f} ms, at worst {worst * 1000:.0f} ms", flush=True)
    test.assertLess(median, FRAME)
    test.assertLess(worst, WORST)
