// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "platform/posix/evdev/evdev_names.h"

#include <charconv>
#include <fstream>

namespace ov::platform::evdev {

namespace {

std::string toldOf(const std::string& device, const char* what) {
    std::ifstream file("/sys/class/input/" + device + "/device/" + what);
    std::string line;
    std::getline(file, line);
    return line;
}

std::uint16_t numberOf(const std::string& device, const char* what) {
    constexpr int hexadecimal = 16;
    const std::string text = toldOf(device, what);
    std::uint16_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number, hexadecimal);
    return number;
}

} // namespace

InputKind systemKind(const std::string& device) {
    return {numberOf(device, "id/vendor"), numberOf(device, "id/product")};
}

std::string systemName(const std::string& device, const std::string& otherwise) {
    const std::string name = toldOf(device, "name");
    return name.empty() ? otherwise : name;
}

} // namespace ov::platform::evdev
