#!/usr/bin/python3
"""Reads the window as a screen reader does; see tools/atspi.sh.

    atspi.py PROGRAM PROJECT

Starts the program with examples/concierto.rig, goes through all that it shows over AT-SPI, presses
keys, and holds what is told against what a listener needs. Prints what it found; exits with 1 where
something is missing.
"""
import subprocess
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

PATIENCE = 20.0  # [s]
# By then a window that has just come has its size. Until then its scroll bars come and go, and a child
# that was counted and is gone when it is asked for is more than Qt 6.4 bears.
REST = 3.0  # [s]
CANVAS = "Plano del truss"
# What has to be there, by what a listener is told of it.
EXPECTED = [
    ("push button", "Abrir"),
    ("push button", "Guardar"),
    ("push button", "Deshacer"),
    ("push button", "Guía de usuario"),
    ("push button", "Generar informe estructural"),
    ("push button", "Añadir motor"),
    ("push button", "Añadir carga"),
    ("text", "Masa de la carga nueva o seleccionada en kilogramos"),
    ("spin button", "Cantidad de cargas"),
    ("progress bar", "Estrés estructural en tanto por ciento"),
    ("page tab", "Concierto de plaza"),
    ("canvas", CANVAS),
]
# Keys, and what they have told once they are pressed: the loads and motors of the example, 14 m long,
# from left to right.
TOLD = [
    ("Home", "Carga Array izq. en -7.00m: 380.0 kg. Truss: OK."),
    ("Right", "Motor PA izq. en -6.00m: 450.0 kg, "),
    ("Right", "Carga Cabezas 1 en -3.00m: 60.0 kg. Truss: OK."),
    ("End", "Carga Array der. en +7.00m: 380.0 kg. Truss: OK."),
]
KEYS = {"Home": 0xFF50, "Right": 0xFF53, "End": 0xFF57, "Left": 0xFF51}
SHIFT = 50  # as the keyboard numbers it: one that is held has no symbol


def spin(seconds):
    """Takes in what the bus tells meanwhile."""
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        while GLib.MainContext.default().iteration(False):
            pass
        time.sleep(0.01)


def wait_for(look, what):
    """What `look` finds, once it finds something."""
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        try:
            found = look()
        except GLib.GError:  # what was about to be read is just being made, or taken away
            found = None
        if found:
            return found
        spin(0.1)
    raise SystemExit(f"AT-SPI: {what} does not come")


def application(process):
    desktop = Atspi.get_desktop(0)
    for i in range(desktop.get_child_count()):
        child = desktop.get_child_at_index(i)
        if child is not None and child.get_process_id() == process.pid and child.get_child_count() > 0:
            return child
    return None


def nodes(node):
    yield node
    for i in range(node.get_child_count()):
        child = node.get_child_at_index(i)
        if child is not None:
            yield from nodes(child)


def has(node, state):
    return node.get_state_set().contains(state)


def value_of(node):
    value = node.get_value_iface()
    return "" if value is None else f" = {value.get_current_value():g}"


def press(key, shift=False):
    if shift:
        Atspi.generate_keyboard_event(SHIFT, None, Atspi.KeySynthType.PRESS)
    Atspi.generate_keyboard_event(KEYS[key], None, Atspi.KeySynthType.SYM)
    if shift:
        Atspi.generate_keyboard_event(SHIFT, None, Atspi.KeySynthType.RELEASE)
    spin(0.4)


class Listener:
    """Keeps what gets the focus, and what is called otherwise from then on."""

    def __init__(self):
        self.focused = []
        self.renamed = []
        self.listener = Atspi.EventListener.new(self.hear)
        for kind in ("object:state-changed:focused", "object:property-change:accessible-name"):
            self.listener.register(kind)

    def hear(self, event):
        if event.type.startswith("object:property-change"):
            self.renamed.append(event.source.get_name())
        elif event.detail1:
            self.focused.append(event.source.get_name())


def missing(found, shown):
    for role, name in EXPECTED:
        if (role, name) not in found:
            yield f"no {role} {name!r}"
    for node in shown:
        if has(node, Atspi.StateType.FOCUSABLE) and not node.get_name():
            yield f"a {node.get_role_name()} that takes the focus has no name"


def untold(canvas, listener):
    def is_reached():
        canvas.get_component_iface().grab_focus()
        spin(0.5)
        return CANVAS in listener.focused

    wait_for(is_reached, "the focus of the canvas")
    for key, told in TOLD:
        del listener.focused[:]
        press(key)
        print(f"{key}: {listener.focused}")
        if len(listener.focused) != 1 or not listener.focused[0].startswith(told):
            yield f"{key} does not tell {told!r}"
    del listener.renamed[:]
    press("Left", shift=True)
    print(f"Shift+Left: {listener.renamed}")
    if not any(name.startswith("Carga Array der. en +6.90m: ") for name in listener.renamed):
        yield "Shift+Left does not tell the new place"


def main():
    process = subprocess.Popen(sys.argv[1:])
    try:
        window = wait_for(lambda: application(process), "the program")
        spin(REST)
        wait_for(lambda: any(n.get_name() == CANVAS and n.get_description() for n in nodes(window)),
                 "the description of the canvas")
        shown = [n for n in nodes(window) if has(n, Atspi.StateType.SHOWING)]
        for node in shown:
            if node.get_name():
                print(f"{node.get_role_name()}: {node.get_name()}{value_of(node)}")
        canvas = next(n for n in shown if n.get_name() == CANVAS)
        print(f"{CANVAS}: {canvas.get_description()}")
        found = {(n.get_role_name(), n.get_name()) for n in shown}
        wrong = list(missing(found, shown)) + list(untold(canvas, Listener()))
        if process.poll() is not None:
            wrong.append(f"the program ended with {process.returncode}")
    finally:
        process.terminate()
        process.wait()
    for finding in wrong:
        print(f"AT-SPI: {finding}")
    sys.exit(1 if wrong else 0)


main()
