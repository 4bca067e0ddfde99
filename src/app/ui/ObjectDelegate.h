// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStyledItemDelegate>

class CObjectListModel;
class CPicObject;

/// Where the parts of an object's row stand.
struct ObjectRowLayout {
    QRect eye;
    QRect lock;
    QRect thumbnail;
    QRect name;
    QRect details; ///< empty without details
};

/// Draws an object's row: eye, lock, thumbnail, name and, below it, place, size and opacity.
class CObjectDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    explicit CObjectDelegate(CObjectListModel& model, QObject* parent);

    /// Edge of a thumbnail, in pixels of the desktop.
    void SetThumbnailSize(int size) { m_thumbnailSize = size; }
    void SetShowsDetails(bool showsDetails) { m_showsDetails = showsDetails; }
    [[nodiscard]] ObjectRowLayout LayOut(const QRect& row, const QFontMetrics& font) const;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    [[nodiscard]] QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                        const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;

private:
    CObjectListModel& m_model;
    int m_thumbnailSize = 32;
    bool m_showsDetails = true;
};
