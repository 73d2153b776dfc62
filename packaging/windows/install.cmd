@echo off
rem install.cmd [all] [/quiet]
rem Registers the Mirelo.dll of this folder for this user, or, run as an administrator with "all", for all users. With /quiet it
rem does not wait for a key at the end, as it does for who has started it by a double click.
rem The folder must stay where it is as long as Mirelo is in use.
setlocal
set whom=/n /i:user
set quiet=
if /i "%~1"=="all" set whom=
if /i "%~1"=="/quiet" set quiet=yes
if /i "%~2"=="/quiet" set quiet=yes
set result=1
if not exist "%~dp0Mirelo.dll" goto missing
if "%whom%"=="" goto register
rem What is registered for one user is not looked for by programs of a high integrity, whoever runs them.
whoami /groups 2>nul | find "S-1-16-12288" >nul
if not errorlevel 1 goto high
:register
regsvr32 /s %whom% "%~dp0Mirelo.dll"
set code=%errorlevel%
if "%code%"=="3" goto unloaded
if "%code%"=="5" goto unwritten
if not "%code%"=="0" goto failed
echo Mirelo is registered. windows.txt says what to try first.
set result=0
goto end
:missing
echo There is no Mirelo.dll beside install.cmd. Unpack the whole zip file, and run install.cmd in its folder.
goto end
:high
echo Nothing was registered: this runs as an administrator, and such programs do not find what is registered for one user.
echo Start install.cmd without that, or with "all", for all users.
goto end
:unloaded
echo Windows does not load Mirelo.dll. If the zip file was downloaded, tick "Unblock" in its Properties and unpack it anew.
echo Mirelo.dll needs a Windows of 64 bits, and one that is allowed to load what is not signed.
goto end
:unwritten
echo Mirelo could not be registered: Windows did not let it write to the registry. For all users this takes an administrator.
goto end
:failed
echo Mirelo could not be registered: regsvr32 ended with %code%.
:end
if not defined quiet pause
exit /b %result%
