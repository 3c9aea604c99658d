// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/catalogue.h"

#include <cstddef>
#include <string>
#include <vector>

namespace ov::catalogue {

struct CheckReport {
    std::int64_t folders = 0; // looked at
    std::int64_t dictations = 0;
    // Directories that have gone, or hold other dictations or folders than the catalogue says.
    std::vector<std::string> differing;
    std::vector<platform::Status> problems; // of those that cannot be read
};

// Lists some folders of the store anew, spread over all of it, and compares them with what the
// catalogue has at this moment. Fails where the store cannot be read at all.
platform::Status checkStore(Catalogue& catalogue, const Store& store, CheckReport& report,
                            std::size_t mostFolders = 100);

} // namespace ov::catalogue
