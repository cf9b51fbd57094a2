// The least that puts an icon into the tray: what any program of this kind costs.

#include <QApplication>
#include <QIcon>
#include <QPixmap>
#include <QSystemTrayIcon>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QPixmap picture(22, 22);
    picture.fill(Qt::white);
    QSystemTrayIcon tray{QIcon(picture)};
    tray.show();
    return QApplication::exec();
}
