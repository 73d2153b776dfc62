REM  The documents of a test, and what is said when something is done with them.

Option Explicit

REM  One of MIRELO_FOLDER, in a window.
Function Opened(Name As String)
  Opened = StarDesktop.loadComponentFromURL(ConvertToURL(Environ("MIRELO_FOLDER") & "/" & Name), "_blank", 0, Array())
End Function

Function Argument(Name As String, Value)
  Dim Made As New com.sun.star.beans.PropertyValue
  Made.Name = Name
  Made.Value = Value
  Argument = Made
End Function

Function NewDocument()
  NewDocument = StarDesktop.loadComponentFromURL("private:factory/scalc", "_blank", 0, Array())
End Function
