// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/kept_values.h"
#include "catalogue/question.h"
#include "dictation/dictation.h"
#include "platform/directories.h"
#include "platform/status.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

// A database of what stores hold, for stores that take too long to be walked through. Programs that
// ask it see what the last commit of the one that updates it left.
//
// Here is what any database must be able to do; how a store gets into it and how it is searched is
// the same for all, see store_update.h and catalogue_search.h.

namespace ov::catalogue {

struct Store {
    std::int64_t id = 0;
    std::string root; // a directory text
    // When the last update began that came to its end, nanoseconds since 1970; 0 when none has:
    // then not all of the store is there yet.
    std::int64_t asOf = 0;
    // When an update began that has not come to its end, or never will: what it has written is
    // there, and newer than `asOf`. 0: none.
    std::int64_t begun = 0;
    std::int64_t folders = 0;
    std::int64_t dictations = 0;
    std::int64_t unreadable = 0; // folders, at the last update
};

// Whether a folder has changed when its stamp has, and only then: as isSettled() of listings.
// Stored.
enum class Settled : std::uint8_t {
    no,
    yes,
    byTrust, // for those who trust the times of any file system
    linked,  // no: it has links, and what these lead to changes without it
};

struct Folder {
    std::int64_t id = 0;
    std::string path; // a directory text
    std::int32_t depth = 0;
    std::int64_t place = 0; // in the order of a walk; no two of a store have the same
    platform::DirectoryStamp stamp;
    std::int64_t firstSeen = 0; // with that stamp, nanoseconds since 1970
    Settled settled = Settled::no;
    std::uint64_t digest = 0; // of the names of its dictations, in their order
    std::int64_t dictations = 0;
    std::int64_t skipped = 0; // names of dictations and folders, with a "\"
    std::string problem;      // why it could not be read the last time; empty: it could
    std::int64_t ward = 0;    // those with the same share their texts; told by putFolder()
};

class Catalogue {
public:
    using Status = platform::Status;

    Catalogue() = default;
    virtual ~Catalogue() = default; // what was not committed is undone
    Catalogue(const Catalogue&) = delete;
    Catalogue& operator=(const Catalogue&) = delete;

    // Asked now and then while a call takes long: once it says true the call ends early. What only
    // asks then ends without an error, as if the taker had ended it; what writes fails, see
    // isStopped(). It must not use the catalogue.
    void stopWhen(std::function<bool()> isOver) { isOver_ = std::move(isOver); }
    static bool isStopped(const Status& status) noexcept {
        return status.number() == static_cast<int>(std::errc::operation_canceled);
    }

    // ---- Asking. All that is asked from begin() to end() is of the same moment.

    virtual Status begin() = 0;
    virtual void end() = 0;

    // Without what is counted of them; that takes longer.
    virtual Status stores(std::vector<Store>& stores) = 0;
    virtual Status count(Store& store) = 0;
    // What all of it takes on the disk.
    virtual Status size(std::int64_t& bytes) = 0;
    // By their places.
    virtual Status folders(std::int64_t store, std::vector<Folder>& folders) = 0;
    // In the order of the listing, as their positions are.
    virtual Status names(std::int64_t folder, std::vector<std::string>& names) = 0;
    virtual Status positions(std::int64_t folder, std::vector<std::int64_t>& positions) = 0;

    // Told of a dictation; views that are valid during the call. False ends it.
    using Taker = std::function<bool(const modDictation::Dictation& dictation, std::int64_t count)>;
    // Those that may be hits, by the places of their folders and the order of the listing there;
    // the count is 1.
    virtual Status candidates(std::int64_t store, const Question& question, const Taker& take) = 0;
    // How many there are, by the number of a column, or in all (no column): one of them, and how
    // many have the same. Those that have none of their own (kept::other) come one by one.
    virtual Status counts(std::int64_t store, const Question& question,
                          std::optional<std::size_t> column, const Taker& take) = 0;

    // What a search leaves out: folders below the depth, names with a "\", and those that could not
    // be read.
    struct LeftOut {
        std::int64_t tooDeep = 0;
        std::int64_t skipped = 0;
        bool isRootThere = false;                                    // the root of the question
        std::vector<std::pair<std::string, std::string>> unreadable; // directory, why
    };
    virtual Status leftOut(std::int64_t store, const Question& question, LeftOut& left) = 0;

    // ---- Updating. One at a time, others ask meanwhile.

    // Fails when another one updates.
    virtual Status lockForUpdate() = 0;
    // What was written since the last one is there for others, and stays. After a failure of any
    // call it fails too, and all that is undone.
    virtual Status commit() = 0;
    virtual void rollBack() = 0;
    // Makes it when there is none, and gives it its id.
    virtual Status putStore(Store& store) = 0;
    virtual Status removeStore(std::int64_t store) = 0;
    // A new one (id 0) gets one.
    virtual Status putFolder(std::int64_t store, Folder& folder) = 0;
    // With its dictations.
    virtual Status removeFolder(std::int64_t folder) = 0;
    virtual Status removeDictations(std::int64_t folder,
                                    const std::vector<std::int64_t>& positions) = 0;
    static constexpr std::int64_t mostPositions = std::int64_t{1} << 28;
    virtual Status addDictation(std::int64_t folder, std::int64_t position, std::string_view name,
                                const KeptValues& values) = 0;
    virtual Status setPlaces(const std::vector<Folder>& folders) = 0;
    // See ValueReader; kept::absent after a failure, which the next commit() tells too.
    virtual std::int64_t numberOfText(std::int64_t ward, std::int32_t field, std::string_view upper,
                                      std::string_view text) = 0;
    // After the last commit of an update: makes what lacks or is quicker to make for all at once,
    // and leaves nothing behind of what was removed. After a small update what takes a look at all
    // dictations is put off until the next one that is not.
    virtual Status tidy(bool isSmall) = 0;

protected:
    bool isOver() const { return isOver_ && isOver_(); }

private:
    std::function<bool()> isOver_;
};

// All that is asked while it lives is of one moment, whatever way it ends.
class Moment {
public:
    explicit Moment(Catalogue& catalogue) : catalogue_(catalogue), begun_(catalogue.begin()) {}
    ~Moment() {
        if (begun_.ok())
            catalogue_.end();
    }
    Moment(const Moment&) = delete;
    Moment& operator=(const Moment&) = delete;
    const platform::Status& begun() const noexcept { return begun_; }

private:
    Catalogue& catalogue_;
    const platform::Status begun_;
};

// As long as it lives, calls end early once `isOver` says so.
class Stoppable {
public:
    Stoppable(Catalogue& catalogue, std::function<bool()> isOver) : catalogue_(catalogue) {
        catalogue_.stopWhen(std::move(isOver));
    }
    ~Stoppable() { catalogue_.stopWhen({}); }
    Stoppable(const Stoppable&) = delete;
    Stoppable& operator=(const Stoppable&) = delete;

private:
    Catalogue& catalogue_;
};

enum class Access : std::uint8_t { ask, update };

// `place` is the path of a file (files.h), or where a server is, see isServer(). To be asked it
// must be there; to be updated it is made. A file is for its owner alone: if others may open it,
// they no longer may, and one of somebody else is refused. What is no catalogue stays as it is.
// nullptr and why in `status` when it cannot be opened.
std::unique_ptr<Catalogue> openCatalogue(const std::string& place, Access access,
                                         platform::Status& status);

// "postgresql://USER@HOST/DATABASE", "postgres://..." or "service=NAME"; also what only resembles
// one, and is refused: a file of that name would show the password in it.
bool isServer(std::string_view place) noexcept;
// As people are told of it: the native path, or the server without what belongs to nobody else.
std::string shownPlace(const std::string& place);

// The path of the one that is meant when none is named: in the folder of the user's data.
std::string usualPlace();

// The store in which the directory lies, as none lies in another; nothing when there is none, or an
// error, which `status` tells with the stores that there are.
std::optional<Store> storeOf(Catalogue& catalogue, std::string_view directory,
                             platform::Status& status);

// How a database gets behind it: a module for each kind.
struct SqliteModule {
    static constexpr const char* moduleName = "OVSearchSqlite";

    // `native` is there.
    std::unique_ptr<Catalogue> (*open)(const std::string& native, Access access,
                                       platform::Status& status);
};
struct PostgresModule {
    static constexpr const char* moduleName = "OVSearchPostgres";

    std::unique_ptr<Catalogue> (*open)(const std::string& server, Access access,
                                       platform::Status& status);
};

} // namespace ov::catalogue
