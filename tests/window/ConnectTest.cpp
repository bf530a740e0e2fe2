#include "tests/window/WindowFixture.h"
#include "ui/KvL2TPBox.h"

#include <QDir>

static const char kUp[] = "echo 'UDPv4 link remote: [AF_INET]203.0.113.21:1194'\n"
                          "echo 'Initialization Sequence Completed'; exec sleep 600";
static const char kHang[] = "exec sleep 600";
static const char kUnknownError[] = "Unknown error, please check log.";

/// The connect flow through the real buttons, with stand-ins for the tunnel helpers.
class ConnectTest : public WindowFixture
{
    Q_OBJECT

private slots:
    void init() override
    {
        WindowFixture::init();
        QDir(appPath("/noted")).removeRecursively();
        putFile(appPath("/cfg/L2TP.txt"), "Examplia-L2TP-1|203.0.113.21\r\n");
        startLoggedIn({"Examplia-1"});
    }

    /// The proxy's credentials are gone afterwards, whatever became of the attempt.
    void tellsTheHelper()
    {
        const QByteArray folder = appPath("").toUtf8();
        QVERIFY(press("rbHttp") && press("cbProxyAuth"));
        type("edProxyAddr", "127.0.0.1");
        type("edProxyPort", "3128");
        type("edProxyUser", QString::fromUtf8("Zoë"));
        type("edProxyPass", "p w");
        for (const auto &[script, status] :
             {std::pair("echo AUTH_FAILED; exit 1", "NOT CONNECTED"), std::pair(kUp, " CONNECTED")}) {
            helperDoes(script);
            if (script != kUp) {
                boxes().expect("Error", kUnknownError);
            }
            QVERIFY(press("pbConnect"));
            QTRY_COMPARE_WITH_TIMEOUT(boxes().left(), 0, 30000);
            QTRY_COMPARE_WITH_TIMEOUT(label("lbStatusT"), QString(status), 30000);
            QVERIFY2(noted("arguments")
                         .startsWith("--config\n" + folder + "/cfg/OpenVPN/temp\n--http-proxy\n127.0.0.1\n3128\n" +
                                     folder + "/cfg/proxy\n--cd\n" + folder + "/cfg/OpenVPN/\n"),
                     noted("arguments").constData());
            QCOMPARE(noted("proxy"), QByteArray("Zoë\r\np w\r\n"));
            QVERIFY(!QFile::exists(appPath("/cfg/proxy")));
        }
        QCOMPARE(fileBytes(folder + "/cfg/OpenVPN/temp"), fileBytes(folder + "/cfg/OpenVPN/Examplia-1.ovpn"));
        QTRY_COMPARE_WITH_TIMEOUT(label("lbServerIP"), QString("203.0.113.21"), 30000);
        QVERIFY(press("pbDisconnect"));
        QVERIFY(canConnect() && label("lbServerIP").isEmpty() && !engine().isRunning());
        QCOMPARE(takeRoutes(), QByteArray()); // no lock-down, so no route is touched

        QFile::remove(appPath("/compose"));
        boxes().expect("Error", kUnknownError);
        QVERIFY(press("pbConnect"));
        QTRY_COMPARE_WITH_TIMEOUT(boxes().left(), 0, 30000);
        QVERIFY(log().contains("[ERROR]openvpn compose is missed."));
    }

    void expiredCertificate()
    {
        const QString question = "Certificate might be expired.\nDo you want to renew subscription?";
        helperDoes(kUp);
        QVERIFY(press("pbConnect"));
        putFile(appPath("/cfg/OpenVPN/alice.crt"), "Not After : Dec 31 23:59:59 2009 GMT\n");
        for (const char *button : {"pbReconnect", "pbConnect"}) {
            boxes().expect("Notify", question, QMessageBox::Yes, QMessageBox::Yes);
            QVERIFY2(press(button), button);
            QTRY_VERIFY2_WITH_TIMEOUT(canConnect() && boxes().left() == 0, "the user can try again", 30000);
        }
        QCOMPARE(m_opened.count("https://portal.korvan.example/subscription"), 2);
        QCOMPARE(noted("starts"), QByteArray("up\n"));
    }

    void l2tpPassword()
    {
        putScript(appPath("/compose4"),
                  "case \"$*\" in L2TP\\ *) echo Success ;; *) echo 'Error 691: wrong'; exit 1 ;; esac");
        combo("cmProto")->setCurrentText("L2TP");
        for (const bool accept : {false, true}) {
            when([] { return qobject_cast<KvL2TPBox *>(QApplication::activeModalWidget()) != nullptr; },
                 [accept] {
                     QWidget *box = QApplication::activeModalWidget();
                     auto *edit = box->findChild<QLineEdit *>("edPass");
                     QCOMPARE(edit->echoMode(), QLineEdit::Password);
                     edit->setText("secret");
                     box->findChild<QCheckBox *>("ckRem")->setChecked(true);
                     QTest::keyClick(edit, accept ? Qt::Key_Return : Qt::Key_Escape);
                 });
            if (accept) {
                boxes().expect("Error", "Username or password is not valid.");
            }
            boxes().whileOpen = [] { QVERIFY(QFile::exists(appPath("/l2tp"))); };
            QVERIFY(press("pbConnect"));
            QTRY_COMPARE_WITH_TIMEOUT(boxes().left(), 0, 30000);
            QTRY_VERIFY2(!QFile::exists(appPath("/l2tp")), "asked for again at the next attempt");
        }
    }

    /// A second connect, a disconnect and a change of user.
    void clicksDuringTheAttempt()
    {
        helperDoes(kHang);
        duringTheAttempt([this] {
            press("Examplia-1");
            press("pbDisconnect");
        });
        QVERIFY(press("pbConnect"));
        QVERIFY(canConnect() && label("lbStatusT") == "NOT CONNECTED");
        QCOMPARE(noted("starts"), QByteArray("up\n"));

        duringTheAttempt([this] { press("pbChangeUser"); });
        QVERIFY(press("pbConnect"));
        QTRY_VERIFY_WITH_TIMEOUT(canConnect(), 30000);
        QVERIFY(page() == "pageLogin" && !engine().isRunning());
    }

    void messagesWaitForTheBox()
    {
        bool nested = false;
        boxes().expect("Error", kUnknownError);
        boxes().expect("Error", kUnknownError);
        boxes().whileOpen = [&] {
            if (boxes().left() == 1) {
                emit engine().message("[ERROR]second");
                emit engine().message("UDPv4 link remote: 10.1.2.3:1194");
                QCoreApplication::processEvents();
                nested = boxes().left() == 0 || label("lbServerIP") == "10.1.2.3";
            }
        };
        emit engine().message("[ERROR]first");
        QTRY_COMPARE_WITH_TIMEOUT(label("lbServerIP"), QString("10.1.2.3"), 30000);
        QVERIFY(!nested);
    }

    void quitDuringTheAttempt()
    {
        helperDoes(kHang);
        boxes().expect("Exit", "Are you sure you wish to quit Korvan?", QMessageBox::Yes | QMessageBox::No,
                       QMessageBox::Yes);
        duringTheAttempt([this] { press("pbClose"); });
        QTimer::singleShot(0, m_window, [this] { press("pbConnect"); });
        QApplication::exec();
        QCOMPARE(takeRoutes(), QByteArray());
        QCOMPARE(label("lbStatusT"), QString("NOT CONNECTED"));
    }

private:
    /// The next helper notes its start, its arguments and the proxy's credentials; then it does this.
    static void helperDoes(const QByteArray &script)
    {
        putScript(appPath("/compose"), "cd '" + appPath("").toUtf8() +
                                           "'; mkdir -p noted; printf '%s\\n' \"$@\" > noted/arguments\n"
                                           "cat cfg/proxy > noted/proxy; echo up >> noted/starts\n" +
                                           script);
    }

    static QByteArray noted(const char *what) { return fileBytes(appPath("/noted/") + what); }
    /// Runs the action while the window waits for the helper.
    void duringTheAttempt(const std::function<void()> &action) const
    {
        const QByteArray before = noted("starts");
        when([before] { return noted("starts") != before; }, action);
    }

    bool canConnect() const { return !find("pbConnect")->isHidden() && find("cmServer")->isEnabled(); }
};

QTEST_MAIN(ConnectTest)
#include "ConnectTest.moc"
