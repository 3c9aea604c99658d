// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "playback/panel/choices/player_menu.h"

#include "playback/panel/player_texts.h"
#include "support/language/text_ids.h"
#include "widgets/captions.h"
#include "widgets/text.h"

#include <QActionGroup>
#include <utility>

namespace ov {

namespace {

void check(const QActionGroup& group, const QVariant& value) {
    const QList<QAction*> actions = group.actions();
    for (QAction* action : actions)
        action->setChecked(action->data() == value);
}

QMenu* addSubmenu(QMenu& menu, std::int32_t text) {
    QMenu* added = menu.addMenu(QString());
    widgets::setCaption(*added, text);
    return added;
}

// Values that are none of the choices may have been set by hand: then none is checked.
QActionGroup* addGroup(QMenu& menu) {
    auto* group = new QActionGroup(&menu);
    group->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    return group;
}

QAction* addChoice(QMenu& menu, QActionGroup& group, const QVariant& value) {
    QAction* action = menu.addAction(QString());
    action->setCheckable(true);
    action->setData(value);
    group.addAction(action);
    return action;
}

} // namespace

PlayerMenu::PlayerMenu(QWidget* parent)
    : QMenu(parent), speedMenu_(addSubmenu(*this, text_id::speedMenu)) {
    setAttribute(Qt::WA_NoMouseReplay); // a press on the button that closes it is used up
    speeds_ = addNumbers(*speedMenu_, "%1 %", &PlayerChoices::speedPercent,
                         {playSpeeds.begin(), playSpeeds.end()});
    speedMenu_->addSeparator();
    addSwitch(*speedMenu_, "actSkipSilence", text_id::skipSilence,
              [](PlayerChoices& choices) -> bool& { return choices.shape.skipsSilence; });
    backUps_ = addNumbers(*addSubmenu(*this, text_id::backUpMenu), "%1 s",
                          &PlayerChoices::backUpSeconds, {0, 1, 2, 3, 5, 10});
    addBoosts();
    addSwitch(*this, "actEvenOut", text_id::evenOut,
              [](PlayerChoices& choices) -> bool& { return choices.shape.evensOut; });
    addSwitch(*this, "actCutRumble", text_id::cutRumble,
              [](PlayerChoices& choices) -> bool& { return choices.shape.cutsRumble; });
    addSeparator();
    QAction* loop = addAction(QString());
    widgets::setCaption(*loop, text_id::loopMenu);
    connect(loop, &QAction::triggered, this, &PlayerMenu::loopRequested);
    addStamps();
    addSwitch(*this, "actRememberPositions", text_id::rememberPositions,
              [](PlayerChoices& choices) -> bool& { return choices.remembersPositions; });
    show({});
}

QActionGroup* PlayerMenu::addNumbers(QMenu& menu, const char* format,
                                     std::int32_t PlayerChoices::*number,
                                     const std::vector<std::int32_t>& values) {
    QActionGroup* group = addGroup(menu);
    for (const std::int32_t value : values)
        addChoice(menu, *group, value)->setText(QString::fromLatin1(format).arg(value));
    connect(group, &QActionGroup::triggered, this, [this, number](const QAction* action) {
        PlayerChoices choices = choices_;
        choices.*number = action->data().toInt();
        choose(choices);
    });
    return group;
}

void PlayerMenu::addBoosts() {
    QMenu* menu = addSubmenu(*this, text_id::boostMenu);
    boosts_ = addGroup(*menu);
    for (const int boost : {100, 150, 200, 250, 300})
        addChoice(*menu, *boosts_, boost)->setText(QStringLiteral("%1 %").arg(boost));
    connect(boosts_, &QActionGroup::triggered, this, [this](const QAction* action) {
        PlayerChoices choices = choices_;
        choices.shape.boost = action->data().toInt();
        choose(choices);
    });
}

void PlayerMenu::addStamps() {
    QMenu* menu = addSubmenu(*this, text_id::timeStampMenu);
    stamps_ = addGroup(*menu);
    for (const char* form : {usualTimeStampForm, "%1%", "(%1%)", "[%1%] %2%"})
        addChoice(*menu, *stamps_, QLatin1String(form));
    nameStamps();
    connect(stamps_, &QActionGroup::triggered, this, [this](const QAction* action) {
        PlayerChoices choices = choices_;
        choices.timeStampForm = widgets::toUtf8(action->data().toString());
        choose(choices);
    });
}

void PlayerMenu::addSwitch(QMenu& menu, const char* name, std::int32_t text,
                           std::function<bool&(PlayerChoices&)> value) {
    QAction* action = menu.addAction(QString());
    action->setObjectName(QLatin1String(name));
    action->setCheckable(true);
    widgets::setCaption(*action, text);
    connect(action, &QAction::triggered, this, [this, value](bool checked) {
        PlayerChoices choices = choices_;
        value(choices) = checked;
        choose(choices);
    });
    switches_.push_back({action, std::move(value)});
}

// Each choice is an example of itself.
void PlayerMenu::nameStamps() {
    const QList<QAction*> choices = stamps_->actions();
    for (QAction* choice : choices)
        choice->setText(timeStamp(widgets::toUtf8(choice->data().toString()),
                                  QStringLiteral("00:12:34"),
                                  widgets::text(text_id::timeStampTitle)));
}

void PlayerMenu::show(const PlayerChoices& choices) {
    choices_ = choices;
    check(*speeds_, choices.speedPercent);
    check(*backUps_, choices.backUpSeconds);
    check(*boosts_, choices.shape.boost);
    check(*stamps_, widgets::toQt(isTimeStampForm(choices.timeStampForm) ? choices.timeStampForm
                                                                         : usualTimeStampForm));
    for (const Switch& one : switches_)
        one.action->setChecked(one.value(choices_));
}

void PlayerMenu::choose(const PlayerChoices& choices) {
    show(choices);
    Q_EMIT chosen(choices);
}

void PlayerMenu::retranslate() {
    nameStamps();
}

} // namespace ov
