// Every fuzzer's seeds, each also cut short and with single bytes bent, so that what fuzzing found stays mended
// and a parser that reads beyond its input shows in seconds.

#include <gtest/gtest.h>

#include "tests/fuzz/fuzzer.h"

namespace {

class Seeds : public testing::TestWithParam<const Fuzzer*> {};

TEST_P(Seeds, Are_parsed_whole_cut_and_bent) {
    constexpr size_t kPlaces = 512;  // longer seeds are cut and bent at about so many places, evenly
    // A copy of its own length, whose end the address sanitizer watches.
    const auto feed = [](Bytes exact) { GetParam()->feed(exact); };
    ASSERT_FALSE(GetParam()->seeds.empty());
    for (const Bytes& seed : GetParam()->seeds) {
        feed(seed);
        for (size_t place = 0; place < seed.size(); place += seed.size() / kPlaces + 1) {
            feed(Bytes(seed.begin(), seed.begin() + static_cast<std::ptrdiff_t>(place)));
            for (const uint8_t bent : {0x00, 0x7F, 0x80, 0xFF}) {
                Bytes damaged = seed;
                damaged[place] = bent;
                feed(damaged);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Fuzz, Seeds, testing::ValuesIn(Fuzzers()), [](const auto& info) { return info.param->name; });

}  // namespace
