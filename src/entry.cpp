// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "entry.h"

#include "control/ctrlOVSearch.h"
#include "dictation/dictation_facts.h"
#include "plugin/Connector.h"
#include "support/log.h"

namespace ov {

std::shared_ptr<IPlugin> PlugInLibrary::createPlugIn(std::string_view progId) {
    return progId == "OVSearch.Connector" ? std::make_shared<Connector>() : nullptr;
}

std::shared_ptr<IFormExtension> PlugInLibrary::createControl(std::string_view progId,
                                                             WindowHandle parent) {
    return progId == "OVSearch.ctrlOVSearch" ? makeControl(parent) : nullptr;
}

std::vector<DictationFact> PlugInLibrary::describeDictation(std::string_view path) const {
    return modDictation::describeDictation(path);
}

std::vector<std::string> PlugInLibrary::recentLogLines() const {
    return ov::recentLogLines();
}

} // namespace ov
