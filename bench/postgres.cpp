// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// ovbench_postgres PLACE [--count N] [--readers N] [--keep]
//
// Loads made-up dictations into the catalogue at PLACE (a file or a server), without a disk that
// would have to be listed, and asks it: alone, and by many readers during an update. `--keep` asks
// what an earlier run has loaded.

#include "bench_main.h"
#include "catalogue/catalogue_search.h"
#include "catalogue/kept_values.h"
#include "demo/demo_names.h"
#include "dictation/field_codes.h"
#include "dictation/search/operators.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace ov;
using catalogue::Access;
using catalogue::Catalogue;
using Clock = std::chrono::steady_clock;
namespace id = modDictation::field_id;
namespace op = modDictation::operator_id;

constexpr const char* root = "\\bench\\";
constexpr std::int64_t perFolder = 200;
// As in the other measurements.
constexpr platform::DateTime storeDay{2026, 11, 21, 0, 0, 0};

double secondsSince(Clock::time_point begun) {
    return std::chrono::duration<double>(Clock::now() - begun).count();
}

void check(const platform::Status& status) {
    if (!status.ok())
        throw std::runtime_error(status.description());
}

std::unique_ptr<Catalogue> open(const std::string& place, Access access) {
    platform::Status status;
    auto catalogue = catalogue::openCatalogue(place, access, status);
    check(status);
    return catalogue;
}

// Writes folder after folder, as an update does.
class Loader {
public:
    explicit Loader(const std::string& place) : catalogue_(open(place, Access::update)) {
        check(catalogue_->lockForUpdate());
        store_.root = root;
        check(catalogue_->putStore(store_));
    }

    void addFolder(std::int64_t number, std::int64_t count) {
        std::vector<std::string> files;
        for (std::int64_t i = 0; i < count; ++i)
            files.push_back(names_.next(static_cast<demo::DemoTrade>(number % 4)).fileName);
        const auto begun = Clock::now();
        catalogue::Folder folder;
        folder.path = std::string(root) + "House " + std::to_string(number / 100) + "\\Ward " +
                      std::to_string(number) + "\\";
        folder.depth = 2;
        folder.place = number;
        folder.dictations = count;
        check(catalogue_->putFolder(store_.id, folder));
        ward_ = folder.ward;
        for (std::int64_t i = 0; i < count; ++i) {
            const std::string& file = files[static_cast<std::size_t>(i)];
            const std::string name = file.substr(0, file.size() - 4);
            check(catalogue_->addDictation(folder.id, i, file, values_.read(name)));
        }
        check(catalogue_->putFolder(store_.id, folder));
        seconds_ += secondsSince(begun);
    }
    void commit() {
        const auto begun = Clock::now();
        check(catalogue_->commit());
        seconds_ += secondsSince(begun);
    }
    void finish() {
        store_.asOf = 1;
        check(catalogue_->putStore(store_));
        commit();
        check(catalogue_->tidy(false));
    }
    double seconds() const { return seconds_; } // without making the names

private:
    std::unique_ptr<Catalogue> catalogue_;
    catalogue::Store store_;
    demo::DemoNames names_{1, storeDay};
    std::int64_t ward_ = 0;
    catalogue::ValueReader values_{
        [this](std::int32_t field, std::string_view upper, std::string_view text) {
            return catalogue_->numberOfText(ward_, field, upper, text);
        }};
    double seconds_ = 0;
};

void load(const std::string& place, std::int64_t count) {
    constexpr std::int64_t foldersAtOnce = 250; // in one commit
    Loader loader(place);
    for (std::int64_t number = 0; number * perFolder < count; ++number) {
        loader.addFolder(number, perFolder);
        if (number % foldersAtOnce == foldersAtOnce - 1)
            loader.commit();
    }
    loader.commit();
    std::printf("load: %.1f s, %.0f dictations a second\n", loader.seconds(),
                static_cast<double>(count) / loader.seconds());
    const auto begun = Clock::now();
    loader.finish();
    std::printf("indexes: %.1f s\n", secondsSince(begun));
}

struct Asked {
    double seconds = 0;
    std::int64_t hits = 0;
};

Asked ask(Catalogue& catalogue, const modDictation::Search& what) {
    const auto begun = Clock::now();
    platform::Status status;
    const auto store = catalogue::storeOf(catalogue, what.root, status);
    check(status);
    modDictation::DictationList hits;
    modDictation::SearchReport report;
    check(catalogue::search(catalogue, *store, what, hits, {}, report));
    return {secondsSince(begun), report.hits};
}

modDictation::Search searchFor(std::vector<modDictation::Criterion> criteria,
                               std::int32_t limit = 999999) {
    return {root, std::move(criteria), true, -1, limit};
}

const std::string deadline = std::to_string(modDictation::priority_code::deadline);
const std::string high = std::to_string(modDictation::priority_code::high);

modDictation::Search selective() {
    return searchFor({{id::author, op::contains, "Öztürk", ""},
                      {id::priority, op::is, deadline, ""},
                      {id::dictated, op::onDate, "2026-11-12", ""}});
}

double medianOf(std::vector<double> times) {
    std::ranges::sort(times);
    return times.empty() ? 0 : times[times.size() / 2];
}

void askAlone(const std::string& place) {
    constexpr int runs = 7;
    const auto catalogue = open(place, Access::ask);
    for (const auto& [name, what] :
         {std::pair{"author, priority and day", selective()},
          std::pair{"first 1000 of a priority",
                    searchFor({{id::priority, op::is, high, ""}}, 1000)},
          std::pair{"first 1000 of an author",
                    searchFor({{id::author, op::contains, "Öztürk", ""}}, 1000)},
          std::pair{"first 1000 of a word in the subject",
                    searchFor({{id::subject, op::contains, "brief", ""}}, 1000)}}) {
        std::vector<double> times;
        Asked asked;
        for (int i = 0; i < runs; ++i) {
            asked = ask(*catalogue, what);
            times.push_back(asked.seconds);
        }
        std::printf("%s: %.1f ms (first %.1f ms), %lld hits\n", name, 1000 * medianOf(times),
                    1000 * times.front(), static_cast<long long>(asked.hits));
    }
}

// Those who ask at the same time.
struct Readers {
    int count = 1;
    std::chrono::milliseconds pause{0}; // after each answer, as who reads it makes one
};

// What one of them takes for each search.
std::vector<double> searchesOf(const std::string& place, std::chrono::milliseconds pause) {
    constexpr std::chrono::seconds span{10};
    const auto catalogue = open(place, Access::ask);
    std::vector<double> times;
    for (const auto end = Clock::now() + span; Clock::now() < end;) {
        times.push_back(ask(*catalogue, selective()).seconds);
        std::this_thread::sleep_for(pause);
    }
    return times;
}

double medianOf(const std::string& place, const Readers& readers) {
    std::vector<std::vector<double>> times(static_cast<std::size_t>(readers.count));
    std::atomic<int> failures = 0;
    {
        std::vector<std::jthread> threads;
        for (auto& own : times) {
            std::this_thread::sleep_for(readers.pause / readers.count); // not all in step
            threads.emplace_back([&] {
                try {
                    own = searchesOf(place, readers.pause);
                } catch (const std::exception& error) {
                    ++failures;
                    std::cerr << error.what() << '\n';
                }
            });
        }
    }
    std::vector<double> all;
    for (const auto& own : times)
        all.insert(all.end(), own.begin(), own.end());
    const double median = medianOf(all);
    std::printf("%d readers, pauses of %lld ms: %.1f ms, %zu searches, %d failures\n",
                readers.count, static_cast<long long>(readers.pause.count()), 1000 * median,
                all.size(), failures.load());
    return median;
}

void askTogether(const std::string& place, std::int64_t count, int readers) {
    constexpr std::chrono::seconds thought{1};
    const double alone = medianOf(place, {1, thought});
    const double alwaysAlone = medianOf(place, {1});
    std::atomic<bool> isOver = false;
    std::jthread updater([&] {
        Loader loader(place);
        for (std::int64_t number = count / perFolder; !isOver; ++number) {
            loader.addFolder(number, perFolder);
            loader.commit();
        }
    });
    const double together = medianOf(place, {readers, thought});
    const double always = medianOf(place, {readers});
    isOver = true;
    std::printf("during an update: %.1f times one reader's, without pauses %.1f times\n",
                together / alone, always / alwaysAlone);
}

int run(int argc, char** argv) {
    std::string place;
    std::int64_t count = 1'000'000;
    int readers = 50;
    bool keeps = false;
    CLI::App app("Measures a catalogue with made-up dictations.", "ovbench_postgres");
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ); // what was measured stays told
    app.add_option("PLACE", place, "the catalogue, empty")->required();
    app.add_option("--count", count, "dictations");
    app.add_option("--readers", readers, "at once")->check(CLI::Range(1, 80));
    app.add_flag("--keep", keeps, "ask what is there");
    CLI11_PARSE(app, argc, argv);
    if (!keeps)
        load(place, count);
    askAlone(place);
    askTogether(place, count, readers);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    return ov::bench::runToEnd("ovbench_postgres", run, argc, argv);
}
