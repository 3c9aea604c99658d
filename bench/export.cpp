// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// Times each form of an export of a long list, every column shown, and the longest time between
// two looks at the window:
//   ovbench_export [ROWS]

#include "dictation/field_table.h"
#include "export/file_export.h"
#include "export/print/pdf.h"
#include "platform/files.h"
#include "support/language/modLanguage.h"

#include <QGuiApplication>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

using namespace ov;
using Clock = std::chrono::steady_clock;

double seconds(Clock::duration time) {
    return std::chrono::duration<double>(time).count();
}

// All that a name can tell, different in every row.
std::string nameOf(int i) {
    const std::string number = std::to_string(i);
    const std::string minute = std::to_string(10 + i % 50);
    return "2$ROH@@5$HOCH@@6$00$" + minute + "$20@@7$20.11.2026 17$" + minute +
           "$00@@14$Dr!! Öztürk " + number + "@@3$OEZ@@12$" + number +
           "@@11$Referral to cardiology " + number + "@@16$S!! Thompson@@92$Night shift.WAV";
}

void fill(modDictation::DictationList& hits, int rows) {
    for (int i = 0; i < rows; ++i)
        hits.add("\\store\\Ward 3\\2026-11\\", nameOf(i));
}

void measure(const exporting::Document& document, const exporting::RowSource& rows,
             const exporting::FormatInfo& info, const std::filesystem::path& folder) {
    const auto file = folder / ("list" + std::string(info.ending));
    const auto start = Clock::now();
    auto last = start;
    Clock::duration longest{};
    const auto result = exporting::exportFile(
        document, rows, info.format, platform::fromNativePath(file.native()),
        [&](std::int64_t) {
            const auto now = Clock::now();
            longest = std::max(longest, now - last);
            last = now;
            return true;
        },
        exporting::print::writePdf);
    std::printf("%-6s %6.2f s %10ju bytes, longest step %.0f ms%s\n", info.ending.data(),
                seconds(Clock::now() - start),
                static_cast<std::uintmax_t>(std::filesystem::file_size(file)),
                seconds(longest) * 1000, result.ok() ? "" : "  FAILED");
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const int count = argc > 1 ? std::max(std::atoi(argv[1]), 1) : 100000;
    modLanguage::SetLanguage(9, 0);
    modLanguage::LoadLanguageFile();
    modDictation::BuildSearchFieldTable();
    modDictation::DictationList hits;
    fill(hits, count);
    exporting::Document document = exporting::describe({"\\store\\", {}});
    for (const modDictation::SearchField* field : modDictation::columnFields())
        if (field->Width > 0)
            document.columns.push_back(exporting::columnOf(field->Id));
    std::printf("%d rows, %zu columns, %s\n", count, document.columns.size(), __VERSION__);
#ifndef NDEBUG
    std::puts("built without optimisation: these figures say nothing");
#endif
    const auto folder = std::filesystem::temp_directory_path() / "ovbench_export";
    std::filesystem::create_directories(folder);
    for (const exporting::FormatInfo& info : exporting::formats())
        measure(document, exporting::HitRows(hits), info, folder);
    std::filesystem::remove_all(folder);
    return 0;
}
