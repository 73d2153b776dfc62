"""Quotes from QuoteTracker in a sheet of LibreOffice Calc, through the extension Mirelo.

ask_quotes    asks for quotes once and writes them at the top of the first sheet
start_stream  from now on each quote is written as QuoteTracker sends it
stop_stream   until this is run

Quotes go into the document that was in front when the macro was started, whatever is in front when they come. Closing it ends
its stream. The menu Mirelo waits while a macro holds the library, so these let go of it when they are done.

The file goes into Scripts/python of LibreOffice's user folder; LibreOffice needs the package
libreoffice-script-provider-python. The stream needs credentials: mirelo credentials set. Where QuoteTracker listens, and
the columns of ask_quotes, are those of the settings: mirelo settings.
"""

import uno
import unohelper
from com.sun.star.script import XAllListener
from com.sun.star.util import XCloseListener

TICKERS = ("MSFT", "IBM")

facade = None  # what the library knows of QuoteTracker; there is one at a time
stream = None  # the conversation with its stream
document = None  # the stream's: where its quotes are written
listener = None  # who is told when quotes have come
closer = None  # who is told when the document is closed


def make(name):
    context = uno.getComponentContext()
    return context.ServiceManager.createInstanceWithContext(f"mirelo.{name}", context)


def prepare():
    global facade
    if facade is None:
        facade = make("cMirelo")


def let_go():
    """A stream needs the library until it is stopped."""
    global facade
    if stream is None:
        facade = None


def ask_quotes(*_):
    sheet = XSCRIPTCONTEXT.getDocument().Sheets.getByIndex(0)
    prepare()
    facade.LoadMasPosition()  # the columns
    facade.masPrevVolume = ((0, 0), (0, 0))  # for the volume since the request before: a row for each ticker
    quotes = facade.GetLastQuote(TICKERS)
    let_go()
    for row, quote in enumerate(quotes or ()):  # nothing without an answer, which the library has told of
        for column, field in enumerate(quote):
            write_field(sheet.getCellByPosition(column, row), field, column == 0)


def write_field(cell, field, is_ticker):
    """A field is as QuoteTracker has sent it: 28.25, 01/20/2011. Formula takes it as it is read in English, wherever
    LibreOffice runs. Tickers stay texts, and so does what would be a formula, since fields come from outside."""
    if is_ticker or field.startswith("="):
        cell.String = field
    else:
        cell.Formula = field


def start_stream(*_):
    global stream, document, listener, closer
    stop_stream()  # that of before, if any
    prepare()
    document = XSCRIPTCONTEXT.getDocument()
    closer = Closer()
    document.addCloseListener(closer)
    facade.StatusRunWorkQT = 2  # what the conversation is for: quotes
    stream = make("cQTStreaming")
    stream.Owner = facade
    stream.arrTickers = TICKERS
    stream.st_StreamerFile = stream.GiveStreamerFile("Alpstein Finance (delayed)")
    stream.DovantaFormatUserDate = "yyyy-mm-dd"
    stream.StartStop = True  # deliver
    listener = Listener()
    stream.addListener(listener)
    stream.connect()  # returns at once: quotes come when this macro is over, too


def stop_stream(*_):
    global stream, document
    if stream is None:
        return
    stream.stop_sub()
    stream.DisConnect()
    stream.removeListener(listener)
    stream.Owner = None
    stream = None
    document.removeCloseListener(closer)
    document = None
    let_go()


class Listener(unohelper.Base, XAllListener):
    """Is called whenever the stream has something to tell."""

    def firing(self, event):
        if event.MethodName == "QTDatas":
            write_quotes()

    def approveFiring(self, event):
        return None

    def disposing(self, event):
        pass


class Closer(unohelper.Base, XCloseListener):
    """Is called when the document is closed: nobody is left to read the quotes."""

    def notifyClosing(self, event):
        stop_stream()

    def queryClosing(self, event, gets_ownership):
        pass

    def disposing(self, event):
        pass


def write_quotes():
    """Each ticker has its row, from row 11: ticker, price, time, and how many quotes have come."""
    sheet = document.Sheets.getByIndex(0)
    quotes = stream.GetQTData()
    for quote in quotes or ():
        row = 10 + TICKERS.index(quote.Symbol)
        sheet.getCellByPosition(0, row).String = quote.Symbol
        if quote.Last_Price > 0:
            sheet.getCellByPosition(1, row).Value = quote.Last_Price
        sheet.getCellByPosition(2, row).String = quote.TimeQT
        count = sheet.getCellByPosition(3, row)
        count.Value += 1
    stream.FreeQTDataBuffer()  # these are done with: the next ones, please
