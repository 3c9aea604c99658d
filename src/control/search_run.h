// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "control/catalogue/catalogue_answer.h"
#include "control/control_view.h"
#include "dictation/search/search.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace ov {

// What a search found and met.
struct SearchOutcome {
    std::int32_t hitCount = 0;
    modDictation::SearchReport report;
    std::optional<catalogue::Store> asked; // of the catalogue that answered; nothing: it was a walk
    bool isCounted = true;                 // filesTested and matched of the report hold
};

// One search, from the question whether to go on without criteria to the count below the list.
// It lets window messages be handled all the way. A host call that fails ends it with a
// HostError; the rows shown by then stay.
class SearchRun {
public:
    // When there are no criteria.
    enum class Questions : std::uint8_t { asks, listsAll };

    struct Caller {
        ControlView& view;
        QWidget& owner;       // of boxes
        std::stop_token stop; // ends the walk
        Questions withoutCriteria;
        std::shared_ptr<modDictation::RememberedStore> remembered;
        std::string catalogue; // is asked; empty: the store is walked through
        // The state changes; it is not called once the control is ending.
        std::function<void(ControlState)> enter;
        // The control goes away: nothing of it may be touched any more.
        std::function<bool()> isEnding;
        // Before the old rows go.
        std::function<void(const modDictation::Search&)> starting;
    };
    explicit SearchRun(Caller caller) : caller_(std::move(caller)) {}

    // `root` is the dictation tree. Nothing when nothing was searched: there is no such directory,
    // another control of this thread searches, or there are no criteria and the user did not want
    // all dictations. Nothing either when the control ended, or when the catalogue cannot be asked
    // and the user does not want a walk instead.
    std::optional<SearchOutcome> run(const std::string& root);
    // The same because the criteria changed: it asks and tells nothing but by the notice below the
    // hits, lists all without criteria, and leaves the rows until others take their place at once.
    // Nothing also when it was stopped.
    std::optional<SearchOutcome> follow(const std::string& root);
    // Shows it, with a box when nothing was found.
    void tellOutcome(const SearchOutcome& outcome);

private:
    bool mayBegin(const std::string& root);
    std::vector<modDictation::Criterion> criteria();
    std::optional<SearchOutcome> search(const modDictation::Search& what);
    using Hits = std::unique_ptr<modDictation::DictationList>;
    std::optional<SearchOutcome> find(const modDictation::Search& what, Hits& hits);
    modDictation::SearchReport walk(const modDictation::Search& what,
                                    modDictation::DictationList& hits);
    CatalogueAnswer ask(const modDictation::Search& what,
                        const std::function<void(std::int32_t)>& watch);
    std::optional<SearchOutcome> findAgain(const modDictation::Search& what, Hits& hits);
    bool reaches(const std::string& root);
    void fill(std::int32_t count);
    void showFirst(std::int32_t count);

    Caller caller_;
};

// What a search left out or did not reach; empty when nothing.
QString noticeText(const modDictation::SearchReport& report);

// The label and the notice at the hits; without an outcome they tell none.
void showOutcome(const ControlView& view, const std::optional<SearchOutcome>& outcome);

// Tells that the directory cannot be reached when it does not exist, or its server does not answer,
// or that none is chosen; false then, and when the control ended. Lets messages be handled
// meanwhile.
bool checkDictationTree(const std::string& root, QWidget& owner,
                        const std::function<bool()>& isEnding);

} // namespace ov
