// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// The host lets go of the control, destroys the window around it, or has two of them.

#include "dictation/search/tree_scan.h"
#include "support/language/resource_gateway.h"
#include "tests/window/window_fixture.h"

namespace ov {
namespace {

class ControlLife : public WindowTest {
protected:
    // A control in a window of the host, as hosts have it.
    void place() {
        plugIn_.caller = nullptr;
        parent_ = std::make_unique<QWidget>();
        control_ = makeControl(parent_.get());
        widget_ = &window();
    }
    void init() { control_->IFormExtension_Init(plugIn_.connector, host()); }
    void open() {
        place();
        init();
        if (parent_)
            parent_->show();
    }
    std::function<void(const std::function<void()>&)>
    during(const char* call, std::function<void()> run, bool opened = true) {
        return [=, this](const std::function<void()>& act) {
            opened ? open() : place();
            inCall(call, run, act);
        };
    }
    std::function<void(const std::function<void()>&)> inDialog(std::function<void()> run) {
        return [=, this](const std::function<void()>& act) {
            open();
            withDialog(run, [&](QDialog& dialog) {
                act();
                EXPECT_FALSE(dialog.isVisible());
            });
        };
    }
    static std::string label(QWidget& control) {
        return child<QLabel>(control, "lblSearchResult").text().toStdString();
    }

    std::unique_ptr<QWidget> parent_;
    QPointer<QWidget> widget_;
};

TEST_F(ControlLife, EndsWhereverItIs) {
    store.add("2$WAV@@14$1.WAV").add("2$WAV@@14$2.WAV").add("2$WAV@@14$3.WAV").add("deep/4.WAV");
    const std::function<void()> starts = [this] { init(); };
    const std::function<void()> searches = [this] { search(); };
    const std::function<void()> hears = [this] { action("DIR_NETDICTATIONTREE"); };
    struct Place {
        const char* name;
        std::function<void(const std::function<void()>& act)> reach;
        bool clearsProgress = false;
        const char* criteria = "2|25|6|\r\n";
    };
    const std::vector<Place> places = {
        {"subscribe", during("subscribe", starts, false)},
        {"language", during("PI_GetLanguage", starts, false)},
        {"directory", during("PI_GetDirectory(32)", starts, false)},
        {"ready", during("ReportControlReady", starts, false)},
        {"box without language",
         [&](const auto& act) {
             resource_gateway::SetResPath(path(""));
             place();
             withDialog(starts, [&](QDialog& /*box*/) { act(); });
             resource_gateway::SetResPath({});
         }},
        {"new directory", during("PI_GetDirectory(204)", hears)},
        {"walk", during("PI_ProgressText", searches), true},
        {"count of folders", during("PI_ProgressInit", searches), true},
        {"filling", during("PI_ProgressValue(&3)", searches), true},
        {"question", inDialog(searches), false, ""},
        {"editor", inDialog([this] { press("cmdSearchKriteriaOptions(0)"); })},
        {"preview", inDialog([this] {
             search();
             press("cmdSearchOptions(2)");
             click("preview");
         })},
        {"log view", during("PI_LogView", [this] {
             search();
             results().selectRow(0);
             press("cmdSearchOptions(4)");
         })}};
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"lets go", [this] { control_ = nullptr; }},
        {"destroys the window", [this] { parent_ = nullptr; }},
        {"does both", [this] { parent_ = nullptr, control_ = nullptr; }}};
    for (const Place& place : places)
        for (const auto& [what, end] : ways) {
            SCOPED_TRACE(std::string(what) + ": " + place.name);
            const std::string criteria = criterion(place.criteria);
            write("SearchCriteria.dat", criteria);
            std::size_t atEnd = 0;
            place.reach([&, &end = end] {
                end();
                atEnd = host().calls.size();
            });
            ASSERT_GT(atEnd, 0U);
            if (place.clearsProgress) {
                EXPECT_EQ(host().calls[atEnd - 1], "PI_ProgressClear()");
            }
            for (; atEnd < host().calls.size(); ++atEnd)
                EXPECT_EQ(host().calls[atEnd], "unsubscribe()") << "the host has let go";
            control_ = nullptr;
            parent_ = nullptr;
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            EXPECT_TRUE(widget_.isNull());
            EXPECT_EQ(host().events.sinkCount(), 1U) << "only the plug-in object still listens";
            EXPECT_FALSE(modDictation::isSearchRunning());
            EXPECT_EQ(read("SearchCriteria.dat"), criteria);
        }
}

// The window around the control may change.
TEST_F(ControlLife, FollowsItsWindow) {
    open();
    QWidget other;
    window().setParent(&other);
    parent_ = nullptr;
    EXPECT_NE(control_->IFormExtension_Window(), nullptr);
    window().setParent(nullptr);
    press("cmdSearchOptions(1)");
}

TEST_F(ControlLife, TwoShareNothing) {
    store.addDeep(30, "2$WAV.WAV");
    write("SearchCriteria.dat", criterion("2|25|6|\r\n"));
    for (const bool sameHost : {true, false}) {
        SCOPED_TRACE(sameHost);
        open();
        StartedPlugIn otherPlugIn;
        otherPlugIn.caller = nullptr;
        otherPlugIn.host->answers = host().answers;
        StartedPlugIn& itsPlugIn = sameHost ? plugIn_ : otherPlugIn;
        auto otherControl = makeControl(nullptr);
        otherControl->IFormExtension_Init(itsPlugIn.connector, *itsPlugIn.host);
        auto& other = *static_cast<QWidget*>(otherControl->IFormExtension_Window());
        other.show();
        user = std::make_unique<RecordingInterface>([] { QCoreApplication::processEvents(); });
        const auto searchOther = [&other] {
            clickOn(other, "cmdSearchOptions(0)");
            QCoreApplication::processEvents();
        };
        searchOther();
        const auto meanwhile = [&] {
            itsPlugIn.host->calls.clear();
            searchOther();
            EXPECT_EQ(user->onlyText().substr(0, 26), "Another search is running.");
            EXPECT_EQ(label(other), "Search result (30 dictations)") << "its list is kept";
            QTest::keyClick(&other, Qt::Key_Escape);
            itsPlugIn.host->events.action(2, "DIR_NETDICTATIONTREE");
            EXPECT_EQ(itsPlugIn.host->calls.size(), sameHost ? 2U : 1U) << "each asks its own";
            otherControl = nullptr;
        };
        inSearch([this] { search(); }, meanwhile);
        EXPECT_EQ(label(window()), "Search result (30 dictations)");
        EXPECT_EQ(host().calls.back(), "PI_ProgressClear()") << "its host is still there";
        user = nullptr;
        control_ = nullptr;
    }
}

TEST_F(ControlLife, LeavesTheBoxesOfAnother) {
    open();
    auto other = makeControl(nullptr);
    other->IFormExtension_Init(plugIn_.connector, host());
    withDialog([this] { search(); },
               [&](QDialog& question) {
                   other = nullptr;
                   EXPECT_TRUE(question.isVisible());
                   EXPECT_FALSE(widget<QPushButton>("cmdSearchStop").isEnabled())
                       << "nothing to stop yet";
               });
}

} // namespace
} // namespace ov
