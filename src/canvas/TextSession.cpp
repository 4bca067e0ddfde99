// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/TextSession.h"

#include "canvas/PixoluneView.h"
#include "document/ObjectOperations.h"
#include "document/Refusal.h"

#include <memory>

namespace {

void StoreStyle(CSettings& settings, const TextStyle& style)
{
    settings.Set(Setting::BannerLine, style.lineSpacing);
    settings.Set(Setting::BannerSmooth, style.smooth);
    settings.Set(Setting::BannerVertical, style.vertical);
    settings.Set(Setting::BannerAlign, static_cast<int32_t>(style.alignment));
    settings.Set(Setting::BannerFillMode, style.fill.mode);
    if (style.fill.mode == 0) {
        settings.Set(Setting::BannerSingleColor, static_cast<int32_t>(style.fill.first));
    } else {
        settings.Set(Setting::BannerGradientColor1, static_cast<int32_t>(style.fill.first));
        settings.Set(Setting::BannderGradientColor2, static_cast<int32_t>(style.fill.second));
    }
}

/// The low byte of the setting.
uint8_t TextTransparency(const CPixoluneDoc& document)
{
    return static_cast<uint8_t>(document.Services().settings.Get(Setting::TextBlendOpacity));
}

/// What the settings keep, with font and spacing as they were last used in the view.
TextStyle NewTextStyle(CPixoluneView& view)
{
    const TextStyle kept = TextStyleFromSettings(view.Document().Services().settings);
    TextStyle style = view.LastTextStyle();
    style.text.clear();
    style.lineSpacing = kept.lineSpacing;
    style.smooth = kept.smooth;
    style.vertical = kept.vertical;
    style.alignment = kept.alignment;
    style.fill = kept.fill;
    return style;
}

} // namespace

TextStyle TextStyleFromSettings(const CSettings& settings)
{
    TextStyle style;
    style.lineSpacing = settings.Get(Setting::BannerLine);
    style.smooth = settings.IsOn(Setting::BannerSmooth);
    style.vertical = settings.IsOn(Setting::BannerVertical);
    style.alignment = static_cast<TextAlignment>(settings.Get(Setting::BannerAlign));
    style.fill.mode = settings.Get(Setting::BannerFillMode);
    if (style.fill.mode == 0) {
        style.fill.first = static_cast<uint32_t>(settings.Get(Setting::BannerSingleColor));
    } else {
        style.fill.first = static_cast<uint32_t>(settings.Get(Setting::BannerGradientColor1));
        style.fill.second = static_cast<uint32_t>(settings.Get(Setting::BannderGradientColor2));
    }
    return style;
}

CTextSession::CTextSession(CPixoluneView& view, Point documentPoint)
    : m_view(view), m_point(documentPoint), m_initial(NewTextStyle(view)),
      m_settingsOnEntry(view.Document().Services().settings)
{
}

CTextSession::CTextSession(CPixoluneView& view, Ref<CPicObject> object)
    : m_view(view), m_object(std::move(object)), m_initial(*m_object->image->Dib().WrittenText()),
      m_settingsOnEntry(view.Document().Services().settings), m_entry(ObjectProperties::Of(*m_object))
{
    const Point corner = PaintText(m_initial).corner;
    m_point = {AddClamped(m_object->x, -corner.x), AddClamped(m_object->y, -corner.y)};
    CSettings& settings = view.Document().Services().settings;
    StoreStyle(settings, m_initial);
    settings.Set(Setting::TextBlendOpacity, m_object->transparency);
}

CTextSession::~CTextSession()
{
    if (m_open)
        Cancel();
}

Rect CTextSession::Covered() const
{
    if (m_painted.outcome != TextOutcome::Painted)
        return {};
    const Point corner{AddClamped(m_point.x, m_painted.corner.x), AddClamped(m_point.y, m_painted.corner.y)};
    return Rect::At(corner, m_painted.dib.Size());
}

void CTextSession::Preview(const TextStyle& style)
{
    m_object ? m_view.InvalidateDocument(m_object->Rectangle()) : TakeAway();
    m_painted = PaintText(style);
    m_object ? ShowInObject() : ShowAboveObjects();
}

void CTextSession::ShowAboveObjects()
{
    if (m_painted.outcome != TextOutcome::Painted)
        return;
    CPixoluneDoc& document = m_view.Document();
    document.SetFloating({&m_painted.dib, Covered().Corner(), TextTransparency(document), nullptr},
                         Covered());
}

void CTextSession::ShowInObject()
{
    CPixoluneDoc& document = m_view.Document();
    const Rect before = m_object->Rectangle();
    CPackedDib shown = m_object->image->Exchange(std::move(m_painted.dib));
    if (m_entryPicture.IsEmpty())
        m_entryPicture = std::move(shown);
    m_object->x = AddClamped(m_point.x, m_painted.corner.x);
    m_object->y = AddClamped(m_point.y, m_painted.corner.y);
    m_object->transparency = TextTransparency(document);
    document.NotifyFrameChanged(before.United(m_object->Rectangle()));
}

void CTextSession::TakeAway()
{
    if (!m_object) {
        m_view.Document().SetFloating({}, Covered());
    } else if (!m_entryPicture.IsEmpty()) {
        CPixoluneDoc& document = m_view.Document();
        const Rect before = m_object->Rectangle();
        m_object->image->Attach(std::move(m_entryPicture));
        m_entryPicture = {};
        m_entry.ApplyTo(*m_object);
        document.NotifyObjectsChanged();
        document.NotifyFrameChanged(before.United(m_object->Rectangle()));
    }
    m_painted = {};
}

bool CTextSession::Ok(const TextStyle& style)
{
    m_open = false;
    CPixoluneDoc& document = m_view.Document();
    StoreStyle(document.Services().settings, style);
    m_view.LastTextStyle() = style;
    Preview(style);
    const TextOutcome outcome = m_painted.outcome;
    if (outcome != TextOutcome::Painted) {
        TakeAway();
        if (outcome != TextOutcome::NothingShows)
            Refuse(document, outcome == TextOutcome::TooLarge ? Str::TextIsTooLarge : Str::OutOfMemory);
        return false;
    }
    Accept(style);
    m_view.SetMode(ToolMode::Default);
    return true;
}

void CTextSession::Accept(const TextStyle& style)
{
    CPixoluneDoc& document = m_view.Document();
    if (!m_object) {
        const Point corner = Covered().Corner();
        document.SetFloating({}, {});
        CPackedDib dib = std::move(m_painted.dib);
        m_painted = {};
        AddObject(document, ObjectListKind::AddText, std::move(dib), corner, TextTransparency(document));
    } else if (style == m_initial && m_object->transparency == m_entry.transparency) {
        TakeAway();
    } else {
        auto command = std::make_unique<CPropertiesCommand>(m_object, m_entry, Str::UndoEditText);
        command->AddPicture(std::move(m_entryPicture));
        document.Record(std::move(command));
        document.NotifyObjectsChanged();
    }
}

void CTextSession::Cancel()
{
    m_open = false;
    TakeAway();
    m_view.Document().Services().settings = m_settingsOnEntry;
    m_view.SetMode(ToolMode::Default);
}
