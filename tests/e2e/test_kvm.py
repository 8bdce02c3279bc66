#!/usr/bin/python3
"""The tab of keyboard and mouse sharing in the real executable: by pointer, as a screen reader, and over a restart."""
import json
import shutil
import subprocess
import time
import unittest

from desktop import (Application, Atspi, BIN, HOME, Program, Sim, XembedTray, application_node, has, keys, node, nodes,
                     press, processes, tray_icons, wait_for, windows)

PATIENCE = 20  # seconds; the machine may be busy
OFFICE, LAPTOP = "77aa01fe", "10b91c33"


class Tab:
    """The tab in the open settings window of a running application."""

    def __init__(self, pid):
        self.pid = pid
        wait_for("the icon", tray_icons, PATIENCE)
        press(wait_for("the panel", self.settings_row, PATIENCE))
        self.window = wait_for("the window", lambda: windows("^Settings$", pid), PATIENCE)[0]
        # Tall, so that the pointer reaches everything without scrolling.
        subprocess.run(["xdotool", "windowmove", self.window, "100", "0", "windowsize", self.window, "620", "960"],
                       check=True)
        press(self.find("page tab", "KVM"))
        self.find("check box", "Share keyboard and mouse")

    def settings_row(self):
        if not (row := node(self.pid, "push button", "Settings…")):
            with Program(f"/proc/{self.pid}/exe") as again:
                again.process.wait(5)
        return row

    def find(self, role, name):
        return wait_for(f"{role} {name}", lambda: node(self.pid, role, name), PATIENCE)

    def shows(self, text):
        wait_for(text, lambda: node(self.pid, name=text), PATIENCE)

    def card(self, name):
        """The screen whose name begins so."""
        def found():
            return [each for each in nodes(application_node(self.pid), "push button")
                    if each.get_name().startswith(name + ",") or each.get_name().startswith(name + " (")]
        return wait_for(f"the screen of {name}", found, PATIENCE)[0]

    def middle(self, accessible):
        place = accessible.get_component_iface().get_extents(Atspi.CoordType.SCREEN)
        return place.x + place.width // 2, place.y + place.height // 2

    def click(self, accessible):
        x, y = self.middle(accessible)
        subprocess.run(["xdotool", "mousemove", str(x), str(y), "click", "1"], check=True)

    def drag(self, accessible, right, down):
        x, y = self.middle(accessible)
        steps = [("mousemove", str(x), str(y)), ("mousedown", "1")]
        steps += [("mousemove", str(x + right * i // 8), str(y + down * i // 8)) for i in range(1, 9)]
        for step in [*steps, ("mouseup", "1")]:
            subprocess.run(["xdotool", *step], check=True)
            time.sleep(0.03)

    def choose(self, picker, steps):
        """Opens a picker's menu with the pointer and takes the option so many steps further with the keyboard."""
        box = self.find("combo box", picker)
        self.click(box)
        wait_for("the menu", lambda: has(box, Atspi.StateType.EXPANDED), PATIENCE)
        keys(*["Down"] * steps, "Return")


class Sharing(unittest.TestCase):
    def start(self, scenario):
        self.enterContext(XembedTray())
        self.service = self.enterContext(Sim(scenario))
        return Tab(self.enterContext(Application()).pid)

    def saved(self, key, value):
        wait_for(f"{key} to be saved", lambda: self.service.ask("/api/settings").get(key) == value, PATIENCE)

    def layout(self):
        return self.service.ask("/api/settings")["kvm_layout"]

    def test_changes_every_option(self):
        tab = self.start("sharing-off")
        before = self.service.ask("/api/settings")
        press(tab.find("check box", "Share keyboard and mouse"))
        self.saved("kvm_enabled", True)
        tab.shows("Ready. This computer is the master")
        tab.shows("This takes effect once the Quorbit service restarts.")
        tab.click(tab.find("check box", "Swap ⌘ and Ctrl"))
        self.saved("kvm_swap_modifiers", True)
        for picker, steps, key, value in (("Switch delay", 1, "kvm_switch_delay_ms", 500),
                                          ("Dead corners", 3, "kvm_corner_size", 16),
                                          ("Pointer speed", 2, "kvm_sensitivity", 3.0),
                                          ("Switch delay", 1, "kvm_switch_delay_ms", 0)):
            tab.choose(picker, steps)
            self.saved(key, value)
        changed = {"kvm_enabled": True, "kvm_swap_modifiers": True, "kvm_switch_delay_ms": 0, "kvm_corner_size": 16,
                   "kvm_sensitivity": 3.0}
        self.assertEqual(self.service.ask("/api/settings"), before | changed)

    def test_arranges_screens_and_chooses_the_master(self):
        tab = self.start("still")
        before = self.layout()
        tab.drag(tab.card("Office Linux"), -30, 60)
        wait_for("the drop", lambda: self.layout()[OFFICE] != before[OFFICE], PATIENCE)
        layout = self.layout()
        self.assertLess(layout[OFFICE]["x"], before[OFFICE]["x"])
        self.assertGreater(layout[OFFICE]["y"], before[OFFICE]["y"])
        self.assertEqual(min(each["y"] for each in layout.values()), 0)

        tab.click(tab.card("Travel laptop"))
        self.saved("kvm_master_id", LAPTOP)
        tab.shows("Ready to be driven from Travel laptop")
        keys("Right")  # the click gave the screen the keyboard
        wait_for("the step", lambda: self.layout()[LAPTOP]["x"] == layout[LAPTOP]["x"] + 100, PATIENCE)
        press(tab.card("Office Linux"))
        self.saved("kvm_master_id", OFFICE)
        tab.shows("The keyboard and mouse of Office Linux drive the others.")
        wait_for("the mark", lambda: has(tab.card("Office Linux"), Atspi.StateType.SELECTED), PATIENCE)


class Permission(unittest.TestCase):
    """An installed application brings its own service, which keeps what it knows over a restart."""

    def setUp(self):
        prefix = HOME / "prefix"
        for folder in ("bin", "libexec/quorbit"):
            (prefix / folder).mkdir(parents=True)
        self.addCleanup(shutil.rmtree, prefix)
        self.executable = shutil.copy2(BIN / "quorbit", prefix / "bin/quorbit")
        shutil.copy2(BIN / "quorbitd-sim", prefix / "libexec/quorbit/quorbitd")
        self.state = prefix / "state.json"
        self.environment = {"QUORBITD_SIM_SCENARIO": "no-permission", "QUORBITD_SIM_SPEED": "4",
                            "QUORBITD_SIM_STATE": str(self.state)}

    @unittest.skipIf(time.clock_gettime(time.CLOCK_MONOTONIC) < 330, "the computer has just booted and would heal")
    def test_is_asked_for_and_reaches_the_service_by_a_restart(self):
        self.enterContext(XembedTray())
        first = self.enterContext(Application(executable=self.executable, env=self.environment))
        tab = Tab(first.pid)
        tab.shows("Accessibility is not allowed yet")
        tab.shows("Allow accessibility below to start sharing")
        tab.choose("Dead corners", 1)
        press(tab.card("Office Linux"))
        tab.shows("The keyboard and mouse of Office Linux drive the others.")
        press(tab.find("push button", "Allow…"))
        tab.shows("Accessibility needs a restart")
        press(tab.find("push button", "Restart"))
        first.process.wait(PATIENCE)
        second = wait_for("the new instance", lambda: processes(self.executable), PATIENCE)[0]
        try:
            tab = Tab(second)
            tab.shows("Accessibility is allowed")
            tab.shows("Ready to be driven from Office Linux")
            self.assertEqual(json.loads(self.state.read_text())["settings"]["kvm_corner_size"], 64)
            self.assertIsNone(node(second, "push button", "Restart"))
        finally:
            subprocess.run(["kill", str(second)], check=True)
            wait_for("its end", lambda: not processes(self.executable), PATIENCE)


if __name__ == "__main__":
    unittest.main()
