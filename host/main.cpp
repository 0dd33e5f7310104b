// todayhost.exe: a Today screen on the desktop, with one plug-in.

#include "host/demo.h"
#include "host/frame_window.h"
#include "host/today_screen.h"
#include "platform/controls.h"

#include <shellapi.h>

namespace {

constexpr int kCleanExit = 0;
constexpr int kFailedExit = 1;
constexpr int kUsageExit = 2;

// To the console or pipe that the program was started from; a program started by a click has neither.
void Say(const std::wstring& text, bool failure) {
    AttachConsole(ATTACH_PARENT_PROCESS);
    HANDLE output = GetStdHandle(failure ? STD_ERROR_HANDLE : STD_OUTPUT_HANDLE);
    const int bytes = WideCharToMultiByte(CP_UTF8, 0, text.c_str(), -1, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<size_t>(bytes), 0);
    WideCharToMultiByte(CP_UTF8, 0, text.c_str(), -1, narrow.data(), bytes, nullptr, nullptr);
    DWORD written = 0;
    if (!WriteFile(output, narrow.data(), static_cast<DWORD>(narrow.size() - 1), &written, nullptr)) {
        MessageBoxW(nullptr, text.c_str(), L"Today", failure ? MB_ICONERROR : MB_ICONINFORMATION);
    }
}

std::vector<std::wstring> Arguments() {
    int count = 0;
    wchar_t** words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::wstring> arguments(words + 1, words + count);
    LocalFree(words);
    return arguments;
}

std::wstring FullPath(const std::wstring& file) {
    wchar_t path[MAX_PATH] = {};
    const DWORD length = GetFullPathNameW(file.c_str(), MAX_PATH, path, nullptr);
    return length > 0 && length < MAX_PATH ? path : file;
}

std::wstring BesideProgram(const wchar_t* name) {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring program = path;
    return program.substr(0, program.rfind(L'\\') + 1) + name;
}

int ShowTodayScreen(const HostOptions& options) {
    std::wstring error;
    if (!OpenTodayScreen(options, error)) {
        Say(L"todayhost: " + error + L"\n", true);
        return kFailedExit;
    }
    StartFrame();
    RunMessageLoop();
    const bool pictureFailed = today.pictureFailed;
    const bool unloaded = CloseTodayScreen();
    if (pictureFailed) {
        Say(L"todayhost: " + options.screenshot + L" cannot be written\n", true);
    }
    return unloaded && !pictureFailed ? kCleanExit : kFailedExit;
}

// Each round lives for one turn of the message loop's quiet time, so that the item has painted itself.
bool RunRound(const HostOptions& options, std::wstring& error) {
    constexpr UINT kRoundMs = 50;
    if (!OpenTodayScreen(options, error)) {
        return false;
    }
    const auto endRound = [](HWND, UINT, UINT_PTR timer, DWORD) {
        KillTimer(nullptr, timer);
        PostQuitMessage(0);
    };
    SetTimer(nullptr, 0, kRoundMs, endRound);
    RunMessageLoop();
    if (!CloseTodayScreen()) {
        error = options.library + L" stayed loaded";
        return false;
    }
    return true;
}

// How many handles the process holds, about: a new one takes the lowest free number. (Wine does not count them.)
size_t HandlesInUse() {
    constexpr size_t kHandleStep = 4;
    HANDLE probe = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    CloseHandle(probe);
    return reinterpret_cast<size_t>(probe) / kHandleStep;
}

int ReloadItem(const HostOptions& options) {
    std::wstring error;
    size_t handlesBefore = 0;
    for (int round = 1; round <= options.reloads; ++round) {
        if (!RunRound(options, error)) {
            Say(L"todayhost: round " + std::to_wstring(round) + L": " + error + L"\n", true);
            return kFailedExit;
        }
        if (round == 1) {  // what the system itself keeps after a first use is no leak
            handlesBefore = HandlesInUse();
        }
    }
    const size_t handlesAfter = HandlesInUse();
    Say(L"todayhost: " + std::to_wstring(handlesBefore) + L" handles after the first round, " +
            std::to_wstring(handlesAfter) + L" after round " + std::to_wstring(options.reloads) + L"\n",
        false);
    // A leak in the plug-in takes at least one more every round.
    const bool leaks = options.reloads > 1 && handlesAfter + 1 >= handlesBefore + static_cast<size_t>(options.reloads);
    return leaks ? kFailedExit : kCleanExit;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
    HostOptions options;
    std::wstring error;
    if (!ParseCommandLine(Arguments(), options, error)) {
        Say(L"todayhost: " + error + L"\n\n" + kHostUsage, true);
        return kUsageExit;
    }
    if (options.help) {
        Say(kHostUsage, false);
        return kCleanExit;
    }
    // Files are named relative to where the host was started; the item's paths begin at the root of the drive.
    const wchar_t* own = options.demo ? L"quorvane-demo.dll" : L"quorvane.dll";
    options.library = options.library.empty() ? BesideProgram(own) : FullPath(options.library);
    if (!options.screenshot.empty()) {
        options.screenshot = FullPath(options.screenshot);
    }
    SetCurrentDirectoryW(L"C:\\");
    const INITCOMMONCONTROLSEX controls = {sizeof(controls), ICC_WIN95_CLASSES | ICC_DATE_CLASSES};
    InitCommonControlsEx(&controls);
    if (options.demo && !PrepareDemo(error)) {
        Say(L"todayhost: " + error + L"\n", true);
        return kFailedExit;
    }
    return options.reloads > 0 ? ReloadItem(options) : ShowTodayScreen(options);
}
