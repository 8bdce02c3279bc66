#!/usr/bin/python3
"""The simulated service keeps the promises that the other checks build on."""
import signal
import stat
import subprocess
import unittest
import urllib.error

from desktop import BIN, CONNECTION, Sim, wait_for


class SimulatedService(unittest.TestCase):
    def test_files_come_private_and_go_with_the_service_alone(self):
        with Sim("still") as first:
            with Sim("paused") as second:
                first.end(signal.SIGINT)
                self.assertTrue(second.ask("/api/status")["paused"])
                self.assertEqual([stat.S_IMODE(path.stat().st_mode) for path in CONNECTION.iterdir()], [0o600, 0o600])
                self.assertEqual(second.end(), 0)
                self.assertEqual(list(CONNECTION.iterdir()), [])

    def test_answers_nobody_without_the_token(self):
        with Sim("still") as service:
            service.token = "guess"
            for path, method in (("/api/status", "GET"), ("/api/history", "DELETE")):
                with self.assertRaisesRegex(urllib.error.HTTPError, "401") as refusal:
                    service.ask(path, method)
                refusal.exception.close()

    def test_stores_settings_as_they_are(self):
        with Sim("sharing-off") as service:
            settings = service.ask("/api/settings")
            settings |= {"kvm_enabled": True, "device_name": "新名字", "kvm_sensitivity": 0.1}
            self.assertEqual(service.ask("/api/settings", "PUT", settings), {"ok": True, "need_restart": True})
            self.assertEqual(service.ask("/api/settings"), settings)
            self.assertEqual(service.ask("/api/status")["device_name"], "新名字")
            settings["kvm_layout"]["77aa01fe"]["x"] = 5.5
            service.ask("/api/settings", "PUT", settings)
            self.assertEqual(service.settings("kvm_layout_ver"), settings["kvm_layout_ver"] + 1)

    def test_things_happen_by_themselves(self):
        with Sim("live", "--speed", "30") as service:
            wait_for("a copy", lambda: len(service.ask("/api/history")) > 3)
            wait_for("a transfer", lambda: "file_xfer" in service.ask("/api/status"))
            wait_for("a peer to leave", lambda: service.ask("/api/status")["last_activity"].endswith("disconnected"))

    def test_refuses_what_it_does_not_understand(self):
        for arguments in (["run", "--bogus", "1"], ["run", "--scenario", "none"], ["run", "--speed"], ["walk"], []):
            done = subprocess.run([BIN / "quorbitd-sim", *arguments], capture_output=True, check=False)
            self.assertEqual((done.returncode, done.stdout), (2, b""))


if __name__ == "__main__":
    unittest.main()
