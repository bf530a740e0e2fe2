#include "stats/TransferTotals.h"
#include "tests/window/WindowFixture.h"

#include <QDir>

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
            {STATUS_INIT, "disconnected|NOT CONNECTED||c|-|cdr--u|---off|"},
            {STATUS_READY, "disconnected|NOT CONNECTED||c|-|c--spu|c--off|" + down},
            {STATUS_CONNECTING, "disconnected|NOT CONNECTED|Connecting...|-|d|cd----|-d-off|"
                                "Korvan: Connecting to server Examplia-1"},
            {STATUS_DISCONNECTING, "disconnected|NOT CONNECTED|Disconnecting...|-|d|c-----|---off|"
                                   "Korvan: Disconnecting..."}, // nothing was ever up
            {STATUS_CONNECTED, "connected| CONNECTED||-|d|cdr---|-dron|Korvan: Connected to server Examplia-1"},
            {STATUS_DISCONNECTING, "connected| CONNECTED|Disconnecting...|-|d|c-----|---off|"
                                   "Korvan: Disconnecting..."},
            {STATUS_DISCONNECTED, "disconnected|NOT CONNECTED||c|-|c--spu|c--off|" + down},
            {STATUS_BUSY, "disconnected|NOT CONNECTED||-|d|c----u|---off|" + down},
            {STATUS_CONNECTED, "connected| CONNECTED||-|d|cdr---|-dron|Korvan: Connected to server Examplia-1"},
            {STATUS_RECONNECTING, "disconnected|NOT CONNECTED|Reconnecting...|-|d|c-----|---off|" + down},
            // Only an attempt leads out of it.
            {STATUS_CONNECTED, "disconnected|NOT CONNECTED|Reconnecting...|-|d|c-----|---off|" + down},
            {STATUS_CONNECTING, "disconnected|NOT CONNECTED|Connecting...|-|d|cd----|-d-off|"
                                "Korvan: Connecting to server Examplia-1"},
        };
        for (const auto &[status, expected] : steps) {
            m_window->setStatus(status);
            COMPARE_CASE("status " + QByteArray::number(status), look(), expected);
            for (const char *name : {"pbUpAccount", "pbUpdate"}) { // they do the same, and tell why they do not
                QCOMPARE(find(name)->isEnabled(), find("pbUpdate")->isEnabled());
                QCOMPARE(find(name)->isEnabled(), find(name)->toolTip().isEmpty());
            }
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
        const auto rates = [this] {
            return label("lbDownload") + ' ' + label("lbUpload") + ' ' + label("lbSessionRecv");
        };
        QMetaObject::invokeMethod(m_window.get(), "onStatus");
        QCOMPARE(rates(), QString("1KB/s 1B/s 3KB")); // of one second, though two have passed
        m_window->setStatus(STATUS_DISCONNECTED);
        QCOMPARE(rates(), QString("0B/s 0B/s 3KB"));
        QCOMPARE(bar->value(), 0);
        m_window->setStatus(STATUS_DISCONNECTED);
        QCOMPARE(label("lbTotalRecv"), QString("3KB")); // by the tick, and not again at the end
    }

    /// The totals of the next start, after an end of the connection, of the program and after a reset.
    void totalsAreKept()
    {
        QDir().mkpath(appPath("/cfg"));
        UpdateTotalDataTransfer(3 << 10, 0); // today
        const std::tuple<const char *, std::function<void()>, const char *> cases[] = {
            {"a disconnect", [this] { m_window->setStatus(STATUS_DISCONNECTED); }, "6KB6KB"},
            {"an end while connected", [] {}, "9KB9KB"},
            {"an end while a reconnect is pending", [this] { m_window->setStatus(STATUS_RECONNECTING); }, "12KB12KB"},
            {"a reset, which no tick undoes",
             [this] {
                 QVERIFY(press("pbReset"));
                 QMetaObject::invokeMethod(m_window.get(), "onStatus");
                 QCOMPARE(label("lbTotalRecv"), QString("0B"));
                 m_window->setStatus(STATUS_DISCONNECTED);
             },
             "0B0B"},
        };
        for (const auto &[name, ending, totals] : cases) {
            start();
            button("cbNoSound")->setChecked(true);
            m_window->setStatus(STATUS_CONNECTING);
            m_window->setStatus(STATUS_CONNECTED);
            quint64 received = 3 << 10;
            quint64 sent = 3;
            engine().byteCount(received, sent);
            QMetaObject::invokeMethod(m_window.get(), "onStatus");
            ending();
            start();
            COMPARE_CASE(name, label("lbTotalRecv") + label("lbTotalRD"), QString(totals));
        }
    }

    /// What no file has yet at the turn of the month stays the old month's.
    void turnOfTheMonth()
    {
        QMainWindow window;
        Ui::Korvan form;
        form.setupUi(&window);
        Traffic traffic(&form, &engine());
        const QDate last(2026, 10, 31);
        UpdateTotalDataTransfer(100, 0, last);
        traffic.load();
        traffic.add(20, 0, last);
        traffic.add(3, 0, last.addDays(1));
        traffic.storeSession();
        TransferCounters stored;
        GetTotalDataTransfer(stored.totalReceived, stored.totalSent, stored.day, stored.dayReceived, stored.daySent,
                             stored.month, stored.monthReceived, stored.monthSent);
        QCOMPARE(stored.totalReceived, quint64(123));
        QCOMPARE(stored.monthReceived, quint64(3));
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
        QStringList walked;
        const auto walk = connect(qApp, &QApplication::focusChanged, this, [&walked](QWidget *, const QWidget *now) {
            walked += now != nullptr ? now->objectName() + ": " + now->accessibleName() : "";
        });
        for (const auto &[status, name] : steps) {
            m_window->setStatus(status);
            QCOMPARE(m_window->focusWidget(), find(name));
        }
        disconnect(walk); // passed nothing else on the way, which a screen reader would have read out
        QCOMPARE(walked.join("|"), QString("pbDisconnect: Disconnect|cardStatus: NOT CONNECTED Disconnecting...|"
                                           "pbConnect: Connect|pbDisconnect: Disconnect|"
                                           "cardStatus: NOT CONNECTED Reconnecting...|pbDisconnect: Disconnect"));
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
        combo("cmServer")->setItemText(0, "Examplia-1");
        m_window->setStatus(STATUS_CONNECTED);
        button("cbLockDown")->setChecked(true);
        for (const char *change : {"delete", "add"}) { // saved while connected it takes effect at once
            m_window->updateOption(true);
            expected += change + route;
            COMPARE_CASE(change, routes(), expected);
            button("cbLockDown")->setChecked(false);
        }
    }

    /// What goes past the tunnel is told while it is up, by the helper's own line alone, and not under lock-down.
    void pastTheTunnel()
    {
        const QString marker = "Not in the tunnel unless locked down: ";
        const auto tell = [this](const QString &message) {
            m_window->setStatus(STATUS_CONNECTING);
            engine().message(message);
            m_window->setStatus(STATUS_CONNECTED);
            return label("lbStatusNote");
        };
        const std::pair<QString, const char *> cases[] = {
            {"x\n" + marker + "all\ny", "No traffic goes through the tunnel."},
            {marker + "nothing", ""},
            {marker + "192.0.2.0/24, fd00::/8", "Not in the tunnel: 192.0.2.0/24, fd00::/8"},
            {"2026-11-23 07:24:30 " + marker + "all\nPUSH '" + marker + "all\n" + marker + "all, really", ""},
            {marker + "all but 10.0.0.0/8; 10.1.0.0/16",
             "Only in the tunnel: 10.0.0.0/8; Not in the tunnel: 10.1.0.0/16"},
        };
        for (const auto &[message, note] : cases) {
            COMPARE_CASE(message.toUtf8(), tell(message), QString(note));
        }
        button("cbLockDown")->setChecked(true);
        m_window->updateOption(true);
        QCOMPARE(label("lbStatusNote"), QString());
        button("cbLockDown")->setChecked(false);
        m_window->updateOption(true);
        QVERIFY(label("lbStatusNote").startsWith("Only"));
        engine().message(marker + "nothing"); // OpenVPN has made its tunnel anew
        QCOMPARE(label("lbStatusNote"), QString());
        QGuiApplication::setLayoutDirection(Qt::RightToLeft); // where the parts of an address would change places
        engine().message(marker + "2001:db8::/32");
        QGuiApplication::setLayoutDirection(Qt::LeftToRight);
        QCOMPARE(label("lbStatusNote"), QString(u8"Not in the tunnel: \u20662001:db8::/32\u2069"));
        engine().message(marker + "all");
        m_window->setStatus(STATUS_DISCONNECTED);
        QCOMPARE(label("lbStatusNote") + find("lbStatusNote")->toolTip(), QString());
    }

private:
    /// The picture, the text and the line below; which of Connect and Disconnect is shown; what is enabled of
    /// Connect, Disconnect, Reconnect, the two lists, Update, and of the tray's Connect, Disconnect, Reconnect; the
    /// tray's icon and tool tip.
    QString look() const
    {
        QString tray;
        for (const char *name : {"Connect", "Disconnect", "Reconnect"}) {
            tray += trayEntry(name)->isEnabled() ? QChar(name[0]).toLower() : '-';
        }
        const QImage icon = m_window->findChild<QSystemTrayIcon *>()->icon().pixmap(32).toImage();
        tray += icon == QIcon(":/img/korvan.png").pixmap(32).toImage() ? "on" : "off";
        return QStringList({find<KvRetinaLabel>("lbStatus")->picture().section('_', -1).remove(".png"),
                            label("lbStatusT"), label("lbStatusNote"), find("pbConnect")->isHidden() ? "-" : "c",
                            find("pbDisconnect")->isHidden() ? "-" : "d",
                            enabled("c:pbConnect d:pbDisconnect r:pbReconnect s:cmServer p:cmProto u:pbUpdate"), tray,
                            m_window->findChild<QSystemTrayIcon *>()->toolTip()})
            .join('|');
    }
};

QTEST_MAIN(StatusTest)
#include "StatusTest.moc"
