#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""The program as a screen reader meets it: over the accessibility bus alone, in front of the virtual board.

Pages are turned, fields filled and buttons pressed through the bus; what is checked was said or shown there. session.sh
starts the program and this.
"""
import time

import pyatspi
from gi.repository import GLib

PATIENCE = 8.0  # seconds, for anything that is awaited
LISTENED = ("object:state-changed", "object:property-change", "object:text-changed")
STATE = ("notification", "FCCU state")
RADAR_FRAMES = "Number of processed radar frames"  # on a page that is never turned to; one per second


def pump():
    """Lets events come in."""
    while GLib.MainContext.default().iteration(False):
        pass
    time.sleep(0.005)


def await_that(condition, what):
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        result = condition()
        if result:
            return result
        pump()
    raise AssertionError("awaited in vain: " + what)


def walk(node):
    yield node
    for child in node:
        if child:
            yield from walk(child)


def has_state(node, state):
    return node.getState().contains(state)


class Listener:
    """What is said without being asked for."""

    def __init__(self):
        self.alerts = []  # the state's description, each time that it is announced
        self.sources = set()
        pyatspi.Registry.registerEventListener(self.hear, *LISTENED)

    def hear(self, event):
        if not event.source:
            return
        self.sources.add(event.source.name)
        if event.type.startswith("object:state-changed:showing") and event.source.name == STATE[1]:
            event.source.clearCache()
            self.alerts.append(event.source.description)

    def states(self):
        return [words.split(": ")[-1] for words in self.alerts]


class Program:
    """The demonstration's window; its widgets by role and accessible name."""

    def __init__(self):
        self.frame = await_that(self._frame, "the window on the bus")
        self.widgets = {}

    def _frame(self):
        desktop = pyatspi.Registry.getDesktop(0)
        desktop.clearCache()
        for application in desktop:
            if application:
                application.clearCache()
            for frame in application or ():
                if frame and frame.getRoleName() == "frame" and frame.childCount:
                    return frame
        return None

    def learn(self):
        for node in walk(self.frame):
            self.widgets.setdefault((node.getRoleName(), node.name), []).append(node)

    def find(self, role, name):
        """The only one that is shown; a page may still be on its way."""
        nodes = self.widgets.get((role, name), [])
        shown = []

        def is_one():
            shown[:] = [node for node in nodes if has_state(node, pyatspi.STATE_SHOWING)]
            return len(shown) == 1

        await_that(is_one, "one %s '%s' of %d" % (role, name, len(nodes)))
        return shown[0]

    def press(self, name, role="push button"):
        assert self.find(role, name).queryAction().doAction(0), name

    def turn_to(self, title):
        self.press(title, "page tab")

    def type(self, name, text):
        assert self.find("text", name).queryEditableText().setTextContents(text), name

    def select(self, label, item):
        """An entry of the selector with this caption, by a press on it."""
        boxes = [box for (role, _), nodes in self.widgets.items() if role == "combo box" for box in nodes]
        box = next(box for box in boxes if label in captions(box))
        box.queryAction().doAction(0)
        entry = next(node for node in walk(box) if node.getRoleName() == "list item" and node.name == item)
        await_that(lambda: entry.clearCache() or has_state(entry, pyatspi.STATE_SHOWING), "the list of " + label)
        place = entry.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
        pyatspi.Registry.generateMouseEvent(place.x + place.width // 2, place.y + place.height // 2, "b1c")
        await_that(lambda: box.clearCache() or box.name == item, "%s of %s" % (item, label))

    def text(self, role, name):
        return self.find(role, name).queryText().getText(0, -1)

    def await_text(self, role, name, words):
        await_that(lambda: words in self.text(role, name), "%s in %s" % (words, name))

    def await_state(self, words):
        node = self.find(*STATE)
        await_that(lambda: node.clearCache() or words in node.description, "the state " + words)


def captions(node):
    return [relation.getTarget(i).name for relation in node.getRelationSet()
            if relation.getRelationType() == pyatspi.RELATION_LABELLED_BY for i in range(relation.getNTargets())]


def clock_lost(program):
    program.turn_to("CMU")
    program.press("Fault 3, CMU")
    program.await_state("ALARM")
    program.await_text("label", "SPI_CLK loss", "lost")
    assert "Red" in program.find("label", "SPI_CLK loss").description
    program.press("Get Fault, CMU")
    program.await_text("text", "Clock fault record", "CMU ID: 8")
    program.press("Clear Fault, CMU")
    program.press("Update, CMU")


def crossbar_error(program):
    program.turn_to("XBIC")
    program.press("Fault 1, XBIC")
    program.await_state("ALARM")
    program.await_text("text", "Crossbar fault record", "Slave Port ID: S3")
    program.press("Clear Fault, XBIC")


def memory_error(program):
    program.turn_to("MEMU")
    program.type("SRAM address offset", "100")
    program.type("SRAM data", "5A5A5A5A")
    program.press("Inject into SRAM")
    program.await_state("ALARM")
    program.select("SRAM", "2 Bit")
    program.press("Inject into SRAM")
    program.await_state("FAULT")
    program.press("Get Fault, MEMU")
    program.await_text("text", "Memory fault record", "Fault Number")
    program.press("Clear Fault, MEMU")


def late_interrupt(program):
    program.turn_to("INTCM")
    program.press("Inject K7a")
    program.await_state("ALARM")
    program.await_text("text", "Interrupt monitor fault record", "Fault")
    program.press("Clear Fault, INTCM")


def watchdog_timeout(program):
    program.turn_to("SWT")
    program.press("Timeout")
    program.await_state("FAULT")
    program.await_text("label", "Reset reasons", "SWT_0")


def check_tree(program):
    nameless = [node.getRoleName() for (_, name), nodes in program.widgets.items() for node in nodes
                if not name and has_state(node, pyatspi.STATE_FOCUSABLE) and has_state(node, pyatspi.STATE_SHOWING)]
    assert not nameless, "reached without a name: " + ", ".join(nameless)
    boxes = [box for (role, _), nodes in program.widgets.items() if role == "check box" for box in nodes]
    fillers = [part.name for box in boxes for part in box if part.getRoleName() == "filler"]
    assert not fillers, "without a role: " + ", ".join(fillers)
    assert sum(box.childCount for box in boxes) > 50, "the groups' parts"


FAULTS = (
    (clock_lost, ["ALARM"]),
    (crossbar_error, ["ALARM"]),
    (memory_error, ["ALARM", "FAULT"]),
    (late_interrupt, ["ALARM"]),
    (watchdog_timeout, ["FAULT"]),
)


def play(program, listener):
    program.learn()
    program.turn_to("Safety module")
    check_tree(program)
    program.await_state("NORMAL")
    for fault, states in FAULTS:
        listener.alerts.clear()
        fault(program)
        program.await_state("NORMAL")
        pump()
        said = [state for state in listener.states() if state != "CONFIG"]
        assert said == states + ["NORMAL"], "%s: %s" % (fault.__name__, listener.alerts)
        print("%6.1f s  %s" % (time.monotonic() - START, fault.__name__), flush=True)
    assert RADAR_FRAMES not in listener.sources, "a hidden page has spoken"
    assert "FCCU state" in listener.sources


START = time.monotonic()
if __name__ == "__main__":
    play(Program(), Listener())
