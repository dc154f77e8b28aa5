#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Listens to a program as a screen reader does, over AT-SPI.

    screen_reader.py TITLE PROGRAM [ARGUMENT ...]

Starts the program, waits until it has a window whose title begins with TITLE, goes through the pages
of that window and of the program's first one, and writes a line for every control that can have the
keyboard and has no name, and for every name or description that holds markup, "fault: ...". The last
line says how many controls were heard, "heard: N". Needs a session bus and a display of its own.
"""
import subprocess
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

PATIENCE = 60
CONTROLS = {
    Atspi.Role.PUSH_BUTTON, Atspi.Role.TOGGLE_BUTTON, Atspi.Role.CHECK_BOX, Atspi.Role.RADIO_BUTTON,
    Atspi.Role.TEXT, Atspi.Role.PASSWORD_TEXT, Atspi.Role.COMBO_BOX, Atspi.Role.LIST,
    Atspi.Role.LIST_ITEM, Atspi.Role.TREE, Atspi.Role.TREE_TABLE, Atspi.Role.TABLE,
    Atspi.Role.PAGE_TAB, Atspi.Role.MENU_ITEM, Atspi.Role.SPIN_BUTTON,
}


def await_what(look, what):
    """What `look` finds; it may fail as long as the program is busy."""
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        try:
            found = look()
        except GLib.Error:
            found = None
        if found:
            return found
        time.sleep(0.05)
    sys.exit(f"there is no {what}")


def children(node):
    for at in range(node.get_child_count()):
        child = node.get_child_at_index(at)
        if child is not None:
            yield child


def program_of(process):
    return next((node for node in children(Atspi.get_desktop(0))
                 if node.get_process_id() == process.pid), None)


def labels(node):
    for relation in node.get_relation_set():
        if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY:
            for at in range(relation.get_n_targets()):
                yield relation.get_target(at).get_name()


def heard(node, path, nodes):
    """Adds what shows at and below a node, each with where it stands."""
    try:
        path = path + [node.get_name() or node.get_role_name()]
        if not node.get_state_set().contains(Atspi.StateType.SHOWING):
            return
        nodes[tuple(path), node.get_role_name()] = node
        below = list(children(node))
    except GLib.Error:
        return  # It has gone meanwhile.
    for child in below:
        heard(child, path, nodes)


def is_control(node):
    return node.get_role() in CONTROLS and node.get_state_set().contains(Atspi.StateType.FOCUSABLE)


def faults_of(node, path):
    name, description = node.get_name().strip(), node.get_description()
    where = " / ".join(path)
    if not name and is_control(node):
        yield f"nameless {node.get_role_name()}: {where}"
    # A drop-down list tells what is chosen where others tell their name.
    if node.get_role() == Atspi.Role.COMBO_BOX and is_control(node) and not any(labels(node)):
        yield f"unlabelled {node.get_role_name()}: {where}"
    if "<" in name + description and ">" in name + description:
        yield f"markup in {node.get_role_name()}: {where}: {description}"


def listen(window, nodes):
    heard(window, [], nodes)
    tabs = {path: node for (path, role), node in dict(nodes).items() if role == "page tab"}
    for path, node in tabs.items():
        node.do_action(0)
        # A tab says that it has the keyboard when its page shows.
        await_what(lambda: node.get_state_set().contains(Atspi.StateType.FOCUSED), "page of " + path[-1])
        heard(window, [], nodes)


def main():
    title, command = sys.argv[1], sys.argv[2:]
    with subprocess.Popen(command) as process:
        try:
            program = await_what(lambda: program_of(process), "program")
            # What is heard is to be as it is by now.
            program.set_cache_mask(Atspi.Cache.NONE)
            sheet = await_what(
                lambda: next((node for node in children(program)
                              if node.get_name().startswith(title)), None), "window " + title)
            nodes = {}
            for window in (sheet, program.get_child_at_index(0)):
                listen(window, nodes)
            count = 0
            for (path, _), node in nodes.items():
                try:
                    faults, count = list(faults_of(node, path)), count + is_control(node)
                except GLib.Error:
                    continue  # It has gone meanwhile.
                for fault in faults:
                    print("fault:", fault)
            print("heard:", count)
        finally:
            process.terminate()


main()
