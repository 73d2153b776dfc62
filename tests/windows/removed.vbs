' Once the library is registered no more, its classes are not known.
Option Explicit
Dim made
On Error Resume Next
Set made = CreateObject("Mirelo.cMirelo")
If Err.Number <> 0 Then
  WScript.Echo "cannot be made"
Else
  WScript.Echo "can still be made"
End If
