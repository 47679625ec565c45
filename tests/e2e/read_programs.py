"""Screen reading over other programs: of GTK, of Qt, and a page in a browser."""

import json
import shutil
import unittest

import accessible
import harness
from harness import wait_for
from screen_scenario import ScreenReading

PAGE = """<html><head><title>Sample page</title></head><body style="margin:0;font:20px sans-serif">
<style>body > * { position: absolute; left: 20px; margin: 0 }</style>
<h1 style="top:10px">Big heading</h1>
<a style="top:60px" href="https://example.org/">A <b>bold</b> link</a>
<button style="top:110px;width:150px;height:40px">Press <i>me</i></button>
<input aria-label="Town" value="Graz" style="top:160px;width:150px;height:30px">
<input type=password aria-label="Secret" value="hunter2" style="top:210px;width:150px;height:30px">
<table border=1 style="top:260px"><tr><td style="width:100px">first</td><td style="width:200px">second cell</td></table>
<input type=checkbox checked aria-label="Agree" style="top:310px;width:30px;height:30px">
<input type=range aria-label="Loudness" value=40 style="top:360px;width:150px">
<ul style="top:410px;padding:0"><li>milk<li>bread</ul>
<select aria-label="Paint" style="top:480px;width:150px;height:30px"><option>Red<option selected>Green</select>
</body></html>"""
# Where they are on the page, and what is said of them.
PAGE_OBJECTS = [(60, 30, "Big heading heading "), (90, 75, "A bold link link "), (100, 130, "Press me push button "),
                (60, 175, "Town entry Graz"), (60, 225, "Secret password text "),
                (200, 272, "second cell table cell "), (36, 326, "Agree check box checked"),
                (90, 372, "Loudness slider 40"), (40, 445, "bread static "), (90, 495, "Paint combo box Green")]


def needs(program):
    return unittest.skipIf(shutil.which(program) is None, f"{program} is not installed")


class Programs(ScreenReading):
    def write(self, name, text):
        path = self.home.path(name)
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)
        return path

    @needs("mousepad")
    def test_an_editor_of_gtk(self):
        program = self.start_and_wait()
        path = self.write("note.txt", "The first line\nand the second\n")
        self.open_program("mousepad", "--disable-server", path)
        x, y, _, height = self.window("Mousepad")
        self.point_at_all(program, (x, y), [(20, 12, "File menu"), (60, height // 2, f"{path} - Mousepad frame")])
        self.xdotool("key", "alt+f")
        self.point_at_all(program, (x, y), [(60, 38, "New menu item")])

    @needs("zenity")
    def test_a_table_of_gtk(self):
        program = self.start_and_wait()
        self.open_program("zenity", "--list", "--column=File", "--column=Size", "alpha.txt", "12 KB", "beta.txt", "7 KB",
                          "--width=400", "--height=300")
        x, y, *_ = self.window("Zenity|zenity")
        frame = wait_for(lambda: accessible.find("table cell", "7 KB"), "the table")
        left, top = wait_for(lambda: accessible.place(frame), "its place on the screen")
        self.point_at_all(program, (left, top), [(0, 0, "7 KB table cell")])

    @needs("featherpad")
    def test_an_editor_of_qt(self):
        program = self.start_and_wait()
        self.open_program("featherpad", "--standalone", self.write("note.txt", "The first line\n"))
        x, y, *_ = self.window("FeatherPad")
        self.point_at_all(program, (x, y), [(20, 10, "File menu item"), (20, 40, "New push button"),
                                            (54, 40, "Open push button"), (20, 10, "File menu item")])
        self.xdotool("click", 1)
        self.point_at_all(program, (x, y), [(60, 35, "New menu item")])

    @needs("chromium")
    def test_a_page_in_a_browser(self):
        program = self.start_and_wait()
        path = self.write("page.html", PAGE)
        self.open_program("chromium", "--no-sandbox", "--force-renderer-accessibility", "--disable-gpu", "--no-first-run",
                          "--user-data-dir=" + self.home.path("profile"), "--app=file://" + path,
                          "--window-position=0,0", "--window-size=700,700")
        self.window("[Cc]hromium")
        page = wait_for(lambda: accessible.find("document web", "Sample page"), "the page")
        box = wait_for(lambda: accessible.attempt(lambda: page.get_extents(0)), "its place")
        self.point_at_all(program, (box.x, box.y), PAGE_OBJECTS)
        self.assertNotIn("hunter2", json.dumps(program.events()))


if __name__ == "__main__":
    harness.main()
