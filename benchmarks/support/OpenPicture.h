// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/PixoluneView.h"
#include "history/TransformCommand.h"
#include "platform/clipboard/Clipboard.h"
#include "platform/settings/Settings.h"
#include "support/Inputs.h"
#include "support/SilentUserInterface.h"

#include <functional>
#include <memory>
#include <random>

/// A document with one selected object that shows the backdrop, and a view on it.
struct OpenPicture {
    explicit OpenPicture(int megapixels)
    {
        const CPackedDib& picture = BackdropPicture(megapixels);
        settings.Set(Setting::UndoMaxTimes, 1000);
        document.Canvas().width = picture.Width();
        document.Canvas().height = picture.Height();
        auto object = MakeShared<CPicObject>(document.NewImage(picture.Duplicate()));
        object->visible = true;
        object->SetSelected(true);
        document.Canvas().objects.Append(object);
        view.SetClientSize({picture.Width(), picture.Height()});
    }
    void Filter()
    {
        const Ref<CRasterImage> image = document.Canvas().objects.Bottom()->image;
        auto command = std::make_unique<CTransformCommand>(TransformKind::Negative);
        command->AddPicture(image, image->Exchange(image->Dib().Duplicate()));
        document.Record(std::move(command));
    }
    /// The negative of the picture, like that.
    void Invert()
    {
        const Ref<CRasterImage> image = document.Canvas().objects.Bottom()->image;
        CPackedDib inverted = image->Dib().Duplicate();
        const std::span<uint8_t> bits = inverted.Bits();
        for (size_t i = 0; i < bits.size(); ++i)
            bits[i] ^= i % 4 == 3 ? 0 : 255;
        auto command = std::make_unique<CTransformCommand>(TransformKind::Negative);
        command->AddPicture(image, image->Exchange(std::move(inverted)));
        document.Record(std::move(command));
    }
    /// A line of the pencil with four corners, across up to a quarter of the picture's width and height.
    void Stroke(std::mt19937& random)
    {
        view.SetMode(ToolMode::Pencil);
        const Size size = document.Canvas().Size();
        const auto below = [&](int limit) {
            return static_cast<int>(random() % static_cast<uint32_t>(limit));
        };
        const Point start{below(size.width * 3 / 4), below(size.height * 3 / 4)};
        MouseInput input{view.Geometry().ToClient(start), MouseButton::Left};
        onMessage([&] { view.Press(input); });
        for (int corner = 0; corner < 4; ++corner) {
            const Point point{start.x + below(size.width / 4), start.y + below(size.height / 4)};
            input.client = view.Geometry().ToClient(point);
            onMessage([&] { view.Move(input); });
        }
        onMessage([&] { view.Release(input); });
    }
    [[nodiscard]] double HeldMebibytes() const
    {
        size_t bytes = 0;
        for (const auto& command : document.History().UndoList())
            bytes += command->HeldBytes();
        return static_cast<double>(bytes) / (1 << 20);
    }

    /// Called with each mouse message of a stroke in place of sending it.
    std::function<void(const std::function<void()>& message)> onMessage = [](const auto& message) {
        message();
    };
    CSettings settings;
    CSilentUserInterface ui;
    CPrivateClipboard clipboard;
    CObjectNameCounter names;
    AppServices services{settings, ui, clipboard, names};
    CPixoluneDoc document{services};
    CPixoluneView view{document};
};
