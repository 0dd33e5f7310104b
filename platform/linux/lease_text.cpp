// Numbers, addresses and times as DHCP clients write them.

#include "platform/linux/lease_text.h"

#include <charconv>
#include <chrono>
#include <limits>

#include "platform/helper_protocol.h"

namespace helper {

std::optional<uint32_t> ParseNumber(std::string_view text) {
    uint32_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || error == std::errc::invalid_argument || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return error == std::errc::result_out_of_range ? std::numeric_limits<uint32_t>::max() : value;
}

uint32_t ParseAddress(std::string_view text) {
    uint32_t address = 0;
    for (int i = 0; i < 4; ++i) {
        const bool hasMore = text.find('.') != std::string_view::npos;
        const auto octet = ParseNumber(TakeUntil(text, '.'));
        if (!octet || *octet > 255 || hasMore != (i < 3)) {
            return 0;
        }
        address = address << 8 | *octet;
    }
    return address;
}

std::pair<uint32_t, uint32_t> ParseAddressPair(std::string_view text) {
    constexpr std::string_view kSeparators = " ,\t";
    uint32_t found[2] = {};
    for (uint32_t& address : found) {
        text.remove_prefix(std::min(text.find_first_not_of(kSeparators), text.size()));
        const auto word = text.substr(0, text.find_first_of(kSeparators));
        address = ParseAddress(word);
        text.remove_prefix(word.size());
    }
    return {found[0], found[1]};
}

uint32_t ToUnixTime(uint32_t year, uint32_t month, uint32_t day, uint32_t hour, uint32_t minute, uint32_t second) {
    using namespace std::chrono;
    const year_month_day date{std::chrono::year(static_cast<int>(year)), std::chrono::month(month),
                              std::chrono::day(day)};
    if (year < 1970 || year > 2105 || month > 12 || day > 31 || !date.ok() || hour > 23 || minute > 59 || second > 60) {
        return 0;
    }
    const auto days = static_cast<uint32_t>(sys_days(date).time_since_epoch().count());
    return days * 86400 + hour * 3600 + minute * 60 + second;
}

uint32_t LeaseEnd(uint32_t obtained, uint32_t seconds) {
    const bool isInfinite = seconds == std::numeric_limits<uint32_t>::max();
    const uint32_t end = obtained + seconds;
    return isInfinite || end < obtained ? helper_protocol::kNeverExpires : end;
}

std::string_view TakeUntil(std::string_view& rest, char separator) {
    const size_t at = rest.find(separator);
    const auto taken = rest.substr(0, at);
    rest.remove_prefix(at == std::string_view::npos ? rest.size() : at + 1);
    return taken;
}

std::string_view Trim(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

}  // namespace helper
