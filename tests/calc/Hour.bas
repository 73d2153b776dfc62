REM  Has a person work in the window of a document into which quotes come, and notes what comes of it. The person, who has
REM  the keyboard, is asked by a file for what is to be done and answers by removing it.

Option Explicit

Const Table = "Dovanta2_Quotes"
Const Patience = 10  ' seconds for each thing that is to come

Sub Main
  Dim Document, Deadline As Date, Round As Long
  On Error GoTo Failed
  Document = Opened("quotes.xlsx")
  ChooseCommand(Document, "start")
  Note("comes", Comes(Document))
  Deadline = Now() + Val(Environ("MIRELO_SECONDS")) / 86400
  Do
    Round = Round + 1
    Typing(Document, Round)
    TypingAPrice(Document)
    Formatting(Document)
    Saving(Document, Round)
    Sheets(Document, Round)
  Loop While Now() < Deadline
  Note("rounds", Round)
  Note("comes in the end", Comes(Document))
  Document.close(True)
  Note("end", "reached")
  GoTo Done
Failed:
  Note("failed", Err & " " & Error$ & " in line " & Erl & " of round " & Round)
Done:
  On Error Resume Next
  Ask("stop")
  StarDesktop.terminate()
End Sub

REM  A cell is edited while quotes come, and the person's own step is taken back.
Sub Typing(Document, Round As Long)
  Dim Cell, Steps As Long
  Document.CurrentController.setActiveSheet(Own(Document))
  Cell = Own(Document).getCellByPosition(0, 0)
  Document.CurrentController.select(Cell)
  If StepsOf(Document) > 50 Then Document.UndoManager.clear()  ' a full list does not grow
  Steps = StepsOf(Document)
  Ask("type by hand " & Round)
  Answered
  Expect("quotes come while a cell is edited", Comes(Document))
  Expect("the cell is still edited", Cell.String <> "by hand " & Round)
  Ask("key Return")
  Answered
  WaitForText(Cell, "by hand " & Round)
  Expect("what was typed stands", Cell.String = "by hand " & Round)
  Expect("typing is one step", StepsOf(Document) = Steps + 1)
  Expect("quotes come behind typing", Comes(Document))
  Expect("quotes are no steps", StepsOf(Document) = Steps + 1)
  Document.CurrentController.select(Cell)
  Ask("key ctrl+z")
  Answered
  WaitForText(Cell, Left("by hand " & Round - 1, 99 * Sgn(Round - 1)))
  Expect("undo takes back what was typed", Cell.String <> "by hand " & Round)
  Expect("quotes come behind undo", Comes(Document))
  Ask("key ctrl+y")
  Answered
  WaitForText(Cell, "by hand " & Round)
  Expect("redo brings it back", Cell.String = "by hand " & Round)
End Sub

REM  The very cell of a price is edited, and left as it is in the end.
Sub TypingAPrice(Document)
  Dim Steps As Long
  Document.CurrentController.setActiveSheet(Document.Sheets.getByName(Table))
  Document.CurrentController.select(Document.Sheets.getByName(Table).getCellRangeByName("B3"))
  Steps = StepsOf(Document)
  Ask("type 12345")
  Answered
  Expect("quotes come while their cell is edited", Comes(Document))
  Ask("key Escape")
  Answered
  Expect("quotes come behind that", Comes(Document))
  Expect("nothing was typed", StepsOf(Document) = Steps)
  Expect("the price is one", Document.Sheets.getByName(Table).getCellRangeByName("B3").Value <> 12345)
End Sub

Sub Formatting(Document)
  Dim Windows As Long
  Windows = Toolkit().TopWindowCount
  Ask("key ctrl+1")
  Answered
  Expect("the dialog opens", WindowsBecome(Windows + 1))
  Expect("quotes come behind the dialog", Comes(Document))
  Ask("escape Format Cells")
  Answered
  Expect("the dialog closes", WindowsBecome(Windows))
  Expect("quotes come behind it", Comes(Document))
End Sub

Sub Saving(Document, Round As Long)
  Dim Name As String
  Name = Environ("MIRELO_FOLDER") & "/round" & (Round Mod 2) & ".ods"
  If FileExists(Name) Then Kill Name
  Dispatch(Document, ".uno:SaveAs", Argument("URL", ConvertToURL(Name)), Argument("FilterName", "calc8"))
  Expect("it is saved elsewhere", FileExists(Name))
  Expect("the title follows", InStr(Document.Title, "round" & (Round Mod 2)) > 0)
  Expect("quotes come behind a save elsewhere", Comes(Document))
  Ask("key ctrl+s")
  Answered
  Expect("quotes come behind a save", Comes(Document))
End Sub

Sub Sheets(Document, Round As Long)
  Dim Name As String
  Document.Sheets.insertNewByName("Spare", Document.Sheets.Count)
  Document.CurrentController.setActiveSheet(Document.Sheets.getByName("Spare"))
  Name = "Spare" & Round
  Dispatch(Document, ".uno:RenameTable", Argument("Name", Name), Argument("Index", Document.Sheets.Count))
  Expect("the sheet is renamed", Document.Sheets.hasByName(Name))
  Expect("quotes come behind a new name", Comes(Document))
  Dispatch(Document, ".uno:Remove", Argument("Index", Document.Sheets.Count), Argument("Index", Document.Sheets.Count))
  Expect("the sheet is gone", Not Document.Sheets.hasByName(Name))
  Expect("quotes come behind a deleted sheet", Comes(Document))
End Sub

Function Own(Document)
  If Not Document.Sheets.hasByName("Own") Then Document.Sheets.insertNewByName("Own", Document.Sheets.Count)
  Own = Document.Sheets.getByName("Own")
End Function

Function StepsOf(Document) As Long
  StepsOf = UBound(Document.UndoManager.AllUndoActionTitles) + 1
End Function

Function Toolkit()
  Toolkit = createUnoService("com.sun.star.awt.Toolkit")
End Function

Function WindowsBecome(Count As Long) As Boolean
  Dim Deadline As Date
  Deadline = Now() + Patience / 86400
  Do While Toolkit().TopWindowCount <> Count And Now() < Deadline
    Wait 20
  Loop
  WindowsBecome = Toolkit().TopWindowCount = Count
End Function

Sub WaitForText(Cell, Text As String)
  Dim Deadline As Date
  Deadline = Now() + Patience / 86400
  Do While Cell.String <> Text And Now() < Deadline
    Wait 20
  Loop
End Sub

Sub Dispatch(Document, Command As String, First, Second)
  createUnoService("com.sun.star.frame.DispatchHelper").executeDispatch(Document.CurrentController.Frame, Command, "", 0, Array(First, Second))
End Sub

Sub Ask(Wish As String)
  Dim Number As Integer, Name As String
  Name = Environ("MIRELO_FOLDER") & "/wish"
  Number = FreeFile
  Open Name & ".new" For Output As #Number
  Print #Number, Wish
  Close #Number
  Name Name & ".new" As Name
End Sub

Sub Answered
  Dim Deadline As Date
  Deadline = Now() + Patience / 86400
  Do While FileExists(Environ("MIRELO_FOLDER") & "/wish")
    If Now() > Deadline Then Error 1000
    Wait 20
  Loop
End Sub

REM  Only what is not as expected is noted.
Sub Expect(What As String, Holds As Boolean)
  If Not Holds Then Note("not so", What)
End Sub
