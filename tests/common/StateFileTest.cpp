#include "common/StateFile.h"
#include "common/AppPath.h"
#include "common/Wait.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

class StateFileTest : public QObject
{
    Q_OBJECT

private slots:
    void pathsBeginInTheApplicationFolder();
    void replacesWholeAndPrivate();
    void refusesLinksAndFolders();
    void waitEndsOnSignalOrLimit();
};

void StateFileTest::pathsBeginInTheApplicationFolder()
{
    QCOMPARE(appPath("/cfg/login"), QCoreApplication::applicationDirPath() + "/cfg/login");
}

void StateFileTest::replacesWholeAndPrivate()
{
    QTemporaryDir folder;
    const QString path = folder.path() + "/state";
    putFile(path, "a longer old content");
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadOther));
    QVERIFY(writeWhole(path, "new"));
    QCOMPARE(fileBytes(path), QByteArray("new"));
    QCOMPARE(QFileInfo(path).permissions() & (QFile::ReadGroup | QFile::ReadOther | QFile::ExeOwner), 0);
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList("state")); // no temporary file stays
}

void StateFileTest::refusesLinksAndFolders()
{
    QTemporaryDir folder;
    const QString target = folder.path() + "/target";
    putFile(target, "untouched");
    for (const QString &pointsTo : {target, folder.path() + "/nowhere"}) {
        const QString link = folder.path() + "/link";
        QFile::remove(link);
        QVERIFY(QFile::link(pointsTo, link));
        QVERIFY(!writeWhole(link, "x"));
        QVERIFY(QFileInfo(link).isSymLink());
    }
    QCOMPARE(fileBytes(target), QByteArray("untouched"));
    QVERIFY(!QFile::exists(folder.path() + "/nowhere"));
    QVERIFY(!writeWhole(folder.path(), "x"));
    QVERIFY(!writeWhole(folder.path() + "/missing/state", "x"));
}

void StateFileTest::waitEndsOnSignalOrLimit()
{
    QTimer timer;
    timer.setSingleShot(true);
    Wait ended;
    ended.until(&timer, &QTimer::timeout);
    timer.start(0);
    QVERIFY(ended.run(10000));
    QVERIFY2(ended.run(), "a signal that came before the wait ends it at once");

    QElapsedTimer elapsed;
    elapsed.start();
    Wait limited;
    limited.until(&timer, &QTimer::timeout);
    QVERIFY(!limited.run(50));
    QVERIFY(elapsed.elapsed() >= 49);
}

QTEST_GUILESS_MAIN(StateFileTest)
#include "StateFileTest.moc"
