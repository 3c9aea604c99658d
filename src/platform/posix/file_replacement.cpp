// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/file_replacement.h"

#include "platform/files.h"
#include "platform/posix/file_descriptor.h"
#include "platform/posix/unfinished_file.h"

#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>

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
    const FileDescriptor handle(
        open(nativeDirectoryOf(native).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (handle.valid())
        fsync(handle.get());
}

} // namespace

// Removed unless it was renamed. False comes with errno set.
class FileReplacement::TemporaryFile {
public:
    // Not mkostemp(): only open() applies the user's mask to `mode`.
    TemporaryFile(const std::string& directory, mode_t mode) {
        constexpr int mostAtOnce = 1000;
        for (int i = 0; i < mostAtOnce && !file_.valid() && (i == 0 || errno == EEXIST); ++i) {
            name_ = unfinishedName(directory, i);
            mark_.emplace(name_);
            file_ =
                FileDescriptor(::open(name_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode));
        }
        if (!file_.valid())
            mark_.reset();
    }
    ~TemporaryFile() {
        if (file_.valid() && !renamed_)
            unlink(name_.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    bool valid() const noexcept { return file_.valid(); }

    // Whoever asks for it writes by himself, and checks.
    const std::string& name() noexcept {
        writtenByOthers_ = true;
        return name_;
    }

    // The owner can be kept by root only, the group by its members; the mode by everyone.
    bool takeRightsOf(const struct stat& old) {
        if (fchown(file_.get(), old.st_uid, old.st_gid) != 0)
            static_cast<void>(!fchown(file_.get(), static_cast<uid_t>(-1), old.st_gid));
        return fchmod(file_.get(), old.st_mode & 07777U) == 0;
    }

    bool write(std::string_view content) {
        written_.add(content);
        return writeAll(file_.get(), content);
    }

    bool renameTo(const std::string& target) {
        renamed_ = fsync(file_.get()) == 0 && (writtenByOthers_ || holdsWhatWasWritten()) &&
                   rename(name_.c_str(), target.c_str()) == 0;
        return renamed_;
    }

private:
    // What a file should hold, without keeping it.
    struct Fingerprint {
        std::uint64_t size = 0;
        uLong sum = 0;

        void add(std::string_view content) noexcept {
            size += content.size();
            const auto* bytes = reinterpret_cast<const Bytef*>(content.data());
            sum = crc32_z(sum, bytes, content.size());
        }
        // From the start of the file. False with errno set.
        bool addAll(int file) {
            constexpr std::size_t room = 256 * 1024UL;
            std::string piece(room, '\0');
            for (;;) {
                const ssize_t got = pread(file, piece.data(), room, static_cast<off_t>(size));
                if (got == 0)
                    return true;
                if (got > 0)
                    add(std::string_view(piece.data(), static_cast<std::size_t>(got)));
                else if (errno != EINTR)
                    return false;
            }
        }
        bool operator==(const Fingerprint&) const = default;
    };

    // Asks the disk, as far as the system lets us, and not its cache.
    bool holdsWhatWasWritten() {
        static_cast<void>(posix_fadvise(file_.get(), 0, 0, POSIX_FADV_DONTNEED));
        Fingerprint found;
        if (!found.addAll(file_.get()))
            return false;
        errno = EIO;
        return found == written_;
    }

    std::string name_;
    FileDescriptor file_;
    std::optional<UnfinishedMark> mark_; // ends after the file has been removed
    Fingerprint written_;
    bool writtenByOthers_ = false;
    bool renamed_ = false;
};

FileReplacement::FileReplacement() = default;
FileReplacement::~FileReplacement() = default;

Status FileReplacement::open(std::string_view path, Access access) {
    target_ = linkTarget(toNativePath(path));
    struct stat old {};
    const bool exists = stat(target_.c_str(), &old) == 0;
    if (exists ? !mayBeReplaced(target_, old.st_mode) : errno != ENOENT)
        return systemError(target_);
    const std::string directory = nativeDirectoryOf(target_);
    removeAbandonedFiles(directory);
    file_ = std::make_unique<TemporaryFile>(directory, exists ? 0600 : modeFor(access, 0666));
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
