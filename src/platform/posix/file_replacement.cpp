// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/file_replacement.h"

#include "platform/files.h"
#include "platform/posix/file_descriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace ov::platform {

namespace {

// Where a link leads to, also when nothing is there yet; the path itself when it is no link.
std::string linkTarget(std::string native) {
    constexpr int longestChain = 40;
    std::error_code error;
    for (int i = 0; i < longestChain; ++i) {
        const auto target = std::filesystem::read_symlink(native, error);
        if (error)
            break;
        native = std::filesystem::path(native).parent_path() / target;
    }
    return native;
}

// A rename asks for rights on the directory only and would also take the place of a device.
bool mayBeReplaced(const std::string& native, mode_t mode) {
    if (S_ISREG(mode))
        return faccessat(AT_FDCWD, native.c_str(), W_OK, AT_EACCESS) == 0;
    errno = S_ISDIR(mode) ? EISDIR : EINVAL;
    return false;
}

void syncDirectoryOf(const std::string& native) {
    const std::size_t slash = native.rfind('/');
    const std::string directory = slash == std::string::npos ? "." : native.substr(0, slash + 1);
    const FileDescriptor handle(open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (handle.valid())
        fsync(handle.get());
}

} // namespace

// Removed unless it was renamed. False comes with errno set.
class FileReplacement::TemporaryFile {
public:
    // Not mkostemp(): only open() applies the user's mask to `mode`.
    TemporaryFile(const std::string& target, mode_t mode) {
        const std::string prefix = target + "." + std::to_string(getpid()) + ".";
        constexpr int leftovers = 1000; // of crashed processes with the same number
        for (int i = 0; i < leftovers && !file_.valid() && (i == 0 || errno == EEXIST); ++i) {
            name_ = prefix + std::to_string(i);
            file_ = FileDescriptor(
                ::open(name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
        }
    }
    ~TemporaryFile() {
        if (file_.valid() && !renamed_)
            unlink(name_.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    bool valid() const noexcept { return file_.valid(); }
    const std::string& name() const noexcept { return name_; }

    // The owner can be kept by root only, the group by its members; the mode by everyone.
    bool takeRightsOf(const struct stat& old) {
        if (fchown(file_.get(), old.st_uid, old.st_gid) != 0)
            static_cast<void>(!fchown(file_.get(), static_cast<uid_t>(-1), old.st_gid));
        return fchmod(file_.get(), old.st_mode & 07777U) == 0;
    }

    bool write(std::string_view content) { return writeAll(file_.get(), content); }

    bool renameTo(const std::string& target) {
        renamed_ = fsync(file_.get()) == 0 && rename(name_.c_str(), target.c_str()) == 0;
        return renamed_;
    }

private:
    std::string name_;
    FileDescriptor file_;
    bool renamed_ = false;
};

FileReplacement::FileReplacement() = default;
FileReplacement::~FileReplacement() = default;

Status FileReplacement::open(std::string_view path) {
    target_ = linkTarget(toNativePath(path));
    struct stat old {};
    const bool exists = stat(target_.c_str(), &old) == 0;
    if (exists ? !mayBeReplaced(target_, old.st_mode) : errno != ENOENT)
        return systemError(target_);
    file_ = std::make_unique<TemporaryFile>(target_, exists ? 0600 : 0666);
    if (!file_->valid() || (exists && !file_->takeRightsOf(old)))
        return systemError(target_);
    return {};
}

Status FileReplacement::write(std::string_view content) {
    return file_->write(content) ? Status{} : systemError(target_);
}

const std::string& FileReplacement::nativeName() const {
    return file_->name();
}

Status FileReplacement::commit() {
    if (!file_->renameTo(target_))
        return systemError(target_);
    syncDirectoryOf(target_);
    return {};
}

} // namespace ov::platform
