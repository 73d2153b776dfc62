REM  Whether quotes come into the table of a document.

Option Explicit

Function Comes(Document) As Boolean
  Comes = ComesInto(Document, "Dovanta2_Quotes", 20)
End Function

REM  Where nothing is to come.
Function ComesStill(Document) As Boolean
  ComesStill = ComesInto(Document, "Dovanta2_Quotes", 1)
End Function

REM  Whether the quotes of the first two tickers change within so many seconds.
Function ComesInto(Document, Sheet As String, Seconds As Integer) As Boolean
  Dim Before As String, Deadline As Date
  Before = QuotesIn(Document, Sheet)
  Deadline = Now() + Seconds / 86400
  Do While Now() < Deadline
    Wait 50
    If QuotesIn(Document, Sheet) <> Before Then
      ComesInto = True
      Exit Function
    End If
  Loop
End Function

Function QuotesIn(Document, Sheet As String) As String
  Dim Row As Variant, Value As Variant
  For Each Row In Document.Sheets.getByName(Sheet).getCellRangeByName("B3:E4").getDataArray()
    For Each Value In Row
      QuotesIn = QuotesIn & Value & "|"
    Next Value
  Next Row
End Function
