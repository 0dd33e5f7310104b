// Every fuzzer's seeds, each also cut short and with single bytes bent, so that what fuzzing found stays mended
// and a parser that reads beyond its input shows in seconds.

#include <gtest/gtest.h>

#include "tests/fuzz/fuzzer.h"
#include "tests/support/data_folder.h"

TEST(Fuzz, Seeds_are_parsed_whole_cut_and_bent) {
    constexpr size_t kPlaces = 512;  // longer seeds are cut and bent at about so many places, evenly
    for (const Fuzzer& fuzzer : fuzzers) {
        ResetForTest();
        for (const Bytes& seed : fuzzer.seeds) {
            fuzzer.feed(Bytes(seed));  // copies of their own length, whose ends the address sanitizer watches
            for (size_t place = 0; place < seed.size(); place += seed.size() / kPlaces + 1) {
                fuzzer.feed(Bytes(seed.begin(), seed.begin() + static_cast<std::ptrdiff_t>(place)));
                for (const uint8_t bent : {0x00, 0x7F, 0x80, 0xFF}) {
                    Bytes damaged = seed;
                    damaged[place] = bent;
                    fuzzer.feed(damaged);
                }
            }
        }
    }
}
