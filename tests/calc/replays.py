"""Days that a stand-in replays, as it reads them."""

CAPTIONS = "Ticker,Date,Time,Last,Bid,Ask,Change,Tick,Volume,High,Low,BidSize,AskSize,LastVolume,AvgTrade,NumTrades,Open,52w Low,52w High"


def row(ticker, time, last, volume, bid=9, ask=900):
    """A quote of a day in January. What is not given is the same in all."""
    return f"{ticker},01/20/2011,{time},{last},{bid},{ask},0.1,U,{volume},900,1,1,1,1,1,1,5,1,900"


def write(file, rows):
    file.write_text("\n".join([CAPTIONS, *rows]) + "\n")
