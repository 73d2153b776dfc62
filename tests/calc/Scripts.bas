REM  Functions of the user's scripts in Python.

Option Explicit

Global PythonProvider  ' one for all: it keeps what a script has in its variables

REM  By the script's name and the function's, "quotes.py$ask_quotes", with one argument or none.
Sub RunPython(Name As String, Optional Argument)
  Dim Given
  Given = Array()
  If Not IsMissing(Argument) Then Given = Array(Argument)
  If IsEmpty(PythonProvider) Then PythonProvider = createUnoService("com.sun.star.script.provider.MasterScriptProviderFactory").createScriptProvider("user")
  PythonProvider.getScript("vnd.sun.star.script:" & Name & "?language=Python&location=user").invoke(Given, Array(), Array())
End Sub
