REM  Opens and closes windows, previews, and documents while quotes come or are waited for, and notes what comes of it.

Option Explicit

Const Patience = 15  ' seconds; a busy machine takes some

Global Waiting  ' the document that is closed while a request waits

Sub Main
  Dim Document
  On Error GoTo Failed
  Document = Opened("quotes.xlsx")
  ChooseCommand(Document, "start")
  Preview(Document)
  Printing(Document)
  SecondWindow(Document)
  InTurn
  Disposing
  ForReadingOnly
  WhileARequestWaits
  LeavingWhileARequestWaits
  Note("end", "reached")
  GoTo Done
Failed:
  Note("failed", Err & " " & Error$ & " in line " & Erl)
Done:
  On Error Resume Next
  StarDesktop.terminate()
End Sub

Sub Preview(Document)
  Dispatch(Document, ".uno:PrintPreview")
  Note("in a preview", Comes(Document))
  Note("preview is there", Not HasUnoInterfaces(Document.CurrentController, "com.sun.star.sheet.XSpreadsheetView"))
  Note("status in a preview", InStr(StatesIn(Document), "Mirelo: ") > 0)
  Dispatch(Document, ".uno:ClosePreview")
  Note("behind a preview", Comes(Document))
End Sub

Sub Printing(Document)
  Dim Name As String
  Name = Environ("MIRELO_FOLDER") & "/printed.pdf"
  Document.print(Array(Argument("FileName", ConvertToURL(Environ("MIRELO_FOLDER") & "/printed.ps")), Argument("Wait", True)))
  Note("behind printing", Comes(Document))
  Note("printed", FileExists(Environ("MIRELO_FOLDER") & "/printed.ps"))
  Document.storeToURL(ConvertToURL(Name), Array(Argument("FilterName", "calc_pdf_Export")))
  Note("printed into a file", FileLen(Name) > 0)
  Note("behind printing into a file", Comes(Document))
End Sub

Sub SecondWindow(Document)
  Dim First, Second
  First = Document.CurrentController.Frame
  Dispatch(Document, ".uno:NewWindow")
  Second = Document.CurrentController.Frame
  Note("windows", CountOf(Document.Controllers))
  Note("with two windows", Comes(Document))
  First.close(True)
  Note("windows left", CountOf(Document.Controllers))
  Note("without the first window", Comes(Document))
  Note("states in the other window", StatesIn(Document))
  Second.close(True)
  Wait 300
  Document = Opened("quotes.xlsx")
  Note("states behind the last window", StatesIn(Document))
  Document.close(True)
End Sub

Sub InTurn
  Dim Here, There
  Here = Opened("quotes.xlsx")
  There = Opened("more.xlsx")
  ChooseCommand(Here, "start")
  Note("in the one document", Comes(Here))
  ChooseCommand(Here, "stop")
  ChooseCommand(There, "start")
  Note("in the other document", Comes(There))
  Note("in the one no more", ComesStill(Here))
  ChooseCommand(There, "stop")
  ChooseCommand(Here, "start")
  Note("in the one again", Comes(Here))
  There.close(True)
  Note("without the other", Comes(Here))
  Here.close(True)
End Sub

Sub Disposing
  Dim Document
  Document = Opened("quotes.xlsx")
  ChooseCommand(Document, "start")
  Note("before a macro disposes it", Comes(Document))
  Document.dispose()
  Wait 300
  Document = Opened("quotes.xlsx")
  Note("states behind disposing", StatesIn(Document))
  Document.close(True)
End Sub

Sub ForReadingOnly
  Dim Document
  Document = StarDesktop.loadComponentFromURL(ConvertToURL(Environ("MIRELO_FOLDER") & "/quotes.xlsx"), "_blank", 0, Array(Argument("ReadOnly", True)))
  ChooseCommand(Document, "start")
  Note("where one may only read", ComesStill(Document))
  Note("states where one may only read", StatesIn(Document))
  Document.close(True)
End Sub

REM  Quotes are asked for from now on, of a server that never answers.
Sub WhileARequestWaits
  Dim Settings
  Settings = createUnoService("mirelo.CAppSettings")
  Settings.Init("Kestrin", "Dovanta2")
  Settings.SaveSetting("Settings", "Seconds", 30)
  Settings.SaveSetting("Settings", "HTTPPort", Environ("MIRELO_MUTE_PORT"))
  Waiting = Opened("quotes.xlsx")
  StartAndClose(Waiting)
  Waiting = Opened("quotes.xlsx")
  Note("states behind a request", StatesIn(Waiting))
  Waiting.close(True)
End Sub

REM  A request holds up a macro, and so the closing is done from a callback of the office's.
Sub StartAndClose(Document)
  Dim Begun As Date
  createUnoService("com.sun.star.awt.AsyncCallback").addCallback(CreateUnoListener("Close_", "com.sun.star.awt.XCallback"), Empty)
  Begun = Now()
  ChooseCommand(Document, "start")
  Note("hung up by closing", Now() < Begun + Patience / 86400)
End Sub

REM  The office is to end with the request.
Sub LeavingWhileARequestWaits
  Dim Document, Begun As Date
  Document = Opened("quotes.xlsx")
  createUnoService("com.sun.star.awt.AsyncCallback").addCallback(CreateUnoListener("Leave_", "com.sun.star.awt.XCallback"), Empty)
  Begun = Now()
  ChooseCommand(Document, "start")
  Note("hung up by leaving", Now() < Begun + Patience / 86400)
End Sub

Sub Leave_notify(Data)
  StarDesktop.terminate()
End Sub

REM  What somebody chooses while the ended day's request still waits is answered in a box.
Sub Close_notify(Data)
  Dim Other
  Note("closed while a request waits", InStr(StatesIn(Waiting), "stop=True") > 0)
  Waiting.close(True)
  Other = NewDocument()
  ChooseCommand(Other, "start")
  Other.close(True)
End Sub

Function CountOf(Items) As Long
  Do While Items.hasMoreElements()
    Items.nextElement()
    CountOf = CountOf + 1
  Loop
End Function

Sub Dispatch(Document, Command As String)
  createUnoService("com.sun.star.frame.DispatchHelper").executeDispatch(Document.CurrentController.Frame, Command, "", 0, Array())
End Sub
