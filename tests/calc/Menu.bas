REM  Asks the menu's commands how they are, as a window does, chooses some, and notes what comes of it.

Option Explicit

Global Notes As String
Global States As String  ' of the commands, as they were told last

Sub Main
  Dim Document
  On Error GoTo Failed
  Document = StarDesktop.loadComponentFromURL("private:factory/scalc", "_blank", 0, Array())
  Note("toolbar", HasToolbar(Document))
  NoteStates("before use", Document)
  Note("loaded before use", IsLoaded())
  Choose(Document, "status")
  Note("loaded after use", IsLoaded())
  NoteStates("after use", Document)
  Note("end", "reached")
  GoTo Done
Failed:
  Note("failed", Err & " " & Error$ & " in line " & Erl)
Done:
  On Error Resume Next
  SaveNotes
  Document.close(True)
  StarDesktop.terminate()
End Sub

Function HasToolbar(Document) As Boolean
  Dim Layout
  Layout = Document.CurrentController.Frame.LayoutManager
  HasToolbar = Not IsNull(Layout.getElement("private:resource/toolbar/addon_mirelo.toolbar"))
End Function

Function CommandOf(Name As String)
  Dim Command As New com.sun.star.util.URL
  Command.Complete = "vnd.mirelo:" & Name
  createUnoService("com.sun.star.util.URLTransformer").parseStrict(Command)
  CommandOf = Command
End Function

Sub Choose(Document, Name As String)
  Document.CurrentController.Frame.queryDispatch(CommandOf(Name), "_self", 0).dispatch(CommandOf(Name), Array())
End Sub

Sub NoteStates(Title As String, Document)
  Dim Listener, Dispatch, Name
  States = ""
  Listener = CreateUnoListener("State_", "com.sun.star.frame.XStatusListener")
  For Each Name In Array("settings", "start", "stop", "status", "help")
    Dispatch = Document.CurrentController.Frame.queryDispatch(CommandOf(Name), "_self", 0)
    Dispatch.addStatusListener(Listener, CommandOf(Name))
    Dispatch.removeStatusListener(Listener, CommandOf(Name))
  Next Name
  Note(Title, States)
End Sub

Sub State_statusChanged(State)
  States = States & State.FeatureURL.Path & "=" & State.IsEnabled & " "
  If Not IsEmpty(State.State) Then States = States & "[" & State.State & "] "
End Sub

Sub State_disposing(Event)
End Sub

Function IsLoaded() As Boolean
  Dim Number As Integer, Line As String
  Number = FreeFile
  Open "/proc/self/maps" For Input As #Number
  Do While Not EOF(Number)
    Line Input #Number, Line
    If InStr(Line, "libmirelo.uno.so") > 0 Then IsLoaded = True
  Loop
  Close #Number
End Function

Sub Note(Title As String, Value)
  Notes = Notes & Title & ": " & Value & Chr(10)
End Sub

Sub SaveNotes
  Dim Number As Integer
  Number = FreeFile
  Open Environ("MIRELO_NOTES") For Output As #Number
  Print #Number, Notes
  Close #Number
End Sub
