#!/usr/bin/python3
"""What assistive technology is told of the running program.
controls.py list PID     every control that shows, a line each: window | role | name | whether the keyboard reaches it;
                         fails when one of them has no name
controls.py focus PID    the control with the keyboard: window | role | name
"""
import sys

import pyatspi

# What is to be named; containers, their bars and the toolkit's inner parts are passed through.
CONTROLS = {
    pyatspi.ROLE_PUSH_BUTTON, pyatspi.ROLE_TOGGLE_BUTTON, pyatspi.ROLE_CHECK_BOX, pyatspi.ROLE_RADIO_BUTTON,
    pyatspi.ROLE_COMBO_BOX, pyatspi.ROLE_TEXT, pyatspi.ROLE_ENTRY, pyatspi.ROLE_SPIN_BUTTON, pyatspi.ROLE_SLIDER,
    pyatspi.ROLE_LIST, pyatspi.ROLE_LIST_ITEM, pyatspi.ROLE_PAGE_TAB, pyatspi.ROLE_MENU_ITEM,
    pyatspi.ROLE_DIALOG,
}


def program(pid):
    for application in pyatspi.Registry.getDesktop(0):
        if application and application.get_process_id() == pid:
            return application
    sys.exit(f"process {pid} is not known to the accessibility bus")


def showing(parent, depth=0):
    for child in parent:
        if child is None or not child.getState().contains(pyatspi.STATE_SHOWING) or depth > 20:
            continue
        yield child
        if child.getRole() != pyatspi.ROLE_COMBO_BOX:  # its list shows when it is open
            yield from showing(child, depth + 1)


def shown_controls(application):
    for window in application:
        if window.getState().contains(pyatspi.STATE_SHOWING):
            for control in [window, *showing(window)]:
                if control.getRole() in CONTROLS:
                    yield window, control


def list_controls(application):
    nameless = False
    for window, control in shown_controls(application):
        keys = "keys" if control.getState().contains(pyatspi.STATE_FOCUSABLE) else "-"
        print(f"{window.name} | {control.getRoleName()} | {control.name} | {keys}")
        if not control.name.strip():
            print(f"    has no name: {control.getRoleName()}", file=sys.stderr)
            nameless = True
    sys.exit(nameless)


# The current entry of a list says that it has the keyboard even while its list has not.
def print_focus(application):
    focused = [
        (control.getRole() != pyatspi.ROLE_LIST_ITEM, f"{window.name} | {control.getRoleName()} | {control.name}")
        for window, control in shown_controls(application)
        if control.getState().contains(pyatspi.STATE_FOCUSED)
    ]
    print(max(focused, default=(False, "-"))[1])


application = program(int(sys.argv[2]))
if sys.argv[1] == "focus":
    print_focus(application)
else:
    list_controls(application)
