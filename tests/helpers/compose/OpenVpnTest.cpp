#include "tests/support/TestFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QtTest>

/// Runs profiles as they are found in the wild through compose into the installed OpenVPN, without a network.
class OpenVpnTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void takesRealProfiles_data();
    void takesRealProfiles();

private:
    QString path(const QString &name) const { return QCoreApplication::applicationDirPath() + name; }
};

/// Puts compose into a folder of the test's own and makes the keys that the profiles name.
void OpenVpnTest::initTestCase()
{
    const char script[] =
        "exec 2>&1; rm -rf cfg compose; mkdir -p cfg/OpenVPN; cp '" KORVAN_BUNDLE "/compose' .\n"
        "cd cfg/OpenVPN\n"
        "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -subj /CN=client "
        "-keyout client.key -out client.crt\n"
        "openssl x509 -in client.crt -text -out ca.crt\n"
        "openssl pkcs12 -export -in client.crt -inkey client.key -passout pass: -out client.p12\n"
        "openvpn --genkey secret static.key; cp static.key ta.key\n"
        "openvpn --genkey tls-crypt-v2-server server.key\n"
        "openvpn --genkey tls-crypt-v2-client crypt2.key --tls-crypt-v2 server.key\n"
        "printf 'anna\\r\\nsecret\\r\\n' >login.txt\n";
    QProcess process;
    process.setWorkingDirectory(path(""));
    process.start("sh", {"-e", "-c", script});
    QVERIFY(process.waitForFinished(60000));
    QVERIFY2(process.exitCode() == 0, process.readAll().constData());
}

void OpenVpnTest::takesRealProfiles_data()
{
    QTest::addColumn<QByteArray>("profile");
    QDir folder(KORVAN_SOURCE "/tests/data/profiles");
    for (const QString &name : folder.entryList({"*.ovpn"}))
        QTest::newRow(name.toLocal8Bit().constData()) << fileBytes(folder.filePath(name));
}

void OpenVpnTest::takesRealProfiles()
{
    QFETCH(QByteArray, profile);
    const QList<QPair<QByteArray, QString>> keys = {{"@CA@", "client.crt"},  {"@CERT@", "client.crt"},
                                                    {"@KEY@", "client.key"}, {"@STATIC@", "static.key"},
                                                    {"@TEXT@", "ca.crt"},    {"@CRYPT2@", "crypt2.key"}};
    for (const auto &[mark, name] : keys)
        profile.replace(mark, fileBytes(path("/cfg/OpenVPN/") + name).trimmed());
    putFile(path("/cfg/OpenVPN/temp"), profile);

    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start("unshare", {"--net", path("/compose"), "--config", path("/cfg/OpenVPN/temp"), "--cd",
                              path("/cfg/OpenVPN/"), "--script-security", "2"});
    QByteArray output;
    int asked = 0;
    const auto triesToConnect = [&] {
        return output.contains("etwork is unreachable") || output.contains("Network unreachable") ||
               output.contains("link remote:");
    };
    while (!triesToConnect() && process.waitForReadyRead(30000)) {
        output += process.readAll();
        if (asked < output.count("Enter Auth"))
            process.write(++asked == 1 ? "anna\r\n" : "secret\r\n");
    }
    const bool alive = process.state() == QProcess::Running;
    process.kill();
    process.waitForFinished();
    QVERIFY2(alive && triesToConnect(), output.constData());
    QVERIFY2(!output.contains("Options error"), output.constData());
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    if (!canUseLab())
        return 0;
    OpenVpnTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "OpenVpnTest.moc"
