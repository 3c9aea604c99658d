// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// Values as the server sends and takes them: numbers with the most significant byte first.

namespace ov::catalogue::loaded {

template <std::integral Number>
void appendNumber(std::string& out, Number number) {
    for (std::size_t byte = sizeof(Number); byte-- > 0;)
        out.push_back(static_cast<char>(number >> (8 * byte)));
}

// Of 1, 2, 4 or 8 bytes.
inline std::int64_t numberIn(std::string_view bytes) noexcept {
    std::int64_t number = !bytes.empty() && (bytes.front() & 0x80) != 0 ? -1 : 0;
    for (const char byte : bytes)
        number = static_cast<std::int64_t>(static_cast<std::uint64_t>(number) << 8U |
                                           static_cast<unsigned char>(byte));
    return number;
}

// With its length before it.
template <std::integral Number>
void appendField(std::string& out, Number number) {
    appendNumber(out, static_cast<std::int32_t>(sizeof(Number)));
    appendNumber(out, number);
}
inline void appendField(std::string& out, std::string_view bytes) {
    appendNumber(out, static_cast<std::int32_t>(bytes.size()));
    out.append(bytes);
}
inline void appendNothing(std::string& out) {
    appendNumber(out, std::int32_t{-1});
}

// The numbers of types; these are the same in every server.
namespace type {
constexpr unsigned bytes = 17;
constexpr unsigned int64 = 20;
constexpr unsigned int32 = 23;
constexpr unsigned text = 25;
} // namespace type

// An array without gaps, from 1.
class ArrayOf {
public:
    explicit ArrayOf(unsigned elementType) : elementType_(elementType) {}

    template <typename Value>
    void add(const Value& value) {
        appendField(fields_, value);
        ++count_;
    }
    std::int32_t count() const noexcept { return count_; }
    unsigned arrayType() const noexcept {
        constexpr unsigned ofBytes = 1001;
        constexpr unsigned ofInt32 = 1007;
        constexpr unsigned ofText = 1009;
        constexpr unsigned ofInt64 = 1016;
        switch (elementType_) {
        case type::bytes:
            return ofBytes;
        case type::int32:
            return ofInt32;
        case type::text:
            return ofText;
        default:
            return ofInt64;
        }
    }
    std::string bytes() const {
        constexpr std::int32_t dimensions = 1;
        constexpr std::int32_t noNulls = 0;
        std::string head;
        appendNumber(head, count_ > 0 ? dimensions : 0);
        appendNumber(head, noNulls);
        appendNumber(head, static_cast<std::int32_t>(elementType_));
        if (count_ == 0)
            return head;
        appendNumber(head, count_);
        appendNumber(head, std::int32_t{1});
        return head + fields_;
    }

private:
    unsigned elementType_;
    std::string fields_;
    std::int32_t count_ = 0;
};

} // namespace ov::catalogue::loaded
