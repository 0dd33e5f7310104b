// device_reference.exe FILE - performs the script with the desktop's objects and the scripted services, and leaves in
// FILE the trace that the library as ARM code has to leave, too. Dialogs and pages have their real controls, but are
// invisible and without a message loop: the script sends what a person would cause, and timers never run by themselves.

#include "item/item_state.h"
#include "item/item_window.h"
#include "item/settings.h"
#include "platform/dialogs.h"
#include "platform/property_sheet.h"
#include "platform/worker.h"
#include "resources/resource_ids.h"
#include "tests/device/player.h"

#include <algorithm>
#include <array>
#include <fstream>

extern "C" INT_PTR CALLBACK CustomItemOptionsDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

// The linker's names for the table that the loader fills with the addresses of imports.
extern "C" void* __IAT_start__[];
extern "C" void* __IAT_end__[];

const size_t kPointerBytes = sizeof(void*);

uint64_t WordOf(const void* pointer) {
    return reinterpret_cast<uint64_t>(pointer);
}

void* PointerOf(uint64_t word) {
    return reinterpret_cast<void*>(word);
}

namespace {

HWND host = nullptr;

// One function takes the calls of an import: a call's arguments are words, in registers and on the stack, whatever
// their types.
constexpr size_t kMostImports = 80;
std::vector<std::pair<std::string, StandIn>> imports;

template <size_t slot>
uint64_t WINAPI Call(uint64_t a, uint64_t b, uint64_t c, uint64_t d, uint64_t e, uint64_t f, uint64_t g, uint64_t h,
                     uint64_t i, uint64_t j, uint64_t k, uint64_t l) {
    const uint64_t words[kMostArguments] = {a, b, c, d, e, f, g, h, i, j, k, l};
    return TraceCall(imports[slot].first, words, imports[slot].second);
}
using AnyFunction = decltype(&Call<0>);

template <size_t... slots>
constexpr std::array<AnyFunction, sizeof...(slots)> MakeCalls(std::index_sequence<slots...>) {
    return {Call<slots>...};
}
constexpr auto kCalls = MakeCalls(std::make_index_sequence<kMostImports>());

// What the system itself has by that name.
AnyFunction Original(const std::string& function) {
    for (const char* library : {"advapi32", "kernel32", "user32", "gdi32", "comctl32", "shell32", "ws2_32"}) {
        if (const auto found = GetProcAddress(LoadLibraryA(library), function.c_str())) {
            return reinterpret_cast<AnyFunction>(found);
        }
    }
    return nullptr;
}

// All calls that are compared, and the script's answers, go their way through the trace.
void HookSystem() {
    std::map<std::string, StandIn> stands;
    for (const auto& [name, shape] : kTracedFunctions) {
        stands[name] = [original = Original(name)](const uint64_t* w) {
            return original(w[0], w[1], w[2], w[3], w[4], w[5], w[6], w[7], w[8], w[9], w[10], w[11]);
        };
    }
    for (const StandInRow& row : ScriptedStandIns()) {
        stands[row.name] = row.call;
    }
    imports = {stands.begin(), stands.end()};
    DWORD rights = 0;
    VirtualProtect(__IAT_start__, (__IAT_end__ - __IAT_start__) * sizeof(void*), PAGE_READWRITE, &rights);
    for (size_t i = 0; i < imports.size(); ++i) {
        std::replace(__IAT_start__, __IAT_end__, reinterpret_cast<void*>(Original(imports[i].first)),
                     reinterpret_cast<void*>(kCalls.at(i)));
    }
}

}  // namespace

// Instead of the desktop's own, which scale templates and wait.
namespace platform {

INT_PTR RunDialog(HINSTANCE instance, int templateId, HWND, DLGPROC procedure) {
    HRSRC resource = FindResourceW(instance, MAKEINTRESOURCEW(templateId), RT_DIALOG);
    const auto* bytes = static_cast<const uint8_t*>(LoadResource(instance, resource));
    std::vector<uint8_t> copy(bytes, bytes + SizeofResource(instance, resource));
    auto* invisible = reinterpret_cast<DLGTEMPLATE*>(copy.data());
    invisible->style &= ~static_cast<DWORD>(WS_VISIBLE);
    Add("open dialog " + std::to_string(templateId));
    HWND dialog = CreateDialogIndirectParamW(instance, invisible, host, procedure, 0);
    ::RunDialog(WordOf(dialog));
    DestroyWindow(dialog);
    return IDOK;
}

void RunPropertySheet(HINSTANCE instance, HWND owner, const wchar_t*, std::span<const SheetPage> pages) {
    for (const SheetPage& page : pages) {
        RunDialog(instance, page.templateId, owner, page.procedure);
    }
}

void ClosePropertySheet(HWND) {}

bool StartWorker(void (*work)(void*), void* argument) {
    work(argument);
    return true;
}

}  // namespace platform

uint64_t AttachItem() {
    static uint8_t memory[2 * kRecordBytes];
    memset(memory, 0, sizeof(memory));
    player.memory = memory;
    memory[kRecordEnabled] = 1;
    host = CreateWindowExW(0, L"Static", nullptr, WS_POPUP, 0, 0, 480, 480, nullptr, nullptr, nullptr, nullptr);
    RegisterItemWindowClass();
    InitializeItem();
    return WordOf(InitializeCustomItem(reinterpret_cast<TODAYLISTITEM*>(memory), host));
}

void DetachItem() {
    DestroyWindow(host);
    UnregisterItemWindowClass();
}

void OpenOptions() {
    platform::RunDialog(itemState.instance, IDD_TODAY_OPTIONS, nullptr, CustomItemOptionsDlgProc);
}

int64_t SendTo(uint64_t window, uint32_t message, uint64_t wParam, uint64_t lParam) {
    static const auto send = reinterpret_cast<decltype(&SendMessageW)>(Original("SendMessageW"));
    return send(reinterpret_cast<HWND>(window), message, wParam, static_cast<LPARAM>(lParam));
}

void SendToControl(uint32_t number, uint32_t message, uint64_t wParam, const void* lParam) {
    HWND control = GetDlgItem(reinterpret_cast<HWND>(player.top), static_cast<int>(number));
    SendTo(WordOf(control), message, wParam, WordOf(lParam));
}

int NumberOf(uint64_t window) {
    return GetDlgCtrlID(reinterpret_cast<HWND>(window));
}

int main(int, char** arguments) {
    ResetPlayer();
    player.root = "C:\\";
    std::filesystem::remove_all("C:\\Program Files\\Ostrik");
    std::filesystem::remove_all("C:\\My Documents");
    std::filesystem::create_directory("C:\\My Documents");
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, kItemKey);
    SetCurrentDirectoryW(L"C:\\");
    const INITCOMMONCONTROLSEX controls = {sizeof(controls), ICC_WIN95_CLASSES | ICC_DATE_CLASSES};
    InitCommonControlsEx(&controls);
    itemState.instance = GetModuleHandleW(nullptr);
    HookSystem();
    PerformWholeScript();
    std::ofstream(arguments[1], std::ios::binary) << player.trace;
    return 0;
}
