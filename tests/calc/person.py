"""Presses buttons of the office's dialogs and boxes, as a person does who sees them come up."""

import threading
import time

import uno
import unohelper
from com.sun.star.accessibility.AccessibleRole import ALERT, DIALOG
from com.sun.star.accessibility.AccessibleStateType import ENABLED, SHOWING
from com.sun.star.awt import XCallback

BETWEEN_LOOKS = 0.05  # seconds
LOOKS = 10  # before a press, so that what comes up has come up
LOOKS_BEHIND = 60  # and nothing has come of it, as of one that came too soon

wanted = ""  # what the button says
looked = 0
looking = None


def press(button):
    """From now on whenever it comes up; none where it is empty."""
    global wanted, looked, looking
    wanted = button
    looked = 0
    if looking is None:
        looking = threading.Thread(target=keep_looking, args=(make("com.sun.star.awt.AsyncCallback"), Look()), daemon=True)
        looking.start()


def make(name):
    context = uno.getComponentContext()
    return context.ServiceManager.createInstanceWithContext(name, context)


def keep_looking(callbacks, look):
    while True:
        if wanted:
            callbacks.addCallback(look, None)
        time.sleep(BETWEEN_LOOKS)


class Look(unohelper.Base, XCallback):
    """On the office's main thread, within whatever loop it is in."""

    def notify(self, _):
        global looked
        button = next(filter(None, map(button_in, boxes())), None) if wanted else None
        looked = looked + 1 if button else 0
        if looked % LOOKS_BEHIND == LOOKS:
            button.doAccessibleAction(0)


def boxes():
    toolkit = make("com.sun.star.awt.Toolkit")
    windows = [toolkit.getTopWindow(place) for place in range(toolkit.getTopWindowCount())]
    found = [window.getAccessibleContext() for window in reversed(windows) if hasattr(window, "getAccessibleContext")]
    return [box for box in found if box is not None and box.getAccessibleRole() in (ALERT, DIALOG)]


def button_in(box):
    """Buttons stand behind all else. The office does not outlive the end of a grid that somebody has looked into."""
    for place in reversed(range(box.getAccessibleChildCount())):
        part = box.getAccessibleChild(place).getAccessibleContext()
        if part.getAccessibleName().replace("~", "") == wanted:
            states = part.getAccessibleStateSet()
            return part if states.contains(SHOWING) and states.contains(ENABLED) else None
    return None
