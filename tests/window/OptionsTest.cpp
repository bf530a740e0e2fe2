#include "controller/Options.h"
#include "account/Updates.h"
#include "tests/window/WindowFixture.h"
#include "ui/KvImageBox.h"

#include <QDir>
#include <QNetworkProxy>
#include <QRandomGenerator>

static QString optionPath()
{
    return appPath("/cfg/option");
}

/// The settings and proxy pages and what they leave on disk.
class OptionsTest : public WindowFixture
{
    Q_OBJECT

private slots:
    void firstStarts()
    {
        start();
        QVERIFY(QFile::exists(optionPath()) && fileBytes(optionPath()).isEmpty());
        QCOMPARE(combo("cmUpdate")->currentText(), QString("Every Startup"));
        start(); // reads the empty file
        QCOMPARE(combo("cmUpdate")->currentText(), QString("Never"));
        QVERIFY(!button("rbNone")->isChecked() && !canSave());
    }

    void everyChangeIsSaved()
    {
        open();
        QVERIFY(press("pbSave")); // the login has filled the list of boot servers, which counts as a change
        for (const char *name : {"rbSocks", "rbNone", "rbHttp", "cbConnectOnBoot", "cbHideConnection", "cbNoSound",
                                 "cbLockDown", "cbDnsLeak", "cbProxyAuth", "edProxyAddr", "edProxyPort",
                                 "edProxyUser", "edProxyPass", "cmBootServer", "cmUpdate"}) {
            if (name[0] == 'e') {
                QTest::keyClicks(find(name), name + 7);
            } else if (name[1] == 'm') {
                QTest::keyClick(find(name), Qt::Key_Down);
            } else {
                button(name)->click();
            }
            COMPARE_CASE(name, canSave(), true);
            COMPARE_CASE(name, press(name[0] == 'e' ? "pbSaveProxy" : "pbSave"), true);
            COMPARE_CASE(name, enabled("s:pbSave p:pbSaveProxy"), "--");
        }
        // clang-format off
        Options expected{0, 2, "Addr", "Port", true, "User", "Pass", true, false, true, false, false, "Samplonia-1", 2,
                         "OpenVPN", true, true};
        // clang-format on
        QCOMPARE(fileBytes(optionPath()), optionBytes(expected));
        QCOMPARE(QFileInfo(optionPath()).permissions() & (QFile::ReadGroup | QFile::ReadOther), 0);

        // What no click can set stays over a save.
        expected.noSound = expected.runOnBoot = expected.autoReconnect = true;
        expected.connectOnBoot = false;
        expected.server = 1; // the boot server
        putFile(optionPath(), optionBytes(expected));
        open();
        button("cbNoSound")->click();
        QVERIFY(save());
        QCOMPARE(fileBytes(optionPath()), optionBytes(expected));
        const QString bundle = appPath("").remove("/Contents/MacOS");
        QVERIFY(bundle.endsWith("/Korvan.app"));
        QCOMPARE(loginItems(), "({Hide = 0; Path = \"" + bundle.toUtf8() + "\";})");
    }

    void damagedFiles()
    {
        Options options;
        options.dnsLeak = options.lockDown = true;
        options.updateFrequency = 4;
        options.protocol = "OpenVPN";
        const QByteArray whole = optionBytes(options);
        open();
        for (int length = whole.size(); length >= 0; --length) {
            putFile(optionPath(), whole.left(length));
            m_window->updateOption(false);
            const QByteArray name = QByteArray::number(length) + " bytes";
            COMPARE_CASE(name, button("cbLockDown")->isChecked(), length == whole.size());
            COMPARE_CASE(name, button("cbDnsLeak")->isChecked(), length >= whole.size() - 1);
            COMPARE_CASE(name, combo("cmUpdate")->currentIndex(), length >= whole.size() - 20 ? 4 : 0);
        }
        QRandomGenerator random(7);
        for (int round = 0; round < 200; ++round) {
            QByteArray noise(static_cast<int>(random.bounded(300)), '\0');
            std::generate(noise.begin(), noise.end(), [&] { return static_cast<char>(random.bounded(256)); });
            putFile(optionPath(), round % 2 == 0 ? noise : whole.left(noise.size() / 2) + noise);
            m_window->updateOption(false);
            QVERIFY(combo("cmUpdate")->currentIndex() < 5 && combo("cmServer")->currentIndex() < 2);
        }
    }

    void optionsThatCanNotBeStored()
    {
        QDir().mkpath(optionPath()); // a folder
        open();
        QVERIFY(save());
        QVERIFY(QFileInfo(optionPath()).isDir());
        QVERIFY(log().contains("WARNING: can not write " + optionPath().toUtf8()));
        QDir().rmdir(optionPath());
        putFile(appPath("/precious"), "somebody's file");
        QFile::link(appPath("/precious"), optionPath());
        QVERIFY(save());
        QCOMPARE(fileBytes(appPath("/precious")), QByteArray("somebody's file"));
    }

    /// Which fields can be edited (address and port, the box for credentials, the credentials), and the proxy of the
    /// program's own requests once it is saved.
    void proxy()
    {
        open();
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
            const QString fields = enabled("a:edProxyAddr p:edProxyPort b:cbProxyAuth u:edProxyUser w:edProxyPass");
            const QStringList seen{fields + QString(" %1").arg(proxy.type()), proxy.hostName(),
                                   QString::number(proxy.port()), proxy.user(), proxy.password()};
            COMPARE_CASE(clicked, seen.join(' '), expected);
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
    }

    /// Two boxes that are hidden by now, but still explain themselves.
    void explainedBoxes()
    {
        open();
        QVERIFY(press("pbSave"));
        boxes().expect("Warning",
                       "Please note that if auto reconnect is enabled, there will be a brief moment \n"
                       "in which your programs may not be protected by the VPN during reconnection. \n"
                       "Do you still wish to enable auto-reconnect?",
                       QMessageBox::Yes, QMessageBox::Yes);
        button("cbAutoReconn")->click();
        QVERIFY(button("cbAutoReconn")->isChecked() && canSave());

        QString title;
        when([] { return qobject_cast<KvImageBox *>(QApplication::activeModalWidget()) != nullptr; },
             [&title] {
                 title = QApplication::activeModalWidget()->windowTitle();
                 QApplication::activeModalWidget()->findChild<QAbstractButton *>()->click();
             });
        button("cbRunOnBoot")->click();
        QVERIFY(title == "Korvan Help" && !button("cbRunOnBoot")->isChecked());
    }

private:
    Korvan &open() { return startLoggedIn({"Examplia-1", "Samplonia-1"}); }
    bool canSave() const { return button("pbSave")->isEnabled() && button("pbSaveProxy")->isEnabled(); }
    /// Changes something and saves it.
    bool save() const { return press("cbNoSound") && press("pbSave"); }
};

QTEST_MAIN(OptionsTest)
#include "OptionsTest.moc"
