// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/TextTool.h"

#include "canvas/PixoluneView.h"

void CTextTool::Down(const MouseInput& input)
{
    const Point point = View().Geometry().ToDocument(input.client);
    if (input.button == MouseButton::Left && View().Document().Canvas().Rectangle().Contains(point))
        View().AskForText(point);
}

bool CTextTool::Key(ToolKey key)
{
    const Rect seen = View().VisibleDocumentRect();
    if (key != ToolKey::Enter || seen.IsEmpty())
        return false;
    View().AskForText({seen.left + seen.Width() / 2, seen.top + seen.Height() / 2});
    return true;
}
