#include "tests/window/WindowFixture.h"

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
        auto *bar = find<QProgressBar>("pgLinkState");
        button("cbHideConnection")->setChecked(true);
        m_window->setStatus(STATUS_CONNECTING);
        QVERIFY(m_window->isVisible());
        for (const auto &[ticks, value] : {std::pair(20, 14), {480, 99}}) { // in bursts; only CONNECTED completes it
            for (int tick = 0; tick < ticks; ++tick) {
                QMetaObject::invokeMethod(m_window.get(), "onProgress");
            }
            QCOMPARE(bar->value(), value);
        }
        m_window->setStatus(STATUS_CONNECTED);
        QVERIFY2(bar->value() == 100 && m_window->isMinimized(),
                 "nothing brings it back from a tray that is missing");
        quint64 received = 3 * 1024;
        quint64 sent = 3;
        engine().byteCount(received, sent);
        for (const char *rates : {"1KB/s 1B/s 3KB", "0B/s 0B/s 3KB"}) { // of one second, though two have passed
            QMetaObject::invokeMethod(m_window.get(), "onStatus");
            QCOMPARE(label("lbDownload") + ' ' + label("lbUpload") + ' ' + label("lbSessionRecv"), QString(rates));
        }
        m_window->setStatus(STATUS_DISCONNECTED);
        QCOMPARE(bar->value(), 0);
        m_window->setStatus(STATUS_DISCONNECTED);
        QCOMPARE(label("lbTotalRecv"), QString("3KB")); // by the tick, and not again at the end
        start();
        QCOMPARE(label("lbTotalRecv") + label("lbTotalRD"), QString("3KB3KB"));
    }

    /// The keyboard stays with the button that connects and disconnects, and presses nothing else meanwhile.
    void focus()
    {
        m_window->setStatus(STATUS_READY);
        QCOMPARE(m_window->focusWidget(), find("pbConnect"));
        const std::pair<KORVANSTATUS, const char *> steps[] = {
            {STATUS_CONNECTING, "pbDisconnect"}, {STATUS_DISCONNECTING, "cardStatus"},
            {STATUS_DISCONNECTED, "pbConnect"},  {STATUS_CONNECTED, "pbDisconnect"},
            {STATUS_RECONNECTING, "cardStatus"}, {STATUS_CONNECTING, "pbDisconnect"}};
        for (const auto &[status, name] : steps) {
            m_window->setStatus(status);
            QCOMPARE(m_window->focusWidget(), find(name));
        }
        find("pbChangeUser")->setFocus();
        m_window->setStatus(STATUS_CONNECTED);
        QCOMPARE(m_window->focusWidget(), find("pbChangeUser"));
        QTest::keyClick(m_window->focusWidget(), Qt::Key_Return);
        QCOMPARE(page(), QString("pageLogin"));
    }

    /// Takes the default route away while connected, and puts it back whatever is chosen by then.
    void lockDown()
    {
        const QByteArray route = " 0.0.0.0 mask 0.0.0.0 198.51.100.1\n";
        QByteArray expected;
        for (const char *server : {"Examplia-1", "Proxied-Samplonia", "proxied-Samplonia"}) { // letter case counts
            combo("cmServer")->setItemText(0, server);
            button("cbLockDown")->setChecked(true);
            m_window->setStatus(STATUS_CONNECTED);
            button("cbLockDown")->setChecked(false);
            combo("cmServer")->setItemText(0, "Proxied-Other");
            m_window->setStatus(STATUS_DISCONNECTED);
            expected += server[0] == 'P' ? "" : "delete" + route + "add" + route;
            COMPARE_CASE(server, routes(), expected);
        }
    }

private:
    /// The picture and the text; which of Connect and Disconnect is shown; what is enabled of Connect, Disconnect,
    /// Reconnect, the two lists, Update, and of the tray's Connect, Disconnect, Reconnect; the tray's tool tip.
    QString look() const
    {
        QString tray;
        for (const char *name : {"Connect", "Disconnect", "Reconnect"}) {
            tray += trayEntry(name)->isEnabled() ? QChar(name[0]).toLower() : '-';
        }
        return QStringList({find<KvRetinaLabel>("lbStatus")->picture().section('_', -1).remove(".png"),
                            label("lbStatusT"), find("pbConnect")->isHidden() ? "-" : "c",
                            find("pbDisconnect")->isHidden() ? "-" : "d",
                            enabled("c:pbConnect d:pbDisconnect r:pbReconnect s:cmServer p:cmProto u:pbUpdate"), tray,
                            m_window->findChild<QSystemTrayIcon *>()->toolTip()})
            .join('|');
    }
};

QTEST_MAIN(StatusTest)
#include "StatusTest.moc"
