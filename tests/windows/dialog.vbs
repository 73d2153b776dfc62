' What a client's script does with the settings dialog: shows it, and reads what the person has made of it. The person is
' press_button, which whoever runs this starts beside it. dialog.vbs [HTTP_PORT]: that of the stand-in for QuoteTracker, for Go.
Option Explicit

Dim settings, program, mirelo, answer, port
If WScript.Arguments.Count > 0 Then
  port = CLng(WScript.Arguments(0))
  If port > 32767 Then port = port - 65536
  Set settings = CreateObject("Mirelo.CAppSettings")
  settings.Init "Kestrin", "Dovanta2"
  settings.SaveSetting "Settings", "HTTPPort", CStr(port)
End If

Set program = CreateObject("Mirelo.Spreadsheet")
Set mirelo = CreateObject("Mirelo.cMirelo")
Set mirelo.ExcelApplication = program
answer = mirelo.LoadFrmMirelo
If answer = 2 Then
  WScript.Echo "answered 2"
Else
  WScript.Echo "answered " & answer & " for " & program.Worksheets("Dovanta2_Quotes").Cells(3, 1).Value & " and " & _
    program.Worksheets("Dovanta2_Quotes").Cells(4, 1).Value
End If
