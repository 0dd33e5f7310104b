// What the fuzzers share.

#include "tests/fuzz/fuzzer.h"

#include <algorithm>
#include <cstdlib>

#include "item/item_state.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/support/data_folder.h"

std::vector<Fuzzer>& Fuzzers() {
    static std::vector<Fuzzer> fuzzers;
    return fuzzers;
}

void Demand(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void PrepareForFuzzing() {
    scripted::Reset();
    ResetSystemForTest();
    ResetItemState();
    RefreshScreenSize();
    UseEmptyDataFolder();
}

Bytes BytesOf(std::string_view text) {
    return {text.begin(), text.end()};
}

std::string_view TextOf(std::span<const uint8_t> input) {
    return {reinterpret_cast<const char*>(input.data()), input.size()};
}

std::span<const uint8_t> Take(std::span<const uint8_t>& input, size_t bytes) {
    const auto taken = input.first(std::min(bytes, input.size()));
    input = input.subspan(taken.size());
    return taken;
}
