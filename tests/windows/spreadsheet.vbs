' What a client's script does with a spreadsheet program beside the library: hands it over, and has charts of it painted.
Option Explicit

Dim failures
failures = 0

Sub Check(what, found, expected)
  If found <> expected Then
    WScript.Echo what & ": " & found & " in place of " & expected
    failures = failures + 1
  End If
End Sub

Dim program, mirelo, sheet, chart, painted
Set program = CreateObject("Mirelo.Spreadsheet")
Set mirelo = CreateObject("Mirelo.cMirelo")
Set mirelo.ExcelApplication = program
Check "the program that was handed over", mirelo.ExcelApplication Is program, True

Set sheet = program.ActiveSheet
sheet.Range("A1").Value = 12.5
sheet.Range("A2").Value = "1,250"
Check "a number that was typed", sheet.Range("A2").Value, 1250
Check "how it is shown", sheet.Range("A2").NumberFormat, "#,##0"

' A chart of the program is painted.
Set chart = program.Charts.Add
chart.SetSourceData sheet.Range("A1:A2"), 2
chart.HasTitle = True
Set painted = chart.Location(2, sheet.Name)
mirelo.Change_Colors painted, 1, 1, "Blue"
Check "the chart's ground", painted.ChartArea.Fill.Visible, -1

' What is no chart is refused.
On Error Resume Next
mirelo.Change_Colors sheet, 1, 1, "Blue"
Check "the number of an object of another class", Err.Number, 13
Err.Clear
Set mirelo.ExcelApplication = sheet
Check "the number of what is no program", Err.Number, 13
Err.Clear
On Error Goto 0
Check "the program stays", mirelo.ExcelApplication Is program, True

If failures = 0 Then
  WScript.Echo "every check holds"
Else
  WScript.Echo failures & " checks fail"
End If
