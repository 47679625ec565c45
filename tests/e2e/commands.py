"""Commands from programs that were not written for it: any text, any number of them, whether they behave or not."""

import os
import resource
import socket
import time
import unittest

import harness
from harness import Scenario, WINDOWS, wait_for

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


if __name__ == "__main__":
    harness.main()
