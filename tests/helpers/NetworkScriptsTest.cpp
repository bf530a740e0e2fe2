#include "tests/helpers/NetworkScriptsTest.h"

#include "tests/support/NetworkScript.h"
#include "tests/support/TestFiles.h"

#include <QTest>

class NetworkScriptsTest : public QObject
{
    Q_OBJECT

private slots:
    void behaves_data()
    {
        QTest::addColumn<QByteArray>("script");
        for (const auto &[name, script] : networkScripts().scripts)
            QTest::newRow(name) << QByteArray(script);
    }

    void behaves()
    {
        QFETCH(const QByteArray, script);
        if (!canUseLab())
            QSKIP("NEEDS ROOT", "");
        QCOMPARE(runNetworkScript("bundle=" KORVAN_BUNDLE + QByteArray(networkScripts().setUp) + script),
                 QByteArray());
    }
};

QTEST_GUILESS_MAIN(NetworkScriptsTest)
#include "NetworkScriptsTest.moc"
