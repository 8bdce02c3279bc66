#!/usr/bin/python3
"""The real executable as a screen reader meets it: read, worked and followed over the accessibility bus alone."""
import time
import unittest

from desktop import Application, Atspi, Sim, StatusNotifierTray, nodes, application_node, press, stays, wait_for
from reader import Announcements, faults, screen

RETURN, LEFT = 0xFF0D, 0xFF51
LANGUAGES = ("en_GB.UTF-8", "zh_CN.UTF-8")


class Reader(unittest.TestCase):
    def start(self, scenario, *options, language=LANGUAGES[0]):
        tray = self.enterContext(StatusNotifierTray())
        self.service = self.enterContext(Sim(scenario, *options))
        self.application = self.enterContext(Application(env={"LANG": language, "LANGUAGE": ""}))
        wait_for("the item", lambda: tray.items)
        tray.ask("Activate")
        self.rows = wait_for("the panel's rows", lambda: self.showing("push button"))

    def open_settings(self):
        press(self.showing("push button")[-2])
        return wait_for("the tabs", lambda: self.showing("page tab"))

    def showing(self, role, name=None):
        root = application_node(self.application.pid)
        return nodes(root, role, name) if root else []

    def find(self, role, name):
        return wait_for(f"the {role} {name}", lambda: self.showing(role, name))[-1]

    def press(self, role, name):
        press(self.find(role, name))

    def do(self, role, name, action):
        found = self.find(role, name)
        names = [Atspi.Action.get_action_name(found, i) for i in range(Atspi.Action.get_n_actions(found))]
        Atspi.Action.do_action(found, names.index(action))

    def write(self, name, text):
        Atspi.EditableText.set_text_contents(self.find("text", name), text)

    def screen(self):
        return screen(self.application.pid)

    def heard(self):
        """All that can be heard now."""
        return {text for each in self.screen() for text in (each.name, each.text)}


class Audit(Reader):
    """Every view in every state is told completely, once and in order."""

    def audit(self, view):
        # A view may be on its way to what the service says.
        data = [entry.get("label") for entry in self.service.ask("/api/history") if entry.get("label")]
        found = []

        def sound():
            found[:] = faults(self.screen(), data)
            return not found
        try:
            wait_for("a sound view", sound, 2)
        except AssertionError:
            self.fail(f"{view}: " + "; ".join(found))

    def test_every_view(self):
        for scenario, language in (("full", LANGUAGES[0]), ("chinese", LANGUAGES[1]), ("empty", LANGUAGES[1])):
            with self.subTest(scenario=scenario, language=language):
                try:
                    self.start(scenario, language=language)
                    self.audit_all()
                finally:
                    self.doCleanups()

    def audit_all(self):
        self.audit("panel")
        tabs = self.open_settings()
        for tab in tabs:
            press(tab)
            wait_for("the tab", lambda tab=tab: "selected" in states(tab))
            self.audit(tab.get_name())
            self.audit_pickers()
            if tab == tabs[-2]:
                self.audit_sheets()

    def audit_pickers(self):
        for picker in self.showing("combo box"):
            if "enabled" not in states(picker):
                continue
            press(picker)
            wait_for("the menu", lambda: self.showing("popup menu"))
            chosen = [each.name for each in self.screen() if "checked" in each.states]
            self.assertEqual(chosen, [Atspi.Text.get_text(picker, 0, -1)])
            self.audit(f"the menu of {picker.get_name()}")
            press(next(item for item in self.showing("menu item") if "checked" in states(item)))
            wait_for("the menu to close", lambda: not self.showing("popup menu"))

    def audit_sheets(self):
        *remove, add = self.showing("push button")
        if remove:
            press(remove[0])
            wait_for("the alert", lambda: self.showing("alert"))
            self.audit("alert")
            press(self.showing("push button")[-2])
            wait_for("the alert to close", lambda: not self.showing("alert"))
        press(add)
        for mode in wait_for("the modes", lambda: self.showing("radio button")):
            press(mode)
            wait_for("the mode", lambda mode=mode: "checked" in states(mode))
            self.audit(f"sheet: {mode.get_name()}")
        press(self.showing("push button")[-1])
        wait_for("the sheet to close", lambda: not self.showing("dialog"))


class Use(Reader):
    """Every control is worked without pointer or keyboard."""

    def test_works_every_control(self):
        self.start("full", "--speed", "10")
        ask = self.service.ask

        def settings(key):
            return ask("/api/settings")[key]

        def history():
            return [entry["id"] for entry in ask("/api/history")]

        entry = history()[1]
        # tab, control, what is done, what the service then says
        steps = [
            (None, ("check box", "Pause syncing", "Toggle"), lambda: ask("/api/status")["paused"]),
            (None, ("check box", "Pause syncing", "Press"), lambda: not ask("/api/status")["paused"]),
            (None, ("push button", "Screenshot 1440 × 900, Travel laptop", "Press"), lambda: history()[0] == entry),
            ("Sync", ("check box", "Text", "Toggle"), lambda: not settings("sync_text")),
            ("Sync", ("check box", "Files", "Toggle"), lambda: settings("sync_files")),
            ("Sync", ("spin button", "Largest file", "Increase"), lambda: settings("file_size_cap_mb") == 110),
            ("Sync", ("spin button", "Largest file", 2000), lambda: settings("file_size_cap_mb") == 2000),
            ("Sync", ("text", "Search history", "SSH"), lambda: len(self.showing("list item")) == 2),
            ("Sync", ("text", "Search history", ""), lambda: len(self.showing("list item")) > 2),
            ("Sync", ("list item", "3 files, Studio Mac", "Press"), lambda: history()[0] == 10),
            ("Sync", ("push button", "Clear", "Press"), lambda: history() == []),
            ("Overview", ("text", "Device name", "书房 & desk"), lambda: settings("device_name") == "书房 & desk"),
            ("About", ("push button", "Check now", "Press"), lambda: self.showing("label", "Checking for updates…")
             or self.showing("label", "Cannot reach the update server. Check your network.")),
            ("About", ("combo box", "Interface language", "中文"), lambda: self.showing("push button", "Restart now")),
        ]
        for tab, (role, name, action), effect in steps:
            with self.subTest(control=name, action=action):
                if tab and not self.showing("page tab"):
                    self.open_settings()
                if tab:
                    self.press("page tab", tab)
                self.work(role, name, action)
                wait_for(f"the effect of {action} on {name}", effect)
        self.assertEqual(Atspi.Text.get_text(self.find("combo box", "Interface language"), 0, -1), "中文")

    def work(self, role, name, action):
        found = self.find(role, name)
        if role == "text":
            self.write(name, action)
            if name == "Device name":  # Return saves it
                Atspi.Component.grab_focus(found)
                strike(RETURN)
        elif role == "combo box":
            press(found)
            self.press("menu item", action)
        elif isinstance(action, int):
            Atspi.Value.set_current_value(found, action)
        else:
            self.do(role, name, action)

    def test_pairs_both_ways_and_removes(self):
        self.start("still", "--speed", "10")
        self.open_settings()
        self.press("page tab", "Devices")
        self.press("push button", "Add a computer")
        self.press("push button", "Create a PIN")
        wait_for("the PIN", lambda: "482 913" in self.heard())
        self.find("label", "Paired")
        wait_for("the sheet to close", lambda: not self.showing("dialog"))
        self.find("push button", "Remove, Living room")

        self.press("push button", "Add a computer")
        self.press("radio button", "Enter a PIN")
        for pin, role, outcome in (("111111", "label", "Pairing failed. Check the address and the PIN."),
                                   ("482 913", "push button", "Remove, desk")):
            self.write("Address or host name", "desk")
            self.write("PIN", pin)
            wait_for("the button", lambda: "enabled" in states(self.find("push button", "Pair")))
            self.press("push button", "Pair")
            self.find(role, outcome)
        wait_for("the sheet to close", lambda: not self.showing("dialog"))
        for button, left in (("Cancel", 4), ("Remove", 3)):
            self.press("push button", "Remove, Office Linux")
            self.press("push button", button)
            wait_for("the alert to close", lambda: not self.showing("alert"))
            wait_for("the removal", lambda left=left: len(self.service.ask("/api/devices")) == left)

    def test_arranges_the_screens(self):
        """Each is a button that says where it stands."""
        self.start("still")
        self.open_settings()
        self.press("page tab", "KVM")
        card = wait_for("the card", lambda: next((each for each in self.showing("push button")
                                                  if each.get_name().startswith("Office Linux")), None))
        self.assertIn("Right of ", card.get_description())

        def settings(key):
            return self.service.ask("/api/settings").get(key)
        layout = settings("kvm_layout")
        cards = [each.name for each in self.screen() if each.role == "push button" and "selectable" in each.states]
        for device in ("Studio Mac", "Office Linux", "Travel laptop"):
            self.assertEqual([card.startswith(device) for card in cards].count(True), 1, device)
        self.do("push button", card.get_name(), "SetFocus")
        wait_for("the focus", lambda: "focused" in states(card))

        def is_elsewhere():
            strike(LEFT)
            stays(lambda: True, 0.3)
            return "Right of " not in card.get_description() or None
        wait_for("another place", is_elsewhere, 20)
        wait_for("the service to know", lambda: settings("kvm_layout") != layout)
        press(card)
        wait_for("the new master", lambda: settings("kvm_master_id") == "77aa01fe")
        wait_for("the card to say so", lambda: "selected" in states(card))


class Follow(Reader):
    """What changes is announced, and nothing else."""

    def test_says_nothing_while_nothing_changes(self):
        self.start("full")
        for show in (lambda: None, self.open_settings):
            show()
            stays(lambda: True, 3)
            with Announcements(self.application.pid) as announcements:
                stays(lambda: True, 7)
            self.assertEqual(announcements.heard, [])

    def test_says_each_change_once(self):
        self.start("still")
        for tab in self.open_settings():
            press(tab)
        self.press("page tab", "Overview")
        stays(lambda: True, 1)
        with Announcements(self.application.pid) as announcements:
            self.service.ask("/api/pause", "POST")
            self.find("label", "Syncing paused")
            stays(lambda: True, 3)
        announced = [name for _, name, is_showing in announcements.heard if is_showing]
        self.assertEqual(sorted(announced), ["Paused", "Syncing paused"])

    def test_stays_sound_while_much_happens(self):
        self.start("live", "--speed", "20")
        end = time.monotonic() + 10
        self.open_settings()
        while time.monotonic() < end:
            for tab in self.showing("page tab"):
                press(tab)
                gone = [str(each) for each in self.screen() if each.states & {"defunct", "invalid"}]
                self.assertEqual(gone, [])
                stays(lambda: True, 0.2)


def strike(key):
    """Sends a key through the accessibility bus."""
    Atspi.generate_keyboard_event(key, None, Atspi.KeySynthType.SYM)


def states(node):
    node.clear_cache()
    return {state.value_nick for state in node.get_state_set().get_states()}


if __name__ == "__main__":
    unittest.main()
