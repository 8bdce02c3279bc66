#!/usr/bin/python3
"""One instance for each user: the real executable ends cleanly, and another takes over however it ended."""
import signal
import time
import unittest

from desktop import HOME, QUITTING, Application
from internet import never_answer_for_names


class Instance(unittest.TestCase):
    def setUp(self):
        # Longer than the address of a socket may be.
        runtime = HOME / ("d" * 120)
        runtime.mkdir(mode=0o700, exist_ok=True)
        self.env = {"XDG_RUNTIME_DIR": str(runtime)}
        self.first = self.start()

    def start(self):
        app = self.enterContext(Application(self.env))
        app.open_panel()
        return app

    @unittest.skipIf(QUITTING > 1, "with leaks to be looked for, it ends later than the other waits")
    def test_takes_over_from_one_that_ends(self):
        """The look-up of a name, which nothing can cut short, holds it up."""
        began = time.monotonic()
        for _ in range(2):
            self.first.process.send_signal(signal.SIGTERM)
        with Application(self.env) as second:
            self.assertEqual(self.first.process.wait(10 + QUITTING), 0)
            self.assertLess(time.monotonic() - began, QUITTING)
            second.open_panel()

    def test_takes_over_from_one_that_does_not_answer(self):
        for strike in (signal.SIGKILL, signal.SIGSTOP):
            with self.subTest(strike):
                self.first.process.send_signal(strike)
                second = self.start()
                self.assertEqual(self.first.process.wait(1), -signal.SIGKILL)
                self.first = second


if __name__ == "__main__":
    SILENCE = never_answer_for_names()
    unittest.main()
