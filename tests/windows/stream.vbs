' A client's script asks the stand-in for QuoteTracker, and streams from it: stream.vbs STREAM_PORT HTTP_PORT
Option Explicit

Class Listener
  Public told
  Public statuses
  Public processes
  Public Sub QTDatas()
    told = told + 1
  End Sub
  Public Sub OnStatusText(text)
    statuses = statuses & text & vbCrLf
  End Sub
  Public Sub PerformanceFollowingProcess(process)
    processes = processes & process & " "
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

' Ports are numbers of 16 bits, the greater of which are negative.
Dim http_port, reply
http_port = CLng(WScript.Arguments(1))
If http_port > 32767 Then http_port = http_port - 65536
reply = facade.DownloadURL("/req?GetLastQuote(MSFT,IBM)", "127.0.0.1", http_port)
If InStr(reply, "MSFT") = 0 Or InStr(reply, "IBM") = 0 Then
  WScript.Echo "the reply is: " & reply
  WScript.Quit
End If

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

Dim has_told
has_told = InStr(listener_.statuses, "Connection started...") > 0 And listener_.processes = "5 "
If InStr(names, "MSFT ") > 0 And InStr(names, "IBM ") > 0 And listener_.told > 2 And has_told Then
  WScript.Echo "quotes of both came"
Else
  WScript.Echo listener_.told & " events, quotes of: " & names & vbCrLf & listener_.statuses & listener_.processes
End If
