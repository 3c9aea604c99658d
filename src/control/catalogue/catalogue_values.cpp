// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/catalogue/catalogue_values.h"

#include "catalogue/catalogue_search.h"
#include "control/catalogue/catalogue_answer.h"
#include "dictation/field_values.h"
#include "dictation/search/dictation_list.h"
#include "widgets/text.h"

namespace ov {

namespace {
constexpr std::int32_t mostExamples = 5000;
}

// On a thread of its own. Empty when it cannot be asked.
CatalogueValues::Texts CatalogueValues::ask(const std::string& place, const std::string& root,
                                            std::int32_t id, const std::stop_token& stop) {
    CatalogueAnswer answer;
    const auto opened = openFor(place, root, answer);
    if (!answer.store)
        return {};
    modDictation::DictationList examples; // one for each value, or several
    modDictation::Search all;
    all.root = root;
    modDictation::SearchReport report;
    const platform::Status counted =
        catalogue::countHits(*opened, *answer.store, all, id,
                             [&](const modDictation::Dictation& one, std::int64_t) {
                                 examples.add(one.directory, one.name);
                                 return examples.size() < mostExamples;
                             },
                             report, {.stop = stop});
    Texts texts;
    for (std::int32_t i = 1; counted.ok() && i <= examples.size(); ++i)
        texts.insert(widgets::toQt(modDictation::shownValue(id, examples[i])));
    texts.remove(QString());
    return texts;
}

bool CatalogueValues::lookOn(std::int32_t id) {
    Field& field = fields_[id];
    if (!field.asked)
        field.asked.emplace([place = place_, root = root_, id, stop = stop_.get_token()] {
            return ask(place, root, id, stop);
        });
    if (!field.isAnswered && field.asked->isDone()) {
        field.isAnswered = true;
        field.known = field.asked->take();
        field.texts = field.known.values();
    }
    const bool hasMore = other_.lookOn(id);
    field.isWaiting = !hasMore && !field.isAnswered;
    return hasMore || field.isWaiting;
}

bool CatalogueValues::isWaiting(std::int32_t id) const {
    const auto field = fields_.find(id);
    return field != fields_.end() && field->second.isWaiting;
}

QStringList CatalogueValues::found(std::int32_t id) const {
    QStringList others = other_.found(id);
    const auto field = fields_.find(id);
    if (field == fields_.end() || field->second.texts.isEmpty())
        return others;
    QStringList all = field->second.texts;
    for (const QString& text : others)
        if (!field->second.known.contains(text))
            all.append(text);
    return all;
}

} // namespace ov
