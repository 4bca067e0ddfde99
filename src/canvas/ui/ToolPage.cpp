// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ui/ToolPage.h"

#include "platform/transform/ColourFill.h"
#include "platform/ui/QtPicture.h"
#include "platform/ui/QtText.h"
#include "platform/ui/ValueControl.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPainter>
#include <QToolButton>

#include <algorithm>

namespace {

using Kind = ToolPageRow::Kind;

constexpr ToolPageRow kSelectionPage[] = {
    {Kind::Number, Str::Similarity, Setting::Similarity, 0, 255},
    {Kind::Flag, Str::OnlyConnectedPixels, Setting::ConnectedPixelsMagicWand},
};

constexpr ToolPageRow kPencilPage[] = {
    {Kind::Number, Str::LineWidth, Setting::PaintLineWidth, 1, 50},
    {Kind::Number, Str::SmoothDegree, Setting::LineSmoothDegree, 0, 100},
    {Kind::Number, Str::TransparencyLabel, Setting::LineOpacity, 0, 255},
    {Kind::Flag, Str::RoundCap, Setting::PaintRoundCap},
    {Kind::Flag, Str::StraightLine, Setting::PaintBeeline},
    {Kind::Flag, Str::AllowTransparentAreas, Setting::AllowPaintTransparence},
};

constexpr ToolPageRow kErasePage[] = {
    {Kind::Number, Str::LineWidth, Setting::EraseLineWidth, 1, 50},
    {Kind::Number, Str::SmoothDegree, Setting::EraseSmoothDegree, 0, 100},
    {Kind::Number, Str::TransparencyLabel, Setting::EraseTransparence, 0, 255},
    {Kind::Flag, Str::RoundCap, Setting::EraseRoundCap},
    {Kind::Flag, Str::StraightLine, Setting::EraseBeeline},
};

constexpr ToolPageRow kFloodFillPage[] = {
    {Kind::Number, Str::TransparencyLabel, Setting::FloodOpacity, 0, 255},
    {Kind::Number, Str::Similarity, Setting::FloodSimilarity, 0, 100},
    {Kind::Flag, Str::FloodConnectedPixels, Setting::FloodAdjacentArea},
    {Kind::Flag, Str::FloodTransparentAreas, Setting::FloodTransparence},
};

/// Rectangles have a row more than the other shapes: it stands last.
constexpr ToolPageRow kShapePage[] = {
    {Kind::Number, Str::TransparencyLabel, Setting::ShapeOpacity, 0, 255},
    {Kind::Number, Str::LineWidth, Setting::PaintShapeWidth, 1, 50},
    {Kind::Flag, Str::FillInside, Setting::FillInsideShape},
    {Kind::Gradient, Str::Gradient, Setting::FillShapeMode, 0, 5},
    {Kind::Number, Str::RoundCorner, Setting::RoundRadius, 0, 50},
};

constexpr int kSwatch = 22;

constexpr Str kFillNames[] = {Str::FillSingleColor, Str::FillLeftToRight,   Str::FillTopToBottom,
                              Str::FillDiagonal,    Str::FillOtherDiagonal, Str::FillFromCenter};

/// What a fill of that mode looks like; null when memory runs out.
QPixmap FillSample(const ColourFill& fill, qreal ratio)
{
    const int side = static_cast<int>(kSwatch * ratio);
    CPackedDib coverage = CPackedDib::Create(side, side, 8);
    if (coverage.IsEmpty())
        return {};
    std::ranges::fill(coverage.Bits(), uint8_t{255});
    QPixmap pixmap = QPixmap::fromImage(ToQImage(ColourCoverage(coverage, fill)));
    pixmap.setDevicePixelRatio(ratio);
    QPainter painter(&pixmap);
    painter.setPen(QColor(0, 0, 0, 90));
    painter.drawRect(QRectF(0.5, 0.5, kSwatch - 1, kSwatch - 1));
    return pixmap;
}

} // namespace

std::span<const ToolPageRow> ToolPageRows(ToolMode mode)
{
    switch (mode) {
    case ToolMode::RectangularSelection:
    case ToolMode::EllipticalSelection:
    case ToolMode::LassoSelection:
    case ToolMode::MagicWandSelection:
        return kSelectionPage;
    case ToolMode::Pencil:
        return kPencilPage;
    case ToolMode::Erase:
        return kErasePage;
    case ToolMode::FloodFill:
        return kFloodFillPage;
    case ToolMode::Rectangle:
        return kShapePage;
    case ToolMode::Ellipse:
    case ToolMode::Polygon:
        return std::span(kShapePage).first(std::size(kShapePage) - 1);
    default:
        return {};
    }
}

CToolPage::CToolPage(CSettings& settings, std::span<const ToolPageRow> rows, QWidget* parent)
    : QWidget(parent), m_settings(settings)
{
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setColumnStretch(1, 1);
    for (const ToolPageRow& row : rows) {
        if (row.kind == Kind::Number)
            AddNumber(row);
        else if (row.kind == Kind::Flag)
            AddFlag(row);
        else
            AddGradients(row);
    }
    Refresh();
}

void CToolPage::Refresh()
{
    for (const std::function<void()>& refresh : m_refreshers)
        refresh();
}

void CToolPage::AddNumber(const ToolPageRow& row)
{
    auto* grid = static_cast<QGridLayout*>(layout());
    const QString label = ToQString(row.label);
    auto* edit = new CValueControl({row.minimum, row.maximum, (row.maximum - row.minimum) / 4}, row.minimum);
    edit->SetName(label);
    const int line = grid->rowCount();
    grid->addWidget(new QLabel(label), line, 0);
    grid->addWidget(edit, line, 1);
    connect(edit, &CValueControl::ValueEdited, this,
            [this, setting = row.setting](int value) { m_settings.Set(setting, value); });
    m_refreshers.emplace_back(
        [this, edit, setting = row.setting] { edit->SetValue(m_settings.Get(setting)); });
}

void CToolPage::AddFlag(const ToolPageRow& row)
{
    auto* grid = static_cast<QGridLayout*>(layout());
    auto* box = new QCheckBox(ToQString(row.label));
    grid->addWidget(box, grid->rowCount(), 0, 1, 2);
    connect(box, &QCheckBox::toggled, this,
            [this, setting = row.setting](bool on) { m_settings.Set(setting, on); });
    m_refreshers.emplace_back(
        [this, box, setting = row.setting] { box->setChecked(m_settings.IsOn(setting)); });
}

void CToolPage::AddGradients(const ToolPageRow& row)
{
    auto* grid = static_cast<QGridLayout*>(layout());
    auto* box = new QGroupBox(ToQString(row.label));
    auto* buttons = new QHBoxLayout(box);
    buttons->setSpacing(2);
    auto* group = new QButtonGroup(box);
    for (int mode = row.minimum; mode <= row.maximum; ++mode) {
        auto* button = new QToolButton;
        button->setCheckable(true);
        button->setIconSize({kSwatch, kSwatch});
        button->setAutoRaise(true);
        button->setToolTip(ToQString(kFillNames[mode]));
        button->setAccessibleName(button->toolTip());
        group->addButton(button, mode);
        buttons->addWidget(button);
    }
    buttons->addStretch();
    grid->addWidget(box, grid->rowCount(), 0, 1, 2);
    connect(group, &QButtonGroup::idClicked, this,
            [this, setting = row.setting](int mode) { m_settings.Set(setting, mode); });
    m_refreshers.emplace_back([this, group, setting = row.setting] {
        const auto first = static_cast<uint32_t>(m_settings.Get(Setting::PaintForeColor));
        const auto second = static_cast<uint32_t>(m_settings.Get(Setting::PaintBackgndColor));
        for (QAbstractButton* button : group->buttons())
            button->setIcon(FillSample({first, second, group->id(button)}, devicePixelRatioF()));
        if (QAbstractButton* button = group->button(m_settings.Get(setting)))
            button->setChecked(true);
    });
}
