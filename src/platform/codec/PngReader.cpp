// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Limits.h"
#include "platform/codec/Image.h"
#include "platform/codec/PlainPng.h"
#include "platform/codec/RowProgress.h"
#include "platform/io/ByteReader.h"
#include "platform/io/FileBytes.h"

#include <png.h>

#include <csetjmp>
#include <cstring>
#include <optional>

namespace {

/// The library asks for compressed bytes in portions of this size and gives up when a portion is cut off, so
/// of a truncated file it is asked for small ones.
constexpr size_t kPortion = 1 << 16;
constexpr size_t kTruncatedPortion = 16;
constexpr size_t kEndChunkBytes = 12;

[[noreturn]] void OnError(png_structp png, png_const_charp)
{
    png_longjmp(png, 1);
}

void OnWarning(png_structp, png_const_charp) {}

void ReadData(png_structp png, png_bytep data, size_t size)
{
    auto* source = static_cast<CByteReader*>(png_get_io_ptr(png));
    std::span<const uint8_t> bytes;
    if (!source->ReadBytes(size, bytes))
        png_error(png, "");
    std::memcpy(data, bytes.data(), size);
}

bool EndsWithEndChunk(std::span<const uint8_t> file)
{
    return file.size() >= kEndChunkBytes &&
           std::memcmp(file.data() + file.size() - kEndChunkBytes + 4, "IEND", 4) == 0;
}

/// Runs library calls that report failure by jumping out of them. Nothing in `step` may need destruction.
template <class Step> bool Guarded(png_structp png, const Step& step)
{
    if (setjmp(png_jmpbuf(png)) != 0)
        return false;
    step();
    return true;
}

class CPngDecoder {
public:
    explicit CPngDecoder(std::span<const uint8_t> file)
        : m_source(file), m_isTruncated(!EndsWithEndChunk(file)),
          m_png(png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, OnError, OnWarning)),
          m_info(m_png != nullptr ? png_create_info_struct(m_png) : nullptr)
    {
    }
    ~CPngDecoder() { png_destroy_read_struct(&m_png, &m_info, nullptr); }
    CPngDecoder(const CPngDecoder&) = delete;
    CPngDecoder& operator=(const CPngDecoder&) = delete;

    /// The size in the header; nothing when there is no picture.
    std::optional<Size> ReadHeader()
    {
        if (m_info == nullptr || !Guarded(m_png, [this] {
                png_set_read_fn(m_png, &m_source, ReadData);
                png_set_compression_buffer_size(m_png, m_isTruncated ? kTruncatedPortion : kPortion);
                png_set_user_limits(m_png, kMaxPictureSide, kMaxPictureSide);
                // Texts, profiles and the like are not read; wrong checksums do not spoil a picture.
                png_set_keep_unknown_chunks(m_png, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
                png_set_crc_action(m_png, PNG_CRC_QUIET_USE, PNG_CRC_QUIET_USE);
                png_set_option(m_png, PNG_IGNORE_ADLER32, PNG_OPTION_ON);
                png_set_benign_errors(m_png, 1);
                png_read_info(m_png, m_info);
            }))
            return std::nullopt;
        const png_uint_32 width = png_get_image_width(m_png, m_info);
        const png_uint_32 height = png_get_image_height(m_png, m_info);
        const uint64_t pixels = uint64_t{width} * height;
        const uint64_t inflated = uint64_t{png_get_rowbytes(m_png, m_info)} * height;
        if (pixels > uint64_t{kMaxPicturePixels} ||
            (pixels > kFreePixels && inflated / kMaxInflation > m_source.Size()))
            return std::nullopt;
        return Size{static_cast<int>(width), static_cast<int>(height)};
    }

    /// Decodes into `dib`, of the header's size; what is cut off stays transparent. False when not even one
    /// row came out.
    bool ReadRows(CPackedDib& dib, IProgress* progress)
    {
        int64_t done = 0;
        static_cast<void>(Guarded(m_png, [&] {
            png_set_expand(m_png);
            png_set_scale_16(m_png);
            png_set_gray_to_rgb(m_png);
            png_set_bgr(m_png);
            const bool hasAlpha = (png_get_color_type(m_png, m_info) & PNG_COLOR_MASK_ALPHA) != 0 ||
                                  png_get_valid(m_png, m_info, PNG_INFO_tRNS) != 0;
            if (!hasAlpha)
                png_set_add_alpha(m_png, 0xff, PNG_FILLER_AFTER);
            const int passes = png_set_interlace_handling(m_png);
            png_read_update_info(m_png, m_info);
            CRowProgress steps(progress, int64_t{passes} * dib.Height());
            for (int pass = 0; pass < passes; ++pass) {
                for (int y = 0; y < dib.Height(); ++y) {
                    // As the display row, the coarse passes fill whole blocks.
                    uint8_t* row = dib.Row(y);
                    png_read_row(m_png, passes == 1 ? row : nullptr, passes == 1 ? nullptr : row);
                    steps.SetDone(++done);
                }
            }
        }));
        return done > 0;
    }

private:
    CByteReader m_source;
    bool m_isTruncated;
    png_structp m_png;
    png_infop m_info;
};

} // namespace

CPackedDib CImage::LoadPNGFile(const std::filesystem::path& path, IProgress* progress)
{
    const std::optional<CHeapBlock> file = ReadFileBytes(path);
    return file ? DecodePng(file->Bytes(), progress) : CPackedDib();
}

CPackedDib CImage::DecodePng(std::span<const uint8_t> file, IProgress* progress)
{
    CPackedDib plain = DecodePlainPng(file, progress);
    if (!plain.IsEmpty())
        return plain;
    CPngDecoder decoder(file);
    const std::optional<Size> size = decoder.ReadHeader();
    if (!size)
        return {};
    CPackedDib dib = CPackedDib::CreateTransparent(size->width, size->height);
    if (dib.IsEmpty() || !decoder.ReadRows(dib, progress))
        return {};
    return dib;
}
