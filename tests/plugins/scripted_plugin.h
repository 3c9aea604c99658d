// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/plugin_library.h"

#include <QObject>

Q_DECLARE_INTERFACE(ov::IPlugInLibrary, OV_PLUGIN_LIBRARY_IID)

// A plug-in that runs the steps named in the variable OV_TEST_STEPS, parted by commas, when its
// control is initialised, and prints what it sees of the host. OV_TEST_IID is the interface that
// its file claims to have.
class ScriptedLibrary final : public QObject, public ov::IPlugInLibrary {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID OV_TEST_IID FILE "scripted_plugin.json")
    Q_INTERFACES(ov::IPlugInLibrary)

public:
    std::shared_ptr<ov::IPlugin> createPlugIn(std::string_view progId) override;
    std::shared_ptr<ov::IFormExtension> createControl(std::string_view progId,
                                                      ov::WindowHandle parent) override;
    std::vector<ov::DictationFact> describeDictation(std::string_view path) const override;
    std::vector<std::string> recentLogLines() const override;
};
