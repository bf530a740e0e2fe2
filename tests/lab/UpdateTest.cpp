#include "tests/lab/LabWindow.h"

#include "common/AppPath.h"
#include "tests/support/Archives.h"
#include "tests/support/Cases.h"
#include "ui/KvRetinaTabBar.h"

#include <QDir>
#include <QProgressBar>
#include <QSignalSpy>
#include <QStackedWidget>

static const QString kArchive = QStringLiteral("/archives/korvan-99.zip");

static QByteArray entry(const QByteArray &version, const QByteArray &message = {})
{
    return "<update>\n<system>macos</system><version>" + version + "</version>\n<url>https://portal.korvan.example" +
           kArchive.toUtf8() + "</url><message>" + message + "</message></update>\n";
}

/// Updates of the program and of the configuration from the real service.
class UpdateTest : public QObject
{
    Q_OBJECT

private slots:
    void announcements()
    {
        const QByteArray read = "bytes update information to local.";
        const QByteArray notLoaded = "[WARNING]Can not load from https://portal.korvan.example/update.xml";
        const QByteArray nothing = "[WARNING]Get nothing from https://portal.korvan.example/update.xml";
        const std::tuple<QByteArray, const char *, QByteArray, QString, QByteArray> descriptions[] = {
            {"newer", "", entry("99.1"), "New version 99.1 ready, please click \"Update\".", read},
            {"this version", nullptr, "", "", read},
            {"other system", "", entry("99").replace("macos", "windows"), "", read},
            {"other page", "", "<html>", "", nothing},
            {"error page", "status=500", entry("99"), "", notLoaded},
        };
        for (const auto &[name, order, body, box, log] : descriptions) {
            LabWindow lab;
            if (order != nullptr) {
                LabWindow::order("/update.xml", order, body);
            }
            if (!box.isEmpty()) {
                lab.boxes.expect("Update", box);
            }
            lab.start();
            COMPARE_CASE(name, LabWindow::logHas(log), true);
            COMPARE_CASE(name, lab.isOn("pbUpApp"), !box.isEmpty());
            COMPARE_CASE(name, lab.find<KvRetinaTabBar>("tab")->currentIndex(), box.isEmpty() ? 0 : 2);
            COMPARE_CASE(name, lab.find<QStackedWidget>("tabPage")->currentIndex(), box.isEmpty() ? 0 : 2);
        }
    }

    /// An archive that does not come leaves the one before; one that comes takes its place.
    void downloads()
    {
        LabWindow lab;
        LabWindow::order("/update.xml", "", entry("99", "Ready"));
        lab.boxes.expect("Update", "Ready");
        lab.start();
        lab.login();
        lab.openPage("Settings");
        putFile(appPath("/update/update.zip"), "downloaded before");
        putFile(appPath("/update/older/file"), "old");
        const QByteArray archive(1000000, 'z');
        for (const QByteArray failure : {"empty", "status=404", "break=1000", "reset"}) {
            LabWindow::order(kArchive, failure, failure == "empty" ? QByteArray() : archive);
            lab.boxes.expect("Update", "Update failed, no data.");
            QVERIFY(lab.press("pbUpApp"));
            COMPARE_CASE(failure, lab.boxes.left(), 0);
            COMPARE_CASE(failure, lab.isOn("pbUpApp"), true);
            COMPARE_CASE(failure, fileBytes(appPath("/update/update.zip")), "downloaded before");
        }
        auto *progress = lab.find<QProgressBar>("pgUpdate");
        progress->setValue(0);
        const QSignalSpy steps(progress, &QProgressBar::valueChanged);
        LabWindow::order(kArchive, "rate=1000000", archive); // takes a second, seen in steps of a tenth
        lab.boxes.expect("Update", "Update done, please restart application.");
        QTimer::singleShot(0, [&lab] { lab.press("pbUpApp"); }); // a second click meanwhile has no effect
        QVERIFY(lab.press("pbUpApp"));
        QTRY_COMPARE(lab.boxes.left(), 0);
        QCOMPARE(QDir(appPath("/update")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList("update.zip"));
        QCOMPARE(fileBytes(appPath("/update/update.zip")), archive);
        QVERIFY(!lab.isOn("pbUpApp"));
        QVERIFY2(steps.count() >= 3, qPrintable(QString::number(steps.count())));
        QCOMPARE(progress->value(), 100);
    }

    void configuration()
    {
        LabWindow lab;
        lab.start();
        lab.login();
        const QByteArray refreshTime = fileBytes(appPath("/cfg/update"));
        buildArchive(appPath("/new.zip"), {{"New-1.ovpn", "remote 192.0.2.1 1194\n"}});
        const std::pair<QByteArray, bool> answers[] = {
            {"invalid username or password", false}, // also taken for a profile, which costs the old one
            {"<html>", false},
            {fileBytes(appPath("/new.zip")), true},
        };
        for (const auto &[answer, isProfile] : answers) {
            for (const auto &[page, button] :
                 {std::pair("Settings", "pbUpdate"), std::pair("Dashboard", "pbUpAccount")}) {
                LabWindow::reset();
                LabWindow::order("/api", "", answer);
                lab.boxes.expect("Notify", isProfile ? "Update Successful." : "Update Failed.");
                lab.openPage(page);
                QVERIFY(lab.press(button));
                COMPARE_CASE(answer, lab.boxes.left(), 0);
                COMPARE_CASE(answer, lab.items("cmServer"), isProfile ? QStringList("New-1") : QStringList());
                QVERIFY(lab.isOn("pbUpdate") && lab.isOn("cmServer") && lab.isOn("cmProto"));
                QVERIFY(LabWindow::lastRequest("/api").endsWith("username=alice&password=wonderland-7"));
            }
        }
        QCOMPARE(fileBytes(appPath("/cfg/update")), refreshTime);

        // When nothing comes nothing is lost, and the way back to the list of servers is a new login.
        LabWindow::order("/api", "reset");
        lab.openPage("Settings");
        QVERIFY(lab.press("pbUpdate"));
        QTRY_VERIFY(!lab.isLoggedIn());
        QCOMPARE(lab.items("cmServer"), QStringList("Updating Configuration ..."));
        QVERIFY(!lab.isOn("pbUpdate") && !lab.isOn("cmServer") && !lab.isOn("cmProto"));
        QVERIFY(lab.press("pbExist"));
        QCOMPARE(lab.items("cmServer"), QStringList("New-1"));
        QVERIFY(lab.isOn("pbUpdate") && lab.isOn("cmServer") && lab.isOn("cmProto"));
    }
};

LAB_TEST_MAIN(UpdateTest)
#include "UpdateTest.moc"
