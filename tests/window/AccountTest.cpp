#include "account/ServerLists.h"
#include "common/AppPath.h"
#include "tests/support/OnePage.h"
#include "tests/support/TestFiles.h"
#include "tests/window/WindowFixture.h"
#include "ui/KvRetinaTabBar.h"

#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QProgressBar>
#include <QStackedWidget>
#include <QTableWidget>

/// Login, server lists and updates in the window, with a web server of one page on the loopback interface.
class AccountTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void serverLists();
    void noServers();
    void protocolSwitchKeepsTheBootServer();
    void storedBootServer();
    void clicksDuringTheLogin();
    void quitDuringTheLogin();
    void publicAddress();
    void updateWithoutAddress();
    void updateProgress();

private:
    Korvan &start() { return *(m_window = &m_fixture->start()); }
    /// Makes the page the account API.
    static void useApi(const OnePage &page);
    QStringList items(const char *box) const;
    QStringList menuEntries() const;
    QString page() const { return m_fixture->find<QStackedWidget>("stack")->currentWidget()->objectName(); }

    std::unique_ptr<WindowFixture> m_fixture;
    Korvan *m_window = nullptr;
};

void AccountTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
}

void AccountTest::cleanup()
{
    QCOMPARE(m_fixture->boxes.takeFailures(), QString());
    QCOMPARE(m_fixture->boxes.left(), 0);
    m_fixture.reset();
}

void AccountTest::useApi(const OnePage &page)
{
    putFile(appPath("/setting.ini"),
            "[LOGIN]\nVER=" + page.url().toUtf8() + "\n[UPDATE]\nURL=http://127.0.0.1:1/update.xml\n");
}

QStringList AccountTest::items(const char *box) const
{
    QStringList texts;
    const auto *combo = m_fixture->find<QComboBox>(box);
    for (int i = 0; i < combo->count(); ++i) {
        texts += combo->itemText(i);
    }
    return texts;
}

QStringList AccountTest::menuEntries() const
{
    QStringList texts;
    const auto menus = m_window->findChildren<QMenu *>();
    for (const QMenu *menu : menus) {
        if (menu->title() == "Connect" && !menu->menuAction()->associatedWidgets().isEmpty()) {
            const auto actions = menu->actions();
            for (const QAction *action : actions) {
                texts += action->text();
            }
        }
    }
    return texts;
}

void AccountTest::serverLists()
{
    const QStringList servers{"A",
                              "b",
                              "c",
                              "Ex\"amp'l|ia & more",
                              QString::fromUtf8("Größe∕2"),
                              QString(200, 'z'),
                              QString::fromUtf8("サーバー")};
    for (const QString &server : servers) {
        putFile(profileFolder() + server + (server == "c" ? ".OVPN" : ".ovpn"), "remote h 1\n");
    }
    putFile(profileFolder() + "no server.txt", "");
    putFile(profileFolder() + "skiplist.dat", "b|a|" + servers.at(4).toUtf8());
    start();
    QVERIFY(m_fixture->press("pbExist"));
    QCOMPARE(items("cmServer"), servers);
    QCOMPARE(items("cmBootServer"), servers);
    QCOMPARE(menuEntries(), servers);
    const auto *table = m_fixture->find<QTableWidget>("tbPing");
    QStringList rows;
    for (int row = 0; row < table->rowCount(); ++row) {
        rows += table->item(row, 0)->text();
        QCOMPARE(table->rowHeight(row), 20);
    }
    QCOMPARE(rows, QStringList({"A", "c", servers.at(3), servers.at(5), servers.at(6)})); // letter case counts here

    QFile::remove(profileFolder() + "A.ovpn");
    m_window->updateOpenVPNServerList();
    QCOMPARE(menuEntries(), servers.mid(1));
    QCOMPARE(table->rowCount(), 4);
}

void AccountTest::noServers()
{
    start();
    QVERIFY(m_fixture->press("pbExist"));
    QCOMPARE(page(), QString("pageMain"));
    QCOMPARE(items("cmServer") + items("cmBootServer") + menuEntries(), QStringList());
    QCOMPARE(m_fixture->find<QLabel>("lbExpired")->text(), QString());
    QVERIFY(m_fixture->press("pbConnect")); // without a server there is nothing to do
    QCOMPARE(m_fixture->find<QLabel>("lbStatusT")->text(), QString("NOT CONNECTED"));
    m_fixture->find<QComboBox>("cmProto")->setCurrentText("L2TP"); // the list is missing
    QCOMPARE(items("cmServer"), QStringList());
}

void AccountTest::protocolSwitchKeepsTheBootServer()
{
    WindowFixture::putProfile({"Alone", "Both"});
    putFile(l2tpListPath(), " First | 192.0.2.1\r\nOnly a name\n\nBoth|192.0.2.2|more\r\n");
    start();
    m_fixture->press("pbExist");
    auto *server = m_fixture->find<QComboBox>("cmServer");
    auto *protocol = m_fixture->find<QComboBox>("cmProto");
    m_fixture->find<QComboBox>("cmBootServer")->setCurrentText("Both");
    protocol->setCurrentText("L2TP");
    QCOMPARE(items("cmServer"), QStringList({"First ", "Both"}));
    QCOMPARE(server->currentText() + m_fixture->find<QComboBox>("cmBootServer")->currentText(), QString("BothBoth"));
    QCOMPARE(server->currentData().toString(), QString("192.0.2.2"));
    QCOMPARE(menuEntries(), QStringList({"Alone", "Both"})); // of OpenVPN in any case
    protocol->setCurrentText("OpenVPN");
    QCOMPARE(server->currentText(), QString("Both"));
    m_fixture->find<QComboBox>("cmBootServer")->setCurrentText("Alone");
    protocol->setCurrentText("L2TP");
    QCOMPARE(server->currentIndex(), 0);
}

/// The stored server is selected when it is there, by its exact name.
void AccountTest::storedBootServer()
{
    WindowFixture::putProfile({"Examplia-1", "Samplonia-1", "samplonia-2"});
    for (const auto &[stored, selected] : {std::pair("Samplonia-1", 1), std::pair("Samplonia-2", 0)}) {
        start();
        m_fixture->press("pbExist");
        m_fixture->find<QComboBox>("cmBootServer")->setItemText(0, stored);
        m_fixture->find<QComboBox>("cmBootServer")->setCurrentIndex(0);
        m_fixture->find<QAbstractButton>("pbSave")->click();
        start();
        m_fixture->press("pbExist");
        QCOMPARE(m_fixture->find<QComboBox>("cmBootServer")->currentIndex(), selected);
        QCOMPARE(m_fixture->find<QComboBox>("cmServer")->currentIndex(), selected);
    }
}

/// While the service is asked the window lives, and no other click gets in between.
void AccountTest::clicksDuringTheLogin()
{
    WindowFixture::putProfile({"Examplia-1"});
    OnePage api("", true);
    useApi(api);
    start();
    m_fixture->find<QLineEdit>("edUser")->setText("alice");
    m_fixture->find<QLineEdit>("edPass")->setText("secret");
    QString during;
    QTimer::singleShot(300, this, [&] {
        m_fixture->press("pbLogin");
        m_fixture->press("pbExist");
        for (const char *button : {"pbUpdate", "pbUpAccount", "pbConnect"}) {
            m_fixture->find<QAbstractButton>(button)->click();
        }
        during = page() + ' ' + items("cmServer").join('|');
        api.close();
        const auto sockets = api.children();
        for (QObject *socket : sockets) {
            socket->deleteLater(); // which closes the connection
        }
    });
    m_fixture->boxes.expect("Warning", "Update of new configuration failed.\nPlease try again later.\n"
                                       "Korvan-GUI will use existing keys and configurations.");
    QVERIFY(m_fixture->press("pbLogin"));
    QCOMPARE(during, QString("pageLogin Getting files from server ..."));
    QCOMPARE(page(), QString("pageMain"));
    QCOMPARE(items("cmServer"), QStringList("Examplia-1"));
}

void AccountTest::quitDuringTheLogin()
{
    OnePage api("", true);
    useApi(api);
    start();
    m_fixture->find<QLineEdit>("edUser")->setText("alice");
    QTimer::singleShot(0, this, [this] { m_fixture->press("pbLogin"); });
    QTimer::singleShot(300, qApp, &QApplication::quit);
    QElapsedTimer timer;
    timer.start();
    QApplication::exec();
    QVERIFY2(timer.elapsed() < 8000, "the end does not wait for the service");
    QVERIFY(api.request.startsWith("POST /api "));
    m_fixture->end();
}

/// The IP test page through the application proxy, which here answers itself.
void AccountTest::publicAddress()
{
    OnePage proxy("", true);
    start();
    m_fixture->find<QAbstractButton>("rbHttp")->click();
    m_fixture->find<QLineEdit>("edProxyAddr")->setText("127.0.0.1");
    m_fixture->find<QLineEdit>("edProxyPort")->setText(QString::number(proxy.serverPort()));
    m_fixture->find<QAbstractButton>("pbSaveProxy")->click();
    m_window->setStatus(STATUS_READY);
    QTRY_VERIFY(proxy.request.startsWith("GET /testip.php HTTP/1.1\r\nHost: ip.korvan.example\r\n"));

    // A request that hangs neither holds up the window nor the next one.
    proxy.answer = ok("<html><h1>You are in Examplia? Your IP: 203.0.113.5</h1></html>");
    m_window->setStatus(STATUS_READY);
    QTRY_COMPARE(m_fixture->find<QLabel>("lbPublicIP")->text(), QString("203.0.113.5"));
    QCOMPARE(m_fixture->find<QLabel>("lbCountry")->text(), QString("Examplia"));
    proxy.answer = ok("nothing of the kind").replace("200 OK", "503 Busy");
    proxy.request.clear();
    m_window->updateCountryFromIP();
    QTRY_COMPARE(m_fixture->find<QLabel>("lbPublicIP")->text(), QString());
    QCOMPARE(m_fixture->find<QLabel>("lbCountry")->text(), QString());
}

void AccountTest::updateWithoutAddress()
{
    start();
    auto *button = m_fixture->find<QAbstractButton>("pbUpApp");
    QVERIFY(!button->isEnabled());
    button->setEnabled(true);
    m_fixture->boxes.expect("Update", "Update url is not valid.");
    button->click();
    QVERIFY(!QDir(appPath("/update")).exists());
}

void AccountTest::updateProgress()
{
    start();
    auto *bar = m_fixture->find<QProgressBar>("pgUpdate");
    const auto after = [&](qlonglong received, qlonglong total) {
        QMetaObject::invokeMethod(m_window, "onUpdateProgress", Q_ARG(qlonglong, received), Q_ARG(qlonglong, total));
        return bar->value();
    };
    QCOMPARE(after(1, 3), 33);
    QCOMPARE(after(7, 0), 33);
    QCOMPARE(after(7, -1), 33); // an unknown size
    QCOMPARE(after(Q_INT64_C(1) << 50, Q_INT64_C(1) << 51), 50);
}

int main(int argc, char *argv[])
{
    return runWindowTest<AccountTest>(argc, argv);
}
#include "AccountTest.moc"
