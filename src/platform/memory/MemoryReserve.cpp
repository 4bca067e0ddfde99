// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/memory/MemoryReserve.h"

#include "platform/memory/HeapBlock.h"

#include <new>

namespace {

/// What operator new calls gets no argument.
std::atomic<CMemoryReserve*> g_reserve = nullptr;

} // namespace

CMemoryReserve::CMemoryReserve()
{
    CMemoryReserve* none = nullptr;
    if (!g_reserve.compare_exchange_strong(none, this))
        return;
    Refill();
    std::set_new_handler(GiveUpPiece);
}

CMemoryReserve::~CMemoryReserve()
{
    if (g_reserve != this)
        return;
    std::set_new_handler(nullptr);
    g_reserve = nullptr;
    for (std::atomic<void*>& piece : m_pieces)
        ::operator delete(piece.exchange(nullptr));
}

bool CMemoryReserve::Refill()
{
    if (g_reserve != this)
        return true;
    for (std::atomic<void*>& piece : m_pieces) {
        if (piece != nullptr)
            continue;
        // Not from the reserve itself.
        const std::new_handler handler = std::set_new_handler(nullptr);
        void* const memory = ::operator new(kPieceBytes, std::nothrow);
        std::set_new_handler(handler);
        if (memory == nullptr)
            return false;
        ::operator delete(piece.exchange(memory));
    }
    return true;
}

void CMemoryReserve::GiveUpPiece()
{
    if (DropSpareBlock())
        return;
    CMemoryReserve* const reserve = g_reserve;
    if (reserve != nullptr) {
        for (std::atomic<void*>& piece : reserve->m_pieces) {
            if (void* const memory = piece.exchange(nullptr)) {
                ::operator delete(memory);
                return;
            }
        }
    }
    throw std::bad_alloc();
}
