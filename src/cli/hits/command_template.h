// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

// The command of --exec and --exec-batch, in which the path of a hit takes the place of
//
//   {}    the path                     /srv/ward3/a.WAV
//   {/}   its last part                a.WAV
//   {//}  the folder it lies in        /srv/ward3
//   {.}   the path without its ending  /srv/ward3/a
//   {/.}  its last part likewise       a
//
// also inside an argument and several times. Without any, the path is a further argument.

namespace ov::cli {

class CommandTemplate {
public:
    // The program, then its arguments; at least the program.
    explicit CommandTemplate(std::vector<std::string> words);

    const std::vector<std::string>& words() const noexcept { return words_; }

    // The arguments to run with that native path.
    std::vector<std::string> with(const std::string& path) const;
    // With any number of paths: an argument that holds a place stands once for each.
    std::vector<std::string> withAll(std::span<const std::string> paths) const;
    // What that path adds to withAll(), in bytes as platform::roomOfArgument() counts.
    std::size_t roomOf(const std::string& path) const;

    // In withAll() the program has to be one.
    bool namesProgram() const;

private:
    std::vector<std::string> words_;
};

} // namespace ov::cli
