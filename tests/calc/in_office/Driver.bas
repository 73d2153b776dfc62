REM  Runs the tests in the office's own process, and ends the office.

Sub Main
  On Error Resume Next  ' a failure leaves no result behind
  createUnoService("mirelo.Tests").execute(Array())
  StarDesktop.terminate()
End Sub
