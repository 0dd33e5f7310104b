// Memory, time, modules and threads of the system. Time stands still between calls but for Sleep.

#include "tests/device/stand_in.h"
#include "tests/device/stand_in_state.h"

#include <ctime>

namespace {

struct Module : Object {};
struct Thread : KernelObject {};

uint32_t LocalAlloc(Bed& bed, uint32_t flags, uint32_t bytes) {
    constexpr uint32_t kZeroed = 0x40;
    constexpr uint8_t kUnset = 0xCD;
    Memory& memory = Part<Memory>(bed);
    if (++memory.allocations == memory.failingAllocation) {
        return 0;
    }
    const Address block = Allocate(bed, bytes);
    if (block != 0 && (flags & kZeroed) == 0) {
        WriteBytes(bed, block, std::vector<uint8_t>(bytes, kUnset).data(), bytes);
    }
    return block;
}

void FileTimeToSystemTime(Bed& bed, Address fileTime, Address systemTime) {
    constexpr uint64_t kSecondsFrom1601To1970 = 11644473600;
    const auto seconds = static_cast<time_t>(ReadGuest<uint64_t>(bed, fileTime) / 10000000 - kSecondsFrom1601To1970);
    const tm utc = *gmtime(&seconds);
    for (const int field :
         {utc.tm_year + 1900, utc.tm_mon + 1, utc.tm_wday, utc.tm_mday, utc.tm_hour, utc.tm_min, utc.tm_sec, 0}) {
        WriteGuest(bed, systemTime, static_cast<uint16_t>(field));
        systemTime += sizeof(uint16_t);
    }
}

// The library itself stands in the Windows folder.
constexpr std::u16string_view kPath = u"\\Windows\\quorvane.dll";

uint32_t LoadLibraryW(Bed& bed, std::u16string name) {
    if (name == kPath) {
        ++Part<Modules>(bed).libraryUses;
        return bed.imageBase;
    }
    return name == u"cellcore.dll" || name == u"wininet.dll" ? AddObject(bed, std::make_unique<Module>()) : 0;
}

bool FreeLibrary(Bed& bed, uint32_t module) {
    if (module != bed.imageBase) {
        return RemoveObject<Module>(bed, module);
    }
    if (--Part<Modules>(bed).libraryUses == 0) {
        AddFault(bed, "unloads itself while it runs");
    }
    return true;
}

size_t GetModuleFileNameW(Bed& bed, uint32_t module, Address path, uint32_t room) {
    if (module != bed.imageBase || room <= kPath.size()) {
        return 0;
    }
    WriteText(bed, path, kPath);
    return kPath.size();
}

uint32_t CreateThread(Bed& bed, uint32_t, uint32_t, Address function, uint32_t argument) {
    Threads& threads = Part<Threads>(bed);
    if (threads.failing > 0) {
        --threads.failing;
        return 0;
    }
    threads.waiting.push_back({function, argument});
    if (!threads.wait) {
        RunThreads(bed);
    }
    return AddObject(bed, std::make_unique<Thread>());
}

uint32_t AddTo(Bed& bed, Address value, uint32_t step) {
    const uint32_t result = ReadGuest<uint32_t>(bed, value) + step;
    WriteGuest(bed, value, result);
    return result;
}

uint32_t InterlockedExchange(Bed& bed, Address value, uint32_t now) {
    const auto before = ReadGuest<uint32_t>(bed, value);
    WriteGuest(bed, value, now);
    return before;
}

}  // namespace

StandInTable KernelStandIns() {
    return {
        {"LocalAlloc", LocalAlloc},
        {"LocalFree", [](Bed& bed, Address block) { return block == 0 || Free(bed, block) ? 0 : block; }},
        {"GetLastError", [](Bed& bed) { return bed.lastError; }},
        {"CloseHandle", RemoveObject<KernelObject>},
        {"WaitForSingleObject", [](Bed&, KernelObject&) { return 0; }},
        {"GetTickCount", [](Bed& bed) { return Part<World>(bed).tickCount; }},
        {"Sleep", [](Bed& bed, uint32_t milliseconds) { Part<World>(bed).tickCount += milliseconds; }},
        {"GetLocalTime", [](Bed& bed, Address time) { WriteGuest(bed, time, Part<World>(bed).time); }},
        // UTC, no daylight saving.
        {"GetTimeZoneInformation",
         [](Bed& bed, Address zone) { return WriteGuest(bed, zone, std::array<uint8_t, 172>{}), 0; }},
        {"FileTimeToSystemTime", FileTimeToSystemTime},
        {"LoadLibraryW", LoadLibraryW},
        {"FreeLibrary", FreeLibrary},
        {"FreeLibraryAndExitThread",
         [](Bed& bed, uint32_t module) { return EndGuestThread(bed), FreeLibrary(bed, module); }},
        {"GetModuleHandleW", [](Bed& bed, std::u16string name) { return name == u"quorvane.dll" ? bed.imageBase : 0; }},
        {"GetModuleFileNameW", GetModuleFileNameW},
        {"GetProcAddressW",
         [](Bed& bed, Module&, std::u16string name) {
             return bed.standIns.count(Narrow(name)) != 0 ? StandInAddress(bed, Narrow(name)) : 0;
         }},
        {"CreateThread", CreateThread},
        {"InterlockedIncrement", [](Bed& bed, Address value) { return AddTo(bed, value, 1); }},
        {"InterlockedDecrement", [](Bed& bed, Address value) { return AddTo(bed, value, 0U - 1); }},
        {"InterlockedExchange", InterlockedExchange},
    };
}

void RunThreads(Bed& bed) {
    Threads& threads = Part<Threads>(bed);
    while (!threads.waiting.empty()) {
        const Threads::Start start = threads.waiting.front();
        threads.waiting.pop_front();
        CallGuestThread(bed, start.function, start.argument);
    }
}
