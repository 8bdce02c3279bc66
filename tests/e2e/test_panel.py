#!/usr/bin/python3
"""The panel of the real executable: by pointer, by keyboard and through the accessibility tree."""
import subprocess
import time
import unittest

from desktop import (QUITTING, Application, Atspi, Portal, Sim, StatusNotifierTray, XembedTray, application_node,
                     geometry, has, keys, node, nodes, pointer, press, stays, tray_icons, wait_for, windows)

ENTRY = "Screenshot 1440 × 900"


def icon(application):
    return wait_for("the icon", tray_icons)[0]


def click_icon(application):
    x, y, width, height = geometry(icon(application))
    time.sleep(0.5)  # so that two clicks are not a double click
    pointer(x + width // 2, y + height // 2)


def quit_row(application):
    return node(application.pid, "push button", "Quit Quorbit")


def open_panel(application):
    click_icon(application)
    wait_for("the panel", lambda: quit_row(application))


class Panel(unittest.TestCase):
    def test_shows_and_drives_a_live_service(self):
        with XembedTray(), Sim("full") as service, Application() as application:
            open_panel(application)
            switch = wait_for("the switch", lambda: node(application.pid, "check box", "Pause syncing"))
            wait_for("the peers", lambda: node(application.pid, name="Office Linux, Connected"))

            self.assertFalse(service.ask("/api/status")["paused"])
            press(switch)
            wait_for("the pause", lambda: service.ask("/api/status")["paused"])
            wait_for("the switch to follow", lambda: has(switch, Atspi.StateType.CHECKED))
            press(switch)
            wait_for("the resumption", lambda: not service.ask("/api/status")["paused"])

            wanted = next(entry for entry in service.ask("/api/history")[1:8] if entry.get("label") == ENTRY)
            press(wait_for("the entry", lambda: entry_row(application)))
            wait_for("the entry on top", lambda: service.ask("/api/history")[0]["id"] == wanted["id"])

    def test_opens_closes_and_quits_by_keyboard(self):
        with XembedTray(), Sim("full") as service, Application() as application:
            open_panel(application)
            keys("Escape")
            wait_for("the panel to hide", lambda: not quit_row(application))
            open_panel(application)
            focused = set()
            for _ in range(14):
                keys("Tab")
                time.sleep(0.05)
                focused.add(focused_name(application))
            self.assertLessEqual({"Pause syncing", "Settings…", "Quit Quorbit"}, focused)
            while focused_name(application) != "Pause syncing":
                keys("Tab")
                time.sleep(0.05)
            keys("space")
            wait_for("the pause", lambda: service.ask("/api/status")["paused"])
            keys("ctrl+q")
            self.assertEqual(application.process.wait(1 + QUITTING), 0)

    def test_a_click_on_the_icon_closes_the_open_panel(self):
        with XembedTray(), Sim("full"), Application() as application:
            open_panel(application)
            click_icon(application)
            wait_for("the panel to hide", lambda: not quit_row(application))
            self.assertTrue(stays(lambda: not quit_row(application), 0.5))

    def test_the_settings_row_opens_the_window(self):
        with XembedTray(), Sim("full"), Application() as application:
            open_panel(application)
            press(node(application.pid, "push button", "Settings…"))
            wait_for("the window", lambda: windows("^Settings$", application.pid))

    def test_follows_the_desktops_appearance(self):
        with Portal(dark=False) as portal, XembedTray(), Sim("full"), Application() as application:
            open_panel(application)
            light = brightness(application)
            portal.set("color-scheme", portal.values["color-scheme"].new_uint32(1))
            wait_for("the dark panel", lambda: brightness(application) < light - 100)


class Trays(unittest.TestCase):
    def test_appears_in_a_tray_that_starts_before_or_after(self):
        for host in (XembedTray, StatusNotifierTray):
            for before in (True, False):
                with self.subTest(host=host.__name__, before=before), Sim():
                    if before:
                        with host() as tray, Application() as application:
                            docked(tray, application)
                    else:
                        with Application() as application:
                            time.sleep(1)
                            with host() as tray:
                                docked(tray, application)

    def test_a_host_of_the_bus_kind_opens_the_panel(self):
        with StatusNotifierTray() as tray, Sim(), Application() as application:
            docked(tray, application)
            tray.ask("Activate", 600, 300)
            wait_for("the panel", lambda: quit_row(application))


def docked(tray, application):
    if isinstance(tray, StatusNotifierTray):
        wait_for("the item", lambda: tray.items)
    else:
        icon(application)


def entry_row(application):
    rows = nodes(application_node(application.pid), "push button")
    return next((row for row in rows if row.get_name().startswith(ENTRY)), None)


def focused_name(application):
    for candidate in nodes(application_node(application.pid)):
        if has(candidate, Atspi.StateType.FOCUSED) and candidate.get_name():
            return candidate.get_name()
    return None


def brightness(application):
    panel = [w for w in windows(pid=application.pid) if geometry(w)[2] >= 300]
    text = subprocess.run(["import", "-silent", "-window", panel[0], "-colorspace", "gray", "-format", "%[fx:255*mean]",
                           "info:"], capture_output=True, text=True, check=True).stdout
    return float(text)


if __name__ == "__main__":
    unittest.main()
