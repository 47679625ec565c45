"""Commands from programs that were not written for it: any text, any number of them, whether they behave or not."""

import os
import resource
import signal
import socket
import subprocess
import time
import unittest

import harness
from harness import PATIENCE, Scenario, WINDOWS, native, wait_for, wine

# Seconds: a user notices when nothing happens for longer.
PROMPT = 0.5
# Most of it goes into the trace, which holds the whole markup twice, in a program built without optimisation.
PROMPT_WITH_LONG_TEXT = 6
MEGABYTE = "All work and no play makes Jack a dull boy.\n" * 24_000


@unittest.skipIf(WINDOWS, "commands come by DDE there")
class HostileSocketClients(Scenario):
    def setUp(self):
        super().setUp()
        self.program = self.start_and_wait()
        self.path = os.path.join(self.home.runtime, "voxtrel.socket")
        wait_for(lambda: os.path.exists(self.path), "the socket")

    def connect(self, text=b""):
        client = socket.socket(socket.AF_UNIX)
        self.addCleanup(client.close)
        client.connect(self.path)
        client.settimeout(30)
        client.sendall(text)
        return client

    def send(self, text):
        """What the program answers, and how many seconds later."""
        client = self.connect(text)
        begin = time.monotonic()
        client.shutdown(socket.SHUT_WR)
        answer = client.recv(16)
        return answer, time.monotonic() - begin

    def expect_prompt(self, until=lambda: True, prompt=PROMPT, seconds=30):
        """The program, which answers on its user-interface thread, is never long away from it until the condition
        holds, and one time more."""
        deadline = time.monotonic() + seconds
        longest = 0
        while True:
            done = until()
            answer, took = self.send(b"9:are you there")
            self.assertEqual(answer, b"ok\n")
            longest = max(longest, took)
            if done:
                break
            self.assertLess(time.monotonic(), deadline, "the condition never came")
            time.sleep(0.02)
        self.assertLess(longest, prompt)

    def test_a_megabyte_to_be_spoken(self):
        self.send(b"1:" + MEGABYTE.encode())
        self.expect_prompt(lambda: self.program.events("word"))
        self.call("--quit")
        self.program.wait_end()

    def test_a_megabyte_to_be_read(self):
        self.send(b"2:" + MEGABYTE.encode())
        self.expect_prompt(lambda: self.program.events("bookmark"), PROMPT_WITH_LONG_TEXT)
        self.call("--quit")
        self.program.wait_end()

    def test_bytes_that_are_no_text(self):
        for text in (b"1:\xff\xfe\xc3(\xed\xa0\x80", b"1:\0\0\0", bytes(range(256)) * 100, b"2:\x1b[31m\x07\xff", b""):
            self.assertEqual(self.send(text)[0], b"ok\n")
        self.send(b"1:still here")
        self.program.wait_event("speak", lambda event: "still here" in event["markup"])

    def test_a_thousand_clients_that_never_disconnect(self):
        resource.setrlimit(resource.RLIMIT_NOFILE, (4096, resource.getrlimit(resource.RLIMIT_NOFILE)[1]))
        clients = [self.connect(b"1:never finished") for _ in range(1000)]
        self.expect_prompt()
        self.send(b"1:still here")
        self.program.wait_event("speak", lambda event: "still here" in event["markup"])
        self.assertEqual(len(clients), 1000)

    def test_a_client_that_sends_without_end_and_reads_nothing(self):
        client = self.connect()
        client.setblocking(False)
        piece = b"x" * 65536

        def dropped():
            try:
                for _ in range(20):
                    client.send(piece)
            except BlockingIOError:
                pass
            except (BrokenPipeError, ConnectionResetError):
                return True
            return False
        self.expect_prompt(dropped)

    def test_a_thousand_commands_one_after_another(self):
        for _ in range(1000):
            self.assertEqual(self.send(b"9:nothing")[0], b"ok\n")
        wait_for(lambda: len(self.program.events("command")) == 1000, "all commands")


@unittest.skipUnless(WINDOWS, "there is no DDE elsewhere")
class DdeClients(Scenario):
    CLIENT = os.path.join(os.environ.get("VOXTREL_E2E_PROGRAMS", ""), "voxtrel_dde_client.exe")

    def setUp(self):
        super().setUp()
        self.program = self.start_and_wait()

    def client(self, *arguments):
        """The lines that the client prints."""
        done = subprocess.run(wine(self.CLIENT, *arguments), env=self.home.environment(self.display.environment),
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, timeout=PATIENCE)
        return done.stdout.decode().split("\r\n")[:-1]

    def commands(self):
        return [event["text"] for event in self.program.events("command")]

    def expect_commands(self, *texts):
        wait_for(lambda: len(self.commands()) >= len(texts), "the commands")
        self.assertEqual(self.commands(), list(texts))

    def test_commands_in_both_character_sets(self):
        # Wine takes a Unicode text with letters beyond Latin-1 for one in the code page, and cuts it at its first zero.
        self.assertEqual(self.client("voxtrel", "speech", "1: Grüße "), ["ok"])
        self.assertEqual(self.client("--ansi", "VOXTREL", "Speech", "1:in the code page, naïve"), ["ok"])
        self.expect_commands("1: Grüße ", "1:in the code page, naïve")
        self.program.wait_event("speak", lambda event: "naïve" in event["markup"])

    def test_whatever_is_sent_is_acknowledged(self):
        texts = ["", "1", "1:", "2:", "7:seven", "x:", "hello"]
        self.assertEqual(self.client("voxtrel", "speech", *texts), ["ok"] * len(texts))
        self.assertEqual(self.client("--ansi", "voxtrel", "speech", *texts), ["ok"] * len(texts))
        self.expect_commands(*texts, *texts)
        self.assertFalse(self.program.events("speak"))

    def test_other_topics_have_no_conversation(self):
        self.assertRegex(self.client("voxtrel", "system")[0], "no conversation")

    def test_bytes_that_are_no_text(self):
        texts = ["ff", "313aff", "313a00d8", "31003a0000d8ff", "00" * 9, "313a" + bytes(range(256)).hex() * 20]
        self.assertEqual(self.client("--hex", "voxtrel", "speech", *texts), ["ok"] * len(texts))
        self.assertEqual(self.client("--ansi", "--hex", "voxtrel", "speech", *texts), ["ok"] * len(texts))
        self.expect_still_there()

    def test_a_megabyte(self):
        self.assertEqual(self.client("--pad", "1000000", "voxtrel", "speech", "1:"), ["ok"])
        wait_for(lambda: len(self.commands()) == 1, "the command")
        # The trace holds the beginning and the length.
        self.assertTrue(self.commands()[0].endswith("... (1000002 characters)"), self.commands()[0][-60:])
        # What comes before it is spoken becomes a part of it.
        self.program.wait_event("speak")
        self.expect_still_there()

    def test_a_client_with_many_conversations_that_never_disconnects(self):
        client = subprocess.Popen(wine(self.CLIENT, "--conversations", "200", "--stay", "voxtrel", "speech", "1:one"),
                                  env=self.home.environment(self.display.environment), stdin=subprocess.PIPE,
                                  stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.addCleanup(client.communicate)
        self.assertEqual(client.stdout.readline(), b"ok\r\n")
        self.assertEqual(client.stdout.readline(), b"staying\r\n")
        self.expect_still_there()
        self.assertEqual(self.client("voxtrel", "speech", "4:"), ["ok"])
        self.program.wait_event("unload")

    def expect_still_there(self):
        self.assertEqual(self.client("voxtrel", "speech", "1:still here"), ["ok"])
        self.program.wait_event("speak", lambda event: "still here" in event["markup"])


class FrozenPrograms(Scenario):
    """The command line, while a program does not answer."""
    SAMPLE_WINDOW = os.path.join(os.environ.get("VOXTREL_E2E_PROGRAMS", ""),
                                 "voxtrel_sample_window" + (".exe" if WINDOWS else ""))

    def freeze_a_window(self):
        ready = self.home.path("objects")
        window = subprocess.Popen((wine(self.SAMPLE_WINDOW) if WINDOWS else [self.SAMPLE_WINDOW]) + [native(ready)],
                                  env=self.home.environment(self.display.environment), start_new_session=True,
                                  stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(window.wait)
        self.addCleanup(os.killpg, window.pid, signal.SIGKILL)
        wait_for(lambda: os.path.exists(ready), "the window")
        os.killpg(window.pid, signal.SIGSTOP)

    def test_a_command_does_not_wait_for_another_programs_frozen_window(self):
        program = self.start_and_wait()
        self.freeze_a_window()
        began = time.monotonic()
        code, _, errors = self.call("--speak", "nothing holds this up", seconds=20)
        self.assertEqual((code, errors), (0, ""))
        self.assertLess(time.monotonic() - began, 5)
        program.wait_event("speak", lambda event: "nothing holds this up" in event["markup"])

    def test_a_running_program_that_does_not_answer_is_an_error(self):
        program = self.start_and_wait()
        os.killpg(program.process.pid, signal.SIGSTOP)
        self.addCleanup(os.killpg, program.process.pid, signal.SIGCONT)
        code, _, errors = self.call("--speak", "x", seconds=20)
        self.assertEqual(code, 1)
        self.assertIn("does not answer", errors)

    def test_a_long_text_arrives_whole(self):
        program = self.start_and_wait()
        text = "Grüße an 😀. " * 2000
        self.assertEqual(self.call("--execute", "9:" + text)[0], 0)
        [event] = wait_for(lambda: program.events("command"), "the command")
        self.assertTrue(event["text"].startswith("9:Grüße an 😀. Grüße"), event["text"][:40])
        self.assertRegex(event["text"], r"\(\d+ characters\)$")


if __name__ == "__main__":
    harness.main()
