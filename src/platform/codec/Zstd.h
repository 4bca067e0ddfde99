// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/memory/HeapBlock.h"
#include "platform/memory/SharedObj.h"

#include <cstdint>
#include <memory>
#include <span>

struct ZSTD_CCtx_s;
struct ZSTD_DCtx_s;

/// Most bytes that are packed into one frame, so that a frame can be unpacked into memory held ready.
inline constexpr size_t kZstdPiece = size_t{1} << 17;

/// Packs bytes into Zstandard frames (RFC 8878) of kZstdPiece bytes of content at the fastest usual level.
class CZstdPacker {
public:
    CZstdPacker();
    ~CZstdPacker();
    CZstdPacker(const CZstdPacker&) = delete;
    CZstdPacker& operator=(const CZstdPacker&) = delete;

    /// One frame of at most kZstdPiece bytes written into `room`; returns its size, or 0 when there is too
    /// little room.
    [[nodiscard]] size_t PackPiece(std::span<const uint8_t> bytes, std::span<uint8_t> room);

private:
    std::unique_ptr<ZSTD_CCtx_s, size_t (*)(ZSTD_CCtx_s*)> m_context;
};

/// Unpacks what CZstdPacker has packed. All memory it will ever need is taken when it is made.
class CZstdReader final : public CSharedObj {
public:
    CZstdReader();
    ~CZstdReader() override;

    /// False when memory ran out; it unpacks nothing then.
    [[nodiscard]] bool IsReady() const { return m_context != nullptr && !m_piece.IsEmpty(); }
    /// One frame that holds exactly as many bytes as `bytes` has room for; false otherwise.
    [[nodiscard]] bool UnpackPiece(std::span<const uint8_t> frame, std::span<uint8_t> bytes);

    /// Begins with frames that stand one after another and must stay until the last read.
    void Begin(std::span<const uint8_t> frames);
    /// The next bytes of their content; false when they are damaged or end before.
    [[nodiscard]] bool Read(std::span<uint8_t> bytes);

private:
    [[nodiscard]] bool NextFrame();

    std::unique_ptr<ZSTD_DCtx_s, size_t (*)(ZSTD_DCtx_s*)> m_context;
    CHeapBlock m_piece;
    std::span<const uint8_t> m_frames; ///< not unpacked yet
    std::span<const uint8_t> m_ready;  ///< unpacked and not read yet
};
