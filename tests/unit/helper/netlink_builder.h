// tests/unit/helper/netlink_builder.h - netlink attributes as the kernel lays them out: length, type, value, padding.

#pragma once

#include <linux/netlink.h>

#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

using Bytes = std::vector<uint8_t>;

inline Bytes operator+(Bytes left, const Bytes& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

inline Bytes Attribute(uint16_t type, const Bytes& value) {
    const nlattr header{static_cast<uint16_t>(sizeof(nlattr) + value.size()), type};
    Bytes bytes(sizeof(header));
    memcpy(bytes.data(), &header, sizeof(header));
    bytes = bytes + value;
    bytes.resize(NLA_ALIGN(bytes.size()));
    return bytes;
}

template <typename T>
Bytes Number(uint16_t type, T number) {
    Bytes value(sizeof(number));
    memcpy(value.data(), &number, sizeof(number));
    return Attribute(type, value);
}

inline Bytes Text(std::string_view text) {
    return {text.begin(), text.end()};
}

inline Bytes Element(uint8_t number, const Bytes& body) {
    return Bytes{number, static_cast<uint8_t>(body.size())} + body;
}
