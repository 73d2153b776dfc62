REM  Runs the benchmarks in the office's own process, and ends the office.

Sub Main
  On Error Resume Next  ' a failure leaves no result behind
  createUnoService("mirelo.CalcBench").execute(Array())
  StarDesktop.terminate()
End Sub

Sub Pause(Milliseconds)
  Wait Milliseconds
End Sub
