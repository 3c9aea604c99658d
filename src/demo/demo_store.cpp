// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "demo/demo_store.h"

#include "demo/demo_names.h"
#include "demo/demo_sound.h"
#include "platform/files.h"

#include <array>
#include <chrono>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace ov::demo {

namespace {

using platform::Status;

struct Department {
    std::string_view folder;
    DemoTrade trade;
    bool byAuthor;    // folders per author; else per month
    bool hasFinished; // old dictations lie in "ERL"
};
constexpr std::array<Department, 9> departments{
    {{"Klinikum Nord\\Innere Medizin\\", DemoTrade::medicalGerman, false, true},
     {"Klinikum Nord\\Chirurgie\\", DemoTrade::medicalGerman, false, true},
     {"Klinikum Nord\\Pädiatrie\\", DemoTrade::medicalGerman, true, false},
     {"St Mary Hospital\\Ward 3\\", DemoTrade::medicalEnglish, false, true},
     {"St Mary Hospital\\Cardiology\\", DemoTrade::medicalEnglish, true, false},
     {"Kanzlei Brandt & Weiß\\Familienrecht\\", DemoTrade::legalGerman, true, true},
     {"Kanzlei Brandt & Weiß\\Verträge\\", DemoTrade::legalGerman, false, false},
     {"Bennett Clarke LLP\\Litigation\\", DemoTrade::legalEnglish, true, true},
     {"Bennett Clarke LLP\\Property\\", DemoTrade::legalEnglish, false, false}}};
constexpr std::string_view emptyFolder = "Klinikum Nord\\Neuaufnahme\\";
constexpr std::string_view unsearchedFolder = "_old\\2019\\";
constexpr int unsearchedEvery = 25; // one dictation in so many lies there
constexpr std::chrono::days finishedAge(30);

// Small encodings come most, as on a typist's machine; one in twenty is large or stereo.
using enum sound::SoundEncoding;
constexpr std::array<sound::SoundFormat, 20> formats{
    {{gsm610, 8000, 1},    {gsm610, 8000, 1},    {gsm610, 8000, 1},   {gsm610, 8000, 1},
     {gsm610, 8000, 1},    {imaAdpcm, 8000, 1},  {imaAdpcm, 8000, 1}, {imaAdpcm, 8000, 1},
     {imaAdpcm, 11025, 1}, {imaAdpcm, 16000, 1}, {muLaw, 8000, 1},    {muLaw, 8000, 1},
     {aLaw, 8000, 1},      {aLaw, 8000, 1},      {pcm8, 8000, 1},     {pcm8, 11025, 1},
     {pcm16, 8000, 1},     {pcm8, 8000, 1},      {pcm16, 16000, 1},   {muLaw, 8000, 2}}};

Status complain(std::errc error, std::string_view path, std::string_view reason) {
    return {static_cast<int>(error), platform::toNativePath(path), std::string(reason)};
}

std::string folderOf(const Department& department, const DemoName& name) {
    std::string folder(department.folder);
    if (department.hasFinished && name.age > finishedAge)
        return folder + "ERL\\";
    if (!department.byAuthor) {
        const std::chrono::year_month_day date(name.dictated);
        const unsigned month = static_cast<unsigned>(date.month());
        return folder + std::to_string(static_cast<int>(date.year())) + (month < 10 ? "-0" : "-") +
               std::to_string(month) + "\\";
    }
    return name.author.empty() ? folder : folder.append(name.author).append("\\");
}

class StoreWriter {
public:
    explicit StoreWriter(const DemoOptions& options)
        : root_(options.directory + (options.directory.ends_with('\\') ? "" : "\\")),
          names_(options.seed, options.today),
          dice_(options.seed + 1),
          sound_(options.seed) {}

    // The root and the folders that must be there however few dictations there are.
    Status prepare() {
        if (!platform::driveExists(root_))
            return complain(std::errc::no_such_device, root_, "there is no such drive");
        if (platform::fileKind(root_) != platform::FileKind::missing) {
            std::vector<std::string> names;
            if (Status status = platform::listNames(root_, names); !status.ok())
                return status;
            if (!names.empty())
                return complain(std::errc::directory_not_empty, root_,
                                "the directory is not empty");
        }
        if (Status status = makeFolder(root_ + std::string(emptyFolder)); !status.ok())
            return status;
        return makeFolder(root_ + std::string(unsearchedFolder));
    }

    Status writeNext() {
        const int index = index_++;
        const Department& department =
            departments[dice_.below(static_cast<std::uint32_t>(departments.size()))];
        const DemoName name = names_.next(department.trade);
        const bool unsearched = index % unsearchedEvery == unsearchedEvery - 1;
        const std::string folder =
            root_ + (unsearched ? std::string(unsearchedFolder) : folderOf(department, name));
        if (Status status = makeFolder(folder); !status.ok())
            return status;
        const auto& format = dice_.pick(std::span<const sound::SoundFormat>(formats));
        if (Status status = sound_.render(format, name.seconds, dice_.below(1'000'000), file_);
            !status.ok())
            return status;
        return writeFile(folder + name.fileName);
    }

private:
    Status makeFolder(const std::string& folder);
    Status writeFile(const std::string& path) const;

    std::string root_;
    DemoNames names_;
    Dice dice_;
    DemoSound sound_;
    std::string file_;
    std::set<std::string> made_;
    int index_ = 0;
};

Status StoreWriter::makeFolder(const std::string& folder) {
    if (folder.empty() || made_.contains(folder))
        return {};
    if (!platform::directoryExists(folder)) {
        const auto parentEnd = folder.find_last_of('\\', folder.size() - 2);
        if (parentEnd != std::string::npos)
            if (Status status = makeFolder(folder.substr(0, parentEnd + 1)); !status.ok())
                return status;
        if (Status status = platform::createDirectory(folder); !status.ok())
            return status;
    }
    made_.insert(folder);
    return {};
}

Status StoreWriter::writeFile(const std::string& path) const {
    Status status = platform::appendToFile(path, file_);
    if (!status.ok())
        static_cast<void>(platform::removeFile(path)); // half a dictation helps nobody
    return status;
}

} // namespace

DemoResult writeDemoStore(const DemoOptions& options, const DemoProgress& progress) {
    DemoResult result;
    StoreWriter writer(options);
    result.status = writer.prepare();
    while (result.status.ok() && result.written < options.count) {
        result.status = writer.writeNext();
        if (!result.status.ok())
            break;
        ++result.written;
        if (progress && !progress(result.written, options.count))
            break;
    }
    return result;
}

} // namespace ov::demo
