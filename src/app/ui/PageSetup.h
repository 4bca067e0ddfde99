// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPageLayout>
#include <QPointF>
#include <QRectF>

class QSettings;

/// How the frame is put on paper.
struct PageSetup {
    QPageLayout page;       ///< paper, orientation and margins, in millimetres
    bool fitsPage = true;   ///< as large as the margins allow; otherwise by the resolution
    int resolution = 96;    ///< pixels per inch
    bool isCentered = true; ///< otherwise by the offset
    QPointF offset;         ///< from the top left corner inside the margins, in millimetres

    /// What was set up last, or a sheet of the country's usual paper.
    [[nodiscard]] static PageSetup Load(const QSettings& configuration);
    void Save(QSettings& configuration) const;
};

inline constexpr int kMinResolution = 10;
inline constexpr int kMaxResolution = 2400;

/// Where the frame stands on each page, in millimetres from the top left corner inside the margins. One
/// page, or as many as a frame at actual size needs, row by row; then it starts in the first one's corner.
/// picture: pixels.
[[nodiscard]] QList<QRectF> FrameOnPages(QSizeF picture, const PageSetup& setup);
