// tests/system/probe/wine_differences.h - the differences that the desktop side corrects.
#pragma once

// Prints a line per difference, 1 where it exists, and ends the process. `silent` is a host that drops everything.
void ShowWineDifferences(const char* silent);
