#!/usr/bin/python3
"""The real executable follows the desktop while it runs: colours, contrast, font and motion."""
import operator
import re
import unittest

from desktop import HOME, Desk, GLib, Portal, extents, pixels, pointer, stays, wait_for, windows, xdotool

ACCENT = (0.57, 0.25, 0.67)


class Appearance(Desk):
    def start(self):
        # A PIN that never comes keeps a progress wheel turning.
        super().start("still", "--fault", "/api/pair/show=hang")
        self.app.open_tab("Overview")
        self.window = wait_for("the window", lambda: windows("^Settings$", self.app.pid))[0]
        self.field = self.app.wait("text", "Device name")
        self.usual = extents(self.field).height

    def pixels(self):
        return pixels(self.window)

    def differs(self, before):
        """By more than a text cursor."""
        return sum(map(operator.ne, self.pixels(), before)) > 500

    def is_dark(self):
        pixels = self.pixels()
        return sum(pixels) / len(pixels) < 100

    def wait_for_scale(self, scale):
        """Until a row is as high as its font makes it."""
        wait_for(f"the scale {scale}", lambda: abs(extents(self.field).height - self.usual * scale) <= 2)

    def test_follows_the_portal_that_goes_and_returns(self):
        with Portal() as portal:
            portal.set("font-name", "s", "Inter 10", Portal.GNOME)
            self.start()
            self.assertFalse(self.is_dark())
            portal.set("color-scheme", "u", 1)
            wait_for("the dark window", self.is_dark)
            stays(lambda: True, 0.5)
            dark = self.pixels()
            portal.set("accent-color", "(ddd)", ACCENT)
            wait_for("the accent", lambda: self.differs(dark))
            portal.set("accent-color", "(ddd)", (-1, 0, 2))  # how a portal says that there is none
            wait_for("our own accent", lambda: not self.differs(dark))
            portal.set("contrast", "v", GLib.Variant("u", 1))  # one variant too many, as some send it
            wait_for("stronger edges", lambda: self.differs(dark))
            for key, kind, value, scale in (("text-scaling-factor", "d", 2.0, 2), ("text-scaling-factor", "d", 1.0, 1),
                                            ("font-name", "s", "DejaVu Sans Bold 15", 1.5)):
                portal.set(key, kind, value, Portal.GNOME)
                self.wait_for_scale(scale)
            xdotool("windowsize", "--sync", self.window, 580, 940)
            for tab, role, name in (("Sync", "list item", "ssh deploy@10.0.0.12 'systemctl status quorbitd'"),
                                    ("KVM", "push button", "Studio Mac (this computer)")):
                with self.subTest("what is cut can be read whole", name=name):
                    self.app.open_tab(tab)
                    place = extents(self.app.wait(role, re.compile(re.escape(name))))
                    pointer((place.x, place.y, place.width, place.height))
                    xdotool("mousemove_relative", 3, 0)
                    self.app.wait("tool tip", re.compile(re.escape(name)))
        self.assertTrue(stays(self.is_dark, 1))
        with Portal():
            wait_for("the light window", lambda: not self.is_dark())

    def test_the_gtk_settings_speak_where_there_is_no_portal(self):
        settings = HOME / ".config/gtk-3.0/settings.ini"
        settings.parent.mkdir(parents=True)
        settings.write_text("[Settings]\ngtk-font-name=Inter 10\n")
        self.addCleanup(settings.unlink)
        self.start()
        settings.write_text("[Settings]\ngtk-font-name=Inter 20\ngtk-application-prefer-dark-theme=1\n")
        wait_for("the dark window", self.is_dark)
        self.wait_for_scale(2)

    def test_motion_stops_when_the_desktop_asks(self):
        def is_still(seconds):
            first = self.pixels()
            return stays(lambda: self.pixels() == first, seconds)
        with Portal() as portal:
            self.start()
            self.app.open_tab("Devices")
            self.app.press("push button", "Add a computer")
            self.app.press("push button", "Create a PIN")
            wait_for("the wheel to turn", lambda: not is_still(0.5))
            portal.set("reduced-motion", "u", 1)
            wait_for("the wheel to stand still", lambda: is_still(1))


if __name__ == "__main__":
    unittest.main()
