// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/paint/PaintText.h"

#include "support/TestPictures.h"

namespace {

TextStyle Style(const std::string& text)
{
    TextStyle style;
    style.text = text;
    style.family = "DejaVu Sans";
    return style;
}

TEST(PaintText, NothingShowsForEmptyTextAndAMissingFontFallsBack)
{
    for (const char* text : {"", " ", "\n\n"})
        EXPECT_TRUE(PaintText(Style(text)).dib.IsEmpty());
    TextStyle style = Style("Hill");
    EXPECT_FALSE(PaintText(style).fallback);
    style.family = "No Such Family";
    const PaintedText painted = PaintText(style);
    EXPECT_TRUE(painted.fallback);
    EXPECT_FALSE(painted.dib.IsEmpty());
    style.text.assign(100000, 'x');
    EXPECT_TRUE(PaintText(style).dib.IsEmpty()) << "one line too long for a picture";
}

TEST(PaintText, StyleChangesWhatItNames)
{
    const PaintedText plain = PaintText(Style("Hxl\ni"));
    ASSERT_FALSE(plain.dib.IsEmpty());
    const auto changed = [](auto change) {
        TextStyle style = Style("Hxl\ni");
        change(style);
        return PaintText(style);
    };
    EXPECT_GT(changed([](TextStyle& s) { s.size = 48; }).dib.Height(), plain.dib.Height() * 3 / 2);
    EXPECT_EQ(changed([](TextStyle& s) { s.lineSpacing = 20; }).dib.Height(), plain.dib.Height() + 20);
    EXPECT_EQ(changed([](TextStyle& s) { s.characterSpacing = 5; }).dib.Width(), plain.dib.Width() + 10);
    EXPECT_EQ(changed([](TextStyle& s) { s.baseline = 7; }).corner.y, plain.corner.y - 7);
    EXPECT_GT(changed([](TextStyle& s) { s.vertical = true; }).dib.Height(), plain.dib.Height());

    const PaintedText hard = changed([](TextStyle& s) {
        s.smooth = false;
        s.fill = {0x0000FF, 0, 0};
    });
    for (int y = 0; y < hard.dib.Height(); ++y) {
        for (int x = 0; x < hard.dib.Width(); ++x) {
            const uint32_t pixel = PixelOf(hard.dib, x, y);
            ASSERT_TRUE(pixel == 0xFFFF0000 || pixel == 0x00FF0000) << x << ' ' << y;
        }
    }
}

} // namespace
