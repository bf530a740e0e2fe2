#include "tests/lab/ClientLab.h"

#include "account/SavedLogin.h"
#include "common/AppPath.h"
#include "tests/support/Cases.h"

#include <QDesktopServices>
#include <QDir>
#include <QNetworkProxy>

static const QString kBobsPassword = QString::fromUtf8("a&b=c+d é");

/// All files of the application folder with their digests, but those that the pattern of grep -E names.
static QByteArray filesBut(const QByteArray &pattern)
{
    return inHome("cd '" + appPath("").toUtf8() + "' && find . -type f | grep -vE '" + pattern +
                  "' | sort | xargs -d '\n' sha256sum");
}

/// The servers of the user's profile at the service, in the order of the window's lists.
static QStringList labServers(const QString &user)
{
    QStringList names = QDir(qEnvironmentVariable("LAB_DIR") + "/profiles/" + user).entryList({"*.ovpn"});
    names.sort(Qt::CaseInsensitive); // with their endings
    return names.replaceInStrings(".ovpn", "");
}

static void putOldProfile()
{
    putFile(appPath("/cfg/OpenVPN/Old-1.ovpn"), "remote 192.0.2.1 1194\n");
    putFile(appPath("/cfg/OpenVPN/alice.crt"), "            Not After : Dec 31 23:59:59 2099 GMT\n");
    putFile(appPath("/cfg/L2TP.txt"), "Old-L2TP|192.0.2.1\n");
}

static const QStringList kRejected{"Error", "Invalid username or password."};
static const QStringList kKeepsOld{"Warning", "Update of new configuration failed.\nPlease try again later.\n"
                                              "Korvan-GUI will use existing keys and configurations."};
static const QStringList kHasNone{"Warning", "Retrieval of configuration and keys failed.\nPlease try again later "
                                             "or contact Support at support@korvan.example"};
static const QString kOut = "login page", kOld = "Old-1 Dec 31 23:59:59 2099", kNothing = " ";
// Whether there is a profile, what the service is ordered to answer (nothing to a wrong password), the box,
// and then the servers with the end of the certificate. Without a box the old profile is lost.
static const std::tuple<QByteArray, bool, const char *, QByteArray, QStringList, QString> kFailures[] = {
    {"wrong password", true, nullptr, "", kRejected, kOut},
    {"rejection", false, "status=403", "<p>Sorry: invalid username or password!</p>", kRejected, kOut},
    {"no answer in time", false, "stall=12", "", kHasNone, kOut},
    {"reset connection", true, "reset", "", kKeepsOld, kOld},
    {"empty", true, "empty", "", kKeepsOld, kOld},
    {"no ZIP", true, "", "<html>Back soon</html>", {}, kNothing},
    {"truncated ZIP", true, "keep=500", "", {}, kNothing},
};

/// The servers and the end of the certificate, where the main page is shown.
static QString shownBy(const ClientLab &lab)
{
    return lab.isLoggedIn() ? lab.items("cmServer").join(' ') + ' ' + lab.label("lbExpired") : kOut;
}

/// Logging in to the real service through the real buttons, and what every failure leaves.
class LoginTest : public QObject
{
    Q_OBJECT

public slots:
    void noteUrl(const QUrl &url) { m_opened += url.toString(); }

private slots:
    void receivesTheProfile()
    {
        ClientLab lab;
        lab.start();
        putFile(appPath("/setting.ini"), "[DEBUG]\nENABLE=True\n"); // only "true" switches it on
        putFile(appPath("/cfg/OpenVPN/config/file"), {});           // in the way of the archive, from another profile
        lab.login("bob", kBobsPassword);
        // The service answers with a profile only when method, headers, length and encoding are right to the byte.
        const QByteArray request = ClientLab::lastRequest("/api");
        QVERIFY2(request.endsWith("\r\n\r\nusername=bob&password=a%26b%3Dc%2Bd%20%C3%A9"), request.constData());

        const QStringList servers = labServers("bob");
        QVERIFY(servers.contains("Examplia-1"));
        QVERIFY(lab.isLoggedIn() && lab.isOn("cmServer") && lab.isOn("cmProto"));
        QCOMPARE(lab.items("cmServer"), servers);
        QCOMPARE(lab.label("lbName") + ' ' + lab.label("lbExpired").right(4).left(2), QString("bob 20"));
        QVERIFY(lab.shows("lbCountry", "Homeland") && lab.shows("lbPublicIP", "198.51.100.2"));
        QVERIFY(!QFile::exists(appPath("/cfg/OpenVPN/config")) && !QFile::exists(savedLoginPath()));
        QCOMPARE(inHome("stat -c %a '" + appPath("/cfg/OpenVPN").toUtf8() + "'"), "700"); // it holds private keys

        // In debug mode what came is shown up to a zero byte, and kept; without the tool nothing can be unpacked.
        const QByteArray archive("PK\3\4\0 and so on", 14);
        ClientLab::order("/api", "", archive);
        putFile(appPath("/setting.ini"), "[DEBUG]\nENABLE=true\n");
        QFile::remove(appPath("/compose7"));
        lab.boxes.expect("Debug", "Result: PK\3\4");
        lab.boxes.expect("Error", "Korvan compose7 is missed.");
        QVERIFY(lab.press("pbChangeUser"));
        lab.login();
        QCOMPARE(lab.items("cmServer"), QStringList());
        QCOMPARE(fileBytes(appPath("/cfg/OpenVPN/config")), archive);
    }

    void failures()
    {
        for (const auto &[name, hasProfile, order, body, box, after] : kFailures) {
            ClientLab lab;
            const bool keepsAll = !box.isEmpty();
            if (hasProfile) {
                putOldProfile();
            }
            lab.start();
            QVERIFY(lab.press("cbRember"));
            if (order != nullptr) {
                ClientLab::order("/api", order, body);
            }
            if (keepsAll) {
                lab.boxes.expect(box.first(), box.last());
            }
            const QByteArray changes = keepsAll ? "^./log.txt" : "^./(log.txt|cfg/update|cfg/OpenVPN)";
            const QByteArray before = filesBut(changes);
            lab.login("alice", order == nullptr ? "wonderland-8" : "wonderland-7");
            COMPARE_CASE(name, lab.boxes.left(), 0);
            COMPARE_CASE(name, filesBut(changes), before);
            COMPARE_CASE(name, shownBy(lab), after);
            COMPARE_CASE(name, QDir(appPath("/cfg/OpenVPN")).isEmpty(), !keepsAll || !hasProfile);
            // Whatever went wrong, the next login works.
            QVERIFY(!lab.isLoggedIn() || lab.press("pbChangeUser"));
            ClientLab::reset();
            lab.login();
            COMPARE_CASE(name, lab.items("cmServer"), labServers("alice"));
        }
    }

    /// What came in place of a profile is told on the page that stays, and the profile before it can be had again.
    void helpWithoutServers()
    {
        const char *portal = "A web page came in place of your configuration.";
        const char *damaged = "The configuration that came is damaged.";
        const char *rejected = "The service did not accept your user name or password.";
        QDesktopServices::setUrlHandler("http", this, "noteUrl");
        // How the service answers, to which button, and what is told.
        const std::tuple<const char *, QByteArray, const char *, const char *> cases[] = {
            {"", "\xEF\xBB\xBF\n<!doctype html><h1>Hotel</h1>", "pbLogin", portal},
            {"status=302", "moved", "pbLogin", portal},
            {"status=511", "<h1>Hotel</h1>", "pbLogin", portal},
            {"status=502", "<h1>Bad gateway</h1>", "pbLogin", "The service is out of order at the moment."},
            {"keep=500", "", "pbLogin", damaged},
            {"", "junk", "pbUpdate", damaged},
            {"", "invalid username or password", "pbUpdate", rejected},
        };
        for (const auto &[order, body, button, told] : cases) {
            ClientLab lab;
            lab.start();
            lab.login();
            const QStringList servers = lab.items("cmServer");
            putFile(appPath("/cfg/OpenVPN/my-custom.txt"), "stays in the folder");
            putFile(appPath("/cfg/OpenVPN/.mine"), "and so does this");
            putFile(appPath("/cfg/L2TP.txt"), "L|192.0.2.1\n");
            ClientLab::order("/api", order, body);
            const bool again = button == QByteArray("pbUpdate");
            if (again) {
                lab.boxes.expect("Notify", "Update Failed.");
            }
            QVERIFY(again || lab.press("pbChangeUser"));
            QVERIFY(lab.press(button));
            COMPARE_CASE(body, lab.items("cmServer"), QStringList());
            QVERIFY2(lab.label("lbNotice").startsWith(told), qPrintable(lab.label("lbNotice")));
            m_opened.clear();
            COMPARE_CASE(body, lab.press("pbPortal"), told == portal);
            COMPARE_CASE(body, m_opened.join(' '), told == portal ? "http://www.korvan.example" : "");
            QFile::remove(appPath("/cfg/L2TP.txt"));
            QVERIFY(lab.press("pbLastProfile") && !lab.press("pbLastProfile"));
            COMPARE_CASE(body, lab.items("cmServer"), servers);
            QCOMPARE(fileBytes(appPath("/cfg/OpenVPN/my-custom.txt")), "stays in the folder");
            QCOMPARE(fileBytes(appPath("/cfg/OpenVPN/.mine")), "and so does this");
            QVERIFY(QFile::exists(appPath("/cfg/L2TP.txt")) && !QFile::exists(appPath("/cfg/OpenVPN.last")));
            ClientLab::reset();
            lab.find<QLabel>("lbExpired")->clear();
            lab.boxes.expect("Notify", "Update Successful.");
            QVERIFY(lab.press("pbUpdate"));
            QVERIFY2(!lab.label("lbExpired").isEmpty(), "the new certificate's date");
            QVERIFY(!QFile::exists(appPath("/cfg/OpenVPN.last"))); // the new one works
        }
        QDesktopServices::unsetUrlHandler("http");
    }

    /// With pins nothing is sent before the service has shown one of their keys, also not through a proxy.
    void pins()
    {
        const QByteArray pin = qgetenv("LAB_PIN");
        const QByteArray wrong(64, '0');
        const QString other = "api.korvan.example does not show the key that it is known by, so that nothing was "
                              "sent. Somebody may be answering in its place.";
        const QString open = "The address of api.korvan.example is not encrypted, so that nothing was sent.";
        const QByteArray plain = "[LOGIN]\nVER=http://api.korvan.example/api\n";
        const QStringList proxy = qEnvironmentVariable("LAB_HTTP_PROXY").split(':');
        const std::tuple<QByteArray, bool, QString> cases[] = {
            {"[SERVICE]\nPINS=" + pin + '\n', false, ""},
            {"[SERVICE]\nPINS=" + wrong + ", " + pin.toUpper() + '\n', true, ""},
            {"[SERVICE]\nPINS=" + wrong + '\n', false, other},
            {"[SERVICE]\nPINS=" + wrong + '\n', true, other},
            {"[SERVICE]\nPINS=no pin\n", false, other},
            {"[SERVICE]\nPINS=" + pin + '\n' + plain, false, open},
            {plain, false, ""},
        };
        for (const auto &[settings, proxied, reason] : cases) {
            ClientLab lab;
            putFile(appPath("/setting.ini"), settings);
            lab.start();
            if (proxied) {
                QNetworkProxy::setApplicationProxy(
                    QNetworkProxy(QNetworkProxy::HttpProxy, proxy.first(), proxy.last().toUShort()));
            }
            if (!reason.isEmpty()) {
                lab.boxes.expect("Warning", "Retrieval of configuration and keys failed.\nPlease try again later "
                                            "or contact Support at support@korvan.example\n\n" +
                                                reason);
            }
            lab.login();
            QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
            COMPARE_CASE(settings, lab.boxes.left(), 0);
            COMPARE_CASE(settings, lab.isLoggedIn(), reason.isEmpty());
            COMPARE_CASE(settings, ClientLab::lastRequest("/api").isEmpty(), !reason.isEmpty());
            // The update description comes from a host of the service's too, the IP page does not.
            COMPARE_CASE(settings, ClientLab::lastRequest("/update.xml").isEmpty(), reason == other);
            QVERIFY(fileBytes(appPath("/log.txt")).contains(reason.toUtf8()));
            QVERIFY(!lab.isLoggedIn() || lab.shows("lbCountry", "Homeland"));
        }
    }

    void remembersTheLogin()
    {
        const std::tuple<QString, QString, bool> users[] = {{"bob", kBobsPassword, true},
                                                            {"carol", "expired", false}};
        for (const auto &[user, password, hasValidCertificate] : users) {
            ClientLab lab;
            lab.start();
            QVERIFY(lab.press("cbRember"));
            QVERIFY2(!QFile::exists(savedLoginPath()), "a password is kept only after the service accepted it");
            lab.login(user, password);
            QCOMPARE(readSavedLogin().password, password);

            ClientLab::reset();
            lab.start();
            QTRY_VERIFY(lab.isLoggedIn());
            QCOMPARE(lab.label("lbName"), user);
            QCOMPARE(lab.items("cmServer"), labServers(user));
            QCOMPARE(ClientLab::lastRequest("/api").isEmpty(), hasValidCertificate);

            QVERIFY(lab.press("pbChangeUser"));
            if (hasValidCertificate) {
                lab.login(user, "wrong");
                QVERIFY(lab.press("pbChangeUser") && ClientLab::lastRequest("/api").isEmpty());
                QCOMPARE(readSavedLogin().password, password);
                lab.login(user, password);
                writeSavedLogin({user, "one before"});
                lab.boxes.expect("Notify", "Update Successful.");
                QVERIFY(lab.press("pbUpAccount"));
                QCOMPARE(readSavedLogin().password, password); // accepted now
                QVERIFY(lab.press("pbChangeUser"));
            }
            QVERIFY(lab.press("cbRember"));
            QVERIFY2(!QFile::exists(savedLoginPath()), "forgotten at once");
        }
    }

private:
    QStringList m_opened; ///< addresses that the browser was to show
};

QTEST_MAIN(LoginTest)
#include "LoginTest.moc"
