// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ui/CanvasAccessibility.h"

#include "canvas/ui/CanvasWidget.h"
#include "platform/ui/QtText.h"

#include <QAccessibleWidget>

#include <map>

namespace {

/// One object of the picture. Stays known under its number as long as the canvas lives, as the object may
/// come back with an undo.
class CAccessibleObject final : public QAccessibleInterface {
public:
    CAccessibleObject(CCanvasWidget& canvas, Ref<CPicObject> object)
        : m_canvas(canvas), m_object(std::move(object))
    {
    }

    [[nodiscard]] bool isValid() const override { return true; }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* parent() const override
    {
        return QAccessible::queryAccessibleInterface(&m_canvas);
    }
    [[nodiscard]] QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::Graphic; }
    void setText(QAccessible::Text /*which*/, const QString& /*text*/) override {}

    [[nodiscard]] QString text(QAccessible::Text which) const override
    {
        return which == QAccessible::Name          ? NameObject(*m_object)
               : which == QAccessible::Description ? DescribeObject(*m_object)
                                                   : QString();
    }

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state;
        state.selectable = true;
        state.multiSelectable = true;
        state.selected = m_object->IsSelected();
        state.invisible = !m_object->visible;
        state.readOnly = m_object->locked;
        state.movable = !m_object->locked;
        return state;
    }

    [[nodiscard]] QRect rect() const override
    {
        const Rect client = m_canvas.View().Geometry().ToClient(m_object->Rectangle());
        const qreal ratio = m_canvas.devicePixelRatioF();
        const QRectF logical(client.left / ratio, client.top / ratio, client.Width() / ratio,
                             client.Height() / ratio);
        return logical.toAlignedRect().translated(m_canvas.viewport()->mapToGlobal(QPoint()));
    }

private:
    CCanvasWidget& m_canvas;
    Ref<CPicObject> m_object;
};

class CAccessibleCanvas final : public QAccessibleWidget {
public:
    explicit CAccessibleCanvas(CCanvasWidget& canvas) : QAccessibleWidget(&canvas, QAccessible::Canvas) {}

    ~CAccessibleCanvas() override
    {
        for (const auto& [object, id] : m_known)
            QAccessible::deleteAccessibleInterface(id);
    }

    [[nodiscard]] QString text(QAccessible::Text which) const override
    {
        const CPixoluneView& view = Canvas().View();
        const CPixoluneDoc& document = view.Document();
        if (which == QAccessible::Name)
            return ToQString(document.Title());
        if (which != QAccessible::Description)
            return QAccessibleWidget::text(which);
        const Size size = document.Canvas().Size();
        return ToQString(Str::CanvasDescription)
            .arg(size.width)
            .arg(size.height)
            .arg(view.Zoom() > 0 ? view.Zoom() * 100 : 100 / -view.Zoom())
            .arg(document.Canvas().objects.Count())
            .arg(document.Canvas().CountSelected());
    }

    [[nodiscard]] int childCount() const override { return static_cast<int>(Objects().Count()); }

    [[nodiscard]] QAccessibleInterface* child(int index) const override
    {
        if (index < 0 || index >= childCount())
            return nullptr;
        const Ref<CPicObject>& object = Objects().At(static_cast<size_t>(index));
        auto known = m_known.find(object.Get());
        if (known == m_known.end()) {
            const QAccessible::Id id =
                QAccessible::registerAccessibleInterface(new CAccessibleObject(Canvas(), object));
            known = m_known.emplace(object.Get(), id).first;
        }
        return QAccessible::accessibleInterface(known->second);
    }

    [[nodiscard]] int indexOfChild(const QAccessibleInterface* wanted) const override
    {
        for (int index = 0; index < childCount(); ++index) {
            if (child(index) == wanted)
                return index;
        }
        return -1;
    }

    /// The topmost object there.
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override
    {
        for (int index = childCount(); index-- > 0;) {
            QAccessibleInterface* object = child(index);
            if (!object->state().invisible && object->rect().contains(x, y))
                return object;
        }
        return nullptr;
    }

private:
    [[nodiscard]] CCanvasWidget& Canvas() const { return static_cast<CCanvasWidget&>(*widget()); }
    [[nodiscard]] const CObjectList& Objects() const { return Canvas().View().Document().Canvas().objects; }

    mutable std::map<const CPicObject*, QAccessible::Id> m_known;
};

QAccessibleInterface* CreateInterface(const QString& /*className*/, QObject* object)
{
    auto* canvas = qobject_cast<CCanvasWidget*>(object);
    return canvas ? new CAccessibleCanvas(*canvas) : nullptr;
}

} // namespace

void InstallCanvasAccessibility()
{
    QAccessible::installFactory(CreateInterface);
}

QString NameObject(const CPicObject& object)
{
    QStringList parts{object.image ? ToQString(object.image->name) : QString()};
    if (!object.visible)
        parts.append(ToQString(Str::StateHidden));
    if (object.locked)
        parts.append(ToQString(Str::StateLocked));
    return parts.join(QLatin1String(", "));
}

QString DescribeObject(const CPicObject& object)
{
    const Size size = object.Size();
    return ToQString(Str::ObjectDescription)
        .arg(object.x)
        .arg(object.y)
        .arg(size.width)
        .arg(size.height)
        .arg((255 - object.transparency) * 100 / 255);
}
