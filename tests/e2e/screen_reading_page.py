"""The options' page for screen reading, by keyboard and through AT-SPI, while the pointer is over another program."""

import harness
from accessible import Window
from harness import wait_for
from screen_scenario import ScreenReading

TITLE = "Speech Options"
PAGE = "Screen Reading"
LIST = "Select items which you would like to be read"
SWITCH = "I would like to use Screen Reading"


class Page(ScreenReading):
    def setUp(self):
        super().setUp()
        self.options = Window(TITLE)

    def start_with_page(self):
        program = self.start("--options")
        program.wait_event("started")
        self.options.wait()
        self.options.show_page(PAGE)
        return program

    def focus_dialog(self):
        window = wait_for(lambda: self.xdotool("search", "--onlyvisible", "--name", f"^{TITLE}$").split(), "the dialog")
        self.xdotool("windowactivate", "--sync", window[-1])

    def press_until(self, key, done, what):
        """Presses the key until done() is true; a person would not press on after it, either."""
        for _ in range(40):
            if done():
                return
            before = self.options.focused()
            self.xdotool("key", key)
            wait_for(lambda before=before: done() or self.options.focused() != before, "the focus to move")
        self.fail(f"{key} never led to {what}; the focus is on {self.options.focused_name()!r}")

    def stored(self, line):
        return line in self.home.settings()

    def test_the_tick_starts_and_stops_the_server_by_keyboard(self):
        self.write_settings(on=False)
        program = self.start_with_page()
        self.assertEqual(self.server_processes(program), [])
        self.focus_dialog()
        self.press_until("Tab", lambda: self.options.focused_name() == SWITCH, "the switch")
        self.xdotool("key", "space")
        [server] = wait_for(lambda: self.server_processes(program), "the server")
        wait_for(lambda: self.stored('"usescreenreading" = "True"'), "the setting")
        _, objects = self.sample_window()
        self.move_to(objects[0]["x"], objects[0]["y"])
        self.wait_spoken(program, "Save all")
        self.focus_dialog()
        self.xdotool("key", "space")
        wait_for(lambda: self.stored('"usescreenreading" = "False"'), "the setting")
        self.move_to(objects[1]["x"], objects[1]["y"])
        said = self.server_lines(program)
        self.wait_for_ticks(program, "still here")
        self.assertEqual(len(program.events("object")), 1)
        self.assertEqual(self.server_lines(program), said)
        self.assertEqual(self.server_processes(program), [server], "the server waits for the next time")

    def test_roles_are_silenced_by_keyboard(self):
        self.write_settings('"label " = "name"', '"push button " = "name,value,"')
        self.start_with_page()
        self.focus_dialog()
        self.press_until("Tab", lambda: self.options.focused_name() == LIST, "the list of roles")
        self.assertTrue(self.options.is_checked("check box", "Read Basic Text"))
        self.assertFalse(self.options.is_checked("check box", "Read Extra Information"))
        self.xdotool("key", "Down")
        wait_for(lambda: self.options.is_checked("check box", "Read Extra Information"), "the choice of the role")
        self.xdotool("key", "space")
        wait_for(lambda: self.stored('"push button " = "False"'), "the silenced role")
        self.assertTrue(self.stored('"label " = "name"'))
        self.xdotool("key", "Tab", "Tab", "space")
        wait_for(lambda: self.stored('"push button " = "value,"'), "the extra information")

    def test_the_details_follow_the_pointer(self):
        program = self.start_with_page()
        _, objects = self.sample_window()
        self.options.click("push button", "Details...")
        self.options.find("push button", "Close Details")
        for thing, role, value in ((objects[0], "push button ", " "), (objects[2], "check box ", "checked ")):
            self.move_to(thing["x"], thing["y"])
            for text in (role, thing["name"] + " ", value):
                self.options.find("label", text)
        self.assertGreaterEqual(len(program.events("object")), 2)

    def test_the_page_itself_is_read(self):
        self.write_settings(*(f'"{role} " = "name,role,value,"' for role in ("push button", "check box", "table cell")))
        program = self.start_with_page()
        for role, name, spoken in (("check box", SWITCH, SWITCH + " check box checked"),
                                   ("push button", "Details...", "Details... push button"),
                                   ("check box", "Read Basic Text", "Read Basic Text check box checked")):
            with self.subTest(name):
                box = self.options.find(role, name).get_extents(0)
                self.move_to(box.x + box.width // 2, box.y + box.height // 2)
                self.wait_spoken(program, spoken)
        for name, across in (("Check box ", 20), ("Push button ", -12)):  # on the role, and on its box
            with self.subTest(name):
                box = self.options.find("table cell", name).get_extents(0)
                self.move_to(box.x + across, box.y + box.height // 2)
                self.wait_spoken(program, name.strip() + " table cell checked")


if __name__ == "__main__":
    harness.main()
