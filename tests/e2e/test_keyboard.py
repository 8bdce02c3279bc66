#!/usr/bin/python3
"""The real executable by keyboard alone; the accessibility tree tells where the focus is, pictures that it is seen."""
import subprocess
import unittest

from desktop import Application, Sim, StatusNotifierTray, keys, stays, wait_for
from reader import screen

WIDTH = 1280  # of the screen
RING = 3  # how far a control's ring may reach beyond it
SEEN = 30  # differing pixels, more than a text cursor has


class Keyboard(unittest.TestCase):
    def start(self, scenario="full"):
        tray = self.enterContext(StatusNotifierTray())
        self.service = self.enterContext(Sim(scenario, "--speed", "10"))
        self.application = self.enterContext(Application())
        wait_for("the item", lambda: tray.items)
        tray.ask("Activate")
        wait_for("the panel", lambda: self.focused() and self.focused().role == "panel")

    def screen(self):
        return screen(self.application.pid)

    def focused(self):
        # What holds the place of the focus comes before it.
        places = [each for each in self.screen() if "focused" in each.states]
        return places[-1] if places else None

    def stops(self):
        """What the Tab key has to reach, in the order of reading."""
        return [each for each in self.screen() if each.role != "list item" and "focusable" in each.states
                and "enabled" in each.states and each.role not in ("panel", "dialog", "alert")]

    def go(self, key):
        """Presses a key that moves the focus and tells where it went."""
        before = self.focused()
        keys(key)
        return wait_for(f"the focus to leave {before} by {key}", lambda: self.moved_from(before), 3)

    def moved_from(self, before):
        now = self.focused()
        return now if now and (before is None or now.node != before.node) else None

    def go_to(self, name, key="Tab"):
        for _ in range(30):
            if self.go(key).name == name:
                return
        self.fail(f"{key} does not lead to {name}")

    def walk(self, view):
        """Goes round a view in both directions."""
        stops = self.stops()
        forward = [self.go("Tab")]
        shown = picture()
        for _ in stops:
            place = forward[-1]
            self.assert_inside(view, place)
            forward.append(self.go("Tab"))
            before, shown = shown, picture()
            with self.subTest(view=view, control=str(place)):
                self.assertGreater(different(before, shown, place.place), SEEN, "the focus is not to be seen")
        # A list is one stop, at one of its rows.
        forward = [place.parent if place.role == "list item" else place for place in forward]
        names = [place.name for place in stops]
        first = names.index(forward[0].name)
        with self.subTest(view=view):
            self.assertEqual([place.name for place in forward[:-1]], names[first:] + names[:first])
            self.assertEqual(forward[-1].name, forward[0].name)
            backward = [self.go("shift+Tab") for _ in stops]
            backward = [place.parent if place.role == "list item" else place for place in backward]
            self.assertEqual([place.name for place in backward], [place.name for place in reversed(forward[:-1])])

    def assert_inside(self, view, place):
        above = place.parent
        while above and above.place and above.role != "application":
            with self.subTest(view=view, control=str(place), inside=str(above)):
                self.assertTrue(contains(above.place, place.place), f"{box(place.place)} in {box(above.place)}")
            above = above.parent

    def test_every_control_is_reached_and_seen(self):
        self.start()
        self.walk("panel")
        self.go_to("Settings…")
        keys("Return")
        wait_for("the window", lambda: self.showing("page tab"))
        tabs = [each.name for each in self.screen() if each.role == "page tab"]
        for number, tab in enumerate(tabs):
            if number:
                self.go_to(tabs[number - 1])
                self.assertEqual(self.go("Right").name, tab)
            stays(lambda: True, 0.5)
            self.walk(tab)
        self.go_to(tabs[-1])
        for _ in tabs[1:]:
            self.go("Left")

    def test_the_focus_comes_back(self):
        self.start("still")
        self.go_to("Settings…")
        keys("space")
        wait_for("the window", lambda: self.showing("page tab"))
        # tab, control, key that opens, what opens, whether the Tab key goes round in it
        table = [
            ("Devices", "Remove, Office Linux", "space", "alert", True),
            ("Devices", "Add a computer", "Return", "dialog", True),
            ("About", "Interface language", "space", "popup menu", False),
            ("About", "Interface language", "Down", "popup menu", False),
        ]
        for tab, control, key, opened, has_stops in table:
            with self.subTest(control=control, key=key):
                while not any("selected" in each.states for each in self.screen() if each.name == tab):
                    keys("ctrl+Tab")
                    stays(lambda: True, 0.3)
                self.go_to(control)
                keys(key)
                wait_for(opened, lambda opened=opened: self.showing(opened))
                if has_stops:
                    self.walk(opened)
                keys("Escape")
                wait_for("the closing", lambda opened=opened: not self.showing(opened))
                wait_for("the focus", lambda control=control: self.focused() and self.focused().name == control, 3)

    def test_types_a_name_while_the_service_is_polled(self):
        self.start("still")
        self.go_to("Settings…")
        keys("Return")
        self.go_to("Device name")
        keys("ctrl+a", "D", "e")
        stays(lambda: self.focused().name == "Device name", 2.5)
        keys("s", "k", "Return")
        wait_for("the new name", lambda: self.service.ask("/api/settings")["device_name"] == "Desk")

    def test_pairs_and_removes(self):
        self.start("still")
        self.go_to("Settings…")
        keys("Return")
        wait_for("the window", lambda: self.showing("page tab"))
        keys("ctrl+Tab", "ctrl+shift+Tab")
        while not self.showing("push button", "Add a computer"):
            keys("ctrl+Tab")
            stays(lambda: True, 0.3)
        self.go_to("Add a computer")
        keys("space")
        self.go("Tab")
        self.assertEqual(self.go("Right").name, "Enter a PIN")
        for text in ("desk", "482913"):
            self.go("Tab")
            keys(*text)
        wait_for("the button", lambda: any("enabled" in each.states for each in self.showing("push button", "Pair")))
        self.go_to("Pair")
        keys("space")
        wait_for("the new device", lambda: self.showing("push button", "Remove, desk"))
        wait_for("the focus", lambda: self.focused() and self.focused().name == "Add a computer", 3)

        self.go_to("Remove, desk", "shift+Tab")
        keys("space")
        wait_for("the alert", lambda: self.showing("alert"))
        self.go_to("Remove")
        keys("space")
        wait_for("the removal", lambda: not self.showing("push button", "Remove, desk"))
        wait_for("the focus", lambda: self.focused() and "showing" in self.focused().states, 3)

    def showing(self, role, name=None):
        return [each for each in self.screen() if each.role == role and name in (None, each.name)]


def picture():
    """The screen, three bytes a pixel."""
    return subprocess.run(["import", "-silent", "-window", "root", "-depth", "8", "rgb:-"], capture_output=True,
                          check=True).stdout


def different(one, other, area):
    """How many pixels in and around that area differ."""
    count = 0
    for y in range(area.y - RING, area.y + area.height + RING):
        row = slice(3 * (y * WIDTH + area.x - RING), 3 * (y * WIDTH + area.x + area.width + RING))
        before, after = one[row], other[row]
        if before != after:
            count += sum(before[i:i + 3] != after[i:i + 3] for i in range(0, len(before), 3))
    return count


def box(place):
    return place.x, place.y, place.width, place.height


def contains(outer, inner):
    return (outer.x <= inner.x and outer.y <= inner.y and inner.x + inner.width <= outer.x + outer.width
            and inner.y + inner.height <= outer.y + outer.height)


if __name__ == "__main__":
    unittest.main()
