#!/usr/bin/python3
"""The real executable as a screen reader meets it: every view is read, every control is worked, also by keys and by the
pointer, and what changes is followed."""
import re
import socket
import unittest

from desktop import (HOME, PATIENCE, Application, Atspi, Desk, Sim, StatusNotifierTray, Tree, click, extents, keys,
                     pixels, pointer, press, states, stays, wait_for, windows, xdotool)
from reader import Announcements, faults, screen

ENGLISH, CHINESE = "en_GB.UTF-8", "zh_CN.UTF-8"
TOLD = {"checked", "enabled", "expanded", "modal", "selected"}  # of the states


class Audit(unittest.TestCase):
    """Every view in every state is told completely, once and in order, by a program that has shown others before as by
    a new one."""

    # What the service says, the language, and what is told.
    ROWS = (("full", ENGLISH, r"Last checked: \d+ \w+ 20\d\d"),
            ("chinese --history 6", ENGLISH, "季度报告.pdf · 75%.*Search history"),
            ("needs-restart --history 5", ENGLISH, "^(?!.*Search history).*Last seen 2 min"),
            ("sparse", CHINESE, r"上次检查.*20\d\d年"), ("empty", ENGLISH, "No paired computers"),
            ("offline-master", CHINESE, "[0-9 ]+分钟前"))

    def test_every_view(self):
        tray, first = self.enterContext(StatusNotifierTray()), {}
        for scenario, language, wanted in self.ROWS:
            tray.items.clear()
            runtime = HOME / scenario.split()[0]
            runtime.mkdir(mode=0o700)
            with self.subTest(scenario=scenario, language=language), Sim(*scenario.split()) as self.service:
                env = {"LANG": language, "LANGUAGE": "", "XDG_RUNTIME_DIR": str(runtime)}
                app = self.enterContext(Application(env))
                wait_for("the item", lambda: tray.items)
                told = self.tour(app, {}, language not in first)
                self.assertRegex(str(told), wanted)
                self.tour(first.setdefault(language, app), told, False)

    def tour(self, app, expected, with_menus):
        """What is told of every view, and when it is not what is expected, a failure."""
        app.open_panel()
        told = {"panel": self.audit(app, "panel", expected)}
        press(wait_for("the panel", lambda: app.all("push button"))[-2])
        tabs = wait_for("the tabs", lambda: len(found := app.all("page tab")) == 5 and found)
        for tab in tabs:
            press(tab)
            wait_for("the tab", lambda tab=tab: "selected" in states(tab))
            told[tab.get_name()] = self.audit(app, tab.get_name(), expected)
            if with_menus:
                self.audit_pickers(app)
            if with_menus and tab == tabs[-2]:
                self.audit_sheets(app)
        return told

    def audit(self, app, view, expected=()):
        # A view may be on its way to what the service says.
        data = [entry.get("label") for entry in self.service.ask("/api/history") if entry.get("label")]
        found, told = [], []

        def sound():
            elements = [each for each in screen(app.pid) if view != "panel" or each.window().name == "Quorbit"]
            found[:] = faults(elements, data)
            told[:] = [(each.role, re.sub(r"\d\d:\d\d", "", each.name), each.description, each.text, each.range,
                        *sorted(each.states & TOLD)) for each in elements]
            started = all(each.name != "—" for each in elements)
            return started and not found and (view not in expected or told == expected[view])
        try:
            wait_for("a sound view", sound)
        except AssertionError:
            self.assertEqual(found, [], view)
            self.assertEqual(told, view in expected and expected[view], view)
        return told

    def audit_pickers(self, app):
        for picker in app.all("combo box"):
            if "enabled" not in states(picker):
                continue
            press(picker)
            app.wait("popup menu")
            chosen = [each for each in screen(app.pid) if "checked" in each.states]
            self.assertEqual([each.name for each in chosen], [Atspi.Text.get_text(picker, 0, -1)])
            self.audit(app, f"the menu of {picker.get_name()}")
            press(chosen[0].node)
            app.wait_gone("popup menu")

    def audit_sheets(self, app):
        *remove, add = app.all("push button")
        if remove:
            press(remove[0])
            app.wait("alert")
            self.audit(app, "alert")
            press(app.all("push button")[-2])
            app.wait_gone("alert")
        press(add)
        app.wait("radio button")
        for mode in app.all("radio button"):
            press(mode)
            wait_for("the mode", lambda mode=mode: "checked" in states(mode))
            self.audit(app, f"sheet: {mode.get_name()}")
        press(app.all("push button")[-1])
        app.wait_gone("dialog")


OWN, OFFICE = "10b4e2f09a77c1d3", "77aa01fe"
OWN_CARD, OFFICE_CARD = re.compile(".*this computer"), re.compile("Office Linux")
PAIRING_FAILED = "Pairing failed. Check the address and the PIN."
CHECK_FAILED = "Cannot reach the update server. Check your network."


class Use(Desk):
    """Every control is worked, by a reader, by keys and by the pointer; the service is told that and nothing else."""

    def test_works_every_control(self):
        proxy = self.enterContext(socket.create_server(("127.0.0.1", 0)))
        proxy.settimeout(PATIENCE)
        self.told = []
        self.start("full", "--speed", "10", env={"XDG_CONFIG_HOME": str(HOME / "used"),
                                                 "https_proxy": f"http://127.0.0.1:{proxy.getsockname()[1]}"})
        self.enterContext(proxy.accept()[0]).sendall(b"HTTP/1.1 502 Bad Gateway\r\nContent-Length: 0\r\n\r\n")
        find, says = self.app.find, self.says

        def rows():
            return [each.get_name() for each in self.app.all("list item")]

        def has(state, name):
            return state in states(find(name=name))

        clip, scrap = "Screenshot 1440 × 900, Travel laptop", "<b>bold</b> & <img src=x> are only text, Office Linux"
        # tab, role, name, what is done, what the service is told, what is then seen
        steps = [
            (None, "check box", "Pause syncing", "Toggle", "POST /api/pause", lambda: says("Syncing paused")),
            (None, "check box", "Pause syncing", "key space", "POST /api/resume", lambda: says("Syncing resumed")),
            (None, "check box", "Pause syncing", "click", "POST /api/pause", lambda: self.tray.menu()["Pause syncing"]),
            (None, "check box", "Pause syncing", "key Return", "POST /api/resume",
             lambda: not self.tray.menu()["Pause syncing"]),
            (None, "push button", clip, "Press", "POST /api/history/apply/11"),
            (None, "push button", "3 files, Studio Mac", "right click", None),
            (None, "push button", "3 files, Studio Mac", "click", "POST /api/history/apply/10"),
            (None, "push button", "Settings…", "key Return", None, self.show_all),
            ("Sync", "check box", "Text", "Toggle", {"sync_text": False}),
            ("Sync", "check box", "Images", "Press", {"sync_image": False}),
            ("Sync", "check box", "Files", "click", {"sync_files": True}),
            ("Sync", "spin button", "Largest file", "Increase", {"file_size_cap_mb": 110}),
            ("Sync", "spin button", "Largest file", "Decrease", {"file_size_cap_mb": 100}),
            ("Sync", "spin button", "Largest file", 10200, {"file_size_cap_mb": 10200}),
            ("Sync", "spin button", "Largest file", "key Page_Up", {"file_size_cap_mb": 10240}),
            ("Sync", "spin button", "Largest file", "upper half", None),
            ("Sync", "spin button", "Largest file", "lower half", {"file_size_cap_mb": 10230}),
            ("Sync", "spin button", "Largest file", "key Page_Down", {"file_size_cap_mb": 10130}),
            ("Sync", "spin button", "Largest file", "upper half", {"file_size_cap_mb": 10140}),
            ("Sync", "spin button", "Largest file", "key Down", {"file_size_cap_mb": 10130}),
            ("Sync", "spin button", "Largest file", "key Up", {"file_size_cap_mb": 10140}),
            ("Sync", "text", "Search history", "SSH", None, lambda: len(rows()) == 2),
            ("Sync", "text", "Search history", "?", None, lambda: says("No matching entries")),
            ("Sync", "text", "Search history", "", None, lambda: len(rows()) == 12),
            ("Sync", "list item", scrap, "Press", "POST /api/history/apply/8", lambda: rows()[0] == scrap),
            ("Sync", "list item", clip, "right click", None),
            ("Sync", "list item", clip, "click", "POST /api/history/apply/11", lambda: rows()[0] == clip),
            ("Sync", "push button", "Clear", "Press", "DELETE /api/history", lambda: not find("push button", "Clear")),
            ("KVM", "check box", "Share keyboard and mouse", "Toggle", {"kvm_enabled": False},
             lambda: not says("Ready. This computer is the master")),
            ("KVM", "check box", "Share keyboard and mouse", "key Return", {"kvm_enabled": True},
             lambda: says("This takes effect once the Quorbit service restarts.")),
            ("KVM", "check box", "Swap ⌘ and Ctrl", "click", {"kvm_swap_modifiers": True}),
            ("KVM", "combo box", "Switch delay", "500 ms", {"kvm_switch_delay_ms": 500}),
            ("KVM", "combo box", "Dead corners", "64 px", {"kvm_corner_size": 64}),
            ("KVM", "combo box", "Pointer speed", "3.0×", {"kvm_sensitivity": 3}),
            ("KVM", "push button", OFFICE_CARD, "Press", {"kvm_master_id": OFFICE},
             lambda: has("selected", OFFICE_CARD)),
            ("KVM", "push button", OWN_CARD, "click", {"kvm_master_id": OWN}, lambda: has("selected", OWN_CARD)),
            ("KVM", "push button", OFFICE_CARD, "key Return", {"kvm_master_id": OFFICE},
             lambda: says("The keyboard and mouse of Office Linux drive the others.")),
            ("KVM", "push button", OFFICE_CARD, "key Right", {"kvm_layout": (1878, 0)}),
            ("KVM", "push button", OFFICE_CARD, "key Down", {"kvm_layout": (1878, 100)}),
            ("KVM", "push button", OFFICE_CARD, "key shift+Left", {"kvm_layout": (1868, 100)}),
            ("KVM", "push button", OFFICE_CARD, "key Up", {"kvm_layout": (1868, 0)}),
            ("Overview", "label", "Running", None, None, lambda: self.has_dot("Running", green=True)),
            (None, "tray", "Pause syncing", None, "POST /api/pause", lambda: self.has_dot("Paused", green=False)),
            (None, "tray", "Pause syncing", None, "POST /api/resume", lambda: not self.tray.menu()["Pause syncing"]),
            ("Overview", "text", "Device name", "书房 & desk", None),
            ("Overview", "text", "Device name", "key Return", {"device_name": "书房 & desk"}, lambda: says("书房 & desk")),
            ("Overview", "text", "Device name", "key Return", None),
            ("Overview", "text", "Device name", "key x", None, lambda: says("书房 & deskx")),
            ("Devices", "push button", "Remove, Office Linux", "Press", None,
             lambda: says("Office Linux must be paired again before it can sync with this computer.")),
            (None, "push button", "Cancel", "Press", None, lambda: not find("alert")),
            ("Overview", "text", "Device name", None, None, lambda: says("书房 & desk")),  # nobody asked for the x
            ("Devices", "push button", "Remove, Office Linux", "key space", None, lambda: find("alert")),
            (None, "alert", "Remove this computer?", "key Return", None, lambda: not find("alert")),
            ("Devices", "push button", "Remove, Office Linux", "click", None, lambda: find("alert")),
            (None, "push button", "Remove", "Press", f"DELETE /api/devices/{OFFICE}",
             lambda: not find("alert") and not find("push button", "Remove, Office Linux")),
            ("Devices", "push button", "Add a computer", "click", None, lambda: find("dialog")),
            (None, "push button", "Create a PIN", "Press", "POST /api/pair/show", lambda: says("482 913")),
            (None, "frame", "Settings", None, None,
             lambda: not find("dialog") and find("push button", "Remove, Living room")),
            ("Devices", "push button", "Add a computer", "Press", None, lambda: find("dialog")),
            (None, "radio button", "Show a PIN", "key Right", None, lambda: has("checked", "Enter a PIN")),
            (None, "radio button", "Enter a PIN", "key Home", None, lambda: has("checked", "Show a PIN")),
            (None, "radio button", "Enter a PIN", "click", None, lambda: find("text", "PIN")),
            (None, "text", "Address or host name", "desk", None, lambda: not has("enabled", "Pair")),
            (None, "text", "PIN", "111111", None, lambda: has("enabled", "Pair")),
            (None, "push button", "Pair", "Press", "POST /api/pair/connect", lambda: says(PAIRING_FAILED)),
            (None, "text", "PIN", "482 913", None, lambda: has("enabled", "Pair")),
            (None, "push button", "Pair", "click", "POST /api/pair/connect",
             lambda: not find("dialog") and find("push button", "Remove, desk")),
            ("Devices", "push button", "Add a computer", "Press", None, lambda: find("dialog")),
            (None, "push button", "Done", "Press", None, lambda: not find("dialog")),
            ("About", "label", CHECK_FAILED, None, None, lambda: has("enabled", "Check now")),
            ("About", "push button", "Check now", "Press", None,
             lambda: says("Checking for updates…") and not has("enabled", "Check now")
             and self.enterContext(proxy.accept()[0])),
            (None, "tray", "Quorbit", None, None, lambda: find("check box", "Pause syncing")),
            (None, "tray", "Settings…", None, None, lambda: not find("check box", "Pause syncing")),
            ("About", "combo box", "Interface language", "click", None, lambda: find("popup menu")),
            (None, "popup menu", "Interface language", "key Down Return", None,
             lambda: find("push button", "Restart now")),
        ]
        for tab, role, name, action, told, *seen in steps:
            with self.subTest(control=name, action=action):
                self.step(tab, role, name, action, told)
                for effect in seen:
                    wait_for(f"the effect of {action} on {name}", effect)
        self.tray.items.clear()
        self.app.press("push button", "Restart now")
        again = Tree(self.app.successor())
        self.tray.open_panel(again)
        again.press("push button", "设置…")
        again.press("page tab", "关于")
        again.wait("label", re.compile(r"上次检查.*20\d\d年"))
        self.tray.menu("退出 Quorbit")
        wait_for("the end", lambda: not self.app.instances())

    def show_all(self):
        """Makes the settings so high that the pointer reaches all of every tab."""
        found = windows("^Settings$", self.app.pid)
        return found and (xdotool("windowsize", "--sync", found[0], 600, 940) or True)

    def says(self, text):
        return any(text in (each.name, each.text) for each in screen(self.app.pid))

    def has_dot(self, text, green):
        """Whether the dot before that text is green, and not orange."""
        place = extents(self.app.wait("label", text))
        at = 3 * ((place.y + place.height // 2) * 1280 + place.x - 10)
        red, green_part, _ = pixels()[at:at + 3]
        return (green_part > red) == green

    def settings(self):
        """What the service has stored, of the screens only where the office's is beside this computer's."""
        settings = self.service.ask("/api/settings")
        layout = settings.pop("kvm_layout")
        settings.pop("kvm_layout_ver")  # counted by the service
        return settings | {"kvm_layout": tuple(layout[OFFICE][axis] - layout[OWN][axis] for axis in "xy")}

    def step(self, tab, role, name, action, told):
        if tab:
            self.app.open_tab(tab)
        before = self.settings()
        if role == "tray":
            self.tray.menu(name)
        else:
            self.work(self.app.wait(role, name), role, action)
        self.told += ["PUT /api/settings"] if isinstance(told, dict) else [told] if told else []
        stays(lambda: not told and action, 0.2)  # for what must not come
        try:
            wait_for(told, lambda: self.service.commands() == self.told)
        finally:
            done, self.told = self.told, self.service.commands()
            self.assertEqual(self.told, done)
        if isinstance(told, dict):
            self.assertEqual({key: value for key, value in self.settings().items() if value != before[key]}, told)
            value, = told.values()
            wait_for("what is shown", lambda: self.shown(role, name) in (None, value, action))

    def shown(self, role, name):
        found = self.app.find(role, name)
        if role == "check box":
            return "checked" in states(found)
        if role == "spin button":
            return Atspi.Value.get_current_value(found)
        return Atspi.Text.get_text(found, 0, -1) if role in ("text", "combo box") else None

    def work(self, found, role, action):
        verb, *rest = str(action).split() or [""]
        if action is None:
            return
        if verb == "key":
            Atspi.Component.grab_focus(found)
            keys(*rest)
        elif "click" in str(action):
            click(found, 3 if verb == "right" else 1)
        elif verb in ("upper", "lower"):  # of the buttons at its end
            place, half = extents(found), extents(found).height // 2
            pointer((place.x + place.width - 18, place.y + (half if verb == "lower" else 0), 18, half), "click", 1)
        elif role == "text":
            Atspi.EditableText.set_text_contents(found, action)
        elif role == "combo box":
            press(found)
            self.app.press("menu item", action)
        elif isinstance(action, int):
            Atspi.Value.set_current_value(found, action)
        else:
            names = [Atspi.Action.get_action_name(found, i) for i in range(Atspi.Action.get_n_actions(found))]
            Atspi.Action.do_action(found, names.index(action))


class Follow(Desk):
    """What changes is announced, and nothing else."""

    def test_says_each_change_once_and_nothing_else(self):
        self.start("still")
        for tab in ("Sync", "KVM", "Devices", "About", "Overview"):
            self.app.open_tab(tab)
        stays(lambda: True, 2)
        with Announcements(self.app.pid) as announcements:
            self.service.wait_for_polls(3)
            self.assertEqual(announcements.heard, [])
            self.service.ask("/api/pause", "POST")
            self.app.wait("label", "Syncing paused")
            stays(lambda: True, 2)
        self.assertEqual(sorted(name for name, _ in announcements.heard), ["Paused", "Syncing paused"])


if __name__ == "__main__":
    unittest.main()
