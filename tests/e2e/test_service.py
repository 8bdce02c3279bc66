#!/usr/bin/python3
"""The real executable and the service: launched or left alone, ended or restarted with the program."""
import os
import signal
import sys
import time
import unittest
from pathlib import Path

from desktop import (CONNECTION, HOME, PATIENCE, QUITTING, Gio, Installed, Sim, Tree, XembedTray, icon, pointer,
                     processes, stays, wait_for)

UPTIME = time.clock_gettime(time.CLOCK_MONOTONIC)


class Ending(unittest.TestCase):
    def test_ends_the_service_that_it_launched_and_waits_for_no_answer(self):
        for stop in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            with self.subTest(stop), Installed({"QUORBITD_SIM_FAULT": "hang"}) as app:
                wait_for("the launched service", lambda: processes(app.service) and (CONNECTION / "ui-url").exists())
                stays(lambda: True, 0.5)  # for requests
                began = time.monotonic()
                self.assertEqual(app.end(stop), 0)
                self.assertLess(time.monotonic() - began, QUITTING)
                wait_for("the service's end", lambda: not processes(app.service))
                self.assertFalse((CONNECTION / "ui-url").exists())


class Permission(unittest.TestCase):
    """A permission reaches the service by a restart of both."""

    def test_restarts_once_when_permissions_change(self):
        # A path that a shell must not take apart.
        with Sim("no-permission") as service, Installed(prefix=HOME / "it's a $HOME \"of its own\"; &") as app:
            service.wait_for_polls()
            connection = Gio.bus_get_sync(Gio.BusType.SESSION)
            for _ in range(3):
                connection.emit_signal(None, "/any", "com.apple.accessibility", "api", None)
            connection.flush_sync(None)
            second = app.successor()
            service.wait_for_polls()
            self.assertTrue(stays(lambda: processes(app.executable) == [second], 2))
            self.assertTrue(service.running())

    def test_is_asked_for_and_reaches_the_service(self):
        # A new instance that came before the service's end would find it, and lose it.
        state = {"QUORBITD_SIM_SCENARIO": "no-permission", "QUORBITD_SIM_SPEED": "4", "QUORBITD_SIM_LINGER": "2",
                 "QUORBITD_SIM_STATE": str(HOME / "state.json")}
        # As if a new version had been installed while the old one was being started.
        replaced = ("sh", "-c", 'exec 3<"$0" && cp "$0" new && mv new "$0" && exec /proc/self/fd/3')
        with XembedTray(), Installed(state, replaced) as app:
            place = wait_for("the icon", icon)
            for opens in (True, False, True):
                pointer(place, "click", 1)
                wait_for("the panel", lambda opens=opens: bool(app.find("frame", "Quorbit")) == opens)
                self.assertTrue(stays(lambda opens=opens: bool(app.find("frame", "Quorbit")) == opens, 0.5))
            app.open_tab("KVM")
            app.wait(name="Accessibility is not allowed yet")
            app.press("push button", "Allow…")
            app.wait(name="Accessibility needs a restart")
            app.press("push button", "Restart")
            second = Tree(app.successor())
            pointer(wait_for("the new instance's icon", icon), "click", 1)
            second.open_tab("KVM")
            second.wait(name="Accessibility is allowed")
            self.assertIsNone(second.find("push button", "Restart"))

    @unittest.skipUnless(os.geteuid() == 0 and Path("/proc/self/ns/time").exists(), "needs a clock of its own")
    def test_restarts_by_itself_twice_after_a_boot(self):
        """And not once where it cannot count that."""
        shift = int(Path("/proc/self/timens_offsets").read_text().split()[1])
        just_booted = ["unshare", "--time", f"--monotonic={60 - int(UPTIME) + shift}", "--fork", "--kill-child"]
        (HOME / "forgetful/Quorbit/settings.json").mkdir(parents=True)
        forgetful = {"XDG_CONFIG_HOME": str(HOME / "forgetful"), "XDG_RUNTIME_DIR": str(HOME / "forgetful")}
        with Sim("no-permission"), Installed(wrapper=just_booted) as app, \
                Installed(forgetful, just_booted, HOME / "forgetful/prefix") as other:
            only = wait_for("the one that cannot count", lambda: len(now := processes(other.executable)) == 1 and now)
            seen = set()

            def instances():
                if len(now := processes(app.executable)) == 1:  # a child has this file too until it has its own
                    seen.update(now)
                return len(seen)
            wait_for("two restarts", lambda: instances() == 3, 2 * PATIENCE)
            self.assertTrue(stays(lambda: instances() == 3, 8))
            still = processes(other.executable)
            for pid in still:  # their wrapper does not hand on the signal
                os.kill(pid, signal.SIGTERM)
            self.assertEqual(still, only)


if __name__ == "__main__":
    if UPTIME < 330:  # where the program would take the permission for one that was given before it was started
        later = ["unshare", "--time", "--monotonic=1000", "--fork", "--kill-child"]
        os.execvp(later[0], [*later, sys.executable, *sys.argv])
    unittest.main()
