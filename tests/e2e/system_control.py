"""The character control that a system may bring along: whether it is used, and for what. On Windows with the test
control of tests/agent/com registered as the system's."""

import os
import subprocess
import unittest

import harness
from harness import PATIENCE, Scenario, WINDOWS, native, wait_for, wine

CONTROL = os.path.join(os.environ.get("VOXTREL_E2E_PROGRAMS", ""), "voxtrel_test_control.dll")


def register(*options):
    subprocess.run(wine("regsvr32", "/s", *options, native(CONTROL)), stdin=subprocess.DEVNULL,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=PATIENCE, check=True)


@unittest.skipIf(WINDOWS, "Windows may have one")
class SystemWithoutControls(Scenario):
    def test_wanting_the_systems_control_ends_with_a_sentence(self):
        code, _, errors = self.call("--character-server", "system")
        self.assertEqual(code, 1)
        self.assertEqual(errors.strip(), "The character control of the system cannot be used: "
                                         "Only Windows can have a character control of its own.")

    def test_our_own_is_used_without_a_word(self):
        program = self.start_and_wait("--character-server=embedded")
        self.assertEqual([event["text"] for event in program.events("character-server")], ["embedded"])


@unittest.skipUnless(WINDOWS, "no other system has such controls")
class RegisteredControl(Scenario):
    def setUp(self):
        super().setUp()
        register()
        self.log = self.home.path("calls")
        self.environment = {"VOXTREL_TEST_SERVER_LOG": native(self.log)}

    def calls(self):
        try:
            with open(self.log, encoding="utf-8", newline="\n") as file:
                return file.read().split("\n")[:-1]
        except FileNotFoundError:
            return []

    def wait_call(self, beginning):
        return wait_for(lambda: next((call for call in self.calls() if call.startswith(beginning)), None),
                        f"the call {beginning}")

    def test_start_up_and_speech_go_through_it(self):
        program = self.start("--speak", "Grüße from the program.", environment=self.environment)
        self.assertIn("Grüße from the program.", self.wait_call("Genie.Speak"))
        program.wait_event("started")
        calls = self.calls()
        self.assertEqual(calls[:2], ["Create", "Connected = True"])
        self.assertRegex(calls[2], r'^Characters.Load "Genie" ".*\\characters\\Genie\.acs"$')
        # What reads a property may come anywhere between.
        self.assertEqual([call for call in calls[3:-1] if not call.endswith("?")],
                         ["Genie.SoundEffectsOn = False", 'Genie.Balloon.FontName = "Arial"',
                          "Genie.Balloon.FontSize = 14", "Genie.Top = 100", "Genie.Left = 100", "Genie.Height = 128",
                          "Genie.Width = 128", 'Genie.TTSModeID = "{CA141FD0-AC7F-11D1-97A3-006008273000}"',
                          "Genie.Balloon.Style = 35389453", "Genie.Show"])
        self.assertEqual([event["text"] for event in program.events("character-server")], ["system"])
        program.wait_event("request-complete", lambda event: event["text"] == "Speak" and event["number"] == 0)
        self.assertFalse(program.events("utterance"))

        self.assertEqual(self.call("--quit")[0], 0)
        self.assertEqual(program.wait_end()[0], 0)
        self.assertEqual(self.calls()[-1], 'Characters.Unload "Genie"')

    def test_bookmarks_move_the_text_reader(self):
        program = self.start("--read", "Two words.", environment=self.environment)
        program.wait_event("bookmark", lambda event: event["number"] == 300001)  # "Two"
        program.wait_event("bookmark", lambda event: event["number"] == 600005)  # "words."

    def test_embedded_does_not_touch_it(self):
        program = self.start("--character-server", "embedded", "--speak", "Hello.", environment=self.environment)
        program.wait_event("utterance", lambda event: "Hello" in event["text"])
        self.assertEqual([event["text"] for event in program.events("character-server")], ["embedded"])
        self.assertEqual(self.calls(), [])


@unittest.skipUnless(WINDOWS, "no other system has such controls")
class MissingControl(Scenario):
    def setUp(self):
        super().setUp()
        register("/u")

    def test_our_own_is_used_without_a_word(self):
        program = self.start_and_wait()
        self.assertEqual([event["text"] for event in program.events("character-server")], ["embedded"])

    def test_wanting_the_systems_control_ends_with_a_sentence(self):
        code, _, errors = self.call("--character-server", "system")
        self.assertEqual(code, 1)
        self.assertRegex(errors, "^The character control of the system cannot be used: .+")


if __name__ == "__main__":
    harness.main()
