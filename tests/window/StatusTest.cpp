#include "tests/window/WindowFixture.h"

#include <QSignalSpy>

/// The status machine, and what the window looks like in each status.
class StatusTest : public WindowFixture
{
    Q_OBJECT

private slots:
    void init() override;
    void atStart();
    void everyStatus();
    void entering();
    void lockDown();
    void progress();
    void traffic();

private:
    QString look() const;
};

void StatusTest::init()
{
    WindowFixture::init();
    start(); // nobody is logged in
    combo("cmServer")->addItem("Examplia-1");
    button("cbNoSound")->setChecked(true);
}

void StatusTest::atStart()
{
    for (const char *off : {"pbUpApp", "pbSave", "pbSaveProxy", "pbTestCancel", "edProxyAddr", "edProxyPort"}) {
        COMPARE_CASE(off, find(off)->isEnabled(), false);
    }
    for (const char *hidden : {"cbRunOnBoot", "cbDnsLeak", "cbAutoReconn"}) {
        COMPARE_CASE(hidden, find(hidden)->isHidden(), true);
    }
    QVERIFY(!button("cbRember")->isChecked() && page() == "pageLogin");
    QVERIFY(m_window->minimumSize() == QSize(880, 580) && m_window->maximumSize() == QSize(880, 580));
    QVERIFY2(log().contains("Default Gateway: 198.51.100.1") && takeRoutes().isEmpty(),
             "the gateway is remembered; nothing was saved, so nothing is repaired");
}

/// The picture and the text; which of Connect and Disconnect is shown; what is enabled of Connect, Disconnect,
/// Reconnect, the two lists, Update, and of the tray's Connect, Disconnect, Reconnect; the tray's tool tip.
QString StatusTest::look() const
{
    const QString picture = find<KvRetinaLabel>("lbStatus")->picture().section('_', -1).remove(".png");
    QString tray;
    for (const char *name : {"Connect", "Disconnect", "Reconnect"}) {
        tray += trayEntry(name)->isEnabled() ? QChar(name[0]).toLower() : '-';
    }
    return QStringList({picture, label("lbStatusT"), find("pbConnect")->isHidden() ? "-" : "c",
                        find("pbDisconnect")->isHidden() ? "-" : "d",
                        enabled({{"pbConnect", 'c'},
                                 {"pbDisconnect", 'd'},
                                 {"pbReconnect", 'r'},
                                 {"cmServer", 's'},
                                 {"cmProto", 'p'},
                                 {"pbUpdate", 'u'}}),
                        tray, m_window->findChild<QSystemTrayIcon *>()->toolTip()})
        .join('|');
}

void StatusTest::everyStatus()
{
    const QString down = "Korvan: Disconnected";
    const struct
    {
        KORVANSTATUS status;
        QString look;
    } steps[] = {
        {STATUS_INIT, "disconnected|NOT CONNECTED|c|-|cdr--u|---|"},
        {STATUS_READY, "disconnected|NOT CONNECTED|c|-|c--spu|c--|" + down},
        {STATUS_CONNECTING, "disconnected|NOT CONNECTED|-|d|cd---u|-d-|Korvan: Connecting to server Examplia-1"},
        {STATUS_CONNECTED, "connected| CONNECTED|-|d|cdr---|-dr|Korvan: Connected to server Examplia-1"},
        {STATUS_DISCONNECTING, "connected| CONNECTED|-|d|c-----|---|Korvan: Connected to server Examplia-1"},
        {STATUS_DISCONNECTED, "disconnected|NOT CONNECTED|c|-|c--spu|c--|" + down},
        {STATUS_BUSY, "disconnected|NOT CONNECTED|-|d|c----u|---|" + down},
        {STATUS_RECONNECTING, "disconnected|NOT CONNECTED|-|d|c----u|---|" + down},
        // Only an attempt leads out of it.
        {STATUS_CONNECTED, "disconnected|NOT CONNECTED|-|d|c----u|---|" + down},
        {STATUS_READY, "disconnected|NOT CONNECTED|-|d|c----u|---|" + down},
        {STATUS_DISCONNECTED, "disconnected|NOT CONNECTED|-|d|c----u|---|" + down},
        {STATUS_CONNECTING, "disconnected|NOT CONNECTED|-|d|cd---u|-d-|Korvan: Connecting to server Examplia-1"},
    };
    for (const auto &step : steps) {
        m_window->setStatus(step.status);
        COMPARE_CASE("status " + QByteArray::number(step.status), look(), step.look);
    }
}

/// What changes once, on the way into a status.
void StatusTest::entering()
{
    type("edUser", "alice");
    m_window->setStatus(STATUS_READY);
    QCOMPARE(page() + label("lbName") + label("lbName2") + combo("cmProto")->currentText(),
             QString("pageMainalicealiceOpenVPN"));

    auto *bar = find<QProgressBar>("pgLinkState");
    button("cbHideConnection")->setChecked(true);
    m_window->setStatus(STATUS_CONNECTING);
    QVERIFY(bar->value() == 0 && m_window->isVisible());
    bar->setValue(40);
    const QSignalSpy steps(bar, &QProgressBar::valueChanged);
    m_window->setStatus(STATUS_CONNECTED);
    QVERIFY2(bar->value() == 100 && steps.count() == 60, "the bar is seen to complete");
    QVERIFY(!m_window->isVisible());
    m_window->showOnTop();
    QTRY_VERIFY(m_window->isVisible());

    find<QLabel>("lbServerIP")->setText("203.0.113.21");
    m_window->setStatus(STATUS_DISCONNECTED);
    QVERIFY(bar->value() == 0 && label("lbServerIP").isEmpty());
}

void StatusTest::lockDown()
{
    const struct
    {
        const char *name;
        bool ticked;
        QString server;
        bool locks;
    } cases[] = {{"ticked", true, "Examplia-1", true},
                 {"not ticked", false, "Examplia-1", false},
                 {"through a proxy", true, "Proxied-Samplonia", false},
                 {"letter case counts", true, "proxied-Samplonia", true}};
    for (const auto &row : cases) {
        QFile::remove(appPath("/defgate"));
        button("cbLockDown")->setChecked(row.ticked);
        combo("cmServer")->setItemText(0, row.server);
        m_window->setStatus(STATUS_CONNECTED);
        const QByteArray route = row.locks ? " 0.0.0.0 mask 0.0.0.0 198.51.100.1\n" : "";
        COMPARE_CASE(row.name, takeRoutes(), row.locks ? "delete" + route : route);
        COMPARE_CASE(row.name, fileBytes(appPath("/defgate")), row.locks ? "198.51.100.1" : "");
        // Neither unticking the box nor another name in the list may strand the machine.
        button("cbLockDown")->setChecked(false);
        m_window->setStatus(STATUS_DISCONNECTED);
        COMPARE_CASE(row.name, takeRoutes(), row.locks ? "add" + route : route);
        button("cbLockDown")->setChecked(row.ticked);
        m_window->setStatus(STATUS_READY);
        COMPARE_CASE(row.name, takeRoutes(), row.locks ? "add" + route : route); // harmless where it exists
    }
}

/// The progress of an attempt moves in bursts, that of a download only when its size is known.
void StatusTest::progress()
{
    const auto *bar = find<QProgressBar>("pgLinkState");
    for (const auto &[ticks, value] : {std::pair(20, 14), std::pair(480, 99)}) { // only CONNECTED completes it
        for (int tick = 0; tick < ticks; ++tick) {
            QMetaObject::invokeMethod(m_window, "onProgress");
        }
        QCOMPARE(bar->value(), value);
    }
    const auto *download = find<QProgressBar>("pgUpdate");
    for (const auto &[size, value] :
         {std::pair(Q_INT64_C(3), 33), std::pair(Q_INT64_C(0), 33), std::pair(Q_INT64_C(-1), 33)}) {
        QMetaObject::invokeMethod(m_window, "onUpdateProgress", Q_ARG(qlonglong, 1), Q_ARG(qlonglong, size));
        QCOMPARE(download->value(), value);
    }
}

/// What two seconds brought is shown as rates of one second, rounded down, and kept when the connection ends.
void StatusTest::traffic()
{
    m_window->setStatus(STATUS_CONNECTED);
    quint64 received = 3 * 1024;
    quint64 sent = 3;
    engine().byteCount(received, sent);
    for (const char *seen : {"1KB/s 1B/s 3KB", "0B/s 0B/s 3KB"}) {
        QMetaObject::invokeMethod(m_window, "onStatus");
        QCOMPARE(label("lbDownload") + ' ' + label("lbUpload") + ' ' + label("lbSessionRecv"), QString(seen));
    }
    m_window->setStatus(STATUS_DISCONNECTED);
    QCOMPARE(fileBytes(appPath("/cfg/transfer")).size(), 56);
}

WINDOW_TEST_MAIN(StatusTest)
#include "StatusTest.moc"
