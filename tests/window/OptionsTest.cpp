#include "controller/Options.h"
#include "account/SavedLogin.h"
#include "account/Updates.h"
#include "common/AppPath.h"
#include "tests/support/Cases.h"
#include "tests/support/TestFiles.h"
#include "tests/window/WindowFixture.h"
#include "ui/KvImageBox.h"
#include "ui/KvRetinaTabBar.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QNetworkProxy>
#include <QRandomGenerator>

/// The settings and proxy pages and what they leave on disk.
class OptionsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void firstStartsWithoutOptions();
    void everyChangeCanBeSaved();
    void savesAndRestores();
    void damagedFiles();
    void optionsThatCanNotBeStored();
    void proxyFields();
    void applicationProxy();
    void refreshTime();
    void lockDownEndsWithItsBox();
    void savedLoginIsShownForTheAutomaticConnection();
    void loginItems();
    void runOnBootIsExplainedAndUnticked();
    void autoReconnectIsWarnedOf();

private:
    /// A window with servers, somebody logged in.
    Korvan &start();
    /// Opens a page by its tab and presses one of its buttons.
    bool pressOn(int tab, const char *button);
    QAbstractButton *box(const char *name) const { return m_fixture->find<QAbstractButton>(name); }
    QComboBox *combo(const char *name) const { return m_fixture->find<QComboBox>(name); }
    void type(const char *field, const QString &text) const { m_fixture->find<QLineEdit>(field)->setText(text); }
    bool canSave() const { return box("pbSave")->isEnabled() && box("pbSaveProxy")->isEnabled(); }

    std::unique_ptr<WindowFixture> m_fixture;
    Korvan *m_window = nullptr;
};

enum Tab { Settings = 2, Proxy = 3 };

static const char *const kBoxes[] = {"cbConnectOnBoot", "cbHideConnection", "cbNoSound",
                                     "cbLockDown",      "cbDnsLeak",        "cbProxyAuth"};

static QString optionPath()
{
    return appPath("/cfg/option");
}

void OptionsTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
}

void OptionsTest::cleanup()
{
    QCOMPARE(m_fixture->boxes.takeFailures(), QString());
    QCOMPARE(m_fixture->boxes.left(), 0);
    m_fixture.reset();
}

Korvan &OptionsTest::start()
{
    WindowFixture::putProfile({"Examplia-1", "Samplonia-1"});
    m_window = &m_fixture->start();
    m_fixture->press("pbExist");
    WindowFixture::takeRoutes();
    return *m_window;
}

bool OptionsTest::pressOn(int tab, const char *button)
{
    m_fixture->find<KvRetinaTabBar>("tab")->setCurrentIndex(tab);
    return m_fixture->press(button);
}

void OptionsTest::firstStartsWithoutOptions()
{
    m_fixture->start();
    QVERIFY(QFile::exists(optionPath()) && fileBytes(optionPath()).isEmpty());
    QCOMPARE(combo("cmUpdate")->currentText(), QString("Every Startup"));

    m_fixture->start(); // reads the empty file
    QCOMPARE(combo("cmUpdate")->currentText(), QString("Never"));
    for (const char *name : {"rbNone", "rbHttp", "rbSocks", "cbConnectOnBoot", "cbLockDown", "cbNoSound"}) {
        COMPARE_CASE(name, box(name)->isChecked(), false);
    }
    QVERIFY(!canSave());
}

void OptionsTest::everyChangeCanBeSaved()
{
    start();
    QVERIFY(pressOn(Settings, "pbSave")); // the login has filled the list of boot servers, which counts as a change
    const auto check = [this](const char *name) {
        COMPARE_CASE(name, canSave(), true);
        COMPARE_CASE(name, pressOn(name[0] == 'c' ? Settings : Proxy, name[0] == 'c' ? "pbSave" : "pbSaveProxy"),
                     true);
        COMPARE_CASE(name, box("pbSave")->isEnabled() || box("pbSaveProxy")->isEnabled(), false);
    };
    for (const char *name : {"rbSocks", "rbNone", "rbHttp"}) {
        box(name)->click();
        check(name);
    }
    for (const char *name : kBoxes) {
        box(name)->click();
        check(name);
    }
    for (const char *name : {"edProxyAddr", "edProxyPort", "edProxyUser", "edProxyPass"}) {
        QTest::keyClicks(m_fixture->find<QLineEdit>(name), "1");
        check(name);
    }
    for (const char *name : {"cmBootServer", "cmUpdate"}) {
        QTest::keyClick(combo(name), Qt::Key_Down);
        check(name);
    }
}

void OptionsTest::savesAndRestores()
{
    start();
    box("rbHttp")->click();
    for (const char *name : kBoxes) {
        box(name)->click();
    }
    type("edProxyAddr", "proxy.example");
    type("edProxyPort", "8080x");
    type("edProxyUser", QString::fromUtf8("Zoë"));
    type("edProxyPass", "p w");
    combo("cmServer")->setCurrentIndex(1);
    combo("cmBootServer")->setCurrentIndex(1);
    combo("cmUpdate")->setCurrentIndex(3);
    combo("cmProto")->setCurrentText("L2TP"); // which empties the lists
    QVERIFY(pressOn(Settings, "pbSave"));

    Options expected;
    expected.server = -1;
    expected.proxyType = 2;
    expected.proxyAddress = "proxy.example";
    expected.proxyPort = "8080x";
    expected.proxyUser = QString::fromUtf8("Zoë");
    expected.proxyPassword = "p w";
    expected.updateFrequency = 3;
    expected.protocol = "L2TP";
    expected.proxyAuth = expected.connectOnBoot = expected.hideConnection = expected.noSound = expected.dnsLeak =
        expected.lockDown = true;
    QCOMPARE(fileBytes(optionPath()), optionBytes(expected));
    QCOMPARE(QFileInfo(optionPath()).permissions() & (QFile::ReadGroup | QFile::ReadOther), 0);

    expected.runOnBoot = expected.autoReconnect = true; // what no click can set stays over a save
    expected.connectOnBoot = false;
    expected.bootServer = "Samplonia-1";
    expected.protocol = "OpenVPN";
    expected.server = 1;
    putFile(optionPath(), optionBytes(expected));
    start();
    QCOMPARE(combo("cmBootServer")->currentText(), QString("Samplonia-1"));
    QCOMPARE(combo("cmServer")->currentText(), QString("Samplonia-1"));
    box("cbNoSound")->click();
    box("cbNoSound")->click();
    QVERIFY(pressOn(Proxy, "pbSaveProxy"));
    QCOMPARE(fileBytes(optionPath()), optionBytes(expected));
}

void OptionsTest::damagedFiles()
{
    Options options;
    options.proxyType = 3;
    options.proxyAddress = "proxy.example";
    options.noSound = options.dnsLeak = options.lockDown = true;
    options.updateFrequency = 4;
    options.protocol = "OpenVPN";
    const QByteArray whole = optionBytes(options);
    start();
    for (int length = whole.size(); length >= 0; --length) {
        putFile(optionPath(), whole.left(length));
        m_window->updateOption(false);
        const QByteArray name = QByteArray::number(length) + " bytes";
        COMPARE_CASE(name, box("cbLockDown")->isChecked(), length == whole.size());
        COMPARE_CASE(name, box("cbDnsLeak")->isChecked(), length >= whole.size() - 1);
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
    start();
    box("cbNoSound")->click();
    QVERIFY(pressOn(Settings, "pbSave"));
    QVERIFY(QFileInfo(optionPath()).isDir());
    QVERIFY(fileBytes(appPath("/log.txt")).contains("WARNING: can not write " + optionPath().toUtf8()));
    QDir().rmdir(optionPath());
    const QByteArray precious = "somebody's file";
    putFile(appPath("/precious"), precious);
    QFile::link(appPath("/precious"), optionPath());
    box("cbNoSound")->click();
    QVERIFY(pressOn(Settings, "pbSave"));
    QCOMPARE(fileBytes(appPath("/precious")), precious);
}

/// Which fields of the proxy page can be edited: address and port, the box for credentials, the credentials.
void OptionsTest::proxyFields()
{
    start();
    const auto fields = [this] {
        const auto on = [this](const char *name) { return m_fixture->find<QWidget>(name)->isEnabled(); };
        QString text = on("edProxyAddr") && on("edProxyPort") ? "a" : "-";
        text += on("cbProxyAuth") ? "b" : "-";
        return text + (on("edProxyUser") && on("edProxyPass") ? "c" : "-");
    };
    const struct
    {
        const char *clicked;
        const char *fields;
    } steps[] = {{"rbNone", "---"},  {"rbSocks", "a--"}, {"rbHttp", "ab-"}, {"cbProxyAuth", "abc"},
                 {"rbSocks", "a--"}, {"rbNone", "---"},  {"rbHttp", "abc"}, {"cbProxyAuth", "ab-"}};
    for (const auto &step : steps) {
        box(step.clicked)->click();
        COMPARE_CASE(step.clicked, fields(), QString(step.fields));
    }
}

void OptionsTest::applicationProxy()
{
    start();
    type("edProxyAddr", "proxy.example");
    type("edProxyUser", "u");
    type("edProxyPass", "p");
    const struct
    {
        const char *radio;
        const char *port;
        const char *proxy;
    } cases[] = {{"rbHttp", "3128", "3 proxy.example:3128 u p"},
                 {"rbHttp", "8080x", "3 proxy.example:0 u p"},
                 {"rbSocks", "65536", "1 proxy.example:0  "},
                 {"rbNone", "3128", "2 :0  "}};
    for (const auto &row : cases) {
        box(row.radio)->click();
        type("edProxyPort", row.port);
        QVERIFY(pressOn(Proxy, "pbSaveProxy"));
        const QNetworkProxy proxy = QNetworkProxy::applicationProxy();
        const QString seen = QString("%1 %2:%3 %4 %5")
                                 .arg(proxy.type())
                                 .arg(proxy.hostName())
                                 .arg(proxy.port())
                                 .arg(proxy.user(), proxy.password());
        COMPARE_CASE(row.radio, seen, QString(row.proxy));
    }
}

void OptionsTest::refreshTime()
{
    const auto days = [](int count) { return QDateTime::currentDateTime().addDays(count); };
    writeNextRefresh(days(14)); // creates nothing while /cfg is missing
    start();
    writeNextRefresh(days(14));
    m_window->updateRefresh(false);
    for (const auto &[index, expected] : {std::pair(3, 14), std::pair(2, 7), std::pair(1, 1), std::pair(0, 0)}) {
        combo("cmUpdate")->setCurrentIndex(index);
        box("cbNoSound")->click();
        QVERIFY(pressOn(Settings, "pbSave"));
        const qint64 off = qAbs(readNextRefresh().secsTo(days(expected)));
        QVERIFY2(off < 600, qPrintable(QString("%1: %2 s off").arg(index).arg(off)));
    }
}

void OptionsTest::lockDownEndsWithItsBox()
{
    start().setStatus(STATUS_CONNECTED);
    box("cbLockDown")->click();
    QVERIFY(pressOn(Settings, "pbSave"));
    QCOMPARE(WindowFixture::takeRoutes(), QByteArray());
    box("cbLockDown")->click();
    QVERIFY(pressOn(Settings, "pbSave"));
    QCOMPARE(WindowFixture::takeRoutes(), QByteArray("add 0.0.0.0 mask 0.0.0.0 198.51.100.1\n"));
}

void OptionsTest::savedLoginIsShownForTheAutomaticConnection()
{
    start();
    writeSavedLogin({"alice", "secret"});
    type("edUser", "somebody else");
    box("cbNoSound")->click();
    QVERIFY(pressOn(Settings, "pbSave"));
    QCOMPARE(m_fixture->find<QLineEdit>("edUser")->text(), QString("somebody else"));
    box("cbConnectOnBoot")->click();
    QVERIFY(pressOn(Settings, "pbSave"));
    QCOMPARE(m_fixture->find<QLineEdit>("edUser")->text(), QString("alice"));
    QCOMPARE(m_fixture->find<QLineEdit>("edPass")->text(), QString("secret"));
}

/// Every save brings the login items in line with the stored box, which no click can tick.
void OptionsTest::loginItems()
{
    const QByteArray bundle = QByteArray(appPath("").toUtf8()).replace("/Contents/MacOS", "");
    QVERIFY(bundle.endsWith("/Korvan.app"));
    const QByteArray other = "{Hide = 1; Path = \"/Applications/Other.app\";}";
    const QByteArray own = "{Hide = 0; Path = \"" + bundle + "\";}";
    const struct
    {
        const char *name;
        QByteArray stored;
        bool ticked;
        QByteArray written;
    } cases[] = {{"added to nothing", "The domain does not exist", true, "(" + own + ")"},
                 {"added once more", "(" + own + ")", true, "(" + own + "," + own + ")"},
                 {"removed from nothing", "The domain does not exist", false, "()"},
                 {"the first one removed", "(" + other + ",\n" + own + ",\n" + own + ")", false,
                  "(" + other + "," + own + ")"}};
    for (const auto &row : cases) {
        Options options;
        options.runOnBoot = row.ticked;
        putFile(optionPath(), optionBytes(options));
        putFile(appPath("/fake/items"), row.stored);
        putScript(appPath("/fake/defaults"),
                  "cd '" + appPath("/fake").toUtf8() +
                      "'\n[ $1 = read ] && cat items || printf '%s\\n' \"$@\" > written\n");
        start();
        box("cbNoSound")->click();
        QVERIFY(pressOn(Settings, "pbSave"));
        COMPARE_CASE(row.name, fileBytes(appPath("/fake/written")),
                     "write\nloginwindow\nAutoLaunchedApplicationDictionary\n" + row.written + "\n");
    }
}

void OptionsTest::runOnBootIsExplainedAndUnticked()
{
    start();
    QString title;
    QTimer closer;
    connect(&closer, &QTimer::timeout, this, [&] {
        auto *picture = qobject_cast<KvImageBox *>(QApplication::activeModalWidget());
        if (picture != nullptr) {
            title = picture->windowTitle();
            picture->close();
        }
    });
    closer.start(10);
    box("cbRunOnBoot")->click();
    QCOMPARE(title, QString("Korvan Help"));
    QVERIFY(!box("cbRunOnBoot")->isChecked());
    QVERIFY(canSave());
}

void OptionsTest::autoReconnectIsWarnedOf()
{
    start();
    m_fixture->boxes.expect("Warning",
                            "Please note that if auto reconnect is enabled, there will be a brief moment \n"
                            "in which your programs may not be protected by the VPN during reconnection. \n"
                            "Do you still wish to enable auto-reconnect?",
                            QMessageBox::Yes, QMessageBox::Yes);
    box("cbAutoReconn")->click();
    QVERIFY(box("cbAutoReconn")->isChecked() && canSave());
    box("cbAutoReconn")->click();
    QVERIFY(!box("cbAutoReconn")->isChecked());
}

int main(int argc, char *argv[])
{
    return runWindowTest<OptionsTest>(argc, argv);
}
#include "OptionsTest.moc"
