#!/usr/bin/python3
"""The real executable in every kind of desktop session.

Pictures of each are left in the folder QUORBIT_PICTURES if that is set, such as build/pictures/sessions.
"""
import os
import re
import shutil
import signal
import subprocess
import unittest
from contextlib import nullcontext, suppress
from pathlib import Path
from unittest import mock

from desktop import (BIN, CONNECTION, HOME, Application, Program, Sim, StatusNotifierTray, XembedTray, geometry,
                     pointer, processes, search, stays, wait_for, windows)
from sessions import (X11, EdgeTray, Monitors, Neighbour, NoBus, SecondBus, SecondDisplay, Sway, Weston,
                      activation_token, has_title, place_of)

PANEL, SETTINGS = "Quorbit", "Settings"
INSTANCE = Path(os.environ["XDG_RUNTIME_DIR"]) / "quorbit/instance.socket"
SCREEN = tuple(int(part) for part in os.environ.get("DESKTOP_SIZE", "1280x1000").split("x"))
PICTURES = os.environ.get("QUORBIT_PICTURES")


def session_buses():
    """The bus daemons of this desktop; others may run on the computer."""
    found = []
    for pid in processes(Path("/usr/bin/dbus-daemon")):
        with suppress(OSError):
            found += [pid] * (f"HOME={HOME}\0".encode() in Path(f"/proc/{pid}/environ").read_bytes())
    return found


def left_out(name, *kinds):
    absent = [program for kind in kinds for program in kind.needs if not shutil.which(program)]
    obstacle = f"{', '.join(absent)} missing" if absent else Sway in kinds and Sway.obstacle()
    if obstacle:
        print(f"{name}: left out: {obstacle}")
    return bool(obstacle)


def start(session, **env):
    """The application, ready to be started again."""
    INSTANCE.unlink(missing_ok=True)
    if isinstance(session, NoBus):
        application = Program("env", "-u", "DBUS_SESSION_BUS_ADDRESS", BIN / "quorbit")
    else:
        application = Application(env={**session.env, **env})
    wait_for("the application", INSTANCE.exists)
    return application


def start_again(session, **env):
    with Application(env={**session.env, **env}) as second:
        assert second.process.wait(10) == 0


def icons():
    """The application's icons in an X11 tray, told from its windows by their size."""
    return [window for window in search(["--classname", "^quorbit$"])
            if (place := place_of(window)) and place[2] < 60]


def click_icon():
    x, y, width, height = geometry(wait_for("the icon", icons)[0])
    pointer(x + width // 2, y + height // 2)


def open_panel(session, tray, application):
    """As the user does: by the tray, or by starting the program again."""
    if isinstance(tray, XembedTray):
        click_icon()
    elif tray:
        wait_for("the item", lambda: tray.items)
        tray.ask("Activate")
    else:
        start_again(session)
    is_in_front(session, application, PANEL)


def is_in_front(session, application, title):
    wait_for(f"{title} in front", lambda: session.front() == (application.pid, title))


def open_settings(session, application):
    session.keys("shift+Tab", "shift+Tab", "space")
    is_in_front(session, application, SETTINGS)


def hide_panel(session, application):
    session.keys("Escape")
    wait_for("the panel to hide", lambda: PANEL not in session.windows(application.pid))


def take(session, *name):
    if PICTURES:
        stays(lambda: True, 0.6)  # for fonts and animations
        session.picture(Path(PICTURES) / (re.sub(r"\W+", "-", " ".join(name)) + ".png"))


def inside(inner, outer, margin):
    return (inner[0] >= outer[0] + margin and inner[1] >= outer[1] + margin
            and inner[0] + inner[2] <= outer[0] + outer[2] - margin
            and inner[1] + inner[3] <= outer[1] + outer[3] - margin)


def distance(one, other):
    """Between two rectangles, along the axis on which they are apart; negative when they overlap."""
    return max(max(one[axis] - other[axis] - other[axis + 2], other[axis] - one[axis] - one[axis + 2])
               for axis in (0, 1))


class Sessions(unittest.TestCase):
    ROWS = (
        ("X11, icon tray", X11, XembedTray),
        ("X11, status notifier", X11, StatusNotifierTray),
        ("X11, no tray", X11, None),
        ("X11, no session bus", NoBus, XembedTray),
        ("Wayland, tiling, status notifier", Sway, StatusNotifierTray),
        ("Wayland, tiling, no tray", Sway, None),
        ("Wayland, stacking, status notifier", Weston, StatusNotifierTray),
        ("Wayland, stacking, no tray", Weston, None),
    )

    def test_is_seen_and_used(self):
        for name, kind, tray in self.ROWS:
            with self.subTest(name):
                if left_out(name, kind):
                    continue
                with kind() as session, Sim("full", "--log") as service, start(session) as application:
                    wait_for("the first state", lambda: service.requests("/api/history") > 0)
                    with tray() if tray else nullcontext() as host:
                        self.use(name, session, service, host, application)

    def use(self, name, session, service, tray, application):
        buses = session_buses()
        open_panel(session, tray, application)
        take(session, name, "panel")
        session.keys("Tab", "space")
        wait_for("the pause", lambda: service.ask("/api/status")["paused"])
        if tray:
            hide_panel(session, application)
            start_again(session)
            is_in_front(session, application, PANEL)
            session.keys("Tab")
        open_settings(session, application)
        take(session, name, "settings")
        polls = service.requests("/api/status")
        wait_for("more polls", lambda: service.requests("/api/status") > polls + 1)
        self.assertEqual(session_buses(), buses)  # the program never starts one of its own
        self.assertEqual(application.end(), 0, application.printed())


class ComingsAndGoings(unittest.TestCase):
    """What the program depends on may come late, go, and come back."""

    def test_a_tray(self):
        for kind in (XembedTray, StatusNotifierTray):
            with self.subTest(kind.__name__), X11() as session, Sim("full"), start(session) as application:
                for number in (1, 2):
                    with kind() as tray:
                        open_panel(session, tray, application)
                        take(session, kind.__name__, f"there {number}")
                        hide_panel(session, application)
                    wait_for("the icon's end", lambda: not icons())
                    # Out of reach, the panel is a window with a title until there is a tray again.
                    start_again(session)
                    is_in_front(session, application, PANEL)
                    wait_for("its title", lambda: has_title(application))
                    take(session, kind.__name__, f"gone {number}")

    def test_the_session_bus(self):
        for kind in (XembedTray, StatusNotifierTray):
            with self.subTest(kind.__name__), SecondBus() as bus, mock.patch.dict(os.environ, bus.env), \
                    X11() as session, Sim("full", "--log") as service, kind() as tray, \
                    start(session) as application:
                open_panel(session, tray, application)
                hide_panel(session, application)
                bus.end(signal.SIGKILL)
                polls = service.requests("/api/status")
                wait_for("more polls", lambda: service.requests("/api/status") > polls + 1)
                start_again(session)
                is_in_front(session, application, PANEL)
                self.assertEqual(has_title(application), kind is StatusNotifierTray)
                session.keys("Tab", "space")
                wait_for("the pause", lambda: service.ask("/api/status")["paused"])
                self.assertEqual(application.end(), 0, application.printed())

    def test_the_display(self):
        """A service that the program launched ends with it."""
        prefix = HOME / "prefix"
        (prefix / "bin").mkdir(parents=True)
        executable = shutil.copy2(BIN / "quorbit", prefix / "bin/quorbit")
        service = Path(shutil.copy2(BIN / "quorbitd-sim", prefix / "bin/quorbitd"))
        for kind in (Sway, Weston, SecondDisplay):
            with self.subTest(kind.__name__):
                if left_out(kind.__name__, kind):
                    continue
                with kind() as session, Application(executable=executable, env=session.env) as application:
                    wait_for("the launched service", lambda: processes(service) and (CONNECTION / "ui-url").exists())
                    session.end(signal.SIGKILL)
                    self.assertEqual(application.process.wait(10), 1)
                    wait_for("the service's end", lambda: not processes(service))
        shutil.rmtree(prefix)


class Front(unittest.TestCase):
    """A window comes to the front when the user asks for it, and a compositor believes only its own word for that."""

    def test_with_the_compositors_token_and_not_without(self):
        if left_out("Wayland activation", Sway, Neighbour):
            return
        with Sway() as session, Sim("full"), start(session) as application, Neighbour(session) as other:
            start_again(session)
            wait_for("the panel", lambda: PANEL in session.windows(application.pid))
            session.give_keyboard(other.pid)
            start_again(session)
            self.assertTrue(stays(lambda: session.front()[0] == other.pid, 1))
            start_again(session, XDG_ACTIVATION_TOKEN=activation_token(session))
            is_in_front(session, application, PANEL)

            open_settings(session, application)
            session.give_keyboard(other.pid)
            start_again(session, XDG_ACTIVATION_TOKEN=activation_token(session))
            is_in_front(session, application, PANEL)
            session.keys("space")
            is_in_front(session, application, SETTINGS)

    def test_over_a_window_that_the_user_works_in(self):
        with X11() as session, Sim("full"), start(session) as application, \
                Program("display", "-size", "700x500", "xc:#335577"):
            for request in ({}, {"DESKTOP_STARTUP_ID": f"launcher-1_TIME{2**31}"}):
                with self.subTest(request):
                    window = wait_for("the other window", lambda: windows("^ImageMagick"))[0]
                    subprocess.run(["xdotool", "windowactivate", "--sync", window], check=True)
                    session.keys("Shift_L")
                    self.assertTrue(session.front()[1].startswith("ImageMagick"))
                    start_again(session, **request)
                    is_in_front(session, application, PANEL)


class Places(unittest.TestCase):
    """The panel stands beside its icon, inside the screen and off its edges."""

    EDGE = 8
    SCREENS = {"left": (0, 0, 700, 1200), "right": (700, 0, 900, 1200)}

    def test_beside_the_tray_on_every_side(self):
        for edge in ("top", "bottom", "left", "right"):
            for align in ("left", "right"):  # at a vertical edge the upper and the lower end
                with self.subTest(edge=edge, align=align), X11() as session, Sim("full", "--log") as service, \
                        EdgeTray(edge, align), start(session) as application:
                    wait_for("the first state", lambda: service.requests("/api/history") > 0)
                    icon = geometry(wait_for("the icon", icons)[0])
                    open_panel(session, None, application)
                    take(session, "panel beside a tray", edge, align)
                    panel = session.windows(application.pid)[PANEL]
                    self.assertTrue(inside(panel, (0, 0, *SCREEN), self.EDGE), panel)
                    self.assertLessEqual(distance(panel, icon), 12)
                    self.assertGreater(distance(panel, icon), 0)

    def test_on_the_screen_with_the_pointer_at_its_scale(self):
        with Monitors(self.SCREENS) as session, Sim("full") as service, StatusNotifierTray() as tray, \
                start(session, QT_SCREEN_SCALE_FACTORS="1;2") as application:
            self.assertTrue(service.running())
            for name, pointer_at, scale in (("right", (1500, 10), 2), ("left", (300, 1190), 1), ("right", (710, 900), 2),
                                            ("left", (690, 300), 1)):
                with self.subTest(name, pointer=pointer_at):
                    subprocess.run(["xdotool", "mousemove", *map(str, pointer_at)], check=True)
                    open_panel(session, tray, application)
                    take(session, "panel on two screens", f"{name} {pointer_at}")
                    panel = session.windows(application.pid)[PANEL]
                    self.assertTrue(inside(panel, self.SCREENS[name], self.EDGE * scale), panel)
                    self.assertEqual(panel[2], 320 * scale)
                    hide_panel(session, application)

    def test_a_window_that_is_moved_keeps_its_size_at_each_scale(self):
        with Monitors(self.SCREENS) as session, Sim("full"), StatusNotifierTray() as tray, \
                start(session, QT_SCREEN_SCALE_FACTORS="1;2") as application:
            subprocess.run(["xdotool", "mousemove", "300", "300"], check=True)
            open_panel(session, tray, application)
            open_settings(session, application)
            window = windows(SETTINGS, application.pid)[0]
            for left, size in ((710, (1120, 1040)), (10, (560, 520))):  # as wide as the screen and its content permit
                subprocess.run(["xdotool", "windowmove", window, str(left), "100"], check=True)
                wait_for(f"the size {size}", lambda size=size: session.windows(application.pid)[SETTINGS][2:] == size)
                take(session, f"settings moved to {left}")

    def test_a_window_that_is_moved_to_another_scale_is_drawn_as_if_opened_there(self):
        if left_out("scales on Wayland", Sway):
            return
        outputs = ("resolution 900x700 position 0 0", "resolution 1800x1400 position 900 0 scale 2")
        pictures = []
        for moved in (True, False):
            with Sway(*outputs) as session, Sim("still", "--log") as service, StatusNotifierTray() as tray, \
                    start(session) as application:
                wait_for("the first state", lambda: service.requests("/api/history") > 0)
                session.say("focus", "output", "HEADLESS-1" if moved else "HEADLESS-2")
                open_panel(session, tray, application)
                session.keys("shift+Tab", "shift+Tab", "space")
                wait_for("the settings alone", lambda: list(session.windows(application.pid)) == [SETTINGS])
                if moved:
                    session.say("move", "container", "to", "output", "HEADLESS-2")
                    session.give_keyboard(application.pid)
                file = HOME / f"moved-{moved}.png"
                wait_for("the drawing to settle", lambda: unchanged(session, file))
                pictures.append(file)
                take(session, "settings", "moved to scale 2" if moved else "opened at scale 2")
        difference = subprocess.run(["compare", "-metric", "AE", "-fuzz", "3%", *map(str, pictures), "null:"],
                                    capture_output=True, text=True, check=False).stderr
        self.assertLess(float(difference), 50)


def unchanged(session, file):
    before = file.read_bytes() if file.exists() else None
    session.picture(file, "HEADLESS-2")
    return stays(lambda: True, 0.3) and file.read_bytes() == before


if __name__ == "__main__":
    unittest.main()
