// host/command_line.h - what the Today host is asked to do.
#pragma once

#include "platform/system.h"

#include <optional>
#include <string>
#include <vector>

struct HostOptions {
    SIZE screen = {240, 320};
    std::wstring library;                // empty: quorvane.dll beside the program
    std::optional<int> seconds;          // without it the host runs until it is closed
    std::wstring screenshot;             // empty: none
    std::optional<int> screenshotAfter;  // seconds; without it the picture is taken at the end
    std::optional<POINT> tap;            // on the strip, in its pixels
    bool openOptions = false;
    int reloads = 0;
    bool demo = false;
    bool help = false;
};

inline constexpr wchar_t kHostUsage[] =
    L"todayhost - a Today screen for the desktop\n"
    L"\n"
    L"  --size WIDTHxHEIGHT    the screen in pixels, each side 160 to 2000 (240x320)\n"
    L"  --seconds N            end after N seconds (runs until it is closed)\n"
    L"  --screenshot FILE      save a picture of the screen and its dialogs as a bitmap, at the end\n"
    L"  --screenshot-after N   take that picture after N seconds instead\n"
    L"  --tap X,Y              tap the strip there after the start\n"
    L"  --options              open the item's options after the start\n"
    L"  --library FILE         the plug-in to show (quorvane.dll beside this program)\n"
    L"  --demo                 show a made-up network, with settings and a log of its own\n"
    L"  --reload N             load, run and unload the plug-in N times, then end; 0 is returned when all were clean\n"
    L"  --help                 show this text\n";

// Reads the arguments behind the program's name. False on a wrong one; `error` then says which.
bool ParseCommandLine(const std::vector<std::wstring>& arguments, HostOptions& options, std::wstring& error);
