#!/usr/bin/python3
"""The real executable gets through whatever its service does: it answers its user meanwhile, shows the last good state,
and goes on by itself when the fault is over."""
import resource
import unittest
from pathlib import Path

import hostile
from desktop import press, wait_for
from weather import PATHS, SANITIZED, Service, Witness, check_pulse


def batches(faults):
    """Four faults at a time, one for each path, and another first path each time."""
    names = list(faults)
    for turn, start in enumerate(range(0, len(names), 4)):
        yield {PATHS[(turn + place) % 4]: name for place, name in enumerate(names[start:start + 4])}


ROWS = [*batches(hostile.FAULTS), *({path: name} for name, (path, _, _) in hostile.ONLY.items()),
        *batches(hostile.HELD), *({"accept": name} for name in hostile.AT_ACCEPT)]

SHOWN_IN = {"10,000 peers": "Overview", "10,000 devices": "Devices", "400,000 entries": "Sync"}


class Weather(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.service = cls.enterClassContext(Service())
        cls.program = cls.enterClassContext(Witness()).open()

    def through(self, row):
        """One program gets through all rows."""
        service, program = self.service, self.program
        memory = program.memory()
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
        for name in set(row.values()) & set(hostile.ONLY):
            for tab in ("KVM", SHOWN_IN[name]):
                press(program.tabs[tab])
                check_pulse(self, program.pulse(), f"{tab} with {name}")
            if name.startswith("10,000"):
                program.wait("label", "and 9800 more")
        self.recovers()
        if "400,000 entries" in row.values() and not SANITIZED:
            wait_for("its memory to come back", lambda: program.memory() < memory + (8 << 20), 8)

    def recovers(self):
        self.assertEqual(self.service.tell()["strayed"], 0)
        self.service.calm()
        for path in PATHS:
            self.program.shows(self.service.number, path)
        self.assertEqual(self.program.complaints(), "")

    def test_gone_and_back(self):
        for name, port in (("at the same port", self.service.port), ("elsewhere", 0)):
            with self.subTest(name):
                self.service.storm(dict.fromkeys(PATHS, "half a body"))
                press(self.program.switch)
                self.program.pulse(lambda: len(self.service.tell()["met"]) == 4)
                self.service.close()
                check_pulse(self, self.program.pulse(least=3), f"gone, and back {name}")
                self.assertEqual([self.program.number(path) for path in PATHS], [self.service.number] * 4)
                self.service.listen(port)
                self.recovers()

    def test_commands_while_replies_hang(self):
        """The user's commands do not queue behind what hangs."""
        self.service.storm(dict.fromkeys(PATHS, "never answered"))
        for count in range(1, 6):
            press(self.program.switch)
            wait_for("the command", lambda: len(self.service.tell()["commands"]) == count, 3)
        self.recovers()

    def test_little_memory(self):
        size = int(Path(f"/proc/{self.program.pid}/statm").read_text().split()[0]) * resource.getpagesize()
        if size > 1 << 40:
            self.skipTest("a sanitizer reserves more memory than there is")
        before = resource.prlimit(self.program.pid, resource.RLIMIT_AS)
        resource.prlimit(self.program.pid, resource.RLIMIT_AS, (size + (512 << 20), before[1]))
        floods = ("body endless", "body over the limit", "chunks endless", "gzip of much")
        self.through(dict(zip(PATHS, floods)))
        resource.prlimit(self.program.pid, resource.RLIMIT_AS, before)


for row in ROWS:
    setattr(Weather, f"test_{', '.join(row.values())}", lambda self, row=row: self.through(row))

if __name__ == "__main__":
    unittest.main()
