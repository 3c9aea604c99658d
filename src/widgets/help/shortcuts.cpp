// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "widgets/help/shortcuts.h"

#include "support/language/help_text_ids.h"
#include "support/language/text_ids.h"

#include <array>

namespace ov::widgets {

namespace {

using enum KeyPlace;

constexpr std::array texts{
    KeyText{anywhere, "F5, Ctrl+F", text_id::searchTip},
    KeyText{anywhere, "Shift+F5", text_id::menuSearchAfresh},
    KeyText{anywhere, "Esc", text_id::keyStop},
    KeyText{anywhere, "Ctrl+P", text_id::keyPrint},
    KeyText{anywhere, "Ctrl+S", text_id::keyExport},
    KeyText{anywhere, "Ctrl+K", text_id::filterName},
    KeyText{anywhere, "Ctrl+Left, Ctrl+Right", text_id::keySkip},
    KeyText{anywhere, "F7", text_id::keyAgain},
    KeyText{anywhere, "Ctrl+L", text_id::keyLoop},
    KeyText{anywhere, "Ctrl+J", text_id::keyGoToTime},
    KeyText{anywhere, "Ctrl+T", text_id::keyTimeStamp},
    KeyText{anywhere, "F6, Shift+F6", text_id::keyGoRound},
    KeyText{anywhere, "Ctrl+Down", text_id::keyToTheList},
    KeyText{anywhere, "Ctrl+Shift+H", text_id::keyTitles},
    KeyText{anywhere, "F1", text_id::keyGuide},
    KeyText{anywhere, "Shift+F1", text_id::keyExplain},
    KeyText{anywhere, "Ctrl+/", text_id::keyShortcuts},
    KeyText{criteria, "Ins", text_id::addCriterionTip},
    KeyText{criteria, "F2, Return", text_id::editCriterionTip},
    KeyText{criteria, "Del", text_id::deleteCriterionTip},
    KeyText{criteria, "Ctrl+D", text_id::duplicateCriterionCommand},
    KeyText{criteria, "Space", text_id::keyLeaveOut},
    KeyText{criteria, "Alt+Up", text_id::moveCriterionUp},
    KeyText{criteria, "Alt+Down", text_id::moveCriterionDown},
    KeyText{criteria, "Alt+Right", text_id::indentCriterion},
    KeyText{criteria, "Alt+Left", text_id::outdentCriterion},
    KeyText{criteria, "Ctrl+X", text_id::cutCriteria},
    KeyText{criteria, "Ctrl+C", text_id::copyCriteria},
    KeyText{criteria, "Ctrl+V", text_id::pasteCriteria},
    KeyText{criteria, "Ctrl+Z", text_id::undoCommand},
    KeyText{criteria, "Ctrl+Shift+Z", text_id::redoCommand},
    KeyText{results, "Return", text_id::menuPlay},
    KeyText{results, "/", text_id::filterName},
    KeyText{results, "Space", text_id::pauseTip},
    KeyText{results, "Home, End", text_id::keyMove},
    KeyText{results, "Ctrl+A", text_id::menuSelectAll},
    KeyText{results, "Ctrl+C", text_id::menuCopyRows},
    KeyText{results, "Ctrl+Shift+C", text_id::menuCopyFiles},
    KeyText{results, "Alt+Return", text_id::menuDetails},
    KeyText{position, "+, -", text_id::keyZoom},
    KeyText{position, "0", text_id::keyShowAll},
    KeyText{preview, "PgUp, PgDown", text_id::keyTurnPages},
    KeyText{preview, "+, -", text_id::keyZoom},
};

} // namespace

std::span<const KeyText> keyTexts() noexcept {
    return texts;
}

QList<QKeySequence> keysOf(const KeyText& keyText) {
    QList<QKeySequence> keys;
    const QStringList names = QString::fromLatin1(keyText.keys).split(QLatin1String(", "));
    for (const QString& name : names)
        keys.append(QKeySequence(name, QKeySequence::PortableText));
    return keys;
}

} // namespace ov::widgets
