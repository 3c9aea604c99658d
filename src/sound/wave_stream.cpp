// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/wave_stream.h"

#include <algorithm>
#include <utility>

namespace ov::sound {

WaveStream::WaveStream(platform::ReadableFile file, std::int64_t dataStart, std::int64_t dataEnd)
    : file_(std::move(file)),
      dataStart_(dataStart),
      end_(std::min(dataEnd, file_.size().value_or(dataEnd))) {}

std::unique_ptr<SoundDecoder> WaveStream::open(SoundInfo& info, std::int64_t leftOut) {
    leftOut_ = leftOut;
    position_ = 0;
    return soundLibraries().decode(*this, info);
}

std::int64_t WaveStream::length() {
    return std::max<std::int64_t>(end_ - leftOut_, 0);
}

bool WaveStream::moveTo(std::int64_t position) {
    if (position < 0)
        return false;
    position_ = position;
    return true;
}

// The end of a file that is shorter by now is an end; one inside it is not.
WaveStream::Missing WaveStream::reasonFor(std::int64_t got) const noexcept {
    const bool shorter = got == 0 && file_.size().value_or(end_) < end_;
    return shorter ? Missing::cutOff : Missing::unreadable;
}

std::int64_t WaveStream::read(char* target, std::int64_t count) {
    std::int64_t done = 0;
    while (done < count) {
        const bool inHeader = position_ < dataStart_;
        const std::int64_t end = inHeader ? dataStart_ : length();
        const std::int64_t wanted = std::min(count - done, end - position_);
        if (wanted <= 0)
            break;
        const std::int64_t got = file_.read(target + done, static_cast<std::size_t>(wanted),
                                            position_ + (inHeader ? 0 : leftOut_));
        if (got <= 0) {
            missing_ = reasonFor(got);
            break;
        }
        done += got;
        position_ += got;
    }
    return done;
}

} // namespace ov::sound
