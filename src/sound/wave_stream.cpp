// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/wave_stream.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace ov::sound {

namespace {

WaveStream& of(void* self) noexcept {
    return *static_cast<WaveStream*>(self);
}

} // namespace

WaveStream::WaveStream(platform::ReadableFile file, std::int64_t dataStart, std::int64_t dataEnd)
    : file_(std::move(file)),
      dataStart_(dataStart),
      end_(std::min(dataEnd, file_.size().value_or(dataEnd))) {}

Sound WaveStream::open(SF_INFO& info, std::int64_t leftOut) {
    leftOut_ = leftOut;
    position_ = 0;
    SF_VIRTUAL_IO calls{length, seek, read, write, tell};
    return Sound(sf_open_virtual(&calls, SFM_READ, &info, this));
}

sf_count_t WaveStream::length(void* self) {
    return std::max<std::int64_t>(of(self).end_ - of(self).leftOut_, 0);
}

sf_count_t WaveStream::tell(void* self) {
    return of(self).position_;
}

sf_count_t WaveStream::seek(sf_count_t offset, int whence, void* self) {
    const sf_count_t start = whence == SEEK_SET   ? 0
                             : whence == SEEK_CUR ? tell(self)
                                                  : length(self);
    sf_count_t target = 0;
    if (__builtin_add_overflow(start, offset, &target) || target < 0)
        return -1;
    return of(self).position_ = target;
}

// The end of a file that is shorter by now is an end; one inside it is not.
WaveStream::Missing WaveStream::reasonFor(std::int64_t got) const noexcept {
    const bool shorter = got == 0 && file_.size().value_or(end_) < end_;
    return shorter ? Missing::cutOff : Missing::unreadable;
}

// NOLINTNEXTLINE(readability-non-const-parameter): the signature is libsndfile's
sf_count_t WaveStream::read(void* target, sf_count_t count, void* self) {
    WaveStream& stream = of(self);
    auto* bytes = static_cast<char*>(target);
    sf_count_t done = 0;
    while (done < count) {
        const bool inHeader = stream.position_ < stream.dataStart_;
        const std::int64_t end = inHeader ? stream.dataStart_ : length(self);
        const std::int64_t wanted = std::min(count - done, end - stream.position_);
        if (wanted <= 0)
            break;
        const std::int64_t got =
            stream.file_.read(bytes + done, static_cast<std::size_t>(wanted),
                              stream.position_ + (inHeader ? 0 : stream.leftOut_));
        if (got <= 0) {
            stream.missing_ = stream.reasonFor(got);
            break;
        }
        done += got;
        stream.position_ += got;
    }
    return done;
}

sf_count_t WaveStream::write(const void* /*source*/, sf_count_t /*count*/, void* /*self*/) {
    return 0;
}

} // namespace ov::sound
