// Every offset in the file is checked: a converter's mistake is to be a message, not a crash of the test.

#include "tests/device/pe_image.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr uint32_t kDirectories = 120;  // offset in the PE header
enum Directory { kExports = 0, kImports = 1, kResources = 2, kRelocations = 5 };

// Bytes that are read at offsets; a read outside gives 0 and is remembered.
struct Reader {
    std::span<const uint8_t> bytes;
    bool outside = false;

    template <class Value = uint32_t>
    Value At(size_t offset) {
        Value value{};
        if (offset > bytes.size() || bytes.size() - offset < sizeof(Value)) {
            outside = true;
        } else {
            memcpy(&value, bytes.data() + offset, sizeof(Value));
        }
        return value;
    }
    std::string Text(size_t offset) {
        std::string text;
        while (const char letter = At<char>(offset++)) {
            text += letter;
        }
        return text;
    }
};

uint32_t RoundUp(uint32_t bytes) {
    return (bytes + kPageBytes - 1) / kPageBytes * kPageBytes;
}

std::string CheckHeader(Reader& file, uint32_t header) {
    const struct {
        const char* problem;
        bool wrong;
    } rules[] = {
        {"no PE file", file.At<uint16_t>(0) != 0x5A4D || file.At(header) != 0x4550},
        {"not for ARM", file.At<uint16_t>(header + 4) != 0x1C0},
        {"no relocatable executable DLL", (file.At<uint16_t>(header + 22) & 0x2003) != 0x2002},
        {"not PE32", file.At<uint16_t>(header + 24) != 0x10B},
        {"sections are not aligned to pages", file.At(header + 56) != kPageBytes},
        {"not for subsystem Windows CE", file.At<uint16_t>(header + 92) != 9},
        {"wants a newer system than 4.20",
         file.At<uint16_t>(header + 72) * 100u + file.At<uint16_t>(header + 74) > 420},
        {"too few directories", file.At(header + 116) < 16},
    };
    const auto broken = std::find_if(std::begin(rules), std::end(rules), [](const auto& rule) { return rule.wrong; });
    return broken == std::end(rules) ? "" : broken->problem;
}

std::string CopySection(Reader& file, uint32_t row, PeImage& image, uint32_t* end) {
    constexpr uint32_t kExecute = 0x20000000;
    constexpr uint32_t kWrite = 0x80000000;
    const uint32_t virtualBytes = file.At(row + 8);
    const uint32_t address = file.At(row + 12);
    const uint32_t fileBytes = file.At(row + 16);
    const uint32_t offset = file.At(row + 20);
    const uint32_t flags = file.At(row + 36);
    const uint32_t bytes = RoundUp(std::max(virtualBytes, fileBytes));
    if (address % kPageBytes != 0 || address < *end || uint64_t{address} + bytes > image.bytes.size() ||
        uint64_t{offset} + fileBytes > file.bytes.size()) {
        return "a section lies outside the file or the image, or over another";
    }
    if ((flags & kWrite) != 0 && (flags & kExecute) != 0) {
        return "a section is both writable and executable";
    }
    memcpy(image.bytes.data() + address, file.bytes.data() + offset, std::min(virtualBytes, fileBytes));
    image.sections.push_back({address, bytes, (flags & kWrite) != 0, (flags & kExecute) != 0});
    *end = address + bytes;
    return "";
}

void ReadImports(Reader& memory, uint32_t directory, PeImage& image) {
    constexpr uint32_t kByOrdinal = 0x80000000;
    for (uint32_t row = directory; memory.At(row + 12) != 0 && !memory.outside; row += 20) {
        std::string library = memory.Text(memory.At(row + 12));
        std::transform(library.begin(), library.end(), library.begin(), [](char c) { return tolower(c); });
        library = library.substr(0, library.rfind(".dll"));
        const uint32_t names = memory.At(row) != 0 ? memory.At(row) : memory.At(row + 16);
        for (uint32_t i = 0; memory.At(names + i * 4) != 0 && !memory.outside; ++i) {
            const uint32_t entry = memory.At(names + i * 4);
            const bool byOrdinal = (entry & kByOrdinal) != 0;
            image.imports.push_back({library, byOrdinal ? "" : memory.Text(entry + 2), byOrdinal ? entry & 0xFFFF : 0,
                                     memory.At(row + 16) + i * 4});
        }
    }
}

void ReadExports(Reader& memory, uint32_t directory, PeImage& image) {
    const uint32_t first = memory.At(directory + 16);
    const uint32_t count = memory.At(directory + 20);
    for (uint32_t i = 0; i < count && !memory.outside; ++i) {
        if (const uint32_t address = memory.At(memory.At(directory + 28) + i * 4); address != 0) {
            image.exports[first + i] = address;
        }
    }
}

std::string ReadRelocations(Reader& memory, uint32_t directory, uint32_t bytes, PeImage& image) {
    constexpr uint32_t kHighLow = 3;
    for (uint32_t block = directory; block < directory + bytes;) {
        const uint32_t blockBytes = memory.At(block + 4);
        if (blockBytes < 8 || blockBytes % 4 != 0 || blockBytes > directory + bytes - block || memory.outside) {
            return "a block of relocations has no sensible size";
        }
        for (uint32_t i = 8; i < blockBytes; i += 2) {
            const uint32_t entry = memory.At<uint16_t>(block + i);
            if (entry >> 12 == kHighLow) {
                image.relocations.push_back(memory.At(block) + (entry & 0xFFF));
            } else if (entry >> 12 != 0) {
                return "a relocation of an unknown kind";
            }
        }
        block += blockBytes;
    }
    const bool fit = std::all_of(image.relocations.begin(), image.relocations.end(), [&](uint32_t address) {
        return address % 4 == 0 && address + 4 <= image.bytes.size();
    });
    return fit ? "" : "a relocation lies outside the image or across words";
}

}  // namespace

std::string LayOutImage(std::span<const uint8_t> fileBytes, PeImage& image) {
    Reader file{fileBytes};
    const uint32_t header = file.At(60);
    if (std::string problem = CheckHeader(file, header); !problem.empty()) {
        return problem;
    }
    image = {};
    image.base = file.At(header + 52);
    image.entry = file.At(header + 40);
    const uint32_t headers = file.At(header + 84);
    image.bytes.resize(RoundUp(std::min(file.At(header + 80), 64u << 20)));
    if (headers > image.bytes.size() || headers > fileBytes.size()) {
        return "headers larger than the image";
    }
    memcpy(image.bytes.data(), fileBytes.data(), headers);
    uint32_t end = RoundUp(headers);
    const uint32_t table = header + 24 + file.At<uint16_t>(header + 20);
    for (uint32_t i = 0; i < file.At<uint16_t>(header + 6); ++i) {
        if (std::string problem = CopySection(file, table + i * 40, image, &end); !problem.empty()) {
            return problem;
        }
    }
    const auto directory = [&](Directory which) { return file.At(header + kDirectories + which * 8u); };
    Reader memory{image.bytes};
    image.resources = directory(kResources);
    ReadExports(memory, directory(kExports), image);
    ReadImports(memory, directory(kImports), image);
    const std::string problem =
        ReadRelocations(memory, directory(kRelocations), file.At(header + kDirectories + kRelocations * 8 + 4), image);
    return file.outside || memory.outside ? "a table points outside" : problem;
}

void RelocateImage(PeImage& image, uint32_t base) {
    for (const uint32_t address : image.relocations) {
        uint32_t word = 0;
        memcpy(&word, image.bytes.data() + address, sizeof(word));
        word += base - image.base;
        memcpy(image.bytes.data() + address, &word, sizeof(word));
    }
    image.base = base;
}
