' A client's script streams from the stand-in for QuoteTracker: stream.vbs STREAM_PORT
Option Explicit

Class Listener
  Public told
  Public statuses
  Public Sub QTDatas()
    told = told + 1
  End Sub
  Public Sub OnStatusText(text)
    statuses = statuses & text & vbCrLf
  End Sub
End Class

Dim settings, machine, facade, stream, listener_, quotes, quote, names, waits
Set machine = CreateObject("Mirelo.cMachine")
machine.StoreCredentials "MireloDemo", "demo-secret"
Set settings = CreateObject("Mirelo.CAppSettings")
settings.Init "Kestrin", "Dovanta2"
settings.SaveSetting "Settings", "SocketPort", WScript.Arguments(0)
settings.SaveSetting "Settings", "Webaddress", "localhost"

Set facade = CreateObject("Mirelo.cMirelo")
facade.StatusRunWorkQT = 2
Set stream = CreateObject("Mirelo.cQTStreaming")
Set listener_ = New Listener
Set stream.Owner = facade
stream.arrTickers = Array("MSFT", "IBM")
stream.st_StreamerFile = "SWISS.SDF"
stream.DovantaFormatUserDate = "mm/dd/yyyy"
stream.StartStop = True
stream.AddListener listener_
stream.connect

names = ""
For waits = 1 To 100
  machine.Wait 100
  Set quotes = stream.GetQTData
  If Not quotes Is Nothing Then
    For Each quote In quotes
      If InStr(names, quote.Symbol & " ") = 0 And quote.Last_Price > 0 Then names = names & quote.Symbol & " "
    Next
    stream.FreeQTDataBuffer
  End If
  If InStr(names, "MSFT ") > 0 And InStr(names, "IBM ") > 0 And listener_.told > 2 Then Exit For
Next
stream.DisConnect
machine.Wait 50

If InStr(names, "MSFT ") > 0 And InStr(names, "IBM ") > 0 And listener_.told > 2 Then
  WScript.Echo "quotes of both came"
Else
  WScript.Echo listener_.told & " events, quotes of: " & names & vbCrLf & listener_.statuses
End If
