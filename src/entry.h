// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "plugin/plugin_library.h"

#include <QObject>

Q_DECLARE_INTERFACE(ov::IPlugInLibrary, OV_PLUGIN_LIBRARY_IID)

namespace ov {

// The entry of libOVSearch: what a host finds when it has loaded the file.
class PlugInLibrary final : public QObject, public IPlugInLibrary {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID OV_PLUGIN_LIBRARY_IID FILE "entry.json")
    Q_INTERFACES(ov::IPlugInLibrary)

public:
    std::shared_ptr<IPlugin> createPlugIn(std::string_view progId) override;
    std::shared_ptr<IFormExtension> createControl(std::string_view progId,
                                                  WindowHandle parent) override;
    std::vector<DictationFact> describeDictation(std::string_view path) const override;
    std::vector<std::string> recentLogLines() const override;
};

} // namespace ov
