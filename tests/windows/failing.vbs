' A client whose handlers fail, and in which nobody's call stands behind what comes: it shows a box meanwhile, which press_button closes
' later. It must live. failing.vbs STREAM_PORT
Option Explicit

Class Listener
  Public told
  Public fails
  Public Sub OnStatusText(text)
    told = told + 1
    If fails Then Err.Raise 1000, "client", "a handler that fails"
  End Sub
  Public Sub QTDatas()
    told = told + 1
    If fails Then Err.Raise 1000, "client", "a handler that fails"
  End Sub
End Class

Dim settings, machine, facade, stream, heard
Set machine = CreateObject("Mirelo.cMachine")
machine.StoreCredentials "MireloDemo", "demo-secret"
Set settings = CreateObject("Mirelo.CAppSettings")
settings.Init "Kestrin", "Dovanta2"
settings.SaveSetting "Settings", "SocketPort", WScript.Arguments(0)
settings.SaveSetting "Settings", "Webaddress", "127.0.0.1"
Set facade = CreateObject("Mirelo.cMirelo")
facade.StatusRunWorkQT = 2

Set stream = CreateObject("Mirelo.cQTStreaming")
Set heard = New Listener
Set stream.Owner = facade
stream.arrTickers = Array("MSFT", "IBM")
stream.st_StreamerFile = "SWISS.SDF"
stream.DovantaFormatUserDate = "mm/dd/yyyy"
stream.StartStop = True
stream.AddListener heard
stream.connect
heard.fails = True
heard.told = 0

MsgBox "Somebody presses OK.", 0, "A client"
If heard.told > 1 Then
  WScript.Echo "the client lives"
Else
  WScript.Echo heard.told & " events came"
End If
