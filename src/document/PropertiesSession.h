// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "history/PropertiesCommand.h"
#include "model/PixoluneDoc.h"

#include <string>

/// What the Properties dialog does: every change takes effect on the object at once, OK keeps them as one
/// undo entry, and Cancel puts everything back. Destroying an unfinished session cancels it.
class CPropertiesSession {
public:
    static constexpr int kMinPosition = -1000;
    static constexpr int kMaxPosition = 1000;

    /// The object that the menu command works on: the only selected visible one. None, with a message,
    /// when there is not exactly one.
    [[nodiscard]] static Ref<CPicObject> Target(const CPixoluneDoc& document);

    CPropertiesSession(CPixoluneDoc& document, Ref<CPicObject> object);
    ~CPropertiesSession();
    CPropertiesSession(const CPropertiesSession&) = delete;
    CPropertiesSession& operator=(const CPropertiesSession&) = delete;

    [[nodiscard]] const CPicObject& Object() const { return *m_object; }
    /// The size of the picture on entry; 1 x 1 at least, for the ranges.
    [[nodiscard]] Size EntrySize() const;

    void SetName(const std::string& name);
    void SetVisible(bool visible);
    void SetLocked(bool locked);
    void SetTransparency(uint8_t transparency);
    void SetPosition(Point position);
    /// Shows the entry picture scaled; at its own size the entry picture itself. False, and the object keeps
    /// what it shows, with a message, when memory runs out.
    bool SetSize(Size size);

    void Ok();
    void Cancel();

private:
    void Changed(const Rect& before);
    /// Puts the entry picture back in place of a scaled one.
    void RestorePicture();

    CPixoluneDoc& m_document;
    Ref<CPicObject> m_object;
    ObjectProperties m_entry;
    CPackedDib m_entryPicture; ///< held while the object shows a scaled one
    bool m_open = true;
};
