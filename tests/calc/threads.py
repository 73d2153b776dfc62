"""Chooses commands of the menu, and closes a document, on threads that are not the office's main one, as another process's
calls are, lets go of objects there; and notes on which thread the office is told of it."""

import os
import threading
import time

import uno
import unohelper
from com.sun.star.frame import XStatusListener
from com.sun.star.util import URL

told_on = set()
listening = []


class Listener(unohelper.Base, XStatusListener):
    def statusChanged(self, state):
        told_on.add("main" if threading.get_native_id() == os.getpid() else "another")

    def disposing(self, event):
        pass


def command(name):
    made = URL()
    made.Complete = f"vnd.mirelo:{name}"
    context = uno.getComponentContext()
    return context.ServiceManager.createInstanceWithContext("com.sun.star.util.URLTransformer", context).parseStrict(made)[1]


def choose(document, name):
    url = command(name)
    dispatch = document.CurrentController.Frame.queryDispatch(url, "_self", 0)
    listener = Listener()
    listening.append((dispatch, listener, url))
    dispatch.addStatusListener(listener, url)
    dispatch.dispatch(url, ())


def later(act, *arguments):
    thread = threading.Thread(target=act, args=arguments, daemon=True)
    thread.start()
    listening.append(thread)


def let_go(held):
    time.sleep(0.2)
    held.clear()
    with open(os.environ["MIRELO_NOTES"], "a") as notes:
        notes.write("let go of by another thread: True\n")


def leave_to_a_thread(*_):
    """Has the last hold of objects be another thread's."""
    manager = uno.getComponentContext().ServiceManager
    held = [manager.createInstance(f"mirelo.{name}") for name in ("cMirelo", "cQTStreaming", "cQTDatas")]
    later(let_go, held)


def choose_start(*_):
    later(choose, XSCRIPTCONTEXT.getDocument(), "start")


def close(*_):
    later(XSCRIPTCONTEXT.getDocument().close, True)


def look(*_):
    with open(os.environ["MIRELO_NOTES"], "a") as notes:
        notes.write(f"told on: {' '.join(sorted(told_on))}\n")
