// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Recover.h"

#include "cli/Quoting.h"
#include "cli/ScriptRunner.h"

int Recover(CSession& session, std::span<const std::filesystem::path> journals)
{
    int status = kAllDone;
    for (const std::filesystem::path& journal : journals) {
        std::optional<RecoveredDocument> recovered = RecoverDocument(journal, session.App().Services());
        if (!recovered) {
            session.Output() << "nothing to recover in " << Quoted(journal.string()) << '\n';
            status = kRefusedOrFailed;
            continue;
        }
        const CPixoluneDoc& document = *recovered->document;
        session.Output() << "recovered " << Quoted(document.Title()) << " undo "
                         << document.History().UndoList().size() << " redo "
                         << document.History().RedoList().size() << " modified " << document.IsModified()
                         << '\n';
        const Ref<CSelectionState> selection = recovered->Selection();
        session.Show(session.App().TakeRecovered(std::move(*recovered), journal));
        if (selection)
            session.View().TakeSelection(selection);
    }
    return status;
}
