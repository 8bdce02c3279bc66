#!/usr/bin/python3
"""The real executable learns of a new release and fetches it from a real HTTPS server."""
import json
import os
import unittest

from desktop import HOME, Desk, wait_for
from internet import HOST, Server, be_the_internet
from reader import faults, screen

PACKAGE = os.urandom(1) * 3_000_000
MANIFEST = {"version": "9.5.0", "download": {"macos": f"https://{HOST}/pkg/quorbit-9.5.0.deb"},
            "notes": {"en": "Faster reconnects, a calmer layout editor, and fixes."}}
FILES = {"/version.json": json.dumps(MANIFEST).encode(), "/pkg/quorbit-9.5.0.deb": PACKAGE}


class Update(Desk):
    def test_the_badge_appears_and_the_package_arrives(self):
        Server(("127.0.0.1", 443), lambda path: (200, [], FILES[path]), be_the_internet())
        self.start("still")
        self.app.press("push button", "Quorbit 9.5.0 is available")
        self.app.press("page tab", "About")
        self.app.wait("push button", "Download")
        self.assertEqual(faults(screen(self.app.pid)), [])
        self.app.press("push button", "Download")
        package = HOME / "Downloads" / "quorbit-9.5.0.deb"
        wait_for("the package", package.exists)
        self.assertEqual(package.read_bytes(), PACKAGE)
        self.assertEqual([path.name for path in package.parent.iterdir()], [package.name])


if __name__ == "__main__":
    unittest.main()
