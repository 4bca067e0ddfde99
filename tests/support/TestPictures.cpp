// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/TestPictures.h"

#include <cstdlib>
#include <cstring>
#include <random>

CPackedDib RandomDib(int width, int height, uint32_t seed, int bitCount)
{
    CPackedDib dib = CPackedDib::Create(width, height, bitCount);
    std::mt19937 random(seed);
    for (uint8_t& byte : dib.Bits())
        byte = static_cast<uint8_t>(random());
    return dib;
}

CPackedDib DibOf(int width, int height, std::initializer_list<uint32_t> pixels)
{
    CPackedDib dib = CPackedDib::Create(width, height, 32);
    int index = 0;
    for (const uint32_t pixel : pixels) {
        std::memcpy(dib.Row(index / width) + ptrdiff_t{index % width} * 4, &pixel, sizeof pixel);
        ++index;
    }
    return dib;
}

CPackedDib UniformDib(int width, int height, uint32_t pixel)
{
    CPackedDib dib = CPackedDib::Create(width, height, 32);
    for (size_t at = 0; at < dib.Bits().size(); at += 4)
        std::memcpy(dib.Bits().data() + at, &pixel, sizeof pixel);
    return dib;
}

uint32_t PixelOf(const CPackedDib& dib, int x, int y)
{
    uint32_t pixel = 0;
    std::memcpy(&pixel, dib.Row(y) + ptrdiff_t{x} * 4, sizeof pixel);
    return pixel;
}

testing::AssertionResult SameBytes(const CPackedDib& a, const CPackedDib& b)
{
    if (a.IsEmpty() || b.IsEmpty()) {
        if (a.IsEmpty() == b.IsEmpty())
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "only one of the pictures is empty";
    }
    if (a.Size() != b.Size() || a.BitCount() != b.BitCount()) {
        return testing::AssertionFailure()
               << a.Width() << " x " << a.Height() << " x " << a.BitCount() << " against " << b.Width()
               << " x " << b.Height() << " x " << b.BitCount();
    }
    if (a.Bits().size() == b.Bits().size() &&
        std::memcmp(a.Bits().data(), b.Bits().data(), a.Bits().size()) == 0)
        return testing::AssertionSuccess();
    testing::AssertionResult failure = testing::AssertionFailure();
    int shown = 0;
    const int bytesPerPixel = std::max(1, a.BitCount() / 8);
    for (int y = 0; y < a.Height() && shown < 10; ++y) {
        for (size_t at = 0; at < a.Stride() && shown < 10; ++at) {
            if (a.Row(y)[at] == b.Row(y)[at])
                continue;
            failure << "x " << at / static_cast<size_t>(bytesPerPixel) << " y " << y << " byte "
                    << at % static_cast<size_t>(bytesPerPixel) << ": " << int{a.Row(y)[at]} << " against "
                    << int{b.Row(y)[at]} << '\n';
            ++shown;
        }
    }
    return failure;
}

CPixelChanges ChangesBetween(const CPackedDib& a, const CPackedDib& b)
{
    CPixelChangesBuilder builder;
    EXPECT_TRUE(builder.Compare(0, reinterpret_cast<const uint32_t*>(a.Bits().data()),
                                reinterpret_cast<const uint32_t*>(b.Bits().data()), a.Bits().size() / 4));
    return *builder.Finish();
}

Ref<CPicObject> ObjectAt(CPackedDib dib, int x, int y, const std::string& name)
{
    auto object = MakeShared<CPicObject>(MakeShared<CRasterImage>(std::move(dib), name));
    object->x = x;
    object->y = y;
    object->visible = true;
    return object;
}

CTemporaryFolder::CTemporaryFolder()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "pixolune-test-XXXXXX").string();
    m_path = ::mkdtemp(pattern.data());
}

CTemporaryFolder::~CTemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}
