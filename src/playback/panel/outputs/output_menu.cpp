// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "playback/panel/outputs/output_menu.h"

#include "sound/output/output_choice.h"
#include "sound/output/output_names.h"
#include "support/language/player_text_ids.h"
#include "widgets/captions.h"
#include "widgets/spoken.h"
#include "widgets/text.h"

#include <QActionGroup>
#include <QToolTip>
#include <algorithm>
#include <utility>

namespace ov {

namespace {

constexpr int askingInterval = 20; // ms

} // namespace

OutputMenu::OutputMenu(QWidget* parent) : QMenu(parent), timer_(this) {
    setObjectName(QStringLiteral("mnuOutputs"));
    widgets::setCaption(*this, text_id::outputMenu);
    connect(this, &QMenu::aboutToShow, this, &OutputMenu::ask);
    connect(this, &QMenu::aboutToHide, &timer_, &QTimer::stop);
    connect(&timer_, &QTimer::timeout, this, &OutputMenu::takeNames);
}

void OutputMenu::setOutput(const std::string& name) {
    sound::OutputChoice::instance().choose(name);
}

// One that does not answer is not asked again.
void OutputMenu::ask() {
    if (!asked_)
        asked_.emplace(sound::askForOutputNames());
    timer_.start(askingInterval);
    fill();
}

void OutputMenu::takeNames() {
    if (!asked_ || !asked_->isDone())
        return;
    timer_.stop();
    names_ = std::exchange(asked_, std::nullopt)->take();
    fill();
}

// The usual one first; one that is chosen and not there stays in sight. The keyboard stays where it
// was.
void OutputMenu::fill() {
    const std::string chosen = sound::OutputChoice::instance().chosen();
    const QVariant before = activeAction() != nullptr ? activeAction()->data() : QVariant();
    clear();
    delete std::exchange(choices_, new QActionGroup(this));
    connect(choices_, &QActionGroup::triggered, this, [this](const QAction* choice) {
        const std::string name = widgets::toUtf8(choice->data().toString());
        setOutput(name);
        Q_EMIT outputChosen(name);
    });
    add(widgets::text(text_id::usualOutput), {});
    for (const std::string& name : names_)
        add(widgets::toQt(name), name);
    const bool isThere = std::ranges::find(names_, chosen) != names_.end();
    if (!chosen.empty() && !isThere)
        add(asked_ ? widgets::toQt(chosen) : widgets::text(text_id::outputGone, {chosen}), chosen);
    if (asked_ && names_.empty())
        addAction(widgets::text(text_id::outputsAsked))->setEnabled(false);
    const QList<QAction*> choices = choices_->actions();
    for (QAction* choice : choices) {
        choice->setChecked(widgets::toUtf8(choice->data().toString()) == chosen);
        if (before.isValid() && choice->data() == before)
            setActiveAction(choice);
    }
}

// A name is no caption: it has no accelerator.
void OutputMenu::add(const QString& text, const std::string& name) {
    QString shown = text;
    QAction* choice = addAction(shown.replace(QLatin1Char('&'), QLatin1String("&&")));
    choice->setCheckable(true);
    choice->setData(widgets::toQt(name));
    choices_->addAction(choice);
}

void OutputMenu::tellWhenMissing(QWidget& place) {
    const std::string missing = sound::OutputChoice::instance().missing();
    if (std::exchange(told_, missing) == missing || missing.empty())
        return;
    const QString words = widgets::text(text_id::outputMissing, {missing});
    QToolTip::showText(place.mapToGlobal(place.rect().bottomLeft()), widgets::toolTipText(words),
                       &place);
    widgets::announce(place, words);
}

} // namespace ov
