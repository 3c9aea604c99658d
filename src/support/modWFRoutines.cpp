// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "support/modWFRoutines.h"

#include "platform/files.h"
#include "support/modFilePath.h"
#include "support/modINI.h"
#include "support/modRegistry.h"

namespace ov::modWFRoutines {

namespace {

constexpr std::string_view settingsFile = "Orvanta.ini";
constexpr std::string_view markerFile = "reg.ov";
constexpr auto hive = modRegistry::RegistryHive::localMachine;

WFStorage& state() noexcept {
    thread_local WFStorage threadState;
    return threadState;
}

std::string registryKey(std::string_view section) {
    return R"(Software\Orvanta\WF\)" + std::string(section) + "\\";
}

const WFStorage& initialised() {
    if (!state().wfInitialised)
        InitWFStorage();
    return state();
}

} // namespace

void InitWFStorage() {
    WFStorage& store = state();
    store.wfUseIni = platform::fileExists(
        modFilePath::GetDirectory(modFilePath::directory_id::module).append(markerFile));
    store.wfUserProfile =
        store.wfUseIni
            ? modINI::ReadIniBoolean("OV2000", "UserProfile", false, settingsFile)
            : modRegistry::RegistryGetBoolean(hive, registryKey("OV2000"), "UserProfile", false);
    store.wfInitialised = true;
}

const WFStorage& storage() noexcept {
    return state();
}

std::string WFGetValue(std::string_view section, std::string_view name,
                       std::string_view defaultValue) {
    if (initialised().wfUseIni)
        return modINI::ReadIniValueDirect(section, name, defaultValue, settingsFile);
    return modRegistry::RegistryGetValueEx(hive, registryKey(section), name, defaultValue);
}

std::string WFGetPath(std::string_view section, std::string_view name,
                      std::string_view defaultValue, bool allowMissing) {
    if (initialised().wfUseIni)
        return modINI::ReadIniPath(section, name, defaultValue, settingsFile, allowMissing);
    return modRegistry::RegistryGetPath(hive, registryKey(section), name, defaultValue,
                                        allowMissing);
}

void reset() {
    state() = {};
}

} // namespace ov::modWFRoutines
