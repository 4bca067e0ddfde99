// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/paint/PaintText.h"
#include "platform/settings/Settings.h"

class CPixoluneView;

/// A style with everything that the settings keep of it.
[[nodiscard]] TextStyle TextStyleFromSettings(const CSettings& settings);

/// What the settings keep, with font and spacing as they were last used in the view.
[[nodiscard]] TextStyle InitialTextStyle(CPixoluneView& view);

/// One text being written at a point of the canvas: what the "Add Text" dialog does. The view shows every
/// preview above all objects; OK makes it an object. Destroying an unfinished session cancels it.
class CTextSession {
public:
    CTextSession(CPixoluneView& view, Point documentPoint) : m_view(view), m_point(documentPoint) {}
    ~CTextSession();
    CTextSession(const CTextSession&) = delete;
    CTextSession& operator=(const CTextSession&) = delete;

    /// Shows the text as it would become.
    void Preview(const TextStyle& style);
    /// Whether the last preview had to do without the font asked for.
    [[nodiscard]] bool UsesFallbackFont() const { return m_painted.fallback; }
    /// Makes the text an object of its own, the only one selected, stores the style in the settings, and
    /// returns to the default tool. Where nothing shows, no object is made and the text tool stays.
    bool Ok(const TextStyle& style);
    /// Takes the preview away and returns to the default tool.
    void Cancel();

private:
    void Discard();
    [[nodiscard]] Rect Covered() const;

    CPixoluneView& m_view;
    Point m_point;
    PaintedText m_painted;
    bool m_open = true;
};
