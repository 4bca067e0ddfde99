// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/PixoluneDoc.h"

#include "platform/settings/Settings.h"

CPixoluneDoc::CPixoluneDoc(AppServices& services) : m_services(services) {}

CPixoluneDoc::~CPixoluneDoc() = default;

void CPixoluneDoc::Record(std::unique_ptr<CEditCommand> command)
{
    Record(std::move(command), m_services.settings.Get(Setting::UndoMaxTimes));
}

void CPixoluneDoc::Record(std::unique_ptr<CEditCommand> command, int maxTimes)
{
    command->SetDocument(this);
    m_history.Record(std::move(command), maxTimes);
    m_modified = true;
    Notify([this](IDocumentObserver& observer) { observer.OnRecorded(*m_history.PeekUndo()); });
    Notify([](IDocumentObserver& observer) { observer.OnStateChanged(); });
}

void CPixoluneDoc::AddUndone(std::unique_ptr<CEditCommand> command)
{
    command->SetDocument(this);
    m_history.AddUndone(std::move(command));
    Notify([](IDocumentObserver& observer) { observer.OnStateChanged(); });
}

void CPixoluneDoc::WithdrawNewest()
{
    m_history.WithdrawNewest();
    Notify([](IDocumentObserver& observer) { observer.OnHistoryMoved(HistoryMove::Withdrawn); });
    Notify([](IDocumentObserver& observer) { observer.OnStateChanged(); });
}

bool CPixoluneDoc::MoveHistory(bool (CUndoManager::*run)(), HistoryMove move)
{
    Notify([](IDocumentObserver& observer) { observer.OnHistoryWillMove(); });
    if (!(m_history.*run)())
        return false;
    Notify([move](IDocumentObserver& observer) { observer.OnHistoryMoved(move); });
    SetModified(true);
    return true;
}

bool CPixoluneDoc::Undo()
{
    return MoveHistory(&CUndoManager::Undo, HistoryMove::Undone);
}

bool CPixoluneDoc::Redo()
{
    return MoveHistory(&CUndoManager::Redo, HistoryMove::Redone);
}

void CPixoluneDoc::Adopt(CObjectCanvas canvas)
{
    m_history.Clear();
    m_canvas = std::move(canvas);
    NotifyObjectsChanged();
    NotifyObjectSelectionChanged();
    NotifyCanvasSizeChanged();
    SetModified(false);
}

Ref<CRasterImage> CPixoluneDoc::NewImage(CPackedDib dib) const
{
    return MakeShared<CRasterImage>(std::move(dib), m_services.names.Next());
}

void CPixoluneDoc::SetModified(bool modified)
{
    m_modified = modified;
    Notify([](IDocumentObserver& observer) { observer.OnStateChanged(); });
}

void CPixoluneDoc::SetPath(std::filesystem::path path)
{
    m_path = std::move(path);
    Notify([](IDocumentObserver& observer) { observer.OnStateChanged(); });
}

std::string CPixoluneDoc::Title() const
{
    return m_path.empty() ? m_newTitle : m_path.filename().string();
}

void CPixoluneDoc::AddObserver(IDocumentObserver* observer)
{
    m_observers.push_back(observer);
}

void CPixoluneDoc::RemoveObserver(IDocumentObserver* observer)
{
    std::erase(m_observers, observer);
}

template <typename Call> void CPixoluneDoc::Notify(Call call)
{
    // An observer may leave while it is told.
    const std::vector<IDocumentObserver*> told = m_observers;
    for (IDocumentObserver* observer : told)
        call(*observer);
}

void CPixoluneDoc::NotifyFrameChanged(const Rect& rect)
{
    Notify([&](IDocumentObserver& observer) { observer.OnFrameChanged(rect); });
}

void CPixoluneDoc::SetFloating(const FloatingImage& floating, const Rect& touched)
{
    m_floating = floating;
    Notify([&](IDocumentObserver& observer) { observer.OnFloatingChanged(touched); });
}

void CPixoluneDoc::NotifyObjectsChanged()
{
    Notify([](IDocumentObserver& observer) { observer.OnObjectsChanged(); });
}

void CPixoluneDoc::NotifyObjectSelectionChanged()
{
    Notify([](IDocumentObserver& observer) { observer.OnObjectSelectionChanged(); });
}

void CPixoluneDoc::NotifyCanvasSizeChanged()
{
    Notify([](IDocumentObserver& observer) { observer.OnCanvasSizeChanged(); });
}
