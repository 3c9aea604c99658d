// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "support/language/text_expansion.h"

#include "platform/text.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <utility>
#include <vector>

namespace ov {

namespace {

// A whole text that is an integer. One that is too large is still a number: the largest.
std::optional<std::int64_t> integerOf(std::string_view text) {
    std::int64_t number = 0;
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (rest != end || error == std::errc::invalid_argument)
        return std::nullopt;
    return error == std::errc{} ? number : std::numeric_limits<std::int64_t>::max();
}

void appendWithLineBreaks(std::string_view text, std::string& out) {
    constexpr std::string_view lineBreak = "#13#";
    for (std::size_t at = text.find(lineBreak); at != std::string_view::npos;
         at = text.find(lineBreak)) {
        out.append(text.substr(0, at)).append("\r\n");
        text.remove_prefix(at + lineBreak.size());
    }
    out.append(text);
}

class Expansion {
public:
    Expansion(std::string_view text, const TextSources& sources)
        : sources_(sources), units_(unitsOf(text)) {}

    std::string run() {
        while (findPlace() && fillPlace()) {
        }
        return result();
    }

private:
    // One unit per byte; from firstInsert on a unit stands for a piece that was put in, which no
    // later step can look into.
    using Units = std::u32string;
    static constexpr char32_t firstInsert = 0x100;

    static Units unitsOf(std::string_view text);
    std::string token() const;
    bool findPlace();
    bool fillPlace();
    bool fillReference(std::string_view name);
    bool fillArgument(std::string_view token);
    void putHere(std::string text);
    char32_t keep(std::string text);
    void replaceAll(const Units& what, const Units& with);
    std::string result() const;

    const TextSources& sources_;
    Units units_;
    std::vector<std::string> inserts_;
    std::size_t open_ = 0; // the percent sign before the token
    std::size_t next_ = 0; // behind the one after it: where the search goes on
};

Expansion::Units Expansion::unitsOf(std::string_view text) {
    Units units;
    units.reserve(text.size());
    for (const char c : text)
        units.push_back(static_cast<unsigned char>(c));
    return units;
}

bool Expansion::findPlace() {
    open_ = units_.find(U'%', next_);
    const std::size_t close = open_ == Units::npos ? open_ : units_.find(U'%', open_ + 1);
    next_ = close == Units::npos ? units_.size() : close + 1;
    return close != Units::npos;
}

// A piece that was put in makes the token neither a number nor a name.
std::string Expansion::token() const {
    std::string bytes;
    for (std::size_t at = open_ + 1; at + 1 < next_; ++at)
        bytes.push_back(units_[at] < firstInsert ? static_cast<char>(units_[at]) : '\0');
    return bytes;
}

// False when the expansion ends here.
bool Expansion::fillPlace() {
    const std::string name = token();
    if (name.empty()) {
        putHere("%");
        return true;
    }
    if (name.front() == '#')
        return fillReference(std::string_view(name).substr(1));
    return fillArgument(name);
}

bool Expansion::fillReference(std::string_view name) {
    if (platform::upperCase(name) == "VERSION") {
        putHere(sources_.version ? sources_.version() : std::string());
        return true;
    }
    const auto number = integerOf(name);
    if (number && !std::in_range<std::int32_t>(*number))
        return false;
    putHere(number && sources_.text ? sources_.text(static_cast<std::int32_t>(*number))
                                    : std::string());
    return true;
}

bool Expansion::fillArgument(std::string_view token) {
    const auto number = integerOf(token);
    if (!number || !sources_.arguments)
        return true;
    if (*number < 1 || std::cmp_greater(*number, sources_.arguments->size()))
        return false;
    const std::string_view argument = (*sources_.arguments)[static_cast<std::size_t>(*number - 1)];
    const Units place = U'%' + unitsOf(token) + U'%';
    if (!argument.empty()) {
        replaceAll(place, Units(1, keep(std::string(argument))));
        return true;
    }
    replaceAll(place + U' ', U"");
    replaceAll(U' ' + place, U"");
    replaceAll(place, U"");
    return true;
}

char32_t Expansion::keep(std::string text) {
    inserts_.push_back(std::move(text));
    return firstInsert + static_cast<char32_t>(inserts_.size() - 1);
}

void Expansion::putHere(std::string text) {
    units_.replace(open_, next_ - open_, 1, keep(std::move(text)));
    next_ = open_ + 1;
}

void Expansion::replaceAll(const Units& what, const Units& with) {
    for (std::size_t at = units_.find(what); at != Units::npos;
         at = units_.find(what, at + with.size())) {
        units_.replace(at, what.size(), with);
        if (at < next_)
            next_ = std::max(at + what.size(), next_) - what.size() + with.size();
    }
}

std::string Expansion::result() const {
    std::string out;
    std::string written; // what stands in the text itself, up to the next insert
    for (const char32_t unit : units_) {
        if (unit < firstInsert) {
            written.push_back(static_cast<char>(unit));
            continue;
        }
        appendWithLineBreaks(written, out);
        appendWithLineBreaks(inserts_[unit - firstInsert], out);
        written.clear();
    }
    appendWithLineBreaks(written, out);
    return out;
}

} // namespace

std::string expandText(std::string_view text, const TextSources& sources) {
    return Expansion(text, sources).run();
}

} // namespace ov
