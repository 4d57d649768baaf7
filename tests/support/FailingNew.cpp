// SPDX-License-Identifier: MIT
#include "tests/support/FailingNew.h"

#include <climits>
#include <cstdlib>
#include <new>

namespace {

bool active = false;
long made = 0; // allocations since the operation began
long failAt = LONG_MAX;
FailingNew::Mode failMode = FailingNew::Once;

bool fails()
{
    if (!active) {
        return false;
    }
    ++made;
    return failMode == FailingNew::Once ? made == failAt : made >= failAt;
}

void* take(std::size_t size) noexcept
{
    return fails() ? nullptr : std::malloc(size == 0 ? 1 : size);
}

} // namespace

bool FailingNew::run(long n, Mode mode, const std::function<void()>& operation)
{
    made = 0;
    failAt = n;
    failMode = mode;
    active = true;
    try {
        operation();
    } catch (...) {
        active = false;
        throw;
    }
    active = false;
    return made >= n;
}

long FailingNew::count(const std::function<void()>& operation)
{
    (void)run(LONG_MAX, Once, operation);
    return made;
}

void* operator new(std::size_t size)
{
    void* memory = take(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void* operator new[](std::size_t size)
{
    return operator new(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return take(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return take(size);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept
{
    std::free(memory);
}
