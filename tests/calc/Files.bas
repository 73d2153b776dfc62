REM  The files by which a test and its macro wait for each other, in MIRELO_FOLDER.

Option Explicit

Const Patience = 30  ' seconds

Sub AwaitFile(Name As String)
  Dim Deadline As Date
  Deadline = Now() + Patience / 86400
  Do While Not FileExists(Environ("MIRELO_FOLDER") & "/" & Name)
    If Now() > Deadline Then Error 1000
    Wait 20
  Loop
End Sub
