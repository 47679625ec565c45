"""Start-up, speaking, the second instance and the end, as a user meets them."""

import os
import unittest

import harness
from harness import Scenario, WINDOWS, native, sound_level, wait_for


class StartUp(Scenario):
    def test_first_start_shows_the_character_at_its_default_place_and_size(self):
        self.start_and_wait()
        wait_for(lambda: [w for w in self.display.windows()
                          if w[2:] == (128, 128, 100, 100) and self.display.is_viewable(w[0])],
                 "a 128 by 128 window at 100, 100")

    @unittest.skipIf(WINDOWS, "the store is the registry there")
    def test_first_start_seeds_the_voice_table(self):
        self.start_and_wait()
        settings = self.home.settings()
        self.assertEqual(settings.count("CA141FD0-AC7F-11D1-97A3-006008273"), 8)

    def test_second_start_restores_the_first_and_changes_no_setting(self):
        first = self.start_and_wait()
        before = None if WINDOWS else self.home.settings()
        second = self.start()
        code, errors = second.wait_end()
        self.assertEqual(code, 0, errors)
        self.assertIsNone(first.process.poll())
        if not WINDOWS:
            self.assertEqual(self.home.settings(), before)

    @unittest.skipIf(WINDOWS, "there is no file to damage there")
    def test_damaged_settings_are_kept_aside_and_the_program_starts(self):
        os.makedirs(os.path.dirname(self.home.settings_file))
        with open(self.home.settings_file, "wb") as file:
            file.write(b"\xff\x00 this is no settings file")
        program = self.start_and_wait()
        kept = [name for name in os.listdir(os.path.dirname(self.home.settings_file)) if "damaged" in name]
        self.assertEqual(len(kept), 1)
        self.call("--quit")
        _, errors = program.wait_end()
        self.assertIn("settings", errors)

    def test_starts_again_after_a_kill(self):
        self.start_and_wait().kill()
        self.start_and_wait()


class Speaking(Scenario):
    def test_speak_at_start_is_heard_and_shown(self):
        program = self.start("--speak", "Hello from the program.")
        program.wait_event("utterance", lambda event: "Hello" in event["text"])
        program.wait_event("word", lambda event: event["text"] == "Hello")
        program.wait_event("request-complete", lambda event: event["text"].startswith("Speak"))
        level, seconds = sound_level(program.recording)
        self.assertGreater(level, 0.05)
        self.assertGreater(seconds, 0.8)

    def test_running_instance_takes_commands_from_the_command_line(self):
        program = self.start_and_wait()
        code, _, errors = self.call("--speak", "Grüße, naïve world")
        self.assertEqual(code, 0, errors)
        event = program.wait_event("speak")
        self.assertIn("Grüße, naïve world", event["markup"])

    def test_text_file_is_read(self):
        path = self.home.path("note.txt")
        with open(path, "w", encoding="utf-16") as file:
            file.write("A line of text.\n")
        program = self.start(native(path))
        program.wait_event("utterance", lambda event: "text." in event["text"])
        program.wait_event("bookmark", lambda event: event["number"] == 400003)  # "line"

    def test_quit_ends_the_program(self):
        program = self.start_and_wait()
        self.assertEqual(self.call("--quit")[0], 0)
        code, errors = program.wait_end()
        self.assertEqual(code, 0, errors)
        self.assertTrue(program.events("unload"))

    def test_unknown_command_strings_are_accepted_and_do_nothing(self):
        program = self.start_and_wait()
        for text in ("", "1", "1:", "2:", "9:hello", "x"):
            self.assertEqual(self.call("--execute", text)[0], 0, text)
        wait_for(lambda: len(program.events("command")) == 6, "all six commands")
        self.assertEqual(self.call("--execute", "1:last")[0], 0)
        program.wait_event("speak")
        self.assertEqual(len(program.events("speak")), 1)


if __name__ == "__main__":
    harness.main()
