// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/ui/SavePreview.h"

#include "fileio/AnimationFrames.h"
#include "fileio/FilePreview.h"
#include "fileio/SinglePicture.h"
#include "model/Compositing.h"
#include "platform/ui/FrameTime.h"
#include "platform/ui/PictureView.h"
#include "platform/ui/QtPicture.h"
#include "platform/ui/QtText.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLocale>
#include <QStyle>

#include <algorithm>
#include <iterator>

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
      m_losses(new QLabel), m_job([this](Outcome outcome) { ShowOutcome(std::move(outcome)); })
{
    TakeCanvas(canvas);
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
    m_steps.setInterval(FrameMilliseconds(canvas.frameDelay));
    connect(&m_steps, &QTimer::timeout, this, [this] {
        m_shown = (m_shown + 1) % m_picturesBefore.size();
        ShowPictures();
    });
    ShowPictures();
}

bool CSavePreview::CanShow(const CObjectCanvas& canvas, const SaveFormatRow& format)
{
    if (!LimitsOf(format, {}, {}).keepsFrames)
        return true;
    const int64_t pixels = int64_t{canvas.width} * canvas.height;
    return static_cast<int64_t>(canvas.CountVisible()) * pixels <= kMostPreviewPixels;
}

void CSavePreview::TakeCanvas(const CObjectCanvas& canvas)
{
    m_frame->facts = FactsOf(canvas);
    // For writers that flatten what they get. Without a picture the trial fails.
    m_frame->canvas.frameDelay = canvas.frameDelay;
    const auto take = [this](CPackedDib picture) {
        m_picturesBefore.push_back(ToQImage(picture));
        return AdoptSinglePicture(m_frame->canvas, std::move(picture));
    };
    if (!LimitsOf(m_format, {}, {}).keepsFrames) {
        take(Flatten(canvas));
        return;
    }
    const CAnimationFrames frames(canvas);
    for (size_t index = 0; index < frames.Count(); ++index) {
        if (!take(frames.Frame(index))) {
            m_frame->canvas.objects = {};
            return;
        }
    }
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
            std::ranges::transform(outcome.trial->pictures, std::back_inserter(outcome.after), ToQImage);
        return outcome;
    });
}

void CSavePreview::ShowOutcome(Outcome outcome)
{
    m_losses->setText(ToQString(outcome.losses));
    m_warning->setVisible(!outcome.losses.empty());
    if (outcome.trial) {
        const QString size = locale().formattedDataSize(static_cast<qint64>(outcome.trial->fileBytes));
        m_size->setText(ToQString(Text(Str::FileSize, ToUtf8(size))));
    } else {
        m_size->clear();
    }
    m_picturesAfter = std::move(outcome.after);
    if (m_settings.IsOn(Setting::AutoPlay) && m_picturesBefore.size() > 1)
        m_steps.start();
    ShowPictures();
    if (m_picturesAfter.empty())
        m_after->SetText(ToQString(Str::CannotBeSaved));
    Q_EMIT Shown();
}

void CSavePreview::ShowPictures()
{
    if (m_shown < m_picturesBefore.size())
        m_before->SetImage(m_picturesBefore[m_shown]);
    if (!m_picturesAfter.empty())
        m_after->SetImage(m_picturesAfter[m_shown % m_picturesAfter.size()]);
}
