// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/ByteSink.h"
#include "platform/codec/PictureWriters.h"

/// A packed DIB is what a BMP file holds behind its 14 bytes of file header.
bool PutBmp(CAtomicFile& file, const CPackedDib& dib, uint32_t, IProgress*)
{
    constexpr uint64_t kFileHeaderBytes = 14;
    const uint64_t bitsOffset = kFileHeaderBytes + dib.Block().size() - dib.Bits().size();
    CByteSink header;
    header.PutU8('B');
    header.PutU8('M');
    header.PutU32(static_cast<uint32_t>(kFileHeaderBytes + dib.Block().size()));
    header.PutU32(0);
    header.PutU32(static_cast<uint32_t>(bitsOffset));
    return file.Write(header.Bytes()) && file.Write(dib.Block());
}
