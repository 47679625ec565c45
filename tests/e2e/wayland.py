"""Where the desktop shuts programs off from each other: what does not work is said at start, the rest works."""

import os
import shutil
import subprocess
import unittest

import harness
from harness import Scenario, wait_for


class OnX11BesideWayland(Scenario):
    def test_says_which_programs_can_be_reached(self):
        # Both systems are there; only the other one's socket is asked for at start.
        program = self.start("--speak", "Asked for.", environment={"WAYLAND_DISPLAY": "wayland-0"})
        said = program.wait_event("speak")["markup"]
        self.assertIn("only programs that use X11", said)
        self.assertIn("Asked for.", said)

    def test_says_nothing_where_all_programs_can_be_reached(self):
        program = self.start("--speak", "Asked for.")
        self.assertNotIn("X11", program.wait_event("speak")["markup"])


@unittest.skipUnless(shutil.which("weston"), "no Wayland compositor is installed")
class OnWaylandAlone(Scenario):
    def setUp(self):
        super().setUp()
        environment = self.home.environment(self.display.environment)
        self.compositor = subprocess.Popen(
            ["weston", "--backend=headless-backend.so", "--socket=voxtrel-test", "--idle-time=0",
             "--log=" + self.home.path("weston.log")],
            env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(self.compositor.wait)
        self.addCleanup(self.compositor.terminate)
        socket = os.path.join(self.home.runtime, "voxtrel-test")
        wait_for(lambda: os.path.exists(socket), "the compositor")
        for name in ("DISPLAY", "GDK_BACKEND"):
            self.display.environment.pop(name, None)
        self.display.environment["WAYLAND_DISPLAY"] = "voxtrel-test"

    def test_says_what_does_not_work_and_does_the_rest(self):
        program = self.start_and_wait()
        self.assertIn("cannot reach other programs", program.wait_event("speak")["markup"])
        program.wait_event("word", lambda event: event["text"] == "desktop")
        self.assertEqual(self.call("--speak", "Spoken on request.")[0], 0)
        program.wait_event("speak", lambda event: "Spoken on request." in event["markup"])
        self.assertEqual(self.call("--read", "Read on request.")[0], 0)
        program.wait_event("utterance", lambda event: "request." in event["text"])
        self.assertEqual(self.call("--quit")[0], 0)
        code, errors = program.wait_end()
        self.assertEqual(code, 0, errors)


if __name__ == "__main__":
    harness.main()
