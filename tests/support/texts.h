// tests/support/texts.h - several texts as one, for a row of a table.
#pragma once

#include <initializer_list>
#include <string>

// "a|b|c"
inline std::wstring Joined(std::initializer_list<std::wstring> texts) {
    std::wstring joined;
    for (const std::wstring& text : texts) {
        joined += (&text == texts.begin() ? L"" : L"|") + text;
    }
    return joined;
}

inline std::string Narrow(const std::wstring& text) {
    return {text.begin(), text.end()};
}
