// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/Stage.h"

#include "platform/codec/SaveImage.h"
#include "platform/codec/SaveOptions.h"
#include "platform/ui/QtText.h"
#include "support/Inputs.h"

#include <QFile>

void CStage::ShowPhoto()
{
    if (m_shown != kPhotoName)
        OpenPhoto();
}

QString CStage::PhotoPath()
{
    const QString path = window.File("photo.jpg");
    if (!QFile::exists(path))
        static_cast<void>(
            CImage::SaveImageFile(ToPath(path), BackdropPicture(12), JpgOptions{90}.Value(), nullptr));
    return path;
}

void CStage::OpenPhoto()
{
    CloseAll();
    window.Open(PhotoPath());
    window.FitCanvas();
    m_shown = kPhotoName;
}

void CStage::ShowStack(Stack stack)
{
    if (m_shown == StackName(stack))
        return;
    CloseAll();
    window.Show(MakeStack(stack));
    m_shown = StackName(stack);
}

void CStage::CloseAll()
{
    window.CloseAll();
    m_shown.clear();
}

void Stroke(CBenchWindow& window, QPoint from)
{
    window.View().SetMode(ToolMode::Pencil);
    window.Press(from, Qt::LeftButton);
    for (int step = 1; step <= 20; ++step)
        window.Drag(from + QPoint(step * 20, step * 10), Qt::LeftButton);
    window.Release(from + QPoint(400, 200), Qt::LeftButton);
}

void AddWindowCase(const std::string& operation, const std::string& size, int times,
                   const std::function<void(benchmark::State& state)>& run)
{
    benchmark::RegisterBenchmark((operation + '/' + size + "/ours/tN").c_str(), run)
        ->Iterations(times)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
}
