// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/Image.h"
#include "platform/codec/SaveImage.h"
#include "platform/codec/SaveOptions.h"
#include "support/Cases.h"
#include "support/Inputs.h"
#include "support/Peers.h"
#include "support/Scratch.h"

#include <QImageWriter>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

// The library's header needs <cstdio> before it.
// clang-format off
#include <jpeglib.h>
#include <png.h>
// clang-format on

namespace {

constexpr int kQuality = 85;

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

FileHandle Open(const std::filesystem::path& path, const char* mode)
{
    FileHandle file(std::fopen(path.c_str(), mode));
    if (file == nullptr)
        std::abort();
    return file;
}

/// The opaque photo, or the one with alpha, as a file.
std::filesystem::path Saved(int megapixels, bool hasAlpha, const char* extension)
{
    const std::filesystem::path path =
        ScratchFolder() / (std::to_string(megapixels) + (hasAlpha ? "-alpha." : ".") + extension);
    const CPackedDib& picture = hasAlpha ? PhotoPicture(megapixels) : BackdropPicture(megapixels);
    if (!std::filesystem::exists(path) && !CImage::SaveImageFile(path, picture, kQuality, nullptr))
        std::abort();
    return path;
}

/// The library alone, to the pixels as they are stored.
void PngLoad(const std::filesystem::path& path)
{
    const FileHandle file = Open(path, "rb");
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file.get());
    png_read_info(png, info);
    const size_t rowBytes = png_get_rowbytes(png, info);
    const auto height = png_get_image_height(png, info);
    const std::unique_ptr<uint8_t[]> pixels(new uint8_t[rowBytes * height]);
    for (size_t y = 0; y < height; ++y)
        png_read_row(png, pixels.get() + y * rowBytes, nullptr);
    png_destroy_read_struct(&png, &info, nullptr);
}

void JpgLoad(const std::filesystem::path& path)
{
    const FileHandle file = Open(path, "rb");
    jpeg_decompress_struct decoder = {};
    jpeg_error_mgr errors = {};
    decoder.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&decoder);
    jpeg_stdio_src(&decoder, file.get());
    jpeg_read_header(&decoder, TRUE);
    jpeg_start_decompress(&decoder);
    const size_t rowBytes = size_t{decoder.output_width} * 3;
    const std::unique_ptr<uint8_t[]> pixels(new uint8_t[rowBytes * decoder.output_height]);
    while (decoder.output_scanline < decoder.output_height) {
        JSAMPROW row = pixels.get() + decoder.output_scanline * rowBytes;
        jpeg_read_scanlines(&decoder, &row, 1);
    }
    jpeg_finish_decompress(&decoder);
    jpeg_destroy_decompress(&decoder);
}

/// The library's own choice of filters, at its usual level.
void PngSave(const std::filesystem::path& path, const CPackedDib& dib, bool hasAlpha)
{
    const FileHandle file = Open(path, "wb");
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file.get());
    png_set_IHDR(png, info, static_cast<png_uint_32>(dib.Width()), static_cast<png_uint_32>(dib.Height()), 8,
                 hasAlpha ? PNG_COLOR_TYPE_RGBA : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_BASE, PNG_FILTER_TYPE_BASE);
    png_set_compression_level(png, 6);
    png_write_info(png, info);
    png_set_bgr(png);
    if (!hasAlpha)
        png_set_filler(png, 0, PNG_FILLER_AFTER);
    for (int y = 0; y < dib.Height(); ++y)
        png_write_row(png, dib.Row(y));
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
}

void JpgSave(const std::filesystem::path& path, const CPackedDib& dib)
{
    const FileHandle file = Open(path, "wb");
    jpeg_compress_struct encoder = {};
    jpeg_error_mgr errors = {};
    encoder.err = jpeg_std_error(&errors);
    jpeg_create_compress(&encoder);
    jpeg_stdio_dest(&encoder, file.get());
    encoder.image_width = static_cast<JDIMENSION>(dib.Width());
    encoder.image_height = static_cast<JDIMENSION>(dib.Height());
    encoder.input_components = 4;
    encoder.in_color_space = JCS_EXT_BGRX;
    jpeg_set_defaults(&encoder);
    jpeg_set_quality(&encoder, kQuality, TRUE);
    encoder.optimize_coding = TRUE;
    jpeg_start_compress(&encoder, TRUE);
    for (int y = 0; y < dib.Height(); ++y) {
        JSAMPROW row = const_cast<uint8_t*>(dib.Row(y));
        jpeg_write_scanlines(&encoder, &row, 1);
    }
    jpeg_finish_compress(&encoder);
    jpeg_destroy_compress(&encoder);
}

template <class Load>
void AddLoad(const char* operation, int megapixels, bool hasAlpha, const char* who, const Load& load)
{
    const char* extension = std::string_view(operation).find("png") != std::string_view::npos ? "png" : "jpg";
    AddCase({operation, SizeName(megapixels), who, Threads::One, PixelsOf(megapixels)}, [=] {
        const std::filesystem::path path = Saved(megapixels, hasAlpha, extension);
        return [=] { load(path); };
    });
}

template <class Save>
void AddSave(const char* operation, int megapixels, bool hasAlpha, const char* who, Threads threads,
             const Save& save)
{
    const char* extension = std::string_view(operation).find("png") != std::string_view::npos ? "png" : "jpg";
    AddCase({operation, SizeName(megapixels), who, threads, PixelsOf(megapixels)}, [=] {
        const CPackedDib& picture = hasAlpha ? PhotoPicture(megapixels) : BackdropPicture(megapixels);
        const std::filesystem::path path = ScratchFolder() / (std::string("saved.") + extension);
        return [=, &picture] { save(path, picture); };
    });
}

const bool kRegistered = [] {
    const auto qtLoad = [](const std::filesystem::path& path) {
        if (QImage(QString::fromStdString(path.string())).isNull())
            std::abort();
    };
    // quality: of a JPG, which is coded with the tables that fit it best, as ours is; -1 for a PNG.
    const auto qtSave = [](const std::filesystem::path& path, const CPackedDib& dib, QImage::Format format,
                           int quality) {
        QImageWriter writer(QString::fromStdString(path.string()));
        writer.setQuality(quality);
        writer.setOptimizedWrite(true);
        if (!writer.write(QtImageOf(dib, format)))
            std::abort();
    };
    const auto ourSave = [](const std::filesystem::path& path, const CPackedDib& dib) {
        if (!CImage::SaveImageFile(path, dib, kQuality, nullptr))
            std::abort();
    };
    for (const int megapixels : kMegapixels) {
        for (const bool hasAlpha : {false, true}) {
            const char* load = hasAlpha ? "codec/png-load-alpha" : "codec/png-load";
            AddLoad(load, megapixels, hasAlpha, "ours", [](const std::filesystem::path& path) {
                if (CImage::LoadPNGFile(path, nullptr).IsEmpty())
                    std::abort();
            });
            AddLoad(load, megapixels, hasAlpha, "libpng", PngLoad);
            AddLoad(load, megapixels, hasAlpha, "qt", qtLoad);

            const char* save = hasAlpha ? "codec/png-save-alpha" : "codec/png-save";
            for (const Threads threads : kBothThreads)
                AddSave(save, megapixels, hasAlpha, "ours", threads, ourSave);
            AddSave(save, megapixels, hasAlpha, "libpng", Threads::One,
                    [=](const std::filesystem::path& path, const CPackedDib& dib) {
                        PngSave(path, dib, hasAlpha);
                    });
            AddSave(save, megapixels, hasAlpha, "qt", Threads::One,
                    [=](const std::filesystem::path& path, const CPackedDib& dib) {
                        qtSave(path, dib, hasAlpha ? QImage::Format_ARGB32 : QImage::Format_RGB32, -1);
                    });
        }
        AddLoad("codec/jpg-load", megapixels, false, "ours", [](const std::filesystem::path& path) {
            if (CImage::LoadJPGFile(path, nullptr).IsEmpty())
                std::abort();
        });
        AddLoad("codec/jpg-load", megapixels, false, "libjpeg-turbo", JpgLoad);
        AddLoad("codec/jpg-load", megapixels, false, "qt", qtLoad);
        AddSave("codec/jpg-save", megapixels, false, "ours", Threads::One, ourSave);
        AddSave("codec/jpg-save", megapixels, false, "libjpeg-turbo", Threads::One, JpgSave);
        AddSave("codec/jpg-save", megapixels, false, "qt", Threads::One,
                [=](const std::filesystem::path& path, const CPackedDib& dib) {
                    qtSave(path, dib, QImage::Format_RGB32, kQuality);
                });
    }
    return true;
}();

} // namespace
