#!/usr/bin/python3
"""The canvas of the real executable: what is dropped or moved by keys arrives exactly, however slow the service is."""
import re
import unittest

from desktop import Atspi, Desk, extents, geometry, stays, wait_for, windows, xdotool

OWN, OFFICE = "10b4e2f09a77c1d3", "77aa01fe"
OWN_CARD, OFFICE_CARD = "Studio Mac (this computer)", "Office Linux, Online"
WIDTH, HEIGHT = 514, 320  # of the canvas, in points


class Canvas(Desk):
    def start(self, scale=1, delay=0):
        """The service answers that many milliseconds late, once it has done what it was asked."""
        super().start("still", "--delay", delay, env={"QT_SCALE_FACTOR": str(scale)})
        self.app.open_tab("KVM")
        self.card, self.own = (self.app.wait("push button", name) for name in (OFFICE_CARD, OWN_CARD))

    def layout(self):
        return self.service.settings("kvm_layout")

    def office(self):
        """Where the office's screen is stored, seen from this computer's."""
        layout = self.layout()
        return [layout[OFFICE][axis] - layout[OWN][axis] for axis in "xy"]

    def scale(self):
        """Points for a unit of the layout."""
        layout = self.layout().values()
        width, height = (max(each[axis] + each[size] for each in layout) - min(each[axis] for each in layout)
                         for axis, size in ("xw", "yh"))
        return min(WIDTH / (1.16 * width + 60), HEIGHT / (1.2 * height + 60))

    def middle(self, scale=1):
        """Of the office's card, in pixels."""
        place = extents(self.card)
        return [round(scale * value) for value in (place.x + place.width / 2, place.y + place.height / 2)]

    def saves(self):
        """When each came, in milliseconds."""
        return sorted(map(int, re.findall(r"^PUT /api/settings 200 (\d+)", self.service.printed(), re.MULTILINE)))

    def wait_for_refresh(self, saves):
        """Until that many saves, and what follows the last of them, have been answered."""
        wait_for("the save", lambda: len(self.saves()) == saves)
        wait_for("the refresh", lambda: "GET /api/settings" in self.service.printed().rpartition("PUT ")[2])
        stays(lambda: True, 0.1)

    def test_drops_on_the_pixel(self):
        for scale in (1, 1.5, 2):
            self.start(scale)
            window = wait_for("the window", lambda: windows("^Settings$", self.app.pid))[0]
            place = [1778, 0]
            # pixels that the pointer moves, then, before the drop: turns of the wheel, pixels that the window moves
            for drops, ((dx, dy), turns, way) in enumerate((((-47, -23), 0, ()), ((31, 44), 0, ()),
                                                            ((-38, 25), 0, (35, -11)), ((29, 17), 1, ())), 1):
                with self.subTest(scale=scale, moved=(dx, dy), turns=turns, way=way):
                    (x, y), fit = self.middle(scale), scale * self.scale()
                    top, before = extents(self.own).y, geometry(window)
                    xdotool("mousemove", x, y, "mousedown", 1, "mousemove", x + dx, y + dy, *["click", 5] * turns)
                    wait_for("the scrolling", lambda turns=turns, top=top: extents(self.own).y < top or not turns)
                    dy += scale * (top - extents(self.own).y)
                    if way:
                        xdotool("windowmove", "--relative", "--sync", window, *way)
                        after = geometry(window)
                        dx, dy = dx + before[0] - after[0], dy + before[1] - after[1]
                    xdotool("mouseup", 1)
                    self.wait_for_refresh(drops)
                    for got, base, moved in zip(self.office(), place, (dx, dy)):
                        self.assertAlmostEqual(got, base + moved / fit, 6)
                place = self.office()
            self.doCleanups()

    def test_an_arrow_that_is_held_counts_every_step(self):
        for delay in (0, 30, 300, 1000):
            with self.subTest(delay=delay):
                self.start(delay=delay)
                Atspi.Action.do_action(self.card, 1)
                wait_for("the focus", lambda: self.card.get_state_set().contains(Atspi.StateType.FOCUSED))
                xdotool("key", "--repeat", 20, "--delay", 30, "Left")
                wait_for("all steps", lambda: self.office() == [1778 - 2000, 0])
                self.assertTrue(stays(lambda: self.office() == [1778 - 2000, 0], 0.5 + 3 * delay / 1000))
                saves = self.saves()
                self.assertTrue(all(later - earlier >= delay for earlier, later in zip(saves, saves[1:])), saves)
            self.doCleanups()

    def test_a_drop_stays_until_it_is_answered(self):
        for delay in (100, 1000, 2500):  # a poll may be under way, or begin, or both
            with self.subTest(delay=delay):
                self.start(delay=delay)
                x, y = self.middle()
                xdotool("mousemove", x, y, "mousedown", 1, "mousemove", x - 15, y, "mousemove", x - 40, y + 60)
                xdotool("mouseup", 1)
                wait_for("the save", lambda: self.office() != [1778, 0])
                seen = set()
                stays(lambda: seen.add((extents(self.card).x, extents(self.own).x)) or True, 2.5 + 2 * delay / 1000)
                self.assertEqual(len(seen), 1, seen)
                self.assertEqual(len(self.saves()), 1)  # was answered
            self.doCleanups()


if __name__ == "__main__":
    unittest.main()
