"""A person at the dialogs and boxes of an office, on a thread of its own: what is to be seen is asked for, and what is to be
done is done, in callbacks of the office's main thread, as by the office's own toolkit. What is seen is what the office tells
the blind."""

import functools
import os
import pathlib
import queue
import threading
import time

import uno
import unohelper
from com.sun.star.accessibility.AccessibleRole import ALERT, DIALOG, PUSH_BUTTON, TEXT
from com.sun.star.accessibility.AccessibleStateType import FOCUSED
from com.sun.star.awt import KeyEvent, XCallback
from com.sun.star.awt.Key import RETURN
from com.sun.star.util import URL

PATIENCE = 20  # seconds for each thing that is to come
BETWEEN_LOOKS = 0.02
FOLDER = pathlib.Path(os.environ["MIRELO_FOLDER"])


def make(service):
    context = uno.getComponentContext()
    return context.ServiceManager.createInstanceWithContext(service, context)


def desktop():
    return make("com.sun.star.frame.Desktop")


def note(title, value):
    with open(os.environ["MIRELO_NOTES"], "a") as notes:
        notes.write(f"{title}: {value}\n")


class Callback(unohelper.Base, XCallback):
    def __init__(self, act):
        self.act = act

    def notify(self, data):
        self.act()


def begin(act):
    """Has it done on the main thread, and waits for nothing: it may bring up a box."""
    make("com.sun.star.awt.AsyncCallback").addCallback(Callback(act), None)


def done(act):
    """What it gives, or raises, when it was done there."""
    outcome = queue.Queue()

    def run():
        try:
            outcome.put((act(), None))
        except BaseException as failure:
            outcome.put((None, failure))

    begin(run)
    value, failure = outcome.get(timeout=PATIENCE)
    if failure is not None:
        raise failure
    return value


def await_that(look, what):
    """Until there is something to be seen, which it gives."""
    until = time.monotonic() + PATIENCE
    while not (seen := done(look)):
        if time.monotonic() > until:
            raise AssertionError(f"waited in vain for {what}; there is {done(lambda: [name(each) for each in all_seen()])}")
        time.sleep(BETWEEN_LOOKS)
    return seen


# --- What is to be seen --------------------------------------------------------------------------------------


def all_seen():
    """All parts of all dialogs and boxes, the topmost first."""
    for window in windows():
        yield from within(told_of(window))


def windows():
    """Those of dialogs and boxes."""
    toolkit = make("com.sun.star.awt.Toolkit")
    for number in range(toolkit.TopWindowCount):
        window = toolkit.getTopWindow(number)
        top = told_of(window)
        if top is not None and top.AccessibleRole in (DIALOG, ALERT) and window.isVisible():
            yield window


def told_of(part):
    """Nothing is told of what is about to go."""
    return part.getAccessibleContext() if hasattr(part, "getAccessibleContext") else None


def within(context):
    yield context
    for number in range(context.AccessibleChildCount):
        child = told_of(context.getAccessibleChild(number))
        if child is not None:
            yield from within(child)


def name(seen):
    return seen.Text if seen.AccessibleRole == TEXT else seen.AccessibleName.replace("~", "")


def find(called, role=None):
    return next((each for each in all_seen() if name(each) == called and role in (None, each.AccessibleRole)), None)


def is_up(text):
    return done(lambda: find(text) is not None)


def await_text(text):
    await_that(lambda: find(text), text)


def field_with(text):
    return await_that(lambda: find(text, TEXT), f"a field with {text!r}")


# --- What is to be done --------------------------------------------------------------------------------------


def press(button):
    found = await_that(lambda: find(button, PUSH_BUTTON), f"the button {button}")
    done(lambda: found.doAccessibleAction(0))


def press_often(button):
    """By somebody in a hurry: before anything has come of the first time."""
    found = await_that(lambda: find(button, PUSH_BUTTON), f"the button {button}")
    done(lambda: [found.doAccessibleAction(0) for _ in range(3)])


def type_into(field, text):
    """By the keyboard, once the field has it, and ends with Return."""
    done(field.grabFocus)
    await_that(lambda: field.AccessibleStateSet.contains(FOCUSED), "the keyboard")
    for letter in text:
        done(lambda: press_key(0, letter))
    done(lambda: press_key(RETURN, "\r"))


def press_key(code, letter):
    event = KeyEvent()
    event.Source = next(windows())
    event.KeyCode = code
    event.KeyChar = uno.Char(letter)
    toolkit = make("com.sun.star.awt.Toolkit")
    toolkit.keyPress(event)
    toolkit.keyRelease(event)


def choose(document, command):
    """Of the menu."""
    url = URL()
    url.Complete = f"vnd.mirelo:{command}"
    url = make("com.sun.star.util.URLTransformer").parseStrict(url)[1]
    document.CurrentController.Frame.queryDispatch(url, "_self", 0).dispatch(url, ())


def await_file(file):
    until = time.monotonic() + PATIENCE
    while not (FOLDER / file).exists():
        if time.monotonic() > until:
            raise AssertionError(f"waited in vain for the file {file}")
        time.sleep(BETWEEN_LOOKS)


# --- Who comes -----------------------------------------------------------------------------------------------


def document_called(title):
    documents = desktop().Components.createEnumeration()
    while documents.hasMoreElements():
        document = documents.nextElement()
        if document.Title == title:
            return document
    raise AssertionError(f"no document {title}")


def come(act):
    def run():
        try:
            act()
        except BaseException as failure:
            note("failed", f"{act}: {type(failure).__name__} {failure}".replace("\n", " "))
            begin(desktop().terminate)  # takes along what the macro waits for

    threading.Thread(target=run, daemon=True).start()


def fill():
    field = field_with("")
    for ticker in ("msft", "ibm"):
        type_into(field, ticker)
        await_that(lambda: field.Text == "", "a ticker to be taken")
    press("Settings")
    seconds = field_with("60")
    done(lambda: seconds.setText("1"))


def cancels():
    fill()
    press("Cancel")


def goes():
    fill()
    note("refuses beside the dialog", done(lambda: refuses_to_close(document_called("Beside"))))
    press_often("Go")


def closes_below_the_box():
    await_text("OK")
    document = document_called("Closes")
    note("refuses below the box", done(lambda: refuses_to_close(document)))
    press("OK")


def refuses_to_close(document):
    try:
        document.close(True)
    except uno.getClass("com.sun.star.util.CloseVetoException"):
        return True
    return False


def starts_beside_the_box():
    await_text("OK")
    begin(lambda: choose(document_called("Here"), "start"))
    await_text("The day before is still coming to its end. Try again.")
    press("OK")
    await_that(lambda: find("The day before is still coming to its end. Try again.") is None, "the end of a box")
    press("OK")
    await_that(lambda: find("OK") is None, "the end of the other box")
    (FOLDER / "answered").touch()


def cancels_while_it_asks():
    press("Import")
    await_file("asked 1")
    note("ends beside a dialog that asks", done(desktop().terminate))
    press("Cancel")


def leaves_while_cells_ask(asked_before):
    until = time.monotonic() + PATIENCE
    while asked() == asked_before:
        if time.monotonic() > until:
            raise AssertionError("waited in vain for a request of the cells")
        time.sleep(BETWEEN_LOOKS)
    (FOLDER / "leaves").touch()
    note("ends while cells ask", done(desktop().terminate))


def asked():
    return len(list(FOLDER.glob("asked *")))


def to_cancel(*_):
    come(cancels)


def to_go(*_):
    come(goes)


def to_close_below_the_box(*_):
    come(closes_below_the_box)


def to_start_beside_the_box(*_):
    come(starts_beside_the_box)


def to_cancel_while_it_asks(*_):
    come(cancels_while_it_asks)


def to_leave_while_cells_ask(*_):
    come(functools.partial(leaves_while_cells_ask, asked()))
