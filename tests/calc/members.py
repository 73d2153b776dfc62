"""What a macro in Python sees of the library's objects, noted for the test that has started it."""

import os

import uno


def note(title, value):
    with open(os.environ["MIRELO_NOTES"], "a") as notes:
        notes.write(f"{title}: {value}\n")


def make(name):
    context = uno.getComponentContext()
    return context.ServiceManager.createInstanceWithContext(f"mirelo.{name}", context)


def failure_of(call):
    try:
        call()
    except Exception as failure:
        return f"{type(failure).__name__} {failure}".replace("\n", " ")
    return "none"


def look(*_):
    try:
        look_at_members()
    except Exception as failure:
        note("failed", failure)


def look_at_members():
    facade = make("cMirelo")  # without one the others have no settings, but by chance those of a day that is about to go
    datas = make("cQTDatas")
    stream = make("cQTStreaming")
    stream.arrTickers = ("MSFT", "IBM")
    note("a list", stream.arrTickers)
    stream.StartStop = True
    note("a boolean", stream.StartStop)
    stream.st_StreamerFile = "SWISS.SDF"
    note("a text", stream.st_streamerfile)
    stream.QTConteiner = datas
    note("an object", stream.QTConteiner.Count)
    note("no such member", failure_of(lambda: stream.NoSuchMember))
    note("wrong type", failure_of(lambda: setattr(stream, "StartStop", "neither")))
    note("an error of the library", failure_of(lambda: datas.Item("no such key")))
    note("members", dir(facade))
    settings = make("CAppSettings")
    settings.SaveSetting("Settings", "Seconds", 12)
    note("a method", settings.GetSetting("Settings", "Seconds", 0))
