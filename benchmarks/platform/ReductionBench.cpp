// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/transform/ColorReduction.h"
#include "support/Cases.h"
#include "support/Inputs.h"

#include <libimagequant.h>

#include <cstdlib>
#include <memory>
#include <vector>

namespace {

constexpr int kSpeed = 4;

/// Red, green, blue, alpha, as the library wants them.
std::vector<uint8_t> RgbaOf(const CPackedDib& dib)
{
    std::vector<uint8_t> bytes;
    bytes.reserve(dib.Bits().size());
    for (int y = 0; y < dib.Height(); ++y) {
        const uint8_t* pixel = dib.Row(y);
        for (int x = 0; x < dib.Width(); ++x, pixel += 4)
            bytes.insert(bytes.end(), {pixel[2], pixel[1], pixel[0], 255});
    }
    return bytes;
}

/// 256 colours and their indices, dithered.
void QuantizeDirectly(const std::vector<uint8_t>& rgba, Size size)
{
    liq_attr* const attributes = liq_attr_create();
    liq_set_speed(attributes, kSpeed);
    liq_image* const image = liq_image_create_rgba(attributes, rgba.data(), size.width, size.height, 0);
    liq_result* result = nullptr;
    if (liq_image_quantize(image, attributes, &result) != LIQ_OK)
        std::abort();
    liq_set_dithering_level(result, 1.0F);
    std::vector<uint8_t> indices(rgba.size() / 4);
    if (liq_write_remapped_image(result, image, indices.data(), indices.size()) != LIQ_OK)
        std::abort();
    liq_result_destroy(result);
    liq_image_destroy(image);
    liq_attr_destroy(attributes);
}

const bool kRegistered = [] {
    for (const int megapixels : {1, 4}) {
        AddCase({"reduce/256-colours", SizeName(megapixels), "ours", Threads::All, PixelsOf(megapixels)},
                [=] {
                    return [&dib = BackdropPicture(megapixels)] {
                        if (ReduceColorQuantity(dib, 8, 256, nullptr).IsEmpty())
                            std::abort();
                    };
                });
        AddCase(
            {"reduce/256-colours", SizeName(megapixels), "libimagequant", Threads::All, PixelsOf(megapixels)},
            [=] {
                const CPackedDib& dib = BackdropPicture(megapixels);
                const auto rgba = std::make_shared<std::vector<uint8_t>>(RgbaOf(dib));
                return [=, size = dib.Size()] { QuantizeDirectly(*rgba, size); };
            });
    }
    return true;
}();

} // namespace
