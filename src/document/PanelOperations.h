// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/PixoluneDoc.h"

#include <string>

/// What the Objects Panel does to objects. Each is one command; nothing is recorded where nothing changes.

/// The eye icon.
bool SetVisible(CPixoluneDoc& document, const CObjectList& objects, bool visible);
/// The lock icon.
bool SetLocked(CPixoluneDoc& document, const CObjectList& objects, bool locked);
/// The opacity change: 0 as the picture's own alpha says, 255 invisible.
bool SetTransparency(CPixoluneDoc& document, const CObjectList& objects, uint8_t transparency);
/// Rename in place: at most 48 characters, recorded with the object's other properties.
bool RenameObject(CPixoluneDoc& document, const Ref<CPicObject>& object, const std::string& name);
/// Selects exactly these objects; not recorded.
void SelectObjects(CPixoluneDoc& document, const CObjectList& objects);

/// Longest name of an object.
inline constexpr size_t kMaxNameCharacters = 48;

/// The first characters of a UTF-8 text that an object's name can hold.
[[nodiscard]] std::string LimitedName(const std::string& name);
