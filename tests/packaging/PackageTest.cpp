#include "tests/support/Cases.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

/// The Debian package of this build as a file; clean-system.sh installs it.
class PackageTest : public QObject
{
    Q_OBJECT

private slots:
    void nothingToComplainOf()
    {
        const std::pair<const char *, const char *> checks[] = {
            {"is built", "said=$(cpack -G DEB --config " KORVAN_BUILD "/CPackConfig.cmake 2>&1) && "
                         "mv korvan_*.deb korvan.deb && dpkg-deb -x korvan.deb unpacked || echo \"$said\""},
            // The client may have run from the build's bundle, and the package must not bring anybody's login along.
            {"holds the whole bundle and no state",
             "files() { cd \"$1\" && find . -type f | sort; }; s='^./(cfg/|update/|(log|vpnlog).txt$|setting.ini$|"
             "(l2tp|defgate|instance)$)'; diff <(files '" KORVAN_BUNDLE
             "' | grep -vE \"$s\") <(files unpacked/opt/korvan/Korvan.app/Contents/MacOS)"},
            {"names the programs that its life does not run",
             "for p in iputils-ping network-manager network-manager-l2tp sstp-client; do "
             "[[ \", $(dpkg-deb -f korvan.deb Depends),\" == *\", $p,\"* ]] || echo $p; done"},
            {"owners, rights, texts",
             "said=$(lintian --fail-on error,warning --allow-root korvan.deb 2>&1) || echo \"$said\""},
            {"desktop entry", "desktop-file-validate unpacked/usr/share/applications/korvan.desktop"},
            {"metadata", "said=$(appstreamcli validate-tree --no-net unpacked) || echo \"$said\""},
        };
        const QTemporaryDir folder;
        for (const auto &[name, command] : checks) {
            QProcess process;
            process.setWorkingDirectory(folder.path());
            process.setProcessChannelMode(QProcess::MergedChannels);
            process.start("bash", {"-c", command});
            COMPARE_CASE(name, process.waitForFinished(300000), true);
            COMPARE_CASE(name, process.readAll(), "");
        }
    }
};

QTEST_GUILESS_MAIN(PackageTest)
#include "PackageTest.moc"
