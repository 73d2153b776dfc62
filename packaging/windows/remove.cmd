@echo off
rem Takes away what install.cmd registered, for this user or, with "all", for all users. Close the spreadsheet first. Settings
rem stay.
setlocal
if /i "%~1"=="all" (
  regsvr32 /s /u "%~dp0Mirelo.dll"
) else (
  regsvr32 /s /u /n /i:user "%~dp0Mirelo.dll"
)
if errorlevel 1 (
  echo Mirelo could not be taken away. For all users this takes an administrator.
  exit /b 1
)
echo Mirelo is registered no more. This folder can be deleted now.
