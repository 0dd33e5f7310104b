// device_reference.exe FOLDER - performs the device script with the desktop's objects and the scripted services, and
// leaves in FOLDER what the library as ARM code has to leave too: the handheld's folders and trace.txt.

#include "item/item_state.h"
#include "item/item_window.h"
#include "item/settings.h"
#include "platform/desktop/today_frame.h"
#include "platform/today.h"
#include "tests/device/reference/hooks.h"

#include <commctrl.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace files = std::filesystem;

HWND hostWindow = nullptr;

namespace {

const files::path kFolders[] = {"C:\\Program Files\\Ostrik", "C:\\My Documents"};

LRESULT CALLBACK HostProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == platform::kFrameKeyboardMessage) {
        player->trace.NoteKeyboard(static_cast<uint64_t>(lParam), wParam != 0);
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

struct Desktop : System {
    std::vector<uint8_t> room;

    uint64_t Attach() override {
        room.assign(3 * kRecordBytes, 0);
        memory = room.data();
        memory[kRecordEnabled] = 1;
        hostWindow =
            CreateWindowExW(0, L"Static", nullptr, WS_POPUP, 0, 0, 480, 480, nullptr, nullptr, nullptr, nullptr);
        SetWindowLongPtrW(hostWindow, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(HostProc));
        player->trace.names[Number(hostWindow)] = "host";
        RegisterItemWindowClass();
        InitializeItem();
        HWND item = InitializeCustomItem(reinterpret_cast<TODAYLISTITEM*>(memory), hostWindow);
        player->trace.names[Number(item)] = "item";
        return Number(item);
    }
    void Detach() override {
        DestroyWindow(hostWindow);
        UnregisterItemWindowClass();
    }
    void OpenOptions() override { OpenOptionsDialog(); }
    uint64_t OpenPage(uint32_t page) override { return OpenPageOfSheet(page); }
    void CloseWindow(uint64_t window) override { DestroyWindow(Handle(window)); }
    int64_t Send(uint64_t window, uint32_t message, uint64_t wParam, uint64_t lParam) override {
        const auto send = reinterpret_cast<decltype(&SendMessageW)>(Original("SendMessageW"));
        return send(Handle(window), message, wParam, static_cast<LPARAM>(lParam));
    }
};

void PrepareSystem() {
    for (const files::path& folder : kFolders) {
        files::remove_all(folder);
    }
    files::create_directories(kFolders[1]);
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, kItemKey);
    SetCurrentDirectoryW(L"C:\\");
    const INITCOMMONCONTROLSEX controls = {sizeof(controls), ICC_WIN95_CLASSES | ICC_DATE_CLASSES};
    InitCommonControlsEx(&controls);
    itemState.instance = GetModuleHandleW(nullptr);
}

void KeepResults(const files::path& folder) {
    files::remove_all(folder);
    for (const files::path& source : kFolders) {
        const files::path target = folder / source.relative_path();
        files::create_directories(target);
        files::copy(source, target, files::copy_options::recursive);
    }
    std::ofstream(folder / "trace.txt", std::ios::binary) << player->trace.text;
}

}  // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 2) {
        fputs("device_reference FOLDER\n", stderr);
        return 2;
    }
    Desktop desktop;
    Player all(desktop);
    PrepareSystem();
    HookSystem();
    HookDialogs();
    all.Run(device_script::kScript);
    KeepResults(arguments[1]);
    return 0;
}
