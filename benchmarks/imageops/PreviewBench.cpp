// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/PixoluneView.h"
#include "imageops/TransformSession.h"
#include "platform/clipboard/Clipboard.h"
#include "platform/settings/Settings.h"
#include "support/Cases.h"
#include "support/Inputs.h"
#include "support/SilentUserInterface.h"

#include <array>
#include <memory>
#include <vector>

namespace {

constexpr int kSizeInMegapixels = 12;
constexpr Size kView{1920, 1080};

/// A window on a document of one selected object, while the dialog of an operation is open.
struct OpenDialog {
    CSettings settings;
    CSilentUserInterface ui;
    CPrivateClipboard clipboard;
    CObjectNameCounter names;
    AppServices services{settings, ui, clipboard, names};
    CPixoluneDoc document{services};
    CPixoluneView view{document};
    CPackedDib screen = CPackedDib::Create(kView.width, kView.height, 32);
    std::unique_ptr<CTransformSession> session;
    bool isSecond = false;

    explicit OpenDialog(const TransformRow& transform)
    {
        auto object = MakeShared<CPicObject>(document.NewImage(PhotoPicture(kSizeInMegapixels).Duplicate()));
        object->visible = true;
        object->SetSelected(true);
        document.Canvas().width = object->image->Width();
        document.Canvas().height = object->image->Height();
        document.Canvas().objects.Append(object);
        view.SetClientSize(kView);
        view.SetZoom(-2);
        session = std::make_unique<CTransformSession>(document, transform);
    }
    /// From the end of a slider's drag to the pixels that go to the screen.
    void Preview(std::span<const int> values)
    {
        session->Preview(values);
        view.Paint(ViewOf(screen), Rect::At({0, 0}, kView));
    }
};

/// Two settings of a dialog, by turns.
struct Dialog {
    const char* name;
    const TransformRow& (*transform)();
    std::array<std::vector<int>, 2> values;
};

template <TransformKind kind> const TransformRow& Row()
{
    return FindTransform(kind);
}

const bool kRegistered = [] {
    static const Dialog kDialogs[] = {
        {"brightness-contrast", Row<TransformKind::BrightnessContrast>, {{{20, 40}, {25, 45}}}},
        {"red-green-blue", Row<TransformKind::RedGreenBlue>, {{{20, -30, 40}, {25, -35, 45}}}},
        {"hue-saturation", Row<TransformKind::HueSaturationLightness>, {{{40, 20, -10}, {45, 25, -15}}}},
        {"blur", Row<TransformKind::Blur>, {{{49}, {15}}}},
        {"gaussian-blur", Row<TransformKind::GaussianBlur>, {{{49}, {50}}}},
        {"sharpness", Row<TransformKind::Sharpness>, {{{100}, {200}}}},
        {"emboss", Row<TransformKind::Emboss>, {{{128, 1, 45}, {128, 3, 90}}}},
        {"sunspot", Row<TransformKind::Sunspot>, {{{20, 80, 45}, {25, 75, 50}}}},
        {"rotate", RotateTransform, {{{45}, {30}}}},
    };
    for (const Dialog& dialog : kDialogs) {
        for (const Threads threads : kBothThreads) {
            AddCase({std::string("preview/") + dialog.name, SizeName(kSizeInMegapixels), "ours", threads,
                     PixelsOf(kSizeInMegapixels)},
                    [&dialog] {
                        const auto open = std::make_shared<OpenDialog>(dialog.transform());
                        return [open, &dialog] {
                            open->isSecond = !open->isSecond;
                            open->Preview(dialog.values[open->isSecond ? 1 : 0]);
                        };
                    });
        }
    }
    return true;
}();

} // namespace
