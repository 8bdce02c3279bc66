"""The kinds of desktop session that the program may find itself in: the X server of with_desktop.py, and Wayland
compositors beside it. `env` is what a program in the session is started with."""
import os
import re
import subprocess
from pathlib import Path

from desktop import HOME, Program, application_node, keys, nodes, states, wait_for, windows, xdotool

RUNTIME = Path(os.environ["XDG_RUNTIME_DIR"])


class X11:
    """The X server with its stacking window manager."""

    def __init__(self, **env):
        self.env = env

    def __enter__(self):
        return self

    def __exit__(self, *_):
        pass

    def titles(self, pid):
        return [xdotool("getwindowname", window) for window in windows(pid=pid)]

    def front(self, pid):
        """The title of the program's window that has the keyboard."""
        window = xdotool("getactivewindow")
        return window and xdotool("getwindowpid", window) == str(pid) and xdotool("getwindowname", window)

    def keys(self, *names):
        keys(*names)


def no_bus():
    """An X session whose programs have no session bus, and would start one of their own if they asked for it."""
    return X11(DBUS_SESSION_BUS_ADDRESS=None)


class Monitors(X11):
    """The X server's screen divided among monitors, the second of which has twice the scale."""

    SCREENS = {"left": (0, 0, 700, 1200), "right": (700, 0, 900, 1200)}

    def __enter__(self):
        for (name, (x, y, width, height)), output in zip(self.SCREENS.items(), ("screen", "none")):
            subprocess.run(["xrandr", "--setmonitor", name, f"{width}/{width // 4}x{height}/{height // 4}+{x}+{y}",
                            output], check=True, stdout=subprocess.DEVNULL)
        self.env = {"QT_SCREEN_SCALE_FACTORS": "1;2"}
        return self

    def __exit__(self, *_):
        for name in self.SCREENS:
            subprocess.run(["xrandr", "--delmonitor", name], check=True)


class SecondDisplay(Program):
    """An X server that can be ended without ending the checks' own."""

    def __init__(self):
        super().__init__("Xvfb", "-displayfd", "1", "-nolisten", "tcp")
        number = wait_for("the display", lambda: re.search(r"^(\d+)\n", self.printed(), re.MULTILINE))[1]
        self.env = {"DISPLAY": f":{number}"}


class Compositor(Program):
    """A running Wayland compositor, whose windows the accessibility tree tells."""

    def __init__(self, *command, display, env):
        self.socket = RUNTIME / display
        self.socket.unlink(missing_ok=True)
        super().__init__(*command, env=env)
        # The toolkit's plugins for Wayland are unloaded with what they hold; nothing tells that from a leak of ours.
        self.env = {"DISPLAY": "", "WAYLAND_DISPLAY": display, "XDG_SESSION_TYPE": "wayland",
                    "ASAN_OPTIONS": os.environ.get("ASAN_OPTIONS", "") + ":detect_leaks=0"}
        wait_for("the compositor", self.socket.exists)

    def frames(self, pid):
        root = application_node(pid)
        return [node for node in nodes(root) if node.get_parent() == root] if root else []

    def titles(self, pid):
        return [frame.get_name() for frame in self.frames(pid)]

    def front(self, pid):
        return next((frame.get_name() for frame in self.frames(pid) if "active" in states(frame)), None)

    def keys(self, *names):
        keys(*names)


class Weston(Compositor):
    """A stacking compositor that leaves titles and borders to the programs. It shows itself in a window of the X
    server, whose keys it takes."""

    def __init__(self):
        super().__init__("weston", "--backend=x11-backend.so", "--use-pixman", "--width=1180", "--height=900",
                         "--no-config", "--socket=weston", "--idle-time=0", display="weston", env={})


class Sway(Compositor):
    """A tiling compositor without a screen."""

    # It refuses to run as root; as another user it still has to reach root's folders.
    AS_USER = ("setpriv", "--reuid=1000", "--regid=1000", "--clear-groups", "--inh-caps=+dac_override",
               "--ambient-caps=+dac_override") if os.geteuid() == 0 else ()

    def __init__(self):
        file = HOME / "sway.conf"
        file.write_text("focus_on_window_activation focus\n")
        self.ipc = str(RUNTIME / "sway.socket")
        Path(self.ipc).unlink(missing_ok=True)
        super().__init__(*self.AS_USER, "sway", "-c", file, display="wayland-1",
                         env={"DISPLAY": "", "SWAYSOCK": self.ipc, "WLR_BACKENDS": "headless", "WLR_RENDERER": "pixman",
                              "WLR_LIBINPUT_NO_DEVICES": "1"})
        # A session has a keyboard all the time; each of those that keys() makes is gone after its key.
        self.keyboard = Program("wtype", "-s", "600000", env=self.env)

    def __exit__(self, *arguments):
        self.keyboard.__exit__()
        super().__exit__(*arguments)

    def order(self, *words):
        subprocess.run(["swaymsg", "--socket", self.ipc, "--", *words], capture_output=True, check=True)

    def keys(self, *names):
        for name in names:
            *modifiers, key = name.split("+")
            held = [word for modifier in modifiers for word in ("-M", modifier)]
            subprocess.run(["wtype", *held, "-k", key], env={**os.environ, **self.env}, check=True)
