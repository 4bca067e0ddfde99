// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imageops/TransformTable.h"
#include "model/PixoluneDoc.h"

#include <vector>

/// What the dialog of an image operation does to the visible selected objects: previews replace each other,
/// always made from the pictures that were there before; OK leaves the result and one undo entry, Cancel
/// nothing. Nothing else may change the document meanwhile. Destroying an unfinished session cancels it.
///
/// An object whose result cannot be held loses its picture until the next preview, Cancel or undo.
class CTransformSession {
public:
    CTransformSession(CPixoluneDoc& document, const TransformRow& transform);
    ~CTransformSession();
    CTransformSession(const CTransformSession&) = delete;
    CTransformSession& operator=(const CTransformSession&) = delete;

    [[nodiscard]] const TransformRow& Transform() const { return m_transform; }
    /// Shows the result for these values; the initial pictures for values that change nothing.
    void Preview(TransformValues values);
    /// Shows the initial pictures where they are not shown.
    void ShowInitial();
    /// Applies the values and ends the session. Whether something was recorded: values that change nothing
    /// put the initial pictures back and leave no undo entry.
    bool Ok(TransformValues values);
    /// Shows the initial pictures and ends the session.
    void Cancel();

private:
    struct Target {
        Ref<CPicObject> object;
        Point position;     ///< on entry
        Size size;          ///< of the initial picture
        CPackedDib initial; ///< held while the object shows a preview
    };
    /// The frame's part that all targets cover as they are now.
    [[nodiscard]] Rect Covered() const;
    void ShowResult(Target& target, TransformValues values) const;
    void Redraw(const Rect& before);

    CPixoluneDoc& m_document;
    const TransformRow& m_transform;
    std::vector<Target> m_targets;
    bool m_previewShown = false;
    std::vector<int> m_shownValues; ///< what the preview was made with
};
