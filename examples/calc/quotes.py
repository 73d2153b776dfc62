"""Quotes from QuoteTracker in a sheet of LibreOffice Calc, through the extension Mirelo.

ask_quotes    asks for quotes once and writes them at the top of the first sheet
start_stream  from now on each quote is written as QuoteTracker sends it
stop_stream   until this is run

The file goes into Scripts/python of LibreOffice's user folder; LibreOffice needs the package
libreoffice-script-provider-python. The stream needs credentials: mirelo credentials set. Where QuoteTracker listens, and
the columns of ask_quotes, are those of the settings: mirelo settings.
"""

import uno
import unohelper
from com.sun.star.script import XAllListener

TICKERS = ("MSFT", "IBM")

facade = None  # what the library knows of QuoteTracker; there is one at a time
stream = None  # the conversation with its stream
listener = None  # who is told when quotes have come


def make(name):
    context = uno.getComponentContext()
    return context.ServiceManager.createInstanceWithContext(f"mirelo.{name}", context)


def sheet():
    return XSCRIPTCONTEXT.getDocument().Sheets.getByIndex(0)


def prepare():
    global facade
    if facade is None:
        facade = make("cMirelo")


def ask_quotes(*_):
    prepare()
    facade.LoadMasPosition()  # the columns
    facade.masPrevVolume = ((0, 0), (0, 0))  # for the volume since the look before: a row for each ticker
    quotes = facade.GetLastQuote(TICKERS)
    for row, quote in enumerate(quotes or ()):  # nothing without an answer, which the library has told of
        for column, value in enumerate(quote):
            sheet().getCellByPosition(column, row).FormulaLocal = value


def start_stream(*_):
    global stream, listener
    prepare()
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
    global stream
    stream.stop_sub()
    stream.DisConnect()
    stream.removeListener(listener)
    stream.Owner = None
    stream = None


class Listener(unohelper.Base, XAllListener):
    """Is called whenever the stream has something to tell."""

    def firing(self, event):
        if event.MethodName == "QTDatas":
            write_quotes()

    def approveFiring(self, event):
        return None

    def disposing(self, event):
        pass


def write_quotes():
    """Each ticker has its row, from row 11: ticker, price, time, and how many quotes have come."""
    quotes = stream.GetQTData()
    for quote in quotes or ():
        row = 10 + TICKERS.index(quote.Symbol)
        sheet().getCellByPosition(0, row).String = quote.Symbol
        if quote.Last_Price > 0:
            sheet().getCellByPosition(1, row).Value = quote.Last_Price
        sheet().getCellByPosition(2, row).String = quote.TimeQT
        count = sheet().getCellByPosition(3, row)
        count.Value += 1
    stream.FreeQTDataBuffer()  # these are done with: the next ones, please
