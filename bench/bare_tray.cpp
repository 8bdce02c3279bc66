// The least that a Qt Widgets tray program can be; what start-up is measured against.
#include <QApplication>
#include <QSystemTrayIcon>

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    QPixmap pixmap(22, 22);
    pixmap.fill(Qt::darkGray);
    QSystemTrayIcon icon{QIcon(pixmap)};
    icon.show();
    return QApplication::exec();
}
