// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "control/control_settings.h"
#include "control/control_view.h"
#include "control/criteria_file.h"
#include "export/print/list_export.h"
#include "plugin/host_interfaces.h"
#include "support/log.h"
#include "widgets/window_interface.h"

#include <QWidget>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace ov {

// The search control that the host places in its main window: criteria, the hits of a search,
// the player. The host drives it through the object that makeControl() gives.
class ctrlOVSearch final : public QWidget, public IEventSink {
    Q_OBJECT

public:
    explicit ctrlOVSearch(QWidget* parent);
    ~ctrlOVSearch() override;

    // The start sequence. A host function that fails counts as one that answers nothing.
    void IFormExtension_Init(IPlugin& plugIn, IHostForm& form);

    // The host lets go. Ends what runs, saves what the user entered, and deletes the control as
    // soon as nothing of it is on the stack any more.
    void letGo();

    void EventSource_ActionEvent(std::int32_t action, std::int32_t second,
                                 std::string_view parameter) override;
    void EventSource_WindowEvent(std::int32_t event, std::int32_t windowId, std::int32_t third,
                                 std::int32_t fourth, IHostWindow& window) override;

    void cmdSearchOptions_Click(int index);
    void cmdSearchKriteriaOptions_Click(int index);

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    // Marks that code of the control is on the stack which lets window messages be handled.
    class Operation;

    void UserControl_Terminate();
    void readFromHost();
    void buildControl(IPlugin& plugIn);
    void connectAll();
    void addShortcuts();
    void retranslate();
    void refresh() {} // hook of the host's "UPDATE": nothing to refresh

    // Runs a user's command; what it throws is logged and shown. A command inside another is not
    // run.
    void command(const char* procedure, const std::function<void()>& run);
    void report(const Error& error, const char* procedure);

    void runSearch();
    void stopSearch();
    void exportResults();
    void exportRows(exporting::print::Command what, bool selectedOnly);
    void chooseColumns();
    void showLog() const;
    void sortResults(int column);
    void copyRows(const std::function<void(const std::function<bool()>&)>& copy);
    void addCriterion();
    void editCriterion();
    void deleteCriterion();
    std::optional<std::string> openEditor(const std::string& criteriaString);
    void saveCriteria();
    void compareChanged();
    void endPlayer() const;

    std::shared_ptr<widgets::WindowInterface> windowInterface_ = widgets::WindowInterface::shared();
    ControlView view_;
    // NOLINTBEGIN(readability-identifier-naming): the host's documentation names these two
    std::shared_ptr<EventSource> m_cEventSource;
    IHostForm* m_icExtendableForm = nullptr;
    // NOLINTEND(readability-identifier-naming)
    IPlugin* plugIn_ = nullptr;
    ControlSettings settings_;
    CriteriaFile criteriaFile_;
    std::string dictationTree_;
    bool initialising_ = false;
    bool terminating_ = false;
    bool built_ = false;
    bool shown_ = false;
    bool shareMoved_ = false; // the user moved the line between the halves
    bool searching_ = false;
    bool stopRequested_ = false; // by Esc or the stop button
    int operations_ = 0;
    std::optional<std::int32_t> hitCount_; // of the last search
    exporting::Searched searched_;         // what it looked for
};

// The control as the host holds it: letting go of it ends the control, wherever it is.
std::shared_ptr<IFormExtension> makeControl(WindowHandle parent);

} // namespace ov
