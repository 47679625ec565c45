#!/usr/bin/python3
"""What a screen reader sees of a program: prints one JSON object for each accessible object of the application NAME
that is showing. A program of its own, because the bindings belong to the system's Python.

accessible_tree.py NAME"""

import json
import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402


def walk(accessible):
    try:
        states = accessible.get_state_set()
        if states.contains(Atspi.StateType.SHOWING) or accessible.get_role() == Atspi.Role.APPLICATION:
            print(json.dumps({"role": accessible.get_role_name(), "name": accessible.get_name(),
                              "focused": states.contains(Atspi.StateType.FOCUSED),
                              "focusable": states.contains(Atspi.StateType.FOCUSABLE)}))
        for index in range(accessible.get_child_count()):
            child = accessible.get_child_at_index(index)
            if child:
                walk(child)
    except GLib.Error:
        pass  # gone while it was looked at


desktop = Atspi.get_desktop(0)
for number in range(desktop.get_child_count()):
    application = desktop.get_child_at_index(number)
    if application and application.get_name().lower() == sys.argv[1].lower():
        walk(application)
