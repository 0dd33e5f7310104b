// Any bytes as slist.dat: what was added is found, what was removed is not, and the rest stays.

#include "diagnostics/safe_list.h"
#include "tests/fuzz/fuzzer.h"
#include "tests/support/data_folder.h"

namespace {

constexpr wchar_t kList[] = L"slist.dat";
constexpr MacAddress kMac = {{0x00, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}};

void UseList(std::span<const uint8_t> input) {
    const Bytes whole(input.begin(), input.end() - static_cast<std::ptrdiff_t>(input.size() % 6));
    WriteWholeFile(kList, whole);
    const bool there = SafeListContains(kMac);
    SafeListAdd(kMac);
    Demand(SafeListContains(kMac) && SafeListRemove(nullptr, kMac) && !SafeListContains(kMac));
    Demand(there || ReadWholeFile(kList) == whole);
    WriteWholeFile(kList, Bytes(input.begin(), input.end()));  // with a cut tail
    SafeListRemove(nullptr, kMac);
    Demand(!SafeListContains(kMac) && ReadWholeFile(kList).size() % 6 == 0);
}

std::vector<Bytes> Lists() {
    return {{0, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E, 1, 2, 3, 4, 5, 6, 0, 0x1A, 0x2B}, {1, 2, 3, 4, 5, 6}};
}

const RegisteredFuzzer kFuzzer(
    {"safe_list", {"diagnostics/safe_list.cpp", "diagnostics/record_file.cpp"}, UseList, Lists});

}  // namespace
