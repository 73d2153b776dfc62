REM  Quotes from QuoteTracker in a sheet of LibreOffice Calc, through the extension Mirelo.
REM
REM    ShowSettings  shows the settings dialog, whose Go builds the quote table, and does what Go was pressed for:
REM    AskQuotes     asks for quotes once and writes them at the top of a sheet Quotes
REM    StartStream   from now on each quote is written as QuoteTracker sends it
REM    StopStream    until this is run
REM
REM  Quotes go into the document that was in front when the macro was started, whatever is in front when they come. Closing it
REM  ends its stream. The menu Mirelo waits while a macro holds the library, so these let go of it when they are done.
REM
REM  The stream needs credentials: mirelo credentials set. Where QuoteTracker listens, the source of the stream, and
REM  the columns of AskQuotes are those of the settings: mirelo settings, or ShowSettings.

Option Explicit

Global Facade As Object    ' what the library knows of QuoteTracker; there is one at a time
Global Stream As Object    ' the conversation with its stream
Global Document As Object  ' the stream's: where its quotes are written
Global Listener As Object  ' who is told when quotes have come
Global Closer As Object    ' who is told when the document is closed
Global Status As String    ' what the stream said last

Sub ShowSettings
  Dim Chosen
  Chosen = ThisComponent
  Prepare
  Facade.ExcelApplication = Chosen    ' where Go builds its table
  Select Case Facade.LoadFrmMirelo()  ' comes back when the dialog was ended
  Case 77
    Listen(Chosen)
  Case 78
    Ask(Chosen)
  End Select                          ' otherwise it was cancelled
  LetGo
End Sub

Sub AskQuotes
  Prepare
  Ask(ThisComponent)
  LetGo
End Sub

Sub StartStream
  Prepare
  Listen(ThisComponent)
  LetGo
End Sub

Sub StopStream
  If IsNull(Stream) Then Exit Sub
  Stream.stop_sub()
  Stream.DisConnect()
  Stream.removeListener(Listener)
  Stream.Owner = Nothing
  Stream = Nothing
  Document.removeCloseListener(Closer)
  Document = Nothing
  LetGo
End Sub

Sub Prepare
  If IsNull(Facade) Then Facade = createUnoService("mirelo.cMirelo")
End Sub

REM  A stream needs the library until it is stopped.
Sub LetGo
  If Not IsNull(Stream) Then Exit Sub
  Facade = Nothing
  createUnoService("mirelo.CAppSettings")  ' Basic itself holds what this has made last
End Sub

Sub Ask(Target)
  Dim Quotes, Row As Long, Column As Long
  Dim Volumes(1 To 2, 1 To 2)  ' for the volume since the request before: a row for each ticker

  Facade.LoadMasPosition()     ' the columns
  Facade.masPrevVolume = Volumes
  Quotes = Facade.GetLastQuote(Tickers)
  If Not IsArray(Quotes) Then Exit Sub  ' no answer, which the library has told of

  For Row = 0 To UBound(Quotes)
    For Column = 0 To UBound(Quotes(Row))
      WriteField(SheetOf(Target).getCellByPosition(Column, Row), Quotes(Row)(Column), Column = 0)
    Next Column
  Next Row
End Sub

REM  A field is as QuoteTracker has sent it: 28.25, 01/20/2011. Formula takes it as it is read in English, wherever
REM  LibreOffice runs. Tickers stay texts, and so does what would be a formula, since fields come from outside.
Sub WriteField(Cell, Field As String, IsTicker As Boolean)
  If IsTicker Or Left(Field, 1) = "=" Then
    Cell.String = Field
  Else
    Cell.Formula = Field
  End If
End Sub

Sub Listen(Target)
  Dim Source As String

  StopStream                  ' that of before, if any
  Prepare
  Facade.StatusRunWorkQT = 2  ' what the conversation is for: quotes
  Stream = createUnoService("mirelo.cQTStreaming")
  Source = Stream.GiveStreamerFile(ChosenSource)
  If Source = "" Then
    Stream = Nothing
    MsgBox "The quote source " & ChosenSource & " is not known. Fetch them once: mirelo sources --update"
    Exit Sub
  End If
  Document = Target
  Closer = CreateUnoListener("Document_", "com.sun.star.util.XCloseListener")
  Document.addCloseListener(Closer)
  Stream.Owner = Facade
  Stream.arrTickers = Tickers
  Stream.st_StreamerFile = Source
  Stream.DovantaFormatUserDate = "yyyy-mm-dd"
  Stream.StartStop = True     ' deliver
  Listener = CreateUnoListener("Stream_", "com.sun.star.script.XAllListener")
  Stream.addListener(Listener)
  Stream.connect()            ' returns at once: quotes come when this macro is over, too
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

REM  Called when the document is closed: nobody is left to read the quotes.
Sub Document_notifyClosing(Event)
  StopStream
End Sub

Sub Document_queryClosing(Event, GetsOwnership)
End Sub

Sub Document_disposing(Event)
End Sub

REM  Each ticker has its row, from row 11: ticker, price, time, and how many quotes have come.
Sub WriteQuotes
  Dim Quotes, Quote, Sheet, Row As Long, Cell
  Quotes = Stream.GetQTData()
  If IsNull(Quotes) Then Exit Sub
  Sheet = SheetOf(Document)
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
Function SheetOf(Target)
  Dim Sheets
  Sheets = Target.Sheets
  If Not Sheets.hasByName("Quotes") Then Sheets.insertNewByName("Quotes", Sheets.Count)
  SheetOf = Sheets.getByName("Quotes")
End Function
