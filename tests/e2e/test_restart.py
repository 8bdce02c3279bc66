#!/usr/bin/python3
"""The real executable restarts itself so that a permission reaches the service, and no more often than it should."""
import os
import shutil
import subprocess
import time
import unittest
from pathlib import Path

from desktop import (BIN, HOME, QUITTING, Application, Sim, announce_accessibility_change, processes, stays,
                     wait_for)

ALLOWED = 300  # seconds after boot in which the application heals itself


def uptime():
    return time.clock_gettime(time.CLOCK_MONOTONIC)


class Restart(unittest.TestCase):
    def setUp(self):
        # A path that a shell must not take apart.
        folder = HOME / "it's a $HOME \"of its own\"; &" / "bin"
        folder.mkdir(parents=True)
        self.executable = Path(shutil.copy2(BIN / "quorbit", folder / "quorbit"))

    def tearDown(self):
        for pid in processes(self.executable):
            os.kill(pid, 15)
        wait_for("the end of every instance", lambda: not processes(self.executable))
        shutil.rmtree(self.executable.parent.parent)

    def successor(self, pid):
        """The process that took the place of that one, once it is alone."""
        wait_for("the old instance's end", lambda: pid not in processes(self.executable), 10)
        return wait_for("the new instance", lambda: processes(self.executable), 10)[0]

    @unittest.skipIf(uptime() < ALLOWED + 30, "the computer has just booted and would have healed by itself")
    def test_once_when_permissions_change(self):
        with Sim("no-permission", "--log") as service, Application(executable=self.executable) as first:
            wait_for("the first poll", lambda: service.requests("/api/history") > 0)
            time.sleep(0.3)
            began = time.monotonic()
            for _ in range(3):
                announce_accessibility_change()
            first.process.wait(4 + QUITTING)
            self.assertGreater(time.monotonic() - began, 0.75)
            second = self.successor(first.pid)
            polls = service.requests("/api/status")
            wait_for("the new instance's polls", lambda: service.requests("/api/status") > polls + 1)
            self.assertTrue(stays(lambda: processes(self.executable) == [second], 2))
            self.assertTrue(service.running())

    def test_not_while_the_permission_is_there(self):
        with Sim("still", "--log") as service, Application(executable=self.executable) as only:
            wait_for("the first poll", lambda: service.requests("/api/history") > 0)
            announce_accessibility_change()
            self.assertTrue(stays(only.running, 2))

    @unittest.skipUnless(os.geteuid() == 0 and Path("/proc/self/ns/time").exists(), "needs a clock of its own")
    def test_twice_after_a_boot(self):
        just_booted = ["unshare", "--time", f"--monotonic={60 - int(uptime())}", "--fork", "--kill-child"]
        with Sim("no-permission", "--log"), \
                subprocess.Popen([*just_booted, self.executable], stderr=subprocess.DEVNULL) as wrapper:
            first = wait_for("the first instance", lambda: processes(self.executable))[0]
            second = self.successor_within(first, 15)
            third = self.successor_within(second, 15)
            self.assertTrue(stays(lambda: processes(self.executable) == [third], 8))
            os.kill(third, 15)
            wrapper.kill()

    def successor_within(self, pid, seconds):
        wait_for("the restart", lambda: (found := processes(self.executable)) and found != [pid] and pid not in found,
                 seconds)
        return processes(self.executable)[0]


if __name__ == "__main__":
    unittest.main()
