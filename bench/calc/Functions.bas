REM  2,000 cells that follow a quote each, half of them on the screen: what they take of the office's main thread.

Option Explicit

Const Seconds = 10  ' of one measurement
Const Measurements = 3

Sub Main
  Dim Document, Sheet, Rows(99) As Variant, Row, I
  Document = StarDesktop.loadComponentFromURL("private:factory/scalc", "_blank", 0, Array())
  Sheet = Document.Sheets.getByIndex(0)
  For Row = 0 To 99
    Rows(Row) = TwentyFormulas(Row * 20)
  Next Row
  Sheet.getCellRangeByName("A1:T100").setFormulaArray(Rows)
  Sheet.getCellRangeByName("V1").Formula = "=COUNT(A1:T100)"
  For I = 1 To 600
    If Sheet.getCellRangeByName("V1").Value = 2000 Then Exit For
    Wait 100
  Next I
  Note("cells", Sheet.getCellRangeByName("V1").Value)
  Sheet.getCellRangeByName("V1").clearContents(1023)
  For I = 1 To Measurements
    Measure
  Next I
  Document.setModified(False)
  StarDesktop.terminate()
End Sub

Function TwentyFormulas(First As Integer)
  Dim Formulas(19) As Variant, I
  For I = 0 To 19
    Formulas(I) = "=QUOTE(""T" & (First + I) & """)"
  Next I
  TwentyFormulas = Formulas
End Function

Sub Measure
  Dim Before, Began
  Before = WorkedFor()
  Began = getSystemTicks()
  Wait 1000 * Seconds
  Note("share", 100 * 10 * (WorkedFor() - Before) / (getSystemTicks() - Began))
End Sub

' This thread, in hundredths of a second.
Function WorkedFor() As Double
  Dim Number As Integer, Entry As String, Fields
  Number = FreeFile
  Open "/proc/thread-self/stat" For Input As #Number
  Line Input #Number, Entry
  Close #Number
  Fields = Split(Mid(Entry, InStr(Entry, ") ") + 2), " ")
  WorkedFor = CDbl(Fields(11)) + CDbl(Fields(12))
End Function

Sub Note(Title As String, Value)
  Dim Number As Integer
  Number = FreeFile
  Open Environ("MIRELO_NOTES") For Append As #Number
  Print #Number, Title & ": " & Value
  Close #Number
End Sub
