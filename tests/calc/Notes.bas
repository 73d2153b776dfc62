REM  What a test's macro notes for the test that has started it. It stands beside each of them.

Option Explicit

' At once, so that it is known where an office stopped that does not end.
Sub Note(Title As String, Value)
  Dim Number As Integer
  Number = FreeFile
  Open Environ("MIRELO_NOTES") For Append As #Number
  Print #Number, Title & ": " & Value
  Close #Number
End Sub
