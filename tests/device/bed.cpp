// Brings the library in as the handheld's loader does, and what stand-ins need of it.

#include "tests/device/bed.h"

#include "tests/device/pe_image.h"
#include "tests/device/processor.h"

#include <fstream>
#include <iterator>
#include <sstream>

namespace {

// "function library ordinal"; functions without a number are imported by name.
std::map<std::pair<std::string, uint32_t>, std::string> ReadImportNames() {
    std::map<std::pair<std::string, uint32_t>, std::string> names;
    std::ifstream list(QUORVANE_IMPORTS);
    for (std::string line; std::getline(list, line);) {
        std::istringstream words(line);
        std::string function, library;
        uint32_t ordinal = 0;
        if (words >> function >> library >> ordinal && function[0] != '#') {
            names[{library, ordinal}] = function;
        }
    }
    return names;
}

void BindImports(Bed& bed, PeImage& image) {
    auto names = ReadImportNames();
    for (const ImageImport& import : image.imports) {
        const std::string name = import.name.empty() ? names[{import.library, import.ordinal}] : import.name;
        if (bed.standIns.count(name) == 0) {
            AddFault(bed, import.library + '@' + std::to_string(import.ordinal) + name + " has no stand-in");
        }
        const Address address = StandInAddress(bed, name);
        memcpy(image.bytes.data() + import.slot, &address, sizeof(address));
    }
}

void MapImage(Bed& bed, const PeImage& image) {
    MapGuest(bed, image.base, kPageBytes, UC_PROT_READ, std::span(image.bytes).first(kPageBytes));
    for (const ImageSection& section : image.sections) {
        const uint32_t write = section.writable ? UC_PROT_WRITE : UC_PROT_NONE;
        const uint32_t execute = section.executable ? UC_PROT_EXEC : UC_PROT_NONE;
        MapGuest(bed, image.base + section.address, section.bytes, UC_PROT_READ | write | execute,
                 std::span(image.bytes).subspan(section.address, section.bytes));
    }
}

}  // namespace

std::unique_ptr<Bed> OpenBed(const std::string& library, const std::string& folder, Address base, Core core) {
    auto bed = NewBed(core);
    bed->folder = folder;
    std::ifstream stream(library, std::ios::binary);
    const std::vector<char> file{std::istreambuf_iterator<char>(stream), {}};
    PeImage image;
    if (!LayOutImage({reinterpret_cast<const uint8_t*>(file.data()), file.size()}, image)) {
        AddFault(*bed, library + " is not what a handheld loads");
        bed->processor->dead = true;
        return bed;
    }
    RelocateImage(image, base != 0 ? base : image.base);
    BindImports(*bed, image);
    MapImage(*bed, image);
    bed->imageBase = image.base;
    bed->processor->exports = image.exports;
    bed->processor->resources = image.resources;
    bed->processor->entry = image.entry;
    return bed;
}

bool AttachLibrary(Bed& bed) {
    constexpr uint32_t kProcessAttach = 1;
    return CallGuest(bed, bed.imageBase + bed.processor->entry, {bed.imageBase, kProcessAttach, 0}) != 0;
}

void DetachLibrary(Bed& bed) {
    constexpr uint32_t kProcessDetach = 0;
    CallGuest(bed, bed.imageBase + bed.processor->entry, {bed.imageBase, kProcessDetach, 0});
}

std::unique_ptr<Bed> OpenSnippet(std::span<const uint32_t> code, Core core) {
    auto bed = NewBed(core);
    bed->imageBase = kSnippetBase;
    MapGuest(*bed, kSnippetBase, kPageBytes, UC_PROT_READ | UC_PROT_EXEC,
             {reinterpret_cast<const uint8_t*>(code.data()), code.size_bytes()});
    return bed;
}

Address ExportByOrdinal(Bed& bed, uint32_t ordinal) {
    const auto& exports = bed.processor->exports;
    const auto found = exports.find(ordinal);
    return found == exports.end() ? 0 : bed.imageBase + found->second;
}

uint8_t* GuestMemory(Bed& bed, Address address, size_t bytes, bool writes) {
    const char* problem = nullptr;
    uint8_t* memory = FindGuestMemory(bed.processor->memory, address, bytes, writes, &problem);
    if (memory == nullptr) {
        AddFault(bed, std::string("a system function was given memory ") + problem + ", " + Hex(address));
    }
    return memory;
}

Address Allocate(Bed& bed, uint32_t bytes) {
    return AllocateBlock(bed.processor->memory, bytes);
}

bool Free(Bed& bed, Address block) {
    if (!FreeBlock(bed.processor->memory, block)) {
        AddFault(bed, "freed what is no block, " + Hex(block));
        return false;
    }
    return true;
}

size_t LiveBlocks(const Bed& bed) {
    return bed.processor->memory.blocks.size();
}

uint32_t AddObject(Bed& bed, std::unique_ptr<Object> object) {
    bed.nextHandle += 4;
    bed.objects[bed.nextHandle] = std::move(object);
    return bed.nextHandle;
}

// Down the three levels of the tree: kind, number, and the first language.
Address FindGuestResource(Bed& bed, uint32_t type, uint32_t id) {
    constexpr uint32_t kFirstEntry = 16, kEntryBytes = 8, kOffset = 0x7FFFFFFF;
    const Address root = bed.imageBase + bed.processor->resources;
    Address directory = root;
    for (const uint32_t number : {type, id, 0U}) {
        const uint32_t named = ReadGuest<uint16_t>(bed, directory + 12);
        const uint32_t count = named + ReadGuest<uint16_t>(bed, directory + 14);
        Address found = 0;
        for (uint32_t i = named; i < count && found == 0; ++i) {
            const Address entry = directory + kFirstEntry + i * kEntryBytes;
            const bool matches = number == 0 || ReadGuest<uint32_t>(bed, entry) == number;
            found = matches ? root + (ReadGuest<uint32_t>(bed, entry + 4) & kOffset) : 0;
        }
        if (found == 0) {
            return 0;
        }
        directory = found;
    }
    return bed.imageBase + ReadGuest<uint32_t>(bed, directory);
}

std::string Faults(const Bed& bed) {
    std::string text;
    for (const std::string& fault : bed.faults) {
        text += fault + '\n';
    }
    return text;
}

void AddFault(Bed& bed, const std::string& text) {
    bed.faults.push_back(text);
}
