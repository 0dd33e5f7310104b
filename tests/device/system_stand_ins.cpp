// Files, registry and time are the fakes of the native tests behind calls of a 32-bit system; memory, modules, threads
// and texts are the guest's own.

#include "tests/device/handheld.h"
#include "tests/fakes/fakes.h"

#include <algorithm>

namespace {

uint64_t OpenFile(const uint64_t* words) {
    if (At<char16_t>(static_cast<Address>(words[0])) != std::u16string_view(u"UIO1:")) {
        return TakeWords(CreateFileW)(words);
    }
    return scripted::system.wireless.present ? WordOf(new fakes::Closable) : WordOf(INVALID_HANDLE_VALUE);
}

// WIN32_FIND_DATAW as the handheld has it: an object number before the name, no short name.
template <auto* find>
auto Find(Word where, uint8_t* record) {
    WIN32_FIND_DATAW found = {};
    const auto result = find(where, &found);
    memcpy(record, &found.dwFileAttributes, sizeof(found.dwFileAttributes));
    std::copy_n(found.cFileName, wcslen(found.cFileName) + 1, reinterpret_cast<char16_t*>(record + 40));
    return result;
}

template <bool creates>
uint64_t OpenKey(const uint64_t* words) {
    HKEY key = nullptr;
    Word name{words[1]};
    const LONG result = creates ? RegCreateKeyExW(nullptr, name, 0, nullptr, 0, 0, nullptr, &key, nullptr)
                                : RegOpenKeyExW(nullptr, name, 0, 0, &key);
    *At<uint32_t>(static_cast<Address>(words[creates ? 7 : 4])) = static_cast<uint32_t>(WordOf(key));
    return static_cast<uint64_t>(result);
}

uint32_t FreeBlock(Address block) {
    handheld->faults += block != 0 && handheld->blocks.erase(block) == 0 ? "freed what is no block\n" : "";
    return 0;
}

uint32_t LoadModule(const char16_t* name) {
    const bool isItself = Narrow(name) == "quorvane.dll";
    handheld->libraryUses += isItself ? 1 : 0;
    return isItself ? handheld->base : NewHandle();
}

bool FreeModule(uint32_t module) {
    const bool isFine = module == handheld->base && --handheld->libraryUses != 0;
    handheld->faults += isFine ? "" : "unloads itself while it runs, or what it did not load\n";
    return isFine;
}

uint64_t StartThread(uint64_t, uint32_t, Address function, uint32_t argument) {
    handheld->waitingThreads.emplace_back(function, argument);
    if (!handheld->threadsWait) {
        RunThreads();
    }
    return WordOf(new fakes::Closable);
}

// Both ways: code page, flags, source, its units, target, its room (0: asks for it). Between 0x80 and 0x9F a handheld
// knows more letters than Latin-1; the script has none of them.
template <class From, class To>
uint32_t Translate(uint32_t, uint32_t, const From* source, uint32_t units, To* target, uint32_t room) {
    std::transform(source, source + std::min(units, room), target,
                   [](From letter) { return static_cast<To>(letter < 0x100 ? letter : '?'); });
    return room != 0 && units > room ? 0 : units;
}

using Text = const char16_t*;

}  // namespace

uint64_t WordOf(const void* pointer) {
    const auto place = reinterpret_cast<uintptr_t>(pointer);
    if (pointer == INVALID_HANDLE_VALUE || place >> 32 == 0) {
        return static_cast<uint32_t>(place);
    }
    const uint32_t handle = NewHandle();
    handheld->handles[handle] = pointer;
    return handle;
}

void* PointerOf(uint64_t word) {
    const auto found = handheld->handles.find(word);
    return found != handheld->handles.end() ? const_cast<void*>(found->second) : reinterpret_cast<void*>(word);
}

StandInTable SystemStandIns() {
    return {
        {"CreateFileW", StandIn(OpenFile)},
        {"ReadFile", ReadFile},
        {"WriteFile", WriteFile},
        {"GetFileSize", GetFileSize},
        {"SetFilePointer", SetFilePointer},
        {"CloseHandle", CloseHandle},
        {"DeleteFileW", DeleteFileW},
        {"MoveFileW", MoveFileW},
        {"CreateDirectoryW", CreateDirectoryW},
        {"FindFirstFileW", Find<FindFirstFileW>},
        {"FindNextFileW", Find<FindNextFileW>},
        {"FindClose", FindClose},
        {"GetLastError", GetLastError},
        {"FileTimeToSystemTime", FileTimeToSystemTime},
        {"RegOpenKeyExW", StandIn(OpenKey<false>)},
        {"RegCreateKeyExW", StandIn(OpenKey<true>)},
        {"RegQueryValueExW", RegQueryValueExW},
        {"RegSetValueExW", RegSetValueExW},
        {"RegCloseKey", RegCloseKey},
        {"LocalAlloc", [](uint32_t, uint32_t bytes) { return Allocate(bytes); }},
        {"LocalFree", FreeBlock},
        {"LoadLibraryW", LoadModule},
        {"FreeLibrary", FreeModule},
        {"FreeLibraryAndExitThread", [](uint32_t module) { return handheld->threadEnds = true, FreeModule(module); }},
        {"GetModuleFileNameW", [](uint32_t, char16_t* path) { return memcpy(path, u"quorvane.dll", 26); }},
        {"GetProcAddressW", [](uint32_t, Text name) { return StandInAddress(Narrow(name)); }},
        {"CreateThread", StartThread},
        {"WaitForSingleObject", [] { return 0; }},
        {"InterlockedIncrement", [](uint32_t* value) { return ++*value; }},
        {"InterlockedDecrement", [](uint32_t* value) { return --*value; }},
        {"InterlockedExchange", [](uint32_t* value, uint32_t now) { return std::exchange(*value, now); }},
        {"MultiByteToWideChar", Translate<uint8_t, char16_t>},
        {"WideCharToMultiByte", Translate<char16_t, uint8_t>},
        {"_wcsicmp", _wcsicmp},
        {"wcscmp", [](Text left, Text right) { return std::u16string_view(left).compare(right); }},
        {"wcslen", [](Text text) { return std::u16string_view(text).size(); }},
        {"wcsrchr", [](Text name, char16_t dot) { return name + std::u16string_view(name).rfind(dot); }},
        {"wcstol", [](Text text, uint32_t, int base) { return strtol(Narrow(text).c_str(), nullptr, base); }},
        {"strcmp", [](const char* left, const char* right) { return strcmp(left, right); }},
        {"memcmp", [](const void* left, const void* right, uint32_t bytes) { return memcmp(left, right, bytes); }},
        {"memcpy", [](void* to, const void* from, uint32_t bytes) { return memmove(to, from, bytes); }},
        {"memmove", [](void* to, const void* from, uint32_t bytes) { return memmove(to, from, bytes); }},
        {"memset", [](void* to, int value, uint32_t bytes) { return memset(to, value, bytes); }},
    };
}
