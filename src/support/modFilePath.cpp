// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "support/modFilePath.h"

#include "platform/files.h"
#include "platform/known_folders.h"
#include "support/log.h"
#include "support/modINI.h"
#include "support/modRegistry.h"
#include "support/modUtil.h"
#include "support/modWFRoutines.h"
#include "support/patient_files.h"

#include <array>
#include <map>

namespace ov::modFilePath {

namespace {

struct State {
    std::map<std::int32_t, std::string> replaced; // what SetDirectory stored
};

State& state() {
    thread_local State threadState;
    return threadState;
}

// Directories that are another one plus a name.
struct Child {
    std::int32_t id;
    std::int32_t parent;
    std::string_view name;
};

constexpr std::array<Child, 17> children = {{
    {directory_id::log, directory_id::perUser, "Log"},
    {directory_id::plugIns, directory_id::module, "PlugIns"},
    {directory_id::languages, directory_id::module, "DRL"},
    {30, directory_id::perUser, "Data"},
    {31, 30, "TServer"},
    {directory_id::hostSettings, 30, "DAss"},
    {33, 30, "WF"},
    {34, 30, "Lumeron"},
    {40, directory_id::common, "Data"},
    {41, 40, "TServer"},
    {42, 40, "DAss"},
    {43, 40, "WF"},
    {44, 40, "Lumeron"},
    {102, directory_id::network, "Data"},
    {103, 102, "TServer"},
    {104, 102, "DAss"},
    {105, 102, "WF"},
}};

std::string lookUp(std::int32_t id);

std::string childDirectory(const Child& child) {
    const std::string parent = AddBackslash(lookUp(child.parent));
    return parent.empty() ? parent : parent + std::string(child.name);
}

std::string orvantaFolder(std::string_view shellFolder) {
    const std::string folder = modRegistry::GetShellFolder(shellFolder);
    return folder.empty() ? lookUp(directory_id::module) : folder + "Orvanta\\";
}

std::string networkPath() {
    std::string path = modWFRoutines::WFGetPath("Orvanta2000", "NetzPath", "", true);
    return path.empty() ? lookUp(directory_id::module) : path;
}

std::string configurationFile() {
    return AddBackslash(lookUp(directory_id::perUser)) + "OVSearch.cfg";
}

std::string dictationRoot() {
    std::string root =
        modINI::ReadIniPath("Directories", "DictationDir", "", configurationFile(), true);
    if (root.empty()) {
        root = lookUp(directory_id::networkBase);
        if (!root.empty())
            SetDirectory(directory_id::dictationTree, root);
    }
    return root;
}

std::string lookUp(std::int32_t id) {
    const auto& replaced = state().replaced;
    if (const auto found = replaced.find(id); found != replaced.end())
        return found->second;
    for (const Child& child : children)
        if (child.id == id)
            return childDirectory(child);
    switch (id) {
    case directory_id::module:
        return platform::moduleDirectory();
    case directory_id::perUser:
        return platform::replacedPerUserFolder().empty() ? orvantaFolder("AppData")
                                                         : platform::replacedPerUserFolder();
    case directory_id::common:
        return orvantaFolder("Common AppData");
    case directory_id::network:
        return networkPath();
    case directory_id::networkBase:
        return modWFRoutines::WFGetPath("OV2000", "NetBasePath", "", true);
    case directory_id::dictationTree:
        return dictationRoot();
    default:
        return {};
    }
}

bool logDirectoryExists() {
    return patient::directoryExists(GetDirectory(directory_id::log));
}

bool reportMissingDrive(std::string_view drive) {
    const std::string text = "ERROR Create directory: Drive not found (" + std::string(drive) + ")";
    if (logDirectoryExists())
        WriteLog(text);
    else
        modUtil::ShowMessage(text, platform::MessageIcon::exclamation);
    return false;
}

// What lies on the way to the user's own settings and logs, or among them.
bool isPrivate(std::string_view directory) {
    for (const std::int32_t id : {directory_id::perUser, directory_id::log}) {
        const std::string own = GetDirectory(id);
        if (!own.empty() && (directory.starts_with(own) || own.starts_with(directory)))
            return true;
    }
    return false;
}

// While the log directory is itself being created nothing is logged: logging asks for it.
bool createLevel(std::string_view directory) {
    const bool logged = logDirectoryExists();
    if (logged)
        WriteLog("Create directory: " + std::string(directory));
    const platform::Status created = patient::createDirectory(
        directory, isPrivate(directory) ? platform::Access::ownerOnly : platform::Access::byUmask);
    // Another process may have been quicker.
    if (!created.ok() && !patient::directoryExists(directory)) {
        if (logged)
            WriteErrorLog(created, "EnsureDirectory");
        return false;
    }
    if (logged)
        WriteLog("Create directory OK");
    return true;
}

} // namespace

std::string GetDirectory(std::int32_t id, bool create) {
    std::string directory = AddBackslash(lookUp(id));
    if (create && !directory.empty() && !patient::directoryExists(directory) &&
        !EnsureDirectory(directory))
        directory.clear();
    return directory;
}

void SetDirectory(std::int32_t id, std::string_view path) {
    if (id != directory_id::dictationTree) {
        state().replaced[id] = AddBackslash(path);
        return;
    }
    EnsureDirectory(GetDirectory(directory_id::perUser));
    modINI::WriteIniPath("Directories", "DictationDir", path, configurationFile());
}

bool EnsureDirectory(std::string_view path) {
    const std::string directory = AddBackslash(path);
    const std::string_view drive = platform::driveOf(directory);
    if (!drive.empty() && !patient::directoryExists(drive))
        return reportMissingDrive(drive);
    for (std::size_t at = directory.find('\\', drive.size() + 1); at != std::string::npos;
         at = directory.find('\\', at + 1)) {
        const std::string_view level = std::string_view(directory).substr(0, at + 1);
        if (!patient::directoryExists(level) && !createLevel(level))
            return false;
    }
    return true;
}

std::string AddBackslash(std::string_view path) {
    std::string result(path);
    if (!result.empty() && result.back() != '\\')
        result.push_back('\\');
    return result;
}

std::string_view directoryPart(std::string_view path) noexcept {
    return path.substr(0, path.size() - namePart(path).size());
}

std::string_view namePart(std::string_view path) noexcept {
    const std::size_t at = path.rfind('\\');
    return at == std::string_view::npos ? path : path.substr(at + 1);
}

void reset() {
    state() = {};
}

} // namespace ov::modFilePath
