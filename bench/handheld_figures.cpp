// What the handheld's library (QUORVANE_DEVICE_LIBRARY) costs in the model of its processor: a name and a number on a
// line. The numbers are exact, so equal work has to give equal ones.

#include "tests/device/handheld.h"

#include <iostream>

namespace {

// The instructions and system calls of one step.
void Measure(const char* name, const Step& step) {
    const uint64_t instructions = handheld->instructions, systemCalls = handheld->imports;
    Perform({step});
    std::cout << "instructions_per_" << name << ' ' << handheld->instructions - instructions << "\nsystem_calls_per_"
              << name << ' ' << handheld->imports - systemCalls << '\n';
}

}  // namespace

int main() {
    ResetHandheld();
    Perform(kBegin);
    Perform({Tick(1500, 700, 24)});
    Measure("quiet_tick", Tick(0, 0));
    Measure("tick", Tick(1500, 700));
    Measure("paint", kPaint);

    ResetHandheld();
    PerformWholeScript();
    std::cout << "deepest_stack " << handheld->deepestStack << '\n' << handheld->faults;
    return handheld->faults.empty() ? 0 : 1;
}
