' Quotes in a workbook of Excel as QuoteTracker sends them: a row for each ticker, and a line of the first one's prices.
'
'   cscript stream.vbs [/tickers:MSFT,IBM] [/source:"Alpstein Finance (delayed)"] [/seconds:30]
'                      [/file:C:\Users\me\day.xlsx]
'
'   /tickers     which ones
'   /source      which of QuoteTracker's sources, as the settings dialog lists them; or /streamer:SWISS.SDF, its file
'   /seconds     how long
'   /file        where the workbook is saved; without it the workbook stays open and unsaved
'   /program     another spreadsheet program than Excel.Application
'
' The stream takes credentials, which are sealed for the user who stores them, once:
'
'   CreateObject("Mirelo.cMachine").StoreCredentials "application", "secret"
Option Explicit

Const xlLineMarkers = 65, xlColumns = 2, xlLocationAsObject = 2, xlOpenXMLWorkbook = 51
Const FirstRow = 3, PriceColumn = 7

' Called by the stream.
Class Listener
  Public Status
  Public Sub QTDatas()
    TakeQuotes
  End Sub
  Public Sub OnStatusText(text)
    Status = text
  End Sub
End Class

Dim program, mirelo, machine, stream, told, sheet, tickers, captions, i, seconds
Dim counts  ' how many quotes of each ticker have come
Dim prices  ' and its last price
tickers = Split(Given("tickers", "MSFT,IBM"), ",")
ReDim counts(UBound(tickers))
ReDim prices(UBound(tickers))
For i = 0 To UBound(tickers)
  counts(i) = 0
  prices(i) = 0
Next

Set program = CreateObject(Given("program", "Excel.Application"))
If program.ActiveWorkbook Is Nothing Then
  program.Visible = True
  program.Workbooks.Add
End If
Set sheet = program.ActiveSheet
sheet.Range("A1").Value = "Streamed quotes"
captions = Array("Ticker", "Last", "Change", "Volume", "Quotes")
For i = 0 To 4
  sheet.Cells(FirstRow - 1, 1 + i).Value = captions(i)
Next

Set machine = CreateObject("Mirelo.cMachine")
Set mirelo = CreateObject("Mirelo.cMirelo")
Set mirelo.ExcelApplication = program
mirelo.StatusRunWorkQT = 2  ' what the conversation is for: quotes

Set stream = CreateObject("Mirelo.cQTStreaming")
Set told = New Listener
Set stream.Owner = mirelo
stream.arrTickers = tickers
stream.st_StreamerFile = Given("streamer", stream.GiveStreamerFile(Given("source", "Alpstein Finance (delayed)")))
If stream.st_StreamerFile = "" Then
  WScript.Echo "No source of that name is known. Open Mirelo's settings once, which fetch the list, or name its file:"
  WScript.Echo "/streamer:SWISS.SDF"
  WScript.Quit 1
End If
stream.DovantaFormatUserDate = "mm/dd/yyyy"
stream.StartStop = True     ' deliver
stream.AddListener told
stream.connect

' Quotes come while the machine waits.
For seconds = 1 To CLng(Given("seconds", 30))
  machine.Wait 1000
Next
stream.stop_sub
stream.DisConnect
stream.RemoveListener told
Set stream.Owner = Nothing

If counts(0) > 1 Then DrawChart
If Given("file", "") <> "" Then
  program.ActiveWorkbook.SaveAs Given("file", ""), xlOpenXMLWorkbook
  WScript.Echo "Saved as " & Given("file", "")
End If
For i = 0 To UBound(tickers)
  WScript.Echo tickers(i) & ": " & counts(i) & " quotes, last " & sheet.Cells(FirstRow + i, 2).Text
Next
If counts(0) = 0 Then WScript.Echo "The stream said last: " & told.Status

' Takes what has come and writes it, a row at once. A write that is refused, because a cell is being edited, is left
' out: the next quote brings newer prices.
Sub TakeQuotes()
  Dim quotes, quote, place
  Set quotes = stream.GetQTData
  If quotes Is Nothing Then Exit Sub
  For Each quote In quotes
    place = PlaceOf(quote.Symbol)
    If place >= 0 Then WriteQuote place, quote
  Next
  stream.FreeQTDataBuffer
End Sub

Sub WriteQuote(place, quote)
  counts(place) = counts(place) + 1
  If quote.Last_Price <> 0 Then prices(place) = quote.Last_Price  ' a quote has what has changed, and 0 in place of the rest
  On Error Resume Next
  sheet.Cells(FirstRow + place, 1).Resize(1, 5).Value = _
    RowOf(Array(quote.Symbol, prices(place), quote.Change, quote.Volume, counts(place)))
  If place = 0 Then sheet.Cells(FirstRow + counts(0) - 1, PriceColumn).Value = prices(0)
End Sub

' Cells take arrays of two dimensions.
Function RowOf(values)
  Dim cells, c
  ReDim cells(0, UBound(values))
  For c = 0 To UBound(values)
    cells(0, c) = values(c)
  Next
  RowOf = cells
End Function

Function PlaceOf(symbol)
  Dim n
  PlaceOf = -1
  For n = 0 To UBound(tickers)
    If StrComp(tickers(n), symbol, vbTextCompare) = 0 Then PlaceOf = n
  Next
End Function

' The first ticker's prices as a line, painted by Mirelo as its own charts are.
Sub DrawChart()
  Dim chart
  Set chart = program.Charts.Add
  chart.ChartType = xlLineMarkers
  chart.SetSourceData sheet.Cells(FirstRow, PriceColumn).Resize(counts(0), 1), xlColumns
  chart.HasTitle = True
  Set chart = chart.Location(xlLocationAsObject, sheet.Name)
  mirelo.Change_Colors chart, sheet.Cells(FirstRow, 3).Value, sheet.Cells(FirstRow, 3).Value, "Blue"
End Sub

' What stands behind /name: on the command line; nothing but the name gives True.
Function Given(name, otherwise)
  Dim n, argument
  Given = otherwise
  For n = 0 To WScript.Arguments.Count - 1
    argument = WScript.Arguments(n)
    If LCase(argument) = "/" & name Then Given = True
    If InStr(1, LCase(argument), "/" & name & ":") = 1 Then Given = Mid(argument, Len(name) + 3)
  Next
End Function
