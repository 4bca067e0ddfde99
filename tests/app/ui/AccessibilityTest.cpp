// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/ChildFrame.h"
#include "app/ui/StatusBar.h"
#include "app/ui/Translations.h"
#include "canvas/ui/AddTextDialog.h"
#include "canvas/ui/CanvasWidget.h"
#include "canvas/ui/FillBannerDialog.h"
#include "document/ObjectOperations.h"
#include "document/PanelOperations.h"
#include "fileio/ui/LayeredFileDialog.h"
#include "platform/ui/QtText.h"
#include "ui/DialogWalk.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QMenuBar>
#include <QRadioButton>
#include <QSlider>
#include <QTabBar>
#include <QToolBar>
#include <QTranslator>

namespace {

QString NameOf(QWidget& widget)
{
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&widget);
    return accessible ? accessible->text(QAccessible::Name) : QString();
}

/// Parts that their owner speaks for.
bool IsInnerPart(const QWidget& widget)
{
    return widget.objectName().startsWith(QLatin1String("qt_")) ||
           qobject_cast<const QTabBar*>(widget.parentWidget()) ||
           qobject_cast<const QAbstractSpinBox*>(widget.parentWidget()) ||
           qobject_cast<const QComboBox*>(widget.parentWidget()) || widget.focusProxy() ||
           widget.inherits("QComboBoxPrivateContainer") || widget.inherits("QToolBarExtension") ||
           widget.inherits("QComboBoxListView") || widget.inherits("QHeaderView") ||
           // The arrow keys in the field above it walk this list.
           NameOf(const_cast<QWidget&>(widget)) == ToQString(Str::FoundCommands);
}

bool IsControl(const QWidget& widget)
{
    return qobject_cast<const QAbstractButton*>(&widget) || qobject_cast<const QAbstractSpinBox*>(&widget) ||
           qobject_cast<const QComboBox*>(&widget) || qobject_cast<const QSlider*>(&widget) ||
           qobject_cast<const QAbstractItemView*>(&widget) || widget.focusPolicy() & Qt::TabFocus;
}

/// Every control has a name, and the keyboard comes to it.
void ExpectReachable(const std::string& name, QWidget& window)
{
    for (auto* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisibleTo(&window) || !IsControl(*widget) || IsInnerPart(*widget))
            continue;
        const std::string what =
            name + ": " + widget->metaObject()->className() + " " + widget->objectName().toStdString();
        EXPECT_FALSE(NameOf(*widget).trimmed().isEmpty()) << what << " has no name";
        EXPECT_TRUE(widget->focusPolicy() & Qt::TabFocus)
            << what << " " << NameOf(*widget).toStdString() << " is not reached with Tab";
    }
}

/// The texts that are wider or higher than the place they have.
std::string CutTexts(QWidget& window)
{
    std::string cut;
    for (auto* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisibleTo(&window) || widget->size().isEmpty())
            continue;
        QString text;
        QSize needed;
        if (const auto* label = qobject_cast<QLabel*>(widget)) {
            text = label->text();
            needed = label->wordWrap() ? QSize(0, label->heightForWidth(label->width())) : label->sizeHint();
            if (label->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored)
                needed.setWidth(0);
        } else if (qobject_cast<QCheckBox*>(widget) || qobject_cast<QRadioButton*>(widget) ||
                   widget->inherits("QPushButton")) {
            text = static_cast<QAbstractButton*>(widget)->text();
            needed = widget->minimumSizeHint();
        } else if (qobject_cast<QAbstractSpinBox*>(widget)) {
            text = NameOf(*widget);
            needed = widget->minimumSizeHint();
        }
        if (text.isEmpty())
            continue;
        if (needed.width() > widget->width() || needed.height() > widget->height())
            cut += text.toStdString() + '\n';
    }
    return cut;
}

/// Layouts settle over several events; then no text is cut.
void ExpectRoom(const std::string& name, QWidget& window)
{
    static_cast<void>(QTest::qWaitFor([&] { return CutTexts(window).empty(); }, 2000));
    EXPECT_EQ(CutTexts(window), "") << name;
}

class CAccessibilityTest : public CWindowTest {
protected:
    /// A shown window with a document.
    void Open(CMainFrame& window)
    {
        window.resize(1400, 1000);
        ShowWithPanels(window);
        m_frame = window.Show(*m_app.NewDocument());
        QTest::qWait(20);
    }

    /// The dialogs that no command opens.
    void VisitOtherDialogs(const WindowVisitor& visit)
    {
        CAddTextDialog text(m_frame->View(), Point{20, 20}, m_frame);
        CFillBannerDialog fill(m_app.Settings(), m_frame);
        CLayeredFileDialog layers({}, m_frame);
        for (QDialog* dialog :
             {static_cast<QDialog*>(&text), static_cast<QDialog*>(&fill), static_cast<QDialog*>(&layers)}) {
            dialog->show();
            visit(ToUtf8(dialog->windowTitle()), *dialog);
            dialog->reject();
        }
    }

    CChildFrame* m_frame = nullptr;
};

} // namespace

TEST_F(CAccessibilityTest, EveryControlIsNamedAndReached)
{
    Open(m_window);
    for (const CommandRow& row : CommandTable()) {
        if (row.menu == "Tools") {
            m_window.Action(row.id)->trigger();
            QTest::qWait(1);
            ExpectReachable("Main window with " + std::string(row.text), m_window);
        }
    }
    m_window.Action(CommandId::ToolDefault)->trigger();
    CDialogWalk walk(m_window, ExpectReachable);
    walk.Run();
    EXPECT_GE(walk.Count(), 20);
    VisitOtherDialogs(ExpectReachable);
}

TEST_F(CAccessibilityTest, LongerTextsAndLargerLettersHaveRoom)
{
    InstallTranslations(*qApp, Language::Pseudo);
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPointSizeF(usual.pointSizeF() * 2);
    QApplication::setFont(large);
    {
        CMainFrame window(m_app, m_configuration);
        Open(window);
        window.resize(2400, 1600);
        QTest::qWait(20);
        for (const CommandRow& row : CommandTable()) {
            if (row.menu == "Tools") {
                window.Action(row.id)->trigger();
                QTest::qWait(5);
                ExpectRoom("Main window with " + std::string(row.text), window);
            }
        }
        window.Action(CommandId::ToolDefault)->trigger();
        const auto visit = [](const std::string& name, QWidget& dialog) {
            QTest::qWait(1);
            ExpectRoom(name, dialog);
        };
        CDialogWalk(window, visit).Run();
        VisitOtherDialogs(visit);
    }
    QApplication::setFont(usual);
    for (auto* translator : qApp->findChildren<QTranslator*>())
        delete translator;
    SetTextTranslator(nullptr);
}

TEST_F(CAccessibilityTest, CanvasTellsItsObjectsAndTheirStates)
{
    Open(m_window);
    CPixoluneDoc& document = m_frame->Document();
    ASSERT_TRUE(NewObject(document));
    CObjectList top;
    top.Append(document.Canvas().objects.At(1));
    SetLocked(document, top, true);
    QAccessibleInterface* canvas = QAccessible::queryAccessibleInterface(&m_frame->Canvas());
    ASSERT_NE(canvas, nullptr);
    EXPECT_EQ(canvas->role(), QAccessible::Canvas);
    EXPECT_EQ(canvas->text(QAccessible::Name), QLatin1String("Untitled 1"));
    EXPECT_EQ(canvas->text(QAccessible::Description),
              QLatin1String("640 x 480 pixels, shown at 100 percent, 2 object(s), 1 selected"));
    ASSERT_EQ(canvas->childCount(), 2);
    QAccessibleInterface* object = canvas->child(1);
    EXPECT_EQ(object->text(QAccessible::Name), QLatin1String("Obj - 2, locked"));
    EXPECT_TRUE(object->state().selected && object->state().readOnly);
    EXPECT_EQ(canvas->indexOfChild(object), 1);
    EXPECT_EQ(object->rect().size(), QSize(640, 480));
    const QPoint middle = object->rect().center();
    EXPECT_EQ(canvas->childAt(middle.x(), middle.y()), object);

    SetVisible(document, top, false);
    EXPECT_TRUE(object->state().invisible);
    EXPECT_EQ(canvas->childAt(middle.x(), middle.y()), canvas->child(0));
    auto* rows = m_window.findChild<QAbstractItemView*>();
    EXPECT_EQ(rows->model()->index(0, 0).data(Qt::AccessibleTextRole).toString(),
              QLatin1String("Obj - 2, hidden, locked"));
}

TEST_F(CAccessibilityTest, ArrowKeysWalkAToolBarAndTabLeavesIt)
{
    Open(m_window);
    m_window.activateWindow();
    auto* bar = m_window.findChild<QToolBar*>(QStringLiteral("DrawingBar"));
    QWidget* first = bar->widgetForAction(m_window.Action(CommandId::ToolDefault));
    QWidget* second = bar->widgetForAction(m_window.Action(CommandId::ToolRectangularSelection));
    first->setFocus();
    QTest::keyClick(first, Qt::Key_Down);
    EXPECT_EQ(m_window.focusWidget(), second);
    QTest::keyClick(second, Qt::Key_Space);
    EXPECT_EQ(m_frame->View().Mode(), ToolMode::RectangularSelection);
    QTest::keyClick(second, Qt::Key_Tab);
    EXPECT_FALSE(bar->isAncestorOf(m_window.focusWidget()));
}

TEST_F(CAccessibilityTest, StatusBarTellsTheSizeOfBandAndSelection)
{
    Open(m_window);
    m_window.Action(CommandId::ToolRectangularSelection)->trigger();
    QWidget* viewport = m_frame->Canvas().viewport();
    const QPoint middle = viewport->rect().center();
    QTest::mousePress(viewport, Qt::LeftButton, {}, middle);
    QTest::mouseMove(viewport, middle + QPoint(70, 40));
    EXPECT_TRUE(m_window.StatusBar().DraggedRectText().startsWith(QLatin1String("70 x 40 at x=")));
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, middle + QPoint(60, 30));
    EXPECT_TRUE(m_window.StatusBar().DraggedRectText().startsWith(QLatin1String("60 x 30 at x=")));
    QTest::qWait(1);
    m_window.Action(CommandId::EditUnselectAll)->trigger();
    EXPECT_TRUE(m_window.StatusBar().DraggedRectText().isEmpty());
}
