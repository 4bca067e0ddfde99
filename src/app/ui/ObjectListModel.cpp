// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/ObjectListModel.h"

#include "canvas/ui/CanvasAccessibility.h"
#include "document/PanelOperations.h"
#include "document/StackingOperations.h"
#include "platform/ui/QtText.h"

#include <QDataStream>
#include <QIODevice>
#include <QMimeData>

namespace {

constexpr QLatin1String kRowsType("application/x-pixolune-object-rows");

} // namespace

CObjectListModel::~CObjectListModel()
{
    SetDocument(nullptr);
}

void CObjectListModel::SetDocument(CPixoluneDoc* document)
{
    if (document == m_document)
        return;
    if (m_document)
        m_document->RemoveObserver(this);
    m_document = document;
    if (m_document)
        m_document->AddObserver(this);
    Reload();
}

void CObjectListModel::SetShowsAll(bool showsAll)
{
    m_showsAll = showsAll;
    Reload();
}

void CObjectListModel::Reload()
{
    std::vector<Ref<CPicObject>> objects;
    if (m_document) {
        for (const Ref<CPicObject>& object : m_document->Canvas().objects) {
            if (m_showsAll || object->visible)
                objects.push_back(object);
        }
        std::ranges::reverse(objects);
    }
    if (objects == m_objects) {
        Q_EMIT dataChanged(index(0), index(rowCount() - 1));
    } else {
        beginResetModel();
        m_objects = std::move(objects);
        endResetModel();
    }
    Q_EMIT SelectionOutdated();
}

CObjectList CObjectListModel::ObjectsAt(const QModelIndexList& rows) const
{
    CObjectList objects;
    for (const QModelIndex& row : rows)
        objects.Append(ObjectAt(row.row()));
    return objects;
}

int CObjectListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_objects.size());
}

QVariant CObjectListModel::data(const QModelIndex& index, int role) const
{
    const Ref<CPicObject>& object = ObjectAt(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
    case Qt::ToolTipRole:
        return object->image ? ToQString(object->image->name) : QString();
    case Qt::AccessibleTextRole:
        return NameObject(*object);
    case Qt::AccessibleDescriptionRole:
        return DescribeObject(*object);
    default:
        return {};
    }
}

bool CObjectListModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    return role == Qt::EditRole && m_document &&
           RenameObject(*m_document, Ref(ObjectAt(index.row())), ToUtf8(value.toString()));
}

Qt::ItemFlags CObjectListModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::ItemIsDropEnabled;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsDragEnabled;
}

QStringList CObjectListModel::mimeTypes() const
{
    return {kRowsType};
}

QMimeData* CObjectListModel::mimeData(const QModelIndexList& indexes) const
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    for (const QModelIndex& index : indexes)
        stream << qint32(index.row());
    auto* data = new QMimeData;
    data->setData(kRowsType, bytes);
    return data;
}

bool CObjectListModel::dropMimeData(const QMimeData* data, Qt::DropAction /*action*/, int row, int /*column*/,
                                    const QModelIndex& /*parent*/)
{
    if (!m_document || !data->hasFormat(kRowsType))
        return false;
    CObjectList moved;
    QDataStream stream(data->data(kRowsType));
    for (qint32 from = 0; !stream.atEnd();) {
        stream >> from;
        if (from >= 0 && from < rowCount())
            moved.Append(ObjectAt(from));
    }
    // The rows go below the object of the row before, which in the list of the document stands above them.
    const CObjectList& objects = m_document->Canvas().objects;
    const bool atEnd = row < 0 || row >= rowCount();
    const size_t place = atEnd ? 0 : objects.Find(ObjectAt(row).Get()) + 1;
    MoveObjectsTo(*m_document, moved, place);
    // The rows are in their new places already; nobody is to take away the old ones.
    return false;
}
