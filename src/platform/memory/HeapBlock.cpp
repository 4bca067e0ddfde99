// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/memory/HeapBlock.h"

#include <atomic>
#include <cstdlib>
#include <mutex>
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

constexpr size_t kLargePage = size_t{2} << 20;
constexpr size_t kLargeBlock = 4 * kLargePage;
constexpr size_t kMostKept = size_t{256} << 20;

/// A block of less. The pages of one that will be written as a whole are asked for in one call, where the
/// system can do that, instead of one by one when they are first touched.
void* AllocateSmall(size_t bytes, BlockContent content)
{
    if (content == BlockContent::Zeroes)
        return std::calloc(bytes, 1);
    void* const block = std::malloc(bytes);
#if defined(__linux__) && defined(MADV_POPULATE_WRITE)
    constexpr size_t kPage = 4096;
    constexpr size_t kWorthACall = 64 * kPage;
    const uintptr_t begin = (reinterpret_cast<uintptr_t>(block) + kPage - 1) / kPage * kPage;
    const uintptr_t end = (reinterpret_cast<uintptr_t>(block) + bytes) / kPage * kPage;
    if (block != nullptr && bytes >= kWorthACall)
        madvise(reinterpret_cast<void*>(begin), end - begin, MADV_POPULATE_WRITE); // only a hint
#endif
    return block;
}

/// A large block on large pages where the system has them: far fewer page faults when it is filled, and
/// fewer misses of the address translation when rows of many pictures are read side by side.
void* AllocateLarge(size_t bytes, BlockContent content)
{
    void* block =
        content == BlockContent::Zeroes ? std::calloc(bytes, 1) : std::aligned_alloc(kLargePage, bytes);
#ifdef __linux__
    const uintptr_t begin = (reinterpret_cast<uintptr_t>(block) + kLargePage - 1) / kLargePage * kLargePage;
    const uintptr_t end = (reinterpret_cast<uintptr_t>(block) + bytes) / kLargePage * kLargePage;
    if (block != nullptr && begin < end)
        madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE); // only a hint
#endif
    return block;
}

/// Lets the system take the pages of a block when it runs short of them, with what they hold.
void Offer(void* block, size_t bytes)
{
#if defined(__linux__) && defined(MADV_FREE)
    const uintptr_t begin = (reinterpret_cast<uintptr_t>(block) + kLargePage - 1) / kLargePage * kLargePage;
    const uintptr_t end = (reinterpret_cast<uintptr_t>(block) + bytes) / kLargePage * kLargePage;
    if (begin < end)
        madvise(reinterpret_cast<void*>(begin), end - begin, MADV_FREE); // only a hint
#endif
}

/// Keeps the large block that was freed last for the next of about its size: the system clears every page
/// that it hands out, which takes as long as many an operation on the picture that comes there.
class CSpareBlock {
public:
    /// The kept block when it is large enough and not much larger, else none; gives it back to the system
    /// then, before another large one comes to stand beside it. `bytes` becomes its true size.
    void* Take(size_t& bytes, BlockContent content)
    {
        const std::lock_guard lock(m_mutex);
        void* const block = std::exchange(m_block, nullptr);
        if (content == BlockContent::Undefined && bytes <= m_bytes && m_bytes <= bytes + bytes / 4) {
            bytes = m_bytes;
            return block;
        }
        std::free(block);
        return nullptr;
    }
    void Keep(void* block, size_t bytes)
    {
        Offer(block, bytes);
        const std::lock_guard lock(m_mutex);
        std::free(std::exchange(m_block, block));
        m_bytes = bytes;
    }

    bool Drop()
    {
        const std::lock_guard lock(m_mutex);
        const bool isKept = m_block != nullptr;
        std::free(std::exchange(m_block, nullptr));
        return isKept;
    }

private:
    std::mutex m_mutex;
    void* m_block = nullptr;
    size_t m_bytes = 0;
};

CSpareBlock g_spare;

} // namespace

CHeapBlock::~CHeapBlock()
{
    if (m_allocated >= kLargeBlock && m_allocated <= kMostKept)
        g_spare.Keep(m_allocation, m_allocated);
    else
        std::free(m_allocation);
}

CHeapBlock::CHeapBlock(CHeapBlock&& other) noexcept
    : m_keeper(std::move(other.m_keeper)), m_allocation(std::exchange(other.m_allocation, nullptr)),
      m_allocated(std::exchange(other.m_allocated, 0)), m_data(std::exchange(other.m_data, nullptr)),
      m_size(std::exchange(other.m_size, 0))
{
}

CHeapBlock& CHeapBlock::operator=(CHeapBlock&& other) noexcept
{
    std::swap(m_keeper, other.m_keeper);
    std::swap(m_allocation, other.m_allocation);
    std::swap(m_allocated, other.m_allocated);
    std::swap(m_data, other.m_data);
    std::swap(m_size, other.m_size);
    return *this;
}

CHeapBlock CHeapBlock::Allocate(size_t bytes, size_t alignedOffset, BlockContent content)
{
    CHeapBlock block;
    if (bytes > SIZE_MAX - 2 * kLargePage || !AllocationMayProceed())
        return block;
    size_t wanted = bytes + kAlignment;
    if (wanted < kLargeBlock) {
        block.m_allocation = AllocateSmall(wanted, content);
    } else {
        wanted = (wanted + kLargePage - 1) / kLargePage * kLargePage;
        block.m_allocation = g_spare.Take(wanted, content);
        if (block.m_allocation == nullptr)
            block.m_allocation = AllocateLarge(wanted, content);
    }
    if (block.m_allocation == nullptr)
        return DropSpareBlock() ? Allocate(bytes, alignedOffset, content) : CHeapBlock();
    block.m_allocated = wanted;
    const auto address = reinterpret_cast<uintptr_t>(block.m_allocation) + alignedOffset;
    const size_t shift = (kAlignment - address % kAlignment) % kAlignment;
    block.m_data = static_cast<uint8_t*>(block.m_allocation) + shift;
    block.m_size = bytes;
    return block;
}

CHeapBlock CHeapBlock::Share()
{
    if (!m_keeper && !IsEmpty()) {
        m_keeper = std::make_shared<CHeapBlock>();
        std::swap(m_keeper->m_allocation, m_allocation);
        std::swap(m_keeper->m_allocated, m_allocated);
    }
    CHeapBlock other;
    other.m_keeper = m_keeper;
    other.m_data = m_data;
    other.m_size = m_size;
    return other;
}

bool DropSpareBlock()
{
    return g_spare.Drop();
}

CAllocationFailure::CAllocationFailure(int64_t after)
{
    g_allocationsLeft = after;
}

CAllocationFailure::~CAllocationFailure()
{
    g_allocationsLeft = kNeverFails;
}
