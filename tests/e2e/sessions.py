"""The kinds of desktop session that the program may find itself in: the X server of with_desktop.py, and Wayland
compositors beside it. Each tells in the same way which windows there are, which one has the keyboard, and what it
looks like."""
import json
import os
import re
import socket
import struct
import subprocess
from pathlib import Path

from desktop import (HOME, Atspi, Program, application_node, geometry, has, keys, nodes, picture, wait_for, windows)

RUNTIME = Path(os.environ["XDG_RUNTIME_DIR"])
BACKGROUND = "#8b95a6"


def place_of(window):
    """Where an X11 window is, unless it has just gone."""
    try:
        return geometry(window)
    except subprocess.CalledProcessError:
        return None


class X11:
    """The X server with its stacking window manager."""

    needs = ("xdotool", "import", "xsetroot")
    env = {}

    def __enter__(self):
        subprocess.run(["xsetroot", "-solid", BACKGROUND], check=True)
        return self

    def __exit__(self, *_):
        pass

    def windows(self, pid):
        """Title and place of the program's windows."""
        return {self._title(window): place for window in windows(pid=pid) if (place := place_of(window))}

    def front(self):
        """The process and title of the window that has the keyboard."""
        window = self._ask("getactivewindow")
        return window and (int(self._ask("getwindowpid", window) or 0), self._title(window))

    def _title(self, window):
        return self._ask("getwindowname", window)

    def _ask(self, *words):
        return subprocess.run(["xdotool", *words], capture_output=True, text=True, check=False).stdout.strip()

    def keys(self, *names):
        keys(*names)

    def picture(self, path):
        picture(path)


class NoBus(X11):
    """An X session whose programs have no session bus, and would start one of their own if they asked for it."""


class Monitors(X11):
    """The X server's screen divided among monitors."""

    def __init__(self, screens):
        self.screens = screens

    def __enter__(self):
        output = "screen"
        for name, (x, y, width, height) in self.screens.items():
            subprocess.run(["xrandr", "--setmonitor", name, f"{width}/{width // 4}x{height}/{height // 4}+{x}+{y}",
                            output], check=True, stdout=subprocess.DEVNULL)
            output = "none"
        return super().__enter__()

    def __exit__(self, *_):
        for name in self.screens:
            subprocess.run(["xrandr", "--delmonitor", name], check=True)


class SecondDisplay(Program):
    """An X server that can be ended without ending the checks' own."""

    needs = ("Xvfb",)

    def __init__(self):
        number = next(n for n in range(90, 200) if not Path(f"/tmp/.X11-unix/X{n}").exists())
        super().__init__("Xvfb", f":{number}", "-nolisten", "tcp")
        wait_for("the display", lambda: Path(f"/tmp/.X11-unix/X{number}").exists())
        self.env = {"DISPLAY": f":{number}"}


class SecondBus(Program):
    """A session bus that can be ended without ending the checks' own."""

    def __init__(self):
        address = f"unix:path={HOME}/second-bus"
        super().__init__("dbus-daemon", "--session", "--nofork", f"--address={address}")
        wait_for("the bus", lambda: (HOME / "second-bus").exists())
        self.env = {"DBUS_SESSION_BUS_ADDRESS": address}


class EdgeTray(Program):
    """A tray along one edge of the screen, which it takes from the windows' room."""

    def __init__(self, edge, align):
        super().__init__("trayer", "--edge", edge, "--align", align, "--widthtype", "request", "--height", "28",
                         "--SetDockType", "true", "--SetPartialStrut", "true", "--expand", "true")


def has_title(application):
    """Whether the window manager drew a frame around the program's window."""
    window = windows(pid=application.pid)[0]
    extents = subprocess.run(["xprop", "-id", window, "_NET_FRAME_EXTENTS"], capture_output=True, text=True,
                             check=True).stdout
    return bool(re.search(r"[1-9]", extents.partition("=")[2]))


class Compositor(Program):
    """A running Wayland compositor; `env` is what a program in its session is started with."""

    def __init__(self, *command, display, env=None):
        self.socket = RUNTIME / display
        super().__init__(*command, env={"DISPLAY": "", **(env or {})})
        # The toolkit's plugins for Wayland are unloaded with what they hold, and nothing tells that from a leak of ours.
        self.env = {"DISPLAY": "", "WAYLAND_DISPLAY": display, "XDG_SESSION_TYPE": "wayland",
                    "ASAN_OPTIONS": os.environ.get("ASAN_OPTIONS", "") + ":detect_leaks=0"}
        wait_for("the compositor", self._answers)

    def __exit__(self, *arguments):
        super().__exit__(*arguments)
        self.socket.unlink(missing_ok=True)

    def _answers(self):
        with socket.socket(socket.AF_UNIX) as client:
            return client.connect_ex(str(self.socket)) == 0


class Sway(Compositor):
    """A tiling compositor without a screen, which tells of its windows."""

    needs = ("sway", "swaymsg", "grim", "wtype")
    # It refuses to run as root, and knows root by its number alone.
    AS_USER = ("unshare", "--user", "--map-user=1000", "--map-group=1000") if os.geteuid() == 0 else ()

    @classmethod
    def obstacle(cls):
        """What keeps it from running here: root of a changed root directory cannot become anybody else."""
        if cls.AS_USER and subprocess.run([*cls.AS_USER, "true"], capture_output=True).returncode != 0:
            return "root's number cannot be hidden"
        return None

    def __init__(self, *outputs):
        outputs = outputs or ("resolution 1280x900 position 0 0",)
        settings = [f"output HEADLESS-{number} {output} bg {BACKGROUND} solid_color"
                    for number, output in enumerate(outputs, 1)]
        file = HOME / "sway.conf"
        file.write_text("\n".join([*settings, "focus_on_window_activation focus", ""]))
        self.ipc = RUNTIME / "sway.socket"
        self.ipc.unlink(missing_ok=True)
        display = next(name for name in (f"wayland-{number}" for number in range(1, 33))
                       if not (RUNTIME / name).exists())
        super().__init__(*self.AS_USER, "sway", "-c", file, display=display,
                         env={"SWAYSOCK": str(self.ipc), "WLR_BACKENDS": "headless", "WLR_RENDERER": "pixman",
                              "WLR_LIBINPUT_NO_DEVICES": "1", "WLR_HEADLESS_OUTPUTS": str(len(outputs))})
        # A session has a keyboard all the time; each of those that keys() makes is gone after its key.
        self.keyboard = Program("wtype", "-s", "600000", env=self.env)

    def __exit__(self, *arguments):
        self.keyboard.__exit__()
        super().__exit__(*arguments)

    def say(self, *words, kind="command"):
        return subprocess.run(["swaymsg", "--raw", "--socket", str(self.ipc), "-t", kind, "--", *words],
                              capture_output=True, text=True, check=True).stdout

    def tree(self, branch=None):
        """Every window, as the compositor describes it."""
        branch = branch or json.loads(self.say(kind="get_tree"))
        below = [window for each in branch["nodes"] + branch["floating_nodes"] for window in self.tree(each)]
        return [branch, *below] if "shell" in branch else below

    def windows(self, pid):
        return {window["name"]: tuple(window["rect"][key] for key in ("x", "y", "width", "height"))
                for window in self.tree() if window["pid"] == pid}

    def front(self):
        return next(((window["pid"], window["name"]) for window in self.tree() if window["focused"]), None)

    def give_keyboard(self, pid):
        window = wait_for("the window", lambda: [w for w in self.tree() if w["pid"] == pid])[0]
        self.say(f"[con_id={window['id']}]", "focus")

    def keys(self, *names):
        for name in names:
            *modifiers, key = re.split(r"\+", name)
            held = [word for modifier in modifiers for word in ("-M", modifier)]
            subprocess.run(["wtype", *held, "-k", key], env={**os.environ, **self.env}, check=True)

    def picture(self, path, output=None):
        path.parent.mkdir(parents=True, exist_ok=True)
        which = ["-o", output] if output else []
        subprocess.run(["grim", *which, str(path)], env={**os.environ, **self.env}, check=True)


class Weston(Compositor):
    """A stacking compositor that leaves titles and borders to the programs. It shows itself in a window of the X
    server, whose are the pointer, the keys and the pictures."""

    needs = ("weston", "xdotool", "import")

    def __init__(self):
        file = HOME / "weston.ini"
        file.write_text(f"[shell]\nbackground-color=0xff{BACKGROUND[1:]}\n")
        super().__init__("weston", "--backend=x11-backend.so", "--use-pixman", "--width=1180", "--height=900",
                         f"--config={file}", "--socket=weston", "--idle-time=0", display="weston",
                         env={"DISPLAY": os.environ["DISPLAY"]})

    def windows(self, pid):
        """The compositor tells nothing; the places are left open."""
        return {frame.get_name(): None for frame in self._frames(pid)}

    def front(self):
        return next(((pid, frame.get_name()) for pid in self._programs() for frame in self._frames(pid)
                     if has(frame, Atspi.StateType.ACTIVE)), None)

    def _programs(self):
        desktop = Atspi.get_desktop(0)
        children = [desktop.get_child_at_index(index) for index in range(desktop.get_child_count())]
        return [child.get_process_id() for child in children if child]

    def _frames(self, pid):
        root = application_node(pid)
        return [child for child in nodes(root) if child.get_parent() == root] if root else []

    def keys(self, *names):
        keys(*names)

    def picture(self, path):
        picture(path)


class Neighbour(Program):
    """Another program's window on Wayland."""

    needs = ("weston-eventdemo",)

    def __init__(self, session):
        super().__init__("weston-eventdemo", env=session.env)
        wait_for("its window", lambda: session.windows(self.pid))


def activation_token(compositor):
    """What a launcher asks its compositor for, to hand to the program that it starts."""
    display, registry, activation, token = 1, 2, 3, 4

    def padded(text):
        raw = text.encode() + b"\0"
        return struct.pack("=I", len(raw)) + raw + b"\0" * (-len(raw) % 4)

    def string(body):
        return body[4:3 + struct.unpack_from("=I", body)[0]].decode()

    with socket.socket(socket.AF_UNIX) as server:
        server.settimeout(5)
        server.connect(str(compositor.socket))

        def send(target, request, *arguments):
            body = b"".join(padded(word) if isinstance(word, str) else struct.pack("=I", word) for word in arguments)
            server.sendall(struct.pack("=II", target, (8 + len(body)) << 16 | request) + body)

        def events(sender):
            while True:
                source, size = struct.unpack("=II", server.recv(8, socket.MSG_WAITALL))
                body = server.recv((size >> 16) - 8, socket.MSG_WAITALL)
                if source == sender:
                    yield body

        send(display, 1, registry)
        number = next(struct.unpack_from("=I", body)[0] for body in events(registry)
                      if string(body[4:]) == "xdg_activation_v1")
        send(registry, 0, number, "xdg_activation_v1", 1, activation)
        send(activation, 1, token)
        send(token, 3)
        return string(next(events(token)))
