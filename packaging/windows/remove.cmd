@echo off
rem remove.cmd [all] [/quiet]
rem Takes away what install.cmd registered, for this user or, with "all", for all users. With /quiet it waits for no key. Close the
rem spreadsheet first. Settings stay.
setlocal
set whom=/n /i:user
set quiet=
if /i "%~1"=="all" set whom=
if /i "%~1"=="/quiet" set quiet=yes
if /i "%~2"=="/quiet" set quiet=yes
set result=1
if not exist "%~dp0Mirelo.dll" goto missing
regsvr32 /s /u %whom% "%~dp0Mirelo.dll"
set code=%errorlevel%
if "%code%"=="5" goto unwritten
if not "%code%"=="0" goto failed
echo Mirelo is registered no more. This folder can be deleted now.
set result=0
goto end
:missing
echo There is no Mirelo.dll beside remove.cmd. It takes away what it is registered with.
goto end
:unwritten
echo Mirelo could not be taken away: Windows did not let it write to the registry. For all users this takes an administrator.
goto end
:failed
echo Mirelo could not be taken away: regsvr32 ended with %code%.
:end
if not defined quiet pause
exit /b %result%
