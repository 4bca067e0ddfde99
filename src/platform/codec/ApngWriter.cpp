// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/ApngWriter.h"

#include "platform/codec/PngChunk.h"
#include "platform/io/ByteReader.h"
#include "platform/io/ByteWriter.h"

namespace {

constexpr uint32_t ChunkName(const char (&name)[5])
{
    uint32_t value = 0;
    for (int index = 0; index < 4; ++index)
        value = value << 8 | static_cast<uint8_t>(name[index]);
    return value;
}

constexpr uint16_t kDelayUnitsASecond = 100;
constexpr uint8_t kLeaveFrame = 0;
constexpr uint8_t kReplacePixels = 0;

} // namespace

bool CApngWriter::PutChunk(const char (&name)[5], Bytes head, Bytes body)
{
    return PutPngChunk([this](Bytes part) { return m_file.Write(part); }, name, head, body);
}

bool CApngWriter::PutFrameControl(const PngPicture& picture, Point position, int delay)
{
    CByteWriter control;
    control.BigU32(m_sequence++);
    control.BigU32(static_cast<uint32_t>(picture.width));
    control.BigU32(static_cast<uint32_t>(picture.height));
    control.BigU32(static_cast<uint32_t>(position.x));
    control.BigU32(static_cast<uint32_t>(position.y));
    control.BigU16(static_cast<uint16_t>(delay));
    control.BigU16(kDelayUnitsASecond);
    control.U8(kLeaveFrame);
    control.U8(kReplacePixels);
    return PutChunk("fcTL", control.Collected());
}

bool CApngWriter::PutFrameData(Bytes png)
{
    CByteReader reader(png);
    bool isPut = reader.Skip(kPngSignature.size());
    while (isPut && reader.Remaining() > 0) {
        uint32_t length = 0;
        uint32_t name = 0;
        Bytes content;
        isPut = reader.ReadBigU32(length) && reader.ReadBigU32(name) && reader.ReadBytes(length, content) &&
                reader.Skip(4);
        if (!isPut || name != ChunkName("IDAT"))
            continue;
        CByteWriter sequence;
        if (m_framesDone > 0)
            sequence.BigU32(m_sequence++);
        isPut =
            m_framesDone > 0 ? PutChunk("fdAT", sequence.Collected(), content) : PutChunk("IDAT", content);
    }
    return isPut;
}

bool CApngWriter::AddFrame(const PngPicture& picture, Point position, int delay)
{
    const CHeapBlock png = EncodePng(picture);
    if (png.IsEmpty())
        return false;
    if (m_framesDone == 0) {
        // Signature and header chunk: its length, its name, thirteen bytes and a checksum.
        constexpr size_t kFrontBytes = kPngSignature.size() + 4 + 4 + 13 + 4;
        CByteWriter animation;
        animation.BigU32(static_cast<uint32_t>(m_frames));
        animation.BigU32(static_cast<uint32_t>(m_plays));
        if (!m_file.Write(png.Bytes().first(kFrontBytes)) || !PutChunk("acTL", animation.Collected()))
            return false;
    }
    const bool isPut = PutFrameControl(picture, position, delay) && PutFrameData(png.Bytes());
    ++m_framesDone;
    return isPut;
}

bool CApngWriter::Commit()
{
    return m_framesDone == m_frames && PutChunk("IEND", {}) && m_file.Commit();
}
