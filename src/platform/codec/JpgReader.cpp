// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Limits.h"
#include "platform/codec/Cmyk.h"
#include "platform/codec/Image.h"
#include "platform/codec/JpegCalls.h"
#include "platform/codec/Orientation.h"
#include "platform/codec/RowProgress.h"
#include "platform/io/FileBytes.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace {

class CJpegDecoder {
public:
    CJpegDecoder()
    {
        m_decoder.err = m_failure.Install();
        m_decoder.client_data = this;
        m_created = GuardedJpegCalls(m_failure, [this] { jpeg_create_decompress(&m_decoder); });
    }
    ~CJpegDecoder()
    {
        if (m_created)
            jpeg_destroy_decompress(&m_decoder);
    }
    CJpegDecoder(const CJpegDecoder&) = delete;
    CJpegDecoder& operator=(const CJpegDecoder&) = delete;

    /// The size in the header; nothing when there is no picture. The bytes must outlive the decoder.
    std::optional<Size> ReadHeader(std::span<const uint8_t> file)
    {
        if (!m_created || !GuardedJpegCalls(m_failure, [&] {
                jpeg_mem_src(&m_decoder, file.data(), static_cast<unsigned long>(file.size()));
                m_decoder.src->fill_input_buffer = OnEndOfData;
                jpeg_save_markers(&m_decoder, JPEG_APP0 + 1, 0xffff);
                jpeg_read_header(&m_decoder, TRUE);
            }))
            return std::nullopt;
        const int64_t pixels = int64_t{m_decoder.image_width} * m_decoder.image_height;
        if (pixels > kMaxPicturePixels || pixels > static_cast<int64_t>(file.size()) * kMaxJpgPixelsPerByte)
            return std::nullopt;
        m_maxScans =
            std::clamp(kMaxJpgScannedPixels / std::max<int64_t>(pixels, 1), kFewestJpgScans, kMostJpgScans);
        return Size{static_cast<int>(m_decoder.image_width), static_cast<int>(m_decoder.image_height)};
    }

    [[nodiscard]] ::Orientation Orientation() const
    {
        for (const jpeg_marker_struct* marker = m_decoder.marker_list; marker != nullptr;
             marker = marker->next) {
            const ::Orientation found = ExifOrientation({marker->data, marker->data_length});
            if (found != Orientation::TopLeft)
                return found;
        }
        return Orientation::TopLeft;
    }

    /// Decodes into `dib`, of the header's size; what is cut off becomes what the library makes of it. False
    /// when the data end or are broken before anything came out.
    bool ReadRows(CPackedDib& dib, IProgress* progress)
    {
        jpeg_progress_mgr watch = {};
        watch.progress_monitor = OnProgress;
        int64_t done = 0;
        const bool isCmyk = m_decoder.num_components == 4;
        static_cast<void>(GuardedJpegCalls(m_failure, [&] {
            m_decoder.progress = &watch;
            m_decoder.out_color_space = isCmyk ? JCS_CMYK : JCS_EXT_BGRA;
            jpeg_start_decompress(&m_decoder);
            CRowProgress steps(progress, dib.Height());
            while (m_decoder.output_scanline < m_decoder.output_height) {
                JSAMPROW row = dib.Row(static_cast<int>(m_decoder.output_scanline));
                jpeg_read_scanlines(&m_decoder, &row, 1);
                if (isCmyk)
                    CmykRowToBgra(row, dib.Width(), m_decoder.saw_Adobe_marker ? Ink::Inverted : Ink::Plain);
                steps.SetDone(++done);
            }
        }));
        m_decoder.progress = nullptr;
        for (auto y = static_cast<int>(done); y < dib.Height(); ++y)
            std::fill_n(dib.Row(y), dib.Stride(), uint8_t{0});
        return done > 0 && !m_hasNothing;
    }

private:
    static boolean OnEndOfData(j_decompress_ptr decoder)
    {
        auto* self = static_cast<CJpegDecoder*>(decoder->client_data);
        // Within the first row of blocks of the first scan, nothing of the picture is complete.
        if (decoder->input_scan_number <= 1 && decoder->input_iMCU_row == 0)
            self->m_hasNothing = true;
        static constexpr JOCTET kEndOfImage[] = {0xff, JPEG_EOI};
        decoder->src->next_input_byte = kEndOfImage;
        decoder->src->bytes_in_buffer = std::size(kEndOfImage);
        return TRUE;
    }
    static void OnProgress(j_common_ptr common)
    {
        auto* decoder = reinterpret_cast<j_decompress_ptr>(common);
        const auto* self = static_cast<const CJpegDecoder*>(decoder->client_data);
        if (decoder->input_scan_number > self->m_maxScans)
            decoder->err->error_exit(common);
    }

    CJpegFailure m_failure;
    jpeg_decompress_struct m_decoder = {};
    bool m_created = false;
    bool m_hasNothing = false;
    int64_t m_maxScans = kFewestJpgScans;
};

} // namespace

CPackedDib CImage::LoadJPGFile(const std::filesystem::path& path, IProgress* progress)
{
    const std::optional<CHeapBlock> file = ReadFileBytes(path);
    if (!file || file->Size() == 0)
        return {};
    CJpegDecoder decoder;
    const std::optional<Size> size = decoder.ReadHeader(file->Bytes());
    if (!size)
        return {};
    CPackedDib dib = CPackedDib::CreateForOverwrite(size->width, size->height);
    if (dib.IsEmpty() || !decoder.ReadRows(dib, progress))
        return {};
    return TurnUpright(std::move(dib), decoder.Orientation());
}
