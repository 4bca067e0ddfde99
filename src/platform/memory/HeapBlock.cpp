// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/memory/HeapBlock.h"

#include <atomic>
#include <cstdlib>
#include <utility>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace {

constexpr size_t kAlignment = 64;
constexpr int64_t kNeverFails = -1;

std::atomic<int64_t> g_allocationsLeft{kNeverFails};

bool AllocationMayProceed()
{
    if (g_allocationsLeft.load(std::memory_order_relaxed) == kNeverFails)
        return true;
    int64_t left = g_allocationsLeft.load();
    while (left > 0) {
        if (g_allocationsLeft.compare_exchange_weak(left, left - 1))
            return true;
    }
    return left == kNeverFails;
}

/// Asks for large pages under a large block: far fewer page faults when it is filled, and fewer misses of
/// the address translation when rows of many pictures are read side by side.
void PreferLargePages([[maybe_unused]] void* block, [[maybe_unused]] size_t bytes)
{
#ifdef __linux__
    constexpr uintptr_t kLargePage = uintptr_t{2} << 20;
    const uintptr_t begin = (reinterpret_cast<uintptr_t>(block) + kLargePage - 1) / kLargePage * kLargePage;
    const uintptr_t end = (reinterpret_cast<uintptr_t>(block) + bytes) / kLargePage * kLargePage;
    if (begin < end)
        madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE); // only a hint
#endif
}

} // namespace

CHeapBlock::~CHeapBlock()
{
    std::free(m_allocation);
}

CHeapBlock::CHeapBlock(CHeapBlock&& other) noexcept
    : m_allocation(std::exchange(other.m_allocation, nullptr)), m_data(std::exchange(other.m_data, nullptr)),
      m_size(std::exchange(other.m_size, 0))
{
}

CHeapBlock& CHeapBlock::operator=(CHeapBlock&& other) noexcept
{
    std::swap(m_allocation, other.m_allocation);
    std::swap(m_data, other.m_data);
    std::swap(m_size, other.m_size);
    return *this;
}

CHeapBlock CHeapBlock::Allocate(size_t bytes, size_t alignedOffset, BlockContent content)
{
    CHeapBlock block;
    if (bytes > SIZE_MAX - 2 * kAlignment || !AllocationMayProceed())
        return block;
    // calloc gets large blocks as untouched zero pages: nothing is written until it is used.
    block.m_allocation = content == BlockContent::Zeroes ? std::calloc(bytes + kAlignment, 1)
                                                         : std::malloc(bytes + kAlignment);
    if (block.m_allocation == nullptr)
        return block;
    PreferLargePages(block.m_allocation, bytes);
    const auto address = reinterpret_cast<uintptr_t>(block.m_allocation) + alignedOffset;
    const size_t shift = (kAlignment - address % kAlignment) % kAlignment;
    block.m_data = static_cast<uint8_t*>(block.m_allocation) + shift;
    block.m_size = bytes;
    return block;
}

CAllocationFailure::CAllocationFailure(int64_t after)
{
    g_allocationsLeft = after;
}

CAllocationFailure::~CAllocationFailure()
{
    g_allocationsLeft = kNeverFails;
}
