#!/usr/bin/python3
"""The real executable and the service: found or launched, polled, left alone or ended."""
import shutil
import signal
import subprocess
import time
import unittest
from pathlib import Path

from desktop import (Atspi, BIN, CONNECTION, HOME, QUITTING, Application, Program, Sim, StatusNotifierTray, XembedTray,
                     has, node, processes, tray_icons, wait_for)


class Installed(unittest.TestCase):
    """An installed application brings its own service."""

    def setUp(self):
        self.prefix = HOME / "prefix"
        (self.prefix / "bin").mkdir(parents=True)
        (self.prefix / "libexec/quorbit").mkdir(parents=True)
        self.executable = shutil.copy2(BIN / "quorbit", self.prefix / "bin/quorbit")
        self.service = shutil.copy2(BIN / "quorbitd-sim", self.prefix / "libexec/quorbit/quorbitd")

    def tearDown(self):
        shutil.rmtree(self.prefix)

    def test_ends_the_service_that_it_launched(self):
        for stop in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            with self.subTest(stop), Application(executable=self.executable) as application:
                wait_for("the launched service", lambda: processes(self.service) and (CONNECTION / "ui-url").exists())
                began = time.monotonic()
                self.assertEqual(application.end(stop), 0)
                self.assertLess(time.monotonic() - began, QUITTING)
                wait_for("the service's end", lambda: not processes(self.service))
                self.assertFalse((CONNECTION / "ui-url").exists())

    def test_leaves_a_running_service_alone(self):
        with Sim() as service, Application(executable=self.executable) as application:
            wait_for("the icon's program", lambda: node(application.pid, showing=False) is not None)
            time.sleep(1)
            self.assertEqual(processes(self.service), [])
            application.end()
            self.assertTrue(service.running())

    def test_says_why_the_service_did_not_start(self):
        Path(self.service).write_text("not a program")
        with Application(executable=self.executable) as application:
            wait_for("the line", lambda: "[Quorbit] 启动 quorbitd 失败:" in application.printed())


class Running(unittest.TestCase):
    def test_quits_within_a_second_while_requests_hang(self):
        with Sim("live", "--fault", "hang"), Application() as application:
            time.sleep(2)
            began = time.monotonic()
            self.assertEqual(application.end(), 0)
            self.assertLess(time.monotonic() - began, QUITTING)

    def test_a_second_start_brings_up_the_panel(self):
        with XembedTray(), Sim(), Application() as first:
            wait_for("the icon", lambda: tray_icons())
            self.assertIsNone(node(first.pid, "push button", "Quit Quorbit"))
            with Application() as second:
                self.assertEqual(second.process.wait(5), 0)
            wait_for("the panel", lambda: node(first.pid, "push button", "Quit Quorbit"))

    def test_tells_the_desktop_when_a_start_is_over(self):
        # A tray of the bus kind: no window of the first start would say so.
        with StatusNotifierTray() as tray, Sim(), Program("stdbuf", "-oL", "xev", "-root") as desktop:
            def told():
                return desktop.printed().count("(_NET_STARTUP_INFO_BEGIN)")

            wait_for("the watcher", lambda: subprocess.call(["xsetroot", "-name", "watched"]) or desktop.printed())
            with Application(env={"DESKTOP_STARTUP_ID": "first_TIME1"}) as first:
                wait_for("the icon", lambda: tray.items)
                wait_for("the first start's end", lambda: told() > 0)
                before = told()
                with Application(env={"DESKTOP_STARTUP_ID": "second_TIME2"}) as second:
                    self.assertEqual(second.process.wait(5), 0)
                # The toolkit speaks up too, but of the first start.
                wait_for("the panel", lambda: node(first.pid, "push button", "Quit Quorbit"))
                wait_for("the second start's end", lambda: told() > before + 1)

    def test_finds_a_service_that_was_started_again(self):
        with XembedTray(), Sim("full") as service, Application() as application:
            wait_for("the icon", lambda: tray_icons())
            Application().process.wait(5)
            switch = wait_for("the switch", lambda: node(application.pid, "check box", "Pause syncing"))
            wait_for("the first state", lambda: node(application.pid, name="Received text from Office Linux"))
            self.assertFalse(has(switch, Atspi.StateType.CHECKED))
            service.end(signal.SIGKILL)
            with Sim("paused"):
                wait_for("the new state", lambda: has(switch, Atspi.StateType.CHECKED), 10)


if __name__ == "__main__":
    unittest.main()
