#include "tests/helpers/NetworkScriptsTest.h"

#include "tests/support/Cases.h"
#include "tests/support/NetworkScript.h"
#include "tests/support/TestFiles.h"

class NetworkScriptsTest : public QObject
{
    Q_OBJECT

private slots:
    void behave()
    {
        if (!canUseLab()) {
            QSKIP("NEEDS ROOT", "");
        }
        const QByteArray setUp = QByteArray("bundle=" KORVAN_BUNDLE) + networkScripts().setUp;
        for (const auto &[name, script] : networkScripts().scripts) {
            COMPARE_CASE(name, runNetworkScript(setUp + script), "");
        }
    }
};

QTEST_GUILESS_MAIN(NetworkScriptsTest)
#include "NetworkScriptsTest.moc"
