@echo off
rem A stand-in for conda, for the sample on a machine without one: there is one
rem environment, the machine's own, and activating it changes nothing.
exit /b 0
