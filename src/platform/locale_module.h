// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/locale.h"
#include "platform/status.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// How countries write dates and numbers, and how languages order texts, is known to a library that
// takes as long to load as the rest of a small program. So it stands behind a module,
// src/platform/module, that is loaded when the first of these is asked for.

namespace ov::platform {

// Weighs texts as one language orders them. For one thread.
class TextWeights {
public:
    virtual ~TextWeights() = default;
    // The collation elements of `text` in place of what `weights` held: the primary weight in the
    // upper 16 bits, then the secondary in 8 and the tertiary in 8; fewer when there is no memory.
    virtual void weigh(std::u16string_view text, std::vector<std::uint32_t>& weights) = 0;
};

// The alphabet of a language. For any number of threads.
class Alphabet {
public:
    virtual ~Alphabet() = default;
    // Must not live longer than the alphabet; nullptr when there is no memory.
    virtual std::unique_ptr<TextWeights> weights() const = 0;
    // Characters in a row that are weighed as one, as "ch" in Czech.
    virtual std::vector<std::u16string> joined() const = 0;
};

struct LocaleModule {
    static constexpr const char* moduleName = "OVSearchLocale";

    Locale (*conventions)(const std::string& locale); // see localeNamed()
    // `locale` as "de" or "en_GB"; one that is not known has the order common to all alphabets.
    // nullptr when the library has no data.
    std::unique_ptr<Alphabet> (*alphabet)(const std::string& locale);
};

// nullptr when it cannot be loaded, which localeProblem() tells from then on.
const LocaleModule* localeModule();

// Why dates, numbers and texts are those of no country; ok while nobody asked in vain.
Status localeProblem();

} // namespace ov::platform
