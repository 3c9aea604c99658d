// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/threads/errand.h"
#include "sound/opened_ahead.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace ov {

// A dictation that is being opened on a thread of its own, since its server may take its time or be
// dead. Who does not want it any more destroys this and waits for nothing.
class FileOpening {
public:
    explicit FileOpening(std::string path);

    // Whether another one may be begun: there are not too many left behind that hang.
    static bool mayBegin();

    const std::string& path() const { return path_; }
    bool wait(std::chrono::milliseconds longest) const { return errand_.wait(longest); }
    // Once it is there; nothing for what is no file.
    std::optional<sound::OpenedSound> take() { return errand_.take(); }

    bool playsThen = false;

private:
    using Answer = std::optional<sound::OpenedSound>;
    FileOpening(std::string path, const std::shared_ptr<int>& isOut);

    std::string path_;
    platform::Errand<Answer> errand_;
};

} // namespace ov
