// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/DialogCommands.h"

#include "document/ObjectOperations.h"
#include "imageops/ImmediateTransform.h"
#include "imageops/ui/PropertiesDialog.h"
#include "imageops/ui/ResizeDialog.h"
#include "imageops/ui/TransformDlg.h"

#include <algorithm>

namespace {

using enum CommandId;

template <TransformKind kind> bool Transform(CPixoluneDoc& document, QWidget& window)
{
    return RequireTransformTargets(document) &&
           CTransformDlg(document, FindTransform(kind), &window).exec() == QDialog::Accepted;
}

constexpr int kCustomAngle = -1;

template <int angle> bool Rotate(CPixoluneDoc& document, QWidget& window)
{
    if (!RequireTransformTargets(document))
        return false;
    CTransformDlg dialog(document, RotateTransform(), &window);
    dialog.Choose(angle == kCustomAngle ? std::nullopt : std::optional(angle));
    return dialog.exec() == QDialog::Accepted;
}

bool Resize(CPixoluneDoc& document, QWidget& window)
{
    CResizeDialog dialog(document.Services().settings, document.Canvas().Size(), &window);
    return dialog.exec() == QDialog::Accepted && ResizeCanvas(document, dialog.NewSize());
}

bool EditProperties(CPixoluneDoc& document, QWidget& window)
{
    Ref<CPicObject> object = CPropertiesSession::Target(document);
    return object && CPropertiesDialog(document, std::move(object), &window).exec() == QDialog::Accepted;
}

struct DialogRow {
    CommandId id;
    bool (*run)(CPixoluneDoc& document, QWidget& window);
};

constexpr DialogRow kRows[] = {
    {EditResize, Resize},
    {ObjectProperties, EditProperties},
    {TransformBrightnessContrast, Transform<TransformKind::BrightnessContrast>},
    {TransformRedGreenBlue, Transform<TransformKind::RedGreenBlue>},
    {TransformHueSaturationLightness, Transform<TransformKind::HueSaturationLightness>},
    {TransformBlur, Transform<TransformKind::Blur>},
    {TransformGaussianBlur, Transform<TransformKind::GaussianBlur>},
    {TransformSharpness, Transform<TransformKind::Sharpness>},
    {TransformEmboss, Transform<TransformKind::Emboss>},
    {TransformSunspot, Transform<TransformKind::Sunspot>},
    {RotateLeft45, Rotate<315>},
    {RotateLeft90, Rotate<270>},
    {Rotate180, Rotate<180>},
    {RotateRight45, Rotate<45>},
    {RotateRight90, Rotate<90>},
    {RotateCustom, Rotate<kCustomAngle>},
};

} // namespace

bool RunDialogCommand(CommandId id, CPixoluneDoc& document, QWidget& window)
{
    const auto* row = std::ranges::find(kRows, id, &DialogRow::id);
    return row != std::end(kRows) && row->run(document, window);
}
