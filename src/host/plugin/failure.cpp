// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "host/plugin/failure.h"

#include "plugin/host_error.h"

namespace ov::host {

QString describe(const Texts& texts, const std::exception_ptr& thrown) {
    try {
        std::rethrow_exception(thrown);
    } catch (const HostError& error) {
        return texts(Text::errorNumber, {QString::fromStdString(error.description()),
                                         QString::number(error.number())});
    } catch (const std::exception& error) {
        return QString::fromUtf8(error.what());
    } catch (...) {
        return QStringLiteral("?");
    }
}

} // namespace ov::host
