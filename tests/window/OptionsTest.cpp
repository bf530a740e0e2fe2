#include "controller/Options.h"
#include "account/SavedLogin.h"
#include "account/Updates.h"
#include "tests/window/WindowFixture.h"
#include "ui/KvImageBox.h"

#include <QNetworkProxy>

/// The settings and proxy pages and what they leave on disk.
class OptionsTest : public WindowFixture
{
    Q_OBJECT

    const QString m_path = appPath("/cfg/option");

private slots:
    void firstStarts()
    {
        for (const char *refresh : {"Every Startup", "Never"}) { // the second one reads the empty file of the first
            start();
            QVERIFY(QFile::exists(m_path) && fileBytes(m_path).isEmpty() && canSave() == "--");
            QCOMPARE(combo("cmUpdate")->currentText(), QString(refresh));
        }
    }

    void everyChangeIsSaved()
    {
        open();
        QCOMPARE(canSave(), QString("--")); // a login changes nothing
        // Two boxes that are hidden by now still explain themselves; only the first one can be ticked.
        boxes.expect("Warning",
                     "Please note that if auto reconnect is enabled, there will be a brief moment \n"
                     "in which your programs may not be protected by the VPN during reconnection. \n"
                     "Do you still wish to enable auto-reconnect?",
                     QMessageBox::Yes, QMessageBox::Yes);
        when([] { return qobject_cast<KvImageBox *>(QApplication::activeModalWidget()) != nullptr; },
             [] {
                 QCOMPARE(QApplication::activeModalWidget()->windowTitle(), QString("Korvan Help"));
                 QApplication::activeModalWidget()->findChild<QAbstractButton *>()->click();
             });
        for (const char *name : {"rbSocks", "rbNone", "rbHttp", "cbConnectOnBoot", "cbHideConnection", "cbNoSound",
                                 "cbLockDown", "cbDnsLeak", "cbProxyAuth", "cbAutoReconn", "cbRunOnBoot"}) {
            QTest::keyClick(find(name), Qt::Key_Space);
            COMPARE_CASE(name, savesBy("pbSave"), true);
        }
        for (const char *name : {"Addr", "Port", "User", "Pass"}) {
            QTest::keyClicks(find(qPrintable("edProxy" + QString(name))),
                             *name == 'P' && name[1] == 'o' ? "08080x" : name);
            COMPARE_CASE(name, savesBy("pbSaveProxy"), true);
        }
        for (const char *name : {"cmBootServer", "cmUpdate"}) {
            QTest::keyClick(find(name), Qt::Key_Down);
            COMPARE_CASE(name, savesBy("pbSave"), true);
        }
        // clang-format off
        QCOMPARE(fileBytes(m_path).toHex(), QByteArray(
            "00000000" "00000002" "00000008" "0041006400640072" "00000008" "0038003000380030" "01" // Addr, 8080
            "00000010" "005d002e004f0045002b005f00400028" "00000010" "0020006000690074003d0077005d002e" // scrambled
            "01" "00" "01" "01" "00" "00000016" "00530061006d0070006c006f006e00690061002d0031" // Samplonia-1
            "00000002" "0000000e" "004f00700065006e00560050004e" "01" "01")); // OpenVPN
        // clang-format on
    }

    void whatNoClickCanSetStays()
    {
        Options options;
        options.runOnBoot = options.autoReconnect = options.dnsLeak = options.lockDown = true;
        options.proxy.setType(3);
        options.proxy.address = options.proxy.port = "1";
        options.bootServer = "Samplonia-1";
        options.server = 1; // the boot server
        options.protocol = "OpenVPN";
        putFile(m_path, optionBytes(options));
        open();
        QVERIFY(save());
        QCOMPARE(fileBytes(m_path), optionBytes(options));
        const QByteArray bundle = appPath("").remove("/Contents/MacOS").toUtf8();
        QCOMPARE(loginItems(), "({Hide = 0; Path = \"" + bundle + "\";})");
    }

    /// What was saved is what the next login shows, and what is missing for an automatic connection is told.
    void loginAfterASave()
    {
        open();
        combo("cmBootServer")->setCurrentText("Samplonia-1");
        type("edPass", "secret");
        QVERIFY(press("cbConnectOnBoot") && press("pbSave"));
        QCOMPARE(find("cbConnectOnBoot")->accessibleDescription(),
                 QString("Needs \"Remember login\" on the sign-in page."));
        QCOMPARE(find<QLineEdit>("edUser")->text() + find<QLineEdit>("edPass")->text(), QString("alicesecret"));
        QVERIFY(press("cbConnectOnBoot") && press("pbSave") && press("pbChangeUser") && press("cbRember"));
        QVERIFY(press("pbExist"));
        QCOMPARE(combo("cmBootServer")->currentText() + canSave(), QString("Samplonia-1--"));
        QVERIFY2(!QFile::exists(savedLoginPath()), "the service has never seen that password");
    }

    void truncatedFile()
    {
        Options options;
        options.lockDown = true;
        options.updateFrequency = 4;
        options.protocol = "OpenVPN";
        const QByteArray whole = optionBytes(options);
        open();
        for (int length = whole.size(); length >= 0; --length) {
            putFile(m_path, whole.left(length));
            m_window->updateOption(false);
            const QByteArray name = QByteArray::number(length) + " bytes";
            COMPARE_CASE(name, button("cbLockDown")->isChecked(), length == whole.size());
            COMPARE_CASE(name, combo("cmUpdate")->currentIndex(), length >= whole.size() - 20 ? 4 : 0);
        }
    }

    /// Which fields can be edited (address and port, the box for credentials, the credentials), and the proxy of the
    /// program's own requests once it is saved.
    void proxy()
    {
        putFile(appPath("/cfg/proxy"), "of a program that was killed");
        open();
        QVERIFY(!QFile::exists(appPath("/cfg/proxy")));
        type("edProxyAddr", "proxy.example");
        type("edProxyUser", "u");
        type("edProxyPass", "p");
        const char *const steps[][3] = {{"rbNone", "3128", "----- 2  0  "},
                                        {"rbSocks", "65536", "ap--- 1 proxy.example 0  "},
                                        {"rbHttp", "3128", "apb-- 3 proxy.example 3128 u p"},
                                        {"cbProxyAuth", "8080x", "apbuw 3 proxy.example 0 u p"},
                                        {"rbSocks", "1080", "ap--- 1 proxy.example 1080  "},
                                        {"rbHttp", "3128", "apbuw 3 proxy.example 3128 u p"},
                                        {"cbProxyAuth", "3128", "apb-- 3 proxy.example 3128 u p"}};
        for (const auto &[clicked, port, expected] : steps) {
            button(clicked)->click();
            type("edProxyPort", port);
            QVERIFY(press("pbSaveProxy"));
            const QNetworkProxy proxy = QNetworkProxy::applicationProxy();
            COMPARE_CASE(clicked,
                         enabled("a:edProxyAddr p:edProxyPort b:cbProxyAuth u:edProxyUser w:edProxyPass") +
                             QString(" %1 %2 %3 ").arg(proxy.type()).arg(proxy.hostName()).arg(proxy.port()) +
                             proxy.user() + ' ' + proxy.password(),
                         expected);
        }
    }

    /// The choices' own intervals are one row lower than their names.
    void refreshTime()
    {
        open();
        const QDateTime now = QDateTime::currentDateTime();
        writeNextRefresh(now.addDays(14));
        m_window->updateRefresh(false);
        for (const auto &[choice, days] : {std::pair(3, 14), std::pair(2, 7), std::pair(1, 1), std::pair(0, 0)}) {
            combo("cmUpdate")->setCurrentIndex(choice);
            QVERIFY(save());
            QCOMPARE((now.secsTo(readNextRefresh()) + 7200) / 86400, days); // clocks may change meanwhile
        }
        combo("cmUpdate")->setCurrentIndex(4);
        QVERIFY(save());
        QVERIFY2(readNextRefresh() < now.addYears(-1000000), "it wraps into the far past");
        const QByteArray whole = fileBytes(appPath("/cfg/update"));
        for (int length = 0; length < whole.size(); ++length) {
            putFile(appPath("/cfg/update"), whole.left(length));
            QVERIFY(!readNextRefresh().isValid());
        }
    }

private:
    void open() { startLoggedIn({"Examplia-1", "Samplonia-1"}); }
    QString canSave() const { return enabled("s:pbSave p:pbSaveProxy"); }
    bool savesBy(const char *button) const { return canSave() == "sp" && press(button) && canSave() == "--"; }
    /// Changes something and saves it.
    bool save() const { return press("cbNoSound") && press("pbSave"); }
};

QTEST_MAIN(OptionsTest)
#include "OptionsTest.moc"
