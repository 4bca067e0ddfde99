// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/EraseTool.h"

#include "canvas/EraseStroke.h"
#include "canvas/PixoluneView.h"
#include "history/PaintCommand.h"
#include "platform/settings/Settings.h"

#include <memory>

StrokeSettings CEraseTool::ReadSettings() const
{
    const CSettings& settings = View().Document().Services().settings;
    const int width = settings.Get(Setting::EraseLineWidth);
    return {{width, settings.IsOn(Setting::EraseRoundCap) ? PenCap::Round : PenCap::Square,
             SmoothingRadius(width, settings.Get(Setting::EraseSmoothDegree))},
            settings.IsOn(Setting::EraseBeeline)};
}

void CEraseTool::BeginStroke(MouseButton /*button*/)
{
    m_transparence =
        static_cast<uint8_t>(View().Document().Services().settings.Get(Setting::EraseTransparence));
    m_stroke.emplace(Target()->image);
}

bool CEraseTool::ApplySegment(const CCoverageMask& mask)
{
    if (!m_stroke->Prepare(mask))
        return !m_stroke->IsIntact();
    ErasePixels(m_stroke->Pixels(), mask, m_transparence);
    View().Document().NotifyFrameChanged(mask.Bounds().Moved(Target()->x, Target()->y));
    return true;
}

bool CEraseTool::FinishStroke()
{
    if (m_stroke->HasPainted()) {
        CPixoluneDoc& document = View().Document();
        std::optional<CPixelChanges> changes = m_stroke->Changes();
        if (!changes) {
            AbandonStroke();
            return false;
        }
        document.Record(
            std::make_unique<CPaintCommand>(PaintKind::Erase, Target()->image, std::move(*changes)));
        document.NotifyObjectsChanged();
    }
    m_stroke.reset();
    return true;
}

void CEraseTool::AbandonStroke()
{
    m_stroke->Restore();
    m_stroke.reset();
    View().Document().NotifyFrameChanged(Target()->Rectangle());
}
