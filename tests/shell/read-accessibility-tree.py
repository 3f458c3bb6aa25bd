#!/usr/bin/python3
"""What a screen reader finds of Inkwarden over AT-SPI, and what it is told.

Usage: read-accessibility-tree.py COMMAND [ARGUMENT…]

  tree SCREEN                 prints the popover's tree, checks that Inkwarden holds the popover's
                              window, that SCREEN's pane ("connect", "dashboard", "settings") is
                              shown, and that every control in it has a role and a name, and the
                              texts and descriptions that SCREEN must read (exit 1 on a failure)
  press NAME                  activates the first control named NAME, as Orca's "click" would
  focus NAME                  moves the keyboard focus to the first control named NAME
  alerts                      prints the words of every alert that has any, one a line
  announcements SECONDS [READY_FILE]
                              listens SECONDS seconds and prints every notification that appears,
                              one a line; creates READY_FILE once it listens

Run with /usr/bin/python3 (python3-pyatspi) on the session bus Inkwarden's AT-SPI bus belongs to.
"""

import re
import sys
import time

import pyatspi
from gi.repository import GLib

INTERACTIVE = {"push button", "toggle button", "check box", "radio button", "combo box", "text",
               "entry", "password text", "link", "page tab", "spin button", "slider", "menu item",
               "check menu item"}
PANES = {"connect": "Connect to Inkwarden", "dashboard": "Royalties", "settings": "Settings"}


def inkwarden():
    desktop = pyatspi.Registry.getDesktop(0)
    for i in range(desktop.childCount):
        app = desktop.getChildAtIndex(i)
        if app is not None and app.name == "Inkwarden":
            return app
    return None


def showing(acc):
    return acc.getState().contains(pyatspi.STATE_SHOWING)


def visible(acc):
    """Shown in its view, whether or not scrolled into sight."""
    return acc.getState().contains(pyatspi.STATE_VISIBLE)


def walk(acc, depth=0):
    """Every accessible below acc, with its depth, depth first in reading order."""
    for i in range(acc.childCount):
        child = acc.getChildAtIndex(i)
        if child is None:
            continue
        yield child, depth + 1
        yield from walk(child, depth + 1)


def find(root, role=None, name=None, pattern=None, only_showing=True):
    for acc, _ in walk(root):
        if only_showing and not visible(acc):
            continue
        if role and acc.getRoleName() not in role.split("|"):
            continue
        if name is not None and acc.name != name:
            continue
        if pattern is not None and not re.fullmatch(pattern, acc.name or ""):
            continue
        return acc
    return None


def window():
    app = inkwarden()
    if app is None:
        return None, None
    for i in range(app.childCount):
        child = app.getChildAtIndex(i)
        if child is not None and child.getRoleName() == "frame" and showing(child):
            return app, child
    return app, None


def tree(screen):
    problems = []
    app, frame = window()
    if app is None:
        print("FAIL: no application named Inkwarden on the accessibility bus")
        return 1
    if frame is None:
        print("FAIL: Inkwarden has no shown window under it")
        return 1
    print(f"[{app.getRoleName()}] {app.name!r} > [{frame.getRoleName()}] {frame.name!r}")
    if frame.name != "Inkwarden Royalties":
        problems.append(f"the window is named {frame.name!r}, not 'Inkwarden Royalties'")
    pane = find(frame, role="panel", name=PANES[screen])
    if pane is None:
        problems.append(f"no shown pane named {PANES[screen]!r}")
        pane = frame
    controls = 0
    # Every control, shown or scrolled out of sight; what is inside a combo box (its text) is
    # the combo box's own, read with it.
    inside_combo_box = None
    for acc, depth in walk(pane):
        role, name, description = acc.getRoleName(), acc.name or "", acc.description or ""
        if inside_combo_box is not None and depth > inside_combo_box:
            continue
        inside_combo_box = depth if role == "combo box" else None
        if visible(acc):
            print("  " * depth + f"[{role}] {name!r}" + (f" ({description})" if description else ""))
        if role in INTERACTIVE:
            controls += 1
            # Qt's bridge keeps a password field's name to itself and hands it on as the
            # description, which Orca reads in its place.
            said = description if role == "password text" else ""
            if not (name.strip() or said.strip()):
                problems.append(f"an unnamed {role} (at depth {depth})")
    if controls == 0:
        problems.append("no controls at all")
    problems += expectations(screen, pane)
    for problem in problems:
        print("FAIL: " + problem)
    print(f"{controls} controls checked")
    return 1 if problems else 0


def expectations(screen, pane):
    """What this screen must read, beyond every control having a name."""
    wanted = []
    if screen == "connect":
        # Signed out at start, Inkwarden has already asked the browser to sign in.
        wanted = [("push button", None, r"Sign in with Inkwarden|Waiting for browser sign-in…"),
                  ("push button|toggle button|check box", "Connect manually", None), ("push button", "Quit", None)]
    elif screen == "dashboard":
        wanted = [("panel", "Period", None), ("radio button", "Today", None),
                  ("radio button", "Yesterday", None), ("radio button", "This Month", None),
                  ("push button", "Settings", None), ("push button", "Refresh", None),
                  ("push button", "Quit", None),
                  # The headline and the rows each read as one line.
                  ("label", None, r"(Gross|Net) royalties: \$[0-9,.]+"),
                  ("label", None, r"Ad spend & expenses: \$[0-9,.]+"),
                  ("label", None, r"Paid ebooks, [0-9,]+ units?, \$[0-9,.]+")]
    elif screen == "settings":
        wanted = [("push button", "Back", None), ("text", "Server URL", None),
                  ("check box", "Paid ebooks", None), ("push button", "Move Paperbacks up", None),
                  ("push button", "Move Paid ebooks down", None), ("push button", "Save settings", None),
                  ("push button", "Sign out", None)]
    problems = []
    for role, name, pattern in wanted:
        acc = find(pane, role=role, name=name, pattern=pattern, only_showing=False)
        if acc is None:
            problems.append(f"no {role} " + (repr(name) if name else f"matching {pattern!r}"))
    if screen == "dashboard":
        gear = find(pane, role="push button", name="Settings")
        if gear is not None and not (gear.description or "").strip():
            problems.append("the icon-only settings button has no description")
        # The chosen period is the one checked, and only that one.
        checked = [acc.name for acc, _ in walk(pane) if acc.getRoleName() == "radio button"
                   and acc.getState().contains(pyatspi.STATE_CHECKED)]
        if checked != ["Today"]:
            problems.append(f"the checked periods are {checked}, not ['Today']")
        # No part of a row is read again on its own.
        if find(pane, role="label", name="Paid ebooks", only_showing=False) is not None:
            problems.append("a sales row's title is read apart from its row")
    if screen == "settings":
        move = find(pane, role="push button", name="Move Paperbacks up", only_showing=False)
        if move is not None and not (move.description or "").strip():
            problems.append("the move buttons have no description")
    return problems


def press(name, linger=True):
    _, frame = window()
    if frame is None:
        print("FAIL: no window")
        return 1
    for acc, _ in walk(frame):
        if acc.name == name and visible(acc) and acc.getRoleName() in INTERACTIVE:
            action = acc.queryAction()
            for i in range(action.nActions):
                if action.getName(i) in ("press", "Press", "click", "toggle", "Toggle"):
                    # Read first: the control may be gone once pressed (a screen that changes).
                    role = acc.getRoleName()
                    done = action.doAction(i)
                    print(f"pressed {role} {name!r}: {done}")
                    if linger:
                        # Let Inkwarden act on it before the next step looks.
                        time.sleep(1)
                    return 0 if done else 1
            print(f"FAIL: {acc.getRoleName()} {name!r} cannot be pressed")
            return 1
    print(f"FAIL: nothing to press named {name!r}")
    return 1


def focus(name):
    _, frame = window()
    for acc, _ in walk(frame) if frame is not None else []:
        if acc.name == name and visible(acc) and acc.getRoleName() in INTERACTIVE:
            if acc.queryComponent().grabFocus():
                print(f"focused {acc.getRoleName()} {name!r}")
                time.sleep(0.3)
                return 0
    print(f"FAIL: could not focus {name!r}")
    return 1


def alerts():
    _, frame = window()
    for acc, _ in walk(frame) if frame is not None else []:
        if acc.getRoleName() == "alert" and acc.name:
            print(acc.name)
    return 0


def announcements(seconds, ready_file=None):
    heard = []

    def on_event(event):
        source = event.source
        try:
            if event.detail1 == 1 and source.getRoleName() == "notification" and source.name:
                app = source.getApplication()
                if app is not None and app.name == "Inkwarden":
                    heard.append(source.name)
        except Exception:  # an object gone by the time it is read
            pass

    pyatspi.Registry.registerEventListener(on_event, "object:state-changed:showing")
    # As a screen reader does: the names it holds follow their changes.
    pyatspi.Registry.registerEventListener(lambda event: None, "object:property-change:accessible-name")
    if ready_file:
        # Once the registrations have reached the bus and Inkwarden's bridge knows of them.
        GLib.timeout_add(500, lambda: open(ready_file, "w").close() or False)
    GLib.timeout_add(int(seconds * 1000), lambda: pyatspi.Registry.stop() or False)
    pyatspi.Registry.start()
    for words in heard:
        print(words)
    return 0


def main():
    command = sys.argv[1]
    if command == "tree":
        return tree(sys.argv[2])
    if command == "press":
        return press(sys.argv[2])
    if command == "focus":
        return focus(sys.argv[2])
    if command == "alerts":
        return alerts()
    if command == "announcements":
        return announcements(float(sys.argv[2]), sys.argv[3] if len(sys.argv) > 3 else None)
    print(__doc__)
    return 2


if __name__ == "__main__":
    sys.exit(main())
