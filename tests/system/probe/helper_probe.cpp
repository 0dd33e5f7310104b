// Asks the Linux helper through the desktop's client, for the system tests. Reads lines "lease NAME", "release NAME",
// "renew NAME" and "radio" and answers each with the result and the milliseconds it took.

#include "platform/desktop/linux_helper.h"

#include <cstdio>
#include <string>

int main() {
    char line[64];
    while (fgets(line, sizeof(line), stdin) != nullptr) {
        const std::string words(line, strcspn(line, "\r\n"));
        const std::string name = words.substr(words.find(' ') + 1);
        const DWORD start = GetTickCount();
        platform::HelperLeaseState state;
        wchar_t text[platform::kHelperNameUnits];
        DWORD result = 0;
        if (words.starts_with("lease")) {
            result = platform::HelperLease(name.c_str(), state);
        } else if (words.starts_with("release")) {
            result = platform::HelperRelease(name.c_str());
        } else if (words.starts_with("renew")) {
            result = platform::HelperRenew(name.c_str());
        } else {
            result = platform::HelperRadioBinding(text, text);
        }
        printf("%lu %lu %d %u %u %u\n", result, GetTickCount() - start, state.dhcp, state.server, state.obtained,
               state.expires);
        fflush(stdout);
    }
    return 0;
}
