"""The hostile service, and what it tells of itself."""
import itertools
import json
import subprocess
import sys
from pathlib import Path

from desktop import CONNECTION

PATHS = ("/api/status", "/api/settings", "/api/devices", "/api/history")


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
    """Listens somewhere until its end; each tells something new when it starts."""

    numbers = itertools.count(1)

    def __init__(self):
        self.process = subprocess.Popen([sys.executable, Path(__file__).with_name("hostile.py")], text=True,
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.meet({})
        CONNECTION.mkdir(parents=True, exist_ok=True)
        (CONNECTION / "ui-url").write_text(f"http://127.0.0.1:{self.tell()['port']}/\n")
        (CONNECTION / "ui-token").write_text(f"token-{self.number}\n")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        with self.process:
            self.process.kill()

    def tell(self, **order):
        print(json.dumps(order), file=self.process.stdin, flush=True)
        return json.loads(self.process.stdout.readline())

    def meet(self, faults):
        """Answers some paths by a fault, and the others with something new."""
        self.number = next(self.numbers)
        self.tell(good=state(self.number), bad=state(500 + self.number), faults=faults)
