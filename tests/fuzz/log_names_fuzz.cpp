// Any file name in the data folder as that of a month's log.

#include "options/log_months.h"
#include "tests/fuzz/fuzzer.h"

#include <algorithm>
#include <string>

namespace {

void ParseName(std::span<const uint8_t> input) {
    const std::wstring name(input.begin(), input.end());
    LogMonth month;
    if (ParseLogName(name.c_str(), month)) {
        Demand(month.Number() >= 0 && month.Number() <= 999999 && name.size() >= 6);
        Demand(std::equal(month.year, month.year + 4, name.begin()) && month.year[4] == 0 && month.month[2] == 0);
    }
}

std::vector<Bytes> Names() {
    return {BytesOf("200612.log"), BytesOf("200699.log"), BytesOf("20061.log")};
}

const RegisteredFuzzer kFuzzer({"log_names", {"options/log_months.cpp"}, ParseName, Names});

}  // namespace
