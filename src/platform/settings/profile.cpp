// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/profile.h"

#include "platform/files.h"
#include "platform/profile_lock.h"
#include "platform/settings/profile_edit.h"
#include "platform/settings/profile_text.h"
#include "platform/text.h"
#include "platform/threads/errand.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <utility>

namespace ov::platform {

namespace {

// A default's trailing blanks are lost, but never its first character; then it is treated like a
// value.
std::string_view readDefault(std::string_view fallback) noexcept {
    while (fallback.size() > 1 && fallback.back() == ' ')
        fallback.remove_suffix(1);
    return withoutQuotes(fallback);
}

std::size_t copyText(std::string_view text, std::span<char> buffer) noexcept {
    if (buffer.empty())
        return 0;
    const std::string_view part = truncateUtf8(text, buffer.size() - 1);
    *std::copy(part.begin(), part.end(), buffer.begin()) = '\0';
    return part.size();
}

// The end of a list that is cut, or that leaves no byte to spare, is two zeros.
std::string_view partThatFits(std::string_view list, std::size_t size) noexcept {
    return list.size() + 1 < size ? list
                                  : truncateUtf8(list, size - std::min<std::size_t>(size, 2));
}

std::size_t copyList(std::string_view list, std::span<char> buffer) noexcept {
    if (buffer.empty())
        return 0;
    const std::string_view part = partThatFits(list, buffer.size());
    const auto end = std::copy(part.begin(), part.end(), buffer.begin());
    const std::size_t zeros = part.size() < list.size() ? 2 : 1;
    std::fill_n(end, std::min(zeros, static_cast<std::size_t>(buffer.end() - end)), '\0');
    return part.size();
}

std::size_t copyKeys(const std::string& keys, std::string_view fallback,
                     std::span<char> buffer) noexcept {
    const std::string_view part = partThatFits(keys, buffer.size());
    if (part.empty() || part.front() == '\0')
        return copyText(fallback, buffer);
    return copyList(keys, buffer);
}

// Files that were read as empty since their server did not answer. What was made of that may be far
// from what they hold, so this process writes to none of them any more.
class UnreadFiles {
public:
    void add(const std::string& path) {
        const std::lock_guard guard(mutex_);
        paths_.insert(path);
    }
    bool contains(const std::string& path) {
        const std::lock_guard guard(mutex_);
        return paths_.contains(path);
    }

private:
    std::mutex mutex_;
    std::set<std::string, std::less<>> paths_;
};

UnreadFiles& unreadFiles() {
    static UnreadFiles files;
    return files;
}

Status readPatiently(const std::string& path, std::string& content) {
    auto read = patiently(path, [path] {
        std::pair<Status, std::string> result;
        result.first = readFile(path, result.second, profileSizeLimit);
        return result;
    });
    if (!read) {
        unreadFiles().add(path);
        return noAnswer(path);
    }
    content = std::move(read->second);
    return std::move(read->first);
}

ProfileEdit edit(std::string& content, std::string_view section,
                 std::optional<std::string_view> key, std::optional<std::string_view> value) {
    if (!key)
        return removeProfileSection(content, section);
    return value ? setProfileValue(content, section, *key, *value)
                 : removeProfileKey(content, section, *key);
}

ProfileEdit readAndEdit(const std::string& path, std::string_view section,
                        std::optional<std::string_view> key, std::optional<std::string_view> value,
                        std::string& content) {
    const Status read = readPatiently(path, content);
    if (!read.ok() && read.kind() != Status::Kind::missing)
        return ProfileEdit::refused;
    return edit(content, section, key, value);
}

// A write that is left behind keeps the lock until it has ended; one that is waited for has given
// it back before it answers, so that the next setting finds it free.
Status replaceLocked(std::unique_ptr<ProfileLock> lock, const std::string& path,
                     std::string content) {
    return patientStatus(path,
                         [lock = std::move(lock), path, content = std::move(content)]() mutable {
                             Status status = replaceFile(path, content, Access::ownerOnly);
                             lock.reset();
                             return status;
                         });
}

} // namespace

std::size_t getPrivateProfileString(std::optional<std::string_view> section,
                                    std::optional<std::string_view> key,
                                    std::optional<std::string_view> fallback,
                                    std::span<char> buffer, std::string_view file) {
    return stringOfProfile(profileContent(file), section, key, fallback, buffer);
}

std::string profileContent(std::string_view file) {
    std::string content;
    static_cast<void>(readPatiently(profilePath(file), content));
    return content;
}

std::size_t stringOfProfile(std::string_view content, std::optional<std::string_view> section,
                            std::optional<std::string_view> key,
                            std::optional<std::string_view> fallback, std::span<char> buffer) {
    if (!section)
        return copyList(profileSections(content), buffer);
    const std::string_view missing = readDefault(fallback.value_or(""));
    if (!key)
        return copyKeys(profileKeys(content, *section), missing, buffer);
    const auto value = profileValue(content, *section, *key);
    return copyText(value ? *value : missing, buffer);
}

bool writePrivateProfileString(std::optional<std::string_view> section,
                               std::optional<std::string_view> key,
                               std::optional<std::string_view> value, std::string_view file) {
    const std::string path = profilePath(file);
    if (!section || path.empty() || unreadFiles().contains(path))
        return false;
    std::string content;
    ProfileEdit result = readAndEdit(path, *section, key, value, content);
    if (result == ProfileEdit::changed) { // nobody waits for what stands already
        auto lock = std::make_unique<ProfileLock>(toNativePath(path));
        if (!lock->mayGoOn())
            return false;
        result = readAndEdit(path, *section, key, value, content);
        if (result == ProfileEdit::changed)
            return replaceLocked(std::move(lock), path, std::move(content)).ok();
    }
    return result == ProfileEdit::unchanged;
}

std::string profilePath(std::string_view file) {
    if (file.empty() || file.find('\0') != std::string_view::npos)
        return {};
    if (file.find_first_of("\\/") != std::string_view::npos)
        return std::string(file);
    return windowsDirectory().append(file);
}

} // namespace ov::platform
