"""Chooses commands of the menu, and closes a document, on threads that are not the office's main one, as another process's
calls are; and notes on which thread the office is told of it."""

import os
import threading

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


def choose_start(*_):
    later(choose, XSCRIPTCONTEXT.getDocument(), "start")


def close(*_):
    later(XSCRIPTCONTEXT.getDocument().close, True)


def look(*_):
    with open(os.environ["MIRELO_NOTES"], "a") as notes:
        notes.write(f"told on: {' '.join(sorted(told_on))}\n")
