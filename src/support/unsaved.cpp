// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "support/unsaved.h"

#include "platform/files.h"
#include "support/language/text_ids.h"
#include "support/modUtil.h"

#include <functional>
#include <set>
#include <string>

namespace ov {

namespace {

struct State {
    std::set<std::string, std::less<>> told; // the files
};

State& state() {
    thread_local State threadState;
    return threadState;
}

} // namespace

void reportUnsaved(std::string_view file, const Error& error, std::string_view procedure) {
    WriteErrorLog(error, procedure);
    const modUtil::Message message(text_id::settingsUnsaved, {platform::toNativePath(file)});
    // Without a language nothing has been shown yet that the user could have set.
    if (!message.text().empty() && state().told.emplace(file).second)
        modUtil::Tell(message, platform::MessageIcon::exclamation);
}

void resetUnsaved() {
    state() = {};
}

} // namespace ov
