// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "allocation_fixture.h"

#include <cstdlib>
#include <new>

// This is the memory manager itself, so it cannot leave the work to one.
// NOLINTBEGIN(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory,cppcoreguidelines-avoid-non-const-global-variables)

namespace {

thread_local std::size_t allocations = 0;

} // namespace

void* operator new(std::size_t size) {
    ++allocations;
    if (void* memory = std::malloc(size > 0 ? size : 1))
        return memory;
    throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    ++allocations;
    return std::malloc(size > 0 ? size : 1);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

// NOLINTEND(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory,cppcoreguidelines-avoid-non-const-global-variables)

std::size_t ov::tests::allocationCount() noexcept {
    return allocations;
}
