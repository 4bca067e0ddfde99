// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ObjectList.h"

#include <chrono>

/// The document's picture: a canvas of fixed size, its objects, and the fields that animation files bring
/// along and the native file keeps.
class CObjectCanvas {
public:
    CObjectList objects;
    int width = 0;
    int height = 0;

    uint32_t parameter = 0;          ///< carried through the native file as it is
    uint32_t backgroundIndex = 0;    ///< a GIF's logical-screen background index
    uint16_t frameDelay = 0;         ///< hundredths of a second
    uint8_t transparentIndex = 0;    ///< the first GIF frame's
    uint8_t graphicControlByte = 0;  ///< the first GIF frame's
    uint8_t imageDescriptorByte = 0; ///< the first GIF frame's

    [[nodiscard]] ::Size Size() const { return {width, height}; }
    [[nodiscard]] Rect Rectangle() const { return {0, 0, width, height}; }

    void DeselectAll();
    /// Objects that are selected and visible.
    [[nodiscard]] int CountSelected() const;
    [[nodiscard]] int CountVisible() const;
    [[nodiscard]] bool IsAnySelectedLocked() const;
    /// Objects whose selected flag is set, visible or not, bottom first.
    [[nodiscard]] CObjectList FlaggedObjects() const;
    /// Selected and visible objects, bottom first.
    [[nodiscard]] CObjectList ActiveObjects() const;

    /// The first visible object from the bottom that the point hits; none without one.
    [[nodiscard]] Ref<CPicObject> TopHit(Point point) const;
    /// From the bottom: the first visible selected object that the point hits, else the first visible
    /// object at all.
    [[nodiscard]] Ref<CPicObject> HitForSelection(Point point) const;
    /// The topmost visible object that the point hits; none without one.
    [[nodiscard]] Ref<CPicObject> TopmostHit(Point point) const;
    /// What a click takes in the default mode: a selected visible object that is hit (the topmost of
    /// them), else the topmost visible one that is hit.
    [[nodiscard]] Ref<CPicObject> ClickTarget(Point point) const;

    /// Moves every selected visible object.
    void MoveSelected(int dx, int dy);

    /// Finds out where the objects' pictures are clear or opaque, until a point in time; false when
    /// everything is known.
    bool FindAlphas(std::chrono::steady_clock::time_point until);
};
