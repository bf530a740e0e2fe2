// What the start of Korvan is measured against: a Qt Widgets window of its size with a tray icon, and nothing else.

#include <QApplication>
#include <QMainWindow>
#include <QSystemTrayIcon>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QMainWindow window;
    window.setFixedSize(880, 580);
    QPixmap picture(22, 22);
    picture.fill(Qt::blue);
    QSystemTrayIcon tray(picture, &window);
    tray.show();
    window.show();
    return QApplication::exec();
}
