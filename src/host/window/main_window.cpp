// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "host/window/main_window.h"

#include "host/paths.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QFileDialog>
#include <QMenuBar>
#include <QMessageBox>
#include <QScreen>
#include <QStatusBar>
#include <QStyle>
#include <chrono>
#include <utility>

namespace ov::host {

namespace {

using namespace Qt::StringLiterals;

constexpr std::chrono::milliseconds failureIsShown{15000};
constexpr QSize firstSize{1000, 720};

QSize roomOn(const QScreen& screen) {
    return screen.availableSize() -
           QSize(0, QApplication::style()->pixelMetric(QStyle::PM_TitleBarHeight));
}

} // namespace

MainWindow::MainWindow(PluginSession& session, ProgressNotes& progress, HostSettings& settings,
                       Texts& texts)
    : session_(session),
      settings_(settings),
      texts_(texts),
      pages_(new QStackedWidget(this)),
      pane_(new PluginPane(session, pages_)),
      firstPage_(new FirstPage(texts, pages_)),
      trace_(new TraceDock(texts, this)),
      progress_(new ProgressPanel(progress, texts, this)),
      menu_(new HostMenu(*menuBar(), *trace_->toggleViewAction(), settings, texts, this)) {
    setObjectName(u"mainWindow"_s);
    setCentralWidget(pages_);
    pages_->addWidget(pane_);
    pages_->addWidget(firstPage_);
    addDockWidget(Qt::BottomDockWidgetArea, trace_);
    trace_->hide();
    statusBar()->addWidget(progress_, 1);
    connectMenu();
    connectSession();
    connect(&texts_, &Texts::changed, this, &MainWindow::translate);
    translate();
    if (!settings_.restorePlace(*this))
        resize(firstSize.boundedTo(roomOn(*screen())));
}

MainWindow::~MainWindow() {
    pane_->dropControl(); // its end may still trace and show progress
    disconnect(&session_, nullptr, this, nullptr);
}

void MainWindow::connectMenu() {
    connect(menu_, &HostMenu::openFolderChosen, this, &MainWindow::askForFolder);
    connect(firstPage_, &FirstPage::folderWanted, this, &MainWindow::askForFolder);
    // Later: a plug-in that hears of it may let window messages be handled, and the entries of the
    // recent folders are made anew whenever their menu comes up.
    connect(menu_, &HostMenu::folderChosen, this, &MainWindow::openFolder, Qt::QueuedConnection);
    connect(menu_, &HostMenu::forgetFoldersChosen, this, [this] {
        settings_.forgetRecentFolders();
        saveSettings();
    });
    connect(menu_, &HostMenu::quitChosen, this, &QWidget::close);
    connect(menu_, &HostMenu::logViewChosen, this,
            [this] { showLogView(logView_ != nullptr ? logView_->path() : QByteArray()); });
    connect(menu_, &HostMenu::languageChosen, this, &MainWindow::changeLanguage);
    connect(menu_, &HostMenu::aboutChosen, this, &MainWindow::showAbout);
}

void MainWindow::connectSession() {
    connect(&session_.services(), &HostServices::traced, trace_, &TraceDock::add);
    connect(&session_.services(), &HostServices::logViewRequested, this, &MainWindow::showLogView);
    connect(&session_, &PluginSession::failed, trace_, &TraceDock::add);
    connect(&session_, &PluginSession::failed, this, [this](const QString& what) {
        statusBar()->showMessage(what, static_cast<int>(failureIsShown.count()));
    });
    connect(&session_, &PluginSession::failed, this, &MainWindow::failed);
    connect(pane_, &PluginPane::controlReady, this, &MainWindow::controlReady);
    connect(pane_, &PluginPane::resized, this, [this] {
        if (session_.isStarted())
            session_.sendWindowEvent(window_event::resize, *pane_);
    });
}

void MainWindow::load(const QString& plugInFile) {
    notLoaded_ = session_.start(plugInFile);
    showPage();
    if (notLoaded_)
        emit failed(texts_(notLoaded_->text, notLoaded_->arguments));
    else
        placeControl();
    menu_->offer(pane_->actionsOfControl());
    showFailure();
    showPage();
}

// A plug-in that could not be loaded has more to say than that there is no folder.
void MainWindow::showPage() {
    const bool isFirst = !notLoaded_ && settings_.dictationFolder().empty();
    pages_->setCurrentWidget(isFirst ? static_cast<QWidget*>(firstPage_) : pane_);
    if (isFirst)
        firstPage_->setFocus();
    else
        pane_->focusControl();
}

void MainWindow::placeControl() {
    QStringList failures;
    const auto listening = connect(&session_, &PluginSession::failed, this,
                                   [&](const QString& what) { failures += what; });
    session_.sendWindowEvent(window_event::load, *pane_);
    disconnect(listening);
    if (!pane_->hasControl() && !failures.isEmpty())
        notLoaded_ = Failure{Text::startFailed,
                             {QDir::toNativeSeparators(session_.file()), failures.join("; "_L1)}};
}

void MainWindow::closeEvent(QCloseEvent* event) {
    settings_.keepPlace(*this);
    if (logView_ != nullptr)
        logView_->close();
    // A search may be on the stack, in whose pause this event is handled: nothing of the plug-in
    // but its control goes now, the rest when the event loop has ended.
    if (session_.isStarted())
        session_.sendWindowEvent(window_event::queryUnload, *pane_);
    pane_->dropControl();
    event->accept();
}

void MainWindow::translate() {
    showTitle();
    showFailure();
}

void MainWindow::showFailure() {
    if (notLoaded_)
        pane_->setMessage(texts_(Text::notLoadedTitle),
                          texts_(notLoaded_->text, notLoaded_->arguments),
                          texts_(notLoaded_->text == Text::startFailed ? Text::notStartedAdvice
                                                                       : Text::notLoadedAdvice));
}

void MainWindow::showTitle() {
    setWindowTitle(shownPath(boundaryPath(settings_.dictationFolder())));
}

// Not modal to the program: a search goes on below.
void MainWindow::askForFolder() {
    const QString folder = shownPath(boundaryPath(settings_.dictationFolder()));
    checkFolder(folder, this, [this, folder](FolderAnswer answer) {
        showFolderDialog(answer == FolderAnswer::readable ? folder : QString());
    });
}

// `folder` is one that answers: Qt looks at it on this thread. Empty: the desktop's.
void MainWindow::showFolderDialog(const QString& folder) {
    auto* dialog = new QFileDialog(this, texts_(Text::chooseFolder));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    dialog->setDirectory(folder);
    connect(dialog, &QFileDialog::fileSelected, this, &MainWindow::openFolder,
            Qt::QueuedConnection);
    dialog->open();
}

void MainWindow::openFolder(const QString& folder) {
    checkFolder(folder, this, [this, folder](FolderAnswer answer) {
        if (answer == FolderAnswer::readable)
            useFolder(folder);
        else
            refuseFolder(folder, answer);
    });
}

// A server that does not answer may do so tomorrow: only what is gone is forgotten.
void MainWindow::refuseFolder(const QString& folder, FolderAnswer answer) {
    if (answer == FolderAnswer::unreadable) {
        settings_.forgetFolder(folder);
        saveSettings();
    }
    warn(texts_(answer == FolderAnswer::silent ? Text::folderIsSilent : Text::folderIsGone,
                {QDir::toNativeSeparators(folder)}));
}

void MainWindow::useFolder(const QString& folder) {
    settings_.setDictationFolder(QDir(folder).absolutePath());
    saveSettings();
    statusBar()->clearMessage();
    showTitle();
    showPage();
    session_.sendAction(action_event::changed, "DIR_NETDICTATIONTREE");
}

// Told once: the first change that is lost is no different from the next.
void MainWindow::saveSettings() {
    const QString file = settings_.save();
    if (!file.isEmpty() && !std::exchange(toldUnsaved_, true))
        warn(texts_(Text::settingsUnsaved, {QDir::toNativeSeparators(file)}));
}

void MainWindow::warn(const QString& text) {
    auto* box = new QMessageBox(QMessageBox::Warning, QString(), text, QMessageBox::Ok, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    box->open();
}

void MainWindow::changeLanguage(Language language) {
    settings_.setLanguage(language);
    saveSettings();
    texts_.setLanguage(language);
    session_.sendAction(action_event::changed, "LANGUAGE");
    if (logView_ != nullptr && logView_->isVisible()) // the plug-in's captions in it
        logView_->showNotes(logView_->path(), session_.logNotes(logView_->path()));
}

void MainWindow::showLogView(const QByteArray& path) {
    if (logView_ == nullptr)
        logView_ = new LogView(texts_, this);
    logView_->showNotes(path, session_.logNotes(path));
    logView_->show();
    logView_->raise();
    logView_->activateWindow();
}

void MainWindow::showAbout() {
    auto* box = new QMessageBox(this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setObjectName(u"about"_s);
    box->setWindowTitle(texts_(Text::about).remove(u'&'));
    box->setIconPixmap(windowIcon().pixmap(fontMetrics().height() * 4));
    box->setTextFormat(Qt::PlainText);
    box->setText(
        u"%1 %2"_s.arg(QApplication::applicationDisplayName(), QApplication::applicationVersion()));
    box->setInformativeText(aboutText());
    box->open();
}

QString MainWindow::aboutText() {
    if (!session_.isStarted())
        return texts_(Text::aboutNoPlugIn);
    const Identity identity = session_.identity();
    return QStringList{
        identity.description, texts_(Text::aboutPlugIn, {identity.name, identity.version}),
        QDir::toNativeSeparators(session_.file()), u"Qt %1"_s.arg(QLatin1StringView(qVersion()))}
        .join(u'\n');
}

} // namespace ov::host
