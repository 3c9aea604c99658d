// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/module/sndfile_codec.h"

#include <sndfile.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <system_error>

namespace ov::sound::loaded {

namespace {

struct SoundCloser {
    void operator()(SNDFILE* sound) const noexcept { sf_close(sound); }
};
using Sound = std::unique_ptr<SNDFILE, SoundCloser>;

SoundBytes& of(void* bytes) noexcept {
    return *static_cast<SoundBytes*>(bytes);
}

sf_count_t lengthOf(void* bytes) {
    return of(bytes).length();
}

sf_count_t positionOf(void* bytes) {
    return of(bytes).position();
}

sf_count_t seekIn(sf_count_t offset, int whence, void* bytes) {
    const sf_count_t start = whence == SEEK_SET   ? 0
                             : whence == SEEK_CUR ? of(bytes).position()
                                                  : of(bytes).length();
    sf_count_t target = 0;
    if (__builtin_add_overflow(start, offset, &target) || !of(bytes).moveTo(target))
        return -1;
    return target;
}

// NOLINTNEXTLINE(readability-non-const-parameter): the signature is libsndfile's
sf_count_t readFrom(void* target, sf_count_t count, void* bytes) {
    return of(bytes).read(static_cast<char*>(target), count);
}

sf_count_t writeNothing(const void* /*source*/, sf_count_t /*count*/, void* /*bytes*/) {
    return 0;
}

int bitsOf(int format) noexcept {
    switch (format & SF_FORMAT_SUBMASK) {
    case SF_FORMAT_PCM_S8:
    case SF_FORMAT_PCM_U8:
        return 8;
    case SF_FORMAT_PCM_24:
        return 24;
    case SF_FORMAT_PCM_32:
    case SF_FORMAT_FLOAT:
        return 32;
    default:
        return 16;
    }
}

class Decoder final : public SoundDecoder {
public:
    explicit Decoder(Sound sound) : sound_(std::move(sound)) {}

    bool seek(std::int64_t frame) override {
        return sf_seek(sound_.get(), frame, SEEK_SET) == frame;
    }
    std::int64_t read(float* samples, std::int64_t frames) override {
        return sf_readf_float(sound_.get(), samples, frames);
    }
    bool failed() const override { return sf_error(sound_.get()) != SF_ERR_NO_ERROR; }

private:
    Sound sound_;
};

// What libsndfile writes to instead of a file.
struct MemoryFile {
    std::string& bytes;
    sf_count_t position = 0;

    static MemoryFile& of(void* self) { return *static_cast<MemoryFile*>(self); }
    static sf_count_t length(void* self) { return static_cast<sf_count_t>(of(self).bytes.size()); }
    static sf_count_t tell(void* self) { return of(self).position; }

    static sf_count_t seek(sf_count_t offset, int whence, void* self) {
        const sf_count_t start = whence == SEEK_SET   ? 0
                                 : whence == SEEK_CUR ? tell(self)
                                                      : length(self);
        return of(self).position = std::max<sf_count_t>(0, start + offset);
    }

    static sf_count_t read(void* target, sf_count_t count, void* self) {
        MemoryFile& file = of(self);
        count = std::clamp<sf_count_t>(length(self) - file.position, 0, count);
        std::memcpy(target, file.bytes.data() + file.position, static_cast<std::size_t>(count));
        file.position += count;
        return count;
    }

    static sf_count_t write(const void* source, sf_count_t count, void* self) {
        MemoryFile& file = of(self);
        const auto end = static_cast<std::size_t>(file.position + count);
        file.bytes.resize(std::max(file.bytes.size(), end));
        std::memcpy(file.bytes.data() + file.position, source, static_cast<std::size_t>(count));
        file.position += count;
        return count;
    }
};

int formatOf(SoundEncoding encoding) noexcept {
    switch (encoding) {
    case SoundEncoding::pcm8:
        return SF_FORMAT_PCM_U8;
    case SoundEncoding::pcm16:
        return SF_FORMAT_PCM_16;
    case SoundEncoding::muLaw:
        return SF_FORMAT_ULAW;
    case SoundEncoding::aLaw:
        return SF_FORMAT_ALAW;
    case SoundEncoding::imaAdpcm:
        return SF_FORMAT_IMA_ADPCM;
    case SoundEncoding::gsm610:
        break;
    }
    return SF_FORMAT_GSM610;
}

platform::Status failure(const char* reason) {
    return {static_cast<int>(std::errc::io_error), "libsndfile", reason};
}

} // namespace

std::unique_ptr<SoundDecoder> decode(SoundBytes& bytes, SoundInfo& info) {
    SF_VIRTUAL_IO calls{lengthOf, seekIn, readFrom, writeNothing, positionOf};
    SF_INFO found{};
    Sound sound(sf_open_virtual(&calls, SFM_READ, &found, &bytes));
    info = {found.frames, found.samplerate, found.channels, bitsOf(found.format),
            found.seekable != 0};
    return sound ? std::make_unique<Decoder>(std::move(sound)) : nullptr;
}

platform::Status encode(const SoundFormat& format, std::span<const std::int16_t> samples,
                        std::string& file) {
    file.clear();
    MemoryFile memory{file};
    SF_VIRTUAL_IO calls{MemoryFile::length, MemoryFile::seek, MemoryFile::read, MemoryFile::write,
                        MemoryFile::tell};
    SF_INFO info{};
    info.samplerate = format.rate;
    info.channels = format.channels;
    info.format = SF_FORMAT_WAV | formatOf(format.encoding);
    const Sound sound(sf_open_virtual(&calls, SFM_WRITE, &info, &memory));
    if (!sound)
        return failure(sf_strerror(nullptr));
    const auto count = static_cast<sf_count_t>(samples.size());
    if (sf_write_short(sound.get(), samples.data(), count) != count)
        return failure(sf_strerror(sound.get()));
    return {};
}

} // namespace ov::sound::loaded
