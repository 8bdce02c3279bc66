#!/usr/bin/python3
"""An installed Quorbit, started from its desktop entry as a menu starts it: test_package.py PREFIX [PICTURES]."""
import os
import signal
import sys
import time
import unittest
from pathlib import Path

PREFIX = Path(sys.argv.pop(1))
PICTURES = Path(sys.argv.pop(1)) if len(sys.argv) > 1 else None
# Where a desktop finds menu entries and programs; the libraries ask once.
os.environ["XDG_DATA_DIRS"] = f"{PREFIX / 'share'}:/usr/share"
os.environ["PATH"] = f"{PREFIX / 'bin'}:{os.environ['PATH']}"

from desktop import (Gio, HOME, Sim, XembedTray, geometry, node, picture, press, processes, search,  # noqa: E402
                     stays, tray_icons, wait_for, windows)

SETTINGS = HOME / ".config/Quorbit/settings.json"


class Package(unittest.TestCase):
    def setUp(self):
        # What an earlier version left behind: the choice of Chinese, on a desktop in English.
        SETTINGS.parent.mkdir(parents=True, exist_ok=True)
        SETTINGS.write_text('{"quorbit.language": "zh-Hans"}')
        self.entry = Gio.DesktopAppInfo.new("quorbit.desktop")
        self.assertTrue(self.entry and self.entry.get_filename().startswith(str(PREFIX)), "the menu has no such entry")
        self.addCleanup(self.end)

    def end(self):
        for pid in self.running():
            os.kill(pid, signal.SIGTERM)
        wait_for("the program's end", lambda: not self.running())

    def running(self):
        return processes(PREFIX / "bin/quorbit")

    def test_starts_from_the_menu_and_comes_up_when_started_again(self):
        with XembedTray(), Sim("full"):
            self.assertTrue(self.entry.launch([], None))
            wait_for("the icon", tray_icons)
            pid, = self.running()
            self.assertTrue(stays(lambda: not quit_row(pid), 0.5))

            self.assertTrue(self.entry.launch([], None))
            wait_for("the panel", lambda: quit_row(pid))
            wait_for("the peers", lambda: node(pid, name="Office Linux, 已连接"))
            wait_for("the second start's end", lambda: self.running() == [pid])
            self.take("panel.png")

            press(node(pid, "push button", "设置…"))
            window = wait_for("the settings window", lambda: windows("^设置$", pid))[0]
            docks = f"^{self.entry.get_startup_wm_class()}$"
            self.assertIn(window, search(["--class", docks], pid), "docks do not know the window as the program's")
            press(wait_for("the tab", lambda: node(pid, "page tab", "关于")))
            time.sleep(0.5)
            self.take("settings.png")
            self.assertGreater(geometry(window)[2], 500)

    def take(self, name):
        if PICTURES:
            picture(PICTURES / name)


def quit_row(pid):
    return node(pid, "push button", "退出 Quorbit")


if __name__ == "__main__":
    unittest.main()
