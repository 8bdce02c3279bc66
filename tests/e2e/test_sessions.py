#!/usr/bin/python3
"""The real executable in every kind of desktop session."""
import os
import signal
import subprocess
import unittest
from contextlib import ExitStack, nullcontext
from pathlib import Path

from desktop import (HOME, Application, Installed, Program, Sim, StatusNotifierTray, XembedTray, geometry, icon,
                     pointer, processes, session_buses, wait_for, windows, xdotool)
from sessions import X11, Monitors, SecondDisplay, Sway, Weston, no_bus

PANEL, SETTINGS = "Quorbit", "Settings"
BUSES = session_buses()
INSTANCE = Path(os.environ["XDG_RUNTIME_DIR"]) / "quorbit/instance.socket"
SCREEN = tuple(map(int, os.environ.get("DESKTOP_SIZE", "1280x1000").split("x")))


class Session(unittest.TestCase):
    def enter(self, kind, tray=None, scenario="full", **env):
        """Starts a session, a service and the application, and then a tray."""
        with ExitStack() as stack:
            self.session = stack.enter_context(kind())
            self.service = stack.enter_context(Sim(scenario))
            INSTANCE.unlink(missing_ok=True)
            self.app = stack.enter_context(Application({**self.session.env, **env}))
            wait_for("the application", INSTANCE.exists)
            self.service.wait_for_polls(1)
            self.tray = stack.enter_context(tray() if tray else nullcontext())
            return stack.pop_all()

    def open_panel(self):
        """As the user does: by the tray, or by starting the program again."""
        if isinstance(self.tray, XembedTray):
            pointer(wait_for("the icon", icon), "click", 1)
        elif self.tray:
            wait_for("the item", lambda: self.tray.items)
            self.tray.ask("Activate")
        else:
            self.app.start_again()
        self.comes_to_front(PANEL)

    def comes_to_front(self, title):
        wait_for(f"{title} in front", lambda: self.session.front(self.app.pid) == title)

    def open_settings(self):
        self.session.keys("shift+Tab", "shift+Tab", "space")
        self.comes_to_front(SETTINGS)

    def hide_panel(self):
        def hidden():
            self.session.keys("Escape")  # again, because a window that was in front before may have had the first
            return PANEL not in self.session.titles(self.app.pid)
        wait_for("the panel to hide", hidden)

    def pause(self):
        self.session.keys("Tab", "space")
        wait_for("the pause", lambda: self.service.ask("/api/status")["paused"])

    def place(self, title):
        return geometry(windows(f"^{title}$", self.app.pid)[0])


class Sessions(Session):
    # An X11 session with a bus is every other check's.
    ROWS = (
        ("X11, no session bus", no_bus, XembedTray),
        ("Wayland, tiling, status notifier", Sway, StatusNotifierTray),
        ("Wayland, stacking, status notifier", Weston, StatusNotifierTray),
        ("Wayland, stacking, no tray", Weston, None),
    )

    def test_is_seen_and_used(self):
        for name, kind, tray in self.ROWS:
            with self.subTest(name), self.enter(kind, tray):
                if tray:
                    self.open_panel()
                self.comes_to_front(PANEL)  # where no tray comes, by itself
                self.pause()
                if tray:
                    self.hide_panel()
                    self.app.start_again()
                    self.comes_to_front(PANEL)
                    self.session.keys("Tab")
                self.open_settings()
                self.service.wait_for_polls(1)
                self.assertEqual(session_buses(), BUSES)  # the program never starts one of its own
                self.assertEqual(self.app.end(), 0, self.app.printed())


class ComingsAndGoings(Session):
    """What the program depends on may come late, go, and come back."""

    def test_a_tray(self):
        for kind in (XembedTray, StatusNotifierTray):
            with self.subTest(kind.__name__), self.enter(X11):
                for _ in range(2):
                    with kind() as self.tray:
                        self.open_panel()
                        self.hide_panel()
                    wait_for("the icon's end", lambda: not icon())
                    self.service.wait_for_polls(1)  # by then it has heard of the tray's end
                    self.app.start_again()
                    self.comes_to_front(PANEL)

    def test_the_display(self):
        """A service that the program launched ends with it, and no exit handler runs, which might trip over what a start
        has left half made. So it does while the toolkit announces the end in the words that the program knows."""
        for kind in (Sway, SecondDisplay):
            with self.subTest(kind.__name__), kind() as session, Installed({**session.env, "LD_DEBUG": "files"}) as app:
                wait_for("the launched service", lambda: processes(app.service))
                session.end(signal.SIGKILL)
                self.assertEqual(app.process.wait(10), 1)
                wait_for("the service's end", lambda: not processes(app.service))
                self.assertNotRegex(app.printed(), "calling fini:  ")


class Permission(Session):
    def test_is_the_servers_where_the_service_does_not_tell(self):
        with self.enter(X11, scenario="sparse"):
            self.app.open_panel()
            self.app.open_tab("KVM")
            self.app.wait(name="Accessibility is allowed")


class Front(Session):
    """A window comes to the front when the user asks for it."""

    def test_by_the_word_of_a_compositor(self):
        with self.enter(Sway, WAYLAND_DEBUG="client"):
            self.comes_to_front(PANEL)
            self.app.start_again(XDG_ACTIVATION_TOKEN="of a launcher")
            wait_for("the launcher's word", lambda: 'activate("of a launcher"' in self.app.printed())
            self.open_settings()
            self.session.order("[title=^Quorbit$]", "focus")
            self.comes_to_front(PANEL)
            self.session.keys("space")
            self.comes_to_front(SETTINGS)

    def test_over_a_window_that_the_user_works_in(self):
        with self.enter(X11), Program("display", "-size", "700x500", "xc:#335577"):
            window = wait_for("the other window", lambda: windows("^ImageMagick"))[0]
            for request in ({}, {"DESKTOP_STARTUP_ID": f"launcher-1_TIME{2**31}"}):
                with self.subTest(request):
                    xdotool("windowactivate", "--sync", window)
                    self.session.keys("Shift_L")
                    self.assertFalse(self.session.front(self.app.pid))
                    self.app.start_again(**request)
                    self.comes_to_front(PANEL)

    def test_tells_the_desktop_when_a_start_is_over(self):
        # A tray of the bus kind: no window of the first start would say so.
        with StatusNotifierTray() as tray, Sim(), Program("stdbuf", "-oL", "xev", "-root") as desktop:
            def told():
                return desktop.printed().count("(_NET_STARTUP_INFO_BEGIN)")

            wait_for("the watcher", lambda: subprocess.call(["xsetroot", "-name", "watched"]) or desktop.printed())
            with Application({"DESKTOP_STARTUP_ID": "first_TIME1"}) as app:
                wait_for("the icon", lambda: tray.items)
                wait_for("the first start's end", lambda: told() > 0)
                before = told()
                app.start_again(DESKTOP_STARTUP_ID="second_TIME2")
                # The toolkit speaks up too, but of the first start.
                wait_for("the second start's end", lambda: told() > before + 1)


class Places(Session):
    """The panel stands by its icon, inside the screen and off its edges."""

    def stands_inside(self, screen, margin):
        x, y, width, height = panel = self.place(PANEL)
        left, top, wide, high = screen
        self.assertTrue(left + margin <= x and top + margin <= y and x + width <= left + wide - margin
                        and y + height <= top + high - margin, panel)
        return panel

    def test_beside_the_icon(self):
        with self.enter(X11, lambda: XembedTray("bottom", "left")):
            self.open_panel()
            place = icon()
            panel = self.stands_inside((0, 0, *SCREEN), 8)
            self.assertTrue(0 < place[1] - panel[1] - panel[3] <= 12, (panel, place))

    def test_on_the_screen_with_the_pointer_at_its_scale(self):
        with self.enter(Monitors, StatusNotifierTray):
            for name, x, y, scale in (("right", 1500, 10, 2), ("left", 690, 1190, 1)):
                with self.subTest(name):
                    xdotool("mousemove", x, y)
                    self.open_panel()
                    panel = self.stands_inside(Monitors.SCREENS[name], 8 * scale)
                    self.assertEqual(panel[2], 320 * scale)
                    self.hide_panel()
            # A window that is moved keeps its size at each scale, as wide as the screen and its content permit.
            self.open_panel()
            self.open_settings()
            for x, size in ((710, (1120, 1040)), (10, (560, 520))):
                xdotool("windowmove", windows(SETTINGS, self.app.pid)[0], x, 100)
                wait_for(f"the size {size}", lambda size=size: self.place(SETTINGS)[2:] == size)


if __name__ == "__main__":
    unittest.main()
