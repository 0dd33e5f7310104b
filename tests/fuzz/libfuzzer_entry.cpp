// Joins the one fuzzer of a program to libFuzzer. With QUORVANE_SEEDS=FOLDER the program writes the fuzzer's seeds
// there, prints the sources that it is about, and ends.

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "tests/fuzz/fuzzer.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    const Fuzzer& fuzzer = Fuzzers().front();
    if (const char* folder = std::getenv("QUORVANE_SEEDS")) {
        size_t number = 0;
        for (const Bytes& seed : fuzzer.seeds()) {
            std::ofstream file(std::string(folder) + "/seed-" + std::to_string(++number), std::ios::binary);
            file.write(reinterpret_cast<const char*>(seed.data()), static_cast<std::streamsize>(seed.size()));
        }
        for (const char* source : fuzzer.sources) {
            std::puts(source);
        }
        std::exit(0);
    }
    PrepareForFuzzing();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Fuzzers().front().feed({data, size});
    return 0;
}
