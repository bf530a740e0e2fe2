#include "tests/lab/LabWindow.h"

#include "account/SavedLogin.h"
#include "common/AppPath.h"
#include "tests/support/Archives.h"
#include "tests/support/Cases.h"

#include <QComboBox>
#include <QDirIterator>
#include <QRegularExpression>
#include <QTableWidget>

using Files = QMap<QString, QByteArray>;

static const QString kBobsPassword = QString::fromUtf8("a&b=c+d é");

/// Logging in to the real service through the real buttons, and what every failure leaves.
class LoginTest : public QObject
{
    Q_OBJECT

private slots:
    void receivesTheProfile();
    void showsTheServersOfTheProtocol();
    void failures();
    void archiveToolMissing();
    void remembersTheLogin();
    void debugKeepsTheArchive();
};

/// All files and folders below a folder but these, relative to it, and what the files hold.
static Files filesBelow(const QString &folder, const QStringList &except = {})
{
    Files files;
    for (QDirIterator it(folder, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
                         QDirIterator::Subdirectories);
         it.hasNext();) {
        const QString path = QDir(folder).relativeFilePath(it.next());
        if (!except.contains(path)) {
            files.insert(path, it.fileInfo().isFile() ? fileBytes(it.filePath()) : QByteArray());
        }
    }
    return files;
}

/// The servers of the user's profile at the service, in the order of the window's lists.
static QStringList labServers(const QString &user)
{
    QStringList names = QDir(qEnvironmentVariable("LAB_DIR") + "/profiles/" + user).entryList({"*.ovpn"});
    names.sort(Qt::CaseInsensitive); // with their endings
    return names.replaceInStrings(".ovpn", "");
}

static QByteArray zipOf(const Items &items)
{
    const QTemporaryDir folder;
    buildArchive(folder.filePath("archive.zip"), items);
    return fileBytes(folder.filePath("archive.zip"));
}

void LoginTest::receivesTheProfile()
{
    LabWindow lab;
    lab.start();
    lab.login("bob", kBobsPassword);
    // The service answers with a profile only when method, headers, length and encoding are right to the byte.
    const QByteArray request = LabWindow::lastRequest("/api");
    QVERIFY2(request.endsWith("\r\n\r\nusername=bob&password=a%26b%3Dc%2Bd%20%C3%A9"), request.constData());
    QVERIFY(LabWindow::logHas("SUCCESS: download ") && !LabWindow::logHas("WARNING: unpacking"));

    const QStringList servers = labServers("bob");
    QVERIFY(servers.contains("Examplia-1"));
    QVERIFY(lab.isLoggedIn() && lab.isOn("cmServer") && lab.isOn("cmProto"));
    QCOMPARE(lab.items("cmServer"), servers);
    QCOMPARE(lab.items("cmBootServer"), servers);
    QCOMPARE(lab.find<QTableWidget>("tbPing")->rowCount(), servers.size());
    QCOMPARE(lab.label("lbName"), QString("bob"));
    const QString expires = lab.label("lbExpired");
    QVERIFY2(QRegularExpression("^\\w{3} [ \\d]\\d [\\d:]{8} \\d{4}$").match(expires).hasMatch(),
             qPrintable(expires));
    QVERIFY(lab.shows("lbCountry", "Homeland") && lab.shows("lbPublicIP", "198.51.100.2"));
    QVERIFY(!QFile::exists(appPath("/cfg/OpenVPN/config")) && !QFile::exists(savedLoginPath()));
    QVERIFY(QFile::exists(appPath("/cfg/update")));

    // The next start knows which servers the table leaves out, and uses the files without asking anybody.
    LabWindow::reset();
    lab.start();
    QVERIFY(lab.press("pbExist"));
    QCOMPARE(lab.items("cmServer"), servers);
    const int skipped = fileBytes(appPath("/cfg/OpenVPN/skiplist.dat")).count('|') + 1;
    QVERIFY(skipped > 1);
    QCOMPARE(lab.find<QTableWidget>("tbPing")->rowCount(), servers.size() - skipped);
    QCOMPARE(LabWindow::lastRequest("/api"), QByteArray());
}

/// Whether L2TP was chosen before the login, stays chosen while the configuration is refreshed, or is stored.
void LoginTest::showsTheServersOfTheProtocol()
{
    const QStringList servers{"Examplia-L2TP-1", "Samplonia-L2TP-1"};
    LabWindow lab;
    lab.start();
    lab.find<QComboBox>("cmProto")->setCurrentText("L2TP");
    lab.login();
    QCOMPARE(lab.items("cmServer"), servers);
    lab.boxes.expect("Notify", "Update Successful.");
    lab.find<QAbstractButton>("pbUpAccount")->click();
    QCOMPARE(lab.items("cmServer"), servers);
    lab.find<QComboBox>("cmBootServer")->setCurrentText(servers.last());
    lab.find<QAbstractButton>("pbSave")->click();

    lab.start();
    QVERIFY(lab.press("pbExist"));
    QCOMPARE(lab.items("cmServer"), servers);
    QCOMPARE(lab.find<QComboBox>("cmServer")->currentText(), servers.last());
    QCOMPARE(lab.find<QComboBox>("cmServer")->currentData().toString(), QString("203.0.113.23"));
}

/// What an earlier login has left, without the login itself.
static void putOldProfile()
{
    putFile(appPath("/cfg/OpenVPN/Old-1.ovpn"), "remote 192.0.2.1 1194\n");
    putFile(appPath("/cfg/OpenVPN/alice.crt"), "            Not After : Dec 31 23:59:59 2099 GMT\n");
    putFile(appPath("/cfg/L2TP.txt"), "Old-L2TP|192.0.2.1\n");
}

void LoginTest::failures()
{
    enum Outcome {
        Rejected,    ///< back on the login page, the profile stays
        NothingCame, ///< goes on with the old profile, or back when there is none
        Lost,        ///< goes on without any server
    };
    struct Failure
    {
        QByteArray name;
        bool hasProfile;
        const char *order; ///< none: a wrong password
        QByteArray body;
        Outcome outcome;
        QByteArray log;
    };
    const QByteArray timeOut = "WARNING: can not get reply from server, time out.";
    const QByteArray format = "WARNING: the data is not in correct format, the login might fail.";
    const QByteArray unpacking = "WARNING: unpacking failed: ";
    const Item server{"Good-1.ovpn", "remote 192.0.2.1 1194\n"};
    const Item link{"way", appPath("").toUtf8(), S_IFLNK | 0777};
    const Failure failures[] = {
        {"wrong password", true, nullptr, "", Rejected, "Get Data: 28"},
        {"rejection in a page", false, "status=403", "<p>Sorry: invalid username or password!</p>", Rejected, ": 43"},
        {"no answer in time", false, "stall=12", "", NothingCame, timeOut},
        {"reset connection", true, "reset", "", NothingCame, format},
        {"reset connection, no profile", false, "reset", "", NothingCame, format},
        {"empty", true, "empty", "", NothingCame, timeOut},
        {"empty error page", true, "empty&status=503", "", NothingCame, format},
        {"no ZIP", true, "", "<html>Back soon</html>", Lost, format},
        {"no ZIP, no profile", false, "", "<html>Back soon</html>", Lost, format},
        {"one letter", true, "keep=1", "", Lost, format},
        {"truncated ZIP", true, "keep=500", "", Lost, unpacking},
        {"broken off ZIP", true, "break=500", "", Lost, unpacking},
        {"damaged ZIP", true, "", "PK\3\4 and no more", Lost, unpacking},
        {"folder above", true, "", zipOf({server, {"../../up.sh", "evil"}}), Lost, "leaves the target folder"},
        {"file under a link", true, "", zipOf({server, link, {"way/up.sh", "evil"}}), Lost, "is a link"},
        {"list is a link", true, "", zipOf({server, {"L2TP.txt", "/etc/shadow", link.mode}}), Lost, "is a link"},
        {"the same name twice", true, "", zipOf({server, server}), Lost, "comes twice"},
    };
    for (const auto &[name, hasProfile, order, body, outcome, log] : failures) {
        LabWindow lab;
        if (hasProfile) {
            putOldProfile();
        }
        lab.start();
        QVERIFY(lab.press("cbRember"));
        if (order != nullptr) {
            LabWindow::order("/api", order, body);
        }
        if (outcome == Rejected) {
            lab.boxes.expect("Error", "Invalid username or password.");
        } else if (outcome == NothingCame) {
            lab.boxes.expect("Warning", hasProfile
                                            ? "Update of new configuration failed.\nPlease try again later.\n"
                                              "Korvan-GUI will use existing keys and configurations."
                                            : "Retrieval of configuration and keys failed.\nPlease try again later "
                                              "or contact Support at support@korvan.example");
        }
        const auto kept = [isLost = outcome == Lost] {
            return filesBelow(appPath(""), isLost ? QStringList{"log.txt", "cfg/update", "cfg/OpenVPN",
                                                                "cfg/OpenVPN/Old-1.ovpn", "cfg/OpenVPN/alice.crt"}
                                                  : QStringList{"log.txt"});
        };
        const Files before = kept();
        lab.login("alice", order == nullptr ? "wonderland-8" : "wonderland-7");
        COMPARE_CASE(name, lab.boxes.left(), 0);
        COMPARE_CASE(name, kept(), before);
        COMPARE_CASE(name, LabWindow::logHas(log), true);
        COMPARE_CASE(name, lab.isOn("pbLogin"), true);
        const bool goesOn = outcome == Lost || (outcome == NothingCame && hasProfile);
        COMPARE_CASE(name, lab.isLoggedIn(), goesOn);
        if (goesOn) {
            COMPARE_CASE(name, lab.items("cmServer"), outcome == Lost ? QStringList() : QStringList("Old-1"));
            COMPARE_CASE(name, lab.label("lbExpired"), outcome == Lost ? "" : "Dec 31 23:59:59 2099");
            COMPARE_CASE(name, filesBelow(appPath("/cfg/OpenVPN")).isEmpty(), outcome == Lost);
            QVERIFY(lab.press("pbChangeUser"));
        }
        // Whatever went wrong, the next login works.
        LabWindow::reset();
        lab.login();
        COMPARE_CASE(name, lab.items("cmServer"), labServers("alice"));
        COMPARE_CASE(name, lab.isLoggedIn() && lab.isOn("cmServer"), true);
    }
}

void LoginTest::archiveToolMissing()
{
    LabWindow lab;
    QFile::remove(appPath("/compose7"));
    lab.start();
    lab.boxes.expect("Error", "Korvan compose7 is missed.");
    lab.login();
    QVERIFY(lab.isLoggedIn());
    QCOMPARE(lab.items("cmServer"), QStringList());
    QCOMPARE(filesBelow(appPath("/cfg/OpenVPN")), Files());
}

void LoginTest::remembersTheLogin()
{
    const std::tuple<QString, QString, bool> users[] = {{"bob", kBobsPassword, true}, {"carol", "expired", false}};
    for (const auto &[user, password, hasValidCertificate] : users) {
        LabWindow lab;
        lab.start();
        QVERIFY(lab.press("cbRember"));
        QVERIFY2(!QFile::exists(savedLoginPath()), "a password is kept only after the service accepted it");
        lab.login(user, password);
        QCOMPARE(readSavedLogin().password, password);

        LabWindow::reset();
        lab.start();
        QTRY_VERIFY(lab.isLoggedIn());
        QCOMPARE(lab.label("lbName"), user);
        QCOMPARE(lab.items("cmServer"), labServers(user));
        QCOMPARE(LabWindow::lastRequest("/api").isEmpty(), hasValidCertificate);

        QVERIFY(lab.press("pbChangeUser") && lab.press("cbRember"));
        QVERIFY2(!QFile::exists(savedLoginPath()), "forgotten at once");
        lab.login(user, password);
        QVERIFY(!LabWindow::lastRequest("/api").isEmpty() && !QFile::exists(savedLoginPath()));
    }
}

/// Only "true" switches it on.
void LoginTest::debugKeepsTheArchive()
{
    const QByteArray zip = zipOf({{"Only-1.ovpn", "remote 192.0.2.1 1194\n"}});
    for (const auto &[enabled, archive] : {std::pair("true", zip), std::pair("True and more", QByteArray())}) {
        LabWindow lab;
        lab.start();
        LabWindow::order("/api", "", zip);
        putFile(appPath("/setting.ini"), QByteArray("[DEBUG]\nENABLE=") + enabled + '\n');
        if (!archive.isEmpty()) {
            lab.boxes.expect("Debug", "Result: " + QString::fromLatin1(zip.constData())); // up to its first zero byte
        }
        lab.login();
        QCOMPARE(lab.items("cmServer"), QStringList("Only-1"));
        QCOMPARE(fileBytes(appPath("/cfg/OpenVPN/config")), archive);
    }
}

int main(int argc, char *argv[])
{
    return runLabTest<LoginTest>(argc, argv);
}
#include "LoginTest.moc"
