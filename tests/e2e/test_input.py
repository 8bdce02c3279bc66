#!/usr/bin/python3
"""The real executable by keyboard alone; the accessibility tree tells where the focus is, pictures that it is seen."""
import subprocess
import unittest

from desktop import QUITTING, Desk, extents, keys, pointer, states, stays, wait_for
from reader import screen

WIDTH = 1280  # of the screen
RING = 3  # how far a control's ring may reach beyond it
SEEN = 30  # differing pixels, more than a text cursor has


class Keyboard(Desk):
    def start(self, scenario):
        super().start(scenario, "--speed", "10")
        wait_for("the focus", lambda: self.focused() and self.focused().role == "panel")

    def focused(self):
        # What holds the place of the focus comes before it.
        return ([None] + [each for each in screen(self.app.pid) if "focused" in each.states])[-1]

    def go(self, key):
        """Presses a key that moves the focus and tells where it went."""
        before = self.focused()

        def moved():
            now = self.focused()
            return now if now and (before is None or now.node != before.node) else None
        keys(key)
        return wait_for(f"the focus to leave {before} by {key}", moved)

    def go_to(self, name):
        for _ in range(30):
            if self.go("Tab").name == name:
                return
        self.fail(f"the Tab key does not lead to {name}")

    def open_settings(self):
        self.go_to("Settings…")
        keys("Return")
        self.app.wait("page tab")

    def show_tab(self, tab):
        while "selected" not in states(self.app.find("page tab", tab)):
            keys("ctrl+Tab")
            stays(lambda: True, 0.3)

    def walk(self, view):
        """Goes round a view in both directions."""
        stops = [each.name for each in screen(self.app.pid) if {"focusable", "enabled"} <= each.states
                 and each.role not in ("list item", "panel", "dialog", "alert")]  # in the order of reading
        forward = [self.go("Tab")]
        shown = picture()
        for _ in stops:
            place = forward[-1]
            with self.subTest(view=view, control=str(place)):
                for above in place.above():
                    self.assertTrue(above.role == "application" or contains(above.place, place.place),
                                    f"it sticks out of {above}")
            forward.append(self.go("Tab"))
            before, shown = shown, picture()
            with self.subTest(view=view, control=str(place)):
                self.assertGreater(different(before, shown, place.place), SEEN, "the focus is not to be seen")
        seen = names_of(forward)
        first = stops.index(seen[0])
        with self.subTest(view=view):
            self.assertEqual(seen, stops[first:] + stops[:first] + seen[:1])
            self.assertEqual(names_of([self.go("shift+Tab") for _ in stops]), seen[-2::-1])

    def test_every_control_is_reached_and_seen(self):
        self.start("full")
        self.walk("panel")
        self.open_settings()
        tabs = [tab.get_name() for tab in self.app.all("page tab")]
        for before, tab in zip([None, *tabs], tabs):
            if before:
                self.go_to(before)
                self.assertEqual(self.go("Right").name, tab)
            stays(lambda: True, 0.5)
            self.walk(tab)

    def test_the_focus_comes_back(self):
        self.start("still")
        self.open_settings()
        # tab, control, key that opens, what opens, whether the Tab key goes round in it
        for tab, control, key, opened, has_stops in (("Devices", "Remove, Office Linux", "space", "alert", True),
                                                     ("Devices", "Add a computer", "Return", "dialog", True),
                                                     ("About", "Interface language", "space", "popup menu", False),
                                                     ("About", "Interface language", "Down", "popup menu", False)):
            with self.subTest(control=control, key=key):
                self.show_tab(tab)
                self.go_to(control)
                keys(key)
                self.app.wait(opened)
                if has_stops:
                    self.walk(opened)
                keys("Escape")
                self.app.wait_gone(opened)
                wait_for("the focus", lambda control=control: self.focused() and self.focused().name == control)

    def test_what_has_the_focus_may_go(self):
        self.start("still")
        self.open_settings()
        self.show_tab("Devices")
        self.go_to("Remove, Office Linux")
        keys("space")
        self.app.wait("alert")
        self.go_to("Remove")
        keys("space")
        self.app.wait_gone("push button", "Remove, Office Linux")
        wait_for("the focus", self.focused)

    def test_quits(self):
        self.start("still")
        keys("ctrl+q")
        self.assertEqual(self.app.process.wait(4 + QUITTING), 0)


class Pointer(Desk):
    def test_opens_a_menu(self):
        self.start("still")
        self.app.open_tab("About")
        place = extents(self.app.wait("combo box", "Interface language"))
        pointer((place.x, place.y, place.width, place.height), "click", 1)
        self.app.wait("popup menu")
        keys("Down", "Return")
        self.app.wait("push button", "Restart now")


def names_of(places):
    """A list is one stop, at one of its rows."""
    return [(place.parent if place.role == "list item" else place).name for place in places]


def picture():
    """The screen, three bytes a pixel."""
    return subprocess.run(["import", "-silent", "-window", "root", "-depth", "8", "rgb:-"], capture_output=True,
                          check=True).stdout


def different(one, other, area):
    """How many pixels in and around that area differ."""
    count = 0
    for y in range(area.y - RING, area.y + area.height + RING):
        row = range(3 * (y * WIDTH + area.x - RING), 3 * (y * WIDTH + area.x + area.width + RING), 3)
        count += sum(one[i:i + 3] != other[i:i + 3] for i in row)
    return count


def contains(outer, inner):
    return (outer.x <= inner.x and outer.y <= inner.y and inner.x + inner.width <= outer.x + outer.width
            and inner.y + inner.height <= outer.y + outer.height)


if __name__ == "__main__":
    unittest.main()
