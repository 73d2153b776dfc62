' A day as a spreadsheet's macros keep it: the settings dialog makes a quote table, and a history with charts for each ticker;
' then quotes are asked for, and streamed, and written there. All of it without a person, unless one is asked for.
'
'   cscript day.vbs [/tickers:MSFT,IBM] [/columns:Ticker,Last,Change,Volume,LastVolume,Time] [/history:Last,LastVolume,Time]
'                   [/dialog] [/rounds:3] [/seconds:5] [/stream:30] [/source:NAME] [/file:C:\Users\me\day.xlsx]
'
'   /tickers     which ones, /columns what of them, and /history what of that each history keeps
'   /dialog      a person fills in Mirelo's settings instead, and presses Go; who wants a history ticks it there
'   /rounds      how often quotes are asked for, and /seconds how long it waits between
'   /stream      for how many seconds quotes are streamed behind that; 0 for not at all
'   /source      which of QuoteTracker's sources, as the settings dialog lists them; or /streamer:SWISS.SDF, its file
'   /file        where the workbook is saved; without it the workbook stays open and unsaved
'   /program     another spreadsheet program than Excel.Application
'
' The stream takes credentials, which are sealed for the user who stores them, once:
'
'   CreateObject("Mirelo.cMachine").StoreCredentials "application", "secret"
Option Explicit

Const xlOpenXMLWorkbook = 51
Const CaptionRow = 2, FirstRow = 3  ' of the quote table and of each history

' Called by the stream.
Class Listener
  Public Status
  Public Sub QTDatas()
    TakeStreamed
  End Sub
  Public Sub OnStatusText(text)
    Status = text
  End Sub
End Class

Dim program, machine, mirelo, table, tickers, captions, i
Dim quotes     ' of the table: a row for each ticker, a column for each caption
Dim changes    ' of each ticker the latest one, and the one before that
Dim earlier
Dim counts     ' how many rows each history has got
Dim failures

Set machine = CreateObject("Mirelo.cMachine")
machine.Attended = Given("dialog", False)
Set program = CreateObject(Given("program", "Excel.Application"))
If program.ActiveWorkbook Is Nothing Then
  program.Visible = True
  program.Workbooks.Add
End If
Set mirelo = CreateObject("Mirelo.cMirelo")
Set mirelo.ExcelApplication = program
mirelo.DovantaFormatUserDate = "mm/dd/yyyy"

MakeTables
AskForQuotes
If CLng(Given("stream", 30)) > 0 Then StreamQuotes
If Given("file", "") <> "" Then
  program.ActiveWorkbook.SaveAs Given("file", ""), xlOpenXMLWorkbook
  WScript.Echo "Saved as " & Given("file", "")
End If
For i = 0 To UBound(tickers)
  WScript.Echo tickers(i) & ": " & counts(i) & " quotes, " & failures & " charts that could not follow"
Next
WScript.Echo "Done"

' Go makes them, of what the dialog holds.
Sub MakeTables()
  If Not machine.Attended Then
    machine.Wish "Tickers", Given("tickers", "MSFT,IBM")
    machine.Wish "Columns", Given("columns", "Ticker,Last,Change,Volume,LastVolume,Time")
    machine.Wish "History", Given("history", "Last,LastVolume,Time")
    machine.Wish "Charts", True
  End If
  If mirelo.LoadFrmMirelo() = 2 Then Leave "The dialog was left without Go."
  Set table = program.ActiveWorkbook.Worksheets("Dovanta2_Quotes")
  tickers = Split(TextsBelow(), ",")
  captions = Split(TextsBeside(table), ",")
  failures = 0
  ReDim changes(UBound(tickers))
  ReDim earlier(UBound(tickers))
  ReDim counts(UBound(tickers))
  ReDim quotes(UBound(tickers), UBound(captions))
  For i = 0 To UBound(tickers)
    counts(i) = 0
    changes(i) = 0
  Next
  WScript.Echo "There are tables of " & UBound(tickers) + 1 & " tickers"
End Sub

Sub AskForQuotes()
  Dim round, answer, c
  Dim volumes  ' for each row the volume and the day of the request before
  ReDim volumes(UBound(tickers) + 1, 2)
  mirelo.LoadMasPosition
  mirelo.masPrevVolume = volumes
  For round = 1 To CLng(Given("rounds", 3))
    answer = mirelo.GetLastQuote(tickers)
    If Not IsArray(answer) Then Leave "There are no quotes."
    For i = 0 To UBound(tickers)
      For c = 0 To UBound(captions)
        quotes(i, c) = answer(i + 1, c + 1)
      Next
      Keep i
    Next
    WScript.Echo "Round " & round & ": " & tickers(0) & " " & quotes(0, PlaceOf(captions, "Last"))
    If round < CLng(Given("rounds", 3)) Then machine.Wait 1000 * CLng(Given("seconds", 5))
  Next
End Sub

Dim stream

Sub StreamQuotes()
  Dim told, seconds
  Set stream = CreateObject("Mirelo.cQTStreaming")
  Set told = New Listener
  Set stream.Owner = mirelo
  mirelo.StatusRunWorkQT = 2  ' what the conversation is for: quotes
  stream.arrTickers = tickers
  stream.st_StreamerFile = Given("streamer", stream.GiveStreamerFile(Given("source", "Alpstein Finance (delayed)")))
  stream.DovantaFormatUserDate = "mm/dd/yyyy"
  stream.StartStop = True     ' deliver
  stream.AddListener told
  stream.connect
  For seconds = 1 To CLng(Given("stream", 30))
    machine.Wait 1000         ' quotes come meanwhile
  Next
  stream.stop_sub
  stream.DisConnect
  stream.RemoveListener told
  Set stream.Owner = Nothing
  WScript.Echo "The stream said last: " & told.Status
End Sub

Sub TakeStreamed()
  Dim come, quote, place, c, value
  Set come = stream.GetQTData
  If come Is Nothing Then Exit Sub
  For Each quote In come
    place = PlaceOf(tickers, quote.Symbol)
    If place >= 0 Then
      For c = 0 To UBound(captions)
        value = StreamedValue(quote, captions(c))
        If Not IsEmpty(value) Then quotes(place, c) = value
      Next
      Keep place
    End If
  Next
  stream.FreeQTDataBuffer
End Sub

' Empty for what the quote does not tell: it has what has changed, and 0 in place of the rest.
Function StreamedValue(quote, caption)
  Dim value
  value = 0
  Select Case caption
    Case "Last"
      value = quote.Last_Price
    Case "Bid"
      value = quote.Bid_Price
    Case "Ask"
      value = quote.Ask_Price
    Case "Volume"
      value = quote.Volume
    Case "Change"
      StreamedValue = quote.Change
    Case "LastVolume"
      StreamedValue = quote.Last_Volume
    Case "Time"
      StreamedValue = Time
  End Select
  If value <> 0 Then StreamedValue = value
End Function

' Writes a ticker's quote into the table, and behind its history, each as a row at once. A write that is refused, because a cell
' is being edited, is left out: the next quote brings newer prices.
Sub Keep(ticker)
  Dim row, c, history, fields
  ReDim row(0, UBound(captions))
  For c = 0 To UBound(captions)
    row(0, c) = quotes(ticker, c)
  Next
  On Error Resume Next
  table.Cells(FirstRow + ticker, 1).Resize(1, UBound(captions) + 1).Value = row
  Set history = program.ActiveWorkbook.Worksheets(mirelo.UserVerticalSheet & "(" & tickers(ticker) & ")")
  If Err.Number <> 0 Then Exit Sub  ' nobody has ticked one
  fields = Split(TextsBeside(history), ",")
  ReDim row(0, UBound(fields))
  For c = 0 To UBound(fields)
    row(0, c) = quotes(ticker, PlaceOf(captions, fields(c)))
  Next
  history.Cells(FirstRow + counts(ticker), 1).Resize(1, UBound(fields) + 1).Value = row
  If Err.Number <> 0 Then Exit Sub
  counts(ticker) = counts(ticker) + 1
  BringChartsUpToDate ticker, history
End Sub

' The charts of a history are moved to its newest rows, and painted as the last two changes say.
Sub BringChartsUpToDate(ticker, history)
  Dim rows(2, 2)
  If mirelo.BuildCharts = 0 Then Exit Sub
  earlier(ticker) = changes(ticker)
  changes(ticker) = CDbl(quotes(ticker, PlaceOf(captions, "Change")))
  rows(1, 1) = True
  rows(1, 2) = earlier(ticker)
  rows(2, 1) = True
  rows(2, 2) = changes(ticker)
  On Error Resume Next
  mirelo.Update_Charts history, rows, mirelo.ChartPoints, mirelo.ChartStyle, mirelo.ColorPoints, mirelo.GreyOut
  If Err.Number <> 0 Then failures = failures + 1
End Sub

' The tickers of the table, and the captions of a sheet.
Function TextsBelow()
  Dim row
  For row = FirstRow To 10000
    If table.Cells(row, 1).Value = "" Then Exit For
    If row > FirstRow Then TextsBelow = TextsBelow & ","
    TextsBelow = TextsBelow & table.Cells(row, 1).Value
  Next
End Function

Function TextsBeside(sheet)
  Dim column
  For column = 1 To 100
    If sheet.Cells(CaptionRow, column).Value = "" Then Exit For
    If column > 1 Then TextsBeside = TextsBeside & ","
    TextsBeside = TextsBeside & sheet.Cells(CaptionRow, column).Value
  Next
End Function

Function PlaceOf(names, name)
  Dim n
  PlaceOf = -1
  For n = 0 To UBound(names)
    If StrComp(names(n), name, vbTextCompare) = 0 Then PlaceOf = n
  Next
End Function

' With a person at the screen Mirelo has said why itself.
Sub Leave(why)
  WScript.Echo why
  If Not machine.Attended Then WScript.Echo machine.Told
  WScript.Quit 1
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
