// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/catalogue/catalogue_values.h"

#include "catalogue/catalogue_search.h"
#include "control/catalogue/catalogue_answer.h"
#include "dictation/field_values.h"
#include "widgets/text.h"

#include <chrono>
#include <set>

namespace ov {

namespace {
constexpr std::int32_t mostExamples = 5000;
}

// On a thread of its own.
CatalogueValues::Examples CatalogueValues::ask(const std::string& place, const std::string& root,
                                               std::int32_t id, const std::stop_token& stop) {
    CatalogueAnswer answer;
    const auto opened = openFor(place, root, answer);
    if (!answer.store)
        return nullptr;
    auto examples = std::make_unique<modDictation::DictationList>();
    modDictation::Search all;
    all.root = root;
    modDictation::SearchReport report;
    const platform::Status counted =
        catalogue::countHits(*opened, *answer.store, all, id,
                             [&](const modDictation::Dictation& one, std::int64_t) {
                                 examples->add(one.directory, one.name);
                                 return examples->size() < mostExamples;
                             },
                             report, {.stop = stop});
    return counted.ok() ? std::move(examples) : nullptr;
}

QStringList CatalogueValues::textsOf(std::int32_t id, const modDictation::DictationList& examples) {
    std::set<std::string> values;
    for (std::int32_t i = 1; i <= examples.size(); ++i)
        values.insert(modDictation::shownValue(id, examples[i]));
    values.erase(std::string());
    QStringList texts;
    for (const std::string& value : values)
        texts.append(widgets::toQt(value));
    return texts;
}

bool CatalogueValues::lookOn(std::int32_t id) {
    constexpr std::chrono::milliseconds slice{8};
    Field& field = fields_[id];
    if (field.isAnswered)
        return field.isOthers && other_.lookOn(id);
    if (!field.asked)
        field.asked.emplace([place = place_, root = root_, id, stop = stop_.get_token()] {
            return ask(place, root, id, stop);
        });
    if (!field.asked->wait(slice))
        return true;
    field.isAnswered = true;
    if (const Examples examples = field.asked->take())
        field.texts = textsOf(id, *examples);
    else
        field.isOthers = true;
    return field.isOthers;
}

QStringList CatalogueValues::found(std::int32_t id) const {
    const auto field = fields_.find(id);
    if (field == fields_.end())
        return {};
    return field->second.isOthers ? other_.found(id) : field->second.texts;
}

} // namespace ov
