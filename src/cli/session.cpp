// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/session.h"

#include "cli/messages.h"
#include "dictation/field_table.h"
#include "platform/files.h"
#include "platform/known_folders.h"
#include "platform/process_locale.h"
#include "plugin/modOVPlugIn.h"
#include "support/language/language_id.h"
#include "support/language/modLanguage.h"
#include "support/language/text_ids.h"
#include "support/modFilePath.h"
#include "support/modUtil.h"

namespace ov::cli {

namespace {

std::int32_t languageNumber(const SessionOptions& options) {
    const std::string name =
        options.language ? *options.language : platform::environmentLocale("LC_MESSAGES");
    return name.starts_with("de") ? language_id::german : language_id::english;
}

std::string directoryAnswer(std::span<HostArgument> arguments) {
    const auto* id = arguments.empty() ? nullptr : std::get_if<std::int32_t>(&arguments.front());
    return id != nullptr ? modFilePath::GetDirectory(*id) : std::string();
}

std::string* textArgument(std::span<HostArgument> arguments) {
    auto* const* text = arguments.empty() ? nullptr : std::get_if<std::string*>(&arguments.front());
    return text != nullptr ? *text : nullptr;
}

void moveSettings(const std::string& native) {
    platform::setPerUserFolder(modFilePath::AddBackslash(platform::fromNativePath(native)));
}

} // namespace

void TerminalHost::ReportPlugInFailure(std::string_view plugInName) {
    complain(std::string(plugInName) + " failed");
}

void TerminalHost::CallPlugInFunction(IPlugin& /*caller*/, std::string_view function,
                                      std::span<HostArgument> arguments, std::string& result) {
    if (function == "PI_GetLanguage") {
        result = std::to_string(language_);
    } else if (function == "PI_GetDirectory") {
        result = directoryAnswer(arguments);
    } else if (function == "PI_ProgressText") {
        if (const std::string* text = textArgument(arguments))
            currentFolder_ = *text;
    }
}

void TerminalHost::WriteTrace(std::string_view /*text*/, IPlugin& /*caller*/) {}

Session::Session(const SessionOptions& options)
    : host_(std::make_shared<TerminalHost>(languageNumber(options))) {
    if (options.settingsDirectory)
        moveSettings(*options.settingsDirectory);
    connector_.ApplicationStart(host_);
    modLanguage::SetLanguage(modOVPlugIn::GetLanguage(connector_),
                             modOVPlugIn::GetSubLanguage(connector_));
    if (!modLanguage::LoadLanguageFile())
        modLanguage::ShowLanguageLoadFailure();
    modUtil::SetMessageTitle(modLanguage::GetText(text_id::title));
    modDictation::BuildSearchFieldTable();
    modDictation::LoadColumnSettings();
}

} // namespace ov::cli
