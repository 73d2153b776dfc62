' What a client's script does with the library: makes objects by their names, reads and assigns, passes arrays, walks
' collections, catches errors, listens.
Option Explicit

Dim failures
failures = 0

Sub Check(what, found, expected)
  If found <> expected Then
    WScript.Echo what & ": " & found & " in place of " & expected
    failures = failures + 1
  End If
End Sub

' Objects by their names.
Dim name, facade, made
Set facade = CreateObject("Mirelo.cMirelo")
For Each name In Array("cQTData", "cQTDatas", "cTickerDateTime", "cTickerDateTimes", "CAppSettings", "WinInet")
  Set made = CreateObject("Mirelo." & name)
  Check "an object of " & name, IsObject(made), True
Next

' Properties: settings that are not stored are their defaults.
facade.StatusRunWorkQT = 2
Check "a property", facade.statusrunworkqt, 2
Check "a number by default", facade.RowsLimit, 20
Check "a text by default", facade.TableStyle, "Blue"
facade.DovantaFormatUserDate = "mm/dd/yyyy"
Check "a text", facade.DovantaFormatUserDate, "mm/dd/yyyy"

' Arrays with their bounds.
Dim volumes(3, 2), held
volumes(1, 2) = 5
facade.masPrevVolume = volumes
facade.masPrevVolume(2, 1) = 17
held = facade.masPrevVolume
Check "the rows of an array", UBound(held, 1), 3
Check "the columns of an array", UBound(held, 2), 2
Check "an element", held(1, 2), 5
Check "an assigned element", held(2, 1), 17
Check "an element by its property", facade.masPrevVolume(2, 1), 17

' Collections.
Dim quotes, quote, keys
Set quotes = CreateObject("Mirelo.cQTDatas")
For Each name In Array("MSFT", "IBM", "ORCL")
  quotes.ItemAdd name
Next
Check "how many items", quotes.Count, 3
Check "an item by the default member", quotes("ibm").NameID, "IBM"
keys = ""
For Each quote In quotes
  keys = keys & quote.NameID & " "
Next
Check "a walk", keys, "MSFT IBM ORCL "

' References.
Dim held_object
Set facade.masPrevVolume = quotes
Set held_object = facade.masPrevVolume
Check "the same object", held_object Is quotes, True

' The keys of a section, into a variable that is empty, and none of a section that is not there.
Dim store, found
Set store = CreateObject("Mirelo.CAppSettings")
store.AppName = "MacrosTest"
store.SaveSetting "Keys", "First", "1"
store.SaveSetting "Keys", "Second", "2"
Check "whether the section is there", store.GetAllKeys("Keys", found), True
Check "the first key", LBound(found), 1
Check "the last key", UBound(found), 2
Check "the names of the keys", found(1) & " " & found(2), "First Second"
store.DeleteSetting "Keys", ""
Check "whether another section is there", store.GetAllKeys("Nowhere", found), False
Check "the keys of it", UBound(found), -1

' Records of tickers' states.
Dim states
Set states = CreateObject("Mirelo.cTickerDateTimes")
states.ItemAdd("IBM").LastVolume = 300
Check "a state by the default member", states("ibm").LastVolume, 300
For Each made In states
  Check "a state in a walk", made.Symbol, "IBM"
Next
states.Clear
Check "how many states are left", states.Count, 0

' Errors.
On Error Resume Next
facade.GetLastQuote
Check "the number of an argument that is missing", Err.Number, 449
Check "its source", Err.Source, "Mirelo"
Check "its text", Err.Description, "Argument not optional"
Err.Clear
quotes.Item "absent"
Check "the number of the classes' own error", Hex(Err.Number), "80040064"
Check "its source", Err.Source, "DovantaDL.cQTDatas.Item"
Check "its text", Err.Description, "cQTDatas component failure"
Err.Clear
facade.NoSuchMember
Check "the number of a member that is not there", Err.Number, 438
Err.Clear
On Error Goto 0

' A stream, and a wait in which nothing comes.
Dim machine, started
Check "a stream", IsObject(CreateObject("Mirelo.cQTStreaming")), True
Set machine = CreateObject("Mirelo.cMachine")
started = Timer
machine.Wait 60
Check "a wait is as long as it is asked to be", Timer - started >= 0.05, True

' A listener whose methods bear the events' names is taken and let go of.
Class Listener
  Public states
  Public Sub OnStateChanged(state)
    states = states & state & " "
  End Sub
End Class
Dim transfer, listening
Set transfer = CreateObject("Mirelo.WinInet")
Set listening = New Listener
transfer.AddListener listening
transfer.HostName = "127.0.0.1"
transfer.Port = 1
transfer.Resource = "/"
transfer.Method = "GET"
transfer.Execute
Check "the states of a transfer to where nobody listens", listening.states, "1 3 6 8 "
transfer.RemoveListener listening

If failures = 0 Then
  WScript.Echo "every check holds"
Else
  WScript.Echo failures & " checks fail"
End If
