#include "tests/failing_platform/allocation_faults.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace qxcms::tests {
namespace {

AllocationFaults* armedFaults = nullptr;

void* allocate(std::size_t size) {
    if (armedFaults != nullptr && armedFaults->strikes())
        return nullptr;
    return std::malloc(size == 0 ? 1 : size);
}

void* allocateOrThrow(std::size_t size) {
    void* const memory = allocate(size);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

} // namespace

void AllocationFaults::arm() {
    armedFaults = this;
}

void AllocationFaults::disarm() {
    if (armedFaults == this)
        armedFaults = nullptr;
}

bool AllocationFaults::strikes() {
    if (remaining > 0) {
        --remaining;
        return false;
    }
    if (failed && failsOnce)
        return false;
    failed = true;
    return true;
}

AllocationTruce::AllocationTruce() : suspended(armedFaults) {
    armedFaults = nullptr;
}

AllocationTruce::~AllocationTruce() {
    armedFaults = suspended;
}

} // namespace qxcms::tests

void* operator new(std::size_t size) {
    return qxcms::tests::allocateOrThrow(size);
}
void* operator new[](std::size_t size) {
    return qxcms::tests::allocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return qxcms::tests::allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return qxcms::tests::allocate(size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}
