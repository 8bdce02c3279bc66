#!/usr/bin/python3
"""The real executable by keyboard and by pointer; the accessibility tree tells where the focus is, pictures that it is
seen, and the service's log that nothing else was worked."""
import subprocess
import unittest

from desktop import QUITTING, Atspi, Desk, GLib, click, keys, pixels, states, stays, wait_for, windows, xdotool
from reader import Announcements, screen, with_those_above

WIDTH = 1280  # of the screen
RING = 3  # how far a control's ring may reach beyond it
SEEN = 30  # differing pixels, more than a text cursor has


class Hands(Desk):
    def start(self, scenario, *options):
        # On a busy computer a key may stay down for so long that it would repeat.
        subprocess.run(["xset", "r", "off"], check=True)
        super().start(scenario, *(options or ("--speed", "10")))
        self.moves = self.enterContext(Announcements(self.app.pid, ["object:state-changed:focused"]))
        wait_for("the focus", lambda: self.focused() and self.focused().role == "panel")

    def focused(self):
        # What holds the place of the focus comes before it.
        return ([None] + [each for each in screen(self.app.pid) if "focused" in each.states])[-1]

    def go(self, key):
        """Presses a key that moves the focus and tells where it went."""
        def arrived():
            try:
                return next((node for _, node in reversed(self.moves.heard) if "focused" in states(node)), None)
            except GLib.Error:
                return None  # it has gone meanwhile
        self.moves.heard.clear()
        keys(key)
        return with_those_above(wait_for(f"the focus to move by {key}", arrived))

    def go_to(self, name):
        for _ in range(30):
            if names_of([self.go("Tab")]) == [name]:
                return
        self.fail(f"the Tab key does not lead to {name}")

    def open_settings(self):
        keys("ctrl+comma")
        self.app.wait("page tab")
        stays(lambda: True, 0.5)

    def click(self, role, name):
        click(self.app.wait(role, name))
        stays(lambda: True, 0.3)

    def is_at_rest(self):
        """Whether the window itself has the keyboard, and no key does anything."""
        before = self.service.commands()
        keys("x", "space", "Up", "Right", "Delete")
        return (stays(lambda: self.service.commands() == before, 0.5) and not self.app.find("popup menu")
                and self.focused().role in ("panel", "dialog", "alert"))


class Keyboard(Hands):
    def walk(self, view):
        """Goes round a view in both directions."""
        stops = [each.name for each in screen(self.app.pid) if {"focusable", "enabled"} <= each.states
                 and each.role not in ("list item", "panel", "dialog", "alert")]  # in the order of reading
        forward = [self.go("Tab")]
        shown = pixels()
        for _ in stops:
            place = forward[-1]
            with self.subTest(view=view, control=str(place)):
                for above in place.above():
                    self.assertTrue(above.role == "application" or contains(above.place, place.place),
                                    f"it sticks out of {above}")
            forward.append(self.go("Tab"))
            before, shown = shown, pixels()
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
        for tab in [tab.get_name() for tab in self.app.all("page tab")]:
            self.app.open_tab(tab)
            stays(lambda: True, 0.5)
            self.walk(tab)

    def test_what_opens_takes_the_keyboard_and_gives_it_back(self):
        self.start("still")
        self.open_settings()
        for tab, control, key, opened in (("Devices", "Remove, Office Linux", "space", "alert"),
                                          ("Devices", "Add a computer", "Return", "dialog"),
                                          ("About", "Interface language", "space", "popup menu"),
                                          ("About", "Interface language", "Down", "popup menu")):
            with self.subTest(control=control, key=key):
                self.app.open_tab(tab)
                self.go_to(control)
                keys(key)
                self.app.wait(opened)
                if opened != "popup menu":
                    self.walk(opened)
                    keys("ctrl+Tab", "ctrl+Prior", "ctrl+w")
                    self.assertTrue(stays(lambda opened=opened: self.app.find(opened), 0.5))
                    self.assertIn("selected", states(self.app.find("page tab", tab)))
                keys("Escape")
                self.app.wait_gone(opened)
                wait_for("the focus", lambda control=control: self.focused() and self.focused().name == control)
        self.assertEqual(self.service.commands(), [])
        self.app.open_tab("Devices")
        self.app.wait("push button", "Add a computer")
        for control in ("Remove, Office Linux", "Remove"):
            self.go_to(control)
            keys("space")
            stays(lambda: not self.app.find("alert"), 1)
        self.app.wait_gone("push button", "Remove, Office Linux")
        self.assertTrue(self.is_at_rest(), "what had the focus has gone")
        self.assertEqual(self.go("Tab").name, "Travel laptop")
        self.app.press("push button", "Add a computer")
        self.app.wait("dialog")
        keys("alt+F4")  # of the window manager
        wait_for("the window's end", lambda: not windows("Settings", self.app.pid))

    def test_shortcuts(self):
        self.start("still")
        keys("Escape")
        wait_for("the panel's end", lambda: not windows("Quorbit", self.app.pid))
        self.tray.open_panel(self.app)
        self.open_settings()
        self.assertTrue(self.is_at_rest())
        for key, tab in (("ctrl+Tab", "Sync"), ("ctrl+Next", "KVM"), ("ctrl+Prior", "Sync"),
                         ("ctrl+shift+Tab", "Overview")):
            self.assertEqual(self.go(key).name, tab)
        keys("ctrl+w")
        wait_for("the window's end", lambda: not windows("Settings", self.app.pid))

    def test_quits(self):
        for way in (lambda: keys("ctrl+q"), lambda: self.app.press("push button", "Quit Quorbit")):
            self.start("still")
            way()
            self.assertEqual(self.app.process.wait(4 + QUITTING), 0)
            self.doCleanups()

    def test_keys_that_move_within(self):
        """What is one stop of the Tab key, and up and down the panel."""
        self.start("full")
        # tab, control, keys, and the name or the numbers of what has the focus then
        for tab, control, moves in (
                (None, None, (("Down", "Pause syncing"),
                              ("Down", "ssh deploy@10.0.0.12 'systemctl status quorbitd', Office Linux"),
                              ("Up", "Pause syncing"))),
                ("Overview", "Overview", (("End", "About"), ("Left", "Devices"), ("Home", "Overview"),
                                          ("Right", "Sync"))),
                ("Sync", "Clipboard history", (("Down", [1]), ("End", [11]), ("Up", [10]), ("Home", [0]),
                                               ("Next", range(2, 12)), ("Prior", [0])))):
            if tab:
                self.app.open_tab(tab)
                self.go_to(control)
            for key, wanted in moves:
                with self.subTest(control=control, key=key):
                    place = self.go(key)
                    self.assertIn(place.name if tab != "Sync" else place.node.get_index_in_parent(),
                                  [wanted] if isinstance(wanted, str) else wanted)
        for key, number in (("Return", 11), ("space", 12)):
            with self.subTest("the chosen row stays chosen while it is put first, and another is", key=key):
                chosen = self.go("Down").name
                keys(key)
                wait_for("the entry", lambda: self.service.commands()[-1:] == [f"POST /api/history/apply/{number}"])
                wait_for("its place", lambda: self.app.find("list item", chosen).get_index_in_parent() == 0)
                self.service.ask("/api/history/apply/8", "POST")
                wait_for("its place", lambda: self.app.find("list item", chosen).get_index_in_parent() == 1)
                self.assertEqual(self.focused().name, chosen)

    def test_a_held_key_acts_once(self):
        self.start("still", "--delay", "/api/settings=1000")
        subprocess.run(["xset", "r", "rate", "150", "50"], check=True)
        # A key that steps waits for the answer.
        for tab, role, name, key, asked in (("Sync", "spin button", "Largest file", "Up", 1),
                                            ("Sync", "check box", "Text", "space", 1),
                                            ("Sync", "check box", "Images", "Return", 1),
                                            ("Sync", "list", "Clipboard history", "Return", 1),
                                            ("Overview", "text", "Device name", "Return", 1),
                                            ("KVM", "combo box", "Switch delay", "Return", 0)):
            with self.subTest(control=name, key=key):
                self.app.open_tab(tab)
                control = self.app.wait(role, name)
                Atspi.Component.grab_focus(control)
                if role == "text":
                    keys("x")
                before, shown = len(self.service.commands()), "checked" in states(control)
                xdotool("keydown", key, "sleep", 0.4, "keyup", key)
                self.assertEqual("checked" in states(control), shown, "no answer has come")
                stays(lambda: True, 1.5)
                self.assertEqual(len(self.service.commands()) - before, asked)


class Pointer(Hands):
    def test_a_click_leaves_the_keyboard_at_rest(self):
        self.start("still")
        self.click("push button", "Settings…")
        self.app.wait("page tab")
        self.assertTrue(self.is_at_rest(), "the window has just opened")
        for tab, first in (("Sync", "Text"), ("KVM", "Share keyboard and mouse"), ("About", "Check now"),
                           ("Overview", "Device name")):
            with self.subTest(tab=tab):
                self.click("page tab", tab)
                self.assertTrue(self.is_at_rest())
                self.assertEqual(self.go("Tab").name, first)
        self.assertEqual(self.go("shift+Tab").name, "Overview")
        self.click("page tab", "Sync")
        self.assertTrue(self.is_at_rest(), "the tab that had the ring was left by a click")
        without = pixels()
        place = self.go("Tab").place
        self.assertGreater(different(without, pixels(), place), SEEN)
        self.click("page tab", "Sync")
        self.assertEqual(different(without, pixels(), place), 0, "a click leaves no ring")
        self.assertTrue(self.is_at_rest())

    def test_a_sheet_is_typed_into(self):
        self.start("still")
        self.app.open_tab("Devices")
        self.click("push button", "Add a computer")
        self.click("radio button", "Enter a PIN")
        wait_for("the field", lambda: self.focused().role == "text")
        keys("a", "b")
        wait_for("what was typed", lambda: self.focused().text == "ab")
        self.click("radio button", "Show a PIN")
        self.app.wait_gone("text", "PIN")
        self.assertTrue(self.is_at_rest())


def names_of(places):
    """A list is one stop, at one of its rows."""
    return [(place.parent if place.role == "list item" else place).name for place in places]


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
