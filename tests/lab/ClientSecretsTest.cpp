#include "tests/lab/ClientLab.h"

#include "account/SavedLogin.h"
#include "common/AppPath.h"
#include "names/Names.h"
#include "tests/support/Cases.h"

#include <QPushButton>
#include <QRandomGenerator>

/// Every file of the program and of the machine's run time, and the command line and environment of every process,
/// that holds the secret; the lab's own lists of users, and the test's programs, left out.
static QByteArray placesOf(const QByteArray &secret)
{
    return inHome("cat >/run/lab/secret; { grep -rlaFf /run/lab/secret --exclude-dir=lab /run /var/log '" +
                      appPath("") +
                      "'; for process in /proc/[0-9]*; do grep -laFf /run/lab/secret $process/cmdline "
                      "$process/environ; done; } 2>/dev/null; rm /run/lab/secret",
                  secret + '\n');
}

static QByteArray newSecret()
{
    return "s&x" + QByteArray::number(QRandomGenerator::global()->generate64(), 16);
}

/// What a session with passwords leaves of them.
class ClientSecretsTest : public QObject
{
    Q_OBJECT

private slots:
    void nothingHoldsAPassword()
    {
        const QByteArray secret = newSecret();
        ClientLab lab;
        inHome("read -r secret; sed -i \"s/^alice\t.*/alice\t${secret//&/\\\\&}/\" $LAB_DIR/users", secret + '\n');
        putFile(appPath("/found"), secret);
        QVERIFY2(placesOf(secret).contains("/found"), "the search works");
        QFile::remove(appPath("/found"));

        lab.start();
        lab.tick("cbNoSound");
        QVERIFY(lab.press("cbRember"));
        lab.login("alice", QString::fromLatin1(secret));
        QCOMPARE(readSavedLogin().password.toLatin1(), secret);
        QCOMPARE(placesOf(secret), QByteArray());
        lab.find<QComboBox>("cmServer")->setCurrentText("Examplia-1");
        QVERIFY(lab.connects());
        QCOMPARE(placesOf(secret), QByteArray());
        QVERIFY(lab.disconnects());
        // An answer of the service's that sends everything back.
        ClientLab::order("/api", "", "username=alice&password=" + secret.toPercentEncoding() + " is " + secret);
        lab.boxes.expect("Notify", "Update Failed.");
        QVERIFY(lab.press("pbUpdate"));
        QCOMPARE(placesOf(secret), QByteArray());
        inHome("sed -i 's/^alice\t.*/alice\twonderland-7/' $LAB_DIR/users");
    }

    /// A proxy that asks for a password of its own.
    void norTheProxys()
    {
        const QByteArray secret = newSecret().remove(1, 1); // tinyproxy takes letters and digits
        ClientLab lab;
        inHome("read -r secret; conf=$LAB_DIR/secret-proxy.conf; sed -e '/^BasicAuth/d; s/^Port .*/Port 3131/' "
               "$LAB_DIR/http-auth-proxy.conf >$conf; echo \"BasicAuth ann $secret\" >>$conf; "
               "ip netns exec world tinyproxy -c $conf </dev/null >/dev/null 2>&1",
               secret + '\n');
        lab.start();
        lab.find<QAbstractButton>("rbHttp")->click();
        lab.find<QLineEdit>("edProxyAddr")->setText(qEnvironmentVariable("LAB_HTTP_AUTH_PROXY").section(':', 0, 0));
        lab.find<QLineEdit>("edProxyPort")->setText("3131");
        lab.find<QLineEdit>("edProxyUser")->setText("ann");
        lab.find<QLineEdit>("edProxyPass")->setText(QString::fromLatin1(secret));
        lab.tick("cbProxyAuth");
        lab.find<QAbstractButton>("pbSaveProxy")->click();
        lab.logInTo("Examplia-1-TCP");
        QVERIFY(lab.connects());
        QCOMPARE(placesOf(secret), QByteArray());
        QVERIFY(lab.disconnects());
        QCOMPARE(placesOf(secret), QByteArray());
    }

    /// There is no PPP in the lab: the helper's stand-in says how many words it got where, and takes its time.
    void norTheOneOfL2tp()
    {
        const QByteArray secret = newSecret();
        ClientLab lab;
        const QByteArray folder = appPath("/cfg").toUtf8();
        putScript(appPath("/compose4"), "# " + QByteArray(kArgumentsOnInput) +
                                            "\nmapfile -d '' -t words; echo \"$* ${#words[@]}\" >>'" + folder +
                                            "/asked'; until [ ${#words[@]} != 3 ] || [ -e '" + folder +
                                            "/go' ]; do sleep 0.05; done; echo Success");
        lab.start();
        lab.find<QComboBox>("cmProto")->setCurrentText("L2TP");
        lab.logInTo("Examplia-L2TP-1");
        QByteArray places = "never looked for";
        QTimer answer;
        connect(&answer, &QTimer::timeout, [&] {
            if (QDialog *box = ClientWindow::openDialog()) {
                box->findChild<QLineEdit *>("edPass")->setText(QString::fromLatin1(secret));
                box->findChild<QPushButton *>("btnOK")->click();
            } else if (fileBytes(folder + "/asked").endsWith("- 3\n") && !QFile::exists(folder + "/go")) {
                places = placesOf(secret); // while it is dialled
                putFile(folder + "/go", "");
            }
        });
        answer.start(50);
        QVERIFY(lab.connects());
        QCOMPARE(places, QByteArray());
        QTRY_VERIFY(fileBytes(folder + "/asked").endsWith("- 2\n")); // whether it lives
        QVERIFY(lab.disconnects());
        QCOMPARE(placesOf(secret), QByteArray());
        QCOMPARE(fileBytes(folder + "/asked").replace("- 2\n- 2\n", "- 2\n"), "- 4\n- 3\n- 2\n- 1\n");
        QFile::remove(appPath("/compose4")); // the next test brings the real one
    }
};

QTEST_MAIN(ClientSecretsTest)
#include "ClientSecretsTest.moc"
