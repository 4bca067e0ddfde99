// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "journal/JournalFolder.h"
#include "journal/Recovery.h"

#include <QDialog>

#include <functional>
#include <memory>
#include <vector>

class QListWidget;
class QPushButton;

/// A document that a process has left behind when it died.
struct LeftBehind {
    RecoveredDocument recovered;
    std::filesystem::path journal;
};

/// All that dead processes have left behind in `parent` and not saved; `folders` holds their locks. Journals
/// of documents without unsaved changes are removed.
[[nodiscard]] std::vector<LeftBehind>
FindLeftBehind(const std::vector<std::unique_ptr<CJournalFolder>>& folders, AppServices& services);

/// Lists documents that were left behind, with their thumbnails, to be recovered or discarded. What is
/// neither is asked for again at the next start.
class CRecoverDialog final : public QDialog {
    Q_OBJECT

public:
    /// recover: opens one. confirm: asks a Yes/No question.
    CRecoverDialog(std::vector<LeftBehind> documents, std::function<void(LeftBehind)> recover,
                   std::function<bool(const QString&)> confirm, QWidget* parent);
    ~CRecoverDialog() override;

private:
    void Fill();
    void RecoverSelected();
    void DiscardSelected();
    /// Calls take for each selected document and forgets it; closes when none is left.
    void TakeSelected(const std::function<void(LeftBehind)>& take);

    std::vector<LeftBehind> m_documents; ///< in the order of the rows
    std::function<void(LeftBehind)> m_recover;
    std::function<bool(const QString&)> m_confirm;
    QListWidget* m_list;
    QPushButton* m_recoverButton;
    QPushButton* m_discardButton;
};
