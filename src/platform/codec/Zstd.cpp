// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/Zstd.h"

#include <zstd.h>

#include <algorithm>
#include <cstring>

namespace {

constexpr int kLevel = 1;

} // namespace

CZstdPacker::CZstdPacker() : m_context(ZSTD_createCCtx(), ZSTD_freeCCtx) {}

CZstdPacker::~CZstdPacker() = default;

size_t CZstdPacker::PackPiece(std::span<const uint8_t> bytes, std::span<uint8_t> room)
{
    if (m_context == nullptr)
        return 0;
    const size_t size =
        ZSTD_compressCCtx(m_context.get(), room.data(), room.size(), bytes.data(), bytes.size(), kLevel);
    return ZSTD_isError(size) != 0 ? 0 : size;
}

CZstdReader::CZstdReader()
    : m_context(ZSTD_createDCtx(), ZSTD_freeDCtx),
      m_piece(CHeapBlock::Allocate(kZstdPiece, 0, BlockContent::Undefined))
{
}

CZstdReader::~CZstdReader() = default;

bool CZstdReader::UnpackPiece(std::span<const uint8_t> frame, std::span<uint8_t> bytes)
{
    if (m_context == nullptr)
        return false;
    const size_t size =
        ZSTD_decompressDCtx(m_context.get(), bytes.data(), bytes.size(), frame.data(), frame.size());
    return ZSTD_isError(size) == 0 && size == bytes.size();
}

void CZstdReader::Begin(std::span<const uint8_t> frames)
{
    m_frames = frames;
    m_ready = {};
}

bool CZstdReader::NextFrame()
{
    const size_t packed = ZSTD_findFrameCompressedSize(m_frames.data(), m_frames.size());
    if (ZSTD_isError(packed) != 0 || packed > m_frames.size() || !IsReady())
        return false;
    const std::span<const uint8_t> frame = m_frames.first(packed);
    const unsigned long long content = ZSTD_getFrameContentSize(frame.data(), frame.size());
    if (content == 0 || content > m_piece.Size())
        return false;
    const std::span<uint8_t> bytes = m_piece.Bytes().first(static_cast<size_t>(content));
    if (!UnpackPiece(frame, bytes))
        return false;
    m_frames = m_frames.subspan(packed);
    m_ready = bytes;
    return true;
}

bool CZstdReader::Read(std::span<uint8_t> bytes)
{
    while (!bytes.empty()) {
        if (m_ready.empty() && !NextFrame())
            return false;
        const size_t count = std::min(bytes.size(), m_ready.size());
        std::memcpy(bytes.data(), m_ready.data(), count);
        bytes = bytes.subspan(count);
        m_ready = m_ready.subspan(count);
    }
    return true;
}
