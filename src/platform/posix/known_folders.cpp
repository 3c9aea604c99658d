// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/known_folders.h"

#include "platform/files.h"
#include "platform/profile.h"
#include "platform/registry.h"

#include <cstdlib>
#include <pwd.h>
#include <string_view>
#include <unistd.h>
#include <utility>
#include <vector>

namespace ov::platform {

namespace {

struct FolderState {
    std::string perUserFolder; // empty: the user's own
};

FolderState& folderState() {
    thread_local FolderState ofThread;
    return ofThread;
}

// An environment variable that names a directory; a relative one means nothing.
std::string_view directoryVariable(const char* name) {
    const char* value = std::getenv(name);
    const std::string_view directory = value == nullptr ? "" : value;
    return directory.starts_with('/') ? directory : std::string_view();
}

std::string homeDirectory() {
    if (const std::string_view home = directoryVariable("HOME"); !home.empty())
        return std::string(home);
    constexpr std::size_t longestEntry = 16384;
    std::vector<char> buffer(longestEntry);
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 ||
        found == nullptr || found->pw_dir == nullptr || *found->pw_dir != '/')
        return {};
    return found->pw_dir;
}

std::string directoryText(std::string_view native) {
    std::string directory = fromNativePath(native);
    if (!directory.ends_with('\\'))
        directory.push_back('\\');
    return directory;
}

// What the variable names, or that place below the home directory.
std::string userFolder(const char* variable, const char* belowHome) {
    if (const std::string_view configured = directoryVariable(variable); !configured.empty())
        return directoryText(configured);
    const std::string home = homeDirectory();
    return home.empty() ? home : directoryText(home + belowHome);
}

} // namespace

std::string userConfigFolder() {
    return userFolder("XDG_CONFIG_HOME", "/.config");
}

std::string userDataFolder() {
    if (!folderState().perUserFolder.empty())
        return folderState().perUserFolder;
    const std::string folder = userFolder("XDG_DATA_HOME", "/.local/share");
    return folder.empty() ? folder : folder + "Orvanta\\";
}

std::string systemConfigFolder() {
    return directoryText("/etc/xdg");
}

std::string windowsDirectory() {
    const char* replaced = std::getenv("OV_WINDIR");
    const bool isSet = replaced != nullptr && *replaced != '\0';
    std::string directory = fromNativePath(isSet ? replaced : "/etc/orvanta");
    if (directory.back() != '\\')
        directory.push_back('\\');
    return directory;
}

std::string perUserFolder() {
    const std::string& replaced = folderState().perUserFolder;
    if (!replaced.empty())
        return replaced;
    const std::string folder = userConfigFolder();
    return folder.empty() ? folder : folder + "Orvanta\\";
}

const std::string& replacedPerUserFolder() {
    return folderState().perUserFolder;
}

void setPerUserFolder(std::string directory) {
    if (!directory.empty() && !directory.ends_with('\\'))
        directory.push_back('\\');
    folderState().perUserFolder = std::move(directory);
    setDriveFolder({}); // asks for the new one at its next use
    reloadRegistry();
}

} // namespace ov::platform
