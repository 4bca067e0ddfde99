// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/ObjectListModel.h"

#include "canvas/ui/CanvasAccessibility.h"
#include "document/PanelOperations.h"
#include "document/StackingOperations.h"
#include "model/Compositing.h"
#include "model/DibOperations.h"
#include "platform/ui/QtText.h"

#include <QDataStream>
#include <QIODevice>
#include <QMimeData>

#include <algorithm>
#include <unordered_map>

namespace {

constexpr QLatin1String kRowsType("application/x-pixolune-object-rows");
constexpr int kFullScale = 32768;
constexpr Rgb kLight{255, 255, 255};
constexpr Rgb kDark{212, 212, 212};

/// The picture, reduced to fit a square of device pixels, over the checkerboard.
QImage ReducedPicture(const CPackedDib& dib, int edge)
{
    const int longer = std::max({dib.Width(), dib.Height(), 1});
    const int scale = std::clamp(static_cast<int>(int64_t{edge} * kFullScale / longer), 1, kFullScale);
    const auto reduced = [scale](int length) {
        return std::max(1, static_cast<int>((int64_t{length} * scale + kFullScale / 2) / kFullScale));
    };
    QImage image(reduced(dib.Width()), reduced(dib.Height()), QImage::Format_RGB32);
    if (image.isNull())
        return {};
    image.fill(Qt::white);
    const BitmapView view{image.bits(), image.bytesPerLine(), image.width(), image.height()};
    DrawCheckerboard(view, kLight, kDark, {});
    DrawScaledWeighted(view, dib, {}, static_cast<uint16_t>(scale));
    return image;
}

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
    std::vector<Row> rows;
    if (m_document) {
        for (const Ref<CPicObject>& object : m_document->Canvas().objects) {
            if (m_showsAll || object->visible)
                rows.push_back({object, {}});
        }
        std::ranges::reverse(rows);
    }
    if (std::ranges::equal(rows, m_rows, {}, &Row::object, &Row::object)) {
        Q_EMIT dataChanged(index(0), index(rowCount() - 1));
    } else {
        beginResetModel();
        KeepThumbnails(rows);
        m_rows = std::move(rows);
        endResetModel();
    }
    Q_EMIT SelectionOutdated();
}

void CObjectListModel::KeepThumbnails(std::vector<Row>& rows)
{
    std::unordered_map<const CPicObject*, Row*> known;
    for (Row& row : m_rows)
        known.emplace(row.object.Get(), &row);
    for (Row& row : rows) {
        if (const auto old = known.find(row.object.Get()); old != known.end())
            row = std::move(*old->second);
    }
}

void CObjectListModel::OnFrameChanged(const Rect& rect)
{
    m_changed = m_changed.United(rect);
    Q_EMIT PicturesOutdated();
}

void CObjectListModel::DropOutdated()
{
    for (Row& row : m_rows) {
        if (!row.object->Rectangle().Intersected(m_changed).IsEmpty())
            row.pixels = nullptr;
    }
    m_changed = {};
}

const QImage& CObjectListModel::Thumbnail(int row, int edge)
{
    if (!m_changed.IsEmpty())
        DropOutdated();
    Row& shown = m_rows[static_cast<size_t>(row)];
    const CRasterImage* image = shown.object->image.Get();
    const bool hasPicture = image != nullptr && !image->Dib().IsEmpty();
    const void* pixels = hasPicture ? image->Dib().Block().data() : nullptr;
    if (pixels == nullptr) {
        shown.thumbnail = {};
    } else if (shown.pixels != pixels || shown.edge != edge) {
        shown.thumbnail = ReducedPicture(image->Dib(), edge);
        shown.edge = edge;
    }
    shown.pixels = pixels;
    return shown.thumbnail;
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
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
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
