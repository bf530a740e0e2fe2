#include "tests/lab/LabWindow.h"

#include "account/SavedLogin.h"
#include "common/AppPath.h"
#include "tests/support/Archives.h"
#include "tests/support/Cases.h"

#include <QComboBox>
#include <QDir>
#include <QRegularExpression>
#include <QTableWidget>

static const QString kBobsPassword = QString::fromUtf8("a&b=c+d é");

/// All that is in a folder, with what the files hold, but what the pattern of grep -E names.
static QByteArray below(const QString &folder, const QByteArray &except = "^$")
{
    return inHome(
        "cd '" + folder.toUtf8() +
        "' && find . -mindepth 1 -printf '%P %y %l ' \\( -type f -exec sha256sum {} \\; -o -printf '\\n' \\) "
        "| grep -vE '" +
        except + "' | sort");
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

/// Logging in to the real service through the real buttons, and what every failure leaves.
class LoginTest : public QObject
{
    Q_OBJECT

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

private slots:
    void receivesTheProfile()
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
        QCOMPARE(lab.find<QTableWidget>("tbPing")->rowCount(), servers.size()); // the next start reads the skip list
        QCOMPARE(lab.label("lbName"), QString("bob"));
        const QString expiry = lab.label("lbExpired");
        QVERIFY2(expiry.contains(QRegularExpression("^\\w{3} [ \\d]\\d [\\d:]{8} \\d{4}$")), qPrintable(expiry));
        QVERIFY(lab.shows("lbCountry", "Homeland") && lab.shows("lbPublicIP", "198.51.100.2"));
        QVERIFY(!QFile::exists(appPath("/cfg/OpenVPN/config")) && !QFile::exists(savedLoginPath()));
        QVERIFY(QFile::exists(appPath("/cfg/update")));
    }

    /// Whether L2TP was chosen before the login, stays chosen while the configuration is refreshed, or is stored.
    void showsTheServersOfTheProtocol()
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

    void failures()
    {
        const QByteArray timeOut = "WARNING: can not get reply from server, time out.";
        const QByteArray format = "WARNING: the data is not in correct format, the login might fail.";
        const QByteArray unpacking = "WARNING: unpacking failed: ";
        const Item server{"Good-1.ovpn", "remote 192.0.2.1 1194\n"};
        const Item link{"way", appPath("").toUtf8(), S_IFLNK | 0777};
        const QByteArray page = "<p>Sorry: invalid username or password!</p>";
        const Failure failures[] = {
            {"wrong password", true, nullptr, "", Rejected, "Get Data: 28"},
            {"rejection in a page", false, "status=403", page, Rejected, "Get Data: 43"},
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
        for (const Failure &failure : failures) {
            failsAndRecovers(failure);
        }
    }

    void archiveToolMissing()
    {
        LabWindow lab;
        QFile::remove(appPath("/compose7"));
        lab.start();
        lab.boxes.expect("Error", "Korvan compose7 is missed.");
        lab.login();
        QVERIFY(lab.isLoggedIn());
        QCOMPARE(lab.items("cmServer"), QStringList());
        QCOMPARE(below(appPath("/cfg/OpenVPN")), QByteArray());
    }

    void remembersTheLogin()
    {
        const std::tuple<QString, QString, bool> users[] = {{"bob", kBobsPassword, true},
                                                            {"carol", "expired", false}};
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
    void debugKeepsTheArchive()
    {
        const QByteArray zip = zipOf({{"Only-1.ovpn", "remote 192.0.2.1 1194\n"}});
        for (const auto &[enabled, archive] : {std::pair("true", zip), std::pair("True and more", QByteArray())}) {
            LabWindow lab;
            lab.start();
            LabWindow::order("/api", "", zip);
            putFile(appPath("/setting.ini"), QByteArray("[DEBUG]\nENABLE=") + enabled + '\n');
            if (!archive.isEmpty()) {
                lab.boxes.expect("Debug", "Result: " + QString::fromLatin1(zip.constData())); // up to a zero byte
            }
            lab.login();
            QCOMPARE(lab.items("cmServer"), QStringList("Only-1"));
            QCOMPARE(fileBytes(appPath("/cfg/OpenVPN/config")), archive);
        }
    }

private:
    /// One failed login, perhaps with an earlier profile on disk, and the good one after it.
    static void failsAndRecovers(const Failure &failure)
    {
        const auto &[name, hasProfile, order, body, outcome, log] = failure;
        LabWindow lab;
        if (hasProfile) {
            putFile(appPath("/cfg/OpenVPN/Old-1.ovpn"), "remote 192.0.2.1 1194\n");
            putFile(appPath("/cfg/OpenVPN/alice.crt"), "            Not After : Dec 31 23:59:59 2099 GMT\n");
            putFile(appPath("/cfg/L2TP.txt"), "Old-L2TP|192.0.2.1\n");
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
        const QByteArray changes = outcome == Lost ? "^(log.txt|cfg/update|cfg/OpenVPN)" : "^log.txt";
        const QByteArray before = below(appPath(""), changes);
        lab.login("alice", order == nullptr ? "wonderland-8" : "wonderland-7");
        COMPARE_CASE(name, lab.boxes.left(), 0);
        COMPARE_CASE(name, below(appPath(""), changes), before);
        COMPARE_CASE(name, LabWindow::logHas(log), true);
        COMPARE_CASE(name, lab.isOn("pbLogin"), true);
        const bool goesOn = outcome == Lost || (outcome == NothingCame && hasProfile);
        COMPARE_CASE(name, lab.isLoggedIn(), goesOn);
        if (goesOn) {
            COMPARE_CASE(name, lab.items("cmServer").join(' '), outcome == Lost ? "" : "Old-1");
            COMPARE_CASE(name, lab.label("lbExpired"), outcome == Lost ? "" : "Dec 31 23:59:59 2099");
            COMPARE_CASE(name, below(appPath("/cfg/OpenVPN")).isEmpty(), outcome == Lost);
            QVERIFY(lab.press("pbChangeUser"));
        }
        // Whatever went wrong, the next login works.
        LabWindow::reset();
        lab.login();
        COMPARE_CASE(name, lab.items("cmServer"), labServers("alice"));
        COMPARE_CASE(name, lab.isLoggedIn() && lab.isOn("cmServer"), true);
    }
};

LAB_TEST_MAIN(LoginTest)
#include "LoginTest.moc"
