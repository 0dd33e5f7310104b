// Every option is a word of its own; those with a value take the next word.

#include "host/command_line.h"

#include <cwchar>
#include <functional>
#include <map>

namespace {

constexpr int kSmallestSide = 160;
constexpr int kLargestSide = 2000;
constexpr int kLongestRun = 1000000;  // seconds; also the most reloads
constexpr int kLargestCoordinate = 65535;

// The whole text as a decimal number.
std::optional<int> NumberIn(const std::wstring& text, int least, int most) {
    wchar_t* end = nullptr;
    const long value = wcstol(text.c_str(), &end, 10);
    if (text.empty() || *end != 0 || value < least || value > most) {
        return std::nullopt;
    }
    return static_cast<int>(value);
}

// Two numbers with a separator between them.
std::optional<POINT> PairIn(const std::wstring& text, wchar_t separator, int least, int most) {
    const size_t middle = text.find(separator);
    if (middle == std::wstring::npos) {
        return std::nullopt;
    }
    const std::optional<int> first = NumberIn(text.substr(0, middle), least, most);
    const std::optional<int> second = NumberIn(text.substr(middle + 1), least, most);
    if (!first || !second) {
        return std::nullopt;
    }
    return POINT{*first, *second};
}

using SetValue = std::function<bool(HostOptions&, const std::wstring&)>;

bool SetSize(HostOptions& options, const std::wstring& value) {
    const std::optional<POINT> size = PairIn(value, L'x', kSmallestSide, kLargestSide);
    if (size) {
        options.screen = {size->x, size->y};
    }
    return size.has_value();
}

bool SetTap(HostOptions& options, const std::wstring& value) {
    options.tap = PairIn(value, L',', 0, kLargestCoordinate);
    return options.tap.has_value();
}

bool SetSeconds(HostOptions& options, const std::wstring& value) {
    options.seconds = NumberIn(value, 0, kLongestRun);
    return options.seconds.has_value();
}

bool SetScreenshotAfter(HostOptions& options, const std::wstring& value) {
    options.screenshotAfter = NumberIn(value, 0, kLongestRun);
    return options.screenshotAfter.has_value();
}

bool SetReloads(HostOptions& options, const std::wstring& value) {
    options.reloads = NumberIn(value, 1, kLongestRun).value_or(0);
    return options.reloads > 0;
}

bool SetScreenshot(HostOptions& options, const std::wstring& value) {
    options.screenshot = value;
    return !value.empty();
}

bool SetLibrary(HostOptions& options, const std::wstring& value) {
    options.library = value;
    return !value.empty();
}

const std::map<std::wstring, SetValue> kValueOptions = {
    {L"--size", SetSize},
    {L"--seconds", SetSeconds},
    {L"--screenshot", SetScreenshot},
    {L"--screenshot-after", SetScreenshotAfter},
    {L"--tap", SetTap},
    {L"--library", SetLibrary},
    {L"--reload", SetReloads},
};

}  // namespace

bool ParseCommandLine(const std::vector<std::wstring>& arguments, HostOptions& options, std::wstring& error) {
    for (size_t i = 0; i < arguments.size(); ++i) {
        const std::wstring& name = arguments[i];
        if (name == L"--help") {
            options.help = true;
            continue;
        }
        if (name == L"--demo") {
            options.demo = true;
            continue;
        }
        if (name == L"--options") {
            options.openOptions = true;
            continue;
        }
        const auto option = kValueOptions.find(name);
        if (option == kValueOptions.end()) {
            error = L"unknown option " + name;
            return false;
        }
        if (++i == arguments.size() || !option->second(options, arguments[i])) {
            error = name + (i == arguments.size() ? L" needs a value" : L" cannot be " + arguments[i]);
            return false;
        }
    }
    if (options.demo && !options.library.empty()) {
        error = L"--demo brings its own library";
        return false;
    }
    return true;
}
