// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/commands/catalogue_update.h"

#include "catalogue/following/store_follower.h"
#include "cli/hits/asked_catalogue.h"
#include "cli/messages.h"
#include "cli/output.h"
#include "cli/shown_text.h"
#include "cli/terminal_interface.h"
#include "platform/files.h"
#include "platform/threads/coarse_clock.h"

#include <chrono>
#include <cstdio>
#include <stop_token>
#include <utility>

namespace ov::cli {

using catalogue::UpdateReport;
using platform::Status;

std::string dictationsText(std::int64_t count) {
    return counted(count, "dictation", "dictations");
}

std::string foldersText(std::int64_t count) {
    return counted(count, "folder", "folders");
}

std::string shownPath(const std::string& path) {
    return shownText(platform::toNativePath(path));
}

ExitCode refuse(const Status& status) {
    if (TerminalInterface::interrupted())
        return ExitCode::interrupted;
    complain(status.description());
    return ExitCode::unreadable;
}

namespace {

// What updates of one store tell.
class ToldUpdates {
public:
    ToldUpdates(std::string place, std::string root, const CatalogueOptions& options,
                TerminalInterface& terminal)
        : place_(std::move(place)),
          root_(std::move(root)),
          options_(options),
          terminal_(terminal) {}

    ExitCode updateOnce() {
        Status status;
        const auto catalogue = open(status);
        if (catalogue == nullptr)
            return refuse(status);
        const UpdateReport report = catalogue::updateStore(*catalogue, root_, means());
        tell(report);
        return resultOf(report);
    }

    ExitCode follow() {
        catalogue::FollowMeans following{means(), std::chrono::seconds(options_.interval)};
        following.idle = [this] { heedInterrupt(); };
        following.updated = [this](const UpdateReport& report) { tell(report); };
        following.restricted = [this](const Status& why) {
            terminal_.clearProgress();
            complain(why.description() + "; all of the store is looked at every " +
                     std::to_string(options_.interval) + " seconds");
        };
        const UpdateReport report =
            catalogue::StoreFollower([this](Status& status) { return open(status); }, root_,
                                     std::move(following))
                .run();
        return resultOf(report);
    }

private:
    std::unique_ptr<catalogue::Catalogue> open(Status& status) const {
        return openUnlessInterrupted(place_, catalogue::Access::update, status);
    }

    void heedInterrupt() {
        if (TerminalInterface::interrupted())
            stop_.request_stop();
    }

    catalogue::UpdateMeans means() {
        catalogue::UpdateMeans means;
        means.stop = stop_.get_token();
        means.trustsFolderTimes = options_.trustsFolderTimes;
        means.watch = [this](const UpdateReport& report) { showProgress(report); };
        return means;
    }

    void showProgress(const UpdateReport& report) {
        constexpr std::int64_t intervalMs = 100;
        heedInterrupt();
        if (platform::coarseMilliseconds() < nextProgress_)
            return;
        nextProgress_ = platform::coarseMilliseconds() + intervalMs;
        terminal_.showProgress(foldersText(report.folders) + ", " + dictationsText(report.written) +
                               " written");
    }

    // While it follows, only what is new.
    void tell(const UpdateReport& report) {
        terminal_.clearProgress();
        tellProblems(report);
        if (!report.status.ok())
            return;
        if (std::exchange(isFirst_, false) || report.written > 0 || report.removed > 0) {
            output_.write(foldersText(report.folders) + " in " + shownPath(root_) + ", " +
                          std::to_string(report.listed) + " listed, " +
                          dictationsText(report.written) + " written, " +
                          foldersText(report.removed) + " removed\n");
            output_.flush();
        }
    }

    void tellProblems(const UpdateReport& report) {
        std::string told;
        const auto tell = [&told](const std::string& text) { told.append(text).push_back('\n'); };
        for (const Status& problem : report.problems)
            tell(problem.description());
        if (report.unreadable > 0)
            tell(foldersText(report.unreadable) +
                 " could not be read; what the catalogue had of them stays");
        if (report.stopped)
            tell("stopped; the next update goes on from here");
        if (!report.untidy.ok())
            tell(report.untidy.description() + "; the catalogue is up to date, only larger or "
                                               "slower than it could be");
        if (!report.status.ok())
            tell(report.status.description());
        if (told.empty() && !report.isWhole)
            return;
        if (told != told_)
            for (std::size_t at = 0; at < told.size(); at = told.find('\n', at) + 1)
                complain(told.substr(at, told.find('\n', at) - at));
        told_ = std::move(told);
    }

    ExitCode resultOf(const UpdateReport& report) {
        if (!report.status.ok())
            return ExitCode::unreadable;
        return output_.finish(report.stopped          ? ExitCode::interrupted
                              : report.unreadable > 0 ? ExitCode::unreadable
                                                      : ExitCode::found);
    }

    const std::string place_;
    const std::string root_;
    const CatalogueOptions& options_;
    TerminalInterface& terminal_;
    Output output_{stdout};
    std::stop_source stop_;
    std::int64_t nextProgress_ = 0; // coarse milliseconds
    bool isFirst_ = true;
    std::string told_; // the last time, line by line
};

} // namespace

ExitCode updateCatalogue(const std::string& place, const std::string& root,
                         const CatalogueOptions& options, TerminalInterface& terminal) {
    TerminalInterface::heedTermination();
    ToldUpdates updates(place, root, options, terminal);
    return options.watches ? updates.follow() : updates.updateOnce();
}

} // namespace ov::cli
