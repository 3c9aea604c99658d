// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "plugin/host_error.h"
#include "support/log.h"

namespace ov {

// What a host function throws is its failure, not ours: it is logged, and the control goes on
// without an answer.
template <typename Call>
auto trapped(const char* procedure, Call call) -> decltype(call()) {
    try {
        return call();
    } catch (const HostError& error) {
        WriteErrorLog(Error(error.number(), error.description()), procedure);
    } catch (...) {
        WriteErrorLog(Error(0, "the host threw what it may not throw"), procedure);
    }
    return decltype(call())();
}

} // namespace ov
