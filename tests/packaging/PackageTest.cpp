#include "tests/support/TestFiles.h"

#include <QDir>
#include <QDirIterator>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

/// The Debian package of this build.
class PackageTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void holdsTheWholeBundleAndNoState();
    void isOwnedByRootAlone();
    void namesTheProgramsThatTheHelpersRun();
    void passesLintian();
    void describesItselfToSoftwareCentres();
    void leavesTheMachineAsItWas();

private:
    QTemporaryDir m_folder;
    QString m_package;
};

namespace {

struct Outcome
{
    int status;
    QByteArray output;
};

Outcome run(const QString &program, const QStringList &arguments, const QString &folder = {}, int limitMs = 120000)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (!process.waitForFinished(limitMs)) {
        process.terminate(); // the lab takes all its processes along
        process.waitForFinished();
        return {-1, process.readAll() + "\nTIMED OUT"};
    }
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1, process.readAll()};
}

QStringList filesBelow(const QString &folder)
{
    QStringList files;
    QDirIterator it(folder, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        files += QDir(folder).relativeFilePath(it.next());
    }
    files.sort();
    return files;
}

} // namespace

void PackageTest::initTestCase()
{
    const Outcome built = run("cpack", {"-G", "DEB", "--config", KORVAN_BUILD "/CPackConfig.cmake"}, m_folder.path());
    QVERIFY2(built.status == 0, built.output.constData());
    const QStringList packages = QDir(m_folder.path()).entryList({"korvan_*.deb"});
    QCOMPARE(packages.size(), 1);
    m_package = m_folder.path() + "/" + packages.first();
    QVERIFY(run("dpkg-deb", {"-x", m_package, m_folder.path() + "/unpacked"}).status == 0);
}

/// The client may have run from the build's bundle, and the package must not bring anybody's login along.
void PackageTest::holdsTheWholeBundleAndNoState()
{
    static const QRegularExpression state(
        "^(cfg/|update/|(log|vpnlog)[.]txt$|setting[.]ini$|(l2tp|defgate|instance)$)");
    QStringList expected = filesBelow(KORVAN_BUNDLE);
    for (const QString &file : expected.filter(state)) {
        expected.removeAll(file);
    }
    QVERIFY(expected.contains("Korvan") && expected.contains("tools/route"));
    QCOMPARE(filesBelow(m_folder.path() + "/unpacked/opt/korvan/Korvan.app/Contents/MacOS"), expected);
}

void PackageTest::isOwnedByRootAlone()
{
    const Outcome list = run("dpkg-deb", {"-c", m_package});
    for (const QByteArray &line : list.output.trimmed().split('\n')) {
        const bool program = line.contains("/bin/") || (line.contains("/MacOS/") && line.startsWith("-rwx"));
        const bool plain = line.startsWith("drwxr-xr-x root/root") || line.startsWith("-rw-r--r-- root/root") ||
                           (program && line.startsWith("-rwxr-xr-x root/root"));
        QVERIFY2(plain, line.constData());
    }
}

void PackageTest::namesTheProgramsThatTheHelpersRun()
{
    const QByteArray depends = ", " + run("dpkg-deb", {"-f", m_package, "Depends"}).output.trimmed() + ", ";
    for (const char *package : {"openvpn", "iproute2", "nftables", "iputils-ping", "network-manager",
                                "network-manager-l2tp", "sstp-client", "pkexec"}) {
        QVERIFY2(depends.contains(QByteArray(", ") + package + ", "), depends.constData());
    }
    QVERIFY2(depends.contains("libqt5widgets5 (>= 5.15"), depends.constData());
}

void PackageTest::passesLintian()
{
    const Outcome checked = run("lintian", {"--fail-on", "error,warning", "--allow-root", m_package});
    QVERIFY2(checked.status == 0, checked.output.constData());
}

void PackageTest::describesItselfToSoftwareCentres()
{
    const QString share = m_folder.path() + "/unpacked/usr/share/";
    const Outcome entry = run("desktop-file-validate", {share + "applications/korvan.desktop"});
    QVERIFY2(entry.status == 0 && entry.output.isEmpty(), entry.output.constData());
    const Outcome metadata = run("appstreamcli", {"validate-tree", "--no-net", m_folder.path() + "/unpacked"});
    QVERIFY2(metadata.status == 0, metadata.output.constData());
}

void PackageTest::leavesTheMachineAsItWas()
{
    const QString script = KORVAN_SOURCE "/tests/packaging/life.sh";
    const Outcome life =
        run(KORVAN_SOURCE "/lab/lab", {"run", "--build", KORVAN_BUILD, "--", script, "/", m_package, KORVAN_BUILD},
            {}, 500000);
    QVERIFY2(life.status == 0, life.output.constData());
}

int main(int argc, char *argv[])
{
    if (!canUseLab()) {
        return 0;
    }
    QCoreApplication application(argc, argv);
    PackageTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "PackageTest.moc"
