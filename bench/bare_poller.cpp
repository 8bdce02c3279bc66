// The bare tray program that also asks four addresses every two seconds and throws the replies away; what
// memory and processor time are measured against. Arguments: the service's address and its token.
#include <QApplication>
#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QSystemTrayIcon>
#include <QTimer>

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    QPixmap pixmap(22, 22);
    pixmap.fill(Qt::darkGray);
    QSystemTrayIcon icon{QIcon(pixmap)};
    icon.show();

    const QStringList arguments = QApplication::arguments();
    QNetworkAccessManager network;
    network.setProxy(QNetworkProxy::NoProxy);
    const auto poll = [&] {
        for (const char *path : {"/api/status", "/api/settings", "/api/devices", "/api/history"}) {
            QNetworkRequest request(QUrl(arguments.value(1)).resolved(QUrl(QString::fromLatin1(path))));
            request.setRawHeader("Authorization", "Bearer " + arguments.value(2).toLatin1());
            QNetworkReply *reply = network.get(request);
            QObject::connect(reply, &QNetworkReply::finished, reply, [reply] {
                reply->readAll();
                reply->deleteLater();
            });
        }
    };
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, poll);
    timer.start(2000);
    poll();
    return QApplication::exec();
}
