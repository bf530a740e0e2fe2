#include "controller/Korvan.h"

#include "account/ServerLists.h"
#include "common/Wait.h"
#include "controller/TestRun.h"
#include "diag/SpeedTest.h"

#include <QElapsedTimer>
#include <QNetworkAccessManager>
#include <QNetworkReply>

int Korvan::getDownloadSpeedByUrl(QString url)
{
    QElapsedTimer timer;
    timer.start();
    QNetworkAccessManager manager;
    QNetworkReply *reply = manager.get(QNetworkRequest(QUrl(url)));
    Wait wait;
    wait.until(reply, &QNetworkReply::finished);
    wait.until(this, &Korvan::testCancel);
    wait.until(this, &QObject::destroyed);
    wait.run();
    return downloadSpeed(reply->readAll().size(), timer.elapsed());
}

void Korvan::onSpeedTest()
{
    const QPersistentModelIndex server = serverToTest();
    if (!server.isValid()) {
        return;
    }
    const TestRun run(this, m_form);
    setServerCell(server, kSpeedColumn, tr("Test..."));
    const QString host = GetHostFromOvpn(server.data().toString());
    const int speed = getDownloadSpeedByUrl(QStringLiteral("http://%1:8080/korvantest.dat").arg(host));
    setServerCell(server, kSpeedColumn, speedCell(speed));
}
