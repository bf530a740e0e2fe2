#include "app/shell/DebugLog.h"
#include "app/shell/Settings.h"
#include "common/AppPath.h"
#include "tests/support/TestFiles.h"

#include <QDebug>
#include <QDir>
#include <QRegularExpression>
#include <QTest>
#include <QTextCodec>
#include <QTextEdit>
#include <QThread>

#include <memory>
#include <vector>

class ShellTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void oneStampedLineAMessage_data();
    void oneStampedLineAMessage();
    void onlyDebugMessages();
    void linkIsNotFollowed();
    void unwritableLogIsSilent();
    void viewShowsPlainTextInOrder();
    void viewKeepsTheLastLines();
    void manyThreadsWriteWholeLines();
    void settings_data();
    void settings();

private:
    QtMessageHandler m_previous = nullptr;
};

static QString logPath()
{
    return appPath("/log.txt");
}

void ShellTest::initTestCase()
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
}

void ShellTest::init()
{
    QFile::remove(logPath());
    m_previous = qInstallMessageHandler(debugFilter);
}

void ShellTest::cleanup()
{
    qInstallMessageHandler(m_previous);
    g_edLog = nullptr;
}

void ShellTest::oneStampedLineAMessage_data()
{
    QTest::addColumn<QString>("message");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("quotes go") << "\"abc\" and \"d\"" << QByteArray("abc and d");
    QTest::newRow("blanks only") << "   \t " << QByteArray();
    QTest::newRow("trimmed") << " \n a b \r\n" << QByteArray("a b");
    QTest::newRow("not ASCII") << QString::fromUtf8("Zürich \u2192") << QByteArray("Zürich \u2192");
    QTest::newRow("percent signs") << "100% %s %n" << QByteArray("100% %s %n");
}

void ShellTest::oneStampedLineAMessage()
{
    QFETCH(QString, message);
    QFETCH(QByteArray, text);
    qDebug().noquote() << message;
    const QByteArray log = fileBytes(logPath());
    QVERIFY2(QRegularExpression("^\\d\\d:\\d\\d:\\d\\d ").match(log.left(9)).hasMatch(), log.constData());
    QCOMPARE(log.mid(9), text + "\r\n");
}

void ShellTest::onlyDebugMessages()
{
    qWarning("warning");
    qCritical("critical");
    qInfo("info");
    QVERIFY(!QFile::exists(logPath()));
}

void ShellTest::linkIsNotFollowed()
{
    putFile(appPath("/target"), "untouched");
    QVERIFY(QFile::link(appPath("/target"), logPath()));
    qDebug("x");
    QCOMPARE(fileBytes(appPath("/target")), QByteArray("untouched"));
}

void ShellTest::unwritableLogIsSilent()
{
    QVERIFY(QDir().mkpath(logPath()));
    qDebug("x");
    QVERIFY(QDir().rmdir(logPath()));
}

void ShellTest::viewShowsPlainTextInOrder()
{
    QTextEdit view;
    qDebug("before the view");
    g_edLog = &view;
    qDebug("<b>first</b>");
    std::unique_ptr<QThread> worker(QThread::create([] { qDebug("second"); }));
    worker->start();
    QVERIFY(worker->wait(10000));
    qDebug("third");
    QTRY_COMPARE(view.toPlainText(), QString("<b>first</b>\nsecond\nthird"));
}

void ShellTest::viewKeepsTheLastLines()
{
    QTextEdit view;
    g_edLog = &view;
    constexpr int count = kLogViewLines + 500;
    for (int i = 1; i <= count; ++i) {
        qDebug("line %d", i);
    }
    QTRY_VERIFY_WITH_TIMEOUT(view.toPlainText().endsWith(QStringLiteral("line %1").arg(count)), 30000);
    QCOMPARE(view.document()->blockCount(), kLogViewLines);
    QCOMPARE(fileBytes(logPath()).count('\n'), count);
}

void ShellTest::manyThreadsWriteWholeLines()
{
    constexpr int threads = 4;
    constexpr int each = 2000;
    std::vector<std::unique_ptr<QThread>> workers;
    for (int t = 0; t < threads; ++t) {
        workers.emplace_back(QThread::create([t] {
            for (int i = 0; i < each; ++i) {
                qDebug("thread %d message %d end", t, i);
            }
        }));
        workers.back()->start();
    }
    for (const auto &worker : workers) {
        QVERIFY(worker->wait(60000));
    }
    std::vector<int> next(threads, 0);
    const QRegularExpression pattern("^\\d\\d:\\d\\d:\\d\\d thread (\\d) message (\\d+) end\r$");
    QList<QByteArray> lines = fileBytes(logPath()).split('\n');
    QVERIFY(lines.takeLast().isEmpty());
    QCOMPARE(lines.size(), threads * each);
    for (const QByteArray &line : qAsConst(lines)) {
        const auto match = pattern.match(line);
        QVERIFY2(match.hasMatch(), line.constData());
        QCOMPARE(match.captured(2).toInt(), next.at(size_t(match.captured(1).toInt()))++);
    }
}

void ShellTest::settings_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("value");
    QTest::newRow("set") << QByteArray("[DEBUG]\nENABLE=true\n") << "true";
    QTest::newRow("CRLF, other sections") << QByteArray("[A]\r\nENABLE=1\r\n[DEBUG]\r\nENABLE=True\r\n") << "True";
    QTest::newRow("empty value") << QByteArray("[DEBUG]\nENABLE=\n") << "";
    QTest::newRow("missing key") << QByteArray("[DEBUG]\n") << "";
    QTest::newRow("junk") << QByteArray("\0\xff[[=\n", 6) << "";
    QTest::newRow("empty file") << QByteArray() << "";
}

void ShellTest::settings()
{
    QFETCH(QByteArray, file);
    QFile::remove(appPath("/setting.ini"));
    QCOMPARE(getSetting("DEBUG/ENABLE"), QString());
    putFile(appPath("/setting.ini"), file);
    QTEST(getSetting("DEBUG/ENABLE"), "value");
    QCOMPARE(fileBytes(appPath("/setting.ini")), file); // never written
    QFile::remove(appPath("/setting.ini"));
}

QTEST_MAIN(ShellTest)
#include "ShellTest.moc"
