#include "tests/window/WindowFixture.h"

static const char kUnknownError[] = "Unknown error, please check log.";

/// The connect flow through the real buttons, with stand-ins for the tunnel helpers.
class ConnectTest : public WindowFixture
{
    Q_OBJECT

private slots:
    void init() override
    {
        WindowFixture::init();
        putFile(appPath("/cfg/L2TP.txt"), "Examplia-L2TP-1|203.0.113.21\r\n");
        startLoggedIn({"Examplia-1"});
    }

    void expiredCertificate()
    {
        helperDoes("echo 'Initialization Sequence Completed'; exec sleep 600");
        QVERIFY(press("pbConnect"));
        putFile(appPath("/cfg/OpenVPN/alice.crt"), "Not After : Dec 31 23:59:59 2009 GMT\n");
        boxes.whileOpen = [this] { // an automatic connection meets it, too
            const auto *box = m_window->findChild<QMessageBox *>();
            QTest::keyClick(box->button(QMessageBox::Yes), Qt::Key_Space);
            QVERIFY2(box->isVisible(), "what is being typed is no answer");
        };
        for (const char *button : {"pbReconnect", "pbConnect"}) {
            boxes.expect("Notify", "Certificate might be expired.\nDo you want to renew subscription?",
                         QMessageBox::Yes, QMessageBox::Yes);
            QVERIFY2(press(button), button);
            QTRY_VERIFY2_WITH_TIMEOUT(canConnect() && boxes.left() == 0, "the user can try again", 30000);
        }
        boxes.whileOpen = nullptr;
        QCOMPARE(m_opened.count("https://portal.korvan.example/subscription"), 2);
        QCOMPARE(noted().count('\n'), 1);
    }

    /// A second connect, a disconnect, a change of user; and a refresh of the configuration while it reconnects.
    void clicksDuringTheAttempt()
    {
        helperDoes("exec sleep 600");
        whenUp([this] { QVERIFY(press("Examplia-1") && press("pbDisconnect")); });
        QVERIFY(press("pbConnect"));
        QVERIFY(canConnect() && label("lbStatusT") == "NOT CONNECTED");
        QCOMPARE(noted().count('\n'), 1);

        helperDoes("exec sleep 600");
        whenUp([this] { press("pbChangeUser"); });
        QVERIFY(press("pbConnect"));
        QTRY_VERIFY_WITH_TIMEOUT(canConnect(), 30000);
        QVERIFY(page() == "pageLogin" && !engine().isRunning());

        helperDoes("echo 'Initialization Sequence Completed'; exec sleep 600");
        QVERIFY(press("Examplia-1"));
        QVERIFY2(page() == "pageMain", "a login there would lift lock-down under the tunnel");
        QTimer::singleShot(0, m_window.get(), [this] { press("pbUpAccount"); });
        QVERIFY(press("pbReconnect"));
        QTRY_COMPARE_WITH_TIMEOUT(noted().count('\n'), 2, 30000);
        QCOMPARE(combo("cmServer")->currentText(), QString("Examplia-1"));
    }

    /// What is asked for while a tunnel is being closed, or while the box about its end is open, waits for that.
    void clicksThatWait()
    {
        helperDoes("echo 'Initialization Sequence Completed'; exec sleep 600");
        QVERIFY(press("pbConnect"));
        when([this] { return engine().state() == VPNClient::DISCONNECTING; },
             [this] { QMetaObject::invokeMethod(m_window.get(), "onConnect"); });
        QVERIFY(press("pbDisconnect"));
        QTRY_COMPARE_WITH_TIMEOUT(noted().count('\n'), 2, 30000);
        QTRY_COMPARE(label("lbStatusT"), QString(" CONNECTED"));

        helperDoes("echo 'Initialization Sequence Completed'; exec sleep 600");
        boxes.expect("Error", kUnknownError);
        QByteArray behind = "none";
        boxes.whileOpen = [&] {
            press("Reconnect");
            QTest::qWait(0);
            behind = noted();
        };
        emit engine().message("[ERROR]");
        boxes.whileOpen = nullptr;
        QCOMPARE(behind, QByteArray());
        QTRY_COMPARE_WITH_TIMEOUT(noted().count('\n'), 1, 30000);
        QTRY_COMPARE(label("lbStatusT"), QString(" CONNECTED"));
    }

    /// A box of the person's own does not keep the window from showing what goes on behind it, nor does the notice of
    /// an earlier login lead away from the tunnel.
    void comesUpBehindABox()
    {
        helperDoes("sleep 0.5; echo 'Initialization Sequence Completed'; exec sleep 600");
        boxes.expect("Exit", "Are you sure you wish to quit Korvan?", QMessageBox::Yes | QMessageBox::No,
                     QMessageBox::No);
        bool shown = false;
        boxes.whileOpen = [&] {
            shown = QTest::qWaitFor([this] { return label("lbStatusT") == " CONNECTED"; }, 20000);
        };
        whenUp([this] {
            useLastProfile();
            press("pbClose");
        });
        QVERIFY(press("pbConnect"));
        boxes.whileOpen = nullptr;
        QVERIFY(shown);
        useLastProfile();
        QCOMPARE(label("lbStatusT"), QString(" CONNECTED"));
    }

    void quitDuringTheAttempt()
    {
        helperDoes("exec sleep 600");
        boxes.expect("Exit", "Are you sure you wish to quit Korvan?", QMessageBox::Yes | QMessageBox::No,
                     QMessageBox::Yes);
        whenUp([this] { press("pbClose"); });
        QTimer::singleShot(0, m_window.get(), [this] { press("pbConnect"); });
        QApplication::exec();
        QCOMPARE(routes() + label("lbStatusT").toUtf8(), QByteArray("NOT CONNECTED"));
    }

    void messages()
    {
        const char kKillSwitch[] = "Internet connection has been terminated for your security.\nPlease press OK to "
                                   "resume your regular internet connection and reconnect to the VPN if needed.";
        // The message, the protocol, the box that comes, and the server's address afterwards.
        const std::tuple<QString, const char *, QString, const char *> cases[] = {
            {"UDPv4 link local: (not bound)\nUDPv4 link remote: [AF_INET]198.51.100.7:1194\n"
             "[server] Peer Connection Initiated with [AF_INET]198.51.100.7:1194\n",
             "OpenVPN", "", "198.51.100.7"},
            {"UDPv6 link remote: [AF_INET6]::1:1194", "OpenVPN", "", "198.51.100.7"}, // no news
            // Names that a server has chosen for itself.
            {"2026-11-23 08:00:00 [ERROR]openvpn error] Peer Connection Initiated", "OpenVPN", "", "198.51.100.7"},
            {"VERIFY OK: depth=0, CN=UDPv4 link remote: 10.6.6.6:1194", "OpenVPN", "", "198.51.100.7"},
            {"Error 691", "L2TP", "", "198.51.100.7"},
            {"[ERROR]openvpn error, please check log", "OpenVPN", kKillSwitch, ""},
            {"[ERROR]openvpn error, 691", "L2TP", kKillSwitch, ""},
            {"[ERROR]Error 691", "L2TP", "Username or password is not valid.", ""},
            {"[ERROR]Error 691", "OpenVPN", kUnknownError, ""},
            {"UDPv4 link remote: 10", "OpenVPN", "", "10"}}; // no port
        for (const auto &[message, protocol, box, address] : cases) {
            putFile(appPath("/l2tp"), "");
            combo("cmProto")->setCurrentText(protocol);
            if (!box.isEmpty()) {
                boxes.expect("Error", box);
                m_window->setStatus(STATUS_CONNECTED);
            }
            QString behind;
            boxes.whileOpen = [&] {
                behind = label("lbStatusT") + find<KvRetinaLabel>("lbStatus")->picture() + label("lbServerIP");
            };
            emit engine().message(message);
            boxes.whileOpen = nullptr;
            QVERIFY2(!behind.contains(QRegularExpression("^ |_connected|198[.]51")), "nothing is protected");
            COMPARE_CASE(message.toUtf8(), boxes.takeFailures() + label("lbServerIP"), address);
            QCOMPARE(boxes.left(), 0);
            QCOMPARE(QFile::exists(appPath("/l2tp")), !box.startsWith("Username")); // asked for again
        }
    }

    /// What the engine tells while a box is open waits for its end.
    void messagesWaitForABox()
    {
        QString whileOpen;
        emit engine().message("UDPv4 link remote: 10");
        boxes.expect("Error", kUnknownError);
        boxes.whileOpen = [&] {
            emit engine().message("UDPv4 link remote: 10.1.2.3:1194");
            whileOpen = label("lbServerIP");
        };
        emit engine().message("[ERROR]");
        boxes.whileOpen = nullptr;
        QCOMPARE(whileOpen + ' ' + label("lbServerIP"), QString(" 10.1.2.3"));
    }

private:
    /// The next helper notes its arguments, a line a start; then it does this.
    static void helperDoes(const QByteArray &script)
    {
        QFile::remove(appPath("/fake/starts"));
        putScript(appPath("/compose"), "cd '" + appPath("/fake").toUtf8() + "'; echo \"$*\" >> starts\n" + script);
    }

    static QByteArray noted() { return fileBytes(appPath("/fake/starts")); }

    /// Runs the action while the window waits for the helper.
    void whenUp(const std::function<void()> &action) const
    {
        when([] { return !noted().isEmpty(); }, action);
    }

    bool canConnect() const { return !find("pbConnect")->isHidden() && find("cmServer")->isEnabled(); }
};

QTEST_MAIN(ConnectTest)
#include "ConnectTest.moc"
