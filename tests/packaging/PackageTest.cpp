#include "tests/support/Cases.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

/// The Debian package of this build as a file; clean-system.sh installs it.
class PackageTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;

    /// What a bash command prints beside the package; all that it says when it fails, with its status.
    QByteArray run(const QByteArray &command) const
    {
        QProcess process;
        process.setWorkingDirectory(m_folder.path());
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start("bash", {"-c", command});
        const bool ends = process.waitForFinished(300000);
        return process.readAll() + (ends && process.exitCode() == 0 ? "" : "FAILED: " + command);
    }

private slots:
    void initTestCase()
    {
        QVERIFY(run("cpack -G DEB --config " KORVAN_BUILD "/CPackConfig.cmake && mv korvan_*.deb korvan.deb && "
                    "dpkg-deb -x korvan.deb unpacked && echo done")
                    .endsWith("done\n"));
    }

    void nothingToComplainOf()
    {
        const std::pair<const char *, QByteArray> checks[] = {
            // The client may have run from the build's bundle, and the package must not bring anybody's login along.
            {"holds the whole bundle and no state",
             "files() { cd \"$1\" && find . -type f | sort; }; s='^./(cfg/|update/|(log|vpnlog).txt$|setting.ini$|"
             "(l2tp|defgate|instance)$)'; diff <(files '" KORVAN_BUNDLE
             "' | grep -vE \"$s\") <(files unpacked/opt/korvan/Korvan.app/Contents/MacOS)"},
            {"is owned by root alone, without set-user-id",
             "! dpkg-deb -c korvan.deb | grep -vE '^(drwxr-xr-x|-rw-r--r--|-rwxr-xr-x) root/root'"},
            {"names the programs that its life does not run",
             "for p in iputils-ping network-manager network-manager-l2tp sstp-client; do "
             "[[ \", $(dpkg-deb -f korvan.deb Depends),\" == *\", $p,\"* ]] || echo $p; done"},
            {"lintian",
             "said=$(lintian --fail-on error,warning --allow-root korvan.deb 2>&1) || (echo \"$said\"; exit 1)"},
            {"desktop entry", "desktop-file-validate unpacked/usr/share/applications/korvan.desktop"},
            {"metadata", "said=$(appstreamcli validate-tree --no-net unpacked) || (echo \"$said\"; exit 1)"},
        };
        for (const auto &[name, command] : checks) {
            COMPARE_CASE(name, run(command), "");
        }
    }
};

QTEST_GUILESS_MAIN(PackageTest)
#include "PackageTest.moc"
