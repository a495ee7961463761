#include "tests/failing_platform/allocation_faults.h"

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <new>

#if QXCMS_TEST_FAILS_MALLOC
// What malloc and its siblings are behind the ones below.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* memory);
}
#endif

namespace qxcms::tests {
namespace {

// Far more than any operation under test holds at a time.
constexpr int kMostLiving = 1 << 16;

constinit AllocationFaults* armedFaults = nullptr;
constinit bool watching = false;
constinit int allocationsMade = 0;
constinit void* livingMemory[kMostLiving] = {};
constinit int livingCount = 0;

void* reallyAllocate(std::size_t size) {
#if QXCMS_TEST_FAILS_MALLOC
    return __libc_malloc(size);
#else
    return std::malloc(size);
#endif
}

void* reallyAllocate(std::size_t size, std::size_t alignment) {
#if QXCMS_TEST_FAILS_MALLOC
    return __libc_memalign(alignment, size);
#else
    return std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment);
#endif
}

void reallyRelease(void* memory) {
#if QXCMS_TEST_FAILS_MALLOC
    __libc_free(memory);
#else
    std::free(memory);
#endif
}

bool isRefused() {
    return armedFaults != nullptr && armedFaults->strikes();
}

void* noted(void* memory) {
    if (!watching || memory == nullptr)
        return memory;
    if (livingCount == kMostLiving) {
        std::fputs("too many allocations to watch\n", stderr);
        std::abort();
    }
    ++allocationsMade;
    livingMemory[livingCount++] = memory;
    return memory;
}

// Looks among the latest first, which seldom live long.
void forget(const void* memory) {
    for (int i = livingCount - 1; i >= 0; --i)
        if (livingMemory[i] == memory) {
            livingMemory[i] = livingMemory[--livingCount];
            return;
        }
}

void* allocate(std::size_t size) {
    return isRefused() ? nullptr : noted(reallyAllocate(size == 0 ? 1 : size));
}

void* allocate(std::size_t size, std::align_val_t alignment) {
    return isRefused() ? nullptr
                       : noted(reallyAllocate(size == 0 ? 1 : size, static_cast<std::size_t>(alignment)));
}

template <class... Request>
void* allocateOrThrow(Request... request) {
    void* const memory = allocate(request...);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

// The first exception of a process takes memory that it keeps.
void prepareExceptions() {
    try {
        throw std::bad_alloc();
    } catch (const std::bad_alloc&) {
    }
}

void release(void* memory) {
    forget(memory);
    reallyRelease(memory);
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

AllocationWatch::AllocationWatch() {
    prepareExceptions();
    allocationsMade = 0;
    livingCount = 0;
    watching = true;
}

AllocationWatch::~AllocationWatch() {
    watching = false;
    livingCount = 0;
}

int AllocationWatch::made() const {
    return allocationsMade;
}

int AllocationWatch::living() const {
    return livingCount;
}

AllocationTruce::AllocationTruce() : suspended(armedFaults), watched(watching) {
    armedFaults = nullptr;
    watching = false;
}

AllocationTruce::~AllocationTruce() {
    armedFaults = suspended;
    watching = watched;
}

} // namespace qxcms::tests

using qxcms::tests::allocate;
using qxcms::tests::allocateOrThrow;
using qxcms::tests::release;

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
void* operator new(std::size_t size, std::align_val_t alignment) {
    return allocateOrThrow(size, alignment);
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
    return allocateOrThrow(size, alignment);
}
void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return allocate(size, alignment);
}
void* operator new[](std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return allocate(size, alignment);
}
void operator delete(void* memory, std::align_val_t) noexcept {
    release(memory);
}
void operator delete[](void* memory, std::align_val_t) noexcept {
    release(memory);
}
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
    release(memory);
}
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept {
    release(memory);
}
void operator delete(void* memory, std::align_val_t, const std::nothrow_t&) noexcept {
    release(memory);
}
void operator delete[](void* memory, std::align_val_t, const std::nothrow_t&) noexcept {
    release(memory);
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

#if QXCMS_TEST_FAILS_MALLOC
extern "C" {

void* malloc(std::size_t size) noexcept {
    if (!qxcms::tests::isRefused())
        return qxcms::tests::noted(__libc_malloc(size));
    errno = ENOMEM;
    return nullptr;
}

void* calloc(std::size_t count, std::size_t size) noexcept {
    if (!qxcms::tests::isRefused())
        return qxcms::tests::noted(__libc_calloc(count, size));
    errno = ENOMEM;
    return nullptr;
}

void* realloc(void* memory, std::size_t size) noexcept {
    if (qxcms::tests::isRefused()) {
        errno = ENOMEM;
        return nullptr;
    }
    qxcms::tests::forget(memory);
    return qxcms::tests::noted(__libc_realloc(memory, size));
}

void free(void* memory) noexcept {
    release(memory);
}

} // extern "C"
#endif
