// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "playback/panel/played_dictation.h"

#include "dictation/field_table.h"
#include "dictation/field_values.h"
#include "support/language/text_ids.h"
#include "widgets/captions.h"
#include "widgets/text.h"

namespace ov {

namespace {

// What a name does not say is left out; one that says neither is shown itself.
QString wordsFor(const std::string& path) {
    using namespace modDictation;
    const Dictation dictation = dictationOfPath(path);
    QStringList words;
    for (const std::int32_t field : {field_id::author, field_id::subject})
        if (const std::string value = shownValue(field, dictation); !value.empty())
            words << widgets::toQt(value);
    return words.isEmpty() ? widgets::toQt(shownValue(field_id::name, dictation))
                           : words.join(QLatin1String(": "));
}

} // namespace

// Keeps its place while it is hidden, so that the window does not jump.
PlayedDictation::PlayedDictation(QWidget* parent) : QToolButton(parent) {
    setObjectName(QStringLiteral("cmdPlayedDictation"));
    setAutoRaise(true);
    setFocusPolicy(Qt::TabFocus);
    QSizePolicy policy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    policy.setRetainSizeWhenHidden(true);
    setSizePolicy(policy);
    widgets::setTip(*this, text_id::playedDictationTip);
    hide();
}

void PlayedDictation::setPath(const std::string& path) {
    path_ = path;
    words_ = path.empty() ? QString() : wordsFor(path);
    setAccessibleName(words_);
    fit();
    setVisible(!path.empty());
}

void PlayedDictation::resizeEvent(QResizeEvent* event) {
    QToolButton::resizeEvent(event);
    fit();
}

void PlayedDictation::fit() {
    constexpr int frame = 12;
    setText(fontMetrics()
                .elidedText(words_, Qt::ElideRight, width() - frame)
                .replace(QLatin1Char('&'), QLatin1String("&&")));
}

} // namespace ov
