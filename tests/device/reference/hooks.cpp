// One function takes the calls of an import: a call's arguments are words, in registers and on the stack, whatever
// their types.

#include "tests/device/reference/hooks.h"

#include <algorithm>
#include <array>

// The linker's names for the table that the loader fills with the addresses of imports.
extern "C" void* __IAT_start__[];
extern "C" void* __IAT_end__[];

namespace {

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

}  // namespace

uint64_t WordOf(const void* pointer) {
    return reinterpret_cast<uint64_t>(pointer);
}

void* PointerOf(uint64_t word) {
    return reinterpret_cast<void*>(word);
}

void* Original(const std::string& function) {
    void* found = nullptr;
    // Some functions of the first stand in the second too, where a program does not look for them.
    for (const char* library : {"advapi32", "kernel32", "user32", "gdi32", "comctl32", "shell32", "ws2_32"}) {
        HMODULE module = LoadLibraryA(library);
        found = found != nullptr ? found : reinterpret_cast<void*>(GetProcAddress(module, function.c_str()));
    }
    return found;
}

StandIn CallOriginal(const std::string& function) {
    const auto original = reinterpret_cast<AnyFunction>(Original(function));
    return [original](const uint64_t* w) {
        return original(w[0], w[1], w[2], w[3], w[4], w[5], w[6], w[7], w[8], w[9], w[10], w[11]);
    };
}

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
