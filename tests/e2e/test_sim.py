#!/usr/bin/python3
"""The simulated service keeps the promises that the other checks build on."""
import signal
import stat
import subprocess
import time
import unittest
import urllib.error

from desktop import BIN, CONNECTION, Sim, wait_for


class SimulatedService(unittest.TestCase):
    def test_files_come_private_and_go_with_the_service(self):
        with Sim("still") as service:
            for name in ("ui-url", "ui-token"):
                self.assertEqual(stat.S_IMODE((CONNECTION / name).stat().st_mode), 0o600)
            self.assertEqual(service.end(), 0)
            self.assertEqual(list(CONNECTION.iterdir()), [])

    def test_a_later_service_keeps_its_files(self):
        with Sim("still") as first, Sim("paused") as second:
            first.end(signal.SIGINT)
            self.assertTrue(second.ask("/api/status")["paused"])
            self.assertEqual((CONNECTION / "ui-url").read_text().strip(), second.url)

    def test_answers_nobody_without_the_token(self):
        with Sim("still") as service:
            service.token = "guess"
            for path, method in (("/api/status", "GET"), ("/api/history", "DELETE")):
                with self.assertRaisesRegex(urllib.error.HTTPError, "401") as refusal:
                    service.ask(path, method)
                refusal.exception.close()

    def test_stores_settings_as_they_are(self):
        with Sim("sharing-off") as service:
            settings = service.ask("/api/settings") | {"kvm_enabled": True, "device_name": "新名字", "kvm_sensitivity": 0.1}
            self.assertEqual(service.ask("/api/settings", "PUT", settings), {"ok": True, "need_restart": True})
            self.assertEqual(service.ask("/api/settings"), settings)
            self.assertEqual(settings["kvm_layout_ver"], 9007199254740993)
            self.assertEqual(service.ask("/api/status")["device_name"], "新名字")
            settings["kvm_layout"]["77aa01fe"]["x"] = 5.5
            service.ask("/api/settings", "PUT", settings)
            self.assertEqual(service.ask("/api/settings")["kvm_layout_ver"], 9007199254740994)

    def test_things_happen_by_themselves(self):
        with Sim("live", "--speed", "30") as service:
            wait_for("a copy", lambda: len(service.ask("/api/history")) > 3, 3)
            wait_for("a transfer", lambda: "file_xfer" in service.ask("/api/status"), 3)
            wait_for("a peer to leave", lambda: service.ask("/api/status")["last_activity"].endswith("disconnected"), 5)

    def test_ends_at_once_while_requests_hang(self):
        with Sim("still", "--fault", "/api/history=hang") as service:
            with self.assertRaises(OSError):
                service.ask("/api/history")
            began = time.monotonic()
            self.assertEqual(service.end(), 0)
            self.assertLess(time.monotonic() - began, 1)

    def test_refuses_what_it_does_not_understand(self):
        for arguments in (["run", "--bogus", "1"], ["run", "--scenario", "none"], ["run", "--speed"], ["walk"], []):
            done = subprocess.run([BIN / "quorbitd-sim", *arguments], capture_output=True, check=False)
            self.assertEqual((done.returncode, done.stdout), (2, b""))


if __name__ == "__main__":
    unittest.main()
