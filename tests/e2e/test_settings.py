#!/usr/bin/python3
"""The settings window of the real executable, used through the accessibility tree as a screen reader does."""
import time
import unittest

from desktop import (Application, Atspi, Sim, XembedTray, application_node, has, keys, node, nodes, press, tray_icons,
                     wait_for, windows)


class Settings(unittest.TestCase):
    def setUp(self):
        for thing in (XembedTray(), Sim("full", "--speed", "10")):
            self.enterContext(thing)
            self.service = thing
        self.application = self.enterContext(Application())
        wait_for("the icon", tray_icons)
        with Application() as again:
            again.process.wait(5)
        self.press("push button", "Settings…")
        wait_for("the window", lambda: windows("^Settings$", self.application.pid))

    def find(self, role, name, what=None):
        return wait_for(what or f"{role} {name}", lambda: node(self.application.pid, role, name))

    def press(self, role, name):
        press(self.find(role, name))

    def settings(self):
        return self.service.ask("/api/settings")

    def test_renames_the_computer(self):
        field = self.find("text", "Device name")
        wait_for("the name", lambda: field.get_text_iface().get_text(0, -1) == "Studio Mac")
        field.get_component_iface().grab_focus()
        keys("ctrl+a")
        keys("D", "e", "s", "k")
        time.sleep(2.5)  # a poll that must not disturb what is typed
        keys("Return")
        wait_for("the new name", lambda: self.settings()["device_name"] == "Desk")

    def test_switches_what_is_synced_and_searches_the_history(self):
        self.press("page tab", "Sync")
        for name, key in (("Text", "sync_text"), ("Files", "sync_files")):
            before = self.settings()[key]
            self.press("check box", name)
            wait_for(key, lambda key=key, before=before: self.settings()[key] != before)
            wait_for(f"the switch {name}", lambda name=name, before=before:
                     has(self.find("check box", name), Atspi.StateType.CHECKED) != before)

        search = self.find("text", "Search history")
        search.get_component_iface().grab_focus()
        keys("s", "s", "h")
        wait_for("the results", lambda: not self.entries("Screenshot") and self.entries("ssh deploy"))
        press(self.entries("ssh deploy")[-1])
        wait_for("the applied entry", lambda: self.service.ask("/api/status")["last_activity"].startswith("Put back"))
        self.press("push button", "Clear")
        wait_for("the empty history", lambda: self.service.ask("/api/history") == [])

    def entries(self, beginning):
        return [entry for entry in nodes(application_node(self.application.pid))
                if entry.get_name().startswith(beginning) and entry.get_action_iface()
                and entry.get_role_name() == "list item"]

    def test_pairs_both_ways_and_removes(self):
        self.press("page tab", "Devices")
        self.press("push button", "Add a computer")
        self.press("push button", "Create a PIN")
        wait_for("the PIN", lambda: any(text.get_text_iface().get_text(0, -1) == "482 913"
                                        for text in nodes(application_node(self.application.pid), "text")))
        self.find(None, "Living room", "the computer that used the PIN")
        wait_for("the sheet to close", lambda: not node(self.application.pid, "push button", "Done"))

        count = len(self.service.ask("/api/devices"))
        self.press("push button", "Add a computer")
        press(self.find(None, "Enter a PIN"))
        self.type_into("Address or host name", "desk")
        self.type_into("PIN", "111111")
        self.press("push button", "Pair")
        self.find("label", "Pairing failed. Check the address and the PIN.")
        self.type_into("PIN", "482913")
        self.press("push button", "Pair")
        wait_for("the new device", lambda: len(self.service.ask("/api/devices")) == count + 1)
        wait_for("the sheet to close", lambda: not node(self.application.pid, "push button", "Done"))

        self.press("push button", "Remove, Office Linux")
        self.press("push button", "Remove")
        wait_for("the removal", lambda: len(self.service.ask("/api/devices")) == count)

    def type_into(self, name, text):
        self.find("text", name).get_component_iface().grab_focus()
        keys("ctrl+a")
        keys(*text)


if __name__ == "__main__":
    unittest.main()
