// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "history/PropertiesCommand.h"
#include "platform/paint/PaintText.h"
#include "platform/settings/Settings.h"

class CPixoluneView;

/// A style with everything that the settings keep of it.
[[nodiscard]] TextStyle TextStyleFromSettings(const CSettings& settings);

/// One text being written: what the "Add Text" dialog does. A new text is shown above all objects and becomes
/// one by OK; the text of an object is shown in it. Meanwhile the settings hold what they keep of the text.
/// Destroying an unfinished session cancels it.
class CTextSession {
public:
    /// A new text at a point of the canvas.
    CTextSession(CPixoluneView& view, Point documentPoint);
    /// The text of an object, which must have one: see CPackedDib::WrittenText.
    CTextSession(CPixoluneView& view, Ref<CPicObject> object);
    ~CTextSession();
    CTextSession(const CTextSession&) = delete;
    CTextSession& operator=(const CTextSession&) = delete;

    /// The object's text, or an empty one as the settings and the last text of the view would have it.
    [[nodiscard]] const TextStyle& InitialStyle() const { return m_initial; }
    /// Shows the text as it would become.
    void Preview(const TextStyle& style);
    /// Whether the last preview had to do without the font asked for.
    [[nodiscard]] bool UsesFallbackFont() const { return m_painted.fallback; }
    /// Whether the last preview was too large for a picture.
    [[nodiscard]] bool IsTooLarge() const { return m_painted.outcome == TextOutcome::TooLarge; }
    /// Makes a new text an object of its own, the only one selected, or gives the object its new text, stores
    /// the style in the settings, and returns to the default tool; a text that is as it was records nothing.
    /// Where nothing shows, the objects stay as they are, and the tool as well; a text that is too large and
    /// lack of memory are told.
    bool Ok(const TextStyle& style);
    /// Takes the preview away, gives the settings back and returns to the default tool.
    void Cancel();

private:
    void TakeAway();
    void ShowInObject();
    void ShowAboveObjects();
    void Accept(const TextStyle& style);
    /// Where the preview of a new text stands.
    [[nodiscard]] Rect Covered() const;

    CPixoluneView& m_view;
    Ref<CPicObject> m_object; ///< none for a new text
    Point m_point;            ///< the text's corner
    TextStyle m_initial;
    CSettings m_settingsOnEntry;
    ObjectProperties m_entry;  ///< of the object
    CPackedDib m_entryPicture; ///< of the object, while it shows another one
    PaintedText m_painted;
    bool m_open = true;
};
