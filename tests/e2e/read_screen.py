"""Screen reading with real windows under the pointer: what is spoken, and what happens when the server or the program
under the pointer fails."""

import json
import os
import re
import shutil
import signal
import subprocess
import time
import unittest

import harness
from harness import Scenario, WINDOWS, native, wait_for, wine

BUILD = os.path.dirname(harness.PROGRAM) if not WINDOWS else os.path.dirname(os.path.dirname(harness.PROGRAM))
SAMPLE_WINDOW = os.path.join(BUILD, "tests", "voxtrel_sample_window" + (".exe" if WINDOWS else ""))

# Everything that is known of these is spoken.
ROLES = ["push button", "button", "label", "static", "check box", "radio button", "toggle button", "text", "entry",
         "password text", "slider", "spin button", "progress bar", "combo box", "table cell", "list item", "page tab",
         "menu", "menu item", "check menu item", "link", "heading", "frame", "static text", "check button"]

# What the toolkit of the sample window calls its kinds of controls.
KINDS = {"button": "push button", "label": "static text", "check box": "check button",
         "toggle button": "check button", "password text": "text"} if WINDOWS else {
             "button": "push button", "list item": "table cell"}
# Wine's accessibility does not tell these.
UNTOLD = ("spin button", "page tab") if WINDOWS else ()

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
</body></html>"""
# Where they are on the page, and what is said of them.
PAGE_OBJECTS = [(60, 30, "Big heading heading "), (90, 75, "A bold link link "), (100, 130, "Press me push button "),
                (60, 175, "Town entry Graz"), (60, 225, "Secret password text "),
                (200, 272, "second cell table cell "), (36, 326, "Agree check box checked"),
                (90, 372, "Loudness slider 40")]


class ScreenReading(Scenario):
    def setUp(self):
        super().setUp()
        self.switch_on(ROLES)
        self.move_to(1, self.height() - 1)

    def height(self):
        return int(self.xdotool("getdisplaygeometry").split()[1])

    def switch_on(self, roles):
        self.write_settings(*(f'"{role} " = "name,role,value,"' for role in roles))

    def write_settings(self, *role_table, on=True):
        # The character stands out of the way.
        sections = {"Agent": ['"Top" = "850"', '"Left" = "1100"'], "speech": [f'"usescreenreading" = "{on}"'],
                    "ScreenReadingRoles": role_table}
        if WINDOWS:
            self.write_registry(sections)
            return
        os.makedirs(os.path.dirname(self.home.settings_file), exist_ok=True)
        lines = ["Voxtrel settings 1", 'application "Orvella"']
        for name, values in sections.items():
            lines += [f'section "{name}"', *values]
        with open(self.home.settings_file, "w", encoding="utf-8") as file:
            file.write("\n".join([*lines, "end", ""]))

    def write_registry(self, sections):
        root = r"HKEY_CURRENT_USER\Software\Voxtrel Settings\Orvella"
        lines = ["REGEDIT4", "", f"[-{root}]", ""]
        for name, values in sections.items():
            lines += [f"[{root}\\{name}]", *(value.replace('" = "', '"="') for value in values), ""]
        path = self.home.path("settings.reg")
        with open(path, "w", encoding="ascii", newline="\r\n") as file:
            file.write("\n".join(lines))
        subprocess.run(wine("regedit", "/S", native(path)), check=True, timeout=harness.PATIENCE)

    def xdotool(self, *arguments):
        return self.display.run("xdotool", *map(str, arguments)).decode().strip()

    def move_to(self, x, y):
        self.xdotool("mousemove", x, y)

    def open_program(self, *command, environment=None):
        full = self.home.environment(self.display.environment)
        full.update(QT_QPA_PLATFORM="xcb", LC_ALL="C.UTF-8", **(environment or {}))
        process = subprocess.Popen(command, env=full, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                   start_new_session=True)
        self.addCleanup(self.end_process, process)
        return process

    def end_process(self, process):
        if process.poll() is None:
            os.killpg(process.pid, signal.SIGKILL)
        process.wait()

    def window(self, window_class):
        """Where the window with the title stands: x, y, width, height."""
        def find():
            found = self.xdotool("search", "--onlyvisible", "--class", f"^{window_class}$").split()
            return next((window for window in found if self.xdotool("getwindowname", window)), None)
        window = wait_for(find, f"a window of {window_class}")
        self.xdotool("windowactivate", "--sync", window)
        about = self.display.run("xwininfo", "-id", window).decode()
        return tuple(int(re.search(rf"{what}:\s+(-?\d+)", about)[1])
                     for what in ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"))

    def sample_window(self, environment=None):
        """The window with one of each control, and its objects."""
        path = self.home.path("objects")
        process = self.open_program(*(wine(SAMPLE_WINDOW) if WINDOWS else [SAMPLE_WINDOW]), native(path),
                                    environment=environment)
        wait_for(lambda: os.path.exists(path), "the sample window")
        with open(path, encoding="utf-8") as file:
            return process, [json.loads(line) for line in file]

    def wait_spoken(self, program, text, since=0):
        """Waits until that text is what an object gave, and its markup is spoken."""
        def spoken():
            return next((event for event in program.events("object")[since:] if event["text"].strip() == text.strip()),
                        None)
        try:
            event = wait_for(spoken, f"{text!r}")
        except AssertionError as error:
            heard = [event["text"] for event in program.events("object")[since:]]
            raise AssertionError(f"{error}; heard: {heard}") from None
        words = re.findall("[A-Za-z]+", text)
        program.wait_event("speak", lambda speak: all(word in speak["markup"] for word in words))
        return event

    def kind(self, thing):
        return KINDS.get(thing["kind"], thing["kind"])

    def server_processes(self, program):
        if WINDOWS:
            # Nobody's child here; of this Wine home only.
            return [process for process in map(int, filter(str.isdigit, os.listdir("/proc")))
                    if self.is_server_of_this_home(process)]
        children = self.display.run("ps", "-o", "pid=,comm=", "--ppid", str(program.process.pid)).decode()
        return [int(line.split()[0]) for line in children.splitlines() if "ovaccserver" in line]


    def is_server_of_this_home(self, process):
        try:
            with open(f"/proc/{process}/comm", encoding="utf-8") as name, open(f"/proc/{process}/environ", "rb") as all_:
                return (name.read().strip() == "ovaccserver.exe" and
                        f"WINEPREFIX={os.path.realpath(os.environ['VOXTREL_WINE_HOME'])}".encode() in all_.read())
        except OSError:
            return False


class Objects(ScreenReading):
    def test_every_control_is_spoken_as_what_it_is(self):
        program = self.start_and_wait()
        _, objects = self.sample_window()
        for thing in objects:
            if thing["kind"] in UNTOLD:
                continue
            with self.subTest(thing["kind"], name=thing["name"]):
                self.move_to(thing["x"], thing["y"])
                self.wait_spoken(program, f"{thing['name']} {self.kind(thing)} {thing['value']}")
        everything = json.dumps(program.events())
        self.assertNotIn("hunter2", everything, "a password is never told")

    def test_an_object_is_spoken_once_and_again_after_another_one(self):
        program = self.start_and_wait()
        _, objects = self.sample_window()
        button, label = objects[0], objects[1]
        for thing in (button, label, button):
            since = len(program.events("object"))
            self.move_to(thing["x"], thing["y"])
            self.wait_spoken(program, f"{thing['name']} {self.kind(thing)}", since)
            self.move_to(thing["x"] + 5, thing["y"] + 2)
            time.sleep(1.5)  # the server looks again twice
            self.assertEqual(len(program.events("object")), since + 1)

    @unittest.skipIf(WINDOWS, "Wine does not show this")
    def test_the_character_is_not_interrupted_by_its_own_words(self):
        program = self.start_and_wait()
        _, objects = self.sample_window()
        self.move_to(objects[0]["x"], objects[0]["y"])
        self.wait_spoken(program, "Save all push button")
        [character] = [window for window in self.display.windows() if window[1] == "Fable"]
        *_, width, height, x, y = character
        self.move_to(x + width // 2, y + height // 2)
        self.call("--speak", "These words stand in a balloon")
        program.wait_event("balloon-show")
        time.sleep(1.5)
        self.assertEqual(len(program.events("object")), 1)

    @unittest.skipIf(WINDOWS, "Wine does not show this")
    def test_menus_that_open_and_vanish(self):
        program = self.start_and_wait()
        process, objects = self.sample_window()
        x, y, *_ = self.window("[Vv]oxtrel_sample_window")
        self.move_to(x + 30, y + 10)
        self.wait_spoken(program, "Drawing menu")
        self.xdotool("click", 1)
        self.move_to(x + 40, y + 38)
        self.wait_spoken(program, "New drawing menu item")
        self.move_to(x + 40, y + 64)
        self.wait_spoken(program, "Grid check menu item checked")
        self.xdotool("key", "Escape")
        self.xdotool("key", "Escape")
        self.move_to(objects[0]["x"], objects[0]["y"])
        self.wait_spoken(program, "Save all push button")
        self.end_process(process)
        self.move_to(objects[1]["x"], objects[1]["y"])
        self.assertIsNone(program.process.poll())

    @unittest.skipIf(WINDOWS, "the toolkit of Linux draws larger this way")
    def test_a_program_drawn_at_twice_the_size(self):
        program = self.start_and_wait()
        _, objects = self.sample_window({"GDK_SCALE": "2"})
        # The toolkit counts in its own units.
        for thing in objects[:9]:
            with self.subTest(thing["kind"], name=thing["name"]):
                self.move_to(2 * thing["x"], 2 * thing["y"])
                self.wait_spoken(program, f"{thing['name']} {self.kind(thing)} {thing['value']}")
        x, y, *_ = self.window("[Vv]oxtrel_sample_window")
        self.move_to(x + 60, y + 20)
        self.wait_spoken(program, "Drawing menu")
        self.xdotool("click", 1)
        self.move_to(x + 80, y + 76)
        self.wait_spoken(program, "New drawing menu item")

    @unittest.skipIf(WINDOWS, "Wine does not show this")
    @unittest.skipIf(shutil.which("mousepad") is None, "mousepad is not installed")
    def test_an_editor_of_gtk(self):
        program = self.start_and_wait()
        path = self.home.path("note.txt")
        with open(path, "w", encoding="utf-8") as file:
            file.write("The first line\nand the second\n")
        self.open_program("mousepad", "--disable-server", path)
        x, y, width, height = self.window("Mousepad")
        self.move_to(x + 20, y + 12)
        self.wait_spoken(program, "File menu")
        self.move_to(x + 60, y + height // 2)
        self.wait_spoken(program, f"{path} - Mousepad frame")
        self.xdotool("key", "alt+f")
        self.move_to(x + 60, y + 38)
        self.wait_spoken(program, "New menu item")

    @unittest.skipIf(WINDOWS, "Wine does not show this")
    @unittest.skipIf(shutil.which("featherpad") is None, "featherpad is not installed")
    def test_an_editor_of_qt(self):
        program = self.start_and_wait()
        path = self.home.path("note.txt")
        with open(path, "w", encoding="utf-8") as file:
            file.write("The first line\n")
        self.open_program("featherpad", "--standalone", path)
        x, y, _, height = self.window("FeatherPad")
        self.move_to(x + 20, y + 10)
        self.wait_spoken(program, "File menu item")
        self.move_to(x + 20, y + 40)
        self.wait_spoken(program, "New push button")
        self.move_to(x + 54, y + 40)
        self.wait_spoken(program, "Open push button")
        self.move_to(x + 20, y + 10)
        self.xdotool("click", 1)
        self.move_to(x + 60, y + 35)
        self.wait_spoken(program, "New menu item")

    @unittest.skipIf(WINDOWS, "Wine does not show this")
    @unittest.skipIf(shutil.which("chromium") is None, "chromium is not installed")
    def test_a_page_in_a_browser(self):
        program = self.start_and_wait()
        path = self.home.path("page.html")
        with open(path, "w", encoding="utf-8") as file:
            file.write(PAGE)
        self.open_program("chromium", "--no-sandbox", "--force-renderer-accessibility", "--disable-gpu", "--no-first-run",
                          "--user-data-dir=" + self.home.path("profile"), "--app=file://" + path, "--window-position=0,0",
                          "--window-size=700,600")
        x, y, _, height = self.window("[Cc]hromium")
        # The page stands below the window's own caption; the heading tells where it begins.
        top = self.find_page(program, x, y)
        for left, down, text in PAGE_OBJECTS:
            with self.subTest(text):
                self.move_to(x + left, y + top + down)
                self.wait_spoken(program, text)
        self.assertNotIn("hunter2", json.dumps(program.events()))

    def find_page(self, program, x, y):
        """Goes down the window until the link is heard, half of whose height is 12: where the page begins."""
        def heard():
            return any("A bold link" in event["text"] for event in program.events("object"))
        for _ in range(5):
            for down in range(40, 200, 10):
                self.move_to(x + 90, y + down)
                time.sleep(0.4)
                if heard():
                    return down - 75 + 5
        raise AssertionError("the page did not appear")


class Switching(ScreenReading):
    @unittest.skipIf(WINDOWS, "Wine does not show this")
    def test_new_kinds_of_objects_are_learnt_and_silenced_ones_keep_quiet(self):
        self.write_settings('"label " = "False"')
        program = self.start_and_wait()
        _, objects = self.sample_window()
        self.move_to(objects[1]["x"], objects[1]["y"])
        time.sleep(1)
        self.move_to(objects[0]["x"], objects[0]["y"])
        self.wait_spoken(program, "Save all")
        self.assertIn('"push button " = "name"', self.home.settings())
        self.assertEqual([event["text"] for event in program.events("object")], ["Save all "])

    def test_no_server_runs_while_screen_reading_is_off(self):
        self.write_settings(on=False)
        program = self.start_and_wait()
        _, objects = self.sample_window()
        self.move_to(objects[0]["x"], objects[0]["y"])
        time.sleep(1)
        self.assertEqual(program.events("object"), [])
        self.assertEqual(self.server_processes(program), [])

    def test_the_server_ends_with_the_program(self):
        for end in (lambda program: self.call("--quit"), lambda program: program.process.kill()):
            program = self.start_and_wait()
            [server] = wait_for(lambda: self.server_processes(program), "the server")
            end(program)
            program.process.wait()
            wait_for(lambda: not os.path.exists(f"/proc/{server}"), "the end of the server")


class Failures(ScreenReading):
    def test_a_killed_server_is_started_again(self):
        program = self.start_and_wait()
        _, objects = self.sample_window()
        for round_, thing in enumerate(objects[:2]):
            self.move_to(thing["x"], thing["y"])
            self.wait_spoken(program, f"{thing['name']} {self.kind(thing)}")
            if round_ == 0:
                [server] = self.server_processes(program)
                os.kill(server, signal.SIGKILL)
                wait_for(lambda: self.server_processes(program) not in ([], [server]), "another server")
        self.assertEqual(len(self.server_processes(program)), 1)

    @unittest.skipIf(WINDOWS, "Wine does not show this")
    def test_a_frozen_server_is_replaced(self):
        program = self.start_and_wait()
        _, objects = self.sample_window()
        [server] = wait_for(lambda: self.server_processes(program), "the server")
        os.kill(server, signal.SIGSTOP)
        wait_for(lambda: self.server_processes(program) not in ([], [server]), "another server")
        self.move_to(objects[0]["x"], objects[0]["y"])
        self.wait_spoken(program, "Save all push button")

    @unittest.skipIf(WINDOWS, "Wine does not show this")
    def test_a_missing_server_is_not_missed(self):
        folder = self.home.path("program")
        shutil.copytree(os.path.dirname(harness.PROGRAM), folder, symlinks=True, ignore=lambda path, names: [
            name for name in names if name not in ("voxtrel", "characters", "strings", "icons")]
            if os.path.samefile(path, os.path.dirname(harness.PROGRAM)) else [])
        own, harness.PROGRAM = harness.PROGRAM, os.path.join(folder, "voxtrel")
        try:
            program = self.start_and_wait()
        finally:
            harness.PROGRAM = own
        self.move_to(300, 300)
        time.sleep(3)
        self.assertEqual(self.server_processes(program), [])
        self.assertEqual(self.call("--speak", "still here")[0], 0)
        program.wait_event("speak", lambda event: "still here" in event["markup"])

    def test_a_frozen_program_under_the_pointer_holds_up_nobody(self):
        program = self.start_and_wait()
        process, objects = self.sample_window()
        self.move_to(objects[0]["x"], objects[0]["y"])
        self.wait_spoken(program, "Save all push button")
        [server] = self.server_processes(program)
        os.killpg(process.pid, signal.SIGSTOP)
        self.move_to(objects[1]["x"], objects[1]["y"])
        time.sleep(2)
        if not WINDOWS:  # where a command is announced to every window, and waits for the frozen one
            began = time.monotonic()
            self.assertEqual(self.call("--speak", "meanwhile")[0], 0)
            program.wait_event("speak", lambda event: "meanwhile" in event["markup"])
            self.assertLess(time.monotonic() - began, 3)
        # Another program can be pointed at all the while.
        _, others = self.sample_window_beside()
        since = len(program.events("object"))
        self.move_to(others[2]["x"], others[2]["y"])
        self.wait_spoken(program, f"Bold {self.kind(others[2])} checked", since)
        os.killpg(process.pid, signal.SIGCONT)
        self.assertEqual(self.server_processes(program), [server], "the server was not in need of a new start")

    def sample_window_beside(self):
        os.remove(self.home.path("objects"))
        return self.sample_window()


if __name__ == "__main__":
    harness.main()
