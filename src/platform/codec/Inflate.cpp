// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/Inflate.h"

#include <libdeflate.h>

#include <memory>

namespace {

struct Release {
    void operator()(libdeflate_decompressor* decompressor) const
    {
        libdeflate_free_decompressor(decompressor);
    }
};

} // namespace

bool InflateZlib(std::span<const uint8_t> packed, std::span<uint8_t> out)
{
    const std::unique_ptr<libdeflate_decompressor, Release> decompressor(libdeflate_alloc_decompressor());
    return decompressor != nullptr &&
           libdeflate_zlib_decompress(decompressor.get(), packed.data(), packed.size(), out.data(),
                                      out.size(), nullptr) == LIBDEFLATE_SUCCESS;
}
