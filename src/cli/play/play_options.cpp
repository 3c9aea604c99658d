// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/play/play_options.h"

#include "cli/options/search_options.h"
#include "cli/options/search_words.h"
#include "playback/play_speeds.h"

namespace ov::cli {

namespace {

constexpr const char* keysHelp =
    "Keys: Space pauses, Left and Right go five seconds, a plays the last five again, s stops at\n"
    "the beginning, n and p are the next and the previous file, + and - the speed, l marks what\n"
    "is played again and again, g goes to a time that is typed, t prints a time stamp, q ends;\n"
    "Ctrl-L, Ctrl-J and Ctrl-T do what l, g and t do.\n"
    "TIMEs are 83, 1:23 or 0:01:23; -30 counts from the end, and --to +30 from --from.\n"
    "Criteria are those of find: what they find in the store is played after the FILEs.\n"
    "Exit codes: 0 played, 1 nothing found, 2 wrong usage, 3 a file cannot be played or there is\n"
    "no such output, 130 interrupted.";

void addTime(CLI::App& command, const std::string& name, std::optional<TypedTime>& time,
             const std::string& help) {
    command
        .add_option_function<std::string>(
            name, [&time](const std::string& text) { time = readTypedTime(text); }, help)
        ->type_name("TIME")
        ->check({[](const std::string& text) {
                     return readTypedTime(text) ? std::string() : notATime(text);
                 },
                 ""});
}

} // namespace

CLI::App* addPlay(CLI::App& app, PlayOptions& options) {
    CLI::App* command = app.add_subcommand("play", "Play dictations");
    command->footer(keysHelp);
    command->add_option("FILE", options.files, "The sound files")->type_name("")->check(notEmpty);
    addCriteria(*command);
    addSearchScope(*command, options.search, "Folder to search for criteria; else as set");
    addCriteriaFile(*command, options.search.criteriaFile, "Also the criteria of this file");
    command->add_option("--speed", options.list.speed, "Percent of the recorded speed")
        ->type_name("N")
        ->check(inRange(playSpeeds.front(), playSpeeds.back()))
        ->capture_default_str();
    sound::SoundShape& shape = options.list.shape;
    command->add_option("--boost", shape.boost, "Percent of the recorded loudness")
        ->type_name("N")
        ->check(inRange(sound::SoundShape::usualBoost, sound::SoundShape::largestBoost))
        ->capture_default_str();
    command->add_flag("--even-out", shape.evensOut, "Make all voices as loud as each other");
    command->add_flag("--cut-rumble", shape.cutsRumble, "Take off what lies below voices");
    command->add_flag("--skip-silence", shape.skipsSilence, "Shorten long pauses");
    addTime(*command, "--from", options.list.span.from, "Where to begin in each file");
    addTime(*command, "--to", options.list.span.to, "Where to end");
    command->add_flag("--loop", options.list.loops, "Begin again after the last one");
    command->add_option("--device", options.device, "Output by name, a part of it or number")
        ->type_name("DEVICE")
        ->check(notEmpty);
    return command;
}

CLI::App* addDevices(CLI::App& app, DeviceFormat& format) {
    CLI::App* command = app.add_subcommand("devices", "List the sound outputs");
    addChoice<DeviceFormat>(*command, "--format", format,
                            {{"table", DeviceFormat::table},
                             {"json", DeviceFormat::json},
                             {"jsonl", DeviceFormat::jsonl}},
                            "table, json or jsonl")
        ->type_name("FORMAT");
    return command;
}

} // namespace ov::cli
