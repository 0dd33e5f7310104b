// Every fuzzer's seeds, each also cut short and with single bytes bent, so that what fuzzing found stays mended
// and a parser that reads beyond its input shows in seconds.

#include <gtest/gtest.h>

#include "tests/fuzz/fuzzer.h"

namespace {

class Seeds : public testing::TestWithParam<Fuzzer> {
    void SetUp() override { PrepareForFuzzing(); }
};

// A copy of its own length, whose end the address sanitizer watches.
void Feed(const Fuzzer& fuzzer, std::span<const uint8_t> input) {
    const Bytes exact(input.begin(), input.end());
    fuzzer.feed(exact);
}

// Longer seeds are cut and bent at about so many places, evenly.
constexpr size_t kPlaces = 512;

void FeedDamaged(const Fuzzer& fuzzer, const Bytes& seed) {
    for (size_t place = 0; place < seed.size(); place += seed.size() / kPlaces + 1) {
        Feed(fuzzer, std::span(seed).first(place));
        for (const uint8_t bent : {uint8_t{0}, uint8_t{0x7F}, uint8_t{0x80}, uint8_t{0xFF}}) {
            Bytes damaged = seed;
            damaged[place] = bent;
            Feed(fuzzer, damaged);
        }
    }
}

TEST_P(Seeds, Are_parsed_whole_cut_and_bent) {
    const std::vector<Bytes> seeds = GetParam().seeds();
    ASSERT_FALSE(seeds.empty());
    for (const Bytes& seed : seeds) {
        Feed(GetParam(), seed);
        FeedDamaged(GetParam(), seed);
    }
}

INSTANTIATE_TEST_SUITE_P(Fuzz, Seeds, testing::ValuesIn(Fuzzers()),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
