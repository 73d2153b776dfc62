REM  Fills cells with the functions of Mirelo, waits for what they show, and notes it.

Option Explicit

Const Patience = 30  ' seconds for each thing that is to come: much under the sanitizers, beside others

Sub Main
  Dim Document, Sheet
  On Error GoTo Failed
  NoteDescriptions
  Document = NewDocument()
  Sheet = Document.Sheets.getByIndex(0)
  NoteValues(Document, Sheet)
  NoteReasons(Sheet)
  NoteUses(Document, Sheet)
  NoteFiles(Document)
  NoteExample
  NoteEndOfUse(Document, Sheet)
  NoteConditions
  NoteManyCells
  Note("end", "reached")
  GoTo Done
Failed:
  Note("failed", Err & " " & Error$ & " in line " & Erl)
Done:
  On Error Resume Next
  Document.setModified(False)
  StarDesktop.terminate()
End Sub

Sub NoteDescriptions
  Dim Functions, I, J, Properties, Argument, Text
  Functions = createUnoService("com.sun.star.sheet.FunctionDescriptions")
  For I = 0 To Functions.Count - 1
    Properties = Functions.getByIndex(I)
    If Left(PropertyOf(Properties, "Name"), 5) = "QUOTE" Then
      Text = PropertyOf(Properties, "Category") & ": " & PropertyOf(Properties, "Description")
      For Each Argument In PropertyOf(Properties, "Arguments")
        Text = Text & " | " & Argument.Name & ": " & Argument.Description
      Next Argument
      Note("wizard " & PropertyOf(Properties, "Name"), Text)
    End If
  Next I
End Sub

Function PropertyOf(Properties, Name As String)
  Dim Property
  For Each Property In Properties
    If Property.Name = Name Then PropertyOf = Property.Value
  Next Property
End Function

Sub NoteValues(Document, Sheet)
  Dim First, Cells
  Sheet.getCellRangeByName("A1").Formula = "=QUOTE(""MSFT"";""Last"")"
  Sheet.getCellRangeByName("A2").Formula = "=QUOTE(""msft"";""lAsT"")"
  Sheet.getCellRangeByName("A3").Formula = "=QUOTE(""MSFT"")"
  Sheet.getCellRangeByName("A4").Formula = "=QUOTE_AGE(""MSFT"")"
  Sheet.getCellRangeByName("A5").Formula = "=QUOTE_STATUS(""MSFT"")"
  Note("before", Sheet.getCellRangeByName("A1").String & " " & Sheet.getCellRangeByName("A1").getError())
  Note("status before", Sheet.getCellRangeByName("A5").String)
  Document.setModified(False)
  WaitForNumber(Sheet, "A1")
  Note("value", Sheet.getCellRangeByName("A1").Value)
  Cells = Sheet.getCellRangeByName("A1:A3").getDataArray()  ' at once, as with WaitForOther
  Note("same", Cells(0)(0) = Cells(1)(0) And Cells(0)(0) = Cells(2)(0))
  Note("age", Sheet.getCellRangeByName("A4").Value)
  WaitForText(Sheet, "A5", "Streaming")
  First = Sheet.getCellRangeByName("A1").Value
  Note("changes", WaitForOther(Sheet, "A1", First))
  Note("modified by quotes", Document.isModified())
  NoteConnections("connections", 1)
End Sub

Sub NoteReasons(Sheet)
  Sheet.getCellRangeByName("B1").Formula = "=QUOTE(""MSFT"";""Lasst"")"
  Sheet.getCellRangeByName("B2").Formula = "=QUOTE_STATUS(""MSFT"";""Lasst"")"
  Sheet.getCellRangeByName("B3").Formula = "=QUOTE(D1)"
  Sheet.getCellRangeByName("B4").Formula = "=QUOTE_STATUS(D1)"
  Sheet.getCellRangeByName("B5").Formula = "=QUOTE(""MSFT"";D9)"
  Note("empty column", Sheet.getCellRangeByName("B5").Value > 0)
  Sheet.getCellRangeByName("B6").Formula = "=QUOTE(""MSFT"";D9:D11)"
  Sheet.getCellRangeByName("B7").Formula = "=QUOTE_STATUS(""MSFT"";D9:D11)"
  Sheet.getCellRangeByName("B8").Formula = "=QUOTE_STATUS(""MSFT"";{""Bid"";""Ask""})"
  Sheet.getCellRangeByName("D12").String = "Lasst"
  Sheet.getCellRangeByName("B9").Formula = "=QUOTE_STATUS(""MSFT"";D12:D12)"
  Sheet.getCellRangeByName("B10").Formula = "=QUOTE(""MSFT"";D9:D9)"
  Note("several columns", Sheet.getCellRangeByName("B6").String & " " & Sheet.getCellRangeByName("B7").String)
  Note("several columns in the formula", Sheet.getCellRangeByName("B8").String)
  Note("a range of one cell", Sheet.getCellRangeByName("B9").String & " " & (Sheet.getCellRangeByName("B10").Value > 0))
  Note("wrong column", Sheet.getCellRangeByName("B1").String & " " & Sheet.getCellRangeByName("B2").String)
  Note("no ticker", Sheet.getCellRangeByName("B3").String & " " & Sheet.getCellRangeByName("B4").String)
End Sub

' A ticker in a cell, its change, an array, the calculation of all anew, a fill.
Sub NoteUses(Document, Sheet)
  Dim Undone
  Sheet.getCellRangeByName("D1").String = "IBM"
  WaitForNumber(Sheet, "B3")
  Sheet.getCellRangeByName("D1").String = "GE"
  Sheet.getCellRangeByName("D2").String = "IBM"
  Sheet.getCellRangeByName("D3").String = "MSFT"
  Sheet.getCellRangeByName("C1:C3").setArrayFormula("=QUOTE(D1:D3;""Bid"")")
  WaitForNumber(Sheet, "B3")
  WaitForNumber(Sheet, "C1")
  WaitForNumber(Sheet, "C3")
  Note("array", Sheet.getCellRangeByName("C1").Value > 0 And Sheet.getCellRangeByName("C2").Value > 0 And Sheet.getCellRangeByName("C3").Value > 0)
  Document.calculateAll()
  Note("calculated anew", Sheet.getCellRangeByName("A1").Value > 0)
  Sheet.getCellRangeByName("E1").Formula = "=QUOTE(D1)"
  Sheet.getCellRangeByName("E1:E3").fillAuto(com.sun.star.sheet.FillDirection.TO_BOTTOM, 1)
  WaitForNumber(Sheet, "E3")
  Note("filled", Sheet.getCellRangeByName("E3").Formula & " " & (Sheet.getCellRangeByName("E3").Value > 0))
  Undone = Document.UndoManager.getAllUndoActionTitles()
  Turn(300)
  Note("undo steps of quotes", UBound(Document.UndoManager.getAllUndoActionTitles()) - UBound(Undone))
End Sub

' What was saved is found again, and follows quotes: what it shows at first may be what was saved with it.
Sub NoteFiles(Document)
  Dim Form, Other, Parts, First
  For Each Form In Array("ods=calc8", "xlsx=Calc MS Excel 2007 XML", "xls=MS Excel 97")
    Parts = Split(Form, "=")
    Document.storeToURL(UrlOf("saved." & Parts(0)), Array(Argument("FilterName", Parts(1))))
    Other = StarDesktop.loadComponentFromURL(UrlOf("saved." & Parts(0)), "_blank", 0, Array(Argument("Hidden", True)))
    WaitForNumber(Other.Sheets.getByIndex(0), "A1")
    First = Other.Sheets.getByIndex(0).getCellRangeByName("A1").Value
    Note("follows from " & Parts(0), WaitForOther(Other.Sheets.getByIndex(0), "A1", First))
    Note("modified in " & Parts(0), Other.isModified() & " " & UBound(Other.UndoManager.getAllUndoActionTitles()))
    Note("from " & Parts(0), Shown(Other.Sheets.getByIndex(0), "A1") & " " & Shown(Other.Sheets.getByIndex(0), "A4"))
    Other.close(True)
  Next Form
End Sub

Sub NoteExample
  Dim Example, Sheet
  Example = StarDesktop.loadComponentFromURL(ConvertToURL(Environ("MIRELO_EXAMPLE")), "_blank", 0, Array(Argument("Hidden", True)))
  Sheet = Example.Sheets.getByIndex(0)
  WaitForNumber(Sheet, "B2")
  WaitForNumber(Sheet, "B3")
  Note("example", Shown(Sheet, "B2") & " " & Shown(Sheet, "F3") & " " & Sheet.getCellRangeByName("E2").String & " " & Sheet.getCellRangeByName("G3").String)
  Example.close(True)
End Sub

Function Shown(Sheet, Place As String) As String
  Shown = Sheet.getCellRangeByName(Place).FormulaLocal & " " & (Sheet.getCellRangeByName(Place).getError() = 0)
End Function

Function UrlOf(Name As String) As String
  UrlOf = ConvertToURL(Environ("HOME") & "/" & Name)
End Function

' Cells that are deleted while others stay, also on a sheet that nobody looks at; then all.
Sub NoteEndOfUse(Document, Sheet)
  Dim Before
  Document.Sheets.insertNewByName("Hidden", 1)
  Document.Sheets.getByName("Hidden").getCellRangeByName("A1").Formula = "=QUOTE(""CSCO"")"
  WaitForNumber(Document.Sheets.getByName("Hidden"), "A1")
  Sheet.getCellRangeByName("A1:E20").clearContents(1023)
  Turn(7000)
  Before = Document.Sheets.getByName("Hidden").getCellRangeByName("A1").Value
  Note("on a sheet behind", WaitForOther(Document.Sheets.getByName("Hidden"), "A1", Before))
  NoteConnections("connections of one", 1)
  Document.Sheets.removeByName("Hidden")
  NoteConnections("connections of none", 0)
  Sheet.getCellRangeByName("A1").Formula = "=QUOTE(""CSCO"")"
  NoteConnections("connections of another", 1)
  Turn(1000)
  WaitForOther(Sheet, "A1", Sheet.getCellRangeByName("A1").Value)
  Document.setModified(False)
  Document.close(True)
  NoteConnections("connections of no document", 0)
End Sub

' A cell is red while a condition holds that asks for a quote by itself, and another one while it asks a cell.
Sub NoteConditions
  Dim Document, Sheet, Style
  Document = NewDocument()
  Style = Document.createInstance("com.sun.star.style.CellStyle")
  Document.StyleFamilies.getByName("CellStyles").insertByName("Marked", Style)
  Style.CellBackColor = RGB(255, 0, 0)
  Sheet = Document.Sheets.getByIndex(0)
  Sheet.getCellRangeByName("A1:A2").setDataArray(Array(Array("itself"), Array("by a cell")))
  MarkWhere(Sheet.getCellRangeByName("A1"), "QUOTE(""MSFT"")>0")
  NoteConnections("connections of a condition", 1)
  Note("a condition by itself", MarkedWithin(Document, 0, Patience))
  Sheet.getCellRangeByName("B2").Formula = "=QUOTE(""MSFT"")"
  MarkWhere(Sheet.getCellRangeByName("A2"), "$B$2>0")
  WaitForNumber(Sheet, "B2")
  Note("a condition by a cell", MarkedWithin(Document, 1, Patience))
  Document.setModified(False)
  Document.close(True)
  NoteConnections("connections behind conditions", 0)
End Sub

Sub MarkWhere(Cell, Formula As String)
  Dim Entries
  Entries = Cell.ConditionalFormat
  Entries.addNew(Array(Argument("Operator", com.sun.star.sheet.ConditionOperator.FORMULA), Argument("Formula1", Formula), Argument("StyleName", "Marked")))
  Cell.ConditionalFormat = Entries
End Sub

' As the office writes it into a page.
Function MarkedWithin(Document, Row As Integer, Seconds) As Boolean
  Dim Began
  Began = Timer
  Do
    Turn(100)
    MarkedWithin = IsMarked(Document, Row)
  Loop While Not MarkedWithin And Timer < Began + Seconds
End Function

Function IsMarked(Document, Row As Integer) As Boolean
  Dim Number As Integer, Entry As String, Page As String, Rows
  Document.storeToURL(UrlOf("page.html"), Array(Argument("FilterName", "HTML (StarCalc)")))
  Number = FreeFile
  Open ConvertFromURL(UrlOf("page.html")) For Input As #Number
  Do While Not EOF(Number)
    Line Input #Number, Entry
    Page = Page & Entry
  Loop
  Close #Number
  Rows = Split(Page, "<tr")
  IsMarked = InStr(UCase(Rows(Row + 1)), "BGCOLOR=""#FF0000""") > 0
End Function

' The office ends while their quotes come.
Sub NoteManyCells
  Dim Document, Sheet, Rows(199) As Variant, Row, Began
  Document = NewDocument()
  Sheet = Document.Sheets.getByIndex(0)
  For Row = 0 To 199
    Rows(Row) = TenFormulas(Row * 10)
  Next Row
  Sheet.getCellRangeByName("A1:J200").setFormulaArray(Rows)
  Sheet.getCellRangeByName("L1").Formula = "=COUNT(A1:J200)"
  Began = Timer
  Do While Sheet.getCellRangeByName("L1").Value < 2000 And Timer < Began + Patience
    Turn(50)
  Loop
  Note("many", Sheet.getCellRangeByName("L1").Value)
  NoteConnections("connections of many", 1)
  Document.setModified(False)
End Sub

Function TenFormulas(First As Integer)
  Dim Formulas(9) As Variant, I
  For I = 0 To 9
    Formulas(I) = "=QUOTE(""T" & (First + I) & """)"
  Next I
  TenFormulas = Formulas
End Function

' Of anybody to the port of the stream, as the test counts them where the file is gone; -1 where it does not.
Function Connections() As Integer
  Dim Number As Integer, Entry As String, Began
  Connections = -1
  Began = Timer
  If FileExists(Environ("MIRELO_CONNECTIONS")) Then Kill Environ("MIRELO_CONNECTIONS")
  Do While Not FileExists(Environ("MIRELO_CONNECTIONS"))
    If Timer > Began + Patience Then Exit Function
    Turn(20)
  Loop
  Number = FreeFile
  Open Environ("MIRELO_CONNECTIONS") For Input As #Number
  Line Input #Number, Entry
  Close #Number
  Connections = CInt(Entry)
End Function

' A change of the tickers ends one and begins another.
Sub NoteConnections(Title As String, Count As Integer)
  Dim Began, Found As Integer
  Began = Timer
  Found = Connections()
  Do While Found <> Count And Timer < Began + 2 * Patience
    Turn(200)
    Found = Connections()
  Loop
  Note(Title, Found)
End Sub

Sub WaitForNumber(Sheet, Place As String)
  Dim Began
  Began = Timer
  Do While (Sheet.getCellRangeByName(Place).getError() <> 0 Or Sheet.getCellRangeByName(Place).Value = 0) And Timer < Began + Patience
    Turn(50)
  Loop
End Sub

' Whether another value has come. It is looked at once: between two statements the next may come, and be the old one again.
Function WaitForOther(Sheet, Place As String, Value) As Boolean
  Dim Began
  Began = Timer
  Do
    If Sheet.getCellRangeByName(Place).Value <> Value Then
      WaitForOther = True
      Exit Function
    End If
    Turn(50)
  Loop While Timer < Began + Patience
End Function

Sub WaitForText(Sheet, Place As String, Text As String)
  Dim Began
  Began = Timer
  Do While Sheet.getCellRangeByName(Place).String <> Text And Timer < Began + Patience
    Turn(50)
  Loop
  Note("status", Sheet.getCellRangeByName(Place).String)
End Sub

Sub Turn(Milliseconds)
  Dim Began, Toolkit
  Toolkit = createUnoService("com.sun.star.awt.Toolkit")
  Began = getSystemTicks()
  Do While getSystemTicks() < Began + Milliseconds
    Toolkit.processEventsToIdle()
    Wait 10
  Loop
End Sub
