REM  Quotes from QuoteTracker in a sheet of LibreOffice Calc, through the extension Mirelo.
REM
REM    AskQuotes     asks for quotes once and writes them at the top of the first sheet
REM    StartStream   from now on each quote is written as QuoteTracker sends it
REM    StopStream    until this is run
REM
REM  The stream needs credentials: mirelo credentials set. Where QuoteTracker listens, and the columns of
REM  AskQuotes, are those of the settings: mirelo settings.

Option Explicit

Global Facade As Object    ' what the library knows of QuoteTracker; there is one at a time
Global Stream As Object    ' the conversation with its stream
Global Listener As Object  ' who is told when quotes have come
Global Status As String    ' what the stream said last

Sub AskQuotes
  Dim Quotes, Row As Long, Column As Long
  Dim Volumes(1 To 2, 1 To 2)  ' for the volume since the look before: a row for each ticker

  Prepare
  Facade.LoadMasPosition()     ' the columns
  Facade.masPrevVolume = Volumes
  Quotes = Facade.GetLastQuote(Tickers)
  If Not IsArray(Quotes) Then Exit Sub  ' no answer, which the library has told of

  For Row = 0 To UBound(Quotes)
    For Column = 0 To UBound(Quotes(Row))
      Sheet.getCellByPosition(Column, Row).FormulaLocal = Quotes(Row)(Column)
    Next Column
  Next Row
End Sub

Sub StartStream
  Dim Source As String

  Prepare
  Facade.StatusRunWorkQT = 2  ' what the conversation is for: quotes
  Stream = createUnoService("mirelo.cQTStreaming")
  Source = Stream.GiveStreamerFile("Alpstein Finance (delayed)")
  If Source = "" Then
    MsgBox "No quote source of that name is known. Fetch them once: mirelo sources --update"
    Exit Sub
  End If
  Stream.Owner = Facade
  Stream.arrTickers = Tickers
  Stream.st_StreamerFile = Source
  Stream.DovantaFormatUserDate = "yyyy-mm-dd"
  Stream.StartStop = True     ' deliver
  Listener = CreateUnoListener("Stream_", "com.sun.star.script.XAllListener")
  Stream.addListener(Listener)
  Stream.connect()            ' returns at once: quotes come when this macro is over, too
End Sub

Sub StopStream
  Stream.stop_sub()
  Stream.DisConnect()
  Stream.removeListener(Listener)
  Stream.Owner = Nothing
  Stream = Nothing
End Sub

REM  Called whenever the stream has something to tell.
Sub Stream_firing(Event)
  If Event.MethodName = "OnStatusText" Then Status = Event.Arguments(0)
  If Event.MethodName = "QTDatas" Then WriteQuotes
End Sub

Function Stream_approveFiring(Event)
End Function

Sub Stream_disposing(Event)
End Sub

REM  Each ticker has its row, from row 11: ticker, price, time, and how many quotes have come.
Sub WriteQuotes
  Dim Quotes, Quote, Row As Long, Cell
  Quotes = Stream.GetQTData()
  If IsNull(Quotes) Then Exit Sub
  For Each Quote In Quotes
    Row = RowOf(Quote.Symbol)
    Sheet.getCellByPosition(0, Row).String = Quote.Symbol
    If Quote.Last_Price > 0 Then Sheet.getCellByPosition(1, Row).Value = Quote.Last_Price
    Sheet.getCellByPosition(2, Row).String = Quote.TimeQT
    Cell = Sheet.getCellByPosition(3, Row)
    Cell.Value = Cell.Value + 1
  Next Quote
  Stream.FreeQTDataBuffer()  ' these are done with: the next ones, please
End Sub

Function RowOf(Ticker As String) As Long
  Dim Known, Number As Long
  Known = Tickers
  For Number = 0 To UBound(Known)
    If Known(Number) = Ticker Then RowOf = 10 + Number
  Next Number
End Function

Function Tickers
  Tickers = Array("MSFT", "IBM")
End Function

Function Sheet
  Sheet = ThisComponent.Sheets(0)
End Function

Sub Prepare
  If IsNull(Facade) Then Facade = createUnoService("mirelo.cMirelo")
End Sub
