#include "account/ServerLists.h"
#include "tests/support/OnePage.h"
#include "tests/window/WindowFixture.h"

#include <QElapsedTimer>
#include <QTcpSocket>

/// Login and server lists in the window, with a web server of one page on the loopback interface.
class AccountTest : public WindowFixture
{
    Q_OBJECT

private slots:
    void serverLists()
    {
        start();
        QVERIFY(press("pbExist") && press("pbConnect")); // there is nothing to do
        QCOMPARE(page() + label("lbExpired") + label("lbStatusT"), QString("pageMainNOT CONNECTED"));
        QCOMPARE(servers(), QVector<QStringList>(4));

        const QString odd = QString::fromUtf8("Größe∕2");
        QStringList names{
            "A", "b", "c", "Ex\"amp'l|ia & more", odd, QString(200, 'z'), QString::fromUtf8("サーバー")};
        for (const QString &name : names) {
            putFile(profileFolder() + name + (name == "c" ? ".OVPN" : ".ovpn"), "remote h 1\n");
        }
        putFile(profileFolder() + "no server.txt", "");
        putFile(profileFolder() + "skiplist.dat", "b|a|" + odd.toUtf8()); // letter case counts here
        start();
        QVERIFY(press("pbExist"));
        QStringList tested{"A", "c", names.at(3), names.at(5), names.at(6)};
        QCOMPARE(servers(), QVector<QStringList>({names, names, names, tested}));

        QFile::remove(profileFolder() + names.takeFirst() + ".ovpn");
        tested.removeFirst();
        m_window->updateOpenVPNServerList();
        QCOMPARE(servers(), QVector<QStringList>({names, names, names, tested}));
    }

    void protocolSwitchKeepsTheServer()
    {
        putFile(l2tpListPath(), "First|192.0.2.1\r\nOnly a name\n\nBoth|192.0.2.2|more\r\n");
        startLoggedIn({"Alone", "Both"});
        const std::tuple<const char *, const char *, QStringList, const char *> steps[] = {
            {"Both", "L2TP", {"First", "Both"}, "Both Both 192.0.2.2"},
            {"Both", "OpenVPN", {"Alone", "Both"}, "Both Both "},
            {"Alone", "L2TP", {"First", "Both"}, "First First 192.0.2.1"}};
        const QStringList openVPN{"Alone", "Both"}; // stays in the menu and the table
        for (const auto &[bootServer, protocol, list, selected] : steps) {
            combo("cmBootServer")->setCurrentText(bootServer);
            combo("cmProto")->setCurrentText(protocol);
            QCOMPARE(servers(), QVector<QStringList>({list, list, openVPN, openVPN}));
            QCOMPARE(combo("cmServer")->currentText() + ' ' + combo("cmBootServer")->currentText() + ' ' +
                         combo("cmServer")->currentData().toString(),
                     QString(selected));
        }
    }

    /// While the service is asked the window lives, and no other click gets in between.
    void clicksDuringTheLogin()
    {
        putProfile({"Examplia-1"});
        OnePage api("", true);
        startAgainst(api);
        QString during;
        when([&api] { return !api.request.isEmpty(); },
             [&] {
                 for (const char *name : {"pbLogin", "pbExist", "pbUpdate", "pbUpAccount", "pbConnect"}) {
                     button(name)->click();
                 }
                 during = page() + ' ' + items("cmServer").join('|');
                 api.close();
                 qDeleteAll(api.findChildren<QTcpSocket *>()); // which closes the connection
             });
        boxes().expect("Warning", "Update of new configuration failed.\nPlease try again later.\n"
                                  "Korvan-GUI will use existing keys and configurations.");
        QVERIFY(press("pbLogin"));
        QCOMPARE(during, QString("pageLogin Getting files from server ..."));
        QCOMPARE(page() + ' ' + items("cmServer").join('|'), QString("pageMain Examplia-1"));
    }

    void quitDuringTheLogin()
    {
        OnePage api("", true);
        startAgainst(api);
        QTimer::singleShot(0, m_window, [this] { press("pbLogin"); });
        when([&api] { return !api.request.isEmpty(); }, [this] { press("Exit"); });
        QElapsedTimer timer;
        timer.start();
        QApplication::exec();
        QVERIFY2(timer.elapsed() < 8000, "the end does not wait for the service");
    }

    /// The IP test page through the application proxy, which here answers itself.
    void publicAddress()
    {
        OnePage proxy("", true);
        start();
        button("rbHttp")->click();
        type("edProxyAddr", "127.0.0.1");
        type("edProxyPort", QString::number(proxy.serverPort()));
        button("pbSaveProxy")->click();
        m_window->setStatus(STATUS_READY);
        QTRY_VERIFY_WITH_TIMEOUT(proxy.request.startsWith("GET /testip.php HTTP/1.1\r\nHost: ip.korvan.example\r\n"),
                                 30000);
        // A request that hangs neither holds up the window nor the next one.
        for (const auto &[answer, address] :
             {std::pair(ok("<html><h1>You are in Examplia? Your IP: 203.0.113.5</h1></html>"),
                        "203.0.113.5 Examplia"),
              std::pair(ok("nothing of the kind").replace("200 OK", "503 Busy"), " ")}) {
            proxy.answer = answer;
            m_window->updateCountryFromIP();
            QTRY_COMPARE_WITH_TIMEOUT(label("lbPublicIP") + ' ' + label("lbCountry"), QString(address), 30000);
        }
    }

private:
    /// A window whose login is asked of this page, with the login page filled in.
    void startAgainst(const OnePage &api)
    {
        putFile(appPath("/setting.ini"),
                "[LOGIN]\nVER=" + api.url().toUtf8() + "\n[UPDATE]\nURL=http://127.0.0.1:1/update.xml\n");
        start();
        type("edUser", "alice");
        type("edPass", "secret");
    }

    /// The servers of the dashboard, of the settings, of the tray's menu and of the ping table.
    QVector<QStringList> servers() const
    {
        QStringList entries;
        for (const QAction *action : trayEntry("Connect")->menu()->actions()) {
            entries += action->text();
        }
        return {items("cmServer"), items("cmBootServer"), entries, items("tbPing")};
    }
};

QTEST_MAIN(AccountTest)
#include "AccountTest.moc"
