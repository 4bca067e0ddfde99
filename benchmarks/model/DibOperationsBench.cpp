// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/DibOperations.h"
#include "support/Cases.h"
#include "support/Inputs.h"
#include "support/Peers.h"

#include <QPainter>

#include <opencv2/imgproc.hpp>

#include <memory>

namespace {

constexpr Size kView{1920, 1080};

void AddCheckerboard()
{
    const std::string operation = "picture/checkerboard";
    const double pixels = double{kView.width} * kView.height;
    const auto makeView = [] {
        return std::make_shared<CPackedDib>(CPackedDib::Create(kView.width, kView.height, 32));
    };
    AddCase({operation, "1920x1080", "ours", Threads::One, pixels}, [=] {
        const auto view = makeView();
        return [=] { DrawCheckerboard(ViewOf(*view), {255, 255, 255}, {204, 204, 204}, {3, 5}); };
    });
    AddCase({operation, "1920x1080", "qt", Threads::One, pixels}, [=] {
        const auto view = makeView();
        QImage squares(16, 16, QImage::Format_RGB32);
        squares.fill(Qt::white);
        QPainter painter(&squares);
        painter.fillRect(8, 0, 8, 8, Qt::lightGray);
        painter.fillRect(0, 8, 8, 8, Qt::lightGray);
        painter.end();
        return [=] {
            QImage to = QtImageOf(*view, QImage::Format_RGB32);
            QPainter(&to).fillRect(0, 0, kView.width, kView.height, QBrush(squares));
        };
    });
}

void AddOpaqueBounds()
{
    AddCase({"picture/opaque-bounds", "12MP", "ours", Threads::One, PixelsOf(12)}, [] {
        const CPackedDib& art = FlatArtPicture(12);
        return [&art] { (void)OpaqueBounds(art); };
    });
}

void AddConversion()
{
    const auto makeSource = [](int bitCount) {
        const CPackedDib& photo = BackdropPicture(12);
        const auto dib =
            std::make_shared<CPackedDib>(CPackedDib::Create(photo.Width(), photo.Height(), bitCount));
        for (size_t at = 0; at < dib->Bits().size(); ++at)
            dib->Bits()[at] = photo.Bits()[at];
        for (size_t i = 0; i < dib->ColourTable().size(); ++i)
            dib->ColourTable()[i].green = static_cast<uint8_t>(i);
        return dib;
    };
    for (const int bitCount : {1, 8, 16, 24}) {
        const std::string operation = "picture/convert-" + std::to_string(bitCount) + "-to-32";
        for (const Threads threads : kBothThreads) {
            AddCase({operation, "12MP", "ours", threads, PixelsOf(12)}, [=] {
                const auto dib = makeSource(bitCount);
                return [=] { (void)ConvertTo32Bits(*dib); };
            });
        }
        AddCase({operation, "12MP", "qt", Threads::One, PixelsOf(12)}, [=] {
            const auto dib = makeSource(bitCount);
            const QImage::Format format = bitCount == 1    ? QImage::Format_Mono
                                          : bitCount == 8  ? QImage::Format_Indexed8
                                          : bitCount == 16 ? QImage::Format_RGB555
                                                           : QImage::Format_BGR888;
            return [=] {
                QImage from = QtImageOf(std::as_const(*dib), format);
                if (bitCount <= 8)
                    from.setColorTable(QList<QRgb>(1 << bitCount, 0xFF336699u));
                (void)from.convertToFormat(QImage::Format_RGB32);
            };
        });
    }
    AddCase({"picture/convert-24-to-32", "12MP", "opencv", Threads::One, PixelsOf(12)}, [=] {
        const auto dib = makeSource(24);
        return [=] {
            const cv::Mat from(dib->Height(), dib->Width(), CV_8UC3, dib->Bits().data(), dib->Stride());
            cv::Mat to;
            cv::cvtColor(from, to, cv::COLOR_BGR2BGRA);
        };
    });
}

const bool kRegistered = [] {
    AddCheckerboard();
    AddOpaqueBounds();
    AddConversion();
    return true;
}();

} // namespace
