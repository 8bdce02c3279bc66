#!/usr/bin/python3
"""The real executable as a screen reader meets it: read, worked and followed over the accessibility bus alone."""
import re
import time
import unittest

from desktop import Atspi, Desk, keys, press, states, stays, wait_for
from reader import Announcements, faults, screen

RETURN = 0xFF0D
OFFICE = re.compile("Office Linux")  # the screen
LANGUAGES = ("en_GB.UTF-8", "zh_CN.UTF-8")


class Audit(Desk):
    """Every view in every state is told completely, once and in order."""

    def audit(self, view):
        # A view may be on its way to what the service says.
        data = [entry.get("label") for entry in self.service.ask("/api/history") if entry.get("label")]
        found = []

        def sound():
            found[:] = faults(screen(self.app.pid), data)
            return not found
        try:
            wait_for("a sound view", sound)
        except AssertionError:
            self.fail(f"{view}: " + "; ".join(found))

    def test_every_view(self):
        for scenario, language in (("full", LANGUAGES[0]), ("chinese", LANGUAGES[1]), ("empty", LANGUAGES[1])):
            with self.subTest(scenario=scenario, language=language):
                try:
                    self.start(scenario, env={"LANG": language, "LANGUAGE": ""})
                    self.audit_all()
                finally:
                    self.doCleanups()

    def audit_all(self):
        self.audit("panel")
        press(self.app.all("push button")[-2])
        self.app.wait("page tab")
        tabs = self.app.all("page tab")
        for tab in tabs:
            press(tab)
            wait_for("the tab", lambda tab=tab: "selected" in states(tab))
            self.audit(tab.get_name())
            self.audit_pickers()
            if tab == tabs[-2]:
                self.audit_sheets()

    def audit_pickers(self):
        for picker in self.app.all("combo box"):
            if "enabled" not in states(picker):
                continue
            press(picker)
            self.app.wait("popup menu")
            chosen = [each for each in screen(self.app.pid) if "checked" in each.states]
            self.assertEqual([each.name for each in chosen], [Atspi.Text.get_text(picker, 0, -1)])
            self.audit(f"the menu of {picker.get_name()}")
            press(chosen[0].node)
            self.app.wait_gone("popup menu")

    def audit_sheets(self):
        *remove, add = self.app.all("push button")
        if remove:
            press(remove[0])
            self.app.wait("alert")
            self.audit("alert")
            press(self.app.all("push button")[-2])
            self.app.wait_gone("alert")
        press(add)
        self.app.wait("radio button")
        for mode in self.app.all("radio button"):
            press(mode)
            wait_for("the mode", lambda mode=mode: "checked" in states(mode))
            self.audit(f"sheet: {mode.get_name()}")
        press(self.app.all("push button")[-1])
        self.app.wait_gone("dialog")


class Use(Desk):
    """Every control is worked without pointer or keyboard."""

    def test_works_every_control(self):
        self.start("full", "--speed", "10")
        ask, settings, find = self.service.ask, self.service.settings, self.app.find

        def history():
            return [entry["id"] for entry in ask("/api/history")]

        def says(text):
            return any(text in (each.name, each.text) for each in screen(self.app.pid))

        def can_pair():
            return "enabled" in states(find("push button", "Pair"))

        entry, devices = history()[1], len(ask("/api/devices"))
        sharing, swapping = settings("kvm_enabled"), settings("kvm_swap_modifiers")
        right = settings("kvm_layout")["77aa01fe"]["x"]
        # tab, control, what is done, what then is
        steps = [
            (None, "check box", "Pause syncing", "Toggle",  # a switch that does not show it yet asks for the same again
             lambda: "checked" in states(find("check box", "Pause syncing")) and ask("/api/status")["paused"]),
            (None, "check box", "Pause syncing", "Press", lambda: not ask("/api/status")["paused"]),
            (None, "push button", "Screenshot 1440 × 900, Travel laptop", "Press", lambda: history()[0] == entry),
            ("Sync", "check box", "Text", "Toggle", lambda: not settings("sync_text")),
            ("Sync", "check box", "Files", "Toggle", lambda: settings("sync_files")),
            ("Sync", "spin button", "Largest file", "Increase", lambda: settings("file_size_cap_mb") == 110),
            ("Sync", "spin button", "Largest file", 2000, lambda: settings("file_size_cap_mb") == 2000),
            ("Sync", "text", "Search history", "SSH", lambda: len(self.app.all("list item")) == 2),
            ("Sync", "text", "Search history", "", lambda: len(self.app.all("list item")) > 2),
            ("Sync", "list item", "3 files, Studio Mac", "Press", lambda: history()[0] == 10),
            ("Sync", "push button", "Clear", "Press", lambda: history() == []),
            ("Overview", "text", "Device name", "书房 & desk", lambda: settings("device_name") == "书房 & desk"),
            ("KVM", "check box", "Share keyboard and mouse", "Toggle", lambda: settings("kvm_enabled") != sharing),
            ("KVM", "check box", "Swap ⌘ and Ctrl", "Toggle", lambda: settings("kvm_swap_modifiers") != swapping),
            ("KVM", "combo box", "Switch delay", "500 ms", lambda: settings("kvm_switch_delay_ms") == 500),
            ("KVM", "combo box", "Dead corners", "64 px", lambda: settings("kvm_corner_size") == 64),
            ("KVM", "combo box", "Pointer speed", "3.0×", lambda: settings("kvm_sensitivity") == 3),
            ("KVM", "push button", OFFICE, "Press", lambda: settings("kvm_master_id") == "77aa01fe"),
            ("KVM", "push button", OFFICE, "SetFocus", lambda: "selected" in states(find("push button", OFFICE))),
            (None, "push button", OFFICE, "Right", lambda: settings("kvm_layout")["77aa01fe"]["x"] == right + 100),
            ("Devices", "push button", "Remove, Office Linux", "Press", lambda: find("alert")),
            (None, "push button", "Cancel", "Press", lambda: not find("alert")),
            ("Devices", "push button", "Remove, Office Linux", "Press", lambda: find("alert")),
            (None, "push button", "Remove", "Press", lambda: len(ask("/api/devices")) == devices - 1),
            ("Devices", "push button", "Add a computer", "Press", lambda: find("dialog")),
            (None, "push button", "Create a PIN", "Press", lambda: says("482 913")),
            (None, "frame", "Settings", None,
             lambda: not find("dialog") and find("push button", "Remove, Living room")),
            ("Devices", "push button", "Add a computer", "Press", lambda: find("dialog")),
            (None, "radio button", "Enter a PIN", "Press", lambda: find("text", "PIN")),
            (None, "text", "Address or host name", "desk", lambda: not can_pair()),
            (None, "text", "PIN", "111111", can_pair),
            (None, "push button", "Pair", "Press",
             lambda: find("label", "Pairing failed. Check the address and the PIN.")),
            (None, "text", "PIN", "482 913", can_pair),
            (None, "push button", "Pair", "Press", lambda: not find("dialog") and find("push button", "Remove, desk")),
            ("About", "push button", "Check now", "Press", lambda: find("label", "Checking for updates…")
             or find("label", "Cannot reach the update server. Check your network.")),
            ("About", "combo box", "Interface language", "中文", lambda: find("push button", "Restart now")),
        ]
        for tab, role, name, action, effect in steps:
            with self.subTest(control=name, action=action):
                if tab:
                    self.app.open_tab(tab)
                self.work(self.app.wait(role, name), role, action)
                wait_for(f"the effect of {action} on {name}", effect)

    def work(self, found, role, action):
        if role == "text":
            Atspi.EditableText.set_text_contents(found, action)
            if found.get_name() == "Device name":  # Return saves it
                Atspi.Component.grab_focus(found)
                Atspi.generate_keyboard_event(RETURN, None, Atspi.KeySynthType.SYM)
        elif role == "combo box":
            press(found)
            self.app.press("menu item", action)
            wait_for("its value", lambda: Atspi.Text.get_text(found, 0, -1) == action)
        elif action == "Right":
            keys(action)
        elif isinstance(action, int):
            Atspi.Value.set_current_value(found, action)
        elif action:
            names = [Atspi.Action.get_action_name(found, i) for i in range(Atspi.Action.get_n_actions(found))]
            Atspi.Action.do_action(found, names.index(action))


class Follow(Desk):
    """What changes is announced, and nothing else."""

    def test_says_each_change_once_and_nothing_else(self):
        self.start("still")
        for tab in ("Sync", "KVM", "Devices", "About", "Overview"):
            self.app.open_tab(tab)
        stays(lambda: True, 3)
        with Announcements(self.app.pid) as announcements:
            self.service.wait_for_polls(3)
            self.assertEqual(announcements.heard, [])
            self.service.ask("/api/pause", "POST")
            self.app.wait("label", "Syncing paused")
            stays(lambda: True, 3)
        self.assertEqual(sorted(announcements.heard), ["Paused", "Syncing paused"])

    def test_stays_sound_while_much_happens(self):
        self.start("live", "--speed", "20")
        end = time.monotonic() + 10
        while time.monotonic() < end:
            for tab in ("Sync", "KVM", "Devices", "About", "Overview"):
                self.app.open_tab(tab)
                gone = [str(each) for each in screen(self.app.pid) if each.states & {"defunct", "invalid"}]
                self.assertEqual(gone, [])


if __name__ == "__main__":
    unittest.main()
