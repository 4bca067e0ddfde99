// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/AlphaTiles.h"
#include "model/ObjectCanvas.h"
#include "platform/dib/PackedDib.h"

#include <cstdint>
#include <span>
#include <vector>

/// How a partly transparent pixel is mixed onto an opaque background. The weighted rule is what every
/// processor with vector instructions uses; the integer rule is what is left without them.
enum class PixelPath { Weighted, Integer };

/// The path for this processor; probed once.
[[nodiscard]] PixelPath ProbePixelPath();

/// Draws a 32-bit picture onto another at a zoom of -8..-2 or 1..8.
/// destination: opaque pixels whose top-left corner stands at `destinationOrigin` of the zoomed canvas.
/// sourcePosition: the picture's corner in canvas pixels; with the picture's edges it is multiplied by a
/// zoom above 1 and divided (toward zero) by a reduction, which samples every n-th pixel.
/// transparency: subtracted from every alpha; what is left at 0 or below is not drawn, 255 replaces the
/// whole pixel, anything else is blended with the weight e * 32768 / 255 in all four bytes.
void CompositeWeighted(const BitmapView& destination, Point destinationOrigin, const CPackedDib& source,
                       Point sourcePosition, uint8_t transparency, int zoom);
/// The same geometry without vector instructions: a blend is written into the source picture, and the
/// destination changes only where nothing of the background shows through.
void CompositeInteger(const BitmapView& destination, Point destinationOrigin, CPackedDib& source,
                      Point sourcePosition, uint8_t transparency, int zoom);

/// A picture that floats above one object while a tool works on it.
struct FloatingImage {
    CPackedDib* dib = nullptr; ///< changes only on the integer path
    Point position;
    uint8_t transparency = 0;
    const CPicObject* above = nullptr; ///< drawn right after this object, or last of all without one
};

/// A picture in the order of drawing. contentId: see CRasterImage; 0 for a floating image, whose pixels may
/// change at any time.
struct DisplayLayer {
    const CPackedDib* dib = nullptr;
    Point position;
    uint8_t transparency = 0;
    uint64_t contentId = 0;
    const CAlphaTiles* alphas = nullptr; ///< none for a floating image
    bool isSelected = false;
};

/// What CompositeForDisplay draws, bottom to top.
[[nodiscard]] std::vector<DisplayLayer> DisplayLayers(const CObjectCanvas& canvas,
                                                      const FloatingImage& floating = {});
/// Draws some of them; all of them in as many calls as wanted are what CompositeForDisplay draws.
void CompositeLayers(const BitmapView& destination, Point destinationOrigin,
                     std::span<const DisplayLayer> layers, int zoom);

/// Draws every visible object, bottom to top, onto an opaque background. Rows may be split over the
/// processors. The weighted path changes nothing but the destination.
void CompositeForDisplay(const BitmapView& destination, Point destinationOrigin, const CObjectCanvas& canvas,
                         int zoom, const FloatingImage& floating = {}, PixelPath path = ProbePixelPath());

/// Draws a picture reduced or enlarged, as thumbnails are: destination pixel (x, y) takes source pixel
/// ((x << 15) / scale - position.x, (y << 15) / scale - position.y), or the nearest one there is.
/// scale: 32768 is 1:1. The two differ as CompositeWeighted and CompositeInteger do.
void DrawScaledWeighted(const BitmapView& destination, const CPackedDib& source, Point position,
                        uint16_t scale);
void DrawScaledInteger(const BitmapView& destination, CPackedDib& source, Point position, uint16_t scale);

/// Puts source over destination with straight alpha on both sides, in truncating integer arithmetic:
/// A = 255 - (255 - D)(255 - s) / 255 and c = ((255 - s) * D * dst / 255 + s * src) / A, clamped, where s is
/// the source alpha less the transparency.
void CompositeOver(const BitmapView& destination, Point destinationOrigin, const CPackedDib& source,
                   Point sourcePosition, uint8_t transparency);

/// The frame as one picture of the canvas's size. Empty when memory runs out.
[[nodiscard]] CPackedDib Flatten(const CObjectCanvas& canvas);
/// The same of some objects, seen through a rectangle of the canvas; invisible ones are skipped.
[[nodiscard]] CPackedDib FlattenObjects(const CObjectList& objects, const Rect& rect);
