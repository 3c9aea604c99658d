// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>

// How characters that a file name cannot hold are written in a dictation's name.
//
// Both schemes were defined as replace-all passes in a fixed order, each on the result of the
// one before. The decoders here read once from left to right and give the same result; where
// the order of the passes shows, it says so.

namespace ov::modDictation {

// Every field but 23, and the whole name:
//   ~ *   _ /   ²² ?   ³³ <   %% >   ' "   !! .   $# :
// A lone ² or ³, "%", "!" and "$" stand for themselves. "~", "_" and "'" cannot be written.
std::string DecodeFieldText(std::string_view text);

// Field 23:
//   ²0 ²   ²1 *   ²2 /   ²3 \   ²4 ?   ²5 <   ²6 >   ²7 "   ²8 .   ²9 :   ²A |
// ²0 is decoded first: what follows it is read once more with the ² it gave, so "²01" is "*".
std::string DecodeFieldText2(std::string_view text);

// The same, appended to a buffer that is used again and again.
void appendDecodedFieldText(std::string_view text, std::string& out);
void appendDecodedFieldText2(std::string_view text, std::string& out);

} // namespace ov::modDictation
