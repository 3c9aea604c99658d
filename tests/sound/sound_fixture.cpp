// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// The client library of the sound server keeps a few bytes of every connection to the end; the
// leak sanitizer asks here what it shall not report.
// NOLINTNEXTLINE(bugprone-reserved-identifier,misc-use-internal-linkage): the sanitizer's name
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() { // NOLINT(bugprone-reserved-identifier)
    return "leak:libpulse\n";
}
