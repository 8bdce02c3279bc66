"""What the checks of bad weather have in common: the hostile service, and the program that has to get through it."""
import json
import os
import re
import subprocess
import sys
import time
from pathlib import Path

from desktop import BIN, HOME, Application, Atspi, GLib, extents, nodes, press, session_buses, wait_for

PATHS = ("/api/status", "/api/settings", "/api/devices", "/api/history")
FRAME = 0.016
# What the largest reply takes is a third of it, with a sanitizer, which slows the program down, too.
SANITIZED = b"libasan" in (BIN / "quorbit").read_bytes()
WORST = 15 if SANITIZED else 0.45
BUSES = session_buses()


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
        self.process.communicate(timeout=5)

    def tell(self, **order):
        print(json.dumps(order), file=self.process.stdin, flush=True)
        return json.loads(self.process.stdout.readline())

    def calm(self):
        """Answers as it should, with something new."""
        self.number += 1
        self.tell(good=state(self.number), bad={}, faults={})

    def storm(self, faults):
        """Answers some paths by a fault, with a body that tells `bad`, and the others as before."""
        self.bad = self.number + 500
        self.tell(good=state(self.number), bad=state(self.bad), faults=faults)

    def listen(self, port=0):
        self.port = self.tell(port=port)["port"]
        self.token += 1
        for home in self.homes:
            folder = home / "Library/Application Support/Quorbit"
            folder.mkdir(parents=True, exist_ok=True)
            (folder / "ui-url").write_text(f"http://127.0.0.1:{self.port}/\n")
            (folder / "ui-token").write_text(f"token-{self.token}\n")

    def close(self):
        self.tell(port=None)


class Witness(Application):
    """The program with its panel, which where there is no tray is an ordinary window that comes by itself."""

    def __init__(self, env=None, wrapper=(), expected=""):
        super().__init__(env, wrapper=wrapper)
        self.expected = expected  # on standard error

    def open(self):
        self.quit = self.wait("push button", "Quit Quorbit")
        self.panel, self.switch = self.find("frame", "Quorbit"), self.find("check box", "Pause syncing")
        self.press("push button", "Settings…")
        self.settings = self.wait("frame", "Settings")
        self.tabs = {tab.get_name(): tab for tab in self.all("page tab")}
        return self

    def number(self, path):
        """The number of the state that is shown of that path."""
        window, role, pattern, tab = {"/api/status": (self.panel, "label", r"computer (\d+)", None),
                                      "/api/settings": (self.settings, "spin button", "", "Sync"),
                                      "/api/devices": (self.settings, "label", r"device (\d+)", "Devices"),
                                      "/api/history": (self.panel, "push button", r"copy (\d+)", None)}[path]
        if tab:
            press(self.tabs[tab])
        shown = wait_for(f"what {path} tells", lambda: next(nodes(window, role, re.compile(pattern)), None))
        return int(re.match(pattern, shown.get_name())[1] if pattern else Atspi.Value.get_current_value(shown))

    def shows(self, number, path):
        wait_for(f"state {number} of {path}", lambda: self.number(path) == number, 8)

    def pulse(self, until=lambda: True, least=0.5):
        """Asks the main thread for something again and again, and gives back how long it took to answer."""
        def waiting():
            """How long those on the way of an answer have been ready to run while others did; buses pass it on."""
            return sum(int(Path("/proc", task, "schedstat").read_text().split()[1]) for task in tasks) / 1e9
        tasks = [f"{self.pid}/task/{entry.name}" for entry in Path(f"/proc/{self.pid}/task").iterdir()
                 if entry.name == str(self.pid) or (entry / "comm").read_text().startswith("QDBus")]
        tasks += [f"{pid}/task/{pid}" for pid in (os.getpid(), *BUSES)]
        taken, began = [], time.monotonic()
        while (passed := time.monotonic() - began) < least or not until():
            assert passed < 20, "the fault was not met"
            for _ in range(20):
                waited, start = waiting(), time.monotonic()
                try:
                    extents(self.quit)
                except GLib.Error:
                    pass  # It took longer than the library waits.
                taken.append(max(0, time.monotonic() - start - (waiting() - waited)))
                time.sleep(0.002)
        return sorted(taken)

    def memory(self):
        """In bytes, of its own alone."""
        return 1024 * int(re.search(r"Private_Dirty: +(\d+)", Path(f"/proc/{self.pid}/smaps_rollup").read_text())[1])

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
