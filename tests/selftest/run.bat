@echo off
rem Tests the library on this Windows and writes report.txt beside this file. Takes about a minute.
cd /d "%~dp0"
if exist report.txt del report.txt
echo ZvUtiLib self-test >report.txt
ver >>report.txt
echo Processor: %PROCESSOR_IDENTIFIER%, %NUMBER_OF_PROCESSORS% logical >>report.txt
chcp >>report.txt
echo.>>report.txt

echo What the system costs and does: >>report.txt
start "" /b facts.exe hold 3
ping -n 2 127.0.0.1 >nul
facts.exe >>report.txt
echo.>>report.txt

echo The tests run, please wait...
zvutilib_tests.exe --gtest_filter=-Soak.* >tests.txt 2>&1
set tests=%errorlevel%
echo Tests: exit code %tests% (0: all passed) >>report.txt
findstr /b /c:"[==========]" /c:"[  PASSED  ]" /c:"[  SKIPPED ]" /c:"[  FAILED  ]" tests.txt >>report.txt
echo.>>report.txt
echo The output of the tests: >>report.txt
type tests.txt >>report.txt
del tests.txt
echo Done: please send report.txt.
if not "%1"=="quiet" pause
exit /b %tests%
