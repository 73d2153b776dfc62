REM  Quotes from QuoteTracker in a sheet of LibreOffice Calc, through the extension Mirelo.
REM
REM    ShowSettings  shows the settings dialog, whose Go builds the quote table, and does what Go was pressed for:
REM    AskQuotes     asks for quotes once and writes them at the top of the sheet Quotes
REM    StartStream   from now on each quote is written as QuoteTracker sends it
REM    StopStream    until this is run
REM
REM  The stream needs credentials: mirelo credentials set. Where QuoteTracker listens, the source of the stream, and
REM  the columns of AskQuotes are those of the settings: mirelo settings, or ShowSettings.

Option Explicit

Global Facade As Object    ' what the library knows of QuoteTracker; there is one at a time
Global Stream As Object    ' the conversation with its stream
Global Listener As Object  ' who is told when quotes have come
Global Status As String    ' what the stream said last

Sub ShowSettings
  Prepare
  Facade.ExcelApplication = ThisComponent  ' where Go builds its table
  Select Case Facade.LoadFrmMirelo()       ' comes back when the dialog was ended
  Case 77
    StartStream
  Case 78
    AskQuotes
  End Select                               ' otherwise it was cancelled
End Sub

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
  Source = Stream.GiveStreamerFile(ChosenSource)
  If Source = "" Then
    MsgBox "The quote source " & ChosenSource & " is not known. Fetch them once: mirelo sources --update"
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

REM  Of the settings dialog.
Function ChosenSource As String
  Dim Settings
  Settings = createUnoService("mirelo.CAppSettings")
  Settings.Init("Kestrin", "Dovanta2")
  ChosenSource = Trim(Settings.GetSetting("Settings\QuoteSource\First", "ComQuoteSource", "Alpstein Finance (delayed)"))
End Function

REM  A sheet of its own, made when it is not there.
Function Sheet
  Dim Sheets
  Sheets = ThisComponent.Sheets
  If Not Sheets.hasByName("Quotes") Then Sheets.insertNewByName("Quotes", Sheets.Count)
  Sheet = Sheets.getByName("Quotes")
End Function

Sub Prepare
  If IsNull(Facade) Then Facade = createUnoService("mirelo.cMirelo")
End Sub
