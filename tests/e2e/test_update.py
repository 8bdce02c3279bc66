#!/usr/bin/python3
"""The real executable learns of a new release, fetches it from a real HTTPS server and from no other, and shows it."""
import json
import os
import re
import unittest
from pathlib import Path

from desktop import HOME, BusObject, Desk, wait_for
from internet import HOST, Server, be_the_internet
from reader import faults, screen

NAME = "/pkg/quorbit%209.5%20f%C3%BCr%20alle.deb"
DOWNLOADS = HOME / "Downloads"
FILE = DOWNLOADS / "quorbit 9.5 für alle.deb"
PACKAGE = os.urandom(1) * 100_000_000
MANIFEST = {"version": "9.5.0", "download": {"macos": f"https://{HOST}{NAME}"},
            "notes": {"en": "Faster reconnects, a calmer layout editor, and fixes."}}


class FileManager(BusObject):
    XML = """<node><interface name="org.freedesktop.FileManager1"><method name="ShowItems">
        <arg type="as" direction="in"/><arg type="s" direction="in"/></method></interface></node>"""

    def __init__(self):
        self.shown = []
        super().__init__("org.freedesktop.FileManager1", "/org/freedesktop/FileManager1", self.XML,
                         lambda _, items, _startup: self.shown.extend(items))


class Update(Desk):
    @classmethod
    def setUpClass(cls):
        # Another name than the one that the certificate is for, and no certificate at all.
        cls.others = [f"https://localhost{NAME}", f"http://{HOST}{NAME}"]
        cls.plain = Server(("127.0.0.1", 80))
        cls.server = Server(("127.0.0.1", 443), lambda path: (200, [], json.dumps(MANIFEST).encode())
                            if path == "/version.json" else (302, [("Location", cls.others.pop(0))], b"")
                            if cls.others else (200, [], PACKAGE), be_the_internet())
        cls.opened = HOME / "opened"
        opener = HOME / "fakes/xdg-open"
        opener.parent.mkdir()
        opener.write_text(f"#!/bin/sh\necho \"$@\" >>'{cls.opened}'\n")
        opener.chmod(0o755)

    def setUp(self):
        self.start("still", env={"PATH": f"{HOME}/fakes:{os.environ['PATH']}"})
        self.app.press("push button", "Quorbit 9.5.0 is available")
        self.app.press("page tab", "About")
        self.app.wait("push button", "Download")
        self.assertEqual(faults(screen(self.app.pid)), [])

    def peak(self):
        """The most memory that the program has had, in bytes."""
        return 1024 * int(re.search(r"VmHWM:\s+(\d+)", Path(f"/proc/{self.app.pid}/status").read_text())[1])

    def wait_until_opened(self, address):
        wait_for(address, lambda: self.opened.exists() and self.opened.read_text() == f"{address}\n")

    def test_fetches_the_package_from_nowhere_else(self):
        while self.others:
            left = len(self.others)
            self.app.press("push button", "Download")
            wait_for("the request", lambda left=left: len(self.others) < left)
            self.app.press("push button", "Open in browser")
            self.wait_until_opened(f"https://{HOST}{NAME}")
            self.opened.unlink()
        self.assertEqual((self.server.refusals, self.plain.connections, list(DOWNLOADS.glob("*"))), (1, 0, []))
        before = self.peak()
        self.app.press("push button", "Download")
        self.wait_until_opened(DOWNLOADS.as_uri())
        self.assertEqual(list(DOWNLOADS.iterdir()), [FILE])
        self.assertEqual(FILE.read_bytes(), PACKAGE)
        self.assertLess(self.peak() - before, len(PACKAGE) / 5)

    def test_shows_the_package_in_the_file_manager(self):
        self.others.clear()
        with FileManager() as manager:
            self.app.press("push button", "Download")
            wait_for("the package", lambda: manager.shown)
        self.assertEqual(manager.shown, [FILE.as_uri()])


if __name__ == "__main__":
    unittest.main()
