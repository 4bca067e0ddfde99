// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class CPicObject;

/// Makes canvases known to screen readers: the picture with its size and zoom, and every object of it with
/// its place and state. Once, before the first canvas is asked for.
void InstallCanvasAccessibility();

/// What is said about an object behind its name: hidden, locked, place, size, opacity.
[[nodiscard]] QString DescribeObject(const CPicObject& object);
/// The object's name and, where they are not as usual, its states.
[[nodiscard]] QString NameObject(const CPicObject& object);
