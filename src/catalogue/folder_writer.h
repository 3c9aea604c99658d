// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/catalogue.h"
#include "catalogue/kept_values.h"
#include "dictation/listing/ahead_folder.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ov::catalogue {

// Writes into a catalogue what was listed of folders.
class FolderWriter {
public:
    using Parts = std::vector<modDictation::ListedNamesPtr>;

    FolderWriter(Catalogue& catalogue, bool trustsFolderTimes);

    // What `folder` is by now. True when it holds other names than before, or was never listed:
    // they are to be written. `now` is nanoseconds since 1970.
    bool take(Folder& folder, const modDictation::AheadFolder& listed, const Parts& parts,
              std::int64_t now) const;
    // Its dictations, in place of those that the catalogue has and it has not; the folder itself is
    // still to be put.
    platform::Status writeNames(Folder& folder, const Parts& parts);

private:
    platform::Status add(const Folder& folder, std::int64_t position,
                         const modDictation::ListedName& file);
    Settled settledAs(const modDictation::AheadFolder& listed, std::int64_t seenFor) const;

    Catalogue& catalogue_;
    const bool trustsFolderTimes_;
    std::int64_t ward_ = 0; // of what was read last
    ValueReader values_;
    std::string nameBuffer_;
};

} // namespace ov::catalogue
