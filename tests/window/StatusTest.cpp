#include "tests/window/WindowFixture.h"

#include <QSignalSpy>

/// The status machine, and what the window looks like in each status.
class StatusTest : public WindowFixture
{
    Q_OBJECT

private slots:
    void init() override
    {
        WindowFixture::init();
        start(); // nobody is logged in
        combo("cmServer")->addItem("Examplia-1");
        button("cbNoSound")->setChecked(true);
    }

    void atStart()
    {
        QCOMPARE(enabled("u:pbUpApp s:pbSave p:pbSaveProxy c:pbTestCancel a:edProxyAddr o:edProxyPort"),
                 QString("------"));
        QVERIFY(find("cbRunOnBoot")->isHidden() && find("cbDnsLeak")->isHidden() && find("cbAutoReconn")->isHidden());
        QVERIFY(!button("cbRember")->isChecked() && page() == "pageLogin");
        QVERIFY(m_window->minimumSize() == QSize(880, 580) && m_window->maximumSize() == QSize(880, 580));
        QVERIFY2(log().contains("Default Gateway: 198.51.100.1") && takeRoutes().isEmpty(),
                 "the gateway is remembered; nothing was saved, so nothing is repaired");
    }

    void everyStatus()
    {
        const QString down = "Korvan: Disconnected";
        const std::pair<KORVANSTATUS, QString> steps[] = {
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
        for (const auto &[status, expected] : steps) {
            m_window->setStatus(status);
            COMPARE_CASE("status " + QByteArray::number(status), look(), expected);
        }
    }

    /// What changes once, on the way into a status.
    void entering()
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

    void lockDown()
    {
        const std::tuple<const char *, bool, bool> cases[] = {
            {"Examplia-1", true, true},
            {"Examplia-1", false, false},
            {"Proxied-Samplonia", true, false},
            {"proxied-Samplonia", true, true}}; // letter case counts
        for (const auto &[server, ticked, locks] : cases) {
            combo("cmServer")->setItemText(0, server);
            button("cbLockDown")->setChecked(ticked);
            m_window->setStatus(STATUS_CONNECTED);
            const QByteArray route = locks ? " 0.0.0.0 mask 0.0.0.0 198.51.100.1\n" : "";
            COMPARE_CASE(server, takeRoutes(), locks ? "delete" + route : route);
            // Neither unticking the box nor another name in the list may strand the machine.
            button("cbLockDown")->setChecked(false);
            m_window->setStatus(STATUS_DISCONNECTED);
            COMPARE_CASE(server, takeRoutes(), locks ? "add" + route : route);
        }
    }

    /// The progress of an attempt moves in bursts, that of a download only when its size is known.
    void progress()
    {
        const auto *bar = find<QProgressBar>("pgLinkState");
        for (const auto &[ticks, value] : {std::pair(20, 14), std::pair(480, 99)}) { // only CONNECTED completes it
            for (int tick = 0; tick < ticks; ++tick) {
                QMetaObject::invokeMethod(m_window, "onProgress");
            }
            QCOMPARE(bar->value(), value);
        }
        for (const qlonglong size : {3, 0, -1}) {
            QMetaObject::invokeMethod(m_window, "onUpdateProgress", Q_ARG(qlonglong, 1), Q_ARG(qlonglong, size));
            QCOMPARE(find<QProgressBar>("pgUpdate")->value(), 33);
        }
    }

    /// What two seconds brought is shown as rates of one second, rounded down, and kept when the connection ends.
    void traffic()
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

private:
    /// The picture and the text; which of Connect and Disconnect is shown; what is enabled of Connect, Disconnect,
    /// Reconnect, the two lists, Update, and of the tray's Connect, Disconnect, Reconnect; the tray's tool tip.
    QString look() const
    {
        const QString picture = find<KvRetinaLabel>("lbStatus")->picture().section('_', -1).remove(".png");
        QString tray;
        for (const char *name : {"Connect", "Disconnect", "Reconnect"}) {
            tray += trayEntry(name)->isEnabled() ? QChar(name[0]).toLower() : '-';
        }
        return QStringList({picture, label("lbStatusT"), find("pbConnect")->isHidden() ? "-" : "c",
                            find("pbDisconnect")->isHidden() ? "-" : "d",
                            enabled("c:pbConnect d:pbDisconnect r:pbReconnect s:cmServer p:cmProto u:pbUpdate"), tray,
                            m_window->findChild<QSystemTrayIcon *>()->toolTip()})
            .join('|');
    }
};

QTEST_MAIN(StatusTest)
#include "StatusTest.moc"
