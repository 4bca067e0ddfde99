// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/TextSession.h"

#include "canvas/PixoluneView.h"
#include "document/ObjectOperations.h"

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

} // namespace

TextStyle TextStyleFromSettings(const CSettings& settings)
{
    TextStyle style;
    style.lineSpacing = settings.Get(Setting::BannerLine);
    style.smooth = settings.IsOn(Setting::BannerSmooth);
    style.vertical = settings.IsOn(Setting::BannerVertical);
    style.alignment = static_cast<TextAlignment>(settings.Get(Setting::BannerAlign));
    style.fill.mode = settings.Get(Setting::BannerFillMode);
    const bool single = style.fill.mode == 0;
    style.fill.first = static_cast<uint32_t>(
        settings.Get(single ? Setting::BannerSingleColor : Setting::BannerGradientColor1));
    style.fill.second = static_cast<uint32_t>(settings.Get(Setting::BannderGradientColor2));
    return style;
}

TextStyle InitialTextStyle(CPixoluneView& view)
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

CTextSession::~CTextSession()
{
    if (m_open)
        Cancel();
}

Rect CTextSession::Covered() const
{
    if (m_painted.dib.IsEmpty())
        return {};
    const Point corner{AddClamped(m_point.x, m_painted.corner.x), AddClamped(m_point.y, m_painted.corner.y)};
    return Rect::At(corner, m_painted.dib.Size());
}

void CTextSession::Preview(const TextStyle& style)
{
    Discard();
    m_painted = PaintText(style);
    if (m_painted.dib.IsEmpty())
        return;
    m_view.SetFloating({&m_painted.dib, Covered().Corner(), TextTransparency(m_view.Document()), nullptr});
    m_view.InvalidateDocument(Covered());
}

void CTextSession::Discard()
{
    m_view.SetFloating({});
    m_view.InvalidateDocument(Covered());
    m_painted = {};
}

bool CTextSession::Ok(const TextStyle& style)
{
    m_open = false;
    Preview(style);
    const Point corner = Covered().Corner();
    CPackedDib dib = std::move(m_painted.dib);
    m_painted = {};
    m_view.SetFloating({});
    CPixoluneDoc& document = m_view.Document();
    StoreStyle(document.Services().settings, style);
    m_view.LastTextStyle() = style;
    if (dib.IsEmpty())
        return false;

    AddObject(document, ObjectListKind::AddText, std::move(dib), corner, TextTransparency(document));
    m_view.SetMode(ToolMode::Default);
    return true;
}

void CTextSession::Cancel()
{
    m_open = false;
    Discard();
    m_view.SetMode(ToolMode::Default);
}
