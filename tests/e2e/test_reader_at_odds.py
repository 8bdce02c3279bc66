#!/usr/bin/python3
"""The real executable under a screen reader that asks for what is not there: beyond every end, for what has gone, for
what a sheet covers, and without a pause."""
import itertools
import json
import threading
import time
import unittest

from desktop import (Application, Desk, Gio, GLib, StatusNotifierTray, click, keys, press, stays, wait_for, windows,
                     xdotool)
from weather import Service, state

ATSPI = "org.a11y.atspi."
ROOT = "/org/a11y/atspi/accessible/root"
PROPERTIES = "org.freedesktop.DBus.Properties"
MOMENT = 5000  # ms; the machine may be busy
LEAST, MOST = -1 << 31, (1 << 31) - 1
# What takes an index, an offset or a place, with the types of its arguments.
METHODS = {
    "Accessible": {"GetChildAtIndex": "i"},
    "Action": dict.fromkeys(("DoAction", "GetName", "GetDescription", "GetLocalizedName", "GetKeyBinding"), "i"),
    "Component": {"Contains": "iiu", "GetAccessibleAtPoint": "iiu", "GetExtents": "u", "GetPosition": "u",
                  "SetExtents": "iiiiu", "SetPosition": "iiu", "SetSize": "ii", "ScrollTo": "u", "ScrollToPoint": "uii"},
    "EditableText": {"CopyText": "ii", "CutText": "ii", "DeleteText": "ii", "InsertText": "isi", "PasteText": "i"},
    "Selection": {"GetSelectedChild": "i", "SelectChild": "i"},
    "Table": {"GetAccessibleAt": "ii", "IsSelected": "ii", "GetRowAtIndex": "i", "AddRowSelection": "i"},
    "Text": dict.fromkeys(("GetTextAtOffset", "GetTextBeforeOffset", "GetTextAfterOffset", "GetStringAtOffset",
                           "GetCharacterExtents"), "iu")
    | dict.fromkeys(("SetCaretOffset", "GetCharacterAtOffset", "GetAttributes", "GetSelection", "RemoveSelection"), "i")
    | {"GetText": "ii", "AddSelection": "ii", "SetSelection": "iii", "GetAttributeValue": "is", "GetAttributeRun": "ib",
       "GetRangeExtents": "iiu", "GetOffsetAtPoint": "iiu", "GetBoundedRanges": "iiiiuuu", "ScrollSubstringTo": "iiu",
       "ScrollSubstringToPoint": "iiuii"},
}
# What would do something to most objects.
ACTS = [*(("Action.DoAction", "i", index) for index in range(3)), ("Component.GrabFocus", ""),
        (PROPERTIES + ".Set", "ssv", ATSPI + "Value", "CurrentValue", GLib.Variant("d", 500)),
        ("EditableText.SetTextContents", "s", "x"), ("EditableText.InsertText", "isi", 0, "x", 1),
        ("Text.SetCaretOffset", "i", 1), ("Text.AddSelection", "ii", 0, 1), ("Text.SetSelection", "iii", 0, 0, 1)]
CHARACTER, WORD, SENTENCE, LINE = 0, 1, 3, 5  # the boundaries where they start
ENABLED, FOCUSABLE, SHOWING = 8, 11, 25
COUNTS = ("Accessible.ChildCount", "Action.NActions", "Text.CharacterCount")


class Wire:
    """Requests of any shape; the usual library keeps back what is odd, and remembers what it was told."""

    def __init__(self, pid):
        address, = Gio.bus_get_sync(Gio.BusType.SESSION).call_sync(
            "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None, Gio.DBusCallFlags.NONE, -1, None)
        self.bus = Gio.DBusConnection.new_for_address_sync(
            address, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION,
            None, None)
        self.name, self.last = "org.a11y.atspi.Registry", 0
        programs, = self.ask(ROOT, "Accessible.GetChildren")
        daemon = "org.freedesktop.DBus"
        self.name = next(name for name, _ in programs if self.bus.call_sync(
            daemon, "/org/freedesktop/DBus", daemon, "GetConnectionUnixProcessID", GLib.Variant("(s)", (name,)), None,
            Gio.DBusCallFlags.NONE, -1, None).unpack() == (pid,))

    def ask(self, path, method, types="", *arguments):
        """What is answered, nothing when it is refused."""
        interface, member = (method if method.startswith("org.") else ATSPI + method).rsplit(".", 1)
        try:
            return self.bus.call_sync(self.name, path, interface, member, GLib.Variant(f"({types})", arguments), None,
                                      Gio.DBusCallFlags.NONE, MOMENT, None).unpack()
        except GLib.Error as error:
            if error.matches(Gio.io_error_quark(), Gio.IOErrorEnum.TIMED_OUT) or any(
                    error.matches(Gio.dbus_error_quark(), kind) for kind in (
                        Gio.DBusError.NO_REPLY, Gio.DBusError.SERVICE_UNKNOWN, Gio.DBusError.NAME_HAS_NO_OWNER)):
                raise AssertionError(f"no answer to {method}{arguments} of {path}: {error.message}") from None
            return None

    def get(self, path, name):
        answer = self.ask(path, PROPERTIES + ".Get", "ss", *(ATSPI + name).rsplit(".", 1))
        return answer and answer[0]

    def set_value(self, path, value):
        return self.ask(path, PROPERTIES + ".Set", "ssv", ATSPI + "Value", "CurrentValue", value)

    def below(self, path, found):
        """Adds every object that is shown from there down, with its interfaces."""
        state = self.ask(path, "Accessible.GetState")
        if path not in found and state and (path == ROOT or state[0][0] >> SHOWING & 1):
            found[path] = {each.removeprefix(ATSPI) for each in self.ask(path, "Accessible.GetInterfaces")[0]}
            for _, child in (self.ask(path, "Accessible.GetChildren") or [[]])[0]:
                self.below(child, found)
        return found

    def showing(self):
        """Also menus that no window tells of: objects are numbered one after the other."""
        found = self.below(ROOT, {})
        self.last = max(self.last, *(int(path.rsplit("/", 1)[1]) for path in found if path != ROOT))
        for number in range(self.last, self.last + 50):
            self.below(ROOT.replace("root", str(number)), found)
        return found

    def told(self, path, interfaces):
        """What of the object could have been changed."""
        found = [self.ask(path, "Accessible.GetState")]
        if "Value" in interfaces:
            found.append(self.get(path, "Value.CurrentValue"))
        if "Text" in interfaces:
            found += [self.ask(path, "Text.GetText", "ii", 0, -1), self.get(path, "Text.CaretOffset"),
                      self.ask(path, "Text.GetSelection", "i", 0)]
        return found


class AtOdds(Desk):
    def setUp(self):
        self.start("still")
        self.wire, self.asked = Wire(self.app.pid), set()

    def views(self):
        """Opens one after the other."""
        yield "panel"
        for tab in ("Sync", "KVM", "About", "Overview", "Devices"):
            self.app.open_tab(tab)
            yield tab
            for picker in self.app.all("combo box")[:1]:
                press(picker)
                self.app.wait("popup menu")
                yield f"the menu of {picker.get_name()}"
                keys("Escape")
                self.app.wait_gone("popup menu")
            if field := self.app.find("text", "Device name"):
                shown = len(self.wire.showing())
                click(field, 3)
                wait_for("its menu", lambda: len(self.wire.showing()) > shown)
                yield "the menu of a field"
                keys("Escape")
        self.app.press("push button", "Remove, Office Linux")
        self.app.wait("alert")
        yield "alert"
        self.app.press("push button", "Cancel")
        self.app.wait_gone("alert")
        self.app.press("push button", "Add a computer")
        self.app.wait("radio button")
        for mode in self.app.all("radio button"):
            press(mode)
            yield f"sheet: {mode.get_name()}"

    def test_numbers_that_are_none(self):
        for view in self.views():
            with self.subTest(view=view):
                self.ask_odd_things()
        self.assertEqual(self.service.commands(), [])
        self.assertEqual(self.app.end(), 0)

    def ask_odd_things(self):
        new = {path: interfaces for path, interfaces in self.wire.showing().items() if path not in self.asked}
        self.asked |= new.keys()
        for path, interfaces in new.items():
            before = self.wire.told(path, interfaces)
            end = max(self.wire.get(path, count) or 0 for count in COUNTS)
            for interface, methods in METHODS.items():
                for (method, types), odd in itertools.product(
                        methods.items(), (-1, LEAST, end + 2, MOST) if interface in interfaces else (MOST,)):
                    call = [{"i": odd, "u": odd % (1 << 32), "s": "x", "b": True}[kind] for kind in types]
                    self.wire.ask(path, f"{interface}.{method}", types, *call)
                    if types[:2] in ("ii", "is", "iu"):
                        self.wire.ask(path, f"{interface}.{method}", types, 0, *call[1:])
                    if interface in interfaces:
                        self.wire.get(path, f"{interface}.{method.removeprefix('Get')}")
            if "Text" in interfaces:
                text, = self.wire.ask(path, "Text.GetText", "ii", 0, -1)
                for offset in (-1, len(text)):
                    self.assertEqual(self.wire.ask(path, "Text.GetTextAtOffset", "iu", offset, LINE),
                                     (text, 0, len(text)))
            if "Value" in interfaces:
                for value in map(float, ("nan", "inf", "-inf", 1e300, 2**31 + 5, 2**32 + 5, 1e6, -1, 1.5)):
                    self.wire.set_value(path, GLib.Variant("d", value))
                self.wire.set_value(path, GLib.Variant("s", "many"))
            self.wire.ask(path, PROPERTIES + ".GetAll", "s", ATSPI + "Text")
            self.assertEqual(self.wire.told(path, interfaces), before, path)
        for name in ("", "/0", "/1", f"/{1 << 31}", "/null", "/root/0"):
            self.wire.ask(ROOT.removesuffix("/root") + name, "Accessible.GetChildAtIndex", "i", 0)

    def test_where_a_text_ends(self):
        self.app.open_tab("Overview")
        field = self.app.wait("text", "Device name").path
        # text, its last character, word and sentence
        for text, *last in (("", "", "", ""), ("Chen's desk", "k", "desk", "Chen's desk"),
                            ("Hi. Bye now", "w", "now", "Bye now"), ("desk 😀", "😀", "😀", "desk 😀"),
                            ("a cafe\u0301", "e\u0301", "cafe\u0301", "a cafe\u0301"), ("书房", "房", "房", "书房")):
            self.wire.ask(field, "EditableText.SetTextContents", "s", text)
            end = len(text.encode("utf-16-le")) // 2
            for offset, wanted in ((end, ["", *last[1:], text]), (-1, ["", *last[1:], text]), (end - 1, [*last, text])):
                found = [self.wire.ask(field, "Text.GetTextAtOffset", "iu", offset, unit)
                         for unit in (CHARACTER, WORD, SENTENCE, LINE)]
                with self.subTest(text=text, offset=offset):
                    self.assertEqual([each[0] for each in found], wanted)
                    self.assertEqual([each[2] for each in found[1:]], [end] * 3)
                self.assertEqual(self.wire.ask(field, "Text.GetStringAtOffset", "iu", end, 1)[0], last[1])
        self.wire.ask(field, "EditableText.SetTextContents", "s", "😀")
        self.wire.ask(field, "EditableText.DeleteText", "ii", 0, 1)  # half of it
        self.wire.ask(field, "EditableText.InsertText", "isi", 0, "😀", 1)
        self.assertEqual(self.wire.ask(field, "Text.GetText", "ii", 0, 1 << 20), ("😀",))

    def test_what_cannot_be_used(self):
        self.app.open_tab("Devices")
        for button, role in (("Remove, Office Linux", "alert"), ("Add a computer", "dialog")):
            with self.subTest(role):
                self.app.press("push button", button)
                self.app.wait(role)
                over = self.wire.below(self.app.wait(role).path, {})
                behind = {path: interfaces for path, interfaces in self.wire.showing().items() if path not in over}
                before = {path: self.wire.told(path, interfaces) for path, interfaces in behind.items()}
                self.assertEqual([self.wire.get(path, "Accessible.Name") for path, (state, *_) in before.items()
                                  if state[0][0] & (1 << ENABLED | 1 << FOCUSABLE)], ["quorbit", "Settings"])
                for path, (method, types, *call) in itertools.product(behind, ACTS):
                    self.wire.ask(path, method, types, *call)
                after = {path: self.wire.told(path, interfaces) for path, interfaces in self.wire.showing().items()}
                self.assertEqual({path: after.get(path) for path in before}, before)
                keys("Escape")
                self.app.wait_gone(role)
        self.app.open_tab("Sync")
        gone = self.app.wait("check box", "Files").path
        self.app.open_tab("Overview")
        self.wire.ask(gone, "Action.DoAction", "i", 0)
        only_read = self.app.wait("text", "Device ID").path
        before = self.wire.told(only_read, {"Text"})
        self.wire.ask(only_read, "EditableText.SetTextContents", "s", "x")
        self.assertEqual(self.wire.told(only_read, {"Text"}), before)
        self.service.wait_for_polls()
        self.assertEqual(self.service.commands(), [])


class Walk(unittest.TestCase):
    """A reader that never stops, while everything that it meets comes and goes."""

    SECONDS = 20

    def walk(self, wire, path=ROOT):
        """Asks for one child more than there were."""
        self.met += 1
        for method, types, *call in (("Accessible.GetState", ""), ("Accessible.GetRelationSet", ""),
                                     ("Accessible.GetIndexInParent", ""), ("Component.GetExtents", "u", 0),
                                     ("Text.GetTextAtOffset", "iu", -1, WORD)):
            wire.ask(path, method, types, *call)
        for index in range((wire.get(path, "Accessible.ChildCount") or 0) + 1):
            if child := wire.ask(path, "Accessible.GetChildAtIndex", "i", index):
                self.walk(wire, child[0][1])

    def keep_walking(self, wire):
        try:
            while time.monotonic() < self.end:
                self.walk(wire)
        except Exception as fault:  # told by the test
            self.fault = fault

    def test_walks_without_a_pause(self):
        tray, service = self.enterContext(StatusNotifierTray()), self.enterContext(Service())
        app = self.enterContext(Application())
        wait_for("the item", lambda: tray.items)
        app.open_panel()
        app.open_tab("Sync")
        window, = wait_for("the window", lambda: windows("Settings"))
        few = state(1)
        many = few | {path: json.dumps([json.loads(few[path])[0] | {"id": number, "device_id": f"{number}"}
                                        for number in range(count)])
                      for path, count in (("/api/history", 60), ("/api/devices", 12))}
        self.met, self.fault, self.end = 0, None, time.monotonic() + self.SECONDS
        reader = threading.Thread(target=self.keep_walking, args=[Wire(app.pid)])
        reader.start()
        for good, tab, width in itertools.cycle(itertools.product(
                (many, few), ("Sync", "Overview", "Sync", "KVM", "Devices", "About"), (560, 900))):
            if time.monotonic() > self.end or self.fault:
                break
            service.tell(good=good, bad={}, faults={})
            app.press("page tab", tab)
            xdotool("windowsize", window, width, width)
            tray.ask("Activate")
            stays(lambda: not self.fault, 0.3)
        reader.join()
        self.assertIsNone(self.fault)
        self.assertGreater(self.met, 1000)
        self.assertEqual(app.end(), 0)


if __name__ == "__main__":
    unittest.main()
