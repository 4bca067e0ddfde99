// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/AnimationPlayback.h"

CAnimationPlayback::CAnimationPlayback(const CObjectCanvas& canvas)
{
    for (const Ref<CPicObject>& object : canvas.objects) {
        if (object->visible)
            m_frames.Append(object);
    }
    m_shown.width = canvas.width;
    m_shown.height = canvas.height;
    ShowCurrent();
}

void CAnimationPlayback::Step()
{
    m_current = (m_current + 1) % m_frames.Count();
    ShowCurrent();
}

void CAnimationPlayback::ShowCurrent()
{
    m_shown.objects = {};
    m_shown.objects.Append(m_frames.At(m_current));
}
