// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <cstdint>
#include <functional>
#include <optional>

// Folders may lie on a server that is dead, which keeps whoever asks for minutes: they are asked on
// a thread of their own, that is left to itself when the answer takes more than a second.

namespace ov::host {

enum class FolderAnswer : std::uint8_t { readable, unreadable, silent };

// Calls `then`: at once when the answer comes quickly, or else from the event loop, unless
// `receiver` is gone by then.
void checkFolder(const QString& folder, QObject* receiver,
                 const std::function<void(FolderAnswer)>& then);

// Waits for the answer of `question`, which holds all that it uses; nothing when there is none.
std::optional<bool> answerInTime(std::function<bool()> question);

} // namespace ov::host
