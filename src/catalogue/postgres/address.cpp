// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/postgres/address.h"

#include "catalogue/catalogue.h"

#include <cerrno>
#include <libpq-fe.h>
#include <memory>
#include <string_view>

namespace ov::catalogue::loaded {

namespace {

struct Free {
    void operator()(PQconninfoOption* options) const noexcept { PQconninfoFree(options); }
    void operator()(PGconn* connection) const noexcept { PQfinish(connection); }
};
using Options = std::unique_ptr<PQconninfoOption[], Free>;

std::string valueOf(const PQconninfoOption* option, std::string_view keyword) {
    for (; option != nullptr && option->keyword != nullptr; ++option)
        if (keyword == option->keyword && option->val != nullptr)
            return option->val;
    return {};
}

// What service file, environment and libpq itself say. Nothing is sent for that.
Options usualOptions(const std::string& service) {
    if (service.empty())
        return Options(PQconndefaults());
    const char* const keywords[] = {"service", nullptr};
    const char* const values[] = {service.c_str(), nullptr};
    const std::unique_ptr<PGconn, Free> begun(PQconnectStartParams(keywords, values, 0));
    return Options(PQconninfo(begun.get()));
}

// Also one with a "/", which cannot stand there as it is: the "@" behind it belongs to nothing
// else.
bool hasPassword(const PQconninfoOption* given, std::string_view place) {
    const std::size_t slash = place.find('/', place.find("://") + 3);
    return !valueOf(given, "password").empty() || !valueOf(given, "sslpassword").empty() ||
           (slash != std::string_view::npos && place.find('@', slash) < place.find('?'));
}

platform::Status refused(const std::string& name, const char* why) {
    return {EINVAL, name, why};
}

} // namespace

std::optional<Address> addressOf(const std::string& place, platform::Status& status) {
    constexpr const char* unencryptedToo = "prefer"; // what libpq does by itself
    const std::string name = shownPlace(place);
    const Options given(PQconninfoParse(place.c_str(), nullptr)); // its words may hold a password
    if (given == nullptr) {
        status = refused(name, "is no address of a server; write \"postgresql://HOST/DATABASE\" or "
                               "\"service=NAME\"");
        return std::nullopt;
    }
    if (hasPassword(given.get(), place)) {
        status = refused(name, "leave the password out of the address, where others can read it; "
                               "put it into the file ~/.pgpass");
        return std::nullopt;
    }
    // A connection that is dead, or that nobody answers, is known as such within a minute.
    Address address{{{"keepalives_idle", "30"},
                     {"keepalives_interval", "10"},
                     {"keepalives_count", "3"},
                     {"tcp_user_timeout", "60000"},
                     {"fallback_application_name", "ovsearch"}},
                    name};
    for (const PQconninfoOption* option = given.get(); option->keyword != nullptr; ++option)
        if (option->val != nullptr)
            address.options.emplace_back(option->keyword, option->val);
    const Options usual = usualOptions(valueOf(given.get(), "service"));
    if (valueOf(given.get(), "sslmode").empty() &&
        valueOf(usual.get(), "sslmode") == unencryptedToo)
        address.options.emplace_back("sslmode", "require");
    if (valueOf(given.get(), "connect_timeout").empty() &&
        valueOf(usual.get(), "connect_timeout").empty())
        address.options.emplace_back("connect_timeout", "10");
    address.options.emplace_back("client_encoding", "UTF8");
    return address;
}

} // namespace ov::catalogue::loaded
