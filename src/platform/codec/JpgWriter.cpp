// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/JpegCalls.h"
#include "platform/codec/PictureWriters.h"
#include "platform/codec/RowProgress.h"
#include "platform/codec/SaveOptions.h"

namespace {

class CJpegEncoder {
public:
    CJpegEncoder()
    {
        m_encoder.err = m_failure.Install();
        m_created = GuardedJpegCalls(m_failure, [this] { jpeg_create_compress(&m_encoder); });
    }
    ~CJpegEncoder()
    {
        if (m_created)
            jpeg_destroy_compress(&m_encoder);
    }
    CJpegEncoder(const CJpegEncoder&) = delete;
    CJpegEncoder& operator=(const CJpegEncoder&) = delete;

    bool Write(std::FILE* stream, const CPackedDib& dib, int quality, IProgress* progress)
    {
        return m_created && GuardedJpegCalls(m_failure, [&] {
                   jpeg_stdio_dest(&m_encoder, stream);
                   m_encoder.image_width = static_cast<JDIMENSION>(dib.Width());
                   m_encoder.image_height = static_cast<JDIMENSION>(dib.Height());
                   m_encoder.input_components = 4;
                   m_encoder.in_color_space = JCS_EXT_BGRX;
                   jpeg_set_defaults(&m_encoder);
                   jpeg_set_quality(&m_encoder, quality, TRUE);
                   m_encoder.optimize_coding = TRUE;
                   jpeg_start_compress(&m_encoder, TRUE);
                   CRowProgress steps(progress, dib.Height());
                   for (int y = 0; y < dib.Height(); ++y) {
                       // The library only reads the row; its type is older than const.
                       JSAMPROW row = const_cast<uint8_t*>(dib.Row(y));
                       jpeg_write_scanlines(&m_encoder, &row, 1);
                       steps.SetDone(y + 1);
                   }
                   jpeg_finish_compress(&m_encoder);
               });
    }

private:
    CJpegFailure m_failure;
    jpeg_compress_struct m_encoder = {};
    bool m_created = false;
};

} // namespace

/// Colour at half resolution in both directions, Huffman tables made for the picture.
bool PutJpg(CAtomicFile& file, const CPackedDib& dib, uint32_t option, IProgress* progress)
{
    if (dib.BitCount() != 32)
        return false;
    return CJpegEncoder().Write(file.Stream(), dib, JpgOptions::Of(option).quality, progress);
}
