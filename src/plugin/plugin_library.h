// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "plugin/host_interfaces.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// What the file of the plug-in, libOVSearch, offers to the host that loads it.
//
// The file is a Qt 6 plug-in: the host loads it with QPluginLoader and casts its instance to
// IPlugInLibrary, which both sides declare under OV_PLUGIN_LIBRARY_IID:
//
//   Q_DECLARE_INTERFACE(ov::IPlugInLibrary, OV_PLUGIN_LIBRARY_IID)
//
// Both sides are built with the same compiler family and the same Qt major version. Before it
// loads the file, a host compares the "IID" of its meta data with OV_PLUGIN_LIBRARY_IID, and
// "interfaceVersion" in its "MetaData" object with the two numbers below; it refuses the file
// with a message that names both.
//
// The host lets go of every object that came from the file before it unloads it, and unloads it
// only when its event loop has ended: a control that was let go of in the middle of a search still
// has to come back from it.

// Raised with the major number in it when a change breaks hosts that are already built.
#define OV_PLUGIN_LIBRARY_IID "OVSearch.IPlugInLibrary/1"

namespace ov {

// Raised with every change of these headers. A host works with every plug-in from the oldest
// version that still has all that the host calls, up to the one it was built with.
constexpr std::int32_t pluginInterfaceVersion = 1;
constexpr std::int32_t oldestPluginInterfaceVersion = 1;

// One thing that is known of a dictation, in the user's language.
struct DictationFact {
    std::string caption; // "Author"
    std::string value;   // never empty
};

class IPlugInLibrary {
public:
    virtual ~IPlugInLibrary() = default;

    // The plug-in object of that ProgID ("OVSearch.Connector"); nothing for any other.
    virtual std::shared_ptr<IPlugin> createPlugIn(std::string_view progId) = 0;

    // The control of that ProgID ("OVSearch.ctrlOVSearch") as a child of the window `parent`;
    // nothing for any other ProgID. The host then calls its IFormExtension_Init. Letting go of
    // the control ends it, wherever it is, also inside a call that it makes to the host: a search
    // that runs is stopped, the user's criteria are saved, its windows are closed, and from then
    // on it calls nobody. Destroying `parent` ends it in the same way, at any moment.
    virtual std::shared_ptr<IFormExtension> createControl(std::string_view progId,
                                                          WindowHandle parent) = 0;

    // For the host's log view: what the name of the dictation in the file `path` tells, in the
    // order of the result list's columns, and the lines this thread logged last, oldest first.
    virtual std::vector<DictationFact> describeDictation(std::string_view path) const = 0;
    virtual std::vector<std::string> recentLogLines() const = 0;
};

} // namespace ov
