// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/RecoverDialog.h"

#include "app/ui/ChildFrame.h"
#include "document/ObjectOperations.h"
#include "ui/UiTest.h"

#include <QListWidget>
#include <QPushButton>

namespace {

/// Leaves journals behind as a process does that dies with two documents, one of them modified.
class CRecoverTest : public CWindowTest {
protected:
    CRecoverTest()
    {
        CPixoluneApp other(m_ui, m_clipboard);
        EXPECT_TRUE(other.KeepJournals(m_alive));
        other.NewDocument();
        CPixoluneDoc* modified = other.NewDocument();
        NewObject(*modified);
        NewObject(*modified);
        modified->Undo();
        other.Journal()->Finish();
        other.Journal()->WaitUntilWritten();
        // A copy has the files but not the lock.
        std::filesystem::copy(m_alive, m_dead, std::filesystem::copy_options::recursive);
    }
    int JournalsLeft() const
    {
        int count = 0;
        for (const auto& file : std::filesystem::recursive_directory_iterator(m_dead))
            count += file.path().extension() == ".journal";
        return count;
    }
    /// Offers recovery and presses the button with the text; false when there was no dialog.
    bool Offer(Str button)
    {
        bool offered = false;
        bool done = false;
        OnNextDialog<CRecoverDialog>([&](CRecoverDialog& dialog) {
            if (done)
                return;
            offered = true;
            EXPECT_EQ(dialog.findChild<QListWidget*>()->count(), 1);
            for (auto* candidate : dialog.findChildren<QPushButton*>()) {
                if (candidate->text() == QString::fromUtf8(Text(button).data()))
                    candidate->click();
            }
        });
        m_window.OfferRecovery(m_dead);
        done = true;
        return offered;
    }

    std::filesystem::path m_alive = m_folder.Path() / "alive";
    std::filesystem::path m_dead = m_folder.Path() / "dead";
};

TEST_F(CRecoverTest, LaterAsksAgainAndRecoverBringsDocumentAndListsBack)
{
    ASSERT_TRUE(Offer(Str::RecoverLater));
    EXPECT_TRUE(m_app.Documents().empty());
    EXPECT_EQ(JournalsLeft(), 1) << "that of the document without changes is gone";

    ASSERT_TRUE(m_app.KeepJournals(m_dead));
    ASSERT_TRUE(Offer(Str::Recover));
    ASSERT_EQ(m_app.Documents().size(), 1u);
    CPixoluneDoc& document = *m_app.Documents().front();
    EXPECT_EQ(document.Title(), "Untitled 2");
    CPixoluneDoc* const fresh = m_app.NewDocument();
    ASSERT_NE(fresh, nullptr);
    EXPECT_EQ(fresh->Title(), "Untitled 3") << "no name is given twice";
    m_app.CloseDocument(fresh);
    EXPECT_TRUE(document.IsModified());
    EXPECT_EQ(document.Canvas().objects.Count(), 2u);
    EXPECT_EQ(document.History().UndoItem().text, "Undo new object");
    EXPECT_EQ(document.History().RedoItem().text, "Redo new object");
    EXPECT_EQ(JournalsLeft(), 1) << "the program goes on with it";
    ASSERT_NE(m_window.ActiveFrame(), nullptr);
    EXPECT_EQ(&m_window.ActiveFrame()->Document(), &document);
    document.SetModified(false);
    m_window.ActiveFrame()->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(JournalsLeft(), 0);
}

TEST_F(CRecoverTest, NoTwoDocumentsHaveOneName)
{
    for (int documents = 0; documents < 2; ++documents)
        m_window.Show(*m_app.NewDocument());
    ASSERT_TRUE(Offer(Str::Recover));
    ASSERT_EQ(m_app.Documents().size(), 3u);
    EXPECT_EQ(m_app.Documents().back()->Title(), "Untitled 3") << "was the second one of another run";
}

TEST_F(CRecoverTest, DiscardRemovesTheJournals)
{
    ASSERT_TRUE(Offer(Str::Discard));
    EXPECT_EQ(JournalsLeft(), 0);
    m_window.OfferRecovery(m_dead); // nothing is left to ask for
}

} // namespace
