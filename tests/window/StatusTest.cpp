#include "tests/window/WindowFixture.h"

#include "common/AppPath.h"
#include "tests/support/TestFiles.h"
#include "ui_Korvan.h"

#include <QAction>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>

#include <memory>

class StatusTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void look_data();
    void look();
    void initialState();
    void trayMenuAsBuilt();
    void readyRestoresProtocolAndNames();
    void connectedCompletesTheBar();
    void onlyAnAttemptLeadsOutOfReconnecting();
    void lockDown_data();
    void lockDown();
    void hidesOnceConnected();
    void progressMovesInBursts();
    void trafficRates();
    void disconnectCommitsTheSession();
    void updateUrlFromSettings();

private:
    Korvan &start();
    QAction *trayEntry(const QString &text) const;
    bool isShown(const char *name) const { return !m_fixture->find<QWidget>(name)->isHidden(); }
    bool isOn(const char *name) const { return m_fixture->find<QWidget>(name)->isEnabled(); }

    std::unique_ptr<WindowFixture> m_fixture;
    Korvan *m_window = nullptr;
};

void StatusTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
}

void StatusTest::cleanup()
{
    QCOMPARE(m_fixture->boxes.takeFailures(), QString());
    m_fixture.reset();
}

/// A window with one server in its list, nobody logged in.
Korvan &StatusTest::start()
{
    m_window = &m_fixture->start();
    m_fixture->find<QComboBox>("cmServer")->addItem("Examplia-1");
    m_fixture->find<QCheckBox>("cbNoSound")->setChecked(true);
    WindowFixture::takeRoutes();
    return *m_window;
}

QAction *StatusTest::trayEntry(const QString &text) const
{
    const auto menus = m_window->findChildren<QMenu *>();
    for (const QMenu *menu : menus) {
        const auto actions = menu->actions();
        for (QAction *action : actions) {
            if (action->text() == text) {
                return action;
            }
        }
    }
    qFatal("no tray entry");
}

void StatusTest::look_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("connectedPicture");
    QTest::addColumn<QString>("text");
    // Shown: c pbConnect or d pbDisconnect. On: d pbDisconnect, r pbReconnect, s cmServer and cmProto, u pbUpdate,
    // and behind the blank the tray's c Connect, d Disconnect, r Reconnect.
    QTest::addColumn<QString>("shownAndOn");
    QTest::addColumn<QString>("toolTip");
    QTest::newRow("INIT") << 0 << false << "NOT CONNECTED"
                          << "c du "
                          << "";
    QTest::newRow("READY") << 1 << false << "NOT CONNECTED"
                           << "c su c"
                           << "Korvan: Disconnected";
    QTest::newRow("CONNECTING") << 2 << false << "NOT CONNECTED"
                                << "d du d"
                                << "Korvan: Connecting to server Examplia-1";
    QTest::newRow("CONNECTED") << 3 << true << " CONNECTED"
                               << "d dr dr"
                               << "Korvan: Connected to server Examplia-1";
    QTest::newRow("DISCONNECTING") << 4 << true << " CONNECTED"
                                   << "d u "
                                   << "";
    QTest::newRow("DISCONNECTED") << 5 << false << "NOT CONNECTED"
                                  << "c su c"
                                  << "Korvan: Disconnected";
    QTest::newRow("BUSY") << 6 << false << "NOT CONNECTED"
                          << "d u "
                          << "Korvan: Disconnected";
    QTest::newRow("RECONNECTING") << 7 << false << "NOT CONNECTED"
                                  << "d u "
                                  << "";
}

void StatusTest::look()
{
    QFETCH(int, status);
    QFETCH(bool, connectedPicture);
    start().setStatus(static_cast<KORVANSTATUS>(status));

    const auto *picture = m_fixture->find<KvRetinaLabel>("lbStatus");
    QCOMPARE(picture->picture(), connectedPicture ? QString(":/images/icon_status_connect_connected.png")
                                                  : QString(":/images/icon_status_connect_disconnected.png"));
    QTEST(m_fixture->find<QLabel>("lbStatusT")->text(), "text");
    QCOMPARE(isShown("pbConnect"), !isShown("pbDisconnect"));
    QCOMPARE(isOn("cmServer"), isOn("cmProto"));
    QString state = isShown("pbConnect") ? "c " : "d ";
    state += isOn("pbDisconnect") ? "d" : "";
    state += isOn("pbReconnect") && status != 0 ? "r" : "";
    state += isOn("cmServer") ? "s" : "";
    state += isOn("pbUpdate") ? "u " : " ";
    state += trayEntry("Connect")->isEnabled() ? "c" : "";
    state += trayEntry("Disconnect")->isEnabled() ? "d" : "";
    state += trayEntry("Reconnect")->isEnabled() ? "r" : "";
    QTEST(state, "shownAndOn");
    QTEST(m_window->findChild<QSystemTrayIcon *>()->toolTip(), "toolTip");
}

void StatusTest::initialState()
{
    start();
    for (const char *off : {"pbUpApp", "pbSave", "pbSaveProxy", "pbTestCancel", "edProxyAddr", "edProxyPort"}) {
        QVERIFY2(!isOn(off), off);
    }
    for (const char *hidden : {"cbRunOnBoot", "cbDnsLeak", "cbAutoReconn"}) {
        QVERIFY2(m_fixture->find<QWidget>(hidden)->isHidden(), hidden);
    }
    QVERIFY(!m_fixture->find<QCheckBox>("cbRember")->isChecked());
    QCOMPARE(m_fixture->find<QStackedWidget>("stack")->currentWidget()->objectName(), QString("pageLogin"));
    QCOMPARE(m_window->size(), QSize(880, 580));
    QCOMPARE(m_window->minimumSize(), m_window->maximumSize());
    QVERIFY(!m_window->windowFlags().testFlag(Qt::WindowMaximizeButtonHint));
    const auto *table = m_fixture->find<QTableWidget>("tbPing");
    QCOMPARE(QList<int>({table->columnWidth(0), table->columnWidth(1), table->columnWidth(2), table->columnWidth(3)}),
             QList<int>({230, 95, 95, 110}));
    QVERIFY(!table->showGrid());
    QVERIFY2(fileBytes(appPath("/log.txt")).contains("Default Gateway: 198.51.100.1"), "the gateway is remembered");
    QVERIFY2(!QFile::exists(appPath("/routes")), "nothing was saved, so nothing is repaired");
}

void StatusTest::trayMenuAsBuilt()
{
    start();
    QStringList texts;
    const auto actions = m_window->findChild<QSystemTrayIcon *>()->contextMenu()->actions();
    for (const QAction *action : actions) {
        texts += action->isSeparator() ? "-" : action->text();
        QVERIFY2(action->isSeparator() || !action->icon().isNull() || action->font().bold(),
                 qPrintable(action->text()));
    }
    QCOMPARE(texts, QStringList({"Open Korvan", "-", "Connect", "Reconnect", "Disconnect", "-", "Change User...",
                                 "Update Config...", "Proxy Settings...", "-", "Exit"}));
    auto *tab = m_fixture->find<KvRetinaTabBar>("tab");
    auto *pages = m_fixture->find<QStackedWidget>("tabPage");
    trayEntry("Proxy Settings...")->trigger();
    QCOMPARE(tab->currentIndex(), 3);
    trayEntry("Update Config...")->trigger();
    QCOMPARE(pages->currentWidget()->objectName(), QString("pageSet"));
}

void StatusTest::readyRestoresProtocolAndNames()
{
    start();
    m_fixture->find<QLineEdit>("edUser")->setText("alice");
    m_window->setStatus(STATUS_READY);
    QCOMPARE(m_fixture->find<QStackedWidget>("stack")->currentWidget()->objectName(), QString("pageMain"));
    QCOMPARE(m_fixture->find<QLabel>("lbName")->text(), QString("alice"));
    QCOMPARE(m_fixture->find<QLabel>("lbName2")->text(), QString("alice"));
    QCOMPARE(m_fixture->find<QComboBox>("cmProto")->currentText(), QString("OpenVPN"));
}

void StatusTest::connectedCompletesTheBar()
{
    start().setStatus(STATUS_CONNECTING);
    auto *bar = m_fixture->find<QProgressBar>("pgLinkState");
    QCOMPARE(bar->value(), 0);
    bar->setValue(40);
    QSignalSpy steps(bar, &QProgressBar::valueChanged);
    m_window->setStatus(STATUS_CONNECTED);
    QCOMPARE(bar->value(), 100);
    QCOMPARE(steps.count(), 60);
    m_fixture->find<QLabel>("lbServerIP")->setText("203.0.113.21");
    m_window->setStatus(STATUS_READY);
    QCOMPARE(bar->value(), 0);
    QCOMPARE(m_fixture->find<QLabel>("lbServerIP")->text(), QString());
}

void StatusTest::onlyAnAttemptLeadsOutOfReconnecting()
{
    start().setStatus(STATUS_CONNECTED);
    m_window->setStatus(STATUS_RECONNECTING);
    const auto *text = m_fixture->find<QLabel>("lbStatusT");
    for (const KORVANSTATUS status :
         {STATUS_INIT, STATUS_READY, STATUS_CONNECTED, STATUS_DISCONNECTED, STATUS_BUSY}) {
        m_window->setStatus(status);
        QVERIFY(isShown("pbDisconnect") && !isOn("pbDisconnect"));
        QCOMPARE(text->text(), QString("NOT CONNECTED"));
    }
    m_window->setStatus(STATUS_CONNECTING);
    QVERIFY(isOn("pbDisconnect"));
}

void StatusTest::lockDown_data()
{
    QTest::addColumn<bool>("ticked");
    QTest::addColumn<QString>("server");
    QTest::addColumn<QByteArray>("connected");
    QTest::addColumn<QByteArray>("disconnected");
    const QByteArray removed = "delete 0.0.0.0 mask 0.0.0.0 198.51.100.1\n";
    const QByteArray restored = "add 0.0.0.0 mask 0.0.0.0 198.51.100.1\n";
    QTest::newRow("ticked") << true << "Examplia-1" << removed << restored;
    QTest::newRow("not ticked") << false << "Examplia-1" << QByteArray() << QByteArray();
    QTest::newRow("through a proxy") << true << "Proxied-Samplonia" << QByteArray() << QByteArray();
    QTest::newRow("letter case counts") << true << "proxied-Samplonia" << removed << restored;
}

void StatusTest::lockDown()
{
    QFETCH(bool, ticked);
    QFETCH(QString, server);
    start();
    m_fixture->find<QCheckBox>("cbLockDown")->setChecked(ticked);
    m_fixture->find<QComboBox>("cmServer")->setItemText(0, server);
    m_window->setStatus(STATUS_CONNECTED);
    QTEST(WindowFixture::takeRoutes(), "connected");
    QFETCH(QByteArray, connected);
    QCOMPARE(fileBytes(appPath("/defgate")), connected.isEmpty() ? QByteArray() : QByteArray("198.51.100.1"));
    // Neither unticking the box nor another name in the list may strand the machine.
    m_fixture->find<QCheckBox>("cbLockDown")->setChecked(false);
    m_window->setStatus(STATUS_DISCONNECTED);
    QTEST(WindowFixture::takeRoutes(), "disconnected");
    m_fixture->find<QCheckBox>("cbLockDown")->setChecked(ticked);
    m_window->setStatus(STATUS_READY);
    QTEST(WindowFixture::takeRoutes(), "disconnected"); // after a login, harmless where it exists
}

void StatusTest::hidesOnceConnected()
{
    start();
    m_fixture->find<QCheckBox>("cbHideConnection")->setChecked(true);
    m_window->setStatus(STATUS_CONNECTING);
    QVERIFY(m_window->isVisible());
    m_window->setStatus(STATUS_CONNECTED);
    QVERIFY(!m_window->isVisible());
    m_window->showOnTop();
    QCoreApplication::processEvents();
    QVERIFY(m_window->isVisible());
}

void StatusTest::progressMovesInBursts()
{
    start();
    auto *bar = m_fixture->find<QProgressBar>("pgLinkState");
    QList<int> values;
    for (int tick = 0; tick < 20; ++tick) {
        QMetaObject::invokeMethod(m_window, "onProgress");
        values += bar->value();
    }
    QCOMPARE(values.last(), 14); // seven steps in ten ticks
    for (int tick = 0; tick < 480; ++tick) {
        QMetaObject::invokeMethod(m_window, "onProgress");
    }
    QCOMPARE(bar->value(), 99);
    bar->setValue(100);
    for (int tick = 0; tick < 4; ++tick) {
        QMetaObject::invokeMethod(m_window, "onProgress");
    }
    QCOMPARE(bar->value(), 99);
}

void StatusTest::trafficRates()
{
    start().setStatus(STATUS_CONNECTED);
    quint64 received = 3 * 1024;
    quint64 sent = 3;
    m_fixture->engine().byteCount(received, sent);
    QMetaObject::invokeMethod(m_window, "onStatus");
    QCOMPARE(m_fixture->find<QLabel>("lbUpload")->text(), QString("1B/s")); // halved, rounded down
    QCOMPARE(m_fixture->find<QLabel>("lbDownload")->text(), QString("1KB/s"));
    QCOMPARE(m_fixture->find<QLabel>("lbSessionRecv")->text(), QString("3KB"));
    QMetaObject::invokeMethod(m_window, "onStatus");
    QCOMPARE(m_fixture->find<QLabel>("lbDownload")->text(), QString("0B/s"));
}

void StatusTest::disconnectCommitsTheSession()
{
    start().setStatus(STATUS_CONNECTED);
    quint64 received = 2048;
    quint64 sent = 1024;
    m_fixture->engine().byteCount(received, sent);
    m_window->setStatus(STATUS_DISCONNECTED);
    QCOMPARE(m_fixture->find<QLabel>("lbTotalRecv")->text(), QString("2KB"));
    QCOMPARE(fileBytes(appPath("/cfg/transfer")).size(), 56);
}

void StatusTest::updateUrlFromSettings()
{
    start();
    putFile(appPath("/setting.ini"), "[UPDATE]\nURL=\n");
    m_window->setStatus(STATUS_INIT);
    QMetaObject::invokeMethod(m_window, "onInit");
    QTRY_VERIFY(fileBytes(appPath("/log.txt")).count("Can not load from http://127.0.0.1:1/update.xml") == 2);
}

int main(int argc, char *argv[])
{
    return runWindowTest<StatusTest>(argc, argv);
}
#include "StatusTest.moc"
