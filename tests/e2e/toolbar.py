"""The toolbar by keyboard and as a screen reader sees it, and the tray icon in a real tray: over AT-SPI, or under Wine
with its own task bar."""

import json
import os
import shutil
import subprocess
import unittest

import harness
from harness import Scenario, WINDOWS, WineDesktop, wait_for

BUTTONS = ["Start speech", "Open TextReader", "Stop speech", "Open text", "Open Speech Properties Panel"]
TREE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "accessible_tree.py")


def has_accessibility_client():
    return WINDOWS or subprocess.run(["/usr/bin/python3", "-c", "import gi; gi.require_version('Atspi', '2.0')"],
                                          capture_output=True).returncode == 0


@unittest.skipUnless(has_accessibility_client(), "no accessibility client is installed")
class ToolbarScenario(Scenario):
    def setUp(self):
        super().setUp()
        if WINDOWS:
            self.wine_desktop = WineDesktop()
            self.addCleanup(self.wine_desktop.close)
        self.before_start()
        self.program = self.start_and_wait()
        self.window = wait_for(self.toolbar, "the toolbar")

    def before_start(self):
        pass

    def xdotool(self, *arguments):
        return self.display.run("xdotool", *map(str, arguments)).decode().strip()

    def toolbar(self):
        return next((window[0] for window in self.display.windows()
                     if window[1] == "Voxtrel" and self.display.is_viewable(window[0])), None)

    def tree(self):
        lines = self.display.run("/usr/bin/python3", TREE, "voxtrel").decode().splitlines()
        return [json.loads(line) for line in lines]

    def names(self, role):
        return [accessible["name"] for accessible in self.tree() if accessible["role"] == role]

    def buttons(self):
        return self.wine_desktop.ask("buttons Voxtrel").split("\t") if WINDOWS else self.names("push button")

    def focused(self):
        if WINDOWS:
            return self.wine_desktop.ask("focus") or None
        return next((accessible["name"] for accessible in self.tree() if accessible["focused"]), None)

    def press_until_focused(self, key, name):
        """Goes on from button to button with the key; comes by each of them at most once."""
        for _ in BUTTONS:
            if self.focused() == name:
                return
            before = self.focused()
            self.xdotool("key", key)
            wait_for(lambda: self.focused() != before, f"the focus to move by {key}")
        self.assertEqual(self.focused(), name)


class Keyboard(ToolbarScenario):
    def setUp(self):
        super().setUp()

        def in_front():
            if WINDOWS:
                # Its title.
                self.xdotool("mousemove", "--window", self.window, 60, 8, "click", 1)
            else:
                self.xdotool("windowactivate", self.window)
            return self.focused() is not None
        wait_for(in_front, "the focus in the toolbar")

    def test_screen_readers_know_every_button(self):
        self.assertEqual(self.buttons(), BUTTONS)
        if not WINDOWS:
            self.assertIn("Voxtrel", self.names("frame"))

    def test_tab_and_arrows_reach_every_button(self):
        for key, names in (("Tab", BUTTONS), ("shift+Tab", BUTTONS[::-1]), ("Right", BUTTONS), ("Left", BUTTONS[::-1])):
            for name in names:
                self.press_until_focused(key, name)

    def test_space_and_enter_press_the_button(self):
        self.press_until_focused("Tab", "Stop speech")
        for times, key in enumerate(("space", "Return"), start=1):
            self.call("--speak", "word " * 200)
            wait_for(lambda: len(self.program.events("utterance")) == times, "the voice")
            self.xdotool("key", key)
            wait_for(lambda: sum(event["text"].startswith("Speak") for event in self.program.events("request-complete"))
                     == times, f"silence after {key}")


@unittest.skipUnless(WINDOWS or shutil.which("trayer"), "no tray is installed")
class Tray(ToolbarScenario):
    beside = 0

    def before_start(self):
        if WINDOWS:
            return
        tray = subprocess.Popen(["trayer", "--edge", "bottom", "--align", "left", "--widthtype", "request"],
                                env=self.display.environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(tray.wait)
        self.addCleanup(tray.terminate)
        wait_for(lambda: self.xdotool("search", "--class", "^trayer$"), "the tray")

    def icon(self):
        """The icon is a window of the program within the tray's, which grows and moves with what is in it."""
        return next((window for window in self.display.windows()
                     if window[1] == "voxtrel" and self.display.is_viewable(window[0])), None)

    def point(self):
        if WINDOWS:
            # The task bar's only icon. Beside the last place: two quick clicks on one are a double click.
            _, _, width, height, x, y = wait_for(self.task_bar, "the task bar")
            self.beside = 4 - self.beside
            self.xdotool("mousemove", x + width - height // 2 - self.beside, y + height // 2)
            return

        def over_icon():
            _, _, width, height, x, y = icon = wait_for(self.icon, "the icon in the tray")
            self.xdotool("mousemove", x + width // 2, y + height // 2)
            return self.icon() == icon
        wait_for(over_icon, "the icon to stay where it is")

    def task_bar(self):
        screen = max((window[2] for window in self.display.windows()), default=0)
        return next((window for window in self.display.windows() if window[2] == screen and window[3] < 60), None)

    def click(self, button):
        self.point()
        self.xdotool("click", button)

    def entries(self):
        return self.names("menu item")

    def menu_is_open(self):
        return self.wine_desktop.ask("menu") == "open" if WINDOWS else bool(self.entries())

    def open_menu(self):
        self.click(3)
        wait_for(self.menu_is_open, "the menu")

    def menu(self):
        self.open_menu()
        names = self.entries()
        self.xdotool("key", "Escape")
        wait_for(lambda: not self.menu_is_open(), "the menu to close")
        return names

    def test_a_click_hides_the_toolbar_and_another_one_shows_it(self):
        self.click(1)
        wait_for(lambda: not self.toolbar(), "the toolbar to go")
        self.click(1)
        wait_for(self.toolbar, "the toolbar to come back")

    @unittest.skipIf(WINDOWS, "Wine keeps the entries of a menu from other programs")
    def test_the_menu_has_two_entries_that_tell_what_they_will_do(self):
        self.assertEqual(self.menu(), ["Show Speech Options", "Hide Toolbar"])
        self.click(1)
        wait_for(lambda: not self.toolbar(), "the toolbar to go")
        self.assertEqual(self.menu(), ["Show Speech Options", "Show Toolbar"])

    def test_an_entry_of_the_menu_does_it(self):
        self.open_menu()
        if WINDOWS:
            # Above the icon, which is where the pointer is; the keys of a menu without a visible window go nowhere in
            # Wine's desktop.
            self.xdotool("mousemove_relative", "--", -40, -20, "click", 1)
        else:
            self.xdotool("key", "Up", "Return")
        wait_for(lambda: not self.toolbar(), "the toolbar to go")


if __name__ == "__main__":
    harness.main(wine_desktop=True)
