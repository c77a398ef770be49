@echo off
rem Tests the library on this Windows and writes report.txt beside this file. Takes a few minutes.
rem run.bat quiet [FILTER]: does not wait for a key, and runs only the tests that match.
cd /d "%~dp0"
if exist report.txt del report.txt
echo ZvUtiLib self-test >report.txt
ver >>report.txt
echo Processor: %PROCESSOR_IDENTIFIER%, %NUMBER_OF_PROCESSORS% logical >>report.txt
chcp >>report.txt
echo.>>report.txt

echo What the system costs and does: >>report.txt
facts.exe >>report.txt
echo.>>report.txt

echo The tests run, please wait...
set filter=-Soak.*
if not "%2"=="" set filter=%2
zvutilib_tests.exe --gtest_filter=%filter% >tests.txt 2>&1
set tests=%errorlevel%
echo Tests: exit code %tests% (0: all passed) >>report.txt
type tests.txt | find "PASSED" >>report.txt
type tests.txt | find "SKIPPED ]" >>report.txt
type tests.txt | find "FAILED" >>report.txt
echo.>>report.txt
echo The output of the tests: >>report.txt
type tests.txt >>report.txt
del tests.txt
echo Done: please send report.txt.
if not "%1"=="quiet" pause
exit /b %tests%
