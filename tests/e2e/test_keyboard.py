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

    def open_settings(self, key):
        self.go_to("Settings…")
        keys(key)
        wait_for("the window", lambda: self.showing("page tab"))

    def show_tab(self, tab):
        while not any("selected" in each.states for each in self.showing("page tab", tab)):
            keys("ctrl+Tab")
            stays(lambda: True, 0.3)

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
        names = [place.name for place in stops]
        seen = names_of(forward)
        first = names.index(seen[0])
        with self.subTest(view=view):
            self.assertEqual(seen, names[first:] + names[:first] + seen[:1])
            self.assertEqual(names_of([self.go("shift+Tab") for _ in stops]), seen[-2::-1])

    def assert_inside(self, view, place):
        above = place.parent
        while above and above.place and above.role != "application":
            with self.subTest(view=view, control=str(place), inside=str(above)):
                self.assertTrue(contains(above.place, place.place), "it sticks out")
            above = above.parent

    def test_every_control_is_reached_and_seen(self):
        self.start()
        self.walk("panel")
        self.open_settings("Return")
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
        self.open_settings("space")
        # tab, control, key that opens, what opens, whether the Tab key goes round in it
        for tab, control, key, opened, has_stops in (("Devices", "Remove, Office Linux", "space", "alert", True),
                                                     ("Devices", "Add a computer", "Return", "dialog", True),
                                                     ("About", "Interface language", "space", "popup menu", False),
                                                     ("About", "Interface language", "Down", "popup menu", False)):
            with self.subTest(control=control, key=key):
                self.show_tab(tab)
                self.go_to(control)
                keys(key)
                wait_for(opened, lambda opened=opened: self.showing(opened))
                if has_stops:
                    self.walk(opened)
                keys("Escape")
                wait_for("the closing", lambda opened=opened: not self.showing(opened))
                wait_for("the focus", lambda control=control: self.focused() and self.focused().name == control, 3)

    def test_what_has_the_focus_may_go(self):
        self.start("still")
        self.open_settings("Return")
        keys("ctrl+Tab", "ctrl+shift+Tab")
        self.show_tab("Devices")
        self.go_to("Remove, Office Linux")
        keys("space")
        wait_for("the alert", lambda: self.showing("alert"))
        self.go_to("Remove")
        keys("space")
        wait_for("the removal", lambda: not self.showing("push button", "Remove, Office Linux"))
        wait_for("the focus", lambda: self.focused() and "showing" in self.focused().states, 3)

    def showing(self, role, name=None):
        return [each for each in self.screen() if each.role == role and name in (None, each.name)]


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
