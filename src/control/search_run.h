// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "control/control_view.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace ov {

// One search, from the question whether to go on without criteria to the count below the list.
// It lets window messages be handled all the way. A host call that fails ends it with a
// HostError; the rows shown by then stay.
class SearchRun {
public:
    // `isEnding` tells that the control goes away: nothing of it may be touched any more.
    // `stopPlayer` is called before the old rows go.
    SearchRun(ControlView& view, QWidget& owner, std::function<void()> stopPlayer,
              std::function<bool()> isEnding)
        : view_(view),
          owner_(owner),
          stopPlayer_(std::move(stopPlayer)),
          isEnding_(std::move(isEnding)) {}

    // `root` is the dictation tree. False when there was nothing to do: no such directory, or no
    // criteria and the user did not want all dictations.
    bool run(const std::string& root);

    std::int32_t hitCount() const { return hitCount_; }

private:
    std::vector<std::string> criteria();
    std::unique_ptr<modDictation::DictationList> walk(const std::string& root,
                                                      const std::vector<std::string>& criteria);
    void fill(std::int32_t count);
    void tellOutcome();

    ControlView& view_;
    QWidget& owner_;
    std::function<void()> stopPlayer_;
    std::function<bool()> isEnding_;
    std::int32_t hitCount_ = 0;
};

// "Search result (12 dictations)".
QString searchResultText(std::int32_t hitCount);
// What the last search left out or did not reach; empty when nothing.
QString searchNotice();

// Tells that the directory cannot be reached when it does not exist; false then.
bool checkDictationTree(const std::string& root, QWidget& owner);

} // namespace ov
