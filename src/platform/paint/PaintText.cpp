// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/paint/PaintText.h"

#include "platform/paint/TextEngine.h"

#include <QFont>
#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QTextBoundaryFinder>
#include <QTextLayout>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <vector>

namespace {

constexpr int kDotsPerMeter = 3780; // 96 dots per inch
constexpr double kPixelsPerPoint = 96.0 / 72.0;
/// A text beyond this many pixels a side is not painted: the painter's images end at 32,767.
constexpr double kMaxSide = 32000;
/// Room around the layout for italics and flourishes that reach outside it, in font heights.
constexpr double kOverhang = 1.0;

QFont FontFor(const TextStyle& style)
{
    QFont font;
    if (!style.family.empty())
        font.setFamily(QString::fromStdString(style.family));
    font.setPixelSize(std::clamp(static_cast<int>(std::lround(style.size * kPixelsPerPoint)), 1, 4000));
    font.setBold(style.bold);
    font.setItalic(style.italic);
    font.setUnderline(style.underline);
    font.setLetterSpacing(QFont::AbsoluteSpacing, style.characterSpacing);
    font.setStyleStrategy(style.smooth ? QFont::PreferAntialias : QFont::NoAntialias);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

/// A line or, in vertical text, one character, laid out and placed.
struct PlacedLayout {
    std::unique_ptr<QTextLayout> layout;
    QPointF at;
};

struct Layout {
    std::vector<PlacedLayout> parts;
    QSizeF size;
};

bool IsTooLarge(const QSizeF& size)
{
    return !(size.width() <= kMaxSide) || !(size.height() <= kMaxSide) ||
           size.width() * size.height() > static_cast<double>(kMaxPicturePixels);
}

std::unique_ptr<QTextLayout> LayOut(const QString& text, const QFont& font)
{
    auto layout = std::make_unique<QTextLayout>(text, font);
    layout->setCacheEnabled(true);
    layout->beginLayout();
    if (QTextLine line = layout->createLine(); line.isValid())
        line.setPosition({0, 0});
    layout->endLayout();
    return layout;
}

double WidthOf(const QTextLayout& layout)
{
    return layout.lineCount() > 0 ? layout.lineAt(0).naturalTextWidth() : 0;
}

double Shift(TextAlignment alignment, double room)
{
    return alignment == TextAlignment::Left ? 0 : alignment == TextAlignment::Right ? room : room / 2;
}

/// Lays out no more lines than it takes to know that they are too large.
Layout LayOutHorizontally(const QStringList& lines, const QFont& font, const TextStyle& style)
{
    Layout result;
    const double step = QFontMetricsF(font).lineSpacing() + style.lineSpacing;
    double width = 0;
    result.size.setHeight(static_cast<double>(lines.size()) * step);
    for (const QString& line : lines) {
        if (IsTooLarge({width, result.size.height()}))
            break;
        result.parts.push_back({LayOut(line, font), {0, static_cast<double>(result.parts.size()) * step}});
        width = std::max(width, WidthOf(*result.parts.back().layout));
    }
    for (PlacedLayout& part : result.parts)
        part.at.rx() += Shift(style.alignment, width - WidthOf(*part.layout));
    result.size.setWidth(width);
    return result;
}

QStringList Characters(const QString& line)
{
    QStringList characters;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, line);
    for (qsizetype from = 0, to = finder.toNextBoundary(); to > 0; from = to, to = finder.toNextBoundary())
        characters.append(line.mid(from, to - from));
    return characters;
}

Layout LayOutVertically(const QStringList& lines, const QFont& font, const TextStyle& style)
{
    Layout result;
    const double stepDown = QFontMetricsF(font).height() + style.characterSpacing;
    const double column = QFontMetricsF(font).lineSpacing() + style.lineSpacing;
    qsizetype longest = 0;
    for (const QString& line : lines)
        longest = std::max(longest, Characters(line).size());
    result.size = {column * static_cast<double>(lines.size()), stepDown * static_cast<double>(longest)};
    if (IsTooLarge(result.size))
        return result;
    for (qsizetype index = 0; index < lines.size(); ++index) {
        const QStringList characters = Characters(lines[index]);
        double y = Shift(style.alignment, stepDown * static_cast<double>(longest - characters.size()));
        const double x = result.size.width() - static_cast<double>(index + 1) * column;
        for (const QString& character : characters) {
            auto layout = LayOut(character, font);
            const double centred = x + (column - WidthOf(*layout)) / 2;
            result.parts.push_back({std::move(layout), {centred, y}});
            y += stepDown;
        }
    }
    return result;
}

QImage PaintLayout(const Layout& layout, QSize size, QPointF origin, const QColor& pen, bool smooth)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return image;
    image.setDotsPerMeterX(kDotsPerMeter);
    image.setDotsPerMeterY(kDotsPerMeter);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::TextAntialiasing, smooth);
    painter.setPen(pen);
    for (const PlacedLayout& part : layout.parts)
        part.layout->draw(&painter, origin + part.at);
    return image;
}

/// The smallest rectangle around what shows.
QRect ShownPart(const QImage& image)
{
    QRect shown;
    for (int y = 0; y < image.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        const auto* end = row + image.width();
        const auto isOpaque = [](QRgb pixel) { return qAlpha(pixel) != 0; };
        const auto* first = std::find_if(row, end, isOpaque);
        if (first == end)
            continue;
        const auto* last =
            std::find_if(std::make_reverse_iterator(end), std::make_reverse_iterator(first), isOpaque).base();
        shown |= QRect(QPoint(static_cast<int>(first - row), y), QPoint(static_cast<int>(last - row) - 1, y));
    }
    return shown;
}

CPackedDib CoverageOf(const QImage& image, const QRect& part)
{
    CPackedDib coverage = CPackedDib::Create(part.width(), part.height(), 8);
    if (coverage.IsEmpty())
        return coverage;
    for (int y = 0; y < coverage.Height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(part.top() + y)) + part.left();
        std::transform(row, row + part.width(), coverage.Row(y),
                       [](QRgb pixel) { return static_cast<uint8_t>(qAlpha(pixel)); });
    }
    return coverage;
}

/// Whether black letters came out with colours: then some glyphs have their own.
bool HasColour(const QImage& black)
{
    for (int y = 0; y < black.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(black.constScanLine(y));
        if (std::any_of(row, row + black.width(), [](QRgb pixel) { return (pixel & RGB_MASK) != 0; }))
            return true;
    }
    return false;
}

/// Pixels that look the same whatever the pen belong to coloured glyphs; they keep their colours.
void KeepOwnColours(CPackedDib& dib, const QImage& black, const QImage& white, const QRect& part)
{
    for (int y = 0; y < dib.Height(); ++y) {
        const auto* blackRow =
            reinterpret_cast<const QRgb*>(black.constScanLine(part.top() + y)) + part.left();
        const auto* whiteRow =
            reinterpret_cast<const QRgb*>(white.constScanLine(part.top() + y)) + part.left();
        for (int x = 0; x < dib.Width(); ++x) {
            if (qAlpha(blackRow[x]) == 0 || blackRow[x] != whiteRow[x])
                continue;
            const QRgb pixel = qUnpremultiply(blackRow[x]);
            std::memcpy(dib.Row(y) + ptrdiff_t{x} * 4, &pixel, sizeof pixel);
        }
    }
}

} // namespace

PaintedText PaintText(const TextStyle& style)
{
    EnsureTextEngine();
    PaintedText painted;
    const QFont font = FontFor(style);
    painted.fallback =
        !style.family.empty() && !QFontDatabase::hasFamily(QString::fromStdString(style.family));
    const QStringList lines = QString::fromStdString(style.text).split(QLatin1Char('\n'));
    const Layout layout =
        style.vertical ? LayOutVertically(lines, font, style) : LayOutHorizontally(lines, font, style);

    const double overhang = std::ceil(QFontMetricsF(font).height() * kOverhang) + std::abs(style.baseline);
    const QSizeF area(layout.size.width() + 2 * overhang, layout.size.height() + 2 * overhang);
    if (IsTooLarge(area)) {
        painted.outcome = TextOutcome::TooLarge;
        return painted;
    }
    const QSize size(static_cast<int>(std::ceil(area.width())), static_cast<int>(std::ceil(area.height())));
    const QPointF origin(overhang, overhang - style.baseline);
    const QImage black = PaintLayout(layout, size, origin, Qt::black, style.smooth);
    const QRect shown = ShownPart(black);
    if (!black.isNull() && shown.isEmpty())
        return painted;
    painted.corner = {shown.left() - static_cast<int>(overhang), shown.top() - static_cast<int>(overhang)};
    painted.outcome = TextOutcome::OutOfMemory;
    const CPackedDib coverage = CoverageOf(black, shown);
    CPackedDib dib = coverage.IsEmpty() ? CPackedDib() : ColourCoverage(coverage, style.fill);
    if (dib.IsEmpty())
        return painted;
    if (HasColour(black)) {
        const QImage white = PaintLayout(layout, size, origin, Qt::white, style.smooth);
        if (white.isNull())
            return painted;
        KeepOwnColours(dib, black, white, shown);
    }
    dib.SetWrittenText(std::make_shared<const TextStyle>(style));
    painted.dib = std::move(dib);
    painted.outcome = TextOutcome::Painted;
    return painted;
}
