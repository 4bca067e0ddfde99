// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/ChildFrame.h"
#include "platform/ui/QtText.h"
#include "support/TestFiles.h"
#include "ui/UiTest.h"

#include <QAction>

#include <sys/resource.h>

#include <algorithm>

namespace {

/// The process gets no more addresses than that until the guard goes.
class CAddressLimit {
public:
    explicit CAddressLimit(rlim_t bytes)
    {
        getrlimit(RLIMIT_AS, &m_before);
        const rlimit limited{bytes, m_before.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_AS, &limited), 0);
    }
    ~CAddressLimit() { setrlimit(RLIMIT_AS, &m_before); }
    CAddressLimit(const CAddressLimit&) = delete;
    CAddressLimit& operator=(const CAddressLimit&) = delete;

private:
    rlimit m_before = {};
};

/// A black BMP file with a byte for each pixel.
std::string WriteBlackBmp(const std::filesystem::path& path, uint32_t side)
{
    constexpr uint32_t kPixelsAt = 54 + 1024;
    std::vector<uint8_t> file(kPixelsAt);
    const auto put = [&](size_t at, uint32_t value) {
        for (size_t byte = 0; byte < sizeof value; ++byte)
            file[at + byte] = static_cast<uint8_t>(value >> (8 * byte));
    };
    put(0, 0x4D42);
    put(10, kPixelsAt);
    put(14, 40);
    put(18, side);
    put(22, side);
    put(26, 1 | 8 << 16);
    put(46, 256);
    WriteContents(path, file);
    std::filesystem::resize_file(path, kPixelsAt + uintmax_t{side} * side);
    return path.string();
}

} // namespace

TEST_F(CWindowTest, LivesOnAGigabyteAndKeepsItsDocuments)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer takes more addresses than that";
#endif
    const std::string large = WriteBlackBmp(m_folder.File("large.bmp"), 8000);
    const std::string huge = WriteBlackBmp(m_folder.File("huge.bmp"), 11500);
    ShowWindow();
    CPixoluneDoc& own = *m_app.NewDocument();
    CChildFrame* const ownFrame = m_window.Show(own);
    m_window.Action(CommandId::ObjectNew)->trigger();
    const size_t objects = own.Canvas().objects.Count();
    const CPackedDib before = own.Canvas().objects.Bottom()->image->Dib().Duplicate();

    const CAddressLimit limit(rlim_t{1} << 30);
    const auto take = [this](const std::string& text) {
        const auto count = std::ranges::count(m_ui.messages, text);
        m_ui.messages.clear();
        QCoreApplication::processEvents();
        m_window.grab();
        return count;
    };
    const std::string outOfMemory(Text(Str::OutOfMemory));
    CChildFrame* const frame = m_window.OpenFile(ToQString(large));
    ASSERT_NE(frame, nullptr);
    EXPECT_EQ(take(outOfMemory), 0);
    for (int trial = 0; trial < 3; ++trial) {
        for (const Ref<CPicObject>& object : frame->Document().Canvas().objects)
            object->SetSelected(true);
        m_window.Action(CommandId::ObjectDuplicate)->trigger();
    }
    EXPECT_GT(take(outOfMemory), 0);
    EXPECT_EQ(m_window.OpenFile(ToQString(huge)), nullptr);
    EXPECT_EQ(take(Text(Str::LoadFileFailed, huge)), 1);
    while (m_window.Action(CommandId::EditUndo)->isEnabled() && frame->Document().Undo())
        QCoreApplication::processEvents();
    EXPECT_EQ(frame->Document().Canvas().objects.Count(), 1u);

    EXPECT_EQ(own.Canvas().objects.Count(), objects);
    EXPECT_TRUE(SameBytes(own.Canvas().objects.Bottom()->image->Dib(), before));
    ASSERT_TRUE(own.Undo() && own.Redo());
    EXPECT_EQ(take(outOfMemory), 0);
    EXPECT_EQ(&ownFrame->Document(), &own);
}
