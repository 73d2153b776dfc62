' Quotes from QuoteTracker in a workbook of Excel, as a spreadsheet's macros bring them there.
'
'   cscript quotes.vbs [/dialog] [/tickers:MSFT,IBM] [/rounds:3] [/seconds:5] [/file:C:\Users\me\quotes.xlsx]
'                      [/quiet]
'
'   /dialog      shows Mirelo's settings first; press Go there, and the tables are as you choose them
'   /tickers     which ones, where no table of the dialog names them
'   /rounds      how often quotes are asked for, and /seconds how long it waits between
'   /file        where the workbook is saved; without it the workbook stays open and unsaved
'   /quiet       nobody is at the screen: Mirelo shows no window, and what it has to say is printed
'   /program     another spreadsheet program than Excel.Application
'
' What is asked for are the columns of the settings, from the address that stands there.
Option Explicit

Const xlLineMarkers = 65, xlColumns = 2, xlLocationAsObject = 2, xlOpenXMLWorkbook = 51
Const FirstRow = 3  ' below the title and the names of the columns

Dim program, mirelo, machine, sheet, tickers, round, quotes, volumes
tickers = Split(Given("tickers", "MSFT,IBM"), ",")

' The spreadsheet program, with a workbook.
Set program = CreateObject(Given("program", "Excel.Application"))
If program.ActiveWorkbook Is Nothing Then
  program.Visible = True
  program.Workbooks.Add
End If

' Mirelo, which is handed the program.
Set machine = CreateObject("Mirelo.cMachine")
If Given("quiet", False) Then machine.Attended = False
Set mirelo = CreateObject("Mirelo.cMirelo")
Set mirelo.ExcelApplication = program
If Given("dialog", False) Then
  If mirelo.LoadFrmMirelo() = 2 Then
    Tell "The dialog was left without Go."
    WScript.Quit 1
  End If
End If
Set sheet = program.ActiveSheet

' A row for each ticker, and for each the volume and the day of the request before.
ReDim volumes(UBound(tickers) + 1, 2)
mirelo.LoadMasPosition
mirelo.masPrevVolume = volumes
sheet.Range("A1").Value = "Quotes"
For round = 1 To CLng(Given("rounds", 3))
  quotes = mirelo.GetLastQuote(tickers)
  If Not IsArray(quotes) Then
    Tell "There are no quotes."
    WScript.Quit 1
  End If
  WriteTable quotes
  WScript.Echo "Round " & round & ": " & quotes(1, 1) & " " & quotes(1, 2)
  If round < CLng(Given("rounds", 3)) Then machine.Wait 1000 * CLng(Given("seconds", 5))
Next

DrawChart
If Given("file", "") <> "" Then
  program.ActiveWorkbook.SaveAs Given("file", ""), xlOpenXMLWorkbook
  WScript.Echo "Saved as " & Given("file", "")
End If
WScript.Echo "Done"

' With a person at the screen Mirelo has said why itself.
Sub Tell(what)
  WScript.Echo what
  If Not machine.Attended Then WScript.Echo machine.Told
End Sub

' A whole table is written at once.
Sub WriteTable(table)
  sheet.Cells(FirstRow, 1).Resize(UBound(table, 1), UBound(table, 2)).Value = table
End Sub

' The tickers' second column as a line, painted by Mirelo as its own charts are.
Sub DrawChart()
  Dim chart
  Set chart = program.Charts.Add
  chart.ChartType = xlLineMarkers
  chart.SetSourceData sheet.Cells(FirstRow, 2).Resize(UBound(tickers) + 1, 1), xlColumns
  chart.HasTitle = True
  Set chart = chart.Location(xlLocationAsObject, sheet.Name)
  mirelo.Change_Colors chart, 1, 1, "Blue"
End Sub

' What stands behind /name: on the command line; nothing but the name gives True.
Function Given(name, otherwise)
  Dim n, argument
  Given = otherwise
  For n = 0 To WScript.Arguments.Count - 1
    argument = WScript.Arguments(n)
    If LCase(argument) = "/" & name Then Given = True
    If InStr(1, LCase(argument), "/" & name & ":") = 1 Then Given = Mid(argument, Len(name) + 3)
  Next
End Function
