// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/filter/entered_value.h"

#include "dictation/field_table.h"
#include "dictation/filter/typed_line.h"
#include "dictation/typed/field_word.h"
#include "dictation/typed/quick_lexer.h"
#include "platform/text.h"

namespace ov::modDictation {

namespace {

// Takes from `values`, which begins at `start`, all but the one that holds the cursor.
void keepValueAt(std::size_t cursor, std::string_view& values, std::size_t& start) {
    const auto skip = [&](std::size_t count) {
        values.remove_prefix(count);
        start += count;
    };
    skip(values.starts_with('!') ? 1 : 0);
    std::size_t comma = findUnquoted(values, ",");
    while (comma != std::string_view::npos && start + comma < cursor) {
        skip(comma + 1);
        comma = findUnquoted(values, ",");
    }
    values = values.substr(0, comma);
    std::string_view compared = values;
    takeComparison(compared);
    skip(static_cast<std::size_t>(compared.data() - values.data())); // it is trimmed behind, too
}

std::string withoutQuotes(std::string_view typed) {
    if (!typed.starts_with('"'))
        return std::string(typed);
    auto quoted = readQuoted(typed);
    if (!quoted)
        quoted = readQuoted(std::string(typed) + '"');
    return quoted ? quoted->text : std::string();
}

std::optional<EnteredValue> enteredValueIn(std::string_view word, std::size_t place,
                                           std::size_t cursor) {
    std::string_view rest = word;
    takeNegation(rest);
    const std::string_view name = fieldNameOf(rest);
    const std::int32_t field = name.empty() ? noField : fieldOfWord(name);
    if (field == noField)
        return std::nullopt;
    rest.remove_prefix(name.size() + 1);
    std::size_t start = place + word.size() - rest.size();
    keepValueAt(cursor, rest, start);
    if (cursor < start)
        return std::nullopt;
    const bool isOpen = rest.starts_with('"') && !readQuoted(rest);
    return EnteredValue{field, start, isOpen ? cursor : start + rest.size(),
                        withoutQuotes(rest.substr(0, cursor - start))};
}

} // namespace

std::optional<EnteredValue> enteredValueAt(std::string_view line, std::size_t cursor) {
    const TypedLine typed(line);
    for (std::size_t i = 0; i < typed.parts.size(); ++i) {
        const std::size_t place = typed.places[i];
        const std::string_view word = typed.parts[i].text;
        if (place < cursor && cursor <= place + word.size())
            return enteredValueIn(word, place, cursor);
    }
    return std::nullopt;
}

std::string quickValue(std::string_view text) {
    // The last four begin the blanks that ASCII does not have.
    constexpr std::string_view special = " \t,\"!=<>\xC2\xE1\xE2\xE3";
    if (!text.empty() && text.find_first_of(special) == std::string_view::npos &&
        !platform::equalsIgnoringCase(text, "empty"))
        return std::string(text);
    std::string quoted(1, '"');
    for (const char c : text)
        quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
}

} // namespace ov::modDictation
