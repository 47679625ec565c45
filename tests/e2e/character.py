"""The character and its balloon on the user's desktop: where they stand, what they leave alone, and what the mouse does
with them."""

import os
import re
import subprocess
import unittest

import harness
from harness import Scenario, WINDOWS, WineDesktop, wait_for

NAME = "Fable"
SIDE = 128
# Of the frame: inside the figure, and beside it.
BODY = (63, 60)
BESIDE = (4, 4)
OTHER = "Sample window"
SPEECH = "When the rain had stopped they walked back to town"
MOST_DISTANCE = 30  # between the figure and the tip of the wedge

DUMMY_DRIVER = "/usr/lib/xorg/modules/drivers/dummy_drv.so"
XORG_CONFIGURATION = """
Section "ServerFlags"
    Option "AutoAddDevices" "false"
    Option "AutoAddGPU" "false"
EndSection
Section "Device"
    Identifier "monitors"
    Driver "dummy"
    VideoRam 256000
EndSection
Section "Screen"
    Identifier "screen"
    Device "monitors"
    DefaultDepth 24
    SubSection "Display"
        Depth 24
        Virtual 2048 768
    EndSubSection
EndSection
"""


class CharacterScenario(Scenario):
    def setUp(self):
        super().setUp()
        if WINDOWS:
            self.wine_desktop = WineDesktop()
            self.addCleanup(self.wine_desktop.close)

    def xdotool(self, *arguments):
        return self.display.run("xdotool", *map(str, arguments)).decode().strip()

    def write_settings(self, **values):
        os.makedirs(os.path.dirname(self.home.settings_file), exist_ok=True)
        lines = ["Voxtrel settings 1", 'application "Orvella"', 'section "Agent"']
        lines += [f'"{key}" = "{value}"' for key, value in values.items()]
        with open(self.home.settings_file, "w", encoding="utf-8") as file:
            file.write("\n".join([*lines, "end", ""]))

    def start_shown(self, **options):
        program = self.start_and_wait(**options)
        program.wait_event("request-complete", lambda event: event["text"] == "Show")
        return program

    def find(self, name):
        """The visible window whose title begins so: id, name, width, height, x, y."""
        return next((window for window in self.display.windows()
                     if window[1].startswith(name) and self.display.is_viewable(window[0])), None)

    def find_settled(self, name):
        """Likewise, but not with the place of a window that was hidden when it was looked at first."""
        window = self.find(name)
        return window if window == self.find(name) else None

    def place(self):
        window = self.find(NAME)
        return window and window[4:]

    def wait_place(self, x, y):
        wait_for(lambda: self.place() == (x, y), f"the character at {x}, {y}")

    def drag(self, to_x, to_y):
        """By the body, from where it stands to this place."""
        x, y = wait_for(self.place, "the character")
        self.xdotool("mousemove", x + BODY[0], y + BODY[1], "mousedown", 1)
        for step in range(1, 6):
            # Wine takes the pointer's place from where the window was, if it has moved since: as slowly as a hand, there.
            self.xdotool("sleep", 0.3 if WINDOWS else 0, "mousemove", x + BODY[0] + (to_x - x) * step // 5, y + BODY[1] + (to_y - y) * step // 5)
        self.xdotool("mouseup", 1)

    def speak(self, program, text=SPEECH):
        shown = len(program.events("balloon-show"))
        spoken = len(self.spoken(program))
        self.assertEqual(self.call("--speak", text)[0], 0)
        wait_for(lambda: len(program.events("balloon-show")) > shown, "the balloon")
        balloon = wait_for(lambda: self.find_settled(text.split()[0]), "the balloon's window")
        return balloon, lambda: wait_for(lambda: len(self.spoken(program)) > spoken, "the end of the speech")

    def spoken(self, program):
        return [event for event in program.events("request-complete") if event["text"] == "Speak"]


class Desktop(CharacterScenario):
    def open_other(self):
        """A window of another program, where the character stands."""
        program = os.path.join(os.environ["VOXTREL_E2E_PROGRAMS"], "voxtrel_sample_window")
        process = subprocess.Popen(harness.wine(program + ".exe", harness.native(self.home.path("objects"))) if WINDOWS
                                   else [program, self.home.path("objects")],
                                   env=self.home.environment(self.display.environment), stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        self.other = wait_for(lambda: self.xdotool("search", "--onlyvisible", "--name", f"^{OTHER}$").split(),
                              "the other window")[0]
        if WINDOWS:
            self.wine_desktop.ask("place", 40, 40, 900, 700, OTHER)
        else:
            self.xdotool("windowmove", self.other, 40, 40)

    def start_above_other(self):
        """The program, the focus in the other window. Begun after it: Wine shows a new window above those that are to
        stay on top."""
        self.open_other()
        program = self.start_shown()
        if WINDOWS:
            # Its title.
            self.xdotool("mousemove", "--window", self.other, 300, 8, "click", 1)
        else:
            self.xdotool("windowactivate", "--sync", self.other)
        wait_for(lambda: self.active() == OTHER, "the focus in the other window")
        return program

    def active(self):
        """The title of the window in front."""
        return self.wine_desktop.ask("foreground") if WINDOWS else self.xdotool("getactivewindow", "getwindowname")

    def body(self):
        """A place on the figure."""
        x, y = wait_for(self.place, "the character")
        return x + BODY[0], y + BODY[1]

    def window_at(self, x, y):
        """The one that a click there goes to."""
        if WINDOWS:
            return self.wine_desktop.ask("at", x, y)
        self.xdotool("mousemove", x, y)
        return re.search(r"WINDOW=(\d+)", self.xdotool("getmouselocation", "--shell"))[1]

    def test_never_takes_the_focus(self):
        program = self.start_above_other()
        _, ended = self.speak(program)
        self.assertEqual(self.active(), OTHER)
        self.xdotool("mousemove", *self.body(), "click", 1)
        self.assertEqual(self.active(), OTHER)
        self.drag(300, 300)
        self.wait_place(300, 300)
        ended()
        self.assertEqual(self.active(), OTHER)

    def test_has_no_task_bar_entry_and_stays_on_top(self):
        program = self.start_shown()
        balloon, _ = self.speak(program)
        if WINDOWS:
            self.assertEqual(self.wine_desktop.ask("styles", NAME), "topmost ")
            return
        for window in (self.find(NAME)[0], balloon[0]):
            state = self.display.run("xprop", "-id", str(window), "_NET_WM_STATE").decode()
            self.assertIn("_NET_WM_STATE_SKIP_TASKBAR", state)
            self.assertIn("_NET_WM_STATE_ABOVE", state)

    def test_one_clicks_through_beside_it(self):
        self.start_above_other()
        x, y = self.place()
        self.assertNotEqual(self.window_at(*self.body()), self.window_at(x + BESIDE[0], y + BESIDE[1]))

    def test_right_click_opens_the_menu(self):
        self.start_shown()
        before = {window[0] for window in self.display.windows() if self.display.is_viewable(window[0])}

        def popped_up():
            return [window for window in self.display.windows()
                    if window[0] not in before and window[2] > 40 and window[3] > 30
                    and self.display.is_viewable(window[0])]
        self.xdotool("mousemove", *self.body(), "click", 3)
        wait_for(popped_up, "the menu")
        self.xdotool("key", "Escape")
        wait_for(lambda: not popped_up(), "the menu to go")

    def test_stands_at_the_next_start_where_it_was_dragged_to(self):
        program = self.start_shown()
        self.drag(480, 610)
        self.wait_place(480, 610)
        self.assertEqual(self.call("--quit")[0], 0)
        program.wait_end()
        self.start_shown()
        self.wait_place(480, 610)


@unittest.skipIf(WINDOWS, "the settings are in the registry there")
class Parked(CharacterScenario):
    def test_hidden_character_is_not_to_be_seen_and_speaks(self):
        for position in range(4):
            with self.subTest(position=position):
                self.write_settings(Agent_Hidden=1, Agent_Position_List_Index=position)
                program = self.start_shown()
                self.assertEqual(self.call("--speak", SPEECH)[0], 0)
                program.wait_event("word", lambda event: event["text"] == "rain")
                self.assertIsNone(self.find(NAME))
                self.assertIsNone(self.find(SPEECH.split()[0]))
                program.wait_event("request-complete", lambda event: event["text"] == "Speak")
                self.assertGreater(harness.sound_level(program.recording)[0], 0.05)
                program.kill()


@unittest.skipIf(WINDOWS, "titles of the balloon's window are not told there")
class Balloon(CharacterScenario):
    def test_is_below_a_character_at_the_upper_edge_and_above_elsewhere(self):
        program = self.start_shown()
        self.drag(500, 0)
        self.wait_place(500, 0)
        balloon, ended = self.speak(program)
        self.assertGreater(balloon[5], SIDE // 2)
        ended()
        self.drag(500, 500)
        self.wait_place(500, 500)
        balloon, _ = self.speak(program)
        self.assertLess(balloon[5] + balloon[3], 500 + SIDE // 2)

    def test_follows_a_character_that_is_dragged_while_it_speaks(self):
        program = self.start_shown()
        balloon, _ = self.speak(program, f"{SPEECH} and it was late when they came to the bridge.")
        self.drag(600, 600)
        self.wait_place(600, 600)
        wait_for(lambda: self.find(SPEECH.split()[0])[5] > balloon[5] + 300, "the balloon at the character's new place")


@unittest.skipIf(WINDOWS, "Wine sees one monitor")
@unittest.skipUnless(os.path.exists(DUMMY_DRIVER), "xserver-xorg-video-dummy is not installed")
class TwoMonitors(CharacterScenario):
    def setUp(self):
        super().setUp()
        self.start_display()
        self.display.run("xrandr", "--addmode", "DUMMY1", "1024x768")
        self.display.run("xrandr", "--output", "DUMMY0", "--mode", "1024x768", "--pos", "0x0",
                         "--output", "DUMMY1", "--mode", "1024x768", "--pos", "1024x0")
        self.assertIn("Monitors: 2", self.display.run("xrandr", "--listmonitors").decode())
        self.serve("openbox", "--sm-disable")
        wait_for(lambda: b"window id" in self.display.run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"),
                 "the window manager")

    def start_display(self):
        """A server of its own: the one of the other tests has a single monitor."""
        path = self.home.path("xorg.conf")
        with open(path, "w", encoding="ascii") as file:
            file.write(XORG_CONFIGURATION)
        reading, writing = os.pipe()
        self.serve("Xorg", "-config", path, "-logfile", self.home.path("xorg.log"), "-noreset", "-novtswitch",
                   "-sharevts", "-nolisten", "tcp", "-displayfd", str(writing), pass_fds=(writing,))
        os.close(writing)
        with os.fdopen(reading) as answer:
            number = answer.readline().strip()
        if not number:
            self.skipTest("the server with two monitors does not start here")
        self.display.environment["DISPLAY"] = f":{number}"

    def serve(self, *command, pass_fds=()):
        process = subprocess.Popen(command, env=self.display.environment, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, pass_fds=pass_fds)
        self.addCleanup(process.wait)
        self.addCleanup(process.terminate)

    def assert_well_placed(self, balloon, monitor):
        """On the character's monitor, beside the figure and not on it."""
        left, top, right, bottom = monitor
        _, _, width, height, x, y = balloon
        self.assertGreaterEqual(x, left)
        self.assertGreaterEqual(y, top)
        self.assertLessEqual(x + width, right)
        self.assertLessEqual(y + height, bottom)
        figure_x, figure_y = self.place()
        # What is to be seen of the figure begins some rows below the frame's edge.
        apart = (y + height <= figure_y + MOST_DISTANCE or y >= figure_y + SIDE - MOST_DISTANCE or
                 x + width <= figure_x + MOST_DISTANCE or x >= figure_x + SIDE - MOST_DISTANCE)
        self.assertTrue(apart, (balloon, (figure_x, figure_y)))

    def test_balloon_finds_room_in_every_corner_of_both(self):
        program = self.start_shown()
        for monitor in ((0, 0, 1024, 768), (1024, 0, 2048, 768)):
            left, top, right, bottom = monitor
            for x, y in ((left, top), (right - SIDE, top), (left, bottom - SIDE), (right - SIDE, bottom - SIDE)):
                with self.subTest(x=x, y=y):
                    self.drag(x, y)
                    self.wait_place(x, y)
                    balloon, ended = self.speak(program)
                    self.assert_well_placed(balloon, monitor)
                    ended()


@unittest.skipIf(WINDOWS, "a setting of the X11 desktop")
class HighResolution(CharacterScenario):
    def picture(self, window):
        return self.display.run("import", "-window", str(window[0]), "-depth", "8", "rgb:-")

    def test_picture_and_balloon_have_the_dots_of_the_screen(self):
        self.write_settings(Top=150, Left=150)
        program = self.start_shown(environment={"GDK_SCALE": "2"})
        balloon, _ = self.speak(program)
        for window in (self.find(NAME), balloon):
            _, _, width, height, *_ = window
            pixels = self.picture(window)
            rows = [pixels[3 * width * row:3 * width * (row + 1)] for row in range(height)]
            # Blown up, each row of dots would be there twice.
            self.assertTrue(any(rows[row] != rows[row + 1] for row in range(0, height - 1, 2)), window)
        self.assertEqual(self.find(NAME)[2:4], (2 * SIDE, 2 * SIDE))


if __name__ == "__main__":
    harness.main(wine_desktop=True)
