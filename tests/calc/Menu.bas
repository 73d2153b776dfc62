REM  Asks the menu's commands how they are, as a window does, chooses some, and notes what comes of it.

Option Explicit

Sub Main
  Dim Document
  On Error GoTo Failed
  Document = StarDesktop.loadComponentFromURL("private:factory/scalc", "_blank", 0, Array())
  Note("toolbar", HasToolbar(Document))
  Note("status bar", FieldsOfStatusBar(Document))
  Note("before use", StatesIn(Document))
  AskForNobody(Document)
  Note("loaded before use", IsLoaded())
  ChooseCommand(Document, "status")
  Note("loaded after use", IsLoaded())
  ChooseCommand(Document, "start")
  Note("after use", StatesIn(Document))
  AskForNobody(Document)
  Note("end", "reached")
  GoTo Done
Failed:
  Note("failed", Err & " " & Error$ & " in line " & Erl)
Done:
  On Error Resume Next
  Document.close(True)
  StarDesktop.terminate()
End Sub

' Whoever asks how a command is may forget to say whom to tell.
Sub AskForNobody(Document)
  Dim Dispatch
  Dispatch = Document.CurrentController.Frame.queryDispatch(CommandOf("start"), "_self", 0)
  Dispatch.addStatusListener(Nothing, CommandOf("start"))
  Dispatch.removeStatusListener(Nothing, CommandOf("start"))
End Sub

Function HasToolbar(Document) As Boolean
  Dim Layout
  Layout = Document.CurrentController.Frame.LayoutManager
  HasToolbar = Not IsNull(Layout.getElement("private:resource/toolbar/addon_mirelo.toolbar"))
End Function

Function FieldsOfStatusBar(Document) As String
  Dim Bar, I
  Bar = Document.CurrentController.Frame.LayoutManager.getElement("private:resource/statusbar/statusbar")
  Bar = Bar.getRealInterface().getAccessibleContext()
  For I = 0 To Bar.getAccessibleChildCount() - 1
    FieldsOfStatusBar = FieldsOfStatusBar & Bar.getAccessibleChild(I).getAccessibleContext().getAccessibleName() & "|"
  Next I
End Function

REM  By a program that the office starts: what the office itself reads of a file without a size may end too soon.
Function IsLoaded() As Boolean
  Dim Folder As String, Found As String
  Folder = Environ("MIRELO_FOLDER")
  Shell(Folder & "/loaded.sh", 0, Folder & "/loaded", True)
  Open Folder & "/loaded" For Input As #1
  Line Input #1, Found
  Close #1
  IsLoaded = Val(Found) > 0
End Function
