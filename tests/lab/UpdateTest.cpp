#include "tests/lab/LabWindow.h"

#include "common/AppPath.h"
#include "tests/support/Archives.h"
#include "ui/KvRetinaTabBar.h"

#include <QComboBox>
#include <QDir>
#include <QProgressBar>
#include <QSignalSpy>
#include <QStackedWidget>

/// Updates of the program and of the configuration from the real service.
class UpdateTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_lab = std::make_unique<LabWindow>(); }
    void cleanup();
    void announcement_data();
    void announcement();
    void download();
    void failedDownload_data();
    void failedDownload();
    void configuration_data();
    void configuration();
    void configurationNotReached();

private:
    /// A window to which the service announces this archive.
    void startWithUpdate(const QByteArray &archive);
    bool isOn(const char *name) const { return m_lab->find<QWidget>(name)->isEnabled(); }
    QString firstServer() const { return m_lab->find<QComboBox>("cmServer")->currentText(); }

    std::unique_ptr<LabWindow> m_lab;
};

static const QString kArchive = QStringLiteral("/archives/korvan-99.zip");

static QByteArray entry(const QByteArray &version, const QByteArray &message = {}, const QByteArray &system = "macos")
{
    return "<update>\n<system>" + system + "</system><version>" + version +
           "</version>\n<url>https://portal.korvan.example" + kArchive.toUtf8() + "</url><message>" + message +
           "</message></update>\n";
}

void UpdateTest::cleanup()
{
    const QString failures = m_lab->boxes.takeFailures();
    const int left = m_lab->boxes.left();
    m_lab.reset();
    QCOMPARE(failures, QString());
    QCOMPARE(left, 0);
}

void UpdateTest::announcement_data()
{
    QTest::addColumn<QString>("order");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("box");
    QTest::addColumn<QByteArray>("line");
    const QByteArray read = "bytes update information to local.";
    const QByteArray notLoaded = "[WARNING]Can not load from https://portal.korvan.example/update.xml";
    const QByteArray nothing = "[WARNING]Get nothing from https://portal.korvan.example/update.xml";
    QTest::newRow("newer") << "" << entry("99.1") << "New version 99.1 ready, please click \"Update\"." << read;
    QTest::newRow("with a message") << "" << entry("99", "Read on") << "Read on" << read;
    QTest::newRow("this version") << QString() << QByteArray() << "" << read;
    QTest::newRow("the first entry counts") << "" << entry("0.9") + entry("99") << "" << read;
    QTest::newRow("other system") << "" << entry("99", "", "windows") << "" << read;
    QTest::newRow("without end tags") << "" << entry("99").replace("</", "<") << "" << read;
    QTest::newRow("10 MB of start tags") << "" << QByteArray("<update>").repeated(1310720) << "" << read;
    QTest::newRow("other page") << "" << QByteArray("<html>") << "" << nothing;
    QTest::newRow("empty") << "empty" << QByteArray() << "" << notLoaded;
    QTest::newRow("reset") << "reset" << QByteArray() << "" << notLoaded;
    QTest::newRow("broken off") << "break=300" << entry("99").repeated(3) << "" << notLoaded;
    QTest::newRow("error page") << "status=500" << entry("99") << "" << notLoaded;
}

void UpdateTest::announcement()
{
    QFETCH(QString, order);
    QFETCH(QByteArray, body);
    QFETCH(QString, box);
    QFETCH(QByteArray, line);
    if (!order.isNull()) {
        LabWindow::order("/update.xml", order, body);
    }
    if (!box.isEmpty()) {
        m_lab->boxes.expect("Update", box);
    }
    m_lab->start();
    QVERIFY2(fileBytes(appPath("/log.txt")).contains(line), fileBytes(appPath("/log.txt")).constData());
    QCOMPARE(isOn("pbUpApp"), !box.isEmpty());
    QCOMPARE(m_lab->find<KvRetinaTabBar>("tab")->currentIndex(), box.isEmpty() ? 0 : 2);
    QCOMPARE(m_lab->find<QStackedWidget>("tabPage")->currentIndex(), box.isEmpty() ? 0 : 2);
}

void UpdateTest::startWithUpdate(const QByteArray &archive)
{
    LabWindow::order("/update.xml", "", entry("99", "Ready"));
    LabWindow::order(kArchive, "", archive);
    m_lab->boxes.expect("Update", "Ready");
    m_lab->start();
    m_lab->login("alice", "wonderland-7");
    m_lab->find<KvRetinaTabBar>("tab")->setCurrentIndex(2);
    m_lab->find<QProgressBar>("pgUpdate")->setValue(0);
}

void UpdateTest::download()
{
    const QByteArray archive(1000000, 'z');
    startWithUpdate("");
    LabWindow::order(kArchive, "rate=1000000", archive); // takes a second, seen in steps of a tenth
    putFile(appPath("/update/older/file"), "old");
    const QSignalSpy steps(m_lab->find<QProgressBar>("pgUpdate"), &QProgressBar::valueChanged);
    m_lab->boxes.expect("Update", "Update done, please restart application.");
    QTimer::singleShot(0, [this] { m_lab->press("pbUpApp"); }); // a second click meanwhile has no effect
    QVERIFY(m_lab->press("pbUpApp"));
    QTRY_COMPARE(m_lab->boxes.left(), 0);
    QCOMPARE(QDir(appPath("/update")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList("update.zip"));
    QCOMPARE(fileBytes(appPath("/update/update.zip")), archive);
    QVERIFY(!isOn("pbUpApp"));
    QVERIFY2(steps.count() >= 3, qPrintable(QString::number(steps.count())));
    QCOMPARE(m_lab->find<QProgressBar>("pgUpdate")->value(), 100);
}

void UpdateTest::failedDownload_data()
{
    QTest::addColumn<QString>("order");
    QTest::newRow("empty") << "empty";
    QTest::newRow("error page") << "status=404";
    QTest::newRow("broken off") << "break=1000";
    QTest::newRow("reset") << "reset";
}

void UpdateTest::failedDownload()
{
    QFETCH(QString, order);
    startWithUpdate("");
    LabWindow::order(kArchive, order, order == "empty" ? QByteArray() : QByteArray(5000, 'z'));
    putFile(appPath("/update/update.zip"), "downloaded before");
    m_lab->boxes.expect("Update", "Update failed, no data.");
    QVERIFY(m_lab->press("pbUpApp"));
    QCOMPARE(m_lab->boxes.left(), 0);
    QVERIFY(isOn("pbUpApp"));
    QCOMPARE(fileBytes(appPath("/update/update.zip")), QByteArray("downloaded before"));
}

void UpdateTest::configuration_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("server");
    QTest::addColumn<QString>("box");
    buildArchive(appPath("/new.zip"), {{"New-1.ovpn", "remote 192.0.2.1 1194\n"}});
    QTest::newRow("new servers") << fileBytes(appPath("/new.zip")) << "New-1"
                                 << "Update Successful.";
    // Also this answer is taken for a profile, which costs the old one.
    QTest::newRow("rejected") << QByteArray("invalid username or password") << ""
                              << "Update Failed.";
    QTest::newRow("no ZIP") << QByteArray("<html>") << ""
                            << "Update Failed.";
}

void UpdateTest::configuration()
{
    QFETCH(QByteArray, answer);
    QFETCH(QString, box);
    m_lab->start();
    m_lab->login("alice", "wonderland-7");
    const QByteArray refreshTime = fileBytes(appPath("/cfg/update"));
    for (const char *button : {"pbUpdate", "pbUpAccount"}) {
        LabWindow::order("/api", "", answer);
        m_lab->boxes.expect("Notify", box);
        m_lab->find<KvRetinaTabBar>("tab")->setCurrentIndex(button == QByteArray("pbUpdate") ? 2 : 0);
        QVERIFY(m_lab->press(button));
        QCOMPARE(m_lab->boxes.left(), 0);
        QTEST(firstServer(), "server");
        QVERIFY(isOn("pbUpdate") && isOn("cmServer") && isOn("cmProto"));
        QVERIFY(LabWindow::lastRequest("/api").endsWith("username=alice&password=wonderland-7"));
        LabWindow::reset();
    }
    QCOMPARE(fileBytes(appPath("/cfg/update")), refreshTime);
}

/// Nothing is lost, and the way back to the list of servers is a new login.
void UpdateTest::configurationNotReached()
{
    m_lab->start();
    m_lab->login("alice", "wonderland-7");
    const QString server = firstServer();
    LabWindow::order("/api", "reset");
    m_lab->find<KvRetinaTabBar>("tab")->setCurrentIndex(2);
    QVERIFY(m_lab->press("pbUpdate"));
    QTRY_COMPARE(m_lab->find<QStackedWidget>("stack")->currentWidget()->objectName(), QString("pageLogin"));
    QCOMPARE(firstServer(), QString("Updating Configuration ..."));
    QVERIFY(!isOn("pbUpdate") && !isOn("cmServer") && !isOn("cmProto"));
    QVERIFY(m_lab->press("pbExist"));
    QCOMPARE(firstServer(), server);
    QVERIFY(isOn("pbUpdate") && isOn("cmServer") && isOn("cmProto"));
}

int main(int argc, char *argv[])
{
    return runLabTest<UpdateTest>(argc, argv);
}
#include "UpdateTest.moc"
