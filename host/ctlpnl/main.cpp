// ctlpnl.exe: stands for the handheld's control panel. Started as "cplmain.cpl,N" it opens the desktop's own settings
// for the two applets that the strip offers; a desktop that has none of the programs tried gets nothing.

#include "platform/system.h"

#include <shellapi.h>

#include <string>
#include <vector>

namespace {

constexpr int kConnectionsApplet = 17;
constexpr int kWirelessApplet = 19;

struct LinuxProgram {
    const wchar_t* name;
    const wchar_t* arguments;
};

// In the order in which they are tried.
const std::vector<LinuxProgram> kConnectionPrograms = {{L"nm-connection-editor", L""},
                                                       {L"gnome-control-center", L"network"},
                                                       {L"systemsettings", L"kcm_networkmanagement"},
                                                       {L"systemsettings5", L"kcm_networkmanagement"},
                                                       {L"connman-gtk", L""},
                                                       {L"wicd-client", L"--no-tray"}};
const std::vector<LinuxProgram> kWirelessPrograms = {{L"gnome-control-center", L"wifi"},
                                                     {L"systemsettings", L"kcm_networkmanagement"},
                                                     {L"systemsettings5", L"kcm_networkmanagement"},
                                                     {L"nm-connection-editor", L""},
                                                     {L"iwgtk", L""},
                                                     {L"connman-gtk", L""}};

// The number behind the comma, or 0.
int AppletIn(const std::wstring& commandLine) {
    const size_t comma = commandLine.rfind(L',');
    return comma == std::wstring::npos ? 0 : static_cast<int>(wcstol(commandLine.c_str() + comma + 1, nullptr, 10));
}

bool IsWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

bool StartLinuxProgram(const LinuxProgram& program) {
    const std::wstring path = std::wstring(L"\\\\?\\unix\\usr\\bin\\") + program.name;
    if (GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES) {
        return false;
    }
    std::wstring commandLine = std::wstring(program.name) + L" " + program.arguments;
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(path.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &process)) {
        return false;
    }
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return true;
}

void OpenOnLinux(bool wireless) {
    for (const LinuxProgram& program : wireless ? kWirelessPrograms : kConnectionPrograms) {
        if (StartLinuxProgram(program)) {
            return;
        }
    }
}

void OpenOnWindows(bool wireless) {
    const wchar_t* settings = wireless ? L"ms-settings:network-wifi" : L"ncpa.cpl";
    ShellExecuteW(nullptr, L"open", settings, nullptr, nullptr, SW_SHOWNORMAL);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
    const int applet = AppletIn(GetCommandLineW());
    if (applet != kConnectionsApplet && applet != kWirelessApplet) {
        return 1;
    }
    (IsWine() ? OpenOnLinux : OpenOnWindows)(applet == kWirelessApplet);
    return 0;
}
