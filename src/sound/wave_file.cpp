// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/wave_file.h"

#include "sound/media.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

namespace ov::sound {

namespace {

// What outputs and the stretcher take.
constexpr int slowestRate = 1000;
constexpr int fastestRate = 192000;
constexpr int mostChannels = 32; // keeps the buffer of a mix small

// From here on, the writer did not know: pipes and speech synthesizers leave sizes a little below
// the largest signed number.
constexpr std::uint32_t unknownSize = 0x7FFF0000;

// For a file without a header of the usual kind: counted as if it were plain PCM.
WaveLayout plainLayout(const SoundInfo& info) noexcept {
    WaveLayout layout;
    layout.channels = info.channels;
    layout.rate = info.rate;
    layout.bitsPerSample = info.bitsPerSample;
    layout.blockSize = static_cast<std::uint32_t>(info.channels * layout.bitsPerSample / 8);
    layout.bytesPerSecond = layout.blockSize * static_cast<std::uint32_t>(info.rate);
    layout.length = static_cast<double>(info.frames);
    return layout;
}

bool isPacked(std::uint16_t tag) noexcept {
    return tag == 2 || tag == 17 || tag == 49; // MS ADPCM, IMA ADPCM, GSM 6.10
}

double framesPerBlock(const WaveHeader& header, const SoundInfo& info, double dataBytes) noexcept {
    if (isPacked(header.formatTag) && header.framesPerBlock > 0)
        return header.framesPerBlock;
    if (header.blockSize * 8 == header.channels * header.bitsPerSample || dataBytes <= 0)
        return 1;
    return std::max(1.0,
                    std::round(static_cast<double>(info.frames) * header.blockSize / dataBytes));
}

std::uint32_t believableRate(std::uint32_t told, double computed) noexcept {
    constexpr double tolerance = 0.01;
    return std::abs(told - computed) <= computed * tolerance
               ? told
               : static_cast<std::uint32_t>(
                     std::clamp(std::round(computed), 1.0,
                                static_cast<double>(std::numeric_limits<std::uint32_t>::max())));
}

// Bytes of sound between the header and the end of the file.
double dataThatIsThere(const platform::ReadableFile& file, const WaveHeader& header) noexcept {
    return static_cast<double>(std::clamp<std::int64_t>(file.size().value_or(0) - header.dataStart,
                                                        0, std::int64_t{header.dataSize}));
}

// A damaged file of floating numbers may hold any; one of them would spoil all that is heard.
void mendSamples(std::span<float> samples) noexcept {
    constexpr float loudest = 4; // of sound that is only too loud
    for (float& sample : samples)
        if (!(std::abs(sample) <= loudest))
            sample = std::isnan(sample) ? 0 : std::copysign(loudest, sample);
}

} // namespace

std::uint32_t WaveFile::open(std::string_view path, std::unique_ptr<WaveFile>& file) {
    std::optional<platform::ReadableFile> opened = platform::ReadableFile::open(path);
    if (!opened)
        return media_error::fileNotFound;
    if (platform::Status loaded; soundLibraries(loaded) == nullptr)
        return media_error::noDriver;
    file.reset(new WaveFile());
    file->header_ = readWaveHeader(*opened);
    const auto& header = file->header_;
    const std::int64_t end = header && header->dataSize < unknownSize
                                 ? header->dataStart + header->dataSize
                                 : opened->size().value_or(0);
    file->stream_ = WaveStream(std::move(*opened), header ? header->dataStart : 0, end);
    SoundInfo sound{};
    if (!file->openSound(sound))
        return file->stream_.missing() == WaveStream::Missing::unreadable
                   ? media_error::cannotRead
                   : media_error::invalidFile;
    file->readLayout(sound);
    return media_error::none;
}

bool WaveFile::openSound(SoundInfo& info) {
    sound_ = stream_.open(info);
    seekable_ = info.seekable;
    return sound_ && info.channels >= 1 && info.channels <= mostChannels &&
           info.rate >= slowestRate && info.rate <= fastestRate;
}

void WaveFile::readLayout(const SoundInfo& info) {
    frames_ = std::max<std::int64_t>(info.frames, 0);
    layout_ = plainLayout(info);
    if (!header_ || header_->channels != info.channels || header_->blockSize == 0)
        return;
    const double there = dataThatIsThere(stream_.file(), *header_);
    layout_.formatTag = header_->formatTag;
    layout_.bitsPerSample = header_->bitsPerSample;
    layout_.blockSize = header_->blockSize;
    layout_.framesPerBlock = framesPerBlock(*header_, info, there);
    layout_.bytesPerSecond = believableRate(
        header_->bytesPerSecond, layout_.blockSize / layout_.framesPerBlock * layout_.rate);
    // A recorder that could not come back to its header leaves the largest number there.
    if (header_->dataSize < unknownSize || there >= header_->dataSize)
        layout_.length =
            header_->dataSize / static_cast<double>(layout_.blockSize) * layout_.framesPerBlock;
    frames_ = std::min(frames_, static_cast<std::int64_t>(std::ceil(layout_.length)));
}

bool WaveFile::seek(std::int64_t frame) {
    const std::int64_t target = std::clamp<std::int64_t>(frame, 0, frames_);
    position_ = target;
    stream_.forget();
    failed_ = seekable_ ? !sound_->seek(target) : !reopenAt(target);
    failed_ = failed_ || stream_.missing() == WaveStream::Missing::unreadable;
    return !failed_;
}

// Some encodings can only be read from their start on, so that is moved. A few blocks before the
// target are decoded in vain, because the first ones sound of what was before them.
bool WaveFile::reopenAt(std::int64_t frame) {
    constexpr std::int64_t settling = 6;
    const bool inBlocks = header_ && layout_.framesPerBlock > 1;
    const auto perBlock = static_cast<std::int64_t>(layout_.framesPerBlock);
    const std::int64_t block =
        inBlocks ? std::max<std::int64_t>(frame / perBlock - settling, 0) : 0;
    SoundInfo info{};
    sound_.reset();
    sound_ = stream_.open(info, block * layout_.blockSize);
    if (!sound_)
        return false;
    std::vector<float> unheard(4096);
    const auto perRead = static_cast<std::int64_t>(unheard.size()) / layout_.channels;
    for (std::int64_t left = frame - block * perBlock; left > 0;) {
        const std::int64_t got = sound_->read(unheard.data(), std::min(left, perRead));
        if (got <= 0) // beyond a new end there is nothing to read, which read() tells
            return stream_.missing() == WaveStream::Missing::cutOff;
        left -= got;
    }
    return true;
}

std::size_t WaveFile::read(std::span<float> samples) {
    const std::int64_t room = static_cast<std::int64_t>(samples.size()) / channels();
    const std::int64_t wanted = std::min(room, frames_ - position_);
    if (!sound_ || wanted <= 0)
        return 0;
    const std::int64_t got = channels() == layout_.channels ? sound_->read(samples.data(), wanted)
                                                            : readMixed(samples, wanted);
    if (stream_.missing() != WaveStream::Missing::nothing)
        return endEarly();
    failed_ = got < wanted && sound_->failed();
    const auto frames = static_cast<std::size_t>(std::max<std::int64_t>(got, 0));
    position_ += static_cast<std::int64_t>(frames);
    mendSamples(samples.first(frames * static_cast<std::size_t>(channels())));
    return frames;
}

// What was decoded of bytes that are not there is no sound.
std::size_t WaveFile::endEarly() {
    failed_ = stream_.missing() == WaveStream::Missing::unreadable;
    if (!failed_)
        frames_ = position_;
    return 0;
}

std::int64_t WaveFile::readMixed(std::span<float> samples, std::int64_t wanted) {
    const auto channels = static_cast<std::size_t>(layout_.channels);
    manyChannels_.resize(static_cast<std::size_t>(wanted) * channels);
    const std::int64_t got = sound_->read(manyChannels_.data(), wanted);
    for (std::size_t i = 0; std::cmp_less(i, got); ++i) {
        const float* frame = manyChannels_.data() + i * channels;
        samples[i] = std::accumulate(frame, frame + channels, 0.0F) / static_cast<float>(channels);
    }
    return got;
}

} // namespace ov::sound
