#include "tests/window/WindowFixture.h"

#include "common/AppPath.h"
#include "tests/support/TestFiles.h"
#include "ui/KvL2TPBox.h"
#include "ui_Korvan.h"

#include <QDesktopServices>
#include <QMenu>
#include <QUrl>

/// The connect flow through the real buttons, with stand-ins for the tunnel helpers.
class ConnectTest : public QObject
{
    Q_OBJECT

public slots:
    void noteUrl(const QUrl &url) { m_opened += url.toString(); }

private slots:
    void init();
    void cleanup();
    void connectsAndDisconnects();
    void proxyCredentialsAreGoneAfterwards_data();
    void proxyCredentialsAreGoneAfterwards();
    void failedAttemptIsShown();
    void killSwitch();
    void reconnectsByItself();
    void givesUpAReconnectThatCanNotStart();
    void expiredCertificate();
    void trayMenuConnects();
    void l2tpAsksForThePassword();
    void l2tpRejectsThePassword();
    void clicksDuringTheAttempt();
    void messagesWaitForTheBox();
    void quitQuestion();

private:
    Korvan &start();
    static void composeDoes(const QByteArray &script);
    bool comesTo(const char *text) const;
    QLabel *label(const char *name) const { return m_fixture->find<QLabel>(name); }

    std::unique_ptr<WindowFixture> m_fixture;
    Korvan *m_window = nullptr;
    QStringList m_opened;
};

static const QByteArray kUp = "echo 'UDPv4 link remote: [AF_INET]203.0.113.21:1194'\n"
                              "echo 'Initialization Sequence Completed'\n";
static const QByteArray kStay = "exec sleep 600\n";

void ConnectTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
    m_opened.clear();
    QDesktopServices::setUrlHandler("https", this, "noteUrl");
}

void ConnectTest::cleanup()
{
    QCOMPARE(m_fixture->boxes.takeFailures(), QString());
    QCOMPARE(m_fixture->boxes.left(), 0);
    m_fixture.reset();
}

Korvan &ConnectTest::start()
{
    m_window = &m_fixture->startLoggedIn({"Examplia-1", "Proxied-Samplonia"});
    return *m_window;
}

void ConnectTest::composeDoes(const QByteArray &script)
{
    putScript(appPath("/compose"), "printf '%s\\n' \"$@\" > '" + appPath("/arguments").toUtf8() +
                                       "'\n"
                                       "cat '" +
                                       appPath("/cfg/proxy").toUtf8() + "' > '" + appPath("/seen-proxy").toUtf8() +
                                       "' 2>/dev/null\n" + script);
}

bool ConnectTest::comesTo(const char *text) const
{
    return QTest::qWaitFor([&] { return label("lbStatusT")->text() == QLatin1String(text); }, 60000);
}

void ConnectTest::connectsAndDisconnects()
{
    composeDoes(kUp + kStay);
    start();
    QVERIFY(m_fixture->press("pbConnect"));
    QVERIFY(comesTo(" CONNECTED"));
    QTRY_COMPARE(label("lbServerIP")->text(), QString("203.0.113.21"));
    const QByteArray folder = appPath("").toUtf8();
    QVERIFY2(fileBytes(appPath("/arguments"))
                 .startsWith("--config\n" + folder + "/cfg/OpenVPN/temp\n--cd\n" + folder + "/cfg/OpenVPN/\n"),
             fileBytes(appPath("/arguments")).constData());
    QCOMPARE(fileBytes(appPath("/cfg/OpenVPN/temp")), fileBytes(appPath("/cfg/OpenVPN/Examplia-1.ovpn")));
    QVERIFY2(!m_fixture->press("pbConnect"), "it is hidden now");
    QVERIFY(m_fixture->press("pbDisconnect"));
    QVERIFY(comesTo("NOT CONNECTED"));
    QCOMPARE(label("lbServerIP")->text(), QString());
    QVERIFY(!m_fixture->engine().isRunning());
    QCOMPARE(WindowFixture::takeRoutes(), QByteArray()); // no lock-down, no route is touched
}

void ConnectTest::proxyCredentialsAreGoneAfterwards_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<bool>("fails");
    QTest::newRow("success") << kUp + kStay << false;
    QTest::newRow("failure") << QByteArray("exit 1\n") << true;
}

void ConnectTest::proxyCredentialsAreGoneAfterwards()
{
    QFETCH(QByteArray, script);
    QFETCH(bool, fails);
    composeDoes(script);
    start();
    m_fixture->find<QAbstractButton>("rbHttp")->click();
    m_fixture->find<QAbstractButton>("cbProxyAuth")->click();
    m_fixture->find<QLineEdit>("edProxyAddr")->setText("127.0.0.1");
    m_fixture->find<QLineEdit>("edProxyPort")->setText("3128");
    m_fixture->find<QLineEdit>("edProxyUser")->setText(QString::fromUtf8("Zoë"));
    m_fixture->find<QLineEdit>("edProxyPass")->setText("p w");
    if (fails) {
        m_fixture->boxes.expect("Error", "Unknown error, please check log.");
    }
    m_fixture->press("pbConnect");
    QVERIFY(comesTo(fails ? "NOT CONNECTED" : " CONNECTED"));
    QTRY_COMPARE(m_fixture->boxes.left(), 0);
    QVERIFY(fileBytes(appPath("/arguments"))
                .contains("--http-proxy\n127.0.0.1\n3128\n" + appPath("/cfg/proxy").toUtf8() + "\n--cd\n"));
    QCOMPARE(fileBytes(appPath("/seen-proxy")), QByteArray("Zoë\r\np w\r\n"));
    QTRY_VERIFY(!QFile::exists(appPath("/cfg/proxy")));
}

void ConnectTest::failedAttemptIsShown()
{
    composeDoes("echo 'AUTH_FAILED'; exit 1\n");
    start();
    m_fixture->boxes.expect("Error", "Unknown error, please check log.");
    m_fixture->press("pbConnect");
    QTRY_VERIFY(m_fixture->boxes.left() == 0 && m_fixture->find<QWidget>("cmServer")->isEnabled());
    QCOMPARE(label("lbStatusT")->text(), QString("NOT CONNECTED"));

    QFile::remove(appPath("/compose"));
    m_fixture->boxes.expect("Error", "Unknown error, please check log.");
    m_fixture->press("pbConnect");
    QTRY_COMPARE(m_fixture->boxes.left(), 0);
    QVERIFY(fileBytes(appPath("/log.txt")).contains("[ERROR]openvpn compose is missed."));
}

void ConnectTest::killSwitch()
{
    composeDoes(kUp + "sleep 0.3\nexit 1\n");
    start();
    QByteArray whileOpen;
    m_fixture->boxes.whileOpen = [&] { whileOpen = WindowFixture::takeRoutes(); };
    m_fixture->boxes.expect("Error",
                            "Internet connection has been terminated for your security.\nPlease press OK to resume "
                            "your regular internet connection and reconnect to the VPN if needed.");
    m_fixture->press("pbConnect");
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->boxes.left(), 0, 30000);
    QCOMPARE(whileOpen, QByteArray("delete 0.0.0.0 mask 0.0.0.0 198.51.100.1\n"));
    QVERIFY(comesTo("NOT CONNECTED"));
    QCOMPARE(WindowFixture::takeRoutes(), QByteArray("add 0.0.0.0 mask 0.0.0.0 198.51.100.1\n"));
}

void ConnectTest::reconnectsByItself()
{
    composeDoes(kUp + "[ -e '" + appPath("/second").toUtf8() + "' ] || { touch '" + appPath("/second").toUtf8() +
                "'; sleep 0.3; exit 1; }\n" + kStay);
    QFile::remove(appPath("/second"));
    start();
    m_fixture->find<QCheckBox>("cbAutoReconn")->setChecked(true);
    m_fixture->find<QCheckBox>("cbLockDown")->setChecked(true);
    m_fixture->press("pbConnect");
    const auto ups = [] { return fileBytes(appPath("/log.txt")).count("Initialization Sequence Completed"); };
    QTRY_COMPARE_WITH_TIMEOUT(ups(), 2, 30000);
    QVERIFY(comesTo(" CONNECTED"));
    QVERIFY2(!WindowFixture::takeRoutes().contains("add"), "locked down all the way");
}

void ConnectTest::givesUpAReconnectThatCanNotStart()
{
    composeDoes(kUp + kStay);
    start();
    m_fixture->press("pbConnect");
    QVERIFY(comesTo(" CONNECTED"));
    putFile(appPath("/cfg/OpenVPN/alice.crt"), "Not After : Dec 31 23:59:59 2009 GMT\n");
    m_fixture->boxes.expect("Notify", "Certificate might be expired.\nDo you want to renew subscription?",
                            QMessageBox::Yes, QMessageBox::Yes);
    QVERIFY(m_fixture->press("pbReconnect"));
    QTRY_VERIFY_WITH_TIMEOUT(m_fixture->find<QWidget>("cmServer")->isEnabled(), 30000);
    QVERIFY2(!m_fixture->find<QWidget>("pbConnect")->isHidden(), "the user can try again");
}

void ConnectTest::expiredCertificate()
{
    composeDoes(kUp + kStay);
    start();
    putFile(appPath("/cfg/OpenVPN/alice.crt"), "Not After : Jan  5 00:00:00 2020 GMT\n");
    QFile::remove(appPath("/arguments"));
    m_fixture->boxes.expect("Notify", "Certificate might be expired.\nDo you want to renew subscription?",
                            QMessageBox::Yes, QMessageBox::Yes);
    m_fixture->press("pbConnect");
    QTRY_COMPARE(m_opened.size(), 1);
    QVERIFY(m_opened.first().endsWith("/subscription"));
    QVERIFY(!QFile::exists(appPath("/arguments")));
    QVERIFY(!m_fixture->find<QWidget>("pbConnect")->isHidden());
}

void ConnectTest::trayMenuConnects()
{
    composeDoes(kUp + kStay);
    start();
    for (auto *menu : m_window->findChildren<QMenu *>()) {
        for (QAction *action : menu->actions()) {
            if (action->text() == "Proxied-Samplonia") {
                action->trigger();
            }
        }
    }
    QVERIFY(comesTo(" CONNECTED"));
    QCOMPARE(m_fixture->find<QComboBox>("cmServer")->currentText(), QString("Proxied-Samplonia"));
    QVERIFY(fileBytes(appPath("/log.txt")).contains("Use port"));
}

/// Answers the L2TP password dialog as soon as it stands open.
static void answerL2TPBox(const QString &password, bool remember, bool accept)
{
    auto *timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, [=] {
        auto *box = qobject_cast<KvL2TPBox *>(QApplication::activeModalWidget());
        if (box != nullptr) {
            timer->deleteLater();
            auto *edit = box->findChild<QLineEdit *>("edPass");
            QCOMPARE(edit->echoMode(), QLineEdit::Password);
            edit->setText(password);
            box->findChild<QCheckBox *>("ckRem")->setChecked(remember);
            accept ? QTest::keyClick(edit, Qt::Key_Return) : box->findChild<QPushButton *>("btnCancel")->click();
        }
    });
    timer->start(10);
}

static void composeFourDoes(const QByteArray &dial)
{
    putScript(appPath("/compose4"), "echo \"$*\" >> '" + appPath("/arguments").toUtf8() +
                                        "'\ncase \"$*\" in\n"
                                        "L2TP\\ *|CHECK\\ *) echo 'Recv 5'; echo 'Send 6'; echo Success ;;\n"
                                        "Korvan-L2TP) echo Success ;;\n"
                                        "*) " +
                                        dial + " ;;\nesac\n");
}

void ConnectTest::l2tpAsksForThePassword()
{
    composeFourDoes("echo Success");
    putFile(appPath("/cfg/L2TP.txt"), "Examplia-L2TP-1|203.0.113.21\r\n");
    QFile::remove(appPath("/arguments"));
    start();
    m_fixture->find<QComboBox>("cmProto")->setCurrentText("L2TP");
    QCOMPARE(m_fixture->find<QComboBox>("cmServer")->currentText(), QString("Examplia-L2TP-1"));

    answerL2TPBox("typed", true, false);
    m_fixture->press("pbConnect");
    QVERIFY2(!QFile::exists(appPath("/arguments")) && !QFile::exists(appPath("/l2tp")), "cancelled");

    answerL2TPBox(QString::fromUtf8("pässword"), true, true);
    m_fixture->press("pbConnect");
    QVERIFY(comesTo(" CONNECTED"));
    QCOMPARE(QByteArray::fromBase64(fileBytes(appPath("/l2tp"))), QByteArray("pässword"));
    QVERIFY(fileBytes(appPath("/arguments"))
                .startsWith("L2TP Korvan-L2TP 203.0.113.21 mellowfinch\nKorvan-L2TP alice pässword\n"));
    m_fixture->press("pbDisconnect");
    QVERIFY(comesTo("NOT CONNECTED"));
    QTRY_VERIFY(fileBytes(appPath("/arguments")).endsWith("Korvan-L2TP\n"));
}

void ConnectTest::l2tpRejectsThePassword()
{
    composeFourDoes("echo 'Error 691: wrong'; exit 1");
    putFile(appPath("/cfg/L2TP.txt"), "Examplia-L2TP-1|203.0.113.21\n");
    start();
    putFile(appPath("/l2tp"), QByteArray("remembered").toBase64());
    m_fixture->find<QComboBox>("cmProto")->setCurrentText("L2TP");
    m_fixture->boxes.expect("Error", "Username or password is not valid.");
    m_fixture->press("pbConnect");
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->boxes.left(), 0, 30000);
    QTRY_VERIFY(!QFile::exists(appPath("/l2tp")));
}

/// A second connect, a disconnect and a change of user while the first attempt still waits.
void ConnectTest::clicksDuringTheAttempt()
{
    composeDoes("echo started >> '" + appPath("/starts").toUtf8() + "'\n" + kStay);
    QFile::remove(appPath("/starts"));
    start();
    QTimer::singleShot(0, m_window, [this] { QMetaObject::invokeMethod(m_window, "onConnect"); });
    QTimer::singleShot(300, m_window, [this] { QMetaObject::invokeMethod(m_window, "onConnect"); });
    QTimer::singleShot(600, m_window, [this] { m_fixture->press("pbDisconnect"); });
    m_fixture->press("pbConnect");
    QVERIFY(m_fixture->find<QWidget>("cmServer")->isEnabled());
    QCOMPARE(label("lbStatusT")->text(), QString("NOT CONNECTED"));
    QCOMPARE(fileBytes(appPath("/starts")), QByteArray("started\n"));

    QTimer::singleShot(300, m_window, [this] { QMetaObject::invokeMethod(m_window, "onChangeUser"); });
    m_fixture->press("pbConnect");
    QTRY_VERIFY_WITH_TIMEOUT(m_fixture->find<QWidget>("cmServer")->isEnabled(), 30000);
    QCOMPARE(m_fixture->find<QStackedWidget>("stack")->currentWidget()->objectName(), QString("pageLogin"));
    QVERIFY(!m_fixture->engine().isRunning());
}

void ConnectTest::messagesWaitForTheBox()
{
    start();
    bool nested = false;
    m_fixture->boxes.expect("Error", "Unknown error, please check log.");
    m_fixture->boxes.expect("Error", "Unknown error, please check log.");
    m_fixture->boxes.whileOpen = [&] {
        if (m_fixture->boxes.left() == 1) {
            emit m_fixture->engine().message("[ERROR]second");
            emit m_fixture->engine().message("UDPv4 link remote: 10.1.2.3:1194");
            QCoreApplication::processEvents();
            nested = m_fixture->boxes.left() == 0 || label("lbServerIP")->text() == "10.1.2.3";
        }
    };
    emit m_fixture->engine().message("[ERROR]first");
    QTRY_COMPARE(m_fixture->boxes.left(), 0);
    QVERIFY(!nested);
    QTRY_COMPARE(label("lbServerIP")->text(), QString("10.1.2.3"));
}

void ConnectTest::quitQuestion()
{
    start();
    const QString text = "Are you sure you wish to quit Korvan?";
    m_fixture->boxes.expect("Exit", text, QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
    m_fixture->press("pbClose");
    QCOMPARE(m_fixture->boxes.left(), 0);
    QVERIFY(m_window->isVisible());

    composeDoes(kStay); // quit while an attempt waits
    m_fixture->boxes.expect("Exit", text, QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes);
    QTimer::singleShot(0, [this] { m_fixture->press("pbConnect"); });
    QTimer::singleShot(500, [this] { m_fixture->press("pbClose"); });
    QApplication::exec();
    QCOMPARE(WindowFixture::takeRoutes(), QByteArray());
    QVERIFY(label("lbStatusT")->text() != " CONNECTED");
}

int main(int argc, char *argv[])
{
    return runWindowTest<ConnectTest>(argc, argv);
}
#include "ConnectTest.moc"
