// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/store_update.h"

#include "catalogue/tree_update.h"
#include "platform/files.h"

#include <cerrno>
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
        if (Status put = catalogue.putStore(store); !put.ok())
            return put;
        return catalogue.folders(store.id, folders);
    };
    report.status = opened();
    if (report.status.ok())
        report = TreeUpdate(catalogue, std::move(store), std::move(folders), means).run();
    return report;
}

} // namespace ov::catalogue
