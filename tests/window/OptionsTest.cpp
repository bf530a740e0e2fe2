#include "controller/Options.h"
#include "account/SavedLogin.h"
#include "account/Updates.h"
#include "tests/window/WindowFixture.h"
#include "ui/KvImageBox.h"

#include <QDir>
#include <QNetworkProxy>
#include <QRandomGenerator>

/// The settings and proxy pages and what they leave on disk.
class OptionsTest : public WindowFixture
{
    Q_OBJECT

private slots:
    void firstStarts();
    void everyChangeIsSaved();
    void damagedFiles();
    void optionsThatCanNotBeStored();
    void proxy();
    void refreshTime();
    void loginItems();
    void automaticConnectionShowsItsLogin();
    void explainedBoxes();

private:
    Korvan &open() { return startLoggedIn({"Examplia-1", "Samplonia-1"}); }
    bool canSave() const { return button("pbSave")->isEnabled() && button("pbSaveProxy")->isEnabled(); }
    /// Changes something and saves it.
    bool save(const char *changed = "cbNoSound") const { return press(changed) && press("pbSave"); }
};

static QString optionPath()
{
    return appPath("/cfg/option");
}

void OptionsTest::firstStarts()
{
    start();
    QVERIFY(QFile::exists(optionPath()) && fileBytes(optionPath()).isEmpty());
    QCOMPARE(combo("cmUpdate")->currentText(), QString("Every Startup"));
    start(); // reads the empty file
    QCOMPARE(combo("cmUpdate")->currentText(), QString("Never"));
    for (const char *name : {"rbNone", "rbHttp", "rbSocks", "cbConnectOnBoot", "cbLockDown", "cbNoSound", "pbSave"}) {
        COMPARE_CASE(name, button(name)->isChecked() || canSave(), false);
    }
}

void OptionsTest::everyChangeIsSaved()
{
    open();
    QVERIFY(press("pbSave")); // the login has filled the list of boot servers, which counts as a change
    for (const char *name : {"rbSocks", "rbNone", "rbHttp", "cbConnectOnBoot", "cbHideConnection", "cbNoSound",
                             "cbLockDown", "cbDnsLeak", "cbProxyAuth", "edProxyAddr", "edProxyPort", "edProxyUser",
                             "edProxyPass", "cmBootServer", "cmUpdate"}) {
        if (name[0] == 'e') {
            QTest::keyClicks(find(name), name + 7);
        } else if (name[1] == 'm') {
            QTest::keyClick(find(name), Qt::Key_Down);
        } else {
            button(name)->click();
        }
        COMPARE_CASE(name, canSave(), true);
        COMPARE_CASE(name, press(name[0] == 'e' ? "pbSaveProxy" : "pbSave"), true);
        COMPARE_CASE(name, enabled({{"pbSave", 's'}, {"pbSaveProxy", 'p'}}), "--");
    }
    Options expected;
    expected.proxyType = 2;
    expected.proxyAddress = "Addr";
    expected.proxyPort = "Port";
    expected.proxyUser = "User";
    expected.proxyPassword = "Pass";
    expected.bootServer = "Samplonia-1";
    expected.updateFrequency = 2;
    expected.protocol = "OpenVPN";
    expected.proxyAuth = expected.connectOnBoot = expected.hideConnection = expected.dnsLeak = expected.lockDown =
        true;
    QCOMPARE(fileBytes(optionPath()), optionBytes(expected));
    QCOMPARE(QFileInfo(optionPath()).permissions() & (QFile::ReadGroup | QFile::ReadOther), 0);

    expected.noSound = expected.runOnBoot = expected.autoReconnect = true; // what no click can set stays over a save
    expected.connectOnBoot = false;
    expected.server = 1; // the boot server
    putFile(optionPath(), optionBytes(expected));
    open();
    button("cbNoSound")->click();
    QVERIFY(save());
    QCOMPARE(fileBytes(optionPath()), optionBytes(expected));
}

void OptionsTest::damagedFiles()
{
    Options options;
    options.proxyType = 3;
    options.proxyAddress = "proxy.example";
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

void OptionsTest::optionsThatCanNotBeStored()
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
void OptionsTest::proxy()
{
    open();
    type("edProxyAddr", "proxy.example");
    type("edProxyUser", "u");
    type("edProxyPass", "p");
    const struct
    {
        const char *clicked, *port, *seen;
    } steps[] = {{"rbNone", "3128", "----- 2 :0  "},
                 {"rbSocks", "65536", "ap--- 1 proxy.example:0  "},
                 {"rbHttp", "3128", "apb-- 3 proxy.example:3128 u p"},
                 {"cbProxyAuth", "8080x", "apbuw 3 proxy.example:0 u p"},
                 {"rbSocks", "1080", "ap--- 1 proxy.example:1080  "},
                 {"rbHttp", "3128", "apbuw 3 proxy.example:3128 u p"},
                 {"cbProxyAuth", "3128", "apb-- 3 proxy.example:3128 u p"}};
    for (const auto &step : steps) {
        button(step.clicked)->click();
        type("edProxyPort", step.port);
        QVERIFY(press("pbSaveProxy"));
        const QNetworkProxy proxy = QNetworkProxy::applicationProxy();
        const QString seen = QString("%1 %2 %3:%4 %5 %6")
                                 .arg(enabled({{"edProxyAddr", 'a'},
                                               {"edProxyPort", 'p'},
                                               {"cbProxyAuth", 'b'},
                                               {"edProxyUser", 'u'},
                                               {"edProxyPass", 'w'}}))
                                 .arg(proxy.type())
                                 .arg(proxy.hostName())
                                 .arg(proxy.port())
                                 .arg(proxy.user(), proxy.password());
        COMPARE_CASE(step.clicked, seen, step.seen);
    }
}

void OptionsTest::refreshTime()
{
    const auto days = [](int count) { return QDateTime::currentDateTime().addDays(count); };
    open();
    writeNextRefresh(days(14));
    m_window->updateRefresh(false);
    for (const auto &[index, expected] : {std::pair(3, 14), std::pair(2, 7), std::pair(1, 1), std::pair(0, 0)}) {
        combo("cmUpdate")->setCurrentIndex(index);
        QVERIFY(press("pbSave"));
        QVERIFY2(qAbs(readNextRefresh().secsTo(days(expected))) < 600, qPrintable(combo("cmUpdate")->currentText()));
    }
}

/// Every save brings the login items in line with the stored box, which no click can tick.
void OptionsTest::loginItems()
{
    const QByteArray other = "{Hide = 1; Path = \"/Applications/Other.app\";}";
    const QByteArray own = ",{Hide = 0; Path = \"" + appPath("").toUtf8().replace("/Contents/MacOS", "") + "\";}";
    QVERIFY(own.endsWith("/Korvan.app\";}"));
    putFile(appPath("/fake/items"), "(" + other + ")");
    putScript(appPath("/fake/defaults"),
              "cd '" + appPath("/fake").toUtf8() + "'; [ $1 = read ] && cat items || printf %s \"$4\" > items\n");
    open();
    for (const auto &[ticked, items] :
         {std::pair(true, own), std::pair(true, own + own), std::pair(false, own), std::pair(false, QByteArray())}) {
        button("cbRunOnBoot")->setChecked(ticked);
        QVERIFY(save());
        QCOMPARE(fileBytes(appPath("/fake/items")), "(" + other + items + ")");
    }
}

void OptionsTest::automaticConnectionShowsItsLogin()
{
    open();
    writeSavedLogin({"bob", "secret"});
    QVERIFY(save());
    QCOMPARE(find<QLineEdit>("edUser")->text(), QString("alice"));
    QVERIFY(save("cbConnectOnBoot"));
    QCOMPARE(find<QLineEdit>("edUser")->text() + find<QLineEdit>("edPass")->text(), QString("bobsecret"));
}

/// Two boxes that are hidden by now, but still explain themselves.
void OptionsTest::explainedBoxes()
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

WINDOW_TEST_MAIN(OptionsTest)
#include "OptionsTest.moc"
