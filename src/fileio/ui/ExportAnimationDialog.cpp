// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/ui/ExportAnimationDialog.h"

#include "fileio/ui/DialogFilters.h"
#include "fileio/ui/FileDialogParts.h"
#include "platform/ui/DialogPlacement.h"
#include "platform/ui/FrameTime.h"
#include "platform/ui/PictureView.h"
#include "platform/ui/QtPicture.h"
#include "platform/ui/QtText.h"

#include <QButtonGroup>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QRadioButton>
#include <QSpinBox>

#include <algorithm>

namespace {

constexpr QSize kViewSize(208, 144);

QStringList Filters()
{
    QStringList filters;
    for (const AnimationFormatRow& format : AnimationFormatTable())
        filters += FilterOf(format.name, format.extensions);
    return filters;
}

} // namespace

CExportAnimationDialog::CExportAnimationDialog(const CObjectCanvas& canvas, const CSettings& settings,
                                               const QString& folder, const QString& name, QWidget* parent)
    : QFileDialog(parent, ToQString(Str::ExportAnimation), folder), m_frames(canvas),
      m_pictures(m_frames.Count())
{
    // The window system's own dialog has no room for the options.
    setOption(DontUseNativeDialog);
    FitColumns(*this);
    setAcceptMode(AcceptSave);
    setFileMode(AnyFile);
    setNameFilters(Filters());
    if (auto* grid = qobject_cast<QGridLayout*>(layout())) {
        grid->addWidget(CreatePanel(DefaultAnimationOptions(canvas)), grid->rowCount(), 0, 1,
                        grid->columnCount());
    }
    // The options are not to take their room from the list of files.
    FitOnScreen(*this);
    connect(this, &QFileDialog::filterSelected, this, &CExportAnimationDialog::OnFilterSelected);
    OnFilterSelected(selectedNameFilter());
    if (!name.isEmpty())
        selectFile(name + QLatin1Char('.') + defaultSuffix());

    connect(&m_steps, &QTimer::timeout, this, [this] { ShowFrame((m_shown + 1) % m_frames.Count()); });
    OnDelayChanged();
    ShowFrame(0);
    if (settings.IsOn(Setting::AutoPlay) && m_frames.Count() > 1)
        m_steps.start();
}

QWidget* CExportAnimationDialog::CreatePanel(const AnimationOptions& options)
{
    m_plays = new QSpinBox;
    m_plays->setRange(0, kMostPlays);
    m_plays->setSpecialValueText(ToQString(Str::WithoutEnd));
    m_plays->setValue(options.plays);
    m_delay = new QSpinBox;
    m_delay->setRange(0, kMostFrameDelay);
    m_delay->setSuffix(ToQString(Str::HundredthsOfASecond));
    m_delay->setAccelerated(true);
    m_delay->setValue(options.delay);
    connect(m_delay, &QSpinBox::valueChanged, this, &CExportAnimationDialog::OnDelayChanged);
    m_length = new QLabel;

    auto* form = new QFormLayout;
    form->addRow(ToQString(Str::TimesToPlay), m_plays);
    form->addRow(ToQString(Str::DelayOfFrames), m_delay);
    form->addRow(m_length);
    auto* column = new QVBoxLayout;
    column->addLayout(form);
    column->addWidget(CreatePaletteBox());
    column->addStretch();

    m_view = new CPictureView(CPictureView::Scaling::Fit);
    m_view->setMinimumSize(kViewSize);
    m_view->setAccessibleName(ToQString(Str::Preview));
    auto* panel = new QWidget;
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    row->addLayout(column);
    row->addWidget(m_view, 1);
    return panel;
}

QWidget* CExportAnimationDialog::CreatePaletteBox()
{
    m_paletteBox = new QGroupBox(ToQString(Str::AnimationPalette));
    m_palette = new QButtonGroup(m_paletteBox);
    auto* column = new QVBoxLayout(m_paletteBox);
    const struct {
        Str text;
        AnimationPalette palette;
    } rows[] = {{Str::OnePaletteForAll, AnimationPalette::OneForAll},
                {Str::OnePalettePerFrame, AnimationPalette::OnePerFrame}};
    for (const auto& row : rows) {
        auto* button = new QRadioButton(ToQString(row.text));
        m_palette->addButton(button, static_cast<int>(row.palette));
        column->addWidget(button);
    }
    m_palette->button(static_cast<int>(AnimationPalette::OneForAll))->setChecked(true);
    return m_paletteBox;
}

AnimationOptions CExportAnimationDialog::Options() const
{
    return {m_plays->value(), m_delay->value(), static_cast<AnimationPalette>(m_palette->checkedId())};
}

/// The proposed name gets the ending of the format.
void CExportAnimationDialog::OnFilterSelected(const QString& filter)
{
    const auto row = static_cast<size_t>(std::max<qsizetype>(nameFilters().indexOf(filter), 0));
    const AnimationFormatRow& format = AnimationFormatTable()[row];
    const QString ending = ToQString(format.extensions).section(QLatin1Char(' '), 0, 0).toLower();
    setDefaultSuffix(ending);
    m_paletteBox->setEnabled(format.hasPalette);
    const QFileInfo chosen(selectedFiles().value(0));
    if (!chosen.completeBaseName().isEmpty() && !chosen.isDir())
        selectFile(chosen.completeBaseName() + QLatin1Char('.') + ending);
}

void CExportAnimationDialog::OnDelayChanged()
{
    m_steps.setInterval(FrameMilliseconds(m_delay->value()));
    const double seconds = static_cast<double>(m_frames.Count()) * m_delay->value() / 100;
    m_length->setText(
        ToQString(Str::AnimationLength).arg(m_frames.Count()).arg(QLocale().toString(seconds, 'f', 2)));
}

void CExportAnimationDialog::ShowFrame(size_t index)
{
    m_shown = index;
    QImage& picture = m_pictures[index];
    if (picture.isNull()) {
        picture = ToQImage(m_frames.Frame(index));
        const QSize room = m_view->size().expandedTo(kViewSize) * devicePixelRatioF();
        if (picture.width() > room.width() || picture.height() > room.height())
            picture = picture.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    }
    m_view->SetImage(picture);
}
