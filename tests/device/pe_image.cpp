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

void CopyBytes(Reader& file, uint32_t from, uint32_t bytes, PeImage& image, uint32_t to) {
    if (uint64_t{from} + bytes > file.bytes.size() || uint64_t{to} + bytes > image.bytes.size()) {
        file.outside = true;
    } else {
        std::copy_n(file.bytes.data() + from, bytes, image.bytes.data() + to);
    }
}

bool CopySection(Reader& file, uint32_t row, PeImage& image) {
    constexpr uint32_t kExecute = 0x20000000;
    constexpr uint32_t kWrite = 0x80000000;
    const uint32_t virtualBytes = file.At(row + 8);
    const uint32_t address = file.At(row + 12);
    const uint32_t flags = file.At(row + 36);
    CopyBytes(file, file.At(row + 20), std::min(virtualBytes, file.At(row + 16)), image, address);
    image.sections.push_back({address, RoundUp(virtualBytes), (flags & kWrite) != 0, (flags & kExecute) != 0});
    return (flags & kWrite) == 0 || (flags & kExecute) == 0;
}

void ReadImports(Reader& memory, uint32_t directory, PeImage& image) {
    constexpr uint32_t kByOrdinal = 0x80000000;
    for (uint32_t row = directory; memory.At(row + 12) != 0 && !memory.outside; row += 20) {
        std::string library = memory.Text(memory.At(row + 12));
        std::transform(library.begin(), library.end(), library.begin(), [](char c) { return tolower(c); });
        library = library.substr(0, library.rfind(".dll"));
        for (uint32_t i = 0; memory.At(memory.At(row) + i * 4) != 0 && !memory.outside; ++i) {
            const uint32_t entry = memory.At(memory.At(row) + i * 4);
            const bool byOrdinal = (entry & kByOrdinal) != 0;
            image.imports.push_back({library, byOrdinal ? "" : memory.Text(entry + 2), byOrdinal ? entry & 0xFFFF : 0,
                                     memory.At(row + 16) + i * 4});
        }
    }
}

void ReadExports(Reader& memory, uint32_t directory, PeImage& image) {
    for (uint32_t i = 0; i < memory.At(directory + 20) && !memory.outside; ++i) {
        image.exports[memory.At(directory + 16) + i] = memory.At(memory.At(directory + 28) + i * 4);
    }
}

void ReadRelocations(Reader& memory, uint32_t block, uint32_t end, PeImage& image) {
    constexpr uint32_t kHighLow = 3;
    while (block < end && !memory.outside) {
        const uint32_t blockBytes = memory.At(block + 4);
        for (uint32_t i = 8; i < blockBytes; i += 2) {
            const uint32_t entry = memory.At<uint16_t>(block + i);
            if (entry >> 12 == kHighLow) {
                image.relocations.push_back(memory.At(block) + (entry & 0xFFF));
                memory.At(image.relocations.back());
            }
        }
        memory.outside = memory.outside || blockBytes == 0;
        block += blockBytes;
    }
}

}  // namespace

bool LayOutImage(std::span<const uint8_t> fileBytes, PeImage& image) {
    constexpr uint32_t kMostBytes = 64 << 20;
    Reader file{fileBytes};
    const uint32_t header = file.At(60);
    bool isGood = file.At(header) == 0x4550 && file.At<uint16_t>(header + 4) == 0x1C0;
    image = {};
    image.base = file.At(header + 52);
    image.entry = file.At(header + 40);
    image.bytes.resize(RoundUp(std::min(file.At(header + 80), kMostBytes)));
    CopyBytes(file, 0, file.At(header + 84), image, 0);
    const uint32_t table = header + 24 + file.At<uint16_t>(header + 20);
    for (uint32_t i = 0; i < file.At<uint16_t>(header + 6); ++i) {
        isGood = CopySection(file, table + i * 40, image) && isGood;
    }
    const auto directory = [&](Directory which) { return file.At(header + kDirectories + which * 8u); };
    const uint32_t relocationBytes = file.At(header + kDirectories + kRelocations * 8 + 4);
    Reader memory{image.bytes};
    image.resources = directory(kResources);
    ReadExports(memory, directory(kExports), image);
    ReadImports(memory, directory(kImports), image);
    ReadRelocations(memory, directory(kRelocations), directory(kRelocations) + relocationBytes, image);
    return isGood && !file.outside && !memory.outside;
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
