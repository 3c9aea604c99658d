// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/store_update.h"

#include "catalogue/tree_update.h"
#include "platform/files.h"
#include "platform/threads/errand.h"

#include <cerrno>
#include <optional>
#include <utility>

namespace ov::catalogue {

using platform::Status;

namespace {

Status refuseNested(const std::string& root, const Store& known) {
    const std::string other = platform::toNativePath(known.root);
    if (root == known.root)
        return {};
    if (root.starts_with(known.root))
        return {EEXIST, platform::toNativePath(root),
                "lies in the store " + other + ", which the catalogue has; update that one"};
    if (known.root.starts_with(root))
        return {EEXIST, platform::toNativePath(root),
                "holds the store " + other + ", which the catalogue has; forget that one before"};
    return {};
}

using Id = std::optional<platform::DirectoryId>;

// Of a root that may be on a server that is dead, or on another machine.
Id idOf(const std::string& root) {
    platform::Errand<Id> errand([root] {
        const auto stamp = platform::directoryStamp(root);
        return stamp ? Id(stamp->id) : Id();
    });
    return errand.wait(platform::patience) ? errand.take() : Id();
}

// A new one by another path.
Status refuseKnown(const std::string& root, const std::vector<Store>& stores) {
    const Id id = idOf(root);
    for (const Store& known : stores)
        if (id && idOf(known.root) == id)
            return {EEXIST, platform::toNativePath(root),
                    "is the store " + platform::toNativePath(known.root) +
                        ", which the catalogue has; update that one"};
    return {};
}

} // namespace

UpdateReport updateStore(Catalogue& catalogue, const std::string& root, const UpdateMeans& means) {
    UpdateReport report;
    Store store;
    store.root = root;
    std::vector<Folder> folders;
    const auto opened = [&]() -> Status {
        if (Status locked = catalogue.lockForUpdate(); !locked.ok())
            return locked;
        // A store that is not there at all is not to be added.
        if (Status readable = platform::DirectoryReader().open(root); !readable.ok())
            return readable;
        std::vector<Store> stores;
        if (Status read = catalogue.stores(stores); !read.ok())
            return read;
        for (const Store& known : stores) {
            if (Status refused = refuseNested(root, known); !refused.ok())
                return refused;
            if (known.root == root)
                store = known;
        }
        if (Status refused = store.id == 0 ? refuseKnown(root, stores) : Status(); !refused.ok())
            return refused;
        if (Status put = catalogue.putStore(store); !put.ok())
            return put;
        return catalogue.folders(store.id, folders);
    };
    report.status = opened();
    relistUnfinished(folders);
    if (report.status.ok())
        report = TreeUpdate(catalogue, std::move(store), std::move(folders), means).run();
    return report;
}

} // namespace ov::catalogue
