// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// ovbench_window STORE [--without-sorts]
//
// Drives the real control on a big store (ovbench_store) as a typist would, without criteria, and
// prints what the window takes: the search beyond the walk, the longest time without a handled
// timer event, sorts by every column, paging, selecting all, details and menus, the keys of a
// filter, memory, searching again, a list that follows its criteria.

#include "bench/opened_windows.h"
#include "bench/quiet_host.h"
#include "bench/screen_reader.h"
#include "bench/stall_watch.h"
#include "control/criteria/criteria_list.h"
#include "control/ctrlOVSearch.h"
#include "control/filter/filter_edit.h"
#include "control/results/result_model.h"
#include "dictation/search/criterion.h"
#include "dictation/search/tree_scan.h"
#include "platform/files.h"
#include "plugin/Connector.h"
#include "support/modFilePath.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QHeaderView>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>
#include <QSysInfo>
#include <QTableView>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <vector>

namespace {

using namespace ov;

using bench::StallWatch;
using tests::QuietHost;

double megabytesResident() {
    QFile status(QStringLiteral("/proc/self/statm"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    constexpr double pageSize = 4096;
    return status.readAll().split(' ').value(1).toDouble() * pageSize / 1e6;
}

template <typename Run>
double milliseconds(Run run) {
    QElapsedTimer clock;
    clock.start();
    run();
    return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

double walkMilliseconds(const std::string& root, std::size_t& pathBytes) {
    modDictation::DictationList hits;
    const std::vector<std::string> criteria{""};
    const double time = milliseconds(
        [&] { modDictation::SearchDictations(root, criteria, 50, hits, true, true, 999999); });
    pathBytes = 0;
    for (std::int32_t i = 1; i <= hits.size(); ++i)
        pathBytes += pathOf(hits[i]).size();
    return time;
}

// Says Yes to the question about a search without criteria, once it is asked.
class YesSayer {
public:
    YesSayer() {
        look_.callOnTimeout([this] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr)
                return;
            look_.stop();
            box->button(QMessageBox::Yes)->click();
        });
        look_.start(0);
    }

private:
    QTimer look_;
};

// What the user asks for is done from the event loop.
void finishCommands() {
    QCoreApplication::processEvents();
}

void measurePaging(QTableView& list) {
    double worst = 0;
    QScrollBar* bar = list.verticalScrollBar();
    constexpr int pages = 200;
    for (int page = 0; page < pages; ++page)
        worst = std::max(worst, milliseconds([&] {
                             bar->setValue(static_cast<int>(static_cast<qint64>(bar->maximum()) *
                                                            (page * 37 % pages) / pages));
                             list.viewport()->repaint();
                         }));
    std::printf("jump to another page, worst of %d        %8.1f ms\n", pages, worst);
}

double sortMilliseconds(QTableView& list, int column) {
    return milliseconds([&] {
        Q_EMIT list.horizontalHeader()->sectionClicked(column);
        finishCommands();
    });
}

// By each column, then once more by the one before, which is kept, and the other way round.
void measureSorts(QTableView& list) {
    const auto* model = list.model();
    StallWatch watch;
    double back = 0;
    int before = -1;
    for (int column = 0; column < model->columnCount(); ++column) {
        if (list.isColumnHidden(column))
            continue;
        std::printf("sort by %-12s                      %8.0f ms\n",
                    qPrintable(model->headerData(column, Qt::Horizontal).toString()),
                    sortMilliseconds(list, column));
        if (before >= 0)
            back = std::max({back, sortMilliseconds(list, before), sortMilliseconds(list, before),
                             sortMilliseconds(list, column)});
        before = column;
    }
    std::printf("back to a column sorted before, worst     %8.0f ms\n", back);
    std::printf("longest time without a timer event        %8.1f ms\n", watch.worstMilliseconds());
}

// From a key to the rows.
double filterMilliseconds(QWidget& window, QChar letter) {
    auto& edit = *window.findChild<FilterEdit*>();
    const auto& model = *window.findChild<ResultModel*>();
    const auto* before = model.kept();
    return milliseconds([&] {
        edit.insert(letter);
        while (model.kept() == before)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        window.findChild<QTableView*>(QStringLiteral("lvSearchResult"))->viewport()->repaint();
    });
}

void rest(int milliseconds) {
    QElapsedTimer clock;
    clock.start();
    while (!clock.hasExpired(milliseconds))
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
}

// The texts of the rows are made a second after the search, or when the keyboard comes.
void measureFilter(QWidget& window) {
    auto& edit = *window.findChild<FilterEdit*>();
    const double before = megabytesResident();
    constexpr int untilTheTextsAreMade = 5000;
    rest(untilTheTextsAreMade);
    std::printf("filter, first key, 5 s after the search   %8.0f ms\n",
                filterMilliseconds(window, u'w'));
    std::printf("memory of the texts                       %8.0f MB\n",
                megabytesResident() - before);
    StallWatch watch;
    for (const char16_t* words : {u"wav", u"röntgen hoch", u"21/11", u"00:0", u"e", u"zzz"}) {
        edit.clear();
        finishCommands();
        double worst = 0;
        for (const QChar letter : QString::fromUtf16(words))
            if (!letter.isSpace())
                worst = std::max(worst, filterMilliseconds(window, letter));
            else
                edit.insert(letter);
        std::printf("filter \"%s\", worst key, %8d rows  %*.0f ms\n",
                    qPrintable(QString::fromUtf16(words)),
                    window.findChild<ResultModel*>()->rowCount(), 12, worst);
    }
    std::printf("longest time without a timer event        %8.1f ms\n", watch.worstMilliseconds());
    edit.clear();
    finishCommands();
}

// Searches as the user would: presses the button and says Yes to the question.
double searchMilliseconds(QWidget& window) {
    const YesSayer user;
    return milliseconds([&] {
        window.findChild<QPushButton*>(QStringLiteral("cmdSearchOptions(0)"))->click();
        finishCommands();
    });
}

void measureSearch(QWidget& window, QuietHost& host, const std::string& root) {
    const auto& list = *window.findChild<QTableView*>(QStringLiteral("lvSearchResult"));
    // The first search, while no memory of an earlier one is there to be used again.
    const double before = megabytesResident();
    searchMilliseconds(window);
    const double memory = (megabytesResident() - before) * 1e6;
    const int rows = list.model()->rowCount();
    if (rows == 0 || host.lastValue != rows)
        throw std::runtime_error("the list and the host do not agree on the hits");

    std::size_t pathBytes = 0;
    const double walk = walkMilliseconds(root, pathBytes);
    StallWatch watch;
    const double search = searchMilliseconds(window);
    const double stall = watch.worstMilliseconds();
    std::printf("dictations                                %8d\n", rows);
    std::printf("walk alone                                %8.0f ms\n", walk);
    std::printf("search in the window, beyond the walk     %8.0f ms\n", search - walk);
    std::printf("longest time without a timer event        %8.1f ms\n", stall);
    std::printf("memory a row beyond its path              %8.0f bytes\n",
                (memory - static_cast<double>(pathBytes)) / rows);
}

// The store is as it was, the criteria are others.
void measureSearchAgain(QWidget& window) {
    auto& criteria = *window.findChild<CriteriaList*>(QStringLiteral("lvSearchCriteria"));
    using modDictation::BuildCriteriaString;
    criteria.addOnce(BuildCriteriaString(15, modDictation::operator_id::equal, "3", ""));
    criteria.addOnce(BuildCriteriaString(5, modDictation::operator_id::contains, "öztürk", ""));
    std::vector<double> times;
    for (int i = 0; i < 5; ++i)
        times.push_back(searchMilliseconds(window));
    std::ranges::sort(times);
    const auto& list = *window.findChild<QTableView*>(QStringLiteral("lvSearchResult"));
    std::printf("searched again, two criteria, %8d hits %6.0f ms\n", list.model()->rowCount(),
                times[times.size() / 2]);
}

// A criterion goes, and the list follows by itself.
void measureFollowing(QWidget& window) {
    auto& criteria = *window.findChild<CriteriaList*>(QStringLiteral("lvSearchCriteria"));
    const auto& model = *window.findChild<ResultModel*>();
    std::vector<double> times;
    for (int i = 0; i < 5; ++i) {
        const auto before = model.sharedHits();
        times.push_back(milliseconds([&] {
            i % 2 == 0 ? criteria.undo() : criteria.redo();
            while (model.sharedHits() == before)
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }));
    }
    std::ranges::sort(times);
    std::printf("a criterion goes or comes, the list follows %6.0f ms\n", times[times.size() / 2]);
}

} // namespace

int main(int argc, char** argv) try {
    if (argc < 2) {
        std::fprintf(stderr, "usage: ovbench_window STORE [--without-sorts]\n");
        return 2;
    }
#ifndef NDEBUG
    std::fprintf(stderr, "warning: built without optimisation\n");
#endif
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    std::printf("%s, Qt %s\n", qPrintable(QSysInfo::prettyProductName()), qVersion());

    const std::string root = modFilePath::AddBackslash(platform::fromNativePath(argv[1]));
    const auto host = std::make_shared<QuietHost>(root, "9");
    Connector plugIn;
    plugIn.ApplicationStart(host);
    const auto control = makeControl(nullptr);
    control->IFormExtension_Init(plugIn, *host);
    auto& window = *static_cast<QWidget*>(control->IFormExtension_Window());
    window.resize(1200, 800);
    window.show();
    QCoreApplication::processEvents();

    measureSearch(window, *host, root);
    auto& list = *window.findChild<QTableView*>(QStringLiteral("lvSearchResult"));
    measurePaging(list);
    std::printf("select all                                %8.1f ms\n",
                milliseconds([&] { list.selectAll(); }));
    list.clearSelection();
    bench::measureScreenReader(list);
    bench::measureOpenedWindows(list);
    measureFilter(window);
    if (argc < 3)
        measureSorts(list);
    measureSearchAgain(window);
    measureFollowing(window);
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "ovbench_window: %s\n", error.what());
    return 1;
}
