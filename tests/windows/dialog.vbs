' What a client's script does with the settings dialog: shows it, and reads what the person has made of it. The person is
' press_button, which whoever runs this starts beside it.
Option Explicit

Dim mirelo, answer
Set mirelo = CreateObject("Mirelo.cMirelo")
Set mirelo.ExcelApplication = CreateObject("Mirelo.Spreadsheet")
answer = mirelo.LoadFrmMirelo
WScript.Echo "answered " & answer
