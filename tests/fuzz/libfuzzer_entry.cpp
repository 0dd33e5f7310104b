// Joins the fuzzer that QUORVANE_FUZZER names to libFuzzer. Without it the program writes every fuzzer's seeds to the
// folder QUORVANE_CORPUS/NAME, prints a line with its name and its parser's sources, and ends.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "tests/fuzz/fuzzer.h"
#include "tests/support/data_folder.h"

static const Fuzzer* chosen = nullptr;

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    const char* name = std::getenv("QUORVANE_FUZZER");
    for (const Fuzzer* fuzzer : Fuzzers()) {
        if (name != nullptr) {
            chosen = fuzzer->name == std::string(name) ? fuzzer : chosen;
            continue;
        }
        const std::filesystem::path folder = std::filesystem::path(std::getenv("QUORVANE_CORPUS")) / fuzzer->name;
        std::filesystem::create_directories(folder);
        for (size_t i = 0; i < fuzzer->seeds.size(); ++i) {
            std::ofstream(folder / ("seed-" + std::to_string(i)), std::ios::binary) << TextOf(fuzzer->seeds[i]);
        }
        std::cout << fuzzer->name;
        for (const char* source : fuzzer->sources) {
            std::cout << ' ' << source;
        }
        std::cout << '\n';
    }
    if (chosen == nullptr) {
        std::exit(0);
    }
    ResetForTest();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    chosen->feed({data, size});
    return 0;
}
