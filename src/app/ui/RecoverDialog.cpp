// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/RecoverDialog.h"

#include "model/Compositing.h"
#include "platform/ui/HelpPage.h"
#include "platform/ui/QtPicture.h"
#include "platform/ui/QtText.h"

#include <QDateTime>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include <system_error>

namespace {

constexpr QSize kThumbnail(96, 72);

/// The frame in the middle of a transparent picture, so that all rows are as high.
QIcon ThumbnailOf(const CPixoluneDoc& document, qreal ratio)
{
    QPixmap pixmap(kThumbnail * ratio);
    pixmap.fill(Qt::transparent);
    const QImage frame = ToQImage(Flatten(document.Canvas()));
    if (!frame.isNull()) {
        const QImage small = frame.scaled(pixmap.size(), Qt::KeepAspectRatio, Qt::SmoothTransformation);
        QPainter(&pixmap).drawImage((pixmap.width() - small.width()) / 2,
                                    (pixmap.height() - small.height()) / 2, small);
    }
    pixmap.setDevicePixelRatio(ratio);
    return QIcon(pixmap);
}

} // namespace

std::vector<LeftBehind> FindLeftBehind(const std::vector<std::unique_ptr<CJournalFolder>>& folders,
                                       AppServices& services)
{
    std::vector<LeftBehind> found;
    for (const auto& folder : folders) {
        for (const std::filesystem::path& journal : folder->Journals()) {
            std::optional<RecoveredDocument> recovered = RecoverDocument(journal, services);
            if (recovered && recovered->document->IsModified()) {
                found.push_back({std::move(*recovered), journal});
                continue;
            }
            std::error_code ignored;
            std::filesystem::remove(journal, ignored);
        }
    }
    return found;
}

CRecoverDialog::CRecoverDialog(std::vector<LeftBehind> documents, std::function<void(LeftBehind)> recover,
                               std::function<bool(const QString&)> confirm, QWidget* parent)
    : QDialog(parent), m_documents(std::move(documents)), m_recover(std::move(recover)),
      m_confirm(std::move(confirm)), m_list(new QListWidget)
{
    SetHelpPage(*this, QStringLiteral("recover"));
    setWindowTitle(ToQString(Str::RecoverDocuments));
    auto* note = new QLabel(ToQString(Str::RecoverNote));
    note->setWordWrap(true);
    m_list->setIconSize(kThumbnail);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setAccessibleName(ToQString(Str::RecoverDocuments));
    m_list->setMinimumSize(420, 260);

    auto* buttons = new QDialogButtonBox;
    m_recoverButton = buttons->addButton(ToQString(Str::Recover), QDialogButtonBox::AcceptRole);
    m_discardButton = buttons->addButton(ToQString(Str::Discard), QDialogButtonBox::DestructiveRole);
    auto* later = buttons->addButton(ToQString(Str::RecoverLater), QDialogButtonBox::RejectRole);
    const struct {
        QPushButton* button;
        Str tip;
    } tips[] = {{m_recoverButton, Str::RecoverTip},
                {m_discardButton, Str::DiscardTip},
                {later, Str::RecoverLaterTip}};
    for (const auto& row : tips)
        row.button->setToolTip(ToQString(row.tip));
    m_recoverButton->setDefault(true);
    connect(m_recoverButton, &QPushButton::clicked, this, &CRecoverDialog::RecoverSelected);
    connect(m_discardButton, &QPushButton::clicked, this, &CRecoverDialog::DiscardSelected);
    connect(later, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_list, &QListWidget::itemSelectionChanged, this, [this] {
        const bool isAny = !m_list->selectedItems().isEmpty();
        m_recoverButton->setEnabled(isAny);
        m_discardButton->setEnabled(isAny);
    });

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(note);
    layout->addWidget(m_list);
    layout->addWidget(buttons);
    Fill();
}

CRecoverDialog::~CRecoverDialog() = default;

void CRecoverDialog::Fill()
{
    for (const LeftBehind& left : m_documents) {
        const CPixoluneDoc& document = *left.recovered.document;
        const QDateTime when = QFileInfo(PathToQString(left.journal)).lastModified();
        auto* item = new QListWidgetItem(ThumbnailOf(document, devicePixelRatioF()),
                                         ToQString(document.Title()) + QLatin1Char('\n') +
                                             QLocale().toString(when, QLocale::ShortFormat));
        item->setToolTip(PathToQString(document.Path()));
        m_list->addItem(item);
    }
    m_list->selectAll();
    m_list->setFocus();
}

void CRecoverDialog::TakeSelected(const std::function<void(LeftBehind)>& take)
{
    for (int row = 0; row < m_list->count();) {
        if (!m_list->item(row)->isSelected()) {
            ++row;
            continue;
        }
        delete m_list->takeItem(row);
        const auto place = m_documents.begin() + row;
        LeftBehind taken = std::move(*place);
        m_documents.erase(place);
        take(std::move(taken));
    }
    if (m_documents.empty())
        accept();
}

void CRecoverDialog::RecoverSelected()
{
    TakeSelected(m_recover);
}

void CRecoverDialog::DiscardSelected()
{
    if (!m_confirm(ToQString(Str::DiscardQuestion)))
        return;
    TakeSelected([](const LeftBehind& left) {
        std::error_code ignored;
        std::filesystem::remove(left.journal, ignored);
    });
}
