// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/kept_values.h"

#include "dictation/dictation_record.h"
#include "dictation/field_codes.h"
#include "dictation/field_date.h"
#include "dictation/name_decoding.h"
#include "platform/text.h"
#include "support/numbers.h"

#include <charconv>

namespace ov::catalogue {

namespace {

// Beyond, a store has texts that hardly come again; they are looked up once more then.
constexpr std::size_t mostKnown = 200'000;

constexpr std::int32_t mostFields = 100; // the numbers of fields in names are below
constexpr std::int8_t noColumn = -1;

// The column of each field of a name.
using ColumnsByTag = std::array<std::int8_t, mostFields>;
ColumnsByTag columnsByTag() {
    ColumnsByTag columns{};
    columns.fill(noColumn);
    for (std::size_t i = 0; i < columnCount; ++i) {
        const auto field = modDictation::fieldDefinition(keptColumns()[i].field).dictationField;
        columns.at(static_cast<std::size_t>(field)) = static_cast<std::int8_t>(i);
    }
    return columns;
}

// The column whose tag stands there, behind its "@@"; `at` is then behind the tag.
std::int8_t columnAt(std::string_view name, std::size_t& at) noexcept {
    static const ColumnsByTag columns = columnsByTag();
    std::int32_t number = 0;
    const char* const begin = name.data() + at;
    const auto [end, error] = std::from_chars(begin, name.data() + name.size(), number);
    const bool isTag = error == std::errc() && end != name.data() + name.size() && *end == '$' &&
                       number > 0 && number < mostFields && *begin != '0';
    // That of the status has no "@@", and stands nowhere else.
    if (!isTag || number == modDictation::dictation_field::status)
        return noColumn;
    at = static_cast<std::size_t>(end - name.data()) + 1;
    return columns[static_cast<std::size_t>(number)];
}

std::int64_t numberOfCode(std::int32_t code) noexcept {
    return code == modDictation::noCode ? kept::other : kept::first + code;
}

std::int64_t numberOfFlags(std::string_view text) {
    const std::int32_t bits = leadingInt32(text);
    return bits >= 0 && std::to_string(bits) == text ? kept::first + bits : kept::other;
}

std::int64_t numberOfDay(std::string_view text) {
    const auto date = modDictation::readDateOrSerial(text);
    return date ? kept::first + date->day - firstDay : kept::other;
}

std::int64_t numberOfLength(std::string_view text) {
    const auto seconds = modDictation::readSeconds(text);
    return seconds ? kept::first + *seconds : kept::other;
}

} // namespace

const KeptValues& ValueReader::read(std::string_view name) {
    findRaw(name);
    for (std::size_t i = 0; i < columnCount; ++i)
        values_.numbers[i] = raw_[i] ? numberOf(i, *raw_[i]) : kept::absent;
    return values_;
}

void ValueReader::forget() {
    for (Known& known : known_)
        known.clear();
}

// One pass for all fields; each counts where its tag comes first, as for findFieldValue().
void ValueReader::findRaw(std::string_view name) {
    constexpr std::string_view separator = "@@";
    static const std::string statusTag =
        modDictation::fieldTag(modDictation::dictation_field::status);
    static const std::size_t statusColumn =
        columnOfField(modDictation::field_id::status).value_or(0);
    raw_.fill(std::nullopt);
    std::size_t at = name.find(separator);
    if (name.starts_with(statusTag))
        raw_[statusColumn] = name.substr(0, at).substr(statusTag.size());
    while (at != std::string_view::npos) {
        std::size_t begin = at + separator.size();
        const std::int8_t column = columnAt(name, begin);
        // Of three "@" each two are a separator.
        const std::size_t next = name.find(separator, column == noColumn ? at + 1 : begin);
        if (column != noColumn && !raw_[static_cast<std::size_t>(column)])
            raw_[static_cast<std::size_t>(column)] =
                name.substr(begin, next == std::string_view::npos ? next : next - begin);
        at = next;
    }
}

std::int64_t ValueReader::numberOf(std::size_t column, std::string_view raw) {
    if (raw.empty()) {
        if (keptColumns()[column].keeping == Keeping::ownText)
            values_.ownText.clear();
        return kept::empty;
    }
    const Keeping keeping = keptColumns()[column].keeping;
    if (keeping == Keeping::ownText || keeping == Keeping::day)
        return work(column, raw); // hardly one is met again
    Known& known = known_[column];
    if (const auto found = known.find(raw); found != known.end())
        return found->second;
    if (known.size() >= mostKnown)
        known.clear();
    const std::int64_t number = work(column, raw);
    known.emplace(raw, number);
    return number;
}

std::int64_t ValueReader::work(std::size_t column, std::string_view raw) {
    const KeptColumn& kept = keptColumns()[column];
    text_.clear();
    modDictation::appendDecodedFieldText(raw, text_);
    switch (kept.keeping) {
    case Keeping::ownText:
        values_.ownText = platform::upperCase(text_);
        return kept::first;
    case Keeping::text:
        upper_ = platform::upperCase(text_);
        return numberOf_(kept.field, upper_, text_);
    case Keeping::status:
    case Keeping::priority:
        return numberOfCode(modDictation::GetFieldCode(
            modDictation::fieldDefinition(kept.field).dictationField, text_));
    case Keeping::marker:
        return modDictation::isMarked(text_) ? kept::marked : kept::notMarked;
    case Keeping::flags:
        return numberOfFlags(text_);
    case Keeping::seconds:
        return numberOfLength(text_);
    case Keeping::day:
        break;
    }
    return numberOfDay(text_);
}

} // namespace ov::catalogue
