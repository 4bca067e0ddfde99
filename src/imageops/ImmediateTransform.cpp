// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/ImmediateTransform.h"

#include "document/Refusal.h"
#include "imageops/TransformSession.h"

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
    return RequireTransformTargets(document) && CTransformSession(document, FindTransform(kind)).Ok({});
}
