// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/files.h"
#include "platform/known_folders.h"
#include "platform/registry.h"

#include <algorithm>
#include <array>
#include <dlfcn.h>
#include <filesystem>
#include <link.h>

namespace ov::platform {

namespace {

struct PathState {
    std::string driveFolder; // empty: below the per-user folder
};

PathState& pathState() {
    thread_local PathState ofThread;
    return ofThread;
}

bool isLetter(char c) noexcept {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool startsWithDrive(std::string_view path) noexcept {
    return path.size() >= 2 && isLetter(path[0]) && path[1] == ':';
}

bool startsWithShare(std::string_view path) noexcept {
    return path.starts_with("\\\\");
}

void appendNative(std::string_view path, std::string& native) {
    const std::size_t start = native.size();
    native.append(path);
    for (std::size_t i = start; i < native.size(); ++i)
        if (native[i] == '\\')
            native[i] = '/';
}

std::string currentDirectory() {
    std::error_code error;
    return std::filesystem::current_path(error).native();
}

// "/a/./b/../c/" becomes "/a/c"; links are not looked at.
std::string withoutDots(std::string_view absolute) {
    std::string result;
    while (!absolute.empty()) {
        const std::size_t end = std::min(absolute.find('/'), absolute.size());
        const std::string_view part = absolute.substr(0, end);
        absolute.remove_prefix(std::min(end + 1, absolute.size()));
        if (part == "..")
            result.erase(result.empty() ? 0 : result.rfind('/'));
        else if (!part.empty() && part != ".")
            result.append("/").append(part);
    }
    return result.empty() ? "/" : result;
}

// The per-user folder as the registry has it, which is where the settings lie.
std::string namedPerUserFolder() {
    if (!replacedPerUserFolder().empty())
        return replacedPerUserFolder();
    std::array<char, 1024> buffer{};
    RegistryKey key;
    RegistryType type = RegistryType::none;
    std::size_t size = 0;
    if (key.open(RegistryHive::currentUser, shellFoldersKey) != registry_result::success ||
        key.queryValue("AppData", type, buffer, size) != registry_result::success)
        return {};
    const std::string_view text(buffer.data(), size);
    std::string folder(text.substr(0, text.find('\0')));
    folder.append(folder.ends_with('\\') ? "" : "\\");
    return folder + "Orvanta\\";
}

} // namespace

const std::string& driveFolder() {
    std::string& folder = pathState().driveFolder;
    if (folder.empty()) {
        // A registry from another machine may name a drive, which cannot hold the drives.
        const std::string named = namedPerUserFolder();
        const bool usable = named.starts_with('\\') && !startsWithShare(named);
        appendNative(usable ? named : perUserFolder(), folder);
        folder += "drives";
    }
    return folder;
}

void setDriveFolder(std::string native) {
    pathState().driveFolder = std::move(native);
}

std::string toNativePath(std::string_view path) {
    std::string native;
    if (path.find('\0') != std::string_view::npos)
        return native; // the system would take what stands before it
    if (startsWithDrive(path)) {
        const char letter = path[0] >= 'a' ? path[0] : static_cast<char>(path[0] + ('a' - 'A'));
        native = driveFolder() + '/' + letter;
        path.remove_prefix(2);
        if (!path.empty() && path[0] != '\\')
            native += '/';
    } else if (startsWithShare(path)) {
        native = driveFolder() + "/unc/";
        path.remove_prefix(2);
    }
    appendNative(path, native);
    return native;
}

std::string fromNativePath(std::string_view native) {
    std::string path;
    if (native.starts_with('/'))
        path = withoutDots(native);
    else if (const std::string current = currentDirectory(); !current.empty())
        path = withoutDots(current + '/' + std::string(native));
    else // it was removed; nothing is below it, and least of all what is below the root
        path = "/(no current folder)/" + std::string(native);
    for (char& c : path)
        if (c == '/')
            c = '\\';
    return path;
}

std::string_view driveOf(std::string_view path) {
    if (startsWithDrive(path))
        return path.substr(0, 2);
    if (!startsWithShare(path))
        return {};
    const std::size_t server = path.find('\\', 2);
    return server == std::string_view::npos ? path : path.substr(0, path.find('\\', server + 1));
}

bool driveExists(std::string_view path) {
    const std::string_view drive = driveOf(path);
    return drive.empty() || directoryExists(drive);
}

std::string moduleDirectory() {
    Dl_info info{};
    void* map = nullptr;
    std::error_code error;
    std::filesystem::path file;
    // Only a library has a name here. What dladdr() tells of the program itself is whatever its
    // caller typed, and that may name another file by now.
    if (dladdr1(reinterpret_cast<void*>(&moduleDirectory), &info, &map, RTLD_DL_LINKMAP) != 0)
        file = std::filesystem::canonical(static_cast<link_map*>(map)->l_name, error);
    if (file.empty() || error)
        file = std::filesystem::read_symlink("/proc/self/exe", error);
    std::string directory = fromNativePath(file.parent_path().native());
    if (!directory.ends_with('\\'))
        directory.push_back('\\');
    return directory;
}

} // namespace ov::platform
