// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/ChildFrame.h"
#include "canvas/ui/CanvasWidget.h"
#include "fileio/ui/ExportAnimationDialog.h"
#include "platform/ui/PictureView.h"
#include "platform/ui/QtText.h"
#include "ui/UiTest.h"

#include <QFile>
#include <QGroupBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QSpinBox>

namespace {

/// Three frames of one colour each, the middle one hidden.
class CAnimationTest : public CWindowTest {
protected:
    CAnimationTest()
    {
        CObjectCanvas canvas;
        canvas.width = 60;
        canvas.height = 40;
        canvas.frameDelay = 2;
        for (const uint32_t colour : kColours)
            canvas.objects.Append(ObjectAt(UniformDib(60, 40, colour), 0, 0));
        canvas.objects.At(1)->visible = false;
        CPixoluneDoc* document = m_app.NewDocument();
        document->Adopt(std::move(canvas));
        m_frame = m_window.Show(*document);
        m_window.resize(700, 500);
        m_window.show();
        QCoreApplication::processEvents();
    }
    /// The colour in the middle of the window's picture.
    [[nodiscard]] uint32_t Seen() const
    {
        const QImage image = m_frame->Canvas().viewport()->grab().toImage();
        const ViewGeometry& geometry = m_frame->View().Geometry();
        const Rect shown = geometry.ImageInClient();
        return image.pixel((shown.left + shown.right) / 2, (shown.top + shown.bottom) / 2);
    }
    [[nodiscard]] QAction& Play() { return *m_window.Action(CommandId::ViewPlayAnimation); }

    static constexpr uint32_t kColours[] = {0xFF0000FF, 0xFF00FF00, 0xFFFF0000};
    CChildFrame* m_frame = nullptr;
};

TEST_F(CAnimationTest, PlaysTheVisibleObjectsAndChangesNothing)
{
    ASSERT_EQ(Seen(), kColours[2]);
    for (const bool isEscape : {true, false}) {
        Play().trigger();
        EXPECT_EQ(Seen(), kColours[0]) << "from the bottom";
        QCoreApplication::processEvents();
        EXPECT_TRUE(Play().isChecked());
        EXPECT_TRUE(QTest::qWaitFor([&] { return Seen() == kColours[2]; }));
        EXPECT_TRUE(QTest::qWaitFor([&] { return Seen() == kColours[0]; })) << "and round again";
        if (isEscape)
            QTest::keyClick(&m_frame->Canvas(), Qt::Key_Escape);
        else
            Play().trigger();
        QTest::qWait(60);
        EXPECT_EQ(Seen(), kColours[2]);
        EXPECT_FALSE(Play().isChecked());
    }
    EXPECT_FALSE(m_frame->Document().IsModified());

    Play().trigger();
    QTest::mouseClick(m_frame->Canvas().viewport(), Qt::LeftButton, {}, {5, 5});
    EXPECT_FALSE(m_frame->View().IsPlaying());
    Play().trigger();
    m_window.Action(CommandId::ObjectNew)->trigger();
    EXPECT_FALSE(m_frame->View().IsPlaying()) << "a change of the document ends it";

    for (const Ref<CPicObject>& object : m_frame->Document().Canvas().objects)
        object->visible = false;
    m_frame->Document().NotifyObjectsChanged();
    QCoreApplication::processEvents();
    EXPECT_FALSE(Play().isEnabled());
    EXPECT_FALSE(m_window.Action(CommandId::FileExportAnimation)->isEnabled());
}

TEST_F(CAnimationTest, ExportsWithTheOptionsOfTheDialog)
{
    OnNextDialog<QFileDialog>([&](QFileDialog& shown) {
        auto& dialog = dynamic_cast<CExportAnimationDialog&>(shown);
        EXPECT_EQ(dialog.Options().delay, 2) << "the canvas's";
        auto* view = dialog.findChild<CPictureView*>();
        EXPECT_TRUE(QTest::qWaitFor([&] { return view->Image().pixel(5, 5) == kColours[2]; }));
        EXPECT_TRUE(QTest::qWaitFor([&] { return view->Image().pixel(5, 5) == kColours[0]; }));

        EXPECT_TRUE(dialog.findChild<QGroupBox*>()->isEnabled());
        const QString filter = dialog.nameFilters().at(1);
        dialog.selectNameFilter(filter);
        Q_EMIT dialog.filterSelected(filter);
        EXPECT_EQ(dialog.defaultSuffix(), QLatin1String("png"));
        EXPECT_FALSE(dialog.findChild<QGroupBox*>()->isEnabled());
        dialog.findChildren<QSpinBox*>()[0]->setValue(4);
        dialog.findChildren<QSpinBox*>()[1]->setValue(33);
        dialog.setDirectory(PathToQString(m_folder.Path()));
        dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(QStringLiteral("out.png"));
        static_cast<QDialog&>(dialog).accept();
    });
    m_window.Action(CommandId::FileExportAnimation)->trigger();
    EXPECT_TRUE(m_ui.messages.empty());
    QFile file(PathToQString(m_folder.File("out.png")));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    EXPECT_TRUE(bytes.contains(QByteArray("acTL\0\0\0\2\0\0\0\4", 12)));
    EXPECT_TRUE(bytes.contains(QByteArray("\0\x21\0\x64\0\0", 6))) << "33 hundredths";
}

} // namespace
