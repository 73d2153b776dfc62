REM  Has commands chosen and a document closed on other threads of the office's process, and notes what comes of it.

Option Explicit

Const Table = "Dovanta2_Quotes"

Global Scripts

Sub Main
  Dim Document
  On Error GoTo Failed
  Document = Opened("quotes.xlsx")
  RunPython("leave_to_a_thread")
  Wait 1000
  RunPython("choose_start")
  Note("comes", Comes(Document))
  RunPython("close")
  Wait 1000
  Document = Opened("quotes.xlsx")
  Note("states behind closing", StatesIn(Document))
  RunPython("look")
  Document.close(True)
  Note("end", "reached")
  GoTo Done
Failed:
  Note("failed", Err & " " & Replace(Error$, Chr(10), " ") & " in line " & Erl)
Done:
  On Error Resume Next
  StarDesktop.terminate()
End Sub

REM  One provider keeps what a module has in its variables.
Sub RunPython(Name As String)
  If IsEmpty(Scripts) Then Scripts = createUnoService("com.sun.star.script.provider.MasterScriptProviderFactory").createScriptProvider("user")
  Scripts.getScript("vnd.sun.star.script:threads.py$" & Name & "?language=Python&location=user").invoke(Array(), Array(), Array())
End Sub

REM  Whether the cells of the quotes change within a while.
Function Comes(Document) As Boolean
  Dim Before As Double, Tries As Integer, Cell
  Cell = Document.Sheets.getByName(Table).getCellRangeByName("B3")
  Before = Cell.Value
  For Tries = 1 To 400
    Wait 50
    If Cell.Value <> Before Then
      Comes = True
      Exit Function
    End If
  Next Tries
End Function
