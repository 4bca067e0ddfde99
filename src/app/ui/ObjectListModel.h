// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/PixoluneDoc.h"

#include <QAbstractListModel>
#include <QImage>

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
        return m_rows[static_cast<size_t>(row)].object;
    }
    /// A row's picture, reduced to fit a square of that many pixels, over the checkerboard; null without one.
    /// Made when it is first asked for, and again when the picture has changed.
    [[nodiscard]] const QImage& Thumbnail(int row, int edge);
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
    /// pixels: what the image was made of; another address or another edge make it outdated.
    struct Row {
        Ref<CPicObject> object;
        QImage thumbnail;
        const void* pixels = nullptr;
        int edge = 0;
    };

    void OnFrameChanged(const Rect& rect) override;
    void OnObjectsChanged() override { Reload(); }
    void OnObjectSelectionChanged() override { Q_EMIT SelectionOutdated(); }
    void Reload();
    /// Forgets the thumbnails of what the frame has changed.
    void DropOutdated();
    /// Takes over what the present rows hold of the same objects.
    void KeepThumbnails(std::vector<Row>& rows);

    CPixoluneDoc* m_document = nullptr;
    bool m_showsAll = true;
    std::vector<Row> m_rows; ///< topmost first
    Rect m_changed;          ///< of the frame, since thumbnails were last dropped
};
