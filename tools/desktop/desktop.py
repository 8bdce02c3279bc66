"""How pictures, measurements and the end-to-end checks use the program on a desktop: the programs, the tray hosts, the
portal and the accessibility tree.

They run inside with_desktop.py and take the folder of the executables from QUORBIT_BIN, build/release/bin unless it is
set.
"""
import json
import os
import re
import shutil
import signal
import subprocess
import tempfile
import time
import unittest
import urllib.request
from pathlib import Path

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, Gio, GLib  # noqa: E402

BIN = Path(os.environ.get("QUORBIT_BIN", Path(__file__).resolve().parents[2] / "build/release/bin"))
HOME = Path(os.environ["HOME"])
# How long the program may take to quit; where leaks are looked for, that comes last.
QUITTING = 25 if "detect_leaks=1" in os.environ.get("ASAN_OPTIONS", "") else 1
PATIENCE = 20 + QUITTING  # seconds; the machine may be busy
# Asked first, so that the screen-reader bus is there before any program looks for it.
DESKTOP = Atspi.get_desktop(0)
Atspi.set_timeout(PATIENCE * 1000, PATIENCE * 1000)
CONNECTION = HOME / "Library" / "Application Support" / "Quorbit"


def wait_for(what, condition, seconds=PATIENCE):
    """Waits until the condition yields something true, and gives it back."""
    end = time.monotonic() + seconds
    while True:
        pump()
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError(f"waited {seconds} s for {what}")
        time.sleep(0.02)


def stays(condition, seconds):
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        pump()
        if not condition():
            return False
        time.sleep(0.02)
    return True


def pump():
    """Lets the D-Bus objects that this process serves answer."""
    while GLib.MainContext.default().iteration(False):
        pass


def processes(executable, mark=b""):
    """The ids of the processes that run that file with that in their environment."""
    found = []
    for entry in Path("/proc").glob("[0-9]*"):
        try:
            if os.readlink(entry / "exe") == str(executable) and mark in (entry / "environ").read_bytes():
                found.append(int(entry.name))
        except OSError:
            continue
    return found


def session_buses():
    """The bus daemons of this desktop; others may run on the computer."""
    return processes("/usr/bin/dbus-daemon", f"HOME={HOME}\0".encode())


class Program:
    """A started program with what it printed; ended when the block ends."""

    def __init__(self, *command, env=None):
        self.output = tempfile.TemporaryFile()
        whole = {**os.environ, **(env or {})}
        self.process = subprocess.Popen([str(part) for part in command], stdout=self.output, stderr=subprocess.STDOUT,
                                        env={key: value for key, value in whole.items() if value is not None})
        self.pid = self.process.pid

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.end()
        self.output.close()

    def running(self):
        return self.process.poll() is None

    def end(self, with_signal=signal.SIGTERM, seconds=4 + QUITTING):
        if self.running():
            self.process.send_signal(with_signal)
        try:
            return self.process.wait(seconds)
        except subprocess.TimeoutExpired:
            self.process.kill()
            raise AssertionError(f"{self.process.args[0]} did not end within {seconds} s") from None
        finally:
            # This sanitizer writes here alone.
            assert "runtime error: " not in self.printed(), self.printed()

    def printed(self):
        # Not by seeking: the program writes where this descriptor stands.
        return os.pread(self.output.fileno(), os.fstat(self.output.fileno()).st_size, 0).decode(errors="replace")


class Sim(Program):
    """The simulated service, whose address is known when the constructor returns."""

    def __init__(self, scenario="live", *options):
        self.stale = self._address()
        super().__init__(BIN / "quorbitd-sim", "run", "--no-tray", "--log", "--scenario", scenario, *options)
        self.url = wait_for("the service's address", lambda: (url := self._address()) != self.stale and url)
        self.token = (CONNECTION / "ui-token").read_text().strip()

    @staticmethod
    def _address():
        try:
            return (CONNECTION / "ui-url").read_text().strip()
        except OSError:
            return None

    def ask(self, path, method="GET", body=None):
        request = urllib.request.Request(self.url.split("?")[0].rstrip("/") + path, method=method,
                                         headers={"Authorization": f"Bearer {self.token}"},
                                         data=json.dumps(body).encode() if body is not None else None)
        with urllib.request.urlopen(request, timeout=3) as reply:
            text = reply.read()
        return json.loads(text) if text else None

    def settings(self, key):
        return self.ask("/api/settings").get(key)

    def requests(self, path):
        """How many requests for that path came."""
        return self.printed().count(f" {path} ")

    def commands(self):
        """What else than its state it was asked for, in the order of the answers."""
        return re.findall(r"^((?:PUT|POST|DELETE) \S+)", self.printed(), re.MULTILINE)

    def wait_for_polls(self, count=2):
        """More than there were; what was asked first has been answered when it is asked again."""
        before = self.requests("/api/history")
        wait_for("more polls", lambda: self.requests("/api/history") >= before + count)


# The accessibility tree


def application_node(pid):
    for index in range(DESKTOP.get_child_count()):
        try:
            child = DESKTOP.get_child_at_index(index)
            if child and child.get_process_id() == pid:
                return child
        except GLib.Error:
            continue
    return None


def nodes(root, role=None, name=None):
    """Every node that is showing from root down, in order, with that role name and that name or a name like that."""
    try:
        root.clear_cache()
        own = root.get_name()
        if not root.get_state_set().contains(Atspi.StateType.SHOWING):
            return
        if role in (None, root.get_role_name()) and (name.match(own) if isinstance(name, re.Pattern)
                                                     else name in (None, own)):
            yield root
        for index in range(root.get_child_count()):
            if child := root.get_child_at_index(index):
                yield from nodes(child, role, name)
    except GLib.Error:
        pass  # it has gone meanwhile


def states(node):
    node.clear_cache()
    return {state.value_nick for state in node.get_state_set().get_states()}


def extents(node):
    return Atspi.Component.get_extents(node, Atspi.CoordType.SCREEN)


def press(node):
    Atspi.Action.do_action(node, 0)


class Tree:
    """What a screen reader finds in the program with that number, and does with it."""

    def __init__(self, pid):
        self.pid = pid

    def all(self, role=None, name=None):
        root = application_node(self.pid)
        return list(nodes(root, role, name)) if root else []

    def find(self, role=None, name=None):
        root = application_node(self.pid)
        return next(nodes(root, role, name), None) if root else None

    def wait(self, role=None, name=None):
        return wait_for(f"the {role} {name}", lambda: self.find(role, name))

    def wait_gone(self, role=None, name=None):
        wait_for(f"the end of the {role} {name}", lambda: not self.find(role, name))

    def press(self, role, name):
        press(self.wait(role, name))

    def open_tab(self, name):
        if not self.find("page tab"):
            self.press("push button", "Settings…")
        self.press("page tab", name)
        wait_for(f"the tab {name}", lambda: "selected" in states(self.wait("page tab", name)))


class Application(Program, Tree):
    """An instance of the program, and those that take its place when it restarts itself."""

    def __init__(self, env=None, executable=BIN / "quorbit", wrapper=()):
        self.executable, self.env = executable, env or {}
        super().__init__(*wrapper, executable, env=env)

    def __exit__(self, *arguments):
        super().__exit__(*arguments)
        for pid in self.instances():
            os.kill(pid, signal.SIGTERM)
        wait_for("the end of every instance", lambda: not self.instances())

    def instances(self):
        runtime = {**os.environ, **self.env}["XDG_RUNTIME_DIR"]
        return processes(self.executable, f"XDG_RUNTIME_DIR={runtime}\0".encode())

    def successor(self):
        """The only instance, once this one has made way for it."""
        self.process.wait(PATIENCE)
        return wait_for("the new instance", self.instances)[0]

    def start_again(self, **env):
        with Program(self.executable, env={**self.env, **env}) as second:
            assert second.process.wait(PATIENCE) == 0

    def open_panel(self):
        wait_for("the program", lambda: application_node(self.pid))
        self.start_again()
        wait_for("the panel's rows", lambda: len(self.all("push button")) > 1)


class Installed(Application):
    """As it is installed, with a service of its own that it finds and launches."""

    def __init__(self, env=None, wrapper=(), prefix=HOME / "prefix", service=BIN / "quorbitd-sim"):
        shutil.rmtree(prefix, ignore_errors=True)
        for folder in ("bin", "libexec/quorbit"):
            (prefix / folder).mkdir(parents=True)
        self.service = Path(shutil.copy2(service, prefix / "libexec/quorbit/quorbitd"))
        super().__init__(env, Path(shutil.copy2(BIN / "quorbit", prefix / "bin/quorbit")), wrapper)

    def __exit__(self, *arguments):
        super().__exit__(*arguments)
        wait_for("the end of the service", lambda: not processes(self.service))


class Desk(unittest.TestCase):
    """A desktop with a tray, a service and the application, whose panel is open."""

    def start(self, scenario, *options, env=None):
        self.tray = self.enterContext(StatusNotifierTray())
        self.service = self.enterContext(Sim(scenario, *options))
        self.app = self.enterContext(Application(env))
        self.tray.open_panel(self.app)


# Windows, as the X server knows them


def xdotool(*words):
    return subprocess.run(["xdotool", *map(str, words)], capture_output=True, text=True, check=False).stdout.strip()


def windows(name=".+", pid=None):
    """The visible windows with a title like that."""
    return xdotool("search", "--onlyvisible", *(["--all", "--pid", pid] if pid else []), "--name", name).split()


def geometry(window):
    """Where it is, or nothing when it has just gone."""
    values = dict(re.findall(r"(\w+)=(-?\d+)", xdotool("getwindowgeometry", "--shell", window)))
    return tuple(int(values[key]) for key in ("X", "Y", "WIDTH", "HEIGHT")) if values else (0,) * 4


def icon():
    """Where the application's icon is in an X11 tray, told from its windows by the size."""
    places = map(geometry, xdotool("search", "--onlyvisible", "--classname", "^quorbit$").split())
    return next((place for place in places if 0 < place[2] < 60), None)


def pointer(place, *action):
    """Moves the pointer to the middle of that place, and does that there."""
    x, y, width, height = place
    xdotool("mousemove", x + width // 2, y + height // 2, *action)


def click(node, button=1):
    place = extents(node)
    pointer((place.x, place.y, place.width, place.height), "click", button)


def keys(*names):
    xdotool("key", "--clearmodifiers", *names)


def pixels(window="root"):
    """Of the screen or of a window, three bytes each."""
    return subprocess.run(["import", "-silent", "-window", window, "-depth", "8", "rgb:-"], capture_output=True,
                          check=True).stdout


def picture(path):
    path.parent.mkdir(parents=True, exist_ok=True)
    subprocess.run(["import", "-silent", "-window", "root", str(path)], check=True)


# What a desktop offers


class XembedTray(Program):
    """An X11 tray of the old kind, along an edge that it takes from the windows' room."""

    def __init__(self, edge="top", align="right"):
        super().__init__("trayer", "--edge", edge, "--align", align, "--widthtype", "request", "--height", "28",
                         "--SetDockType", "true", "--SetPartialStrut", "true", "--expand", "true")


class BusObject:
    """An object on a bus connection of its own, so that its name goes when it goes."""

    def __init__(self, name, path, xml, call, get=None):
        self.connection = Gio.DBusConnection.new_for_address_sync(
            os.environ["DBUS_SESSION_BUS_ADDRESS"],
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
        self.path = path
        interface = Gio.DBusNodeInfo.new_for_xml(xml).interfaces[0]
        self.interface = interface.name

        def on_call(_connection, sender, _path, _interface, _method, arguments, invocation):
            invocation.return_value(call(sender, *arguments.unpack()))

        self.connection.register_object(path, interface, on_call, get and (lambda *_: get), None)
        bus = "org.freedesktop.DBus"
        self.connection.call_sync(bus, "/org/freedesktop/DBus", bus, "RequestName", GLib.Variant("(su)", (name, 0)), None,
                                  Gio.DBusCallFlags.NONE, -1, None)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if not self.connection.is_closed():
            self.connection.close_sync(None)


class StatusNotifierTray(BusObject):
    """A tray host of the D-Bus kind; remembers the items that registered."""

    XML = """<node><interface name="org.kde.StatusNotifierWatcher">
        <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
        <property name="IsStatusNotifierHostRegistered" type="b" access="read"/></interface></node>"""

    def __init__(self):
        self.items = []
        super().__init__("org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher", self.XML,
                         lambda sender, item: self.items.append((sender, item)), GLib.Variant("b", True))

    def ask(self, method):
        """Calls Activate, ContextMenu and the like of the newest item, as a host does."""
        sender, item = self.items[-1]
        name, path = (sender, item) if item.startswith("/") else (item, "/StatusNotifierItem")
        self.connection.call(name, path, "org.kde.StatusNotifierItem", method, GLib.Variant("(ii)", (600, 300)), None,
                             Gio.DBusCallFlags.NONE, -1, None, None)

    def open_panel(self, app):
        wait_for("the item", lambda: self.items)
        self.ask("Activate")
        wait_for("the panel's rows", lambda: len(app.all("push button")) > 1)

    def menu(self, chosen=None):
        """Chooses that entry of the newest item's menu, and gives back the entries with their check marks."""
        def call(method, types, *arguments):
            return self.connection.call_sync(self.items[-1][0], "/MenuBar", "com.canonical.dbusmenu", method,
                                             GLib.Variant(types, arguments), None, Gio.DBusCallFlags.NONE, -1, None)
        _, (_, _, entries) = call("GetLayout", "(iias)", 0, -1, []).unpack()
        entries = {properties["label"]: (number, properties.get("toggle-state"))
                   for number, properties, _ in entries if "label" in properties}
        if chosen:
            call("Event", "(isvu)", entries[chosen][0], "clicked", GLib.Variant("i", 0), 0)
        return {label: checked for label, (_, checked) in entries.items()}


class Portal(BusObject):
    """The desktop's settings portal, with GNOME's own group beside the common one."""

    XML = """<node><interface name="org.freedesktop.portal.Settings">
        <method name="ReadAll"><arg type="as" direction="in"/><arg type="a{sa{sv}}" direction="out"/></method>
        <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal></interface></node>"""
    APPEARANCE, GNOME = "org.freedesktop.appearance", "org.gnome.desktop.interface"

    def __init__(self, dark=False):
        self.values = {self.APPEARANCE: {"color-scheme": GLib.Variant("u", 1 if dark else 2)}, self.GNOME: {}}
        super().__init__("org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop", self.XML,
                         lambda *_: GLib.Variant("(a{sa{sv}})", (self.values,)))

    def set(self, key, kind, value, group=APPEARANCE):
        self.values[group][key] = GLib.Variant(kind, value)
        self.connection.emit_signal(None, self.path, self.interface, "SettingChanged",
                                    GLib.Variant("(ssv)", (group, key, self.values[group][key])))
