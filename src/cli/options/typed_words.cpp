// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/options/typed_words.h"

#include "cli/messages.h"
#include "cli/pointed_complaint.h"
#include "dictation/typed/quick_lexer.h"
#include "platform/files.h"
#include "platform/locale.h"
#include "platform/text.h"

#include <algorithm>
#include <string_view>

namespace ov::cli {

namespace {

using modDictation::QuickPart;
using Kind = QuickPart::Kind;

bool isFolder(std::string_view native) {
    return platform::fileKind(platform::fromNativePath(native)) == platform::FileKind::directory;
}

bool looksLikeFolder(const QuickPart& word, bool isFirst) {
    const std::string& text = word.text;
    if (word.kind != Kind::word || text.empty() || text.front() == '"' || text.front() == '!' ||
        !modDictation::fieldNameOf(text).empty())
        return false;
    return text.find('/') != std::string::npos || (isFirst && text.front() == '.') ||
           isFolder(text);
}

} // namespace

TypedWords findRootAmong(const std::vector<QuickPart>& words,
                         const std::optional<std::string>& given) {
    TypedWords typed;
    typed.root = given;
    int depth = 0;
    for (auto word = words.begin(); word != words.end(); ++word) {
        const bool isFirst = word == words.begin();
        depth += word->kind == Kind::open ? 1 : 0;
        depth -= word->kind == Kind::close ? 1 : 0;
        const bool isCriterion = depth > 0 || (!isFirst && (word - 1)->kind == Kind::negation);
        const bool isRoot = !typed.root && !isCriterion && looksLikeFolder(*word, isFirst);
        if (isRoot) {
            typed.root = word->text;
            typed.rootIsWord = true;
            continue;
        }
        if (!isCriterion && looksLikeFolder(*word, false) && isFolder(word->text))
            typed.foldersAsTexts.push_back(word->text);
        typed.criteria.push_back(*word);
    }
    return typed;
}

// What holds a "/" is hardly a text; whoever names the folder by --root has said what words are.
bool hasOneFolder(const TypedWords& typed) {
    const auto second = std::ranges::find_if(typed.foldersAsTexts, [](const std::string& text) {
        return text.find('/') != std::string::npos;
    });
    if (!typed.rootIsWord || second == typed.foldersAsTexts.end())
        return true;
    complain("\"" + *second + "\" is a second folder, and a search has one, here \"" + *typed.root +
             "\"; search each by itself, or say '\"" + *second + "\"' to look for the text");
    return false;
}

bool addCriteria(const TypedWords& typed, modDictation::Search& search) {
    modDictation::QuickSearch read =
        modDictation::readQuickParts(typed.criteria, {platform::now(), search.all});
    if (read.ok()) {
        search.criteria.insert(search.criteria.begin(), read.criteria.begin(), read.criteria.end());
        return true;
    }
    const QuickPart& part = typed.criteria.at(read.part);
    const std::string text = platform::textFromBytes(part.text);
    const bool isLong = part.kind == Kind::criterion;
    complainAt((isLong ? "criterion \"" + text + "\": " : std::string()) + read.error.text, text,
               read.error.offset, read.error.length);
    return false;
}

void tellTakenWords(const TypedWords& typed) {
    const bool isRelative = typed.root && typed.root->find_first_of("/.") != 0;
    if (typed.rootIsWord && isRelative) {
        complain("\"" + *typed.root + "\" was taken as the folder to search; to look for it as a " +
                 "text, name the folder by --root");
        return;
    }
    if (typed.root)
        return;
    const auto word = std::ranges::find_if(typed.criteria, [](const QuickPart& part) {
        return part.kind == Kind::word && modDictation::fieldNameOf(part.text).empty();
    });
    if (word != typed.criteria.end())
        complain("\"" + word->text + "\" is no folder, so it was taken as a text to look for");
}

void tellFoldersAsTexts(const std::vector<std::string>& folders) {
    for (const std::string& folder : folders)
        complain(
            "\"" + folder +
            "\" is a folder too, but was taken as a text to look for; a search has one folder");
}

} // namespace ov::cli
