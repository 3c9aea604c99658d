// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/field_table.h"
#include "dictation/search/search.h"
#include "export/file_export.h"
#include "platform/files.h"
#include "platform/loaded_module.h"

#include <iostream>
#include <string>

// sample_search STORE AUTHOR [FILE]: prints the dictations below the folder STORE whose author
// contains AUTHOR, or writes them into FILE, a spreadsheet.

namespace dictation = ov::modDictation;

namespace {

ov::platform::Status writeSheet(const dictation::Search& what, const dictation::DictationList& hits,
                                const std::string& file) {
    ov::exporting::Document document = ov::exporting::describe(what);
    document.columns.push_back(ov::exporting::columnOf(dictation::field_id::name));
    return ov::exporting::exportFile(
               document, ov::exporting::HitRows(hits), ov::exporting::Format::xlsx,
               ov::platform::fromNativePath(file), [](std::int64_t) { return true; }, nullptr)
        .status;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3 && argc != 4) {
        std::cerr << "usage: sample_search STORE AUTHOR [FILE]\n";
        return 2;
    }
    // What writes spreadsheets is loaded when it is used.
    ov::platform::setModuleFolder(OVSEARCH_MODULE_FOLDER);
    dictation::BuildSearchFieldTable();
    dictation::Search what;
    what.root = ov::platform::fromNativePath(argv[1]) + "\\";
    what.criteria.push_back(
        {dictation::field_id::author, dictation::operator_id::contains, argv[2], {}});

    dictation::DictationList hits;
    const dictation::SearchReport report = dictation::search(what, hits);
    if (argc == 4) {
        const ov::platform::Status written = writeSheet(what, hits, argv[3]);
        if (!written.ok())
            std::cerr << written.description() << '\n';
        return written.ok() ? 0 : 1;
    }
    for (std::int32_t i = 1; i <= hits.size(); ++i)
        std::cout << nativePathOf(hits[i]) << '\n';
    for (const ov::platform::Status& problem : report.problems)
        std::cerr << problem.description() << '\n';
    return report.problems.empty() ? 0 : 1;
}
