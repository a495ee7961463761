#include "fuzz/memory_meter.h"

#include <atomic>
#include <cstdlib>
#include <new>

#if defined(__SANITIZE_ADDRESS__)
#define QXCMS_FUZZ_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QXCMS_FUZZ_SANITIZED 1
#endif
#endif

#if defined(QXCMS_FUZZ_SANITIZED)
// Part of the sanitizer's run-time interface, whose header comes with clang alone.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*onAllocation)(const volatile void*,
                                                                              std::size_t),
                                                         void (*onRelease)(const volatile void*));
extern "C" std::size_t __sanitizer_get_allocated_size(const volatile void* memory);
#else
#include <malloc.h>
#endif

namespace {

// Atomic because a fuzzer watches its own memory in a thread beside.
std::atomic<std::ptrdiff_t> inUse{0};
std::atomic<std::ptrdiff_t> mostInUse{0};

void count(std::size_t size) {
    const std::ptrdiff_t now = inUse.fetch_add(static_cast<std::ptrdiff_t>(size), std::memory_order_relaxed) +
                               static_cast<std::ptrdiff_t>(size);
    if (now > mostInUse.load(std::memory_order_relaxed))
        mostInUse.store(now, std::memory_order_relaxed);
}

void discount(std::size_t size) {
    inUse.fetch_sub(static_cast<std::ptrdiff_t>(size), std::memory_order_relaxed);
}

} // namespace

#if defined(QXCMS_FUZZ_SANITIZED)

// The sanitizer's own functions see more when they stay in place.
namespace {

void onAllocation(const volatile void*, std::size_t size) {
    count(size);
}

void onRelease(const volatile void* memory) {
    if (memory != nullptr)
        discount(__sanitizer_get_allocated_size(memory));
}

void startCounting() {
    static const int isInstalled = __sanitizer_install_malloc_and_free_hooks(onAllocation, onRelease);
    if (isInstalled == 0)
        std::abort();
}

} // namespace

#else

namespace {

void startCounting() {}

void* allocate(std::size_t size) {
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (memory != nullptr)
        count(malloc_usable_size(memory));
    return memory;
}

void* allocateOrThrow(std::size_t size) {
    void* const memory = allocate(size);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

void release(void* memory) {
    if (memory != nullptr)
        discount(malloc_usable_size(memory));
    std::free(memory);
}

} // namespace

void* operator new(std::size_t size) {
    return allocateOrThrow(size);
}
void* operator new[](std::size_t size) {
    return allocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size);
}
void operator delete(void* memory) noexcept {
    release(memory);
}
void operator delete[](void* memory) noexcept {
    release(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    release(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    release(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
    release(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
    release(memory);
}

#endif

namespace qxcms::fuzz {

MemoryMeter::MemoryMeter() {
    startCounting();
    inUseAtFirst = inUse.load(std::memory_order_relaxed);
    mostInUse.store(inUseAtFirst, std::memory_order_relaxed);
}

std::size_t MemoryMeter::peak() const {
    return static_cast<std::size_t>(mostInUse.load(std::memory_order_relaxed) - inUseAtFirst);
}

} // namespace qxcms::fuzz
