#!/usr/bin/python3
"""An installed Quorbit, started from its desktop entry as a menu starts it: test_package.py PREFIX [PICTURES]."""
import os
import signal
import subprocess
import sys
import unittest
from pathlib import Path

PREFIX = Path(sys.argv.pop(1))
PICTURES = Path(sys.argv.pop(1)) if len(sys.argv) > 1 else None
# Where a desktop finds menu entries and programs; the libraries ask once.
os.environ["XDG_DATA_DIRS"] = f"{PREFIX / 'share'}:/usr/share"
os.environ["PATH"] = f"{PREFIX / 'bin'}:{os.environ['PATH']}"

from desktop import (Gio, HOME, Sim, Tree, XembedTray, geometry, icon, picture, processes, stays,  # noqa: E402
                     wait_for, windows)

EXECUTABLE = PREFIX / "bin/quorbit"


class Package(unittest.TestCase):
    def test_starts_from_the_menu_and_comes_up_when_started_again(self):
        # What an earlier version left behind: the choice of Chinese, on a desktop in English.
        settings = HOME / ".config/Quorbit/settings.json"
        settings.parent.mkdir(parents=True, exist_ok=True)
        settings.write_text('{"quorbit.language": "zh-Hans"}')
        entry = Gio.DesktopAppInfo.new("quorbit.desktop")
        self.assertTrue(entry and entry.get_filename().startswith(str(PREFIX)), "the menu has no such entry")
        self.addCleanup(self.end)
        with XembedTray(), Sim("full"):
            self.assertTrue(entry.launch([], None))
            wait_for("the icon", icon)
            pid, = processes(EXECUTABLE)
            app = Tree(pid)
            self.assertTrue(stays(lambda: not app.find("push button", "退出 Quorbit"), 0.5))

            self.assertTrue(entry.launch([], None))
            app.wait(name="Office Linux, 已连接")
            wait_for("the second start's end", lambda: processes(EXECUTABLE) == [pid])
            self.take("panel.png")
            app.press("push button", "设置…")
            app.press("page tab", "关于")
            window = wait_for("the settings window", lambda: windows("^设置$", pid))[0]
            names = subprocess.run(["xprop", "-id", window, "WM_CLASS"], capture_output=True, text=True, check=True).stdout
            self.assertIn(f'"{entry.get_startup_wm_class()}"', names, "docks do not know the window as the program's")
            self.assertGreater(geometry(window)[2], 500)
            self.take("settings.png")

    def end(self):
        for pid in processes(EXECUTABLE):
            os.kill(pid, signal.SIGTERM)
        wait_for("the program's end", lambda: not processes(EXECUTABLE))

    def take(self, name):
        if PICTURES:
            stays(lambda: True, 0.5)  # for the drawing
            picture(PICTURES / name)


if __name__ == "__main__":
    unittest.main()
