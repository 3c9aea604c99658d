// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "host/window/host_menu.h"

#include "host/settings.h"
#include "host/texts.h"

#include <QAction>
#include <QActionGroup>
#include <QDir>
#include <QMenuBar>

namespace ov::host {

namespace {

using namespace Qt::StringLiterals;

// A "&" in a folder's name is no mnemonic.
QString menuText(const QString& folder) {
    return QDir::toNativeSeparators(folder).replace(u'&', "&&"_L1);
}

// Its text comes with the language.
QAction* add(QMenu& menu, const char* name) {
    QAction* action = menu.addAction(QString());
    action->setObjectName(QLatin1StringView(name));
    return action;
}

} // namespace

HostMenu::HostMenu(QMenuBar& bar, QAction& traceToggle, const HostSettings& settings,
                   const Texts& texts, QObject* parent)
    : QObject(parent),
      settings_(settings),
      texts_(texts),
      traceToggle_(traceToggle),
      file_(bar.addMenu(QString())),
      view_(bar.addMenu(QString())),
      language_(bar.addMenu(QString())),
      help_(bar.addMenu(QString())) {
    buildFile();
    buildView();
    buildLanguages(*language_);
    buildHelp();
    connect(&texts_, &Texts::changed, this, &HostMenu::translate);
    translate();
}

void HostMenu::buildFile() {
    openFolder_ = add(*file_, "actionOpenFolder");
    openFolder_->setShortcut(QKeySequence::Open);
    connect(openFolder_, &QAction::triggered, this, &HostMenu::openFolderChosen);
    recent_ = file_->addMenu(QString());
    recent_->setObjectName(u"menuRecentFolders"_s);
    connect(file_, &QMenu::aboutToShow, this, &HostMenu::fillRecentFolders);
    file_->addSeparator();
    quit_ = add(*file_, "actionQuit");
    quit_->setShortcut(QKeySequence::Quit);
    quit_->setMenuRole(QAction::QuitRole);
    connect(quit_, &QAction::triggered, this, &HostMenu::quitChosen);
}

void HostMenu::buildView() {
    view_->addAction(&traceToggle_);
    logView_ = add(*view_, "actionLogView");
    connect(logView_, &QAction::triggered, this, &HostMenu::logViewChosen);
}

void HostMenu::offer(const QList<QAction*>& ofControl) {
    if (ofControl.isEmpty())
        return;
    view_->addSeparator();
    view_->addActions(ofControl);
}

void HostMenu::buildHelp() {
    about_ = add(*help_, "actionAbout");
    about_->setMenuRole(QAction::AboutRole);
    connect(about_, &QAction::triggered, this, &HostMenu::aboutChosen);
}

void HostMenu::buildLanguages(QMenu& menu) {
    languages_ = new QActionGroup(this);
    struct Choice {
        Language language;
        const char* name;
        const char16_t* text; // in the language itself, for whoever is lost in the other
    };
    for (const Choice& choice : {Choice{Language::german, "actionGerman", u"&Deutsch"},
                                 Choice{Language::english, "actionEnglish", u"&English"}}) {
        QAction* action = add(menu, choice.name);
        action->setText(QString::fromUtf16(choice.text));
        action->setCheckable(true);
        action->setData(static_cast<int>(choice.language));
        languages_->addAction(action);
        connect(action, &QAction::triggered, this,
                [this, language = choice.language] { emit languageChosen(language); });
    }
}

void HostMenu::fillRecentFolders() {
    recent_->clear();
    const QStringList folders = settings_.recentFolders();
    for (const QString& folder : folders)
        connect(recent_->addAction(menuText(folder)), &QAction::triggered, this,
                [this, folder] { emit folderChosen(folder); });
    recent_->addSeparator();
    connect(recent_->addAction(texts_(Text::forgetRecentFolders)), &QAction::triggered, this,
            &HostMenu::forgetFoldersChosen);
    recent_->setEnabled(!folders.isEmpty());
}

void HostMenu::translate() {
    file_->setTitle(texts_(Text::fileMenu));
    openFolder_->setText(texts_(Text::openFolder));
    recent_->setTitle(texts_(Text::recentFolders));
    quit_->setText(texts_(Text::quit));
    view_->setTitle(texts_(Text::viewMenu));
    logView_->setText(texts_(Text::logView));
    language_->setTitle(texts_(Text::languageMenu));
    help_->setTitle(texts_(Text::helpMenu));
    about_->setText(texts_(Text::about));
    for (QAction* action : languages_->actions())
        action->setChecked(action->data().toInt() == static_cast<int>(texts_.language()));
}

} // namespace ov::host
