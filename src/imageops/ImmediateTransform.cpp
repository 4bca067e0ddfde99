// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/ImmediateTransform.h"

#include "document/Refusal.h"
#include "imageops/GrayDib.h"
#include "imageops/NegativeDib.h"

#include <algorithm>
#include <cassert>

namespace {

struct ImmediateRow {
    TransformKind kind;
    CPackedDib (*run)(const CPackedDib&);
};

constexpr ImmediateRow kRows[] = {
    {TransformKind::Negative, NegativeDib},
    {TransformKind::Gray, GrayDib},
};

} // namespace

bool RequireTransformTargets(const CPixoluneDoc& document)
{
    if (document.Canvas().CountVisible() == 0)
        return Refuse(document, Str::NoObject);
    if (document.Canvas().CountSelected() == 0)
        return Refuse(document, Str::NoneSelected);
    return true;
}

bool RunImmediateTransform(CPixoluneDoc& document, TransformKind kind)
{
    if (!RequireTransformTargets(document))
        return false;
    const auto* row = std::ranges::find(kRows, kind, &ImmediateRow::kind);
    assert(row != std::end(kRows));
    auto command = std::make_unique<CTransformCommand>(kind);
    Rect touched;
    for (const Ref<CPicObject>& object : document.Canvas().ActiveObjects()) {
        const CPackedDib& shown = object->image->Dib();
        touched = touched.United(object->Rectangle());
        CPackedDib result = shown.IsEmpty() ? CPackedDib() : row->run(shown);
        command->AddPicture(object->image, object->image->Exchange(std::move(result)));
    }
    document.Record(std::move(command));
    document.NotifyObjectsChanged();
    document.NotifyFrameChanged(touched);
    return true;
}
