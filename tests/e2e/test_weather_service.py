#!/usr/bin/python3
"""The real executable gets through whatever its service does: it answers its user meanwhile, shows the last good state,
and goes on by itself when the fault is over."""
import itertools
import unittest

import hostile
from desktop import press, wait_for
from weather import PATHS, Service, Witness, check_pulse


def batches(faults):
    """Four faults at a time, one for each path, and another first path each time."""
    names = iter(faults)
    for turn in itertools.count():
        some = list(itertools.islice(names, 4))
        if not some:
            return
        yield {PATHS[(turn + place) % 4]: name for place, name in enumerate(some)}


ROWS = [*batches(hostile.FAULTS), *({path: name} for name, (path, _, _) in hostile.ONLY.items()),
        *batches(hostile.HELD), *({"accept": name} for name in hostile.AT_ACCEPT)]


class Weather(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.service = cls.enterClassContext(Service())
        cls.start()

    @classmethod
    def start(cls):
        cls.program = Witness().open()

    @classmethod
    def tearDownClass(cls):
        cls.program.end()

    def through(self, *conditions):
        """One program gets through all rows; one that failed is replaced."""
        try:
            self.pass_through(self.service, self.program, *conditions)
        except Exception:
            self.service.calm()
            self.program.end(9)
            self.start()
            raise

    def pass_through(self, service, program, row):
        service.storm(row)
        counts = "met" if set(row.values()) & set(hostile.HELD) else "done"
        press(program.switch)
        taken = program.pulse(lambda: len(service.tell()[counts]) == len(row))
        check_pulse(self, taken, ", ".join(row.values()))
        for path in row if "accept" not in row else PATHS:
            outcome = hostile.ALL[row.get(path) or row["accept"]][0]
            allowed = {hostile.KEPT: [service.number], hostile.TAKEN: [service.bad],
                       hostile.EITHER: [service.number, service.bad]}[outcome]
            wait_for(f"{row} to be {outcome}", lambda: program.number(path) in allowed, 5)
        self.recovers(service, program)

    def recovers(self, service, program):
        self.assertEqual(service.tell()["strayed"], 0)
        service.calm()
        for path in PATHS:
            wait_for(f"the news of {path}", lambda: program.number(path) == service.number, 8)
        self.assertEqual(program.complaints(), "")


for row in ROWS:
    setattr(Weather, f"test_{', '.join(row.values())}", lambda self, row=row: self.through(row))

if __name__ == "__main__":
    unittest.main()
