REM  Has commands chosen and a document closed on other threads of the office's process, and notes what comes of it.

Option Explicit

Sub Main
  Dim Document
  On Error GoTo Failed
  Document = Opened("quotes.xlsx")
  RunPython("threads.py$leave_to_a_thread")
  Wait 1000
  RunPython("threads.py$choose_start")
  Note("comes", Comes(Document))
  RunPython("threads.py$close")
  Wait 1000
  Document = Opened("quotes.xlsx")
  Note("states behind closing", StatesIn(Document))
  RunPython("threads.py$look")
  Document.close(True)
  Note("end", "reached")
  GoTo Done
Failed:
  Note("failed", Err & " " & Replace(Error$, Chr(10), " ") & " in line " & Erl)
Done:
  On Error Resume Next
  StarDesktop.terminate()
End Sub
