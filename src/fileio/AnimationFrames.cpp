// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/AnimationFrames.h"

#include "model/Compositing.h"

CAnimationFrames::CAnimationFrames(const CObjectCanvas& canvas) : m_frame(canvas.Rectangle())
{
    for (const Ref<CPicObject>& object : canvas.objects) {
        if (object->visible)
            m_objects.Append(object);
    }
}

CPackedDib CAnimationFrames::Frame(size_t index) const
{
    CObjectList alone;
    alone.Append(m_objects.At(index));
    return FlattenObjects(alone, m_frame);
}
