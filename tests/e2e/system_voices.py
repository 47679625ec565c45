"""Voices of the system in the real program: listed, added, spoken with in their own language, and gone."""

import math
import os
import re
import subprocess
import wave

import harness
from accessible import find
from harness import Scenario, sound_level, wait_for

from gi.repository import Atspi

GERMAN = "German, eSpeak NG"
GERMAN_ID = "{E59EA4B1-D2C6-8438-9EBE-7F74041E47A0}"
SENTENCE = "Die Straße in München ist schön und laut."
NOT_AVAILABLE = "The chosen voice is not available on this computer."


def envelope(samples, rate):
    """How loud each fiftieth of a second of the audible part is."""
    size = rate // 50
    powers = [math.sqrt(sum(s * s for s in samples[i:i + size]) / size) for i in range(0, len(samples) - size, size)]
    loud = [i for i, power in enumerate(powers) if power > max(powers) / 30]
    return powers[loud[0]:loud[-1] + 1]


def read_wave(path):
    with wave.open(path) as file:
        frames = file.readframes(file.getnframes())
        return list(memoryview(frames[:len(frames) // 2 * 2]).cast("h")), file.getframerate()


def likeness(a, b):
    """Correlation of two envelopes, 1 for the same."""
    size = min(len(a), len(b))
    a, b = a[:size], b[:size]
    mean_a, mean_b = sum(a) / size, sum(b) / size
    both = sum((x - mean_a) * (y - mean_b) for x, y in zip(a, b))
    return both / math.sqrt(sum((x - mean_a) ** 2 for x in a) * sum((y - mean_b) ** 2 for y in b))


class SystemVoices(Scenario):
    def write_settings(self, voice, *more):
        """Settings of a user who has chosen this voice; more: entries of section "voices"."""
        os.makedirs(os.path.dirname(self.home.settings_file), exist_ok=True)
        with open(self.home.settings_file, "w", encoding="utf-8") as file:
            file.write('Voxtrel settings 1\napplication "Orvella"\nsection "Agent"\n"Left" = "300"\n"Top" = "200"\n'
                       f'section "agent"\n"AgentVoice" = "{voice}"\nsection "voices"\n')
            for name, mode in more:
                file.write(f'"{name}" = "{mode}"\n')
            file.write("end\n")

    def voices(self):
        section = self.home.settings().split('section "voices"\n')[1]
        return re.findall(r'^"(.*)" = "(\{.*\})"$', section, re.M)

    def without_espeak(self):
        """An environment in which the library cannot be loaded."""
        folder = self.home.path("broken")
        os.makedirs(folder, exist_ok=True)
        with open(os.path.join(folder, "libespeak-ng.so.1"), "w", encoding="utf-8") as file:
            file.write("this is no library")
        return {"LD_LIBRARY_PATH": folder}

    def libraries(self, program):
        with open(f"/proc/{program.process.pid}/maps", encoding="utf-8") as file:
            return file.read()

    def say_with_espeak(self, language):
        path = self.home.path(language + ".wav")
        subprocess.run(["espeak-ng", "-v", language, "-w", path, SENTENCE], check=True)
        return envelope(*read_wave(path))


class Listing(SystemVoices):
    def test_lists_what_can_be_chosen_and_what_can_be_added(self):
        code, output, errors = self.call("--list-voices")
        self.assertEqual((code, errors), (0, ""))
        chosen, more = output.decode().split("\n\n", 1)
        self.assertEqual(len(chosen.splitlines()), 8)
        self.assertRegex(more, rf"(?m)^{GERMAN} +eSpeak NG +de +{GERMAN_ID}$")
        self.assertRegex(more, r"(?m)^German, Speech Dispatcher espeak-ng +Speech Dispatcher espeak-ng +de +\{5D15BA7C-")

    def test_added_voices_join_the_users_own(self):
        self.write_settings("Mine", ("Mine", "{CA141FD0-AC7F-11D1-97A3-006008273005}"))
        code, output, errors = self.call("--add-voices", GERMAN, "fr-FR")
        self.assertEqual(code, 0, errors)
        self.assertIn(GERMAN, output.decode())
        names = [name for name, _ in self.voices()]
        self.assertEqual(names, ["Mine", GERMAN, "French (France), eSpeak NG"])
        self.assertEqual(dict(self.voices())[GERMAN], GERMAN_ID)
        before = self.home.settings()
        self.assertEqual(self.call("--add-voices", GERMAN)[0], 0)
        self.assertEqual(self.home.settings(), before)

    def test_first_run_has_the_eight_and_the_added_one(self):
        self.assertEqual(self.call("--add-voices", GERMAN)[0], 0)
        self.assertEqual(len(self.voices()), 9)

    def test_unknown_name_adds_nothing(self):
        code, _, errors = self.call("--add-voices", GERMAN, "Nobody")
        self.assertEqual(code, 2)
        self.assertIn("Nobody", errors)
        self.assertEqual(len(self.voices()), 8)

    def test_without_a_terminal_the_voices_are_shown_and_none_is_added(self):
        code, output, _ = self.call("--add-voices", stdin=b"all\n")
        self.assertEqual(code, 0)
        self.assertIn(GERMAN, output.decode())
        self.assertIn("--add-voices all", output.decode())
        self.assertEqual(len(self.voices()), 8)

    def test_without_the_library_there_are_no_such_voices(self):
        self.display.environment.update(self.without_espeak())
        code, output, errors = self.call("--list-voices")
        self.assertEqual((code, errors), (0, ""))
        self.assertNotIn(GERMAN, output.decode())


class Speaking(SystemVoices):
    def test_built_in_voice_asks_no_engine(self):
        program = self.start_and_wait("--speak", "Hello.")
        program.wait_event("request-complete", lambda event: event["text"].startswith("Speak"))
        self.assertNotIn("espeak", self.libraries(program))
        self.assertFalse(os.path.exists(os.path.join(self.home.runtime, "speech-dispatcher")))

    def test_german_text_sounds_german(self):
        self.write_settings(GERMAN, (GERMAN, GERMAN_ID))
        program = self.start_and_wait("--speak", SENTENCE)
        program.wait_event("request-complete", lambda event: event["text"].startswith("Speak"))
        self.assertEqual([event["text"] for event in program.events("word")], SENTENCE.split())
        heard = wait_for(lambda: sound_level(program.recording)[0] > 0.05 and envelope(*read_wave(program.recording)),
                         "the recording")
        german, english = self.say_with_espeak("de"), self.say_with_espeak("en-us")
        self.assertGreater(likeness(heard, german), 0.9)
        self.assertLess(likeness(heard, english), 0.6)

    def test_german_text_is_followed_in_the_text_reader(self):
        self.write_settings(GERMAN, (GERMAN, GERMAN_ID))
        program = self.start_and_wait("--read", SENTENCE + " Wie geht es Ihnen?")
        marks = []

        def all_marked():
            marks[:] = [event["number"] for event in program.events("bookmark")]
            return 999999999 in marks
        wait_for(all_marked, "the end of the text")
        words = [mark % 100000 for mark in marks if mark < 100000 * 1000]
        self.assertEqual(words, sorted(words))
        self.assertGreaterEqual(len(words), 12)

    def test_sound_file_is_spoken_by_the_voice(self):
        self.write_settings(GERMAN, (GERMAN, GERMAN_ID))
        path = self.home.path("out.wav")
        code, _, errors = self.call("--wav", path, "--speak", SENTENCE)
        self.assertEqual(code, 0, errors)
        self.assertGreater(likeness(envelope(*read_wave(path)), self.say_with_espeak("de")), 0.9)


class Gone(SystemVoices):
    """The voice of the settings is not there any more."""

    def expect_message_and_the_rest_of_the_settings(self, program):
        wait_for(lambda: find(name=NOT_AVAILABLE), "the message")
        button = wait_for(lambda: find(role="push button", name="OK"), "its button")
        Atspi.Action.do_action(button, 0)
        program.wait_event("started")
        wait_for(lambda: [w for w in self.display.windows()
                          if w[4:] == (300, 200) and self.display.is_viewable(w[0])], "the character at its place")
        self.assertEqual(self.call("--speak", "Still here.")[0], 0)
        program.wait_event("word", lambda event: event["text"] == "here.")

    def test_voice_that_was_removed_between_two_runs_is_told(self):
        self.write_settings(GERMAN, (GERMAN, GERMAN_ID))
        program = self.start_and_wait("--speak", "Guten Tag.")
        program.wait_event("request-complete", lambda event: event["text"].startswith("Speak"))
        self.assertIn("espeak", self.libraries(program))
        self.call("--quit")
        program.wait_end()

        self.expect_message_and_the_rest_of_the_settings(self.start(environment=self.without_espeak()))
        self.assertIn((GERMAN, GERMAN_ID), self.voices())

    def test_identifier_that_no_engine_knows_is_told(self):
        self.write_settings("Ghost", ("Ghost", "{01234567-89AB-CDEF-0123-456789ABCDEF}"))
        self.expect_message_and_the_rest_of_the_settings(self.start())

    def test_unknown_voice_of_a_known_engine_is_told(self):
        self.write_settings("Ghost", ("Ghost", GERMAN_ID[:-2] + "1}"))
        self.expect_message_and_the_rest_of_the_settings(self.start())


if __name__ == "__main__":
    harness.main()
