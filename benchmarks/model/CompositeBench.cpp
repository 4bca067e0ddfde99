// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/Compositing.h"
#include "support/Cases.h"
#include "support/Inputs.h"
#include "support/Peers.h"
#include "support/PlainLoops.h"

#include <QPainter>

#include <algorithm>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace {

constexpr Size kView{1920, 1080};
constexpr int kObjects = 50;

std::shared_ptr<CPackedDib> CopyOf(const CPackedDib& dib)
{
    return std::make_shared<CPackedDib>(dib.Duplicate());
}

void AddOverOpaque(int megapixels)
{
    const std::string operation = "composite/over-opaque";
    const std::string size = SizeName(megapixels);
    const double pixels = PixelsOf(megapixels);
    for (const Threads threads : kBothThreads) {
        AddCase({operation, size, "ours", threads, pixels}, [=] {
            const auto view = CopyOf(BackdropPicture(megapixels));
            const CPackedDib& photo = PhotoPicture(megapixels);
            return [=, &photo] { CompositeWeighted(ViewOf(*view), {0, 0}, photo, {0, 0}, 0, 1); };
        });
    }
    AddCase({operation, size, "plain-loop", Threads::One, pixels}, [=] {
        const auto view = CopyOf(BackdropPicture(megapixels));
        const CPackedDib& photo = PhotoPicture(megapixels);
        return [=, &photo] {
            plain::OverOpaque(view->Bits().data(), photo.Bits().data(), photo.Bits().size() / 4);
        };
    });
    AddCase({operation, size, "pixman", Threads::One, pixels}, [=] {
        const auto view = CopyOf(BackdropPicture(megapixels));
        const auto photo = std::make_shared<CPackedDib>(Premultiplied(PhotoPicture(megapixels)));
        return [=] {
            const PixmanImage to = PixmanImageOf(*view, PIXMAN_a8r8g8b8);
            const PixmanImage from = PixmanImageOf(*photo, PIXMAN_a8r8g8b8);
            pixman_image_composite32(PIXMAN_OP_OVER, from.get(), nullptr, to.get(), 0, 0, 0, 0, 0, 0,
                                     photo->Width(), photo->Height());
        };
    });
    const auto addQt = [=](const char* who, QImage::Format format, Threads threads) {
        AddCase({operation, size, who, threads, pixels}, [=] {
            const auto view = CopyOf(BackdropPicture(megapixels));
            const auto photo = format == QImage::Format_ARGB32
                                   ? CopyOf(PhotoPicture(megapixels))
                                   : std::make_shared<CPackedDib>(Premultiplied(PhotoPicture(megapixels)));
            return [=] {
                QImage to = QtImageOf(*view, QImage::Format_RGB32);
                QPainter(&to).drawImage(0, 0, QtImageOf(std::as_const(*photo), format));
            };
        });
    };
    addQt("qt-premultiplied", QImage::Format_ARGB32_Premultiplied, Threads::One);
    addQt("qt-straight", QImage::Format_ARGB32, Threads::All);
}

/// Fifty pieces of the photo, each of the view's size.
const std::vector<CPackedDib>& Pieces(bool premultiplied)
{
    static const auto cut = [](bool multiply) {
        std::vector<CPackedDib> pieces;
        const CPackedDib& photo = PhotoPicture(12);
        for (int i = 0; i < kObjects; ++i) {
            CPackedDib piece = CutOut(photo, i * 397 % (photo.Width() - kView.width),
                                      i * 211 % (photo.Height() - kView.height), kView.width, kView.height);
            pieces.push_back(multiply ? Premultiplied(piece) : std::move(piece));
        }
        return pieces;
    };
    static const std::vector<CPackedDib> straight = cut(false);
    static const std::vector<CPackedDib> multiplied = cut(true);
    return premultiplied ? multiplied : straight;
}

std::shared_ptr<CObjectCanvas> CanvasOf(std::span<const CPackedDib> pictures)
{
    auto canvas = std::make_shared<CObjectCanvas>();
    canvas->width = pictures.front().Width();
    canvas->height = pictures.front().Height();
    for (const CPackedDib& picture : pictures) {
        auto object = MakeShared<CPicObject>(MakeShared<CRasterImage>(picture.Duplicate(), ""));
        object->visible = true;
        canvas->objects.Append(object);
    }
    return canvas;
}

/// Our time at a zoom; the objects are as large as before, so that some of them fill the view.
void AddZoomedView(int zoom)
{
    for (const Threads threads : kBothThreads) {
        AddCase({"composite/50-objects-zoom" + std::to_string(zoom), "1920x1080", "ours", threads, 0}, [=] {
            const auto view = std::make_shared<CPackedDib>(CPackedDib::Create(kView.width, kView.height, 32));
            const auto canvas = CanvasOf(Pieces(false));
            return [=] { CompositeForDisplay(ViewOf(*view), {0, 0}, *canvas, zoom); };
        });
    }
}

void AddView()
{
    const std::string operation = "composite/50-objects";
    const std::string size = "1920x1080";
    const double pixels = double{kView.width} * kView.height * kObjects;
    const auto makeView = [] {
        return std::make_shared<CPackedDib>(CPackedDib::Create(kView.width, kView.height, 32));
    };
    for (const Threads threads : kBothThreads) {
        AddCase({operation, size, "ours", threads, pixels}, [=] {
            const auto view = makeView();
            const auto canvas = CanvasOf(Pieces(false));
            return [=] {
                std::fill(view->Bits().begin(), view->Bits().end(), uint8_t{255});
                CompositeForDisplay(ViewOf(*view), {0, 0}, *canvas, 1);
            };
        });
    }
    AddCase({operation, size, "qt-premultiplied", Threads::One, pixels}, [=] {
        const auto view = makeView();
        const std::vector<CPackedDib>& pieces = Pieces(true);
        return [=, &pieces] {
            QImage to = QtImageOf(*view, QImage::Format_RGB32);
            to.fill(0xFFFFFFFFu);
            QPainter painter(&to);
            for (const CPackedDib& piece : pieces)
                painter.drawImage(0, 0, QtImageOf(piece, QImage::Format_ARGB32_Premultiplied));
        };
    });
    AddCase({operation, size, "pixman", Threads::One, pixels}, [=] {
        const auto view = makeView();
        const std::vector<CPackedDib>& pieces = Pieces(true);
        return [=, &pieces] {
            std::fill(view->Bits().begin(), view->Bits().end(), uint8_t{255});
            const PixmanImage to = PixmanImageOf(*view, PIXMAN_a8r8g8b8);
            for (const CPackedDib& piece : pieces) {
                const PixmanImage from = PixmanImageOf(piece, PIXMAN_a8r8g8b8);
                pixman_image_composite32(PIXMAN_OP_OVER, from.get(), nullptr, to.get(), 0, 0, 0, 0, 0, 0,
                                         kView.width, kView.height);
            }
        };
    });
}

/// Two layers with alpha of their own.
void AddOverWithAlpha(int megapixels)
{
    const std::string operation = "composite/over-with-alpha";
    const std::string size = SizeName(megapixels);
    const double pixels = PixelsOf(megapixels);
    const auto makeBelow = [megapixels] {
        const auto below = CopyOf(PhotoPicture(megapixels));
        const std::span<uint8_t> bits = below->Bits();
        auto* first = reinterpret_cast<uint32_t*>(bits.data());
        std::reverse(first, first + bits.size() / 4);
        return below;
    };
    for (const Threads threads : kBothThreads) {
        AddCase({operation, size, "ours", threads, pixels}, [=] {
            const auto below = makeBelow();
            const auto drawn = CopyOf(*below);
            const CPackedDib& photo = PhotoPicture(megapixels);
            return [=, &photo] { CompositeOver(ViewOf(*drawn), {0, 0}, photo, {0, 0}, 0); };
        });
    }
    AddCase({operation, size, "plain-loop", Threads::One, pixels}, [=] {
        const auto below = makeBelow();
        const CPackedDib& photo = PhotoPicture(megapixels);
        return [=, &photo] {
            plain::OverWithAlpha(below->Bits().data(), photo.Bits().data(), photo.Bits().size() / 4);
        };
    });
}

/// The frame of eight pictures as a new one.
void AddFlatten()
{
    constexpr size_t kCount = 8;
    const double pixels = double{kView.width} * kView.height * kCount;
    for (const Threads threads : kBothThreads) {
        AddCase({"composite/flatten-8", "1920x1080", "ours", threads, pixels}, [] {
            const auto canvas = CanvasOf({Pieces(false).data(), kCount});
            return [canvas] { (void)Flatten(*canvas); };
        });
    }
    AddCase({"composite/flatten-8", "1920x1080", "plain-loop", Threads::One, pixels}, [] {
        const std::vector<CPackedDib>& pieces = Pieces(false);
        return [&pieces] {
            CPackedDib frame = pieces.front().Duplicate();
            for (size_t i = 1; i < kCount; ++i)
                plain::OverWithAlpha(frame.Bits().data(), pieces[i].Bits().data(), frame.Bits().size() / 4);
        };
    });
}

/// A view of 1920 x 1080 pixels at each zoom, on a picture that fills it where the picture is large enough.
void AddZoom()
{
    for (const int zoom : {1, 2, 3, 8, -2, -3, -8}) {
        const int side = zoom > 0 ? 1 : -zoom;
        const Size seen{std::min(kView.width, 4000 / side), std::min(kView.height, 3000 / side)};
        for (const Threads threads : kBothThreads) {
            AddCase(
                {"composite/zoom" + std::to_string(zoom), "1920x1080", "ours", threads,
                 double{seen.width * 1.0} * seen.height},
                [=] {
                    const auto view = CopyOf(CutOut(BackdropPicture(12), 0, 0, kView.width, kView.height));
                    const CPackedDib& photo = PhotoPicture(12);
                    return [=, &photo] { CompositeWeighted(ViewOf(*view), {0, 0}, photo, {0, 0}, 0, zoom); };
                });
        }
    }
}

/// A picture as the objects panel shows it.
void AddThumbnail(int width)
{
    const auto scale = static_cast<uint16_t>(32768 * width / 4000);
    const std::string size = std::to_string(width) + "-wide";
    AddCase({"composite/thumbnail", size, "ours", Threads::One, 0}, [=] {
        const auto view = CopyOf(CutOut(BackdropPicture(12), 0, 0, width, width * 3 / 4));
        const CPackedDib& photo = PhotoPicture(12);
        return [=, &photo] { DrawScaledWeighted(ViewOf(*view), photo, {0, 0}, scale); };
    });
    AddCase({"composite/thumbnail", size, "qt-premultiplied", Threads::One, 0}, [=] {
        const auto view = CopyOf(CutOut(BackdropPicture(12), 0, 0, width, width * 3 / 4));
        const auto photo = std::make_shared<CPackedDib>(Premultiplied(PhotoPicture(12)));
        return [=] {
            QImage to = QtImageOf(*view, QImage::Format_RGB32);
            QPainter(&to).drawImage(QRect(0, 0, width, width * 3 / 4),
                                    QtImageOf(std::as_const(*photo), QImage::Format_ARGB32_Premultiplied));
        };
    });
}

const bool kRegistered = [] {
    for (const int megapixels : kMegapixels)
        AddOverOpaque(megapixels);
    AddView();
    for (const int zoom : {2, 8, -2, -5})
        AddZoomedView(zoom);
    AddOverWithAlpha(4);
    AddFlatten();
    AddZoom();
    for (const int width : {100, 500, 2000})
        AddThumbnail(width);
    return true;
}();

} // namespace
