// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

// Everything the user reads, by number (text_ids.h). The language is kept per thread.
//
// A text may hold
//   %1%, %2% ...  an argument of GetText
//   %%            a percent sign
//   %#22%         another text of the control's own file, as it stands there
//   %#VERSION%    the word for "version" and the version number: "Version 1.00.000"
//   #13#          a line break, CR LF
// Anything else between two percent signs stays as it is. What has been put in is never looked
// into for percent signs again, whatever a directory or a file is called.
//
// An argument that is empty takes one of the blanks beside its place with it.

namespace ov::modLanguage {

// The host's language code: 0 and 7 are German. Both stay as they are until the next call.
void SetLanguage(std::int32_t language, std::int32_t subLanguage);
std::int32_t Language();
std::int32_t SubLanguage();

// Makes the control's own texts available; before the first call they are all empty. Reads the
// language files anew. False when the control's file cannot be read. Tells the user once when the
// host's standard file lacks texts that we need.
bool LoadLanguageFile();

// Tells the user that the control's language file cannot be loaded, in words of our own.
void ShowLanguageLoadFailure();

// The text of that number in that file and the current language, as it stands there; empty when
// there is none. At most resourceBufferSize bytes.
std::string GetResText(std::int32_t number, std::string_view fileName);
constexpr std::size_t resourceBufferSize = 8192;

// The text of that number: 1 to 19999 from the control's file, 20000 to 29999 from the host's
// standard file, empty for any other. English texts of our own stand in for what the standard file
// lacks. Without a list of arguments their places stay as they are.
// With one, a place whose argument the list does not have ends the expansion: from there on only
// line breaks are still put in.
std::string GetText(std::int32_t number);
std::string GetText(std::int32_t number, std::span<const std::string> arguments);
std::string GetText(std::int32_t number, std::initializer_list<std::string_view> arguments);

// The number in a caption like "#4001": the number that its text begins with behind the "#",
// rounded. 0 for any other text.
std::int32_t ParseTextRef(std::string_view text);

// The text that a caption like "#4001" stands for; any other text as it is.
std::string TranslateRef(std::string_view text);

// For tests: as before the first call.
void reset();

} // namespace ov::modLanguage
