// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/ui/ObjectListModel.h"

#include <QListView>

class CCommandActions;
class CObjectDelegate;
class CSettings;
class QLabel;
class QMenu;
class QSlider;

/// The list of a document's objects with its icons: a click on an eye or a lock changes that object, or all
/// selected ones when it is one of them, and leaves the selection as it is.
class CObjectsList final : public QListView {
    Q_OBJECT

public:
    CObjectsList(CObjectListModel& model, CObjectDelegate& delegate, QWidget* parent);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    bool ClickIcon(const QPoint& position);

    CObjectListModel& m_model;
    CObjectDelegate& m_delegate;
};

/// The Objects Panel: the list, the opacity of what is selected, and buttons for the object commands.
class CObjectsPanel final : public QWidget {
    Q_OBJECT

public:
    CObjectsPanel(CSettings& settings, const CCommandActions& actions, QWidget* parent);

    /// None while no document is open.
    void SetDocument(CPixoluneDoc* document);
    [[nodiscard]] CPixoluneDoc* Document() const { return m_model.Document(); }

private:
    void ApplySettings();
    void TakeSelection();
    void ShowSelection();
    void ShowOpacity();
    void ApplyOpacity();
    void ShowMenu(const QPoint& position);
    void AddOptions(QMenu& menu);
    void AddFlags(QMenu& menu);

    CSettings& m_settings;
    const CCommandActions& m_actions;
    CObjectListModel m_model;
    CObjectDelegate* m_delegate;
    CObjectsList* m_list;
    QSlider* m_opacity;
    QLabel* m_opacityText;
    bool m_updating = false;
    bool m_repaintPending = false;
};
