// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/PixoluneDoc.h"

#include <QAbstractListModel>

/// The objects of a document as rows, the topmost first. Rows are dragged to change the stacking order and
/// edited to change names; each is one command of the document.
class CObjectListModel final : public QAbstractListModel, private IDocumentObserver {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;
    ~CObjectListModel() override;

    /// None while no document is open.
    void SetDocument(CPixoluneDoc* document);
    [[nodiscard]] CPixoluneDoc* Document() const { return m_document; }
    /// Whether invisible objects have rows as well.
    void SetShowsAll(bool showsAll);

    /// The object of a row that exists.
    [[nodiscard]] const Ref<CPicObject>& ObjectAt(int row) const
    {
        return m_objects[static_cast<size_t>(row)];
    }
    [[nodiscard]] CObjectList ObjectsAt(const QModelIndexList& rows) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    [[nodiscard]] Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }
    [[nodiscard]] QStringList mimeTypes() const override;
    [[nodiscard]] QMimeData* mimeData(const QModelIndexList& indexes) const override;
    bool dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                      const QModelIndex& parent) override;

Q_SIGNALS:
    /// Rows or flags changed; the document's flags say which rows are selected.
    void SelectionOutdated();
    /// What the rows show of the objects' pictures changed.
    void PicturesOutdated();

private:
    void OnFrameChanged(const Rect& /*rect*/) override { Q_EMIT PicturesOutdated(); }
    void OnObjectsChanged() override { Reload(); }
    void OnObjectSelectionChanged() override { Q_EMIT SelectionOutdated(); }
    void Reload();

    CPixoluneDoc* m_document = nullptr;
    bool m_showsAll = true;
    std::vector<Ref<CPicObject>> m_objects; ///< topmost first
};
