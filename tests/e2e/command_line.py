"""The command line without a running program: sound files, lists, help and errors."""

import os
import unittest

import harness
from harness import Scenario, native, sound_level


class Headless(Scenario):
    def test_wav_writes_speech(self):
        path = self.home.path("out.wav")
        code, _, errors = self.call("--wav", native(path), "--speak", "The quick brown fox jumps over the lazy dog.")
        self.assertEqual(code, 0, errors)
        level, seconds = sound_level(path)
        self.assertGreater(level, 0.05)
        self.assertTrue(1.5 < seconds < 6, seconds)

    def test_wav_speed_changes_the_length(self):
        lengths = {}
        for speed in ("75", "225"):
            path = self.home.path(speed + ".wav")
            self.call("--wav", native(path), "--speed", speed, "--speak", "One sentence that is long enough to time.")
            lengths[speed] = sound_level(path)[1]
        self.assertGreater(lengths["75"], 1.8 * lengths["225"])

    def test_wav_of_standard_input_to_standard_output(self):
        code, output, errors = self.call("--wav", "-", "-", stdin=b"Hello there.")
        self.assertEqual(code, 0, errors)
        self.assertEqual(output[:4], b"RIFF")
        self.assertGreater(len(output), 16000)

    def test_wav_with_an_unknown_voice_is_an_error(self):
        path = self.home.path("out.wav")
        code, _, errors = self.call("--wav", native(path), "--voice", "Nobody", "--speak", "x")
        self.assertEqual(code, 2)
        self.assertIn("Nobody", errors)

    def test_wav_that_cannot_be_written_is_an_error(self):
        code, _, errors = self.call("--wav", native(self.home.path("missing/out.wav")), "--speak", "x")
        self.assertEqual(code, 1)
        self.assertIn("out.wav", errors)

    def test_lists_the_eight_voices(self):
        code, output, _ = self.call("--list-voices")
        self.assertEqual(code, 0)
        built_in = [line for line in output.decode().splitlines() if "  built in  " in line]
        self.assertEqual(len(built_in), 8)
        self.assertTrue(built_in[7].startswith("Adult Female 2, US English  "))

    def test_lists_the_characters(self):
        code, output, _ = self.call("--list-characters")
        self.assertEqual(code, 0)
        self.assertLessEqual({"genie", "beatrice", "amble"}, set(output.decode().splitlines()))

    def test_help_and_version(self):
        self.assertIn(b"--wav", self.call("--help")[1])
        self.assertRegex(self.call("--version")[1].decode(), r"^Voxtrel \d+\.\d+\.\d+\s*$")

    def test_unknown_option_is_an_error_with_exit_code_2(self):
        code, _, errors = self.call("--frobnicate")
        self.assertEqual(code, 2)
        self.assertIn("--frobnicate", errors)

    def test_unreadable_files_are_errors_with_exit_code_2(self):
        folder = self.home.path("folder")
        os.mkdir(folder)
        binary = self.home.path("binary.bin")
        with open(binary, "wb") as file:
            file.write(b"\x7fELF\x00\x01\x02\x00\x00\x00\x00\xff" * 9)
        for path in (self.home.path("nothing.txt"), folder, binary):
            code, _, errors = self.call(native(path))
            self.assertEqual(code, 2, path)
            self.assertIn(os.path.basename(path), errors)

    def test_execute_without_a_running_program_is_an_error(self):
        for arguments in (("--execute", "1:x"), ("--quit",)):
            code, _, errors = self.call(*arguments)
            self.assertEqual(code, 1)
            self.assertIn("not running", errors)


if __name__ == "__main__":
    harness.main()
