"""The size of the main window and the positions of its controls."""
from driver import Story

TWIPS = 1440


class TheWindow(Story):
    journal = "two-days.jrn"

    def size(self):
        left, top, right, bottom = self.main.rect
        return right - left, bottom - top

    def places(self):
        return [one.rect for one in self.main.controls()]

    def test_returns_to_its_smallest_size(self):
        smallest = [round(5700 * self.dpi / TWIPS), round(4000 * self.dpi / TWIPS)]

        def is_smallest():
            return all(abs(a - b) <= 1 for a, b in zip(self.size(), smallest))
        self.until(lambda: self.main.resize(300, 200) or is_smallest(), f"size of {smallest}")
        # The frame on the X11 display follows.
        left, _, right, _ = self.main.client
        self.until(lambda: self.frame_width() == right - left and is_smallest(), "frame as wide as its client area")

    def frame_width(self):
        answer = self.program.x("getwindowgeometry", "--shell", self.program.x("getactivewindow"))
        return int(dict(line.split("=") for line in answer.splitlines())["WIDTH"])

    def test_enlarges_the_list_when_it_is_enlarged(self):
        width, height = self.size()
        before = self.days.rect
        left = before[0] - self.main.rect[0]
        self.until(lambda: self.main.resize(width + 100, height + 50) or self.size() != (width, height), "larger window")
        grown = [now - then for now, then in zip(self.size(), (width, height))]
        after = self.days.rect
        self.assertEqual(after[0] - self.main.rect[0], left)
        self.assertAlmostEqual((after[2] - after[0]) - (before[2] - before[0]), grown[0], delta=1)
        self.assertAlmostEqual((after[3] - after[1]) - (before[3] - before[1]), grown[1], delta=1)

    def test_keeps_its_layout_when_it_is_minimised_and_restored(self):
        before = self.places()
        window = self.program.x("getactivewindow")
        self.program.x("windowminimize", window)
        self.until(lambda: self.main.minimised, "minimised window")
        self.program.x("windowmap", window)
        self.until(lambda: not self.main.minimised, "restored window")
        self.until(lambda: self.places() == before, "unchanged layout")


class TheWindowOnALargeScreen(TheWindow):
    dpi = 144


