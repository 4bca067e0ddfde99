// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

/// What a new block holds.
enum class BlockContent {
    Zeroes,
    Undefined, ///< for who writes every byte: filling first would be another pass over the memory
};

/// One heap block that its holder owns alone, unless it shares it. Asking for memory can fail: the result is
/// then empty, and nothing is thrown. One freed block of up to 256 MiB is kept for the next one; the system
/// may take its pages when it runs short of them.
class CHeapBlock {
public:
    CHeapBlock() = default;
    ~CHeapBlock();
    CHeapBlock(CHeapBlock&& other) noexcept;
    CHeapBlock& operator=(CHeapBlock&& other) noexcept;
    CHeapBlock(const CHeapBlock&) = delete;
    CHeapBlock& operator=(const CHeapBlock&) = delete;

    /// A block of `bytes` bytes whose byte `alignedOffset` stands on a 64-byte boundary, so that
    /// vector loads of what begins there do not cross cache lines. Empty when memory runs out.
    [[nodiscard]] static CHeapBlock Allocate(size_t bytes, size_t alignedOffset = 0,
                                             BlockContent content = BlockContent::Zeroes);
    /// Another holder of the same bytes, which are freed with the last one. Whoever changes them changes them
    /// for all.
    [[nodiscard]] CHeapBlock Share();
    /// Whether there is another holder.
    [[nodiscard]] bool IsShared() const { return m_keeper.use_count() > 1; }

    [[nodiscard]] bool IsEmpty() const { return m_data == nullptr; }
    [[nodiscard]] uint8_t* Data() { return m_data; }
    [[nodiscard]] const uint8_t* Data() const { return m_data; }
    [[nodiscard]] size_t Size() const { return m_size; }
    [[nodiscard]] std::span<uint8_t> Bytes() { return {m_data, m_size}; }
    [[nodiscard]] std::span<const uint8_t> Bytes() const { return {m_data, m_size}; }

private:
    std::shared_ptr<CHeapBlock> m_keeper; ///< has the allocation once it has been shared
    void* m_allocation = nullptr;
    size_t m_allocated = 0;
    uint8_t* m_data = nullptr;
    size_t m_size = 0;
};

/// Gives the kept block back to the system; false when there is none.
bool DropSpareBlock();

/// Lets tests see what happens when memory runs out: the allocation number `after` from now (0 is the
/// next) and every later one fails until the guard goes away.
class CAllocationFailure {
public:
    explicit CAllocationFailure(int64_t after);
    ~CAllocationFailure();
    CAllocationFailure(const CAllocationFailure&) = delete;
    CAllocationFailure& operator=(const CAllocationFailure&) = delete;
};
