REM  The menu's commands, as a window has them: asked how they are, and chosen.

Option Explicit

Global States As String  ' as they were told last

Function CommandOf(Name As String)
  Dim Command As New com.sun.star.util.URL
  Command.Complete = "vnd.mirelo:" & Name
  createUnoService("com.sun.star.util.URLTransformer").parseStrict(Command)
  CommandOf = Command
End Function

Sub ChooseCommand(Document, Name As String)
  Document.CurrentController.Frame.queryDispatch(CommandOf(Name), "_self", 0).dispatch(CommandOf(Name), Array())
End Sub

Function StatesIn(Document) As String
  Dim Listener, Dispatch, Name
  States = ""
  Listener = CreateUnoListener("State_", "com.sun.star.frame.XStatusListener")
  For Each Name In Array("settings", "start", "stop", "status", "help")
    Dispatch = Document.CurrentController.Frame.queryDispatch(CommandOf(Name), "_self", 0)
    Dispatch.addStatusListener(Listener, CommandOf(Name))
    Dispatch.removeStatusListener(Listener, CommandOf(Name))
  Next Name
  StatesIn = States
End Function

Sub State_statusChanged(State)
  States = States & State.FeatureURL.Path & "=" & State.IsEnabled & " "
  If Not IsEmpty(State.State) Then States = States & "[" & State.State & "] "
End Sub

Sub State_disposing(Event)
End Sub

REM  How many quotes have come on the day, as the status bar tells it.
Function QuotesTold(Document) As Long
  Dim Line
  Line = Split(StatesIn(Document), "Mirelo: ")
  If UBound(Line) > 0 Then QuotesTold = Val(Line(1))
End Function
