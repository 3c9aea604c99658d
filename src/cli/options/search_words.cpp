// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/options/search_words.h"

#include "dictation/typed/quick_lexer.h"

#include <cstddef>
#include <string_view>
#include <utility>

namespace ov::cli {

namespace {

using modDictation::QuickPart;
using Kind = QuickPart::Kind;

constexpr const char* wordName = "WORD";
constexpr const char* fileName = "FILE";
constexpr std::string_view longCriterion = "--criterion";
constexpr std::string_view shortCriterion = "-c";
constexpr std::string_view notOption = "--not";
constexpr std::string_view endOfOptions = "--";

bool isOption(std::string_view argument) {
    return argument.size() > 1 && argument.front() == '-';
}

// "-folder:test"
bool isNegatedField(std::string_view argument) {
    return isOption(argument) && !modDictation::fieldNameOf(argument.substr(1)).empty();
}

bool wantsValue(const CLI::App& command, const std::string& option) {
    const CLI::Option* const known = command.get_option_no_throw(option);
    return known != nullptr && known->get_items_expected_min() > 0;
}

// Whether the argument after this option is its value. Short ones may stand together; a value may
// stand behind the last of them.
bool takesNext(const CLI::App& command, const std::string& argument) {
    if (argument.starts_with("--"))
        return wantsValue(command, argument);
    for (std::size_t i = 1; i < argument.size(); ++i)
        if (wantsValue(command, std::string("-") + argument[i]))
            return i + 1 == argument.size();
    return false;
}

// Where "-c" stands among short options that stand together; npos where it does not.
std::size_t criterionLetter(const CLI::App& command, std::string_view argument) {
    for (std::size_t i = 1; i < argument.size() && !argument.starts_with("--"); ++i) {
        if (argument[i] == shortCriterion.back())
            return i;
        if (wantsValue(command, std::string("-") + argument[i]))
            break;
    }
    return std::string_view::npos;
}

// Where the arguments of the command begin.
std::size_t commandEnd(const CLI::App& app, const std::vector<std::string>& arguments) {
    std::size_t at = 0;
    while (at < arguments.size() && isOption(arguments[at]))
        at += takesNext(app, arguments[at]) ? 2 : 1;
    return at + 1;
}

class WordTaker {
public:
    WordTaker(const CLI::App& command, std::vector<std::string> arguments)
        : command_(command),
          arguments_(std::move(arguments)),
          wantsFile_(command.get_option_no_throw(fileName) != nullptr),
          takesWords_(command.get_option_no_throw(wordName) != nullptr) {}

    void take();

    std::vector<QuickPart> words;
    std::vector<std::string> rest;

private:
    void takeOption();
    void takeCriterion(std::string_view option, std::string_view attached);
    void takeOther();
    void takeWord();
    void addWord(Kind kind, std::string_view text) { words.push_back({kind, std::string(text)}); }

    const CLI::App& command_;
    std::vector<std::string> arguments_;
    bool wantsFile_;
    bool takesWords_; // else all are files
    std::size_t at_ = 0;
};

void WordTaker::takeOption() {
    const std::string& argument = arguments_[at_];
    const std::size_t letter = criterionLetter(command_, argument);
    if (argument == notOption) {
        addWord(Kind::negation, argument);
        ++at_;
    } else if (letter != std::string_view::npos) {
        if (letter > 1)
            rest.push_back(argument.substr(0, letter));
        takeCriterion(shortCriterion, std::string_view(argument).substr(letter + 1));
    } else if (argument == longCriterion) {
        takeCriterion(longCriterion, {});
    } else if (argument.starts_with(longCriterion) && argument[longCriterion.size()] == '=') {
        addWord(Kind::criterion, std::string_view(argument).substr(longCriterion.size() + 1));
        ++at_;
    } else {
        takeOther();
    }
}

// The value stands in the same argument, or is the next. Without any the parser of options says so.
void WordTaker::takeCriterion(std::string_view option, std::string_view attached) {
    ++at_;
    if (!attached.empty())
        addWord(Kind::criterion, attached);
    else if (at_ < arguments_.size())
        addWord(Kind::criterion, arguments_[at_++]);
    else
        rest.emplace_back(option);
}

void WordTaker::takeOther() {
    const std::string& argument = arguments_[at_++];
    rest.push_back(argument);
    if (takesNext(command_, argument) && at_ < arguments_.size())
        rest.push_back(arguments_[at_++]);
}

// An empty one is refused with the options, as everywhere.
void WordTaker::takeWord() {
    const std::string& argument = arguments_[at_++];
    if (argument.empty() || !takesWords_ || std::exchange(wantsFile_, false)) {
        rest.push_back(argument);
    } else if (argument == "(" || argument == ")") {
        addWord(argument == "(" ? Kind::open : Kind::close, argument);
    } else if (argument == "-(" || argument == "!(") {
        addWord(Kind::negation, argument);
        addWord(Kind::open, "(");
    } else {
        addWord(Kind::word, argument);
    }
}

void WordTaker::take() {
    bool optionsEnded = false;
    while (at_ < arguments_.size()) {
        const std::string& argument = arguments_[at_];
        if (!optionsEnded && argument == endOfOptions) {
            optionsEnded = true;
            if (wantsFile_)
                rest.push_back(argument);
            ++at_;
        } else if (!optionsEnded && isOption(argument) && argument != "-(" &&
                   !isNegatedField(argument)) {
            takeOption();
        } else {
            takeWord();
        }
    }
}

} // namespace

void addSearchWords(CLI::App& command) {
    // All these are taken before; what is left is empty.
    command.add_option(wordName, "What to look for, as author:müller; a folder is where to")
        ->type_name("")
        ->expected(-1)
        ->check(notEmpty);
    addCriteria(command);
}

void addCriteria(CLI::App& command) {
    command.add_option("-c,--criterion", "Criterion to match, in the long form; may repeat")
        ->type_name("CRITERION");
    command.add_flag("--not")->description("What the next criterion, word or group does not match");
}

std::vector<QuickPart> takeSearchWords(const CLI::App& app, std::vector<std::string>& arguments) {
    const std::size_t begin = commandEnd(app, arguments);
    if (begin > arguments.size())
        return {};
    const auto commands = app.get_subcommands([&](const CLI::App* command) {
        return command->get_name() == arguments[begin - 1] &&
               command->get_option_no_throw(std::string(longCriterion)) != nullptr;
    });
    if (commands.empty())
        return {};
    const auto middle = arguments.begin() + static_cast<std::ptrdiff_t>(begin);
    WordTaker taker(*commands.front(), {middle, arguments.end()});
    taker.take();
    arguments.erase(middle, arguments.end());
    arguments.insert(arguments.end(), taker.rest.begin(), taker.rest.end());
    return std::move(taker.words);
}

} // namespace ov::cli
