// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/device/wave_errors.h"

#include <algorithm>
#include <array>

namespace ov::sound {

namespace {

struct ErrorText {
    std::uint32_t code;
    std::string_view text;
};

// As programs know them. Sorted by number.
constexpr std::array<ErrorText, 74> errorTexts{
    {{257, "Invalid MCI device ID. Use the ID returned when opening the MCI device."},
     {259, "The driver cannot recognize the specified command parameter."},
     {261, "The driver cannot recognize the specified command."},
     {262, "There is a problem with your media device. Make sure it is working correctly or "
           "contact the device manufacturer."},
     {263, "The specified device is not open or is not recognized by MCI."},
     {264, "Not enough memory available for this task. Quit one or more applications to increase "
           "available memory, and then try again."},
     {265,
      "The device name is already being used as an alias by this application. Use a unique alias."},
     {266, "There is an undetectable problem in loading the specified device driver."},
     {267, "No command was specified."},
     {268, "The output string was too large to fit in the return buffer. Increase the size of the "
           "buffer."},
     {269, "The specified command requires a character-string parameter. Please provide one."},
     {270, "The specified integer is invalid for this command."},
     {271, "The device driver returned an invalid return type. Check with the device manufacturer "
           "about obtaining a new driver."},
     {272, "There is a problem with the device driver. Check with the device manufacturer about "
           "obtaining a new driver."},
     {273, "The specified command requires a parameter. Please supply one."},
     {274, "The MCI device you are using does not support the specified command."},
     {275, "Cannot find the specified file. Make sure the path and filename are correct."},
     {276, "The device driver is not ready."},
     {277, "A problem occurred in initializing MCI. Try restarting Windows."},
     {278,
      "There is a problem with the device driver. The driver has closed. Cannot access error."},
     {279, "Cannot use 'all' as the device name with the specified command."},
     {280, "Errors occurred in more than one device. Specify each command and device separately to "
           "determine which devices caused the error."},
     {281, "Cannot determine the device type from the given filename extension."},
     {282, "The specified parameter is out of range for the specified command."},
     {284, "The specified parameters cannot be used together."},
     {286, "Cannot save the specified file. Make sure you have enough disk space or are still "
           "connected to the network."},
     {287, "Cannot find the specified device. Make sure it is installed and that the device name "
           "is spelled correctly."},
     {288, "The specified device is now being closed. Wait a few seconds, and then try again."},
     {289, "The specified alias is already being used in this application. Use a unique alias."},
     {290, "The specified parameter is invalid for this command."},
     {291, "The device driver is already in use. To share it, use the 'shareable' parameter with "
           "each 'open' command."},
     {292,
      "The specified command requires an alias, file, driver, or device name. Please supply one."},
     {293, "The specified value for the time format is invalid. Refer to the MCI documentation for "
           "valid formats."},
     {294,
      "A closing double-quotation mark is missing from the parameter value. Please supply one."},
     {295, "A parameter or value was specified twice. Only specify it once."},
     {296, "The specified file cannot be played on the specified MCI device. The file may be "
           "corrupt, or not in the correct format."},
     {297, "A null parameter block was passed to MCI."},
     {298, "Cannot save an unnamed file. Supply a filename."},
     {299, "You must specify an alias when using the 'new' parameter."},
     {300, "Cannot use the 'notify' flag with auto-opened devices."},
     {301, "Cannot use a filename with the specified device."},
     {302, "Cannot carry out the commands in the order specified. Correct the command sequence, "
           "and then try again."},
     {303, "Cannot carry out the specified command on an auto-opened device. Wait until the device "
           "is closed, and then try again."},
     {304, "The filename is invalid. Make sure the filename is not longer than 8 characters, "
           "followed by a period and an extension."},
     {305, "Cannot specify extra characters after a string enclosed in quotation marks."},
     {306, "The specified device is not installed on the system. Use the Drivers option in Control "
           "Panel to install the device."},
     {307, "Cannot access the specified file or MCI device. Try changing directories or restarting "
           "your computer."},
     {308, "Cannot access the specified file or MCI device because the application cannot change "
           "directories."},
     {309,
      "Cannot access specified file or MCI device because the application cannot change drives."},
     {310, "Specify a device or driver name that is less than 79 characters."},
     {311, "Specify a device or driver name that is less than 69 characters."},
     {312, "The specified command requires an integer parameter. Please provide one."},
     {320, "All wave devices that can play files in the current format are in use. Wait until a "
           "wave device is free, and then try again."},
     {321, "Cannot set the current wave device for play back because it is in use. Wait until the "
           "device is free, and then try again."},
     {322, "All wave devices that can record files in the current format are in use. Wait until a "
           "wave device is free, and then try again."},
     {323, "Cannot set the current wave device for recording because it is in use. Wait until the "
           "device is free, and then try again."},
     {324, "Any compatible waveform playback device may be used."},
     {325, "Any compatible waveform recording device may be used."},
     {326, "No wave device that can play files in the current format is installed. Use the Drivers "
           "option to install the wave device."},
     {327, "The device you are trying to play to cannot recognize the current file format."},
     {328, "No wave device that can record files in the current format is installed. Use the "
           "Drivers option to install the wave device."},
     {329, "The device you are trying to record from cannot recognize the current file format."},
     {336, "The time formats of the \"song pointer\" and SMPTE are mutually exclusive. You can't "
           "use them together."},
     {337, "The specified MIDI port is already in use. Wait until it is free, and then try again."},
     {338, "The specified MIDI device is not installed on the system. Use the Drivers option from "
           "the Control Panel to install a MIDI device."},
     {339,
      "The current MIDI Mapper setup refers to a MIDI device that is not installed on the system."},
     {340, "An error occurred with the specified port."},
     {341, "All multimedia timers are being used by other applications. Quit one of these "
           "applications, and then try again."},
     {342, "The system doesn't have a current MIDI port specified."},
     {343, "The system has no installed MIDI devices. Use the Drivers option from the Control "
           "Panel to install a MIDI driver."},
     {346, "There is no display window."},
     {347, "Could not create or use window."},
     {348, "Cannot read the specified file. Make sure the file is still present, or check your "
           "disk or network connection."},
     {349, "Cannot write to the specified file. Make sure you have enough disk space or are still "
           "connected to the network."}}};

} // namespace

std::string_view mediaErrorText(std::uint32_t code) noexcept {
    const auto* found = std::lower_bound(
        errorTexts.begin(), errorTexts.end(), code,
        [](const ErrorText& entry, std::uint32_t number) { return entry.code < number; });
    return found != errorTexts.end() && found->code == code ? found->text : std::string_view();
}

} // namespace ov::sound
