// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Workbench.h"

#include <utility>

CWorkbench::CWorkbench(CPackedDib picture)
{
    CObjectCanvas canvas;
    canvas.width = picture.Width();
    canvas.height = picture.Height();
    auto object = MakeShared<CPicObject>(m_document.NewImage(std::move(picture)));
    object->visible = true;
    object->SetSelected(true);
    canvas.objects.Append(std::move(object));
    m_document.Adopt(std::move(canvas));
    m_view.SetClientSize(kWindow);
}

void CWorkbench::AddObjects(int count)
{
    for (int i = 0; i < count; ++i) {
        auto object = MakeShared<CPicObject>(m_document.NewImage(CPackedDib::CreateTransparent(8, 8)));
        object->visible = true;
        m_document.Canvas().objects.Append(std::move(object));
    }
}

void CWorkbench::PaintInvalidated()
{
    const std::vector<Rect> invalid = std::exchange(m_invalid, {});
    Rect bounds;
    for (const Rect& rect : invalid)
        bounds = bounds.United(rect);
    const FrameScene scene = m_view.BeginPainting(bounds, FrameRule::Exact);
    for (const Rect& rect : invalid)
        m_view.Paint(ViewOf(m_window).Part(Rect::At({0, 0}, {rect.Width(), rect.Height()})), rect, scene);
}
