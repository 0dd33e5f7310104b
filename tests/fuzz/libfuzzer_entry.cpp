// Joins the fuzzer that QUORVANE_FUZZER names to libFuzzer and puts its seeds into the folder QUORVANE_CORPUS. Prints
// all names, and ends when none is the right one.

#include <fstream>
#include <iostream>

#include "tests/fuzz/fuzzer.h"
#include "tests/support/data_folder.h"

static const Fuzzer* chosen = nullptr;

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    const std::string name = std::getenv("QUORVANE_FUZZER");
    for (const Fuzzer& fuzzer : fuzzers) {
        std::cout << fuzzer.name << '\n';
        chosen = fuzzer.name == name ? &fuzzer : chosen;
    }
    if (chosen == nullptr) {
        std::exit(0);
    }
    for (size_t i = 0; i < chosen->seeds.size(); ++i) {
        const std::string file = std::getenv("QUORVANE_CORPUS") + ("/seed-" + std::to_string(i));
        std::ofstream(file, std::ios::binary) << TextOf(chosen->seeds[i]);
    }
    ResetForTest();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    chosen->feed({data, size});
    return 0;
}
