#include "tests/lab/ClientLab.h"

#include "account/SavedLogin.h"
#include "common/AppPath.h"
#include "tests/support/Cases.h"

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

/// What a session with passwords leaves of them.
class ClientSecretsTest : public QObject
{
    Q_OBJECT

private slots:
    void nothingHoldsAPassword()
    {
        const QByteArray secret = "s&x" + QByteArray::number(QRandomGenerator::global()->generate64(), 16);
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
};

QTEST_MAIN(ClientSecretsTest)
#include "ClientSecretsTest.moc"
