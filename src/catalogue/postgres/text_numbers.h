// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/postgres/connection.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ov::catalogue::loaded {

// The numbers of texts. To ask the server for each as it is met would take longer than all else, so
// that texts get numbers of our own first, and many at once those of the server.
class TextNumbers {
public:
    // Our own; another one each time.
    std::int64_t add(std::int64_t ward, std::int32_t field, std::string_view upper,
                     std::string_view text);
    // Finds those of the server, or adds them there.
    void resolve(Connection& connection);
    // That of the server; 0 for one that was never resolved.
    std::int64_t of(std::int64_t own) const noexcept;
    // After what was added has been undone.
    void forget();

private:
    struct Unknown {
        std::size_t at = 0; // in numbers_
        std::int32_t ward = 0;
        std::int32_t field = 0;
        std::string upper;
        std::string text;
    };
    void find(Connection& connection);
    void insert(Connection& connection);
    Parameters parameters() const;

    std::vector<std::int32_t> numbers_; // of the server, by our own
    std::int64_t first_ = 0;            // our own of the first of them
    std::vector<Unknown> unknown_;
};

} // namespace ov::catalogue::loaded
