#include "tests/lab/ClientLab.h"

#include "common/AppPath.h"
#include "tests/support/Cases.h"
#include "ui/KvRetinaTabBar.h"
#include "ui/PlainText.h"

#include <QDir>
#include <QProgressBar>
#include <QSignalSpy>

static const QByteArray kArchive = "/archives/korvan-99.zip";

static const QByteArray kOffer =
    "<update><system>macos</system><version>99.1</version><url>https://portal.korvan.example" + kArchive +
    "</url><message></message></update>\n";

/// Updates of the program and of the configuration from the real service.
class UpdateTest : public QObject
{
    Q_OBJECT

private slots:
    /// An archive that does not come leaves the one before; one that comes takes its place.
    void downloads()
    {
        ClientLab lab;
        inHome("mkfifo /run/fifo"); // markup would make the program open it, and wait for ever
        ClientLab::order("/update.xml", "", QByteArray(kOffer).replace("</mess", "<img src=/run/fifo></mess"));
        lab.boxes.expect("Update", plainText("<img src=/run/fifo>"));
        lab.start();
        ClientLab::order("/update.xml", "", kOffer);
        lab.boxes.expect("Update", "New version 99.1 ready, please click \"Update\".");
        lab.start();
        QCOMPARE(lab.find<KvRetinaTabBar>("tab")->currentIndex(), 2);
        lab.login();
        putFile(appPath("/update/update.zip"), "downloaded before");
        putFile(appPath("/update/older/file"), "old");
        const QByteArray archive = "PK\3\4" + QByteArray(1000000, 'z');
        for (const QByteArray failure : {"empty", "status=404", "break=1000", "reset"}) {
            ClientLab::order(kArchive, failure, failure == "empty" ? QByteArray() : archive);
            lab.boxes.expect("Update", "Update failed, no data.");
            QVERIFY(lab.press("pbUpApp"));
            COMPARE_CASE(failure, lab.boxes.left(), 0);
            COMPARE_CASE(failure, fileBytes(appPath("/update/update.zip")), "downloaded before");
        }
        for (const auto &[answer, body, reason] : {std::tuple("status=302", archive, "the answer has the status 302"),
                                                   {"", "<html>Back soon</html>", "the answer is no archive"},
                                                   {"keep=3", archive, "the answer is no archive"}}) {
            ClientLab::order(kArchive, answer, body);
            lab.boxes.expect("Update", QStringLiteral("Update failed, %1.").arg(reason));
            QVERIFY(lab.press("pbUpApp"));
            COMPARE_CASE(answer, lab.boxes.left(), 0);
            COMPARE_CASE(answer, fileBytes(appPath("/update/update.zip")), "downloaded before");
        }
        auto *progress = lab.find<QProgressBar>("pgUpdate");
        progress->setValue(0);
        const QSignalSpy steps(progress, &QProgressBar::valueChanged);
        ClientLab::order(kArchive, "rate=1000000", archive); // takes a second, seen in steps of a tenth
        lab.boxes.expect("Update", "Update done, please restart application.");
        QTimer::singleShot(0, [&lab] { lab.press("pbUpApp"); }); // a second click meanwhile has no effect
        QVERIFY(lab.press("pbUpApp"));
        QTRY_COMPARE(lab.boxes.left(), 0);
        QCOMPARE(inHome("cd '" + appPath("/update").toUtf8() + "'; find . -type f"), "./update.zip");
        QCOMPARE(fileBytes(appPath("/update/update.zip")), archive);
        QVERIFY(steps.count() >= 3 && progress->value() == 100);
    }

    /// Where the program has keys, the box tells why an archive is not accepted, and nothing is left of it. Archive
    /// and signature are the service's own pages.
    void signedUpdates()
    {
        const QString sign = "cd $LAB_DIR/archives; minisign -S -m korvan-99.1.zip -t 'Korvan %1' -s %2 >/dev/null";
        const QString key = KORVAN_BUILD "/lab/update.key";
        const QString stranger = "../stranger.key";
        inHome("cd $LAB_DIR; minisign -G -W -f -p stranger.pub -s stranger.key >/dev/null");
        // How it is signed and changed, and what the person is told.
        const std::tuple<QString, const char *> cases[] = {
            {"true", "it is not signed"},
            {sign.arg("99.1", stranger), "it is signed with a key that this program does not know"},
            {sign.arg("99.1", key) + "; echo more >>korvan-99.1.zip", "its signature is not right"},
            {sign.arg("2.4.0", key), "its version 2.4.0 is older than the installed 2.4.1"},
            {sign.arg("99.1", key), nullptr},
        };
        for (const auto &[how, reason] : cases) {
            ClientLab lab;
            inHome("tail -1 " KORVAN_BUILD "/lab/update.pub >'" + appPath("/update-keys") + "'");
            inHome(
                "cd $LAB_DIR/archives; printf 'PK\\3\\4 and more' >korvan-99.1.zip; cp korvan-99.1.zip korvan-9.zip");
            inHome(how);
            lab.boxes.expect("Update", "New version 99.1 ready, please click \"Update\".");
            lab.start();
            lab.login();
            lab.boxes.expect("Update", reason ? QStringLiteral("Update failed, %1.").arg(reason)
                                              : QStringLiteral("Update done, please restart application."));
            QVERIFY(lab.press("pbUpApp"));
            COMPARE_CASE(how.toUtf8(), lab.boxes.left(), 0);
            COMPARE_CASE(how.toUtf8(), QFile::exists(appPath("/update/update.zip.minisig")), reason == nullptr);
            QVERIFY(!QFile::exists(appPath("/update.new")) && lab.isOn("pbUpApp") == (reason != nullptr));
        }
    }

    void cleanup() { inHome("rm -f $LAB_DIR/archives/* '" + appPath("/update-keys") + "'"); }

    void configuration()
    {
        ClientLab lab;
        lab.start();
        lab.login();
        const QStringList servers = lab.items("cmServer");
        ClientLab::order("/api", "", "invalid username or password"); // taken for a profile, which costs the old one
        for (const char *button : {"pbUpdate", "pbUpAccount"}) {
            const bool works = button == QByteArray("pbUpAccount");
            lab.boxes.expect("Notify", works ? "Update Successful." : "Update Failed.");
            QVERIFY(lab.press(button));
            COMPARE_CASE(button, lab.boxes.left(), 0);
            COMPARE_CASE(button, lab.items("cmServer"), works ? servers : QStringList());
            QVERIFY(lab.isOn("pbUpdate") && lab.isOn("cmServer") && lab.isOn("cmProto"));
            ClientLab::reset();
        }
        // When nothing comes nothing is lost, and the way back to the list of servers is a new login.
        ClientLab::order("/api", "reset");
        QVERIFY(lab.press("pbUpdate"));
        QTRY_VERIFY(!lab.isLoggedIn());
        QVERIFY(lab.press("pbExist"));
        QCOMPARE(lab.items("cmServer"), servers);
        QVERIFY(lab.isOn("pbUpdate") && lab.isOn("cmServer") && lab.isOn("cmProto"));
    }
};

QTEST_MAIN(UpdateTest)
#include "UpdateTest.moc"
