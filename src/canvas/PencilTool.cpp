// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/PencilTool.h"

#include "canvas/PaintSettings.h"
#include "canvas/PencilStroke.h"
#include "canvas/PixoluneView.h"
#include "canvas/ReplacePicture.h"
#include "platform/settings/Settings.h"

#include <algorithm>
#include <memory>

StrokeSettings CPencilTool::ReadSettings() const
{
    const CSettings& settings = View().Document().Services().settings;
    const int width = settings.Get(Setting::PaintLineWidth);
    return {{width, settings.IsOn(Setting::PaintRoundCap) ? PenCap::Round : PenCap::Square,
             SmoothingRadius(width, settings.Get(Setting::LineSmoothDegree))},
            settings.IsOn(Setting::PaintBeeline)};
}

void CPencilTool::BeginStroke(MouseButton button)
{
    const CPixoluneDoc& document = View().Document();
    const CSettings& settings = document.Services().settings;
    m_paint = PaintOf(settings, button, Setting::LineOpacity);
    m_layer.reset();
    m_inPlace.reset();
    if (settings.IsOn(Setting::AllowPaintTransparence))
        m_layer.emplace(document.Canvas().Rectangle());
    else
        m_inPlace.emplace(Target()->image);
}

Rect CPencilTool::Reach() const
{
    // The layer's limits stay as they were, whatever becomes of the canvas meanwhile.
    return m_layer ? m_layer->Limits() : Target()->Rectangle();
}

bool CPencilTool::ApplySegment(const CCoverageMask& mask)
{
    if (m_layer)
        return AddToLayer(mask);
    if (!m_inPlace->Prepare(mask))
        return !m_inPlace->IsIntact();
    PaintOntoPixels(m_inPlace->Pixels(), mask, m_paint);
    View().Document().NotifyFrameChanged(mask.Bounds().Moved(Target()->x, Target()->y));
    return true;
}

bool CPencilTool::AddToLayer(const CCoverageMask& mask)
{
    const bool hasRoom = m_layer->Include(mask.Bounds(), [&](const BitmapView& room, const Rect&) {
        for (int y = 0; y < room.height; ++y)
            std::fill_n(reinterpret_cast<uint32_t*>(room.Row(y)), room.width, m_paint.colour);
    });
    if (!hasRoom)
        return false;
    PlacedPicture& layer = m_layer->Picture();
    ::AddToLayer(ViewOf(layer.dib), layer.position, mask, m_paint.alpha);
    View().Document().SetFloating({&layer.dib, layer.position, Target()->transparency, Target().Get()},
                                  mask.Bounds());
    return true;
}

bool CPencilTool::FinishStroke()
{
    if (m_layer) {
        View().Document().SetFloating({}, {});
        const bool isJoined = JoinLayer();
        m_layer.reset();
        return isJoined;
    }
    if (m_inPlace->HasPainted()) {
        CPixoluneDoc& document = View().Document();
        std::optional<CPixelChanges> changes = m_inPlace->Changes();
        if (!changes) {
            AbandonStroke();
            return false;
        }
        auto command = std::make_unique<CPixelEditCommand>(PixelEditKind::PaintLine);
        command->AddPicture(Target()->image, std::move(*changes));
        document.Record(std::move(command));
        document.NotifyObjectsChanged();
    }
    m_inPlace.reset();
    return true;
}

bool CPencilTool::JoinLayer()
{
    CPixoluneDoc& document = View().Document();
    const Ref<CPicObject>& object = Target();
    const std::optional<PlacedPicture> painted = Trimmed(m_layer->Picture());
    if (painted && painted->dib.IsEmpty())
        return true;
    if (painted && JoinOntoObject(document, object, *painted, JoinRule::Over, PixelEditKind::PaintLine))
        return true;
    document.NotifyFrameChanged(m_layer->Picture().Rectangle());
    return false;
}

void CPencilTool::AbandonStroke()
{
    View().Document().SetFloating({}, {});
    if (m_inPlace)
        m_inPlace->Restore();
    m_layer.reset();
    m_inPlace.reset();
    View().Document().NotifyFrameChanged();
}
