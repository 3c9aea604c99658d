// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/field_table.h"
#include "platform/locale.h"
#include "support/language/modLanguage.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace ov::modDictation {

using Cases = std::vector<std::pair<const char*, const char*>>;

// What is typed by somebody in Germany, who reads English unless he says otherwise.
class Typed : public ::testing::Test {
public:
    Typed() {
        platform::setLocale(platform::localeNamed("de"));
        speak(9);
    }
    ~Typed() override {
        platform::setLocale(std::nullopt);
        resetSearchFieldTable();
        modLanguage::reset();
    }

protected:
    static void speak(std::int32_t language) {
        modLanguage::SetLanguage(language, 0);
        ASSERT_TRUE(modLanguage::LoadLanguageFile());
        BuildSearchFieldTable();
    }
};

} // namespace ov::modDictation
