"""read_day.py FILE: reads the workbook that examples/windows/day.vbs has saved, with another program's eyes: the table, the
histories, and their charts, which show what the histories hold."""
import sys

import openpyxl

book = openpyxl.load_workbook(sys.argv[1])
table = book["Dovanta2_Quotes"]
captions = [cell.value for cell in table[2]]
assert captions == ["Ticker", "Last", "Change", "Bid", "Ask", "Volume", "LastVolume", "Time"], captions
assert [table["A3"].value, table["A4"].value] == ["MSFT", "IBM"]
assert all(table.cell(row, 2).value > 0 for row in (3, 4)), "the last prices"

for row, ticker in ((3, "MSFT"), (4, "IBM")):
    history = book[f"Quotes_Vertical({ticker})"]
    fields = [cell.value for cell in history[2]]
    rows = [line for line in history.iter_rows(min_row=3, values_only=True) if line[0] is not None]
    prices, volumes, steps = ([line[fields.index(name)] for line in rows] for name in ("Last", "Volume", "LastVolume"))
    assert len(prices) >= 3, f"two rounds, and what was streamed: {prices}"
    for field in ("Bid", "Ask", "Volume"):
        assert table.cell(row, captions.index(field) + 1).value > 0, f"{field} of {ticker}"
    # The first quote that was asked for, and the first that was streamed, have none before them.
    grown = [after - before for before, after in zip(volumes, volumes[1:])]
    assert all(step in (0, more) for step, more in zip(steps[1:], grown)), f"volumes between quotes: {steps} of {volumes}"
    assert any(steps), f"nothing was traded: {volumes}"
    assert prices[-1] == table.cell(row, 2).value, "the table has the newest price"
    charts = {}
    for chart in history._charts:
        title = "".join(run.t for line in chart.title.tx.rich.p for run in line.r or [])
        charts[title] = [float(point.v) for point in chart.series[0].val.numLit.pt]
    assert set(charts) == {"Last", "LastVolume"}, charts
    assert charts["Last"] == prices[-20:], "the chart has followed the history"
print("the day is in the workbook")
