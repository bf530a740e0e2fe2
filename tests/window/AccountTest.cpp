#include "account/LastProfile.h"
#include "account/Limits.h"
#include "account/Login.h"
#include "account/ServerLists.h"
#include "account/ServiceRequest.h"
#include "tests/support/OnePage.h"
#include "tests/window/WindowFixture.h"

#include <QElapsedTimer>
#include <QNetworkAccessManager>
#include <QNetworkReply>
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
        const QStringList names{
            "A", "b", "c", "Ex\"amp'l|ia & more", odd, QString(200, 'z'), QString::fromUtf8("サーバー")};
        for (const QString &name : names) {
            putFile(profileFolder() + name + (name == "c" ? ".OVPN" : ".ovpn"), "remote h 1\n");
        }
        putFile(profileFolder() + "no server.txt", "");
        putFile(profileFolder() + "skiplist.dat", "b|a|" + odd.toUtf8()); // letter case counts here
        QVERIFY2(press("pbChangeUser") && press("pbExist"), "a profile that comes brings its skip list");
        const QStringList tested{"A", "c", names.at(3), names.at(5), names.at(6)};
        QCOMPARE(servers(), QVector<QStringList>({names, names, names, tested}));
    }

    void protocolSwitchKeepsTheServer()
    {
        putFile(l2tpListPath(), "Größe-1|192.0.2.1\r\nOnly a name\n\n  Both|192.0.2.2|more|\t\r\nNowhere|");
        startLoggedIn({"Alone", "Both"});
        const QStringList openVPN{"Alone", "Both"}; // stays in the menu and the table
        const QStringList listed{"Größe-1", "Both", "Nowhere"};
        const QVector<QStringList> l2tp{listed, listed, openVPN, openVPN};
        for (const auto &[server, address] : {std::pair("Both", "192.0.2.2"), {"Alone", "192.0.2.1"}}) {
            combo("cmProto")->setCurrentText("OpenVPN");
            QCOMPARE(servers(), QVector<QStringList>(4, openVPN));
            combo("cmBootServer")->setCurrentText(server);
            combo("cmProto")->setCurrentText("L2TP");
            QCOMPARE(servers(), l2tp);
            QCOMPARE(combo("cmServer")->currentData().toString(), QString(address));
        }
        QVERIFY(press("pbSave"));
        start();
        QVERIFY(press("pbExist"));
        QCOMPARE(servers(), l2tp);
    }

    /// While the service is asked the window lives, and no other click gets in between.
    void clicksDuringTheLogin()
    {
        putFile(profileFolder() + "Examplia-1.ovpn", "remote h 1\n");
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
        boxes.expect("Warning", "Update of new configuration failed.\nPlease try again later.\n"
                                "Korvan-GUI will use existing keys and configurations.");
        QTest::keyClick(find("edUser"), Qt::Key_Return);
        QCOMPARE(during, QString("pageLogin Getting files from server ..."));
        QCOMPARE(page() + ' ' + items("cmServer").join('|'), QString("pageMain Examplia-1"));

        QVERIFY(press("pbUpdate")); // the sign-in page comes, and says why
        QTRY_COMPARE(page(), QString("pageLogin"));
        QCOMPARE(label("lbSignInHint"),
                 QString("The configuration could not be refreshed: the service can not be reached."));
        QVERIFY(press("Proxy Settings..."));
        QCOMPARE(page() + ' ' + find("pbUpdate")->toolTip(), QString("pageMain Please sign in first."));
        QVERIFY2(press("pbConnect") && page() == "pageLogin", "there is no server to connect to");
        QVERIFY(press("pbExist") && label("lbSignInHint").startsWith("Use the name and password"));
    }

    /// An answer longer than any profile is not waited for.
    void endlessAnswer()
    {
        OnePage api("HTTP/1.1 200 OK\r\n\r\nPK" + QByteArray(65 << 20, 'x'), true);
        startAgainst(api);
        boxes.expect("Warning", "Retrieval of configuration and keys failed.\nPlease try again later or contact "
                                "Support at support@korvan.example");
        QVERIFY(press("pbLogin"));
        QVERIFY(log().contains("the answer of 127.0.0.1 is longer than 67108864 bytes and was given up"));
    }

    /// A login that is given up leaves the connection of another request to the same port alone.
    void downloadBesideALogin()
    {
        OnePage page("HTTP/1.1 200 OK\r\n\r\nPK", true);
        putFile(appPath("/setting.ini"), "[LOGIN]\nVER=" + page.url().toUtf8() + '\n');
        QNetworkAccessManager manager;
        const QNetworkReply *download = sendRequest(manager, QNetworkRequest(QUrl(page.url())), kArchiveLimit);
        QTRY_VERIFY(download->bytesAvailable() > 0);
        QVERIFY(postLogin("x", 200).body.isEmpty());
        QTRY_COMPARE(page.open(), 1);
        QVERIFY(download->isRunning());
    }

    /// The profile before is kept, and offered, until another one is there as a whole.
    void refreshThatDoesNotUnpack()
    {
        const char *damaged = "The configuration that came is damaged.";
        const char *unstored = "The configuration that came could not be stored.";
        // What the archive tool does, the servers that are left, and what is told.
        const std::tuple<QByteArray, QStringList, const char *> cases[] = {
            {"exit 1", {}, damaged},
            {"", {}, damaged}, // an archive without servers
            {"touch \"$4/My custom.ovpn\"", {}, nullptr},
            {"touch \"$4/New.ovpn\"; echo 'bad CRC' >&2; exit 1", {"New"}, damaged},
            {"touch \"$4/New.ovpn\"; echo 'New-2.ovpn: No space left on device' >&2; exit 1", {"New"}, unstored},
            {"touch \"$4/New.ovpn\"", {"New"}, nullptr},
        };
        for (const auto &[tool, left, told] : cases) {
            clear();
            OnePage api(ok("PK\3\4 and so on"));
            putFile(appPath("/setting.ini"), "[LOGIN]\nVER=" + api.url().toUtf8() + '\n');
            putScript(appPath("/compose7"), tool);
            startLoggedIn({"My custom", "Old"});      // the first is the person's own
            for (int times = 0; times < 2; ++times) { // what is left of the first does not take the last one's place
                boxes.expect("Notify", told == nullptr ? "Update Successful." : "Update Failed.");
                QVERIFY(press("pbUpdate"));
            }
            COMPARE_CASE(tool, items("cmServer"), QStringList("My custom") + left);
            COMPARE_CASE(tool, hasLastProfile(), told != nullptr);
            QVERIFY2(told == nullptr || label("lbNotice").startsWith(told), tool.constData());
            m_window->setStatus(STATUS_CONNECTING);
            m_window->setStatus(STATUS_DISCONNECTED); // the offer is still there after an attempt
            QVERIFY2(told == nullptr || press("pbLastProfile"), tool.constData());
            COMPARE_CASE(tool, items("cmServer"),
                         QStringList("My custom") + (told == nullptr ? left : QStringList("Old")));
        }
    }

    void lastProfileOfAnotherUser()
    {
        OnePage api(ok("<h1>Hotel</h1>"));
        putFile(appPath("/setting.ini"), "[LOGIN]\nVER=" + api.url().toUtf8() + '\n');
        putScript(appPath("/compose7"), "exit 1");
        startLoggedIn({"Old"}); // as alice
        for (const auto &[user, isOffered] : {std::pair("bob", false), {"alice", true}}) {
            QVERIFY(press("pbChangeUser"));
            type("edUser", user);
            QVERIFY(press("pbLogin"));
            QCOMPARE(press("pbLastProfile"), isOffered);
        }
    }

    void quitDuringTheLogin()
    {
        OnePage api("", true);
        startAgainst(api);
        QTimer::singleShot(0, m_window.get(), [this] { press("pbLogin"); });
        when([&api] { return !api.request.isEmpty(); }, [this] { press("Exit"); });
        QElapsedTimer timer;
        timer.start();
        QApplication::exec();
        QVERIFY2(timer.elapsed() < 8000, "the end does not wait for the service");
    }

private:
    /// A window whose login is asked of this page.
    void startAgainst(const OnePage &api)
    {
        putFile(appPath("/setting.ini"),
                fileBytes(appPath("/setting.ini")).replace("http://127.0.0.1:1/api", api.url().toUtf8()));
        start();
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
