// Finds imports in the loaded program and leads them through the trace. One function takes the calls of an import: a
// call's arguments are words, in registers and on the stack, whatever their types.

#include "tests/device/reference/hooks.h"

#include <array>

namespace {

struct Import {
    std::string function;
    void* original = nullptr;
    StandIn stands;
};
constexpr size_t kMostImports = 80;
std::array<Import, kMostImports> imports;

template <size_t slot>
uint64_t WINAPI Call(uint64_t a, uint64_t b, uint64_t c, uint64_t d, uint64_t e, uint64_t f, uint64_t g, uint64_t h,
                     uint64_t i, uint64_t j, uint64_t k, uint64_t l) {
    const uint64_t words[kMostArguments] = {a, b, c, d, e, f, g, h, i, j, k, l};
    return player->trace.Call(imports[slot].function, words, imports[slot].stands);
}
using AnyFunction = decltype(&Call<0>);

template <size_t... slots>
constexpr std::array<AnyFunction, sizeof...(slots)> MakeCalls(std::index_sequence<slots...>) {
    return {Call<slots>...};
}
constexpr auto kCalls = MakeCalls(std::make_index_sequence<kMostImports>());

const IMAGE_IMPORT_DESCRIPTOR* FirstImport(uint8_t* base) {
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS64*>(base + dos->e_lfanew);
    const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    return reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
}

void* ReplaceImport(const std::string& function, AnyFunction replacement) {
    auto* base = reinterpret_cast<uint8_t*>(GetModuleHandleW(nullptr));
    void* before = nullptr;
    for (const auto* library = FirstImport(base); library->Name != 0; ++library) {
        const auto* names = reinterpret_cast<const IMAGE_THUNK_DATA64*>(base + library->OriginalFirstThunk);
        auto* addresses = reinterpret_cast<IMAGE_THUNK_DATA64*>(base + library->FirstThunk);
        for (; names->u1.AddressOfData != 0; ++names, ++addresses) {
            const auto* entry = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
            if (!IMAGE_SNAP_BY_ORDINAL64(names->u1.Ordinal) && function == entry->Name) {
                DWORD rights = 0;
                VirtualProtect(addresses, sizeof(*addresses), PAGE_READWRITE, &rights);
                before = reinterpret_cast<void*>(addresses->u1.Function);
                addresses->u1.Function = reinterpret_cast<ULONGLONG>(replacement);
            }
        }
    }
    return before;
}

Import& ImportOf(const std::string& function) {
    size_t slot = 0;
    while (imports.at(slot).function != function && !imports.at(slot).function.empty()) {
        ++slot;
    }
    if (imports[slot].function.empty()) {
        imports[slot].function = function;
        imports[slot].original = ReplaceImport(function, kCalls[slot]);
    }
    return imports[slot];
}

// Written down as the handheld's way to the screen.
HDC GetScreen(HWND window) {
    const uint64_t words[kMostArguments] = {};
    return reinterpret_cast<HDC>(
        player->trace.Call("GetDC", words, [=](const uint64_t*) { return Number(GetWindowDC(window)); }));
}

StandIn CallOriginal(const std::string& function) {
    const auto original = reinterpret_cast<AnyFunction>(Original(function));
    return [original](const uint64_t* w) {
        return original(w[0], w[1], w[2], w[3], w[4], w[5], w[6], w[7], w[8], w[9], w[10], w[11]);
    };
}

// Workers take turns: each ends before the next begins.
uint64_t RunThread(const uint64_t* words) {
    const uint64_t thread = CallOriginal("CreateThread")(words);
    WaitForSingleObject(Handle(thread), 10000);
    return thread;
}

}  // namespace

void Hook(const std::string& function, StandIn stands) {
    ImportOf(function).stands = std::move(stands);
}

void* Original(const std::string& function) {
    return ImportOf(function).original;
}

void HookSystem() {
    for (const CallShape& shape : TracedCalls()) {
        Hook(shape.name, CallOriginal(shape.name));
    }
    StandInTable table = ScriptedStandIns();
    // The host's window is the frame that the desktop takes for the screen. It has no taskbar.
    table.push_back({"FindWindowExW", [](HWND parent, HWND after) { return parent == after ? hostWindow : nullptr; }});
    table.push_back({"GetDCEx", GetScreen});
    table.push_back({"CreateThread", StandIn(RunThread)});
    table.push_back({"CreateProcessW", [] { return false; }});
    for (const StandInRow& row : table) {
        Hook(row.name, row.call);
    }
}
