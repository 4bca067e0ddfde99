// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/ui/SavePreview.h"

#include "fileio/SinglePicture.h"
#include "model/Compositing.h"
#include "platform/ui/PictureView.h"
#include "platform/ui/QtPicture.h"
#include "platform/ui/QtText.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLocale>
#include <QStyle>

namespace {

constexpr QSize kViewSize(168, 112);
/// From a change to the trial: a slider on its way tries no more often.
constexpr int kPauseMs = 120;

} // namespace

CSavePreview::CSavePreview(const CObjectCanvas& canvas, const SaveFormatRow& format, QWidget* panel,
                           QWidget* parent)
    : QWidget(parent), m_format(format), m_frame(std::make_shared<Frame>()),
      m_before(new CPictureView(CPictureView::Scaling::Actual)),
      m_after(new CPictureView(CPictureView::Scaling::Actual)), m_size(new QLabel), m_warning(new QLabel),
      m_losses(new QLabel), m_job([this](const Outcome& outcome) { ShowOutcome(outcome); })
{
    CPackedDib frame = Flatten(canvas);
    m_before->SetImage(ToQImage(frame));
    m_frame->facts = FactsOf(canvas);
    // For writers that flatten what they get.
    m_frame->canvas.frameDelay = canvas.frameDelay;
    // Without a frame the trial fails.
    [[maybe_unused]] const bool hasFrame = AdoptSinglePicture(m_frame->canvas, std::move(frame));

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(panel, 0, 0, 3, 1, Qt::AlignTop);
    grid->setColumnStretch(0, 1);
    const struct {
        CPictureView* view;
        Str title;
    } parts[] = {{m_before, Str::BeforeSaving}, {m_after, Str::AfterSaving}};
    int column = 1;
    for (const auto& part : parts) {
        auto* title = new QLabel(ToQString(part.title));
        part.view->setMinimumSize(kViewSize);
        part.view->setAccessibleName(title->text());
        grid->addWidget(title, 0, column);
        grid->addWidget(part.view, 1, column);
        ++column;
    }
    grid->addWidget(m_size, 2, 1, 1, 2);
    const int side = style()->pixelMetric(QStyle::PM_SmallIconSize);
    m_warning->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(side));
    m_warning->setVisible(false);
    m_losses->setMinimumHeight(side);
    auto* line = new QHBoxLayout;
    line->addWidget(m_warning);
    line->addWidget(m_losses, 1);
    grid->addLayout(line, 3, 0, 1, 3);
    connect(m_before, &CPictureView::Dragged, m_after, &CPictureView::SetCenter);
    connect(m_after, &CPictureView::Dragged, m_before, &CPictureView::SetCenter);

    m_pause.setSingleShot(true);
    m_pause.setInterval(kPauseMs);
    connect(&m_pause, &QTimer::timeout, this, &CSavePreview::Try);
}

void CSavePreview::Show(const CSettings& settings, const SaveAsOptions& options)
{
    m_settings = settings;
    m_options = options;
    m_size->setText(ToQString(Text(Str::FileSize, Text(Str::Computing))));
    m_pause.start();
}

void CSavePreview::Try()
{
    m_job.Start([frame = m_frame, &format = m_format, settings = m_settings,
                 options = m_options](const std::stop_token& token) {
        Outcome outcome;
        if (token.stop_requested())
            return outcome;
        if (!frame->hasPixelFacts && !frame->canvas.objects.IsEmpty()) {
            AddPixelFacts(frame->facts, frame->canvas.objects.Top()->image->Dib());
            frame->hasPixelFacts = true;
        }
        outcome.losses = DescribeLosses(frame->facts, LimitsOf(format, options, settings));
        outcome.trial = TrySave(frame->canvas, format, options, settings);
        if (outcome.trial)
            outcome.after = ToQImage(outcome.trial->picture);
        return outcome;
    });
}

void CSavePreview::ShowOutcome(const Outcome& outcome)
{
    m_losses->setText(ToQString(outcome.losses));
    m_warning->setVisible(!outcome.losses.empty());
    if (outcome.trial) {
        const QString size = locale().formattedDataSize(static_cast<qint64>(outcome.trial->fileBytes));
        m_size->setText(ToQString(Text(Str::FileSize, ToUtf8(size))));
        m_after->SetImage(outcome.after);
    } else {
        m_size->clear();
        m_after->SetText(ToQString(Str::CannotBeSaved));
    }
    Q_EMIT Shown();
}
