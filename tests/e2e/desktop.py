"""What the end-to-end checks have in common: the programs, the tray hosts, the portal and the accessibility tree.

They run inside with_desktop.py and take the folder of the executables from QUORBIT_BIN, build/release/bin unless it is
set.
"""
import json
import os
import re
import signal
import socket
import subprocess
import tempfile
import time
import urllib.request
from pathlib import Path

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, Gio, GLib  # noqa: E402

BIN = Path(os.environ.get("QUORBIT_BIN", Path(__file__).resolve().parents[2] / "build/release/bin"))
HOME = Path(os.environ["HOME"])
# How long the program may take to quit; where leaks are looked for, that comes last.
QUITTING = 25 if "detect_leaks=1" in os.environ.get("ASAN_OPTIONS", "") else 1
# Asked first, so that the screen-reader bus is there before any program looks for it.
DESKTOP = Atspi.get_desktop(0)
CONNECTION = HOME / "Library" / "Application Support" / "Quorbit"


def wait_for(what, condition, seconds=10.0):
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


def pump():
    """Lets the D-Bus objects that this process serves answer."""
    context = GLib.MainContext.default()
    while context.iteration(False):
        pass


def stays(condition, seconds):
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        pump()
        if not condition():
            return False
        time.sleep(0.02)
    return True


def processes(executable):
    """The ids of the processes that run that file."""
    found = []
    for entry in Path("/proc").iterdir():
        try:
            if entry.name.isdigit() and os.readlink(entry / "exe") == str(executable):
                found.append(int(entry.name))
        except OSError:
            continue
    return found


class Program:
    """A started program with what it printed; ended when the block ends."""

    def __init__(self, *command, env=None):
        self.output = tempfile.TemporaryFile()
        self.process = subprocess.Popen([str(part) for part in command], stdout=self.output,
                                        stderr=subprocess.STDOUT, env={**os.environ, **(env or {})})

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.end()
        self.output.close()

    @property
    def pid(self):
        return self.process.pid

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
        self.output.seek(0)
        return self.output.read().decode(errors="replace")


def read_address():
    try:
        return (CONNECTION / "ui-url").read_text().strip()
    except OSError:
        return None


class Sim(Program):
    """The simulated service, listening when the constructor returns."""

    def __init__(self, scenario="live", *options):
        self.stale = read_address()
        super().__init__(BIN / "quorbitd-sim", "run", "--no-tray", "--scenario", scenario, *options)
        self.url = wait_for("the service's address", self._address)
        self.token = (CONNECTION / "ui-token").read_text().strip()

    def _address(self):
        address = read_address()
        if not address or address == self.stale:
            return None
        try:
            port = int(address.rsplit(":", 1)[1])
            socket.create_connection(("127.0.0.1", port), timeout=1).close()
        except (OSError, ValueError):
            return None
        return address

    def ask(self, path, method="GET", body=None):
        request = urllib.request.Request(self.url.split("?")[0].rstrip("/") + path, method=method,
                                         headers={"Authorization": f"Bearer {self.token}"},
                                         data=json.dumps(body).encode() if body is not None else None)
        with urllib.request.urlopen(request, timeout=3) as reply:
            text = reply.read()
        return json.loads(text) if text else None


    def requests(self, path):
        """How many requests for that path came; needs --log."""
        return self.printed().count(f" {path} ")


class Application(Program):
    def __init__(self, *arguments, env=None, executable=BIN / "quorbit"):
        super().__init__(executable, *arguments, env=env)


class XembedTray(Program):
    """An X11 tray of the old kind."""

    def __init__(self):
        super().__init__("trayer", "--edge", "top", "--align", "right", "--widthtype", "request", "--height", "28",
                         "--SetDockType", "true", "--iconspacing", "4")


# Windows, as the window manager knows them


def windows(name=".+", pid=None):
    """The visible windows with a title like that."""
    return search(["--name", name], pid)


def tray_icons():
    """The application's icons in an X11 tray, which have no title."""
    return search(["--classname", "^quorbit$"])


def search(terms, pid=None):
    owner = ["--all", "--pid", str(pid)] if pid else []
    return subprocess.run(["xdotool", "search", "--onlyvisible", *owner, *terms], capture_output=True, text=True,
                          check=False).stdout.split()


def geometry(window):
    text = subprocess.run(["xdotool", "getwindowgeometry", "--shell", window], capture_output=True, text=True,
                          check=True).stdout
    values = dict(re.findall(r"(\w+)=(-?\d+)", text))
    return tuple(int(values[key]) for key in ("X", "Y", "WIDTH", "HEIGHT"))


def pointer(x, y, button=1):
    subprocess.run(["xdotool", "mousemove", str(x), str(y), "click", str(button)], check=True)


def keys(*names):
    subprocess.run(["xdotool", "key", "--clearmodifiers", *names], check=True)


def picture(path):
    path.parent.mkdir(parents=True, exist_ok=True)
    subprocess.run(["import", "-silent", "-window", "root", str(path)], check=True)


# The accessibility tree


def application_node(pid):
    for index in range(DESKTOP.get_child_count()):
        child = DESKTOP.get_child_at_index(index)
        try:
            if child and child.get_process_id() == pid:
                return child
        except GLib.Error:
            continue
    return None


def nodes(root, role=None, name=None, showing=True):
    """Every node below root with that role name and name."""
    found, todo = [], [root]
    while todo:
        node = todo.pop()
        try:
            node.clear_cache()
            if ((role is None or node.get_role_name() == role) and (name is None or node.get_name() == name)
                    and (not showing or node.get_state_set().contains(Atspi.StateType.SHOWING))):
                found.append(node)
            children = [node.get_child_at_index(i) for i in range(node.get_child_count())]
            todo.extend(child for child in reversed(children) if child)
        except GLib.Error:
            continue
    return found


def node(pid, role=None, name=None, showing=True):
    """The first such node of the program, or None."""
    root = application_node(pid)
    found = nodes(root, role, name, showing) if root else []
    return found[0] if found else None


def has(accessible, state):
    accessible.clear_cache()
    return accessible.get_state_set().contains(state)


def press(accessible):
    Atspi.Action.do_action(accessible, 0)


# What a desktop offers on the session bus


class BusObject:
    """An object on a bus connection of its own, so that its name goes when it goes."""

    def __init__(self, name, path, xml, call, get=None):
        self.connection = Gio.DBusConnection.new_for_address_sync(
            os.environ["DBUS_SESSION_BUS_ADDRESS"],
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
        self.path = path
        info = Gio.DBusNodeInfo.new_for_xml(xml)
        self.interface = info.interfaces[0].name

        def on_call(_connection, sender, _path, _interface, method, arguments, invocation):
            invocation.return_value(call(sender, method, arguments.unpack()))

        def on_get(_connection, _sender, _path, _interface, property_name):
            return get(property_name)

        self.connection.register_object(path, info.interfaces[0], on_call, on_get if get else None, None)
        self.connection.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                  "RequestName", GLib.Variant("(su)", (name, 0)), None, Gio.DBusCallFlags.NONE, -1, None)

    def emit(self, member, arguments=None):
        self.connection.emit_signal(None, self.path, self.interface, member, arguments)

    def close(self):
        if not self.connection.is_closed():
            self.connection.close_sync(None)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()


class StatusNotifierTray(BusObject):
    """A tray host of the D-Bus kind; remembers the items that registered."""

    XML = """<node><interface name="org.kde.StatusNotifierWatcher">
        <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
        <method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
        <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
        <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
        <property name="ProtocolVersion" type="i" access="read"/>
        <signal name="StatusNotifierItemRegistered"><arg type="s"/></signal>
        <signal name="StatusNotifierHostRegistered"/></interface></node>"""

    def __init__(self):
        self.items = []
        super().__init__("org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher", self.XML, self._call, self._get)

    def _call(self, sender, method, arguments):
        if method == "RegisterStatusNotifierItem":
            self.items.append((sender, arguments[0]))
        return None

    def _get(self, name):
        return {"RegisteredStatusNotifierItems": GLib.Variant("as", [item for _, item in self.items]),
                "IsStatusNotifierHostRegistered": GLib.Variant("b", True),
                "ProtocolVersion": GLib.Variant("i", 0)}[name]

    def ask(self, method, *position):
        """Calls Activate, ContextMenu and the like of the newest item, as a host does."""
        sender, item = self.items[-1]
        name, path = (sender, item) if item.startswith("/") else (item, "/StatusNotifierItem")
        self.connection.call(name, path, "org.kde.StatusNotifierItem", method,
                             GLib.Variant("(ii)", position or (600, 300)), None, Gio.DBusCallFlags.NONE, -1, None, None)


class Portal(BusObject):
    """The desktop's settings portal."""

    XML = """<node><interface name="org.freedesktop.portal.Settings">
        <method name="Read"><arg type="s" direction="in"/><arg type="s" direction="in"/>
            <arg type="v" direction="out"/></method>
        <method name="ReadOne"><arg type="s" direction="in"/><arg type="s" direction="in"/>
            <arg type="v" direction="out"/></method>
        <method name="ReadAll"><arg type="as" direction="in"/><arg type="a{sa{sv}}" direction="out"/></method>
        <property name="version" type="u" access="read"/>
        <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal></interface></node>"""
    APPEARANCE = "org.freedesktop.appearance"

    def __init__(self, dark=False):
        self.values = {"color-scheme": GLib.Variant("u", 1 if dark else 2)}
        super().__init__("org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop", self.XML, self._call,
                         lambda _: GLib.Variant("u", 2))

    def _call(self, _sender, method, arguments):
        if method == "ReadAll":
            return GLib.Variant("(a{sa{sv}})", ({self.APPEARANCE: self.values},))
        value = self.values.get(arguments[1], GLib.Variant("u", 0))
        return GLib.Variant("(v)", (GLib.Variant("v", value) if method == "Read" else value,))

    def set(self, key, value):
        self.values[key] = value
        self.emit("SettingChanged", GLib.Variant("(ssv)", (self.APPEARANCE, key, value)))


def announce_accessibility_change():
    """The signal by which the desktop tells that permissions changed."""
    connection = Gio.bus_get_sync(Gio.BusType.SESSION)
    connection.emit_signal(None, "/any", "com.apple.accessibility", "api", None)
    connection.flush_sync(None)
