// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// Linked into a test program, lets each test leave behind what it ran: in a folder of its name
// below that of OV_COVERAGE, those programs included that it starts.

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

extern "C" void __gcov_dump();
extern "C" void __gcov_reset();

namespace {

class EachTest final : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo& test) override {
        leave("outside of tests");
        turnTo(std::string(test.test_suite_name()) + "." + test.name());
    }
    void OnTestEnd(const testing::TestInfo& /*test*/) override { leave("outside of tests"); }

    static void leave(const char* next) {
        __gcov_dump();
        __gcov_reset();
        turnTo(next);
    }
    static void turnTo(std::string name) {
        for (char& sign : name)
            if (sign == '/')
                sign = '%';
        if (const char* folder = std::getenv("OV_COVERAGE"))
            setenv("GCOV_PREFIX", (std::string(folder) + '/' + name).c_str(), 1);
    }
};

const bool isListening = [] {
    testing::UnitTest::GetInstance()->listeners().Append(new EachTest);
    return true;
}();

} // namespace
