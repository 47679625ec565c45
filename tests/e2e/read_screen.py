"""Screen reading with a window of each kind of control under the pointer: what is spoken, and what happens when the
server or the program under the pointer fails."""

import json
import os
import shutil
import signal
import time
import unittest

import harness
from harness import WINDOWS, wait_for
from screen_scenario import KINDS, NOTHING, ScreenReading


class Objects(ScreenReading):
    def test_every_control_is_spoken_as_what_it_is(self):
        program = self.start_and_wait()
        _, objects = self.sample_window()
        for thing in objects:
            if WINDOWS and thing["kind"] == "spin button":
                continue  # Wine takes another control's label for its name
            with self.subTest(thing["kind"], name=thing["name"]):
                self.point_at(program, thing)
        everything = json.dumps(program.events())
        self.assertNotIn("hunter2", everything, "a password is never told")

    def test_an_object_is_spoken_once_and_again_after_another_one(self):
        program = self.start_and_wait()
        _, objects = self.sample_window()
        button, label = objects[0], objects[1]
        for thing in (button, label, button):
            since = len(program.events("object"))
            self.point_at(program, thing, since)
            self.move_to(thing["x"] + 5, thing["y"] + 2)
            self.wait_looked_again(program)
            self.assertEqual(len(program.events("object")), since + 1)

    def test_the_character_is_not_interrupted_by_its_own_words(self):
        program = self.start_and_wait()
        _, objects = self.sample_window()
        self.point_at(program, objects[0])
        [character] = [window for window in self.display.windows() if window[1] == "Fable"]
        *_, width, height, x, y = character
        self.move_to(x + width // 2, y + height // 2)
        self.call("--speak", "These words stand in a balloon")
        program.wait_event("balloon-show")
        self.wait_looked_again(program)
        self.assertEqual(len(program.events("object")), 1)

    @unittest.skipIf(WINDOWS, "Wine lets nobody but its own program see a menu")
    def test_menus_that_open_and_vanish(self):
        program = self.start_and_wait()
        process, objects = self.sample_window()
        x, y, *_ = self.window("[Vv]oxtrel_sample_window")
        self.move_to(x + 30, y + 10)
        self.wait_spoken(program, "Drawing menu")
        self.xdotool("click", 1)
        self.point_at_all(program, (x, y), [(40, 38, "New drawing menu item"), (40, 64, "Grid check menu item checked")])
        self.xdotool("key", "Escape")
        self.xdotool("key", "Escape")
        self.point_at(program, objects[0])
        self.end_process(process)
        since = len(self.server_lines(program))
        self.move_to(objects[1]["x"], objects[1]["y"])
        self.wait_server_line(program, NOTHING, since)
        self.assertIsNone(program.process.poll())

    @unittest.skipIf(WINDOWS, "the toolkit of Linux draws larger this way")
    def test_a_program_drawn_at_twice_the_size(self):
        program = self.start_and_wait()
        _, objects = self.sample_window({"GDK_SCALE": "2"})
        # The toolkit counts in its own units.
        for thing in objects[:9]:
            with self.subTest(thing["kind"], name=thing["name"]):
                self.point_at(program, dict(thing, x=2 * thing["x"], y=2 * thing["y"]))
        x, y, *_ = self.window("[Vv]oxtrel_sample_window")
        self.move_to(x + 60, y + 20)
        self.wait_spoken(program, "Drawing menu")
        self.xdotool("click", 1)
        self.move_to(x + 80, y + 76)
        self.wait_spoken(program, "New drawing menu item")

    @unittest.skipIf(WINDOWS, "Wine sees one monitor")
    def test_a_window_on_the_second_of_two_monitors(self):
        self.set_monitors(("640/170x1024/270+0+0", "screen"), ("640/170x1024/270+640+0", "none"))
        program = self.start_and_wait()
        _, objects = self.sample_window()
        x, y, *_ = self.window("[Vv]oxtrel_sample_window")
        self.xdotool("search", "--onlyvisible", "--class", "^[Vv]oxtrel_sample_window$", "windowmove", 680, 200)
        wait_for(lambda: self.window("[Vv]oxtrel_sample_window")[0] >= 680, "the window on the other monitor")
        there_x, there_y, *_ = self.window("[Vv]oxtrel_sample_window")
        for thing in objects[:9]:
            with self.subTest(thing["kind"], name=thing["name"]):
                self.point_at(program, dict(thing, x=thing["x"] + there_x - x, y=thing["y"] + there_y - y))

    def set_monitors(self, *monitors):
        for number, (geometry, output) in enumerate(monitors):
            self.display.run("xrandr", "--setmonitor", f"part{number}", geometry, output)
            self.addCleanup(self.display.run, "xrandr", "--delmonitor", f"part{number}")
        listed = self.display.run("xrandr", "--listmonitors").decode()
        self.assertIn(f"Monitors: {len(monitors)}", listed)


class Switching(ScreenReading):
    def test_new_kinds_of_objects_are_learnt_and_silenced_ones_keep_quiet(self):
        label = KINDS.get("label", "label")
        self.write_settings(f'"{label} " = "False"')
        program = self.start_and_wait()
        _, objects = self.sample_window()
        self.move_to(objects[1]["x"], objects[1]["y"])
        self.wait_server_line(program, f"object\t{label}\tJust a label\t\t-")
        self.wait_looked_again(program)
        self.move_to(objects[0]["x"], objects[0]["y"])
        self.wait_spoken(program, "Save all")
        self.assertEqual(self.choice("push button "), "name")
        self.assertEqual([event["text"] for event in program.events("object")], ["Save all "])

    def test_no_server_runs_while_screen_reading_is_off(self):
        self.write_settings(on=False)
        program = self.start_and_wait()
        _, objects = self.sample_window()
        self.move_to(objects[0]["x"], objects[0]["y"])
        self.wait_for_ticks(program, "still here")
        self.assertEqual(program.events("object"), [])
        self.assertEqual(program.events("server-start"), [])
        self.assertEqual(self.server_processes(program), [])

    def test_the_server_ends_with_the_program(self):
        for end in (lambda program: self.call("--quit"), lambda program: program.process.kill()):
            program = self.start_and_wait()
            [server] = wait_for(lambda: self.server_processes(program), "the server")
            end(program)
            program.process.wait()
            wait_for(lambda: not os.path.exists(f"/proc/{server}"), "the end of the server")


class Failures(ScreenReading):
    def wait_started(self, program, times):
        """When the server was started, or was to be, in milliseconds since the start of the program."""
        wait_for(lambda: len(program.events("server-start")) >= times, f"{times} starts of the server")
        return [event["t"] for event in program.events("server-start")]

    def assert_pauses_grow(self, starts):
        """From one second on, each twice as long as the one before."""
        for number, (before, after) in enumerate(zip(starts, starts[1:])):
            self.assertGreaterEqual(after - before, 1000 * 2 ** number - 20)

    def test_a_killed_server_is_started_again_after_pauses_that_grow(self):
        program = self.start_and_wait()
        _, objects = self.sample_window()
        killed = []
        for thing in objects[:3]:
            self.point_at(program, thing)
            [server] = self.server_processes(program)
            killed.append(server)
            os.kill(server, signal.SIGKILL)
            self.wait_started(program, len(killed) + 1)
        self.assert_pauses_grow(self.wait_started(program, 4))
        [server] = wait_for(lambda: self.server_processes(program), "the last server")
        self.assertNotIn(server, killed)

    def test_a_frozen_server_is_replaced(self):
        program = self.start_and_wait()
        _, objects = self.sample_window()
        [server] = wait_for(lambda: self.server_processes(program), "the server")
        os.kill(server, signal.SIGSTOP)
        wait_for(lambda: self.server_processes(program) not in ([], [server]), "another server")
        self.point_at(program, objects[0])

    def test_a_missing_server_is_not_missed(self):
        folder = self.home.path("program")
        os.mkdir(folder)
        whole, name = os.path.split(harness.PROGRAM)
        shutil.copy(harness.PROGRAM, folder)
        for part in ("characters", "strings", "icons"):
            os.symlink(os.path.join(whole, part), os.path.join(folder, part))
        own, harness.PROGRAM = harness.PROGRAM, os.path.join(folder, name)
        try:
            program = self.start_and_wait()
        finally:
            harness.PROGRAM = own
        self.move_to(300, 300)
        self.assert_pauses_grow(self.wait_started(program, 3))
        self.assertEqual(self.server_processes(program), [])
        self.wait_for_ticks(program, "still here")

    def test_a_frozen_program_under_the_pointer_holds_up_nobody(self):
        program = self.start_and_wait()
        process, objects = self.sample_window()
        self.point_at(program, objects[0])
        [server] = self.server_processes(program)
        os.killpg(process.pid, signal.SIGSTOP)
        since = len(self.server_lines(program))
        self.move_to(objects[1]["x"], objects[1]["y"])
        self.wait_server_line(program, NOTHING, since)
        began = time.monotonic()
        self.wait_for_ticks(program, "meanwhile")
        self.assertLess(time.monotonic() - began, 5)
        # Another program can be pointed at all the while.
        os.remove(self.home.path("objects"))
        _, others = self.sample_window()
        self.point_at(program, others[2], len(program.events("object")))
        os.killpg(process.pid, signal.SIGCONT)
        self.assertEqual(self.server_processes(program), [server], "the server was not in need of a new start")


if __name__ == "__main__":
    harness.main()
