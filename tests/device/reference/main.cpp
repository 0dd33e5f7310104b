// device_reference.exe FOLDER - performs the device script with the desktop's objects and the scripted services, and
// leaves in FOLDER what the library as ARM code has to leave too: the handheld's folders and trace.txt. Dialogs and
// pages have their real controls, but are invisible and without a message loop: the script sends what a person would
// cause, and timers never run by themselves.

#include "item/item_state.h"
#include "item/item_window.h"
#include "item/settings.h"
#include "platform/controls.h"
#include "platform/dialogs.h"
#include "platform/today.h"
#include "tests/device/player.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>

namespace files = std::filesystem;

extern "C" INT_PTR CALLBACK CustomItemOptionsDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

// The linker's names for the table that the loader fills with the addresses of imports.
extern "C" void* __IAT_start__[];
extern "C" void* __IAT_end__[];

uint64_t WordOf(const void* pointer) {
    return reinterpret_cast<uint64_t>(pointer);
}

void* PointerOf(uint64_t word) {
    return reinterpret_cast<void*>(word);
}

namespace {

const files::path kFolders[] = {"C:\\Program Files\\Ostrik", "C:\\My Documents"};

struct Template {
    uint32_t number;
    std::span<const uint8_t> bytes;
};
std::vector<Template> templates;  // in the order in which they were found
Template opening;
DLGPROC openingProcedure = nullptr;
HWND hostWindow = nullptr;

// One function takes the calls of an import: a call's arguments are words, in registers and on the stack, whatever
// their types.
constexpr size_t kMostImports = 80;
std::vector<std::pair<std::string, StandIn>> imports;

template <size_t slot>
uint64_t WINAPI Call(uint64_t a, uint64_t b, uint64_t c, uint64_t d, uint64_t e, uint64_t f, uint64_t g, uint64_t h,
                     uint64_t i, uint64_t j, uint64_t k, uint64_t l) {
    const uint64_t words[kMostArguments] = {a, b, c, d, e, f, g, h, i, j, k, l};
    return player->trace.Call(imports[slot].first, words, imports[slot].second);
}
using AnyFunction = decltype(&Call<0>);

template <size_t... slots>
constexpr std::array<AnyFunction, sizeof...(slots)> MakeCalls(std::index_sequence<slots...>) {
    return {Call<slots>...};
}
constexpr auto kCalls = MakeCalls(std::make_index_sequence<kMostImports>());

// What the system itself has by that name.
void* Original(const std::string& function) {
    // Some functions of the first stand in the second too, where a program does not look for them.
    for (const char* library : {"advapi32", "kernel32", "user32", "gdi32", "comctl32", "shell32", "ws2_32"}) {
        if (auto found = reinterpret_cast<void*>(GetProcAddress(LoadLibraryA(library), function.c_str()))) {
            return found;
        }
    }
    return nullptr;
}

StandIn CallOriginal(const std::string& function) {
    const auto original = reinterpret_cast<AnyFunction>(Original(function));
    return [original](const uint64_t* w) {
        return original(w[0], w[1], w[2], w[3], w[4], w[5], w[6], w[7], w[8], w[9], w[10], w[11]);
    };
}

// All calls that are compared, the script's answers, and `others` go their way through the trace.
void HookSystem(const StandInTable& others) {
    std::map<std::string, StandIn> stands;
    for (const CallShape& shape : TracedCalls()) {
        stands[shape.name] = CallOriginal(shape.name);
    }
    for (const StandInTable& table : {ScriptedStandIns(), others}) {
        for (const StandInRow& row : table) {
            stands[row.name] = row.call;
        }
    }
    imports = {stands.begin(), stands.end()};
    DWORD rights = 0;
    VirtualProtect(__IAT_start__, (__IAT_end__ - __IAT_start__) * sizeof(void*), PAGE_READWRITE, &rights);
    for (size_t i = 0; i < imports.size(); ++i) {
        std::replace(__IAT_start__, __IAT_end__, Original(imports[i].first), reinterpret_cast<void*>(kCalls.at(i)));
    }
}

HWND Handle(uint64_t number) {
    return reinterpret_cast<HWND>(number);
}

// Between finding a template and opening its dialog a desktop measures fonts, which is not the product's drawing.
HRSRC NoteTemplate(HMODULE module, const wchar_t* name, const wchar_t* type) {
    HRSRC resource = reinterpret_cast<decltype(&FindResourceW)>(Original("FindResourceW"))(module, name, type);
    templates.push_back({static_cast<uint32_t>(WordOf(name)),
                         {static_cast<uint8_t*>(LoadResource(module, resource)), SizeofResource(module, resource)}});
    player->trace.isSilent = true;
    return resource;
}

// Names window and controls before the product's procedure hears anything.
INT_PTR CALLBACK FirstProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_INITDIALOG) {
        return FALSE;
    }
    auto& names = player->trace.names;
    player->trace.Open(WordOf(dialog), opening.number, opening.bytes);
    for (HWND control = GetWindow(dialog, GW_CHILD); control != nullptr; control = GetWindow(control, GW_HWNDNEXT)) {
        names[WordOf(control)] = names[WordOf(dialog)] + "/" + std::to_string(GetDlgCtrlID(control));
    }
    SetWindowLongPtrW(dialog, DWLP_DLGPROC, reinterpret_cast<LONG_PTR>(openingProcedure));
    return openingProcedure(dialog, message, wParam, lParam);
}

uint64_t OpenWindow(const Template& found, const DLGTEMPLATE* source, DLGPROC procedure) {
    const auto* bytes = reinterpret_cast<const uint8_t*>(source);
    std::vector<uint8_t> copy(bytes, bytes + found.bytes.size());
    reinterpret_cast<DLGTEMPLATE*>(copy.data())->style &= ~static_cast<DWORD>(WS_VISIBLE);
    opening = found;
    openingProcedure = procedure;
    return WordOf(CreateDialogIndirectParamW(itemState.instance, reinterpret_cast<DLGTEMPLATE*>(copy.data()),
                                             hostWindow, FirstProcedure, 0));
}

int RunDialog(HINSTANCE, const DLGTEMPLATE* source, HWND, DLGPROC procedure) {
    player->trace.isSilent = false;
    player->RunDialog(OpenWindow(templates.back(), source, procedure));
    return IDOK;
}

void RunSheet(const PROPSHEETHEADERW* header) {
    player->trace.isSilent = false;
    const std::vector<Template> found(templates.end() - header->nPages, templates.end());
    for (size_t i = 0; i < found.size(); ++i) {
        player->RunDialog(OpenWindow(found[i], header->ppsp[i].pResource, header->ppsp[i].pfnDlgProc));
    }
}

// The host's window is the frame that the desktop takes for the screen. It has no taskbar.
HWND FindHost(HWND parent, HWND after) {
    return parent == after ? hostWindow : nullptr;
}

// Written down as the handheld's way to the screen.
uint64_t GetScreen(HWND window) {
    const uint64_t words[kMostArguments] = {};
    return player->trace.Call("GetDC", words, [=](const uint64_t*) { return WordOf(GetWindowDC(window)); });
}

// Workers take turns: each ends before the next begins.
uint64_t RunThread(const uint64_t* words) {
    const uint64_t thread = CallOriginal("CreateThread")(words);
    WaitForSingleObject(Handle(thread), 10000);
    return thread;
}

struct Desktop : Player {
    std::vector<uint8_t> room;

    uint64_t Attach() override {
        room.assign(3 * kRecordBytes, 0);
        memory = room.data();
        memory[kRecordEnabled] = 1;
        hostWindow =
            CreateWindowExW(0, L"Static", nullptr, WS_POPUP, 0, 0, 480, 480, nullptr, nullptr, nullptr, nullptr);
        trace.names[WordOf(hostWindow)] = "host";
        RegisterItemWindowClass();
        InitializeItem();
        const uint64_t window = WordOf(InitializeCustomItem(reinterpret_cast<TODAYLISTITEM*>(memory), hostWindow));
        trace.names[window] = "item";
        return window;
    }
    void Detach() override {
        DestroyWindow(hostWindow);
        UnregisterItemWindowClass();
    }
    void OpenOptions() override {
        platform::RunDialog(itemState.instance, IDD_TODAY_OPTIONS, nullptr, CustomItemOptionsDlgProc);
    }
    uint64_t ControlOf(uint64_t dialog, uint32_t number) override {
        return WordOf(GetDlgItem(Handle(dialog), static_cast<int>(number)));
    }
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

void KeepResults(const files::path& folder, const std::string& trace) {
    for (const files::path& source : kFolders) {
        const files::path target = folder / source.relative_path();
        files::create_directories(target);
        files::copy(source, target, files::copy_options::recursive);
    }
    std::ofstream(folder / "trace.txt", std::ios::binary) << trace;
}

}  // namespace

int main(int, char** arguments) {
    Desktop desktop;
    PrepareSystem();
    HookSystem({
        {"CreateProcessW", [] { return player->trace.Add("\\Windows\\ctlpnl.exe"), false; }},
        {"CreateThread", StandIn(RunThread)},
        {"DialogBoxIndirectParamW", RunDialog},
        {"FindResourceW", NoteTemplate},
        {"FindWindowExW", FindHost},
        {"GetDCEx", GetScreen},
        {"PropertySheetW", RunSheet},
    });
    desktop.Run(device_script::kScript);
    KeepResults(arguments[1], desktop.trace.text);
    return 0;
}
