@echo off
rem Registers the Mirelo.dll of this folder for this user, or, run as an administrator with "all", for all users.
rem The folder must stay where it is as long as Mirelo is in use.
setlocal
if /i "%~1"=="all" (
  regsvr32 /s "%~dp0Mirelo.dll"
) else (
  regsvr32 /s /n /i:user "%~dp0Mirelo.dll"
)
if errorlevel 1 (
  echo Mirelo could not be registered. For all users this takes an administrator.
  exit /b 1
)
echo Mirelo is registered. windows.md says what to try first.
