REM  Works as a person does in a spreadsheet while quotes come into it, and notes what comes of it.

Option Explicit

Const Table = "Dovanta2_Quotes"
Const Patience = 15  ' seconds; a busy machine takes some

Sub Main
  Dim Document
  On Error GoTo Failed
  Document = Opened("quotes.xlsx")
  Beginning(Document)
  Typing(Document)
  Saving(Document)
  Another(Document)
  Beside(Document)
  Stopping(Document)
  Renaming(Document)
  Protecting(Document)
  Deleting(Document)
  Document.close(True)
  Closing
  Reloading
  Troubles
  Leaving
  Note("end", "reached")
  GoTo Done
Failed:
  Note("failed", Err & " " & Error$ & " in line " & Erl)
Done:
  On Error Resume Next
  StarDesktop.terminate()
End Sub

Sub Beginning(Document)
  ChooseCommand(Document, "start")
  Note("comes", Comes(Document))
  Note("states of a day", StatesIn(Document))
  Note("wide enough", InStr(Cell(Document, 1).String, "#") = 0)
  ChooseCommand(Document, "start")
End Sub

Sub Typing(Document)
  Dim Own, Title As String
  Own = Document.Sheets.insertNewByName("Own", 5)
  Document.CurrentController.setActiveSheet(Document.Sheets.getByName("Own"))
  TypeIn(Document, "typed by hand")
  Note("comes while one types", Comes(Document))
  Note("typed", Document.Sheets.getByName("Own").getCellByPosition(0, 0).String)
  Note("in front", Document.CurrentController.ActiveSheet.Name)
  Undo(Document)
  Note("undone", Document.Sheets.getByName("Own").getCellByPosition(0, 0).String)
  Note("comes behind undo", Comes(Document))
End Sub

Sub Saving(Document)
  Document.store()
  Note("comes behind a save", Comes(Document))
  Document.storeAsURL(ConvertToURL(Environ("MIRELO_FOLDER") & "/other.ods"), Array())
  Note("comes behind a save elsewhere", Comes(Document))
End Sub

Sub Another(Document)
  Dim Other
  Other = StarDesktop.loadComponentFromURL("private:factory/scalc", "_blank", 0, Array())
  Note("states in another", StatesIn(Other))
  ChooseCommand(Other, "start")
  Note("comes behind another", Comes(Document))
  Other.close(True)
End Sub

' Cells with functions have a connection of their own; they stay while days end and begin.
Sub Beside(Document)
  Dim Sheet, I
  Sheet = Document.Sheets.insertNewByName("Beside", 6)
  Sheet = Document.Sheets.getByName("Beside")
  Sheet.getCellRangeByName("A1").Formula = "=QUOTE(""GE"")"
  For I = 1 To 100
    If Sheet.getCellRangeByName("A1").getError() = 0 Then Exit For
    Wait 50
  Next I
  Note("cells beside", Sheet.getCellRangeByName("A1").Value > 0)
  Note("comes beside cells", Comes(Document))
End Sub

Sub Stopping(Document)
  ChooseCommand(Document, "stop")
  Note("comes no more", ComesStill(Document))
  Note("states behind a day", StatesIn(Document))
End Sub

Sub Renaming(Document)
  ChooseCommand(Document, "start")
  Document.Sheets.getByName(Table).Name = "Mine"
  Note("comes into a renamed sheet", ComesInto(Document, "Mine", Patience))
  ChooseCommand(Document, "stop")
  ChooseCommand(Document, "start")
  Note("states without a table", StatesIn(Document))
  Document.Sheets.getByName("Mine").Name = Table
End Sub

Sub Protecting(Document)
  ChooseCommand(Document, "start")
  Note("comes once more", Comes(Document))
  Document.Sheets.getByName(Table).protect("")
  Note("ended by protection", HasEnded(Document))
  Note("comes into a protected sheet", ComesStill(Document))
  Note("states behind protection", StatesIn(Document))
  Document.Sheets.getByName(Table).unprotect("")
End Sub

Sub Deleting(Document)
  ChooseCommand(Document, "start")
  Note("comes without protection", Comes(Document))
  Document.Sheets.removeByName(Table)
  Note("ended by deleting", HasEnded(Document))
End Sub

Sub Closing
  Dim Document
  Document = Opened("quotes.xlsx")
  ChooseCommand(Document, "start")
  Note("comes before closing", Comes(Document))
  Document.close(True)
  Wait 300
  Document = Opened("quotes.xlsx")
  Note("states behind closing", StatesIn(Document))
  Document.close(True)
End Sub

Sub Reloading
  Dim Document, Frame
  Document = Opened("quotes.xlsx")
  ChooseCommand(Document, "start")
  Note("comes before reloading", Comes(Document))
  Frame = Document.CurrentController.Frame
  Document.setModified(False)  ' or it would ask whether to give up what has come
  createUnoService("com.sun.star.frame.DispatchHelper").executeDispatch(Frame, ".uno:Reload", "", 0, Array())
  Wait 300
  Document = Frame.Controller.Model
  Note("states behind reloading", StatesIn(Document))
  Document.close(True)
End Sub

REM  Each with a stream of its own, whose port stands in the environment.
Sub Troubles
  Dim Document
  Document = Opened("troubles.xlsx")
  NoteTrouble(Document, "refused login", "STRICT", "refused the login")
  ChooseCommand(Document, "status")
  NoteTrouble(Document, "nobody there", "NOBODY", "Compare SocketPort")
  NoteTrouble(Document, "something else", "OTHER", "no more")
  NoteTrouble(Document, "cut stream", "CUT", "reconnecting in")
  ChooseCommand(Document, "stop")
  ListenAt("RELAY")
  Document.close(True)
End Sub

Sub NoteTrouble(Document, What As String, Port As String, Sign As String)
  Dim Tries As Integer
  ChooseCommand(Document, "stop")
  ListenAt(Port)
  ChooseCommand(Document, "start")
  For Tries = 1 To 20 * Patience
    If InStr(StatesIn(Document), Sign) > 0 Then Exit For
    Wait 50
  Next Tries
  Note(What, StatesIn(Document))
End Sub

Sub ListenAt(Port As String)
  REM  Without what an office is given to load an extension that has the sanitizers: the program has its own.
  Shell("/usr/bin/env", 0, "-u LD_PRELOAD " & Environ("MIRELO_PROGRAM") & " settings set SocketPort " & Environ("MIRELO_" & Port), True)
End Sub

REM  The office is to end while quotes come.
Sub Leaving
  Dim Document
  Document = Opened("quotes.xlsx")
  ChooseCommand(Document, "start")
  Note("comes before leaving", Comes(Document))
End Sub

Function Cell(Document, Column As Long)
  Cell = Document.Sheets.getByName(Table).getCellByPosition(Column, 2)
End Function

Function HasEnded(Document) As Boolean
  Dim Tries As Integer
  For Tries = 1 To 20 * Patience
    If InStr(StatesIn(Document), "stop=False") > 0 Then
      HasEnded = True
      Exit Function
    End If
    Wait 50
  Next Tries
End Function

Sub TypeIn(Document, Text As String)
  Dim Argument(0) As New com.sun.star.beans.PropertyValue
  Argument(0).Name = "StringName"
  Argument(0).Value = Text
  createUnoService("com.sun.star.frame.DispatchHelper").executeDispatch(Document.CurrentController.Frame, ".uno:EnterString", "", 0, Argument())
End Sub

Sub Undo(Document)
  createUnoService("com.sun.star.frame.DispatchHelper").executeDispatch(Document.CurrentController.Frame, ".uno:Undo", "", 0, Array())
End Sub
