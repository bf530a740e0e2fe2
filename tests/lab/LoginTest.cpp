#include "tests/lab/LabWindow.h"

#include "account/SavedLogin.h"
#include "common/AppPath.h"
#include "tests/support/Archives.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDirIterator>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QStackedWidget>
#include <QTableWidget>

using Files = QMap<QString, QByteArray>;

/// What a failed login leaves of the profile that was there before.
enum Outcome {
    Rejected,    ///< back on the login page, the profile stays
    NothingCame, ///< goes on with the old profile, or back when there is none
    Lost,        ///< goes on without any server
};

/// Logging in to the real service through the real buttons.
class LoginTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_lab = std::make_unique<LabWindow>(); }
    void cleanup();
    void receivesTheProfile_data();
    void receivesTheProfile();
    void showsTheServersOfTheProtocol();
    void failure_data();
    void failure();
    void archiveToolMissing();
    void remembersTheLogin();
    void remembersNothingUnconfirmed_data();
    void remembersNothingUnconfirmed();
    void fetchesAnewWhenTheCertificateHasExpired();
    void debugKeepsTheArchive();
    void hostileArchive_data();
    void hostileArchive();
    void throughAProxy_data();
    void throughAProxy();

private:
    QString page() const { return m_lab->find<QStackedWidget>("stack")->currentWidget()->objectName(); }
    QString text(const char *label) const { return m_lab->find<QLabel>(label)->text(); }
    QStringList servers(const char *box) const;
    static QStringList labServers(const QString &user);
    static bool logHas(const QByteArray &line) { return fileBytes(appPath("/log.txt")).contains(line); }

    std::unique_ptr<LabWindow> m_lab;
};

static Files filesBelow(const QString &folder)
{
    Files files;
    for (QDirIterator it(folder, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
                         QDirIterator::Subdirectories);
         it.hasNext();) {
        const QString path = it.next();
        files.insert(path, it.fileInfo().isFile() ? fileBytes(path) : QByteArray());
    }
    return files;
}

void LoginTest::cleanup()
{
    const QString failures = m_lab->boxes.takeFailures();
    const int left = m_lab->boxes.left();
    m_lab.reset();
    QCOMPARE(failures, QString());
    QCOMPARE(left, 0);
}

QStringList LoginTest::servers(const char *box) const
{
    QStringList names;
    const auto *combo = m_lab->find<QComboBox>(box);
    for (int i = 0; i < combo->count(); ++i) {
        names += combo->itemText(i);
    }
    return names;
}

/// The servers of the user's profile at the service, in the order of the window's lists.
QStringList LoginTest::labServers(const QString &user)
{
    QStringList names = QDir(qEnvironmentVariable("LAB_DIR") + "/profiles/" + user).entryList({"*.ovpn"});
    names.sort(Qt::CaseInsensitive); // with their endings
    return names.replaceInStrings(".ovpn", "");
}

void LoginTest::receivesTheProfile_data()
{
    QTest::addColumn<QString>("user");
    QTest::addColumn<QString>("password");
    QTest::addColumn<QByteArray>("form");
    QTest::newRow("plain") << "alice"
                           << "wonderland-7" << QByteArray("username=alice&password=wonderland-7");
    QTest::newRow("marks, blank and accent")
        << "bob" << QString::fromUtf8("a&b=c+d é") << QByteArray("username=bob&password=a%26b%3Dc%2Bd%20%C3%A9");
}

void LoginTest::receivesTheProfile()
{
    QFETCH(QString, user);
    QFETCH(QString, password);
    m_lab->start();
    m_lab->login(user, password);
    // The service answers with a profile only when method, headers, length and encoding are right to the byte.
    const QByteArray request = LabWindow::lastRequest("/api");
    QVERIFY(request.startsWith("POST /api HTTP/1.1\r\n"));
    QTEST(request.mid(request.indexOf("\r\n\r\n") + 4), "form");

    QCOMPARE(page(), QString("pageMain"));
    const QStringList expected = labServers(user);
    QVERIFY(expected.contains("Examplia-1"));
    QCOMPARE(servers("cmServer"), expected);
    QCOMPARE(servers("cmBootServer"), expected);
    QVERIFY(m_lab->find<QWidget>("cmServer")->isEnabled() && m_lab->find<QWidget>("cmProto")->isEnabled());
    QCOMPARE(m_lab->find<QTableWidget>("tbPing")->rowCount(), expected.size());
    QCOMPARE(text("lbName"), user);
    QVERIFY(QRegularExpression("^\\w{3} [ \\d]\\d [\\d:]{8} \\d{4}$").match(text("lbExpired")).hasMatch());
    QTRY_COMPARE(text("lbPublicIP"), QString("198.51.100.2"));
    QCOMPARE(text("lbCountry"), QString("Homeland"));
    QVERIFY(logHas("SUCCESS: download ") && !logHas("WARNING: unpacking"));

    QVERIFY(!QFile::exists(appPath("/cfg/OpenVPN/config")) && !QFile::exists(appPath("/cfg/login")));
    QVERIFY(QFile::exists(appPath("/cfg/update")));
    QVERIFY(fileBytes(appPath("/cfg/L2TP.txt")).startsWith("Examplia-L2TP-1|203.0.113.21\n"));

    // The next start knows which servers the table leaves out, and uses the files without asking anybody.
    LabWindow::reset();
    m_lab->start();
    QVERIFY(m_lab->press("pbExist"));
    QCOMPARE(servers("cmServer"), expected);
    const QStringList skipped = QString::fromUtf8(fileBytes(appPath("/cfg/OpenVPN/skiplist.dat"))).split('|');
    QVERIFY(skipped.size() > 1);
    QCOMPARE(m_lab->find<QTableWidget>("tbPing")->rowCount(), expected.size() - skipped.size());
    QCOMPARE(LabWindow::lastRequest("/api"), QByteArray());
}

/// Whether L2TP was chosen before the login, is stored, or stays chosen while the configuration is refreshed.
void LoginTest::showsTheServersOfTheProtocol()
{
    const QStringList expected{"Examplia-L2TP-1", "Samplonia-L2TP-1"};
    m_lab->start();
    m_lab->find<QComboBox>("cmProto")->setCurrentText("L2TP");
    m_lab->login("alice", "wonderland-7");
    QCOMPARE(servers("cmServer"), expected);
    m_lab->boxes.expect("Notify", "Update Successful.");
    m_lab->find<QAbstractButton>("pbUpAccount")->click();
    QCOMPARE(servers("cmServer"), expected);
    m_lab->find<QComboBox>("cmBootServer")->setCurrentText("Samplonia-L2TP-1");
    m_lab->find<QAbstractButton>("pbSave")->click();

    m_lab->start();
    QVERIFY(m_lab->press("pbExist"));
    QCOMPARE(servers("cmServer"), expected);
    QCOMPARE(m_lab->find<QComboBox>("cmServer")->currentText(), QString("Samplonia-L2TP-1"));
    QCOMPARE(m_lab->find<QComboBox>("cmServer")->currentData().toString(), QString("203.0.113.23"));
}

void LoginTest::failure_data()
{
    QTest::addColumn<QString>("order");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<int>("outcome");
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<bool>("hasProfile");
    const auto row = [](const QByteArray &name, const char *order, const QByteArray &body, Outcome outcome,
                        const char *line) {
        for (const bool hasProfile : {false, true}) {
            QTest::newRow((name + (hasProfile ? ", with a profile" : "")).constData())
                << QString(order) << body << int(outcome) << QByteArray(line) << hasProfile;
        }
    };
    const char *timeOut = "WARNING: can not get reply from server, time out.";
    const char *format = "WARNING: the data is not in correct format, the login might fail.";
    row("wrong password", nullptr, "", Rejected, "Get Data: 28");
    row("rejection in a page", "status=403", "<p>Sorry: invalid username or password!</p>", Rejected, "Get Data: 43");
    row("no answer in time", "stall=12", "", NothingCame, timeOut);
    row("reset connection", "reset", "", NothingCame, format);
    row("empty", "empty", "", NothingCame, timeOut);
    row("empty error page", "empty&status=503", "", NothingCame, format);
    row("no ZIP", "", "<html>Back soon</html>", Lost, format);
    row("one letter", "keep=1", "", Lost, format);
    row("truncated ZIP", "keep=500", "", Lost, "WARNING: unpacking failed: ");
    row("broken off ZIP", "break=500", "", Lost, "WARNING: unpacking failed: ");
    row("damaged ZIP", "", "PK\3\4 and no more", Lost, "WARNING: unpacking failed: ");
}

/// What an earlier login has left, without the login itself.
static void putOldProfile()
{
    putFile(appPath("/cfg/OpenVPN/Old-1.ovpn"), "remote 192.0.2.1 1194\n");
    putFile(appPath("/cfg/OpenVPN/Old-2.ovpn"), "remote 192.0.2.2 1194\n");
    putFile(appPath("/cfg/OpenVPN/alice.crt"), "            Not After : Dec 31 23:59:59 2099 GMT\n");
    putFile(appPath("/cfg/L2TP.txt"), "Old-L2TP|192.0.2.1\n");
}

void LoginTest::failure()
{
    QFETCH(QString, order);
    QFETCH(QByteArray, body);
    QFETCH(int, outcome);
    QFETCH(QByteArray, line);
    QFETCH(bool, hasProfile);
    if (hasProfile) {
        putOldProfile();
    }
    m_lab->start();
    if (!order.isNull()) {
        LabWindow::order("/api", order, body);
    }
    const Files before = filesBelow(appPath("/cfg"));
    const bool stays = outcome == Rejected || (outcome == NothingCame && !hasProfile);
    if (outcome == Rejected) {
        m_lab->boxes.expect("Error", "Invalid username or password.");
    } else if (outcome == NothingCame) {
        m_lab->boxes.expect("Warning", hasProfile
                                           ? "Update of new configuration failed.\nPlease try again later.\n"
                                             "Korvan-GUI will use existing keys and configurations."
                                           : "Retrieval of configuration and keys failed.\nPlease try again later or "
                                             "contact Support at support@korvan.example");
    }
    m_lab->login("alice", order.isNull() ? "wonderland-8" : "wonderland-7");

    QCOMPARE(m_lab->boxes.left(), 0);
    QVERIFY2(logHas(line), fileBytes(appPath("/log.txt")).constData());
    QVERIFY(m_lab->find<QWidget>("pbLogin")->isEnabled());
    QCOMPARE(page(), QString(stays ? "pageLogin" : "pageMain"));
    if (outcome == Lost) {
        QCOMPARE(filesBelow(appPath("/cfg/OpenVPN")), Files());
        QCOMPARE(fileBytes(appPath("/cfg/L2TP.txt")).isEmpty(), !hasProfile);
        QVERIFY(QFile::exists(appPath("/cfg/update")));
    } else {
        QCOMPARE(filesBelow(appPath("/cfg")), before);
    }
    if (!stays) {
        QCOMPARE(servers("cmServer"), outcome == Lost ? QStringList() : QStringList({"Old-1", "Old-2"}));
        QCOMPARE(text("lbExpired"), outcome == Lost ? QString() : QString("Dec 31 23:59:59 2099"));
        QVERIFY(m_lab->press("pbChangeUser"));
    }
    // Whatever went wrong, the next login works.
    LabWindow::reset();
    m_lab->login("alice", "wonderland-7");
    QCOMPARE(page(), QString("pageMain"));
    QCOMPARE(servers("cmServer"), labServers("alice"));
    QVERIFY(m_lab->find<QWidget>("cmServer")->isEnabled());
}

void LoginTest::archiveToolMissing()
{
    QFile::remove(appPath("/compose7"));
    m_lab->start();
    m_lab->boxes.expect("Error", "Korvan compose7 is missed.");
    m_lab->login("alice", "wonderland-7");
    QCOMPARE(page(), QString("pageMain"));
    QCOMPARE(servers("cmServer"), QStringList());
    QCOMPARE(filesBelow(appPath("/cfg/OpenVPN")), Files());
}

void LoginTest::remembersTheLogin()
{
    m_lab->start();
    QVERIFY(m_lab->press("cbRember"));
    QVERIFY2(!QFile::exists(savedLoginPath()), "a password is kept only after the service accepted it");
    m_lab->login("bob", QString::fromUtf8("a&b=c+d é"));
    QCOMPARE(readSavedLogin().password, QString::fromUtf8("a&b=c+d é"));

    LabWindow::reset();
    m_lab->start();
    QVERIFY(m_lab->find<QCheckBox>("cbRember")->isChecked());
    QTRY_COMPARE(page(), QString("pageMain"));
    QCOMPARE(text("lbName"), QString("bob"));
    QCOMPARE(servers("cmServer"), labServers("bob"));
    QVERIFY2(LabWindow::lastRequest("/api").isEmpty(), "a profile on disk is used while its certificate is valid");

    QVERIFY(m_lab->press("pbChangeUser"));
    QVERIFY(m_lab->press("cbRember"));
    QVERIFY2(!QFile::exists(savedLoginPath()), "forgotten at once");
    m_lab->login("bob", QString::fromUtf8("a&b=c+d é"));
    QVERIFY(!LabWindow::lastRequest("/api").isEmpty());
    QVERIFY(!QFile::exists(savedLoginPath()));
}

void LoginTest::remembersNothingUnconfirmed_data()
{
    QTest::addColumn<QString>("order");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("box");
    QTest::newRow("rejected") << "" << QByteArray("invalid username or password")
                              << "Error|Invalid username or password.";
    QTest::newRow("empty") << "empty" << QByteArray()
                           << "Warning|Update of new configuration failed.\nPlease try again later.\n"
                              "Korvan-GUI will use existing keys and configurations.";
    QTest::newRow("no ZIP") << "" << QByteArray("<html>") << "";
}

void LoginTest::remembersNothingUnconfirmed()
{
    QFETCH(QString, order);
    QFETCH(QByteArray, body);
    QFETCH(QString, box);
    putOldProfile();
    m_lab->start();
    QVERIFY(m_lab->press("cbRember"));
    LabWindow::order("/api", order, body);
    if (!box.isEmpty()) {
        m_lab->boxes.expect(box.section('|', 0, 0), box.section('|', 1));
    }
    m_lab->login("alice", "wonderland-7");
    QVERIFY(!QFile::exists(savedLoginPath()));
}

void LoginTest::fetchesAnewWhenTheCertificateHasExpired()
{
    m_lab->start();
    QVERIFY(m_lab->press("cbRember"));
    m_lab->login("carol", "expired");
    QVERIFY(QFile::exists(savedLoginPath()));
    QVERIFY2(text("lbExpired").endsWith("2020"), qPrintable(text("lbExpired")));
    LabWindow::reset();
    m_lab->start();
    QTRY_COMPARE(page(), QString("pageMain"));
    QVERIFY(LabWindow::lastRequest("/api").endsWith("username=carol&password=expired"));
    QVERIFY(logHas("Certificate expired at: "));
}

/// A ZIP of these entries, whatever their names.
static QByteArray zipOf(const Items &items)
{
    const QString path = appPath("/archive.zip");
    buildArchive(path, items);
    QByteArray bytes = fileBytes(path);
    QFile::remove(path);
    return bytes;
}

void LoginTest::debugKeepsTheArchive()
{
    const QByteArray zip = zipOf({{"Only-1.ovpn", "remote 192.0.2.1 1194\n"}, {"alice.crt", "Not After : x GMT"}});
    LabWindow::order("/api", "", zip);
    m_lab->start();
    putFile(appPath("/setting.ini"), "[DEBUG]\nENABLE=true\n");
    m_lab->boxes.expect("Debug", "Result: " + QString::fromLatin1(zip.constData())); // up to its first zero byte
    m_lab->login("alice", "wonderland-7");
    QCOMPARE(servers("cmServer"), QStringList("Only-1"));
    QCOMPARE(fileBytes(appPath("/cfg/OpenVPN/config")), zip);

    putFile(appPath("/setting.ini"), "[DEBUG]\nENABLE=True and more\n");
    QVERIFY(m_lab->press("pbChangeUser"));
    m_lab->login("alice", "wonderland-7");
    QVERIFY(!QFile::exists(appPath("/cfg/OpenVPN/config")));
}

void LoginTest::hostileArchive_data()
{
    QTest::addColumn<QByteArray>("archive");
    QTest::addColumn<QByteArray>("reason");
    const Item server{"Good-1.ovpn", "remote 192.0.2.1 1194\n"};
    const Item link{"way", appPath("").toUtf8(), S_IFLNK | 0777};
    const auto row = [&](const char *name, const Items &items, const char *reason) {
        QTest::newRow(name) << zipOf(Items{server} + items) << QByteArray(reason);
    };
    row("folder above", {{"../../up.sh", "evil"}}, "leaves the target folder");
    row("folder above, from within", {{"a/../../login", "evil"}}, "leaves the target folder");
    row("absolute path", {{appPath("/outside").toUtf8(), "evil"}}, "has an absolute path");
    row("link", {link}, "is a link");
    row("file under a link", {link, {"way/up.sh", "evil"}}, "is a link");
    row("link in place of the list", {{"L2TP.txt", "/etc/shadow", S_IFLNK | 0777}}, "is a link");
    row("the same name twice", {server}, "comes twice");
}

/// Nothing outside of the profile's folder is touched, and one line tells why.
void LoginTest::hostileArchive()
{
    QFETCH(QByteArray, archive);
    QFETCH(QByteArray, reason);
    m_lab->start();
    LabWindow::order("/api", "", archive);
    const auto outside = [] {
        Files files = filesBelow(appPath(""));
        for (const char *own : {"/log.txt", "/cfg/update", "/cfg/OpenVPN"}) { // what every login writes
            files.remove(appPath(own));
        }
        return files;
    };
    const Files before = outside();
    m_lab->login("alice", "wonderland-7");
    QCOMPARE(outside(), before);
    const QByteArray log = fileBytes(appPath("/log.txt"));
    QVERIFY2(log.contains(reason), log.constData());
    QCOMPARE(log.count("WARNING: unpacking failed"), 1);
    QCOMPARE(servers("cmServer"), QStringList());
}

void LoginTest::throughAProxy_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("address");
    QTest::newRow("HTTP") << "rbHttp" << qEnvironmentVariable("LAB_HTTP_PROXY");
    QTest::newRow("HTTP with a password") << "rbHttp" << qEnvironmentVariable("LAB_HTTP_AUTH_PROXY");
    QTest::newRow("SOCKS") << "rbSocks" << qEnvironmentVariable("LAB_SOCKS_PROXY");
}

void LoginTest::throughAProxy()
{
    QFETCH(QString, type);
    QFETCH(QString, address);
    m_lab->start();
    m_lab->find<QAbstractButton>(qPrintable(type))->click();
    m_lab->find<QLineEdit>("edProxyAddr")->setText(address.section(':', 0, 0));
    m_lab->find<QLineEdit>("edProxyPort")->setText(address.section(':', 1));
    // The box for credentials is about the tunnel only: what is typed is used here in any case.
    m_lab->find<QLineEdit>("edProxyUser")->setText(qEnvironmentVariable("LAB_PROXY_USER"));
    m_lab->find<QLineEdit>("edProxyPass")->setText(qEnvironmentVariable("LAB_PROXY_PASSWORD"));
    m_lab->find<QAbstractButton>("pbSaveProxy")->click();
    m_lab->login("alice", "wonderland-7");
    QCOMPARE(servers("cmServer"), labServers("alice"));
    QTRY_COMPARE(text("lbCountry"), QString("Proxyland"));
    QCOMPARE(text("lbPublicIP"), address.section(':', 0, 0));
}

int main(int argc, char *argv[])
{
    return runLabTest<LoginTest>(argc, argv);
}
#include "LoginTest.moc"
