// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/catalogue.h"

#include "platform/files.h"
#include "platform/known_folders.h"
#include "platform/loaded_module.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <system_error>

namespace ov::catalogue {

using platform::Status;

namespace {

Status make(const std::string& place) {
    const std::string directory = place.substr(0, place.rfind('\\') + 1);
    if (Status made = platform::createDirectories(directory, platform::Access::ownerOnly);
        !made.ok())
        return made;
    return platform::appendToFile(place, {}, platform::Access::ownerOnly);
}

// As libpq takes them too, but nobody who reads the address: "host=records.example dbname=x".
bool beginsWithKeyword(std::string_view words) noexcept {
    constexpr std::array keywords = {"host",     "hostaddr", "port",    "dbname",  "user",
                                     "password", "passfile", "service", "sslmode", "sslpassword"};
    const std::size_t end = std::min(words.find_first_of("= \t\n"), words.size());
    const std::size_t behind = words.find_first_not_of(" \t\n", end);
    const auto isWord = [word = words.substr(0, end)](std::string_view keyword) {
        return std::ranges::equal(word, keyword, {},
                                  [](unsigned char c) { return std::tolower(c); });
    };
    return behind != std::string_view::npos && words[behind] == '=' &&
           std::ranges::any_of(keywords, isWord);
}

bool hasKeyword(std::string_view place) noexcept {
    for (std::size_t at = 0; at != std::string_view::npos;) {
        at = place.find_first_not_of(" \t\n", at);
        if (at != std::string_view::npos && beginsWithKeyword(place.substr(at)))
            return true;
        at = place.find_first_of(" \t\n", at);
    }
    return false;
}

bool isAddress(std::string_view place) noexcept {
    return place.starts_with("postgresql://") || place.starts_with("postgres://") ||
           place.starts_with("service=");
}

// What is named behind the "?" of an address; empty for none.
std::string hostIn(std::string_view place, std::size_t question) {
    constexpr std::string_view keyword = "host=";
    while (question != std::string_view::npos) {
        const std::size_t begin = question + 1;
        question = place.find('&', begin);
        if (place.substr(begin).starts_with(keyword))
            return std::string(place.substr(begin, question - begin).substr(keyword.size()));
    }
    return {};
}

// nullptr and why in `status`.
std::unique_ptr<Catalogue> openOnServer(const std::string& place, Access access, Status& status) {
    if (!isAddress(place)) {
        status = {EINVAL, shownPlace(place),
                  "is named in a way that is unknown here; write \"postgresql://HOST/DATABASE\" or "
                  "\"service=NAME\""};
        return nullptr;
    }
    if (const auto* const server = platform::loadModule<PostgresModule>(status))
        return server->open(place, access, status);
    status = {status.number(), status.file(),
              status.text() + "; catalogues on servers need it, and the library libpq"};
    return nullptr;
}

} // namespace

bool isServer(std::string_view place) noexcept {
    return isAddress(place) || place.find("://") != std::string_view::npos || hasKeyword(place);
}

// Host and database; what stands before the "@" and behind the "?" may be a secret, and where one
// cannot be told from the other all of it.
std::string shownPlace(const std::string& place) {
    if (!isServer(place))
        return platform::toNativePath(place);
    if (place.starts_with("service="))
        return place.substr(0, place.find_first_of(" \t\n"));
    const std::size_t question = place.find('?');
    if (!isAddress(place) ||
        (question != std::string::npos && place.find('@', question) != std::string::npos))
        return "the server";
    const std::size_t begin = place.find("://") + 3;
    const std::string address = place.substr(begin, question - begin);
    const std::string shown = address.substr(address.rfind('@') + 1);
    return shown.starts_with('/') ? hostIn(place, question) + shown : shown;
}

std::unique_ptr<Catalogue> openCatalogue(const std::string& place, Access access, Status& status) {
    if (isServer(place))
        return openOnServer(place, access, status);
    const std::string native = platform::toNativePath(place);
    const bool isThere = platform::fileExists(place);
    if (!isThere && access == Access::ask) {
        status = {ENOENT, native,
                  "there is no catalogue; \"ovsearch catalogue update DIR --to FILE\" makes one"};
        return nullptr;
    }
    if (!isThere)
        if (status = make(place); !status.ok())
            return nullptr;
    const auto* const module = platform::loadModule<SqliteModule>(status);
    return module != nullptr ? module->open(native, access, status) : nullptr;
}

std::string usualPlace() {
    return platform::userDataFolder() + "catalogue.db";
}

std::optional<Store> storeOf(Catalogue& catalogue, std::string_view directory, Status& status) {
    std::vector<Store> stores;
    if (status = catalogue.stores(stores); !status.ok())
        return std::nullopt;
    std::string known;
    for (const Store& store : stores) {
        if (directory.starts_with(store.root))
            return store;
        known.append(known.empty() ? "" : ", ").append(platform::toNativePath(store.root));
    }
    status = {ENOENT, platform::toNativePath(directory),
              known.empty() ? "is in no catalogue: this one is empty"
                            : "is not in the catalogue, which has " + known};
    return std::nullopt;
}

} // namespace ov::catalogue
