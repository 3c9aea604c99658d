// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "host/texts.h"

#include <QString>
#include <QStringList>
#include <exception>

namespace ov::host {

// Something that did not work, kept as data so that it can be told in either language. The file
// concerned is the first argument where there is one.
struct Failure {
    Text text = Text::none;
    QStringList arguments;
};

// What the plug-in threw, as a person reads it. Knows HostError and the standard exceptions.
QString describe(const Texts& texts, const std::exception_ptr& thrown);

// Runs `call`, which enters the plug-in, and lets nothing out. False when it threw;
// `report(std::exception_ptr)` was called then.
template <typename Call, typename Report>
bool guarded(const Call& call, const Report& report) {
    try {
        call();
        return true;
    } catch (...) {
        report(std::current_exception());
        return false;
    }
}

} // namespace ov::host
