// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/ObjectsPanel.h"

#include "app/ui/CommandActions.h"
#include "app/ui/ObjectDelegate.h"
#include "document/PanelOperations.h"
#include "platform/settings/Settings.h"
#include "platform/ui/QtText.h"

#include <QActionGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QSlider>
#include <QTimer>
#include <QToolBar>

namespace {

using enum CommandId;

/// Edges of the thumbnails, by the setting's value.
constexpr int kThumbnailSizes[] = {16, 32, 48, 64, 96, 128};
/// Painting changes pictures many times a second; thumbnails follow more slowly.
constexpr int kRepaintMs = 120;

constexpr std::optional<CommandId> kButtons[] = {ObjectNew,          ObjectDuplicate,   ObjectDelete,
                                                 std::nullopt,       ObjectMoveToFront, ObjectMoveForward,
                                                 ObjectMoveBackward, ObjectMoveToBack};

constexpr std::optional<CommandId> kContextMenu[] = {
    ObjectNew,        ObjectDuplicate, ObjectDelete,      std::nullopt,      ObjectCombine,
    ObjectMakeFrame,  std::nullopt,    ObjectMoveToFront, ObjectMoveForward, ObjectMoveBackward,
    ObjectMoveToBack, std::nullopt,    ObjectTrim,        ObjectProperties};

} // namespace

CObjectsList::CObjectsList(CObjectListModel& model, CObjectDelegate& delegate, QWidget* parent)
    : QListView(parent), m_model(model), m_delegate(delegate)
{
    setModel(&model);
    setItemDelegate(&delegate);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    setDragDropMode(QAbstractItemView::InternalMove);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setUniformItemSizes(true);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setAccessibleName(ToQString(Str::ObjectsPanel));
}

bool CObjectsList::ClickIcon(const QPoint& position)
{
    const QModelIndex index = indexAt(position);
    if (!index.isValid() || !m_model.Document())
        return false;
    const ObjectRowLayout layout = m_delegate.LayOut(visualRect(index), fontMetrics());
    const bool eye = layout.eye.contains(position);
    if (!eye && !layout.lock.contains(position))
        return false;
    const Ref<CPicObject> object = m_model.ObjectAt(index.row());
    CObjectList objects;
    if (selectionModel()->isSelected(index))
        objects = m_model.ObjectsAt(selectionModel()->selectedIndexes());
    else
        objects.Append(object);
    if (eye)
        SetVisible(*m_model.Document(), objects, !object->visible);
    else
        SetLocked(*m_model.Document(), objects, !object->locked);
    return true;
}

void CObjectsList::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !ClickIcon(event->position().toPoint()))
        QListView::mousePressEvent(event);
}

void CObjectsList::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !ClickIcon(event->position().toPoint()))
        QListView::mouseDoubleClickEvent(event);
}

CObjectsPanel::CObjectsPanel(CSettings& settings, const CCommandActions& actions, QWidget* parent)
    : QWidget(parent), m_settings(settings), m_actions(actions),
      m_delegate(new CObjectDelegate(m_model, this)), m_list(new CObjectsList(m_model, *m_delegate, this)),
      m_opacity(new QSlider(Qt::Horizontal)), m_opacityText(new QLabel)
{
    m_opacity->setRange(0, 255);
    m_opacity->setPageStep(16);
    m_opacity->setAccessibleName(ToQString(Str::Opacity));
    m_opacityText->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("100%")));
    m_opacityText->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* opacity = new QHBoxLayout;
    opacity->setContentsMargins(6, 4, 6, 2);
    opacity->addWidget(new QLabel(ToQString(Str::Opacity)));
    opacity->addWidget(m_opacity, 1);
    opacity->addWidget(m_opacityText);

    auto* buttons = new QToolBar;
    constexpr int kButtonIcon = 20;
    buttons->setIconSize({kButtonIcon, kButtonIcon});
    actions.FillToolBar(*buttons, kButtons);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(opacity);
    layout->addWidget(m_list, 1);
    layout->addWidget(buttons);

    connect(&m_model, &CObjectListModel::SelectionOutdated, this, &CObjectsPanel::ShowSelection);
    connect(&m_model, &CObjectListModel::PicturesOutdated, this, [this] {
        if (!m_repaintPending)
            QTimer::singleShot(kRepaintMs, this, [this] {
                m_repaintPending = false;
                m_list->viewport()->update();
            });
        m_repaintPending = true;
    });
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &CObjectsPanel::TakeSelection);
    connect(m_list, &QWidget::customContextMenuRequested, this, &CObjectsPanel::ShowMenu);
    // One command for one drag of the slider.
    connect(m_opacity, &QSlider::sliderReleased, this, &CObjectsPanel::ApplyOpacity);
    connect(m_opacity, &QSlider::valueChanged, this, [this](int value) {
        m_opacityText->setText(QStringLiteral("%1%").arg(value * 100 / 255));
        if (!m_opacity->isSliderDown())
            ApplyOpacity();
    });
    ApplySettings();
    ShowSelection();
}

void CObjectsPanel::SetDocument(CPixoluneDoc* document)
{
    m_model.SetDocument(document);
}

void CObjectsPanel::ApplySettings()
{
    m_delegate->SetThumbnailSize(kThumbnailSizes[m_settings.Get(Setting::ThumbnailSizeOption)]);
    m_delegate->SetShowsDetails(m_settings.IsOn(Setting::ShowDetails));
    m_model.SetShowsAll(m_settings.IsOn(Setting::ShowAllItems));
    m_list->doItemsLayout();
}

void CObjectsPanel::TakeSelection()
{
    if (m_updating || !m_model.Document())
        return;
    SelectObjects(*m_model.Document(), m_model.ObjectsAt(m_list->selectionModel()->selectedIndexes()));
}

void CObjectsPanel::ShowSelection()
{
    m_updating = true;
    QItemSelection selection;
    int first = -1;
    const auto isSelected = [this](int row) {
        return row < m_model.rowCount() && m_model.ObjectAt(row)->IsSelected();
    };
    for (int row = 0; row < m_model.rowCount(); ++row) {
        if (!isSelected(row))
            continue;
        const int top = row;
        while (isSelected(row + 1))
            ++row;
        selection.append(QItemSelectionRange(m_model.index(top), m_model.index(row)));
        if (first < 0)
            first = top;
    }
    m_list->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    if (first >= 0 && !m_list->hasFocus())
        m_list->scrollTo(m_model.index(first));
    m_updating = false;
    ShowOpacity();
}

void CObjectsPanel::ShowOpacity()
{
    const QModelIndexList rows = m_list->selectionModel()->selectedIndexes();
    m_opacity->setEnabled(!rows.isEmpty());
    m_updating = true;
    m_opacity->setValue(rows.isEmpty() ? 255 : 255 - m_model.ObjectAt(rows.first().row())->transparency);
    m_updating = false;
}

void CObjectsPanel::ApplyOpacity()
{
    if (m_updating || !m_model.Document())
        return;
    SetTransparency(*m_model.Document(), m_model.ObjectsAt(m_list->selectionModel()->selectedIndexes()),
                    static_cast<uint8_t>(255 - m_opacity->value()));
}

void CObjectsPanel::ShowMenu(const QPoint& position)
{
    if (!m_model.Document())
        return;
    QMenu menu(this);
    m_actions.FillMenu(menu, kContextMenu);
    const QModelIndex index = m_list->indexAt(position);
    if (index.isValid())
        menu.addAction(ToQString(Str::Rename), m_list, [this, index] { m_list->edit(index); });
    AddFlags(menu);
    menu.addSeparator();
    AddOptions(menu);
    menu.exec(m_list->viewport()->mapToGlobal(position));
}

/// What clicks on the eye and the lock do, for the keyboard.
void CObjectsPanel::AddFlags(QMenu& menu)
{
    const CObjectList objects = m_model.ObjectsAt(m_list->selectionModel()->selectedIndexes());
    if (objects.IsEmpty())
        return;
    const CPicObject& first = *objects.At(0);
    const struct {
        Str text;
        bool isSet;
        bool (*set)(CPixoluneDoc& document, const CObjectList& objects, bool value);
    } flags[] = {{Str::ShowObject, first.visible, SetVisible}, {Str::LockObject, first.locked, SetLocked}};
    for (const auto& flag : flags) {
        QAction* action = menu.addAction(ToQString(flag.text));
        action->setCheckable(true);
        action->setChecked(flag.isSet);
        connect(action, &QAction::toggled, this, [this, objects, set = flag.set](bool value) {
            if (m_model.Document())
                set(*m_model.Document(), objects, value);
        });
    }
}

void CObjectsPanel::AddOptions(QMenu& menu)
{
    const auto addFlag = [&](Str text, Setting setting) {
        QAction* action = menu.addAction(ToQString(text));
        action->setCheckable(true);
        action->setChecked(m_settings.IsOn(setting));
        connect(action, &QAction::toggled, this, [this, setting](bool on) {
            m_settings.Set(setting, on);
            ApplySettings();
        });
    };
    addFlag(Str::ShowAllItems, Setting::ShowAllItems);
    addFlag(Str::ShowDetails, Setting::ShowDetails);
    QMenu* sizes = menu.addMenu(ToQString(Str::ThumbnailSize));
    auto* group = new QActionGroup(sizes);
    for (int option = 0; option < static_cast<int>(std::size(kThumbnailSizes)); ++option) {
        QAction* action = sizes->addAction(QStringLiteral("%1 x %1").arg(kThumbnailSizes[option]));
        group->addAction(action);
        action->setCheckable(true);
        action->setChecked(m_settings.Get(Setting::ThumbnailSizeOption) == option);
        connect(action, &QAction::triggered, this, [this, option] {
            m_settings.Set(Setting::ThumbnailSizeOption, option);
            ApplySettings();
        });
    }
}
