// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

// The host's workflow settings: in "Orvanta.ini" when a file "reg.ov" lies beside the control,
// else in the registry below "Software\Orvanta\WF\". Which of the two is decided once per thread.

namespace ov::modWFRoutines {

struct WFStorage {
    bool wfInitialised = false;
    bool wfUseIni = false;
    bool wfUserProfile = false; // the host's "UserProfile" switch
};

// Decides the store. Every read does so by itself when it was not done yet.
void InitWFStorage();

// As decided by now.
const WFStorage& storage() noexcept;

// The setting, or `defaultValue` when it is absent.
std::string WFGetValue(std::string_view section, std::string_view name,
                       std::string_view defaultValue);

// The setting with a trailing "\"; without `allowMissing` empty when there is no such directory.
std::string WFGetPath(std::string_view section, std::string_view name,
                      std::string_view defaultValue, bool allowMissing);

// For tests: the store is decided anew.
void reset();

} // namespace ov::modWFRoutines
