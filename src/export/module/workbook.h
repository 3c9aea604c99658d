// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "export/sheet_module.h"

#include <memory>

namespace ov::exporting::loaded {

// See SheetModule::create.
std::unique_ptr<SheetFile> createWorkbook(const SheetSetup& setup);

} // namespace ov::exporting::loaded
