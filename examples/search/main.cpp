// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/field_table.h"
#include "dictation/search/search.h"
#include "platform/files.h"

#include <iostream>

// sample_search STORE AUTHOR: prints the dictations below the folder STORE whose author contains
// AUTHOR.

int main(int argc, char** argv) {
    namespace dictation = ov::modDictation;
    if (argc != 3) {
        std::cerr << "usage: sample_search STORE AUTHOR\n";
        return 2;
    }
    dictation::BuildSearchFieldTable();
    dictation::Search what;
    what.root = ov::platform::fromNativePath(argv[1]) + "\\";
    what.criteria.push_back(
        {dictation::field_id::author, dictation::operator_id::contains, argv[2], {}});

    dictation::DictationList hits;
    const dictation::SearchReport report = dictation::search(what, hits);
    for (std::int32_t i = 1; i <= hits.size(); ++i)
        std::cout << nativePathOf(hits[i]) << '\n';
    for (const ov::platform::Status& problem : report.problems)
        std::cerr << problem.description() << '\n';
    return report.problems.empty() ? 0 : 1;
}
