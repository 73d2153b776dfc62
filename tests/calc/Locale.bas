REM  Where the office runs, as people say it there: in German they write 28,25.

Option Explicit

REM  "de-DE"; the system's own where it is empty.
Sub SetLocale(Name As String)
  Dim Place As New com.sun.star.beans.PropertyValue, Provider, Setup
  Place.Name = "nodepath"
  Place.Value = "/org.openoffice.Setup/L10N"
  Provider = createUnoService("com.sun.star.configuration.ConfigurationProvider")
  Setup = Provider.createInstanceWithArguments("com.sun.star.configuration.ConfigurationUpdateAccess", Array(Place))
  Setup.replaceByName("ooSetupSystemLocale", Name)
  Setup.commitChanges()
End Sub
