// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// Linked into a test program, lets each test leave behind what it ran: in a folder of its name
// below that of OV_COVERAGE, those programs included that it starts.

#include <gtest/gtest.h>

#include <cstdlib>
#include <dlfcn.h>
#include <link.h>
#include <string>
#include <vector>

extern "C" {
void __gcov_dump();
void __gcov_reset();
[[noreturn]] void __real__exit(int status);

// Where a test forks, its child ends so and is to leave its counts too.
[[noreturn]] void __wrap__exit(int status) {
    __gcov_dump();
    __real__exit(status);
}
}

namespace {

void leaveCountsOfModules() {
    std::vector<std::string> loaded;
    dl_iterate_phdr(
        [](dl_phdr_info* info, std::size_t, void* names) {
            static_cast<std::vector<std::string>*>(names)->emplace_back(info->dlpi_name);
            return 0;
        },
        &loaded);
    for (const std::string& name : loaded) {
        void* const module = name.empty() ? nullptr : dlopen(name.c_str(), RTLD_LAZY | RTLD_NOLOAD);
        if (module == nullptr)
            continue;
        if (void* const leave = dlsym(module, "leaveCounts"))
            reinterpret_cast<void (*)()>(leave)();
        dlclose(module);
    }
}

class EachTest final : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo& test) override {
        leave("outside of tests");
        turnTo(std::string(test.test_suite_name()) + "." + test.name());
    }
    void OnTestEnd(const testing::TestInfo& /*test*/) override { leave("outside of tests"); }

    static void leave(const char* next) {
        __gcov_dump();
        __gcov_reset();
        leaveCountsOfModules();
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
