// SPDX-License-Identifier: GPL-3.0-or-later
#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QPixmap>

/// The least that a program of the same widgets can do: a window that shows the picture named last.
int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QLabel picture;
    picture.setPixmap(QPixmap(QString::fromLocal8Bit(argv[argc - 1])));
    QMainWindow window;
    window.setCentralWidget(&picture);
    window.show();
    const int status = QApplication::exec();
    window.takeCentralWidget();
    return status;
}
