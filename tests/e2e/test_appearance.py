#!/usr/bin/python3
"""The real executable follows the desktop while it runs: colours, contrast, font and motion.

Leaves pictures in the folder that APPEARANCE_PICTURES names, when it is set.
"""
import os
import subprocess
import unittest
from pathlib import Path

from desktop import (HOME, Application, Atspi, GLib, Portal, Sim, XembedTray, application_node, geometry, has, node,
                     nodes, picture, pointer, press, stays, tray_icons, wait_for, windows)

ACCENT = (0.57, 0.25, 0.67)
DESKTOP_GROUP = "org.gnome.desktop.interface"


class Desktop(Portal):
    """A portal that serves a second group of settings, GNOME's own."""

    def __init__(self, **values):
        self.own = {}
        super().__init__(**values)

    def _call(self, sender, method, arguments):
        if method == "ReadAll":
            return GLib.Variant("(a{sa{sv}})", ({self.APPEARANCE: self.values, DESKTOP_GROUP: self.own},))
        return super()._call(sender, method, arguments)

    def set_own(self, key, value):
        self.own[key] = value
        self.emit("SettingChanged", GLib.Variant("(ssv)", (DESKTOP_GROUP, key, value)))


def keep(name):
    if folder := os.environ.get("APPEARANCE_PICTURES"):
        picture(Path(folder) / f"{name}.png")


def pixels(window):
    """The window's pixels as a list of rows of (red, green, blue)."""
    text = subprocess.run(["import", "-silent", "-window", window, "-depth", "8", "rgb:-"], capture_output=True,
                          check=True).stdout
    width = geometry(window)[2]
    row = 3 * width
    return [[tuple(text[i:i + 3]) for i in range(start, start + row, 3)] for start in range(0, len(text), row)]


def luminance(colour):
    parts = [c / 255 / 12.92 if c / 255 <= 0.04045 else ((c / 255 + 0.055) / 1.055) ** 2.4 for c in colour]
    return 0.2126 * parts[0] + 0.7152 * parts[1] + 0.0722 * parts[2]


class Appearance(unittest.TestCase):
    def setUp(self):
        self.enterContext(XembedTray())
        # A PIN that never comes keeps a progress wheel turning.
        self.enterContext(Sim("still", "--fault", "/api/pair/show=hang"))

    def start(self):
        self.application = self.enterContext(Application())
        x, y, width, height = geometry(wait_for("the icon", tray_icons)[0])
        pointer(x + width // 2, y + height // 2)
        press(wait_for("the settings row", lambda: self.row("Settings…")))
        self.window = wait_for("the window", lambda: windows("^Settings$", self.application.pid))[0]
        wait_for("the tabs", lambda: self.tab("Overview"))

    def row(self, name):
        return node(self.application.pid, "push button", name)

    def tab(self, name):
        return node(self.application.pid, "page tab", name)

    def background(self):
        return pixels(self.window)[-3][4]

    def is_dark(self):
        return luminance(self.background()) < 0.05

    def has_hue(self):
        """Whether the chosen tab is in the accent's purple: red and blue well above green."""
        return any(red > green + 40 and blue > green + 40 for row in pixels(self.window)[:90]
                   for red, green, blue in row)

    def strongest_edge(self):
        """How far the darkest pixel down the left edge of the first card is from the window's background."""
        rows = pixels(self.window)
        base = luminance(rows[-3][4])
        return max(abs(luminance(rows[y][x]) - base) for y in range(130, 170) for x in range(15, 26))

    def row_height(self):
        fields = nodes(application_node(self.application.pid), "text", "Device name")
        return fields[0].get_component_iface().get_extents(Atspi.CoordType.SCREEN).height if fields else 0

    def nothing_sticks_out(self):
        """Every text that is shown lies inside its window from side to side."""
        left, _, width, _ = geometry(self.window)
        for text in nodes(application_node(self.application.pid), "label"):
            box = text.get_component_iface().get_extents(Atspi.CoordType.SCREEN)
            if box.x >= left:
                self.assertLessEqual(box.x + box.width, left + width, text.get_name())

    def test_colours_follow_the_portal_that_goes_and_returns(self):
        portal = Desktop(dark=False)
        self.start()
        self.assertFalse(self.is_dark())
        keep("light")
        portal.set("color-scheme", GLib.Variant("u", 1))
        wait_for("the dark window", self.is_dark)
        keep("dark")

        portal.set("accent-color", GLib.Variant("(ddd)", ACCENT))
        wait_for("the accent on the chosen tab", self.has_hue)
        keep("dark-accent")
        portal.set("accent-color", GLib.Variant("(ddd)", (-1, 0, 2)))  # how a portal says that there is none
        wait_for("our own accent", lambda: not self.has_hue())
        portal.set("accent-color", GLib.Variant("(ddd)", ACCENT))

        plain = self.strongest_edge()
        portal.set("contrast", GLib.Variant("v", GLib.Variant("u", 1)))  # one variant too many, as some send it
        wait_for("stronger edges", lambda: self.strongest_edge() > plain * 2)
        keep("dark-high-contrast")

        portal.close()
        self.assertTrue(stays(self.is_dark, 1))
        with Desktop(dark=False):
            wait_for("the light window", lambda: not self.is_dark())
            wait_for("the plain accent", lambda: not self.has_hue())
            keep("light-again")
        self.assertTrue(self.application.running())

    def test_fonts_grow_and_shrink_with_their_rows(self):
        with Desktop(dark=False) as portal:
            portal.own["font-name"] = GLib.Variant("v", GLib.Variant("s", "Inter 10"))
            self.start()
            usual = wait_for("the field", self.row_height)
            window = geometry(self.window)[2:]
            for scale in (2.0, 1.5, 0.8):
                portal.set_own("text-scaling-factor", GLib.Variant("d", scale))
                wait_for(f"the field at {scale}", lambda scale=scale: abs(self.row_height() - usual * scale) <= 2)
                for tab in ("Overview", "Sync", "Devices", "About"):
                    press(self.tab(tab))
                    wait_for("the tab", lambda tab=tab: has(self.tab(tab), Atspi.StateType.SELECTED))
                    self.nothing_sticks_out()
                    keep(f"font-{scale}-{tab.lower()}")
                press(self.tab("Overview"))
                self.assertEqual(geometry(self.window)[2:], window)
            portal.set_own("text-scaling-factor", GLib.Variant("d", 1.0))
            portal.set_own("font-name", GLib.Variant("s", "DejaVu Sans Bold 15"))
            wait_for("the larger font", lambda: abs(self.row_height() - usual * 1.5) <= 2)
            keep("font-other")

    def test_the_gtk_settings_speak_where_there_is_no_portal(self):
        folder = HOME / ".config" / "gtk-3.0"
        folder.mkdir(parents=True)
        settings = folder / "settings.ini"
        self.addCleanup(lambda: (settings.unlink(), folder.rmdir()))
        settings.write_text("[Settings]\ngtk-font-name=Inter 10\n")
        self.start()
        usual = wait_for("the field", self.row_height)
        settings.write_text("[Settings]\ngtk-font-name=Inter 20\ngtk-application-prefer-dark-theme=1\n")
        wait_for("the dark window", self.is_dark)
        wait_for("the larger font", lambda: abs(self.row_height() - usual * 2) <= 2)

    def test_motion_stops_when_the_desktop_asks(self):
        with Desktop(dark=False) as portal:
            self.start()
            press(self.tab("Devices"))
            press(wait_for("the button", lambda: self.row("Add a computer")))
            press(wait_for("the sheet", lambda: self.row("Create a PIN")))
            wait_for("the wheel to turn", lambda: not self.is_still(0.5))
            portal.set("reduced-motion", GLib.Variant("u", 1))
            wait_for("the wheel to stand still", lambda: self.is_still(1))

    def is_still(self, seconds):
        first = pixels(self.window)
        return stays(lambda: pixels(self.window) == first, seconds)


if __name__ == "__main__":
    unittest.main()
