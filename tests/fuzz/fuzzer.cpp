// What the fuzzers share.

#include "tests/fuzz/fuzzer.h"

#include <algorithm>
#include <cstdlib>

Fuzzer::Fuzzer(const char* name, std::vector<const char*> sources, std::vector<Bytes> seeds, void (*feed)(Input))
    : name(name), sources(std::move(sources)), seeds(std::move(seeds)), feed(feed) {
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
