// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/ui/FilePreviewPane.h"

#include "platform/ui/FrameTime.h"
#include "platform/ui/PictureView.h"
#include "platform/ui/QtPicture.h"
#include "platform/ui/QtText.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QLabel>
#include <QLocale>
#include <QVBoxLayout>

namespace {

constexpr QSize kViewSize(224, 176);
/// A file that is only passed over is not read.
constexpr int kPauseMs = 150;

constexpr Str kPartsOf[] = {Str::PreviewObjects, Str::PreviewObjects, Str::PreviewFrames, Str::PreviewImages};

constexpr Str kFailures[] = {Str::PreviewUnreadable, Str::PreviewUnknownFormat, Str::PreviewTooLong,
                             Str::PreviewUnreadable};

QString Describe(const FilePreview& preview)
{
    QStringList lines(TranslatedQString(preview.format->name));
    lines += ToQString(Text(Str::PreviewSize, preview.size.width, preview.size.height));
    QStringList kind;
    if (preview.depth > 0)
        kind += ToQString(Text(Str::PreviewDepth, std::to_string(preview.depth)));
    if (!preview.isOpaque)
        kind += ToQString(Str::PreviewTransparent);
    lines += kind.join(QLatin1String(", "));
    if (preview.format->contents != FileContents::Picture) {
        const std::string count = std::to_string(preview.parts) + (preview.hasMore ? "+" : "");
        lines += ToQString(Text(kPartsOf[static_cast<size_t>(preview.format->contents)], count));
    }
    lines += QLocale().formattedDataSize(static_cast<qint64>(preview.fileBytes));
    return lines.join(QLatin1Char('\n'));
}

} // namespace

CFilePreviewPane::CFilePreviewPane(CSettings& settings, QWidget* parent)
    : QWidget(parent), m_settings(settings), m_view(new CPictureView(CPictureView::Scaling::Fit)),
      m_facts(new QLabel), m_job([this](Outcome outcome) { ShowOutcome(std::move(outcome)); })
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_view->setMinimumSize(kViewSize);
    m_view->setAccessibleName(ToQString(Str::Preview));
    layout->addWidget(m_view, 1);
    // Room for all lines, so that nothing moves from file to file.
    constexpr int kLines = 5;
    m_facts->setMinimumHeight(kLines * m_facts->fontMetrics().lineSpacing());
    m_facts->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    layout->addWidget(m_facts);
    m_showPreview = AddBox(Str::ShowPreview, Setting::PreviewPic);
    m_play = AddBox(Str::PlayAnimations, Setting::AutoPlay);
    connect(m_showPreview, &QCheckBox::toggled, this, [this] { Show(m_path); });
    connect(m_play, &QCheckBox::toggled, this, &CFilePreviewPane::PlayOrStop);

    m_pause.setSingleShot(true);
    m_pause.setInterval(kPauseMs);
    connect(&m_pause, &QTimer::timeout, this, &CFilePreviewPane::Read);
    connect(&m_steps, &QTimer::timeout, this, &CFilePreviewPane::Step);
}

QCheckBox* CFilePreviewPane::AddBox(Str text, Setting setting)
{
    auto* box = new QCheckBox(ToQString(text));
    box->setChecked(m_settings.IsOn(setting));
    connect(box, &QCheckBox::toggled, this, [this, setting](bool isOn) { m_settings.Set(setting, isOn); });
    layout()->addWidget(box);
    return box;
}

void CFilePreviewPane::Show(const QString& path)
{
    m_path = path;
    m_job.Cancel();
    ShowNothing();
    if (m_showPreview->isChecked() && QFileInfo(path).isFile())
        m_pause.start();
}

void CFilePreviewPane::ShowNothing()
{
    m_pause.stop();
    m_steps.stop();
    m_pictures.clear();
    m_view->SetText(QString());
    m_facts->clear();
}

void CFilePreviewPane::Read()
{
    const QSize pixels = m_view->size() * devicePixelRatioF();
    m_job.Start([path = ToPath(m_path), box = Size{pixels.width(), pixels.height()}](std::stop_token stop) {
        Outcome outcome;
        outcome.preview = ReadFilePreview(path, box, std::move(stop));
        for (const CPackedDib& picture : outcome.preview.pictures)
            outcome.pictures.push_back(ToQImage(picture));
        outcome.preview.pictures.clear();
        return outcome;
    });
}

void CFilePreviewPane::ShowOutcome(Outcome outcome)
{
    if (outcome.preview.failure == PreviewFailure::None) {
        m_pictures = std::move(outcome.pictures);
        m_shown = 0;
        m_view->SetImage(m_pictures.front());
        m_facts->setText(Describe(outcome.preview));
        m_steps.setInterval(FrameMilliseconds(outcome.preview.frameDelay));
        PlayOrStop();
    } else {
        m_view->SetText(ToQString(kFailures[static_cast<size_t>(outcome.preview.failure)]));
    }
    Q_EMIT Shown();
}

void CFilePreviewPane::PlayOrStop()
{
    if (m_play->isChecked() && m_pictures.size() > 1)
        m_steps.start();
    else
        m_steps.stop();
}

void CFilePreviewPane::Step()
{
    m_shown = (m_shown + 1) % m_pictures.size();
    m_view->SetImage(m_pictures[m_shown]);
}
