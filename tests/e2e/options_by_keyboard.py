"""The options dialog with nothing but the keyboard, on both platforms."""

import re
import subprocess
import time

import harness
from harness import Scenario, WINDOWS, wait_for, wine

TITLE = "Speech Options"
# How long a first-time user may need for another voice, slower and louder.
FIRST_TIME_SECONDS = 60
PAUSE = 0.3 if WINDOWS else 0.05  # seconds between two keys


class ByKeyboard(Scenario):
    def setUp(self):
        super().setUp()
        if WINDOWS:
            # The Wine home, and what other scenarios have set in it, outlives a test.
            subprocess.run(wine("reg", "delete", r"HKCU\Software\Voxtrel Settings", "/f"), capture_output=True)

    def start_with_options(self):
        program = self.start("--options")
        program.wait_event("started")
        wait_for(self.dialog, "the dialog")
        self.display.run("xdotool", "windowactivate", "--sync", self.dialog())
        return program

    def dialog(self):
        found = self.display.run("xdotool", "search", "--onlyvisible", "--name", f"^{TITLE}$").decode().split()
        return found[-1] if found else None

    def press(self, *keys):
        for key in keys:
            self.display.run("xdotool", "key", key)
            time.sleep(PAUSE)

    def prosody(self, program, count):
        """Speed, pitch and volume of the count-th text that was spoken."""
        speak = wait_for(lambda: program.events("speak")[count - 1:count], f"text {count} to be spoken")[0]
        return [int(number) for number in re.findall(r"=(\d+)\\", speak["markup"])[:3]]

    def quit(self, program):
        self.assertEqual(self.call("--quit")[0], 0)
        self.assertEqual(program.wait_end()[0], 0)

    def prosody_of_the_next_start(self):
        program = self.start("--speak", "hello")
        found = self.prosody(program, 1)
        self.quit(program)
        return found

    def test_another_voice_slower_and_louder_in_under_a_minute(self):
        program = self.start_with_options()
        begun = time.monotonic()
        self.press("ctrl+Next", "ctrl+Next", "alt+v", "Down", "Tab", "Tab", "Tab", *["Left"] * 4, "Tab",
                   *["Right"] * 3, "Tab", "Tab", "space")
        self.assertEqual(self.prosody(program, 1), [123, 150, 50364])
        self.press("Tab", "Tab", "Return")
        wait_for(lambda: self.dialog() is None, "the dialog to close")
        seconds = time.monotonic() - begun
        self.assertLess(seconds, FIRST_TIME_SECONDS)
        self.quit(program)
        if not WINDOWS:
            self.assertIn('"AgentVoice" = "Adult Male 2, US English"', self.home.settings())
        self.assertEqual(self.prosody_of_the_next_start(), [123, 150, 50364])

    def test_escape_throws_the_changes_away_at_the_next_start(self):
        before = self.prosody_of_the_next_start()
        program = self.start_with_options()
        self.press("ctrl+Next", "ctrl+Next", "alt+p", "Prior", "alt+t")
        changed = self.prosody(program, 1)
        self.assertEqual(changed[0], before[0])
        self.assertGreater(changed[1], before[1])
        self.press("Escape")
        wait_for(lambda: self.dialog() is None, "the dialog to close")
        self.assertEqual(self.call("--speak", "still")[0], 0)
        self.assertEqual(self.prosody(program, 2), changed)
        self.quit(program)
        self.assertEqual(self.prosody_of_the_next_start(), before)


if __name__ == "__main__":
    harness.main()
