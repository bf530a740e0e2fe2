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
    void runTool(const QString &program, const QString &arguments);
};

void OpenVpnTest::runTool(const QString &program, const QString &arguments)
{
    QProcess process;
    process.setWorkingDirectory(path("/cfg/OpenVPN"));
    process.start(program, arguments.split(' '));
    QVERIFY(process.waitForFinished(30000));
    QVERIFY2(process.exitCode() == 0, process.readAll().constData());
}

/// Puts compose into a folder of the test's own and makes the keys that the profiles name.
void OpenVpnTest::initTestCase()
{
    QDir(path("/cfg")).removeRecursively();
    QVERIFY(QDir().mkpath(path("/cfg/OpenVPN")));
    QFile::remove(path("/compose"));
    QVERIFY(QFile::copy(KORVAN_BUNDLE "/compose", path("/compose")));
    runTool("openssl", "req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -subj /CN=client -keyout "
                       "client.key -out client.crt");
    runTool("openssl", "x509 -in client.crt -text -out ca.crt");
    runTool("openssl", "pkcs12 -export -in client.crt -inkey client.key -passout pass: -out client.p12");
    runTool("openvpn", "--genkey secret static.key");
    runTool("openvpn", "--genkey tls-crypt-v2-server server.key");
    runTool("openvpn", "--genkey tls-crypt-v2-client crypt2.key --tls-crypt-v2 server.key");
    QVERIFY(QFile::copy(path("/cfg/OpenVPN/static.key"), path("/cfg/OpenVPN/ta.key")));
    putFile(path("/cfg/OpenVPN/login.txt"), "anna\r\nsecret\r\n");
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
