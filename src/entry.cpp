// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// The entry of libOVSearch: what a host finds when it has loaded the file.

#include "control/ctrlOVSearch.h"
#include "dictation/dictation_facts.h"
#include "plugin/Connector.h"
#include "plugin/plugin_library.h"
#include "support/log.h"

#include <QObject>

Q_DECLARE_INTERFACE(ov::IPlugInLibrary, OV_PLUGIN_LIBRARY_IID)

namespace ov {

class PlugInLibrary final : public QObject, public IPlugInLibrary {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID OV_PLUGIN_LIBRARY_IID FILE "entry.json")
    Q_INTERFACES(ov::IPlugInLibrary)

public:
    std::shared_ptr<IPlugin> createPlugIn(std::string_view progId) override {
        return progId == "OVSearch.Connector" ? std::make_shared<Connector>() : nullptr;
    }
    std::shared_ptr<IFormExtension> createControl(std::string_view progId,
                                                  WindowHandle parent) override {
        return progId == "OVSearch.ctrlOVSearch" ? makeControl(parent) : nullptr;
    }
    std::vector<DictationFact> describeDictation(std::string_view path) const override {
        return modDictation::describeDictation(path);
    }
    std::vector<std::string> recentLogLines() const override { return ov::recentLogLines(); }
};

} // namespace ov

#include "entry.moc"
