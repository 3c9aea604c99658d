// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/module/locale_library.h"

#include <unicode/ucol.h>
#include <unicode/ucoleitr.h>
#include <unicode/uset.h>

#include <algorithm>
#include <utility>

namespace ov::platform::loaded {

namespace {

struct Closer {
    void operator()(UCollator* collator) const noexcept { ucol_close(collator); }
    void operator()(UCollationElements* elements) const noexcept { ucol_closeElements(elements); }
    void operator()(USet* set) const noexcept { uset_close(set); }
};

class LibraryWeights final : public TextWeights {
public:
    explicit LibraryWeights(UCollationElements* elements) : elements_(elements) {}

    void weigh(std::u16string_view text, std::vector<std::uint32_t>& weights) override {
        UErrorCode error = U_ZERO_ERROR;
        weights.clear();
        ucol_setText(elements_.get(), text.data(), static_cast<std::int32_t>(text.size()), &error);
        for (std::int32_t order = ucol_next(elements_.get(), &error);
             order != UCOL_NULLORDER && U_SUCCESS(error);
             order = ucol_next(elements_.get(), &error))
            weights.push_back(static_cast<std::uint32_t>(order));
    }

private:
    std::unique_ptr<UCollationElements, Closer> elements_;
};

std::u16string textOf(const USet& set, std::int32_t item) {
    constexpr std::int32_t usuallyEnough = 32;
    std::u16string text(usuallyEnough, u'\0');
    UChar32 start = 0;
    UChar32 end = 0;
    std::int32_t length = usuallyEnough + 1;
    while (std::cmp_greater(length, text.size())) {
        text.resize(static_cast<std::size_t>(length));
        UErrorCode error = U_ZERO_ERROR;
        length = uset_getItem(&set, item, &start, &end, text.data(), length, &error);
    }
    text.resize(static_cast<std::size_t>(std::max(length, 0)));
    return text;
}

class LibraryAlphabet final : public Alphabet {
public:
    explicit LibraryAlphabet(UCollator* collator) : collator_(collator) {}

    std::unique_ptr<TextWeights> weights() const override {
        UErrorCode error = U_ZERO_ERROR;
        UCollationElements* elements = ucol_openElements(collator_.get(), u"", 0, &error);
        return elements != nullptr ? std::make_unique<LibraryWeights>(elements) : nullptr;
    }

    std::vector<std::u16string> joined() const override {
        UErrorCode error = U_ZERO_ERROR;
        const std::unique_ptr<USet, Closer> set(uset_openEmpty());
        ucol_getContractionsAndExpansions(collator_.get(), set.get(), nullptr, false, &error);
        std::vector<std::u16string> result;
        for (std::int32_t i = 0; i < uset_getItemCount(set.get()); ++i)
            if (std::u16string text = textOf(*set, i);
                text.size() > 1) // else a range of characters
                result.push_back(std::move(text));
        return result;
    }

private:
    std::unique_ptr<UCollator, Closer> collator_;
};

} // namespace

std::unique_ptr<Alphabet> alphabetOf(const std::string& locale) {
    UErrorCode error = U_ZERO_ERROR;
    UCollator* collator = ucol_open(locale.c_str(), &error);
    if (U_FAILURE(error)) {
        error = U_ZERO_ERROR;
        collator = ucol_open("", &error); // the order common to all alphabets
    }
    if (collator == nullptr)
        return nullptr;
    // Marks in any order.
    ucol_setAttribute(collator, UCOL_NORMALIZATION_MODE, UCOL_ON, &error);
    return std::make_unique<LibraryAlphabet>(collator);
}

} // namespace ov::platform::loaded
