#!/usr/bin/python3
"""Uses Korvan as somebody does who hears the screen instead of seeing it: by the accessibility bus alone.

screen_reader.py connect USER PASSWORD SERVER    signs in, looks for controls without a name on all pages, chooses the
                                                 server, connects, reads the status
screen_reader.py disconnect                      opens a page of the web site, disconnects, reads the status
screen_reader.py answer TEXT BUTTON              presses the button of the box with that text
screen_reader.py press BUTTON
Ends with 0 when all of it was possible, and tells what was not.
"""
import sys
import time
import warnings

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, Gio, GLib

LIMIT = 30  # seconds
BUTTON = Atspi.Role.BUTTON if hasattr(Atspi.Role, "BUTTON") else Atspi.Role.PUSH_BUTTON  # by the library's age
CONTROLS = {
    BUTTON, Atspi.Role.CHECK_BOX, Atspi.Role.COMBO_BOX, Atspi.Role.ENTRY, Atspi.Role.PAGE_TAB, Atspi.Role.PASSWORD_TEXT,
    Atspi.Role.PROGRESS_BAR, Atspi.Role.RADIO_BUTTON, Atspi.Role.TABLE, Atspi.Role.TEXT,
}
heard = []
warnings.simplefilter("ignore", DeprecationWarning)  # of names that the older library only has


def listen():
    """Tells programs that a screen reader is there, and notes what they announce. One that is just about to join the bus
    may miss who listens: so Korvan is to be there first."""
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    wish = GLib.Variant("(ssv)", ("org.a11y.Status", "ScreenReaderEnabled", GLib.Variant("b", True)))
    bus.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", "Set", wish, None, 0, -1)
    until("Korvan is there", program)

    def on_event(event, *_):
        what = event.type.split(":")[-1]
        words = event.source.get_description() if "description" in what else event.source.get_name()
        heard.append((what, words.strip()))

    listener = Atspi.EventListener.new(on_event)
    for kind in ("property-change:accessible-name", "property-change:accessible-description", "state-changed:focused",
                 "state-changed:showing"):
        listener.register("object:" + kind)
    return listener


def until(what, condition):
    end = time.monotonic() + LIMIT
    while time.monotonic() < end:
        while GLib.MainContext.default().iteration(False):
            pass
        try:
            found = condition()
        except GLib.Error:  # it has gone while it was read
            found = None
        if found:
            return found
        time.sleep(0.05)
    sys.exit(f"screen reader: not in {LIMIT} seconds: {what}; heard: {heard[-20:]}")


def children(parent):
    parent.clear_cache()
    return [child for child in map(parent.get_child_at_index, range(parent.get_child_count())) if child]


def shown(parent):
    """All that is on the screen below it."""
    for child in children(parent):
        child.clear_cache()
        if child.get_state_set().contains(Atspi.StateType.SHOWING):
            yield child
            yield from shown(child)


def program():
    for one in children(Atspi.get_desktop(0)):
        if one.get_name() == "Korvan":
            return one
    return None


def label_of(control):
    """The text that the program says is the control's label."""
    for relation in control.get_relation_set():
        if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY:
            return relation.get_target(0).get_name()
    return ""


def find(name, *roles):
    """The control of that name, or with that label, as soon as it can be used."""

    def usable():
        for one in shown(program()):
            if one.get_role() in roles and name in (one.get_name().strip(), label_of(one)):
                if roles[0] not in CONTROLS or one.get_state_set().contains(Atspi.StateType.ENABLED):
                    return one
        return None

    return until(f"{name!r} can be used", usable)


def act(control, action):
    names = [control.get_action_name(index) for index in range(control.get_n_actions())]
    if action not in names:
        sys.exit(f"screen reader: {control.get_name()!r} has only {names}")
    control.do_action(names.index(action))


def press(name, role=BUTTON):
    act(find(name, role), "Press")


def type_into(name, text, *roles):
    find(name, *roles).set_text_contents(text)


def choose(name, item):
    box = find(name, Atspi.Role.COMBO_BOX)
    for entry in (entry for part in children(box) for entry in children(part)):
        if entry.get_name() == item:
            act(entry, "Toggle")
    until(f"{name!r} is {item!r}", lambda: box.clear_cache() or box.get_name() == item)


def look_for_nameless():
    for one in shown(program()):
        if one.get_role() in CONTROLS and not one.get_name().strip() and not label_of(one):
            sys.exit(f"screen reader: a {one.get_role_name()} without a name: {one.get_description()!r}")
        if one.get_role() == Atspi.Role.COMBO_BOX and not label_of(one):
            sys.exit(f"screen reader: a combo box without a label: {one.get_name()!r}")


def is_announced(status):
    """It comes up, which is read out wherever the focus is; its text changes, and so does the description of the button
    that has the focus."""
    return {kind for kind, words in heard if words == status} >= {"accessible-name", "accessible-description", "showing"}


def has_come_to(status):
    find(status, Atspi.Role.NOTIFICATION)
    until(f"{status!r} is announced", lambda: is_announced(status))


def connect(user, password, server):
    look_for_nameless()
    type_into("User name", user, Atspi.Role.TEXT, Atspi.Role.ENTRY)
    type_into("Password", password, Atspi.Role.PASSWORD_TEXT)
    press("Log in")
    find("Connect", BUTTON)
    for page in ("VPN log", "Settings", "Proxy", "Service status", "Dashboard"):
        press(page, Atspi.Role.PAGE_TAB)
        look_for_nameless()
    choose("Server", server)
    act(find("Connect", BUTTON), "SetFocus")
    press("Connect")
    has_come_to("CONNECTED")


def disconnect():
    press("FAQ: frequently asked questions")
    press("Disconnect")
    has_come_to("NOT CONNECTED")
    find("Connect", BUTTON)


def answer(text, button):
    find(text, Atspi.Role.LABEL)
    press(button)


reader = listen()
{"answer": answer, "connect": connect, "disconnect": disconnect, "press": press}[sys.argv[1]](*sys.argv[2:])
