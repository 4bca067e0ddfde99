// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <cstddef>

/// Memory held back for the moment when there is none left. Pictures ask for theirs in a way that can be
/// refused; the small things around them, lists, texts and commands, cannot be done without half-way through
/// a change. When the system refuses one of those, the reserve is given up piece by piece, so that what was
/// begun comes to its end. Only a large request fails then, which nobody makes half-way. The first reserve
/// of a process is the one that counts; others hold nothing.
class CMemoryReserve {
public:
    static constexpr size_t kPieces = 8;
    static constexpr size_t kPieceBytes = size_t{1} << 20;

    /// Holds the memory back and becomes what operator new calls when it finds none.
    CMemoryReserve();
    ~CMemoryReserve();
    CMemoryReserve(const CMemoryReserve&) = delete;
    CMemoryReserve& operator=(const CMemoryReserve&) = delete;

    /// Holds back again what was given up; false when there is not so much yet.
    bool Refill();

private:
    static void GiveUpPiece();

    std::array<std::atomic<void*>, kPieces> m_pieces{};
};
