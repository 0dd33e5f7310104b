// What the fuzzers share.

#include "tests/fuzz/fuzzer.h"

#include <algorithm>
#include <cstdlib>

#include "item/item_state.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/support/data_folder.h"

Fuzzer::Fuzzer(const char* name, std::vector<const char*> sources, void (*feed)(Input), std::vector<Bytes> seeds)
    : name(name), sources(std::move(sources)), feed(feed), seeds(std::move(seeds)) {
    Fuzzers().push_back(this);
}

std::vector<const Fuzzer*>& Fuzzers() {
    static std::vector<const Fuzzer*> fuzzers;
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

std::string_view TextOf(Input input) {
    return {reinterpret_cast<const char*>(input.data()), input.size()};
}

Input Take(Input& input, size_t bytes) {
    const Input taken = input.first(std::min(bytes, input.size()));
    input = input.subspan(taken.size());
    return taken;
}
