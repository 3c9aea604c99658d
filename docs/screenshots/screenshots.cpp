// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// ov_screenshots STORE FOLDER LANGUAGE
//
// Drives the control on a demo store and saves pictures of it as FOLDER/LANGUAGE-<what>.png.

#include "bench/quiet_host.h"
#include "control/ctrlOVSearch.h"
#include "platform/files.h"
#include "plugin/Connector.h"
#include "support/modFilePath.h"

#include <QApplication>
#include <QComboBox>
#include <QDateEdit>
#include <QDialog>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QTimer>
#include <QTreeWidget>
#include <cstdio>
#include <functional>
#include <stdexcept>

namespace {

using namespace ov;

class Photographer {
public:
    Photographer(QWidget& window, QString prefix) : window_(window), prefix_(std::move(prefix)) {}

    void run() {
        picture("empty");
        editors();
        search();
        sortAndSelect();
        picture("few");
        nothingFound();
        while (criteria().topLevelItemCount() > 0)
            press("cmdSearchKriteriaOptions(2)");
        withDialog([this] { search(); },
                   [](QDialog& box) {
                       dynamic_cast<QMessageBox&>(box).button(QMessageBox::Yes)->click();
                   });
        sortAndSelect();
        picture("many");
        details();
        playing();
        filtered();
        withDialog([this] { press("cmdSearchOptions(3)"); },
                   [this](QDialog& dialog) {
                       auto& right = child<QListWidget>(dialog, "lstRight");
                       right.setCurrentRow(2);
                       child<QPushButton>(dialog, "cmdTransfer(1)").click();
                       save(dialog, "columns");
                   });
        window_.resize(640, 480);
        picture("smallest");
    }

private:
    template <typename Widget>
    static Widget& child(QWidget& of, const char* name) {
        auto* found = of.findChild<Widget*>(QLatin1String(name));
        if (found == nullptr)
            throw std::runtime_error(std::string("no widget ") + name);
        return *found;
    }
    QTreeWidget& criteria() { return child<QTreeWidget>(window_, "lvSearchCriteria"); }
    // Commands run from the event loop, and the list follows after them.
    void press(const char* name) {
        child<QPushButton>(window_, name).click();
        for (int i = 0; i < 3; ++i)
            QCoreApplication::processEvents();
    }
    void search() { press("cmdSearchOptions(0)"); }

    void save(QWidget& widget, const char* what) {
        QCoreApplication::processEvents();
        const QString file = prefix_ + QLatin1String(what) + QStringLiteral(".png");
        if (!widget.grab().save(file))
            throw std::runtime_error("cannot write " + file.toStdString());
    }
    void picture(const char* what) {
        wait(300); // the line under the list is told by and by
        save(window_, what);
    }

    static void withDialog(const std::function<void()>& open,
                           const std::function<void(QDialog&)>& drive) {
        QTimer untilItIsThere;
        QObject::connect(&untilItIsThere, &QTimer::timeout, [&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr)
                return;
            untilItIsThere.stop();
            drive(*dialog);
            if (dialog->isVisible())
                dialog->reject();
        });
        untilItIsThere.start(0);
        open();
    }

    static void choose(QDialog& dialog, int field, int operatorId) {
        auto& fields = child<QComboBox>(dialog, "cboField");
        fields.setCurrentIndex(fields.findData(field));
        auto& operators = child<QComboBox>(dialog, "cboOperator");
        operators.setCurrentIndex(operators.findData(operatorId));
    }

    // A picture of the editor with each kind of value; those that say so stay in the list.
    void editors() {
        struct Shot {
            const char* what;
            int field;
            int operatorId;
            bool keep;
        };
        for (const Shot& shot :
             {Shot{"editor-text", 5, 17, true}, Shot{"editor-list", 15, 24, true},
              Shot{"editor-dates", 9, 16, false}, Shot{"editor-times", 13, 31, false},
              Shot{"editor-none", 9, 11, false}})
            withDialog([this] { press("cmdSearchKriteriaOptions(0)"); },
                       [&](QDialog& dialog) {
                           choose(dialog, shot.field, shot.operatorId);
                           child<QLineEdit>(dialog, "txtValue(0)").setText(QStringLiteral("Dr"));
                           auto& from = child<QDateEdit>(dialog, "dtpValue(0)");
                           from.setDate(from.date().addDays(-7));
                           save(dialog, shot.what);
                           if (shot.keep)
                               child<QPushButton>(dialog, "cmdOK").click();
                       });
    }

    void nothingFound() {
        withDialog([this] { press("cmdSearchKriteriaOptions(0)"); },
                   [](QDialog& dialog) {
                       choose(dialog, 18, 18);
                       child<QLineEdit>(dialog, "txtValue(0)").setText(QStringLiteral("zzz"));
                       child<QPushButton>(dialog, "cmdOK").click();
                   });
        withDialog([this] { search(); }, [this](QDialog& box) { save(box, "message"); });
        picture("nothing");
    }

    void details() {
        withDialog(
            [this] {
                QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::AltModifier);
                QCoreApplication::sendEvent(&list(), &enter);
                for (int i = 0; i < 3; ++i)
                    QCoreApplication::processEvents();
            },
            [this](QDialog& dialog) { save(dialog, "details"); });
    }

    // A moment after its start, in the middle of its waveform.
    void playing() {
        QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QCoreApplication::sendEvent(&list(), &enter);
        wait(2500);
        picture("playing");
        press("cmdSearchPlayer(2)");
    }

    void filtered() {
        auto& words = child<QLineEdit>(window_, "txtResultFilter");
        words.setText(QStringLiteral("dr müller"));
        const int all = list().model()->rowCount();
        while (list().model()->rowCount() == all)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        picture("filtered");
        words.clear();
    }

    static void wait(int milliseconds) {
        QElapsedTimer clock;
        clock.start();
        while (!clock.hasExpired(milliseconds))
            QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    }

    QTableView& list() { return child<QTableView>(window_, "lvSearchResult"); }

    void sortAndSelect() {
        const auto* model = list().model();
        QHeaderView* header = list().horizontalHeader();
        for (int column = 0; column < model->columnCount(); ++column)
            if (model->headerData(column, Qt::Horizontal, ResultModel::fieldRole).toInt() == 9)
                while (header->sortIndicatorSection() != column ||
                       header->sortIndicatorOrder() != Qt::DescendingOrder) {
                    Q_EMIT header->sectionClicked(column); // the newest first
                    QCoreApplication::processEvents();
                }
        list().selectRow(3);
    }

    QWidget& window_;
    QString prefix_;
};

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: ov_screenshots STORE FOLDER de|en\n");
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const std::string language = argv[3];
    const auto host = std::make_shared<tests::QuietHost>(
        modFilePath::AddBackslash(platform::fromNativePath(argv[1])),
        std::to_string(language == "de" ? 7 : 9));
    Connector plugIn;
    plugIn.ApplicationStart(host);
    const auto control = makeControl(nullptr);
    control->IFormExtension_Init(plugIn, *host);
    auto& window = *static_cast<QWidget*>(control->IFormExtension_Window());
    window.resize(1000, 680);
    window.show();
    try {
        Photographer(window, QString::fromLocal8Bit(argv[2]) + QLatin1Char('/') +
                                 QString::fromStdString(language) + QLatin1Char('-'))
            .run();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "ov_screenshots: %s\n", error.what());
        return 1;
    }
    return 0;
}
