#include "app/shell/DebugLog.h"
#include "app/shell/Settings.h"
#include "common/AppPath.h"
#include "tests/support/Cases.h"
#include "tests/support/TestFiles.h"

#include <QDebug>
#include <QDir>
#include <QRegularExpression>
#include <QTextCodec>
#include <QTextEdit>
#include <QThread>

#include <memory>
#include <vector>

class ShellTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8")); }
    void init();
    void cleanup();
    void oneStampedLineAMessage();
    void onlyDebugMessages();
    void onlyAPlainFileIsWritten();
    void viewShowsPlainTextInOrder();
    void viewKeepsTheLastLines();
    void manyThreadsWriteWholeLines();
    void settings();

private:
    const QString m_log = appPath("/log.txt");
    QtMessageHandler m_previous = nullptr;
};

void ShellTest::init()
{
    QFile::remove(m_log);
    m_previous = qInstallMessageHandler(debugFilter);
}

void ShellTest::cleanup()
{
    qInstallMessageHandler(m_previous);
    g_edLog = nullptr;
}

void ShellTest::oneStampedLineAMessage()
{
    const std::pair<const char *, const char *> cases[] = {
        {"\"abc\" and \"d\"", "abc and d"}, {"   \t ", ""}, {" \n a b \r\n", "a b"}, {"Zürich →", "Zürich →"},
        {"100% %s %n", "100% %s %n"},
    };
    for (const auto &[message, text] : cases) {
        QFile::remove(m_log);
        qDebug("%s", message);
        const QByteArray log = fileBytes(m_log);
        QVERIFY2(QRegularExpression("^\\d\\d:\\d\\d:\\d\\d ").match(log.left(9)).hasMatch(), log.constData());
        COMPARE_CASE(message, log.mid(9), text + QByteArray("\r\n"));
    }
}

void ShellTest::onlyDebugMessages()
{
    qWarning("warning");
    qCritical("critical");
    qInfo("info");
    QVERIFY(!QFile::exists(m_log));
}

void ShellTest::onlyAPlainFileIsWritten()
{
    putFile(appPath("/target"), "untouched");
    QVERIFY(QFile::link(appPath("/target"), m_log));
    qDebug("x");
    QCOMPARE(fileBytes(appPath("/target")), QByteArray("untouched"));
    QVERIFY(QFile::remove(m_log) && QDir().mkpath(m_log));
    qDebug("x");
    QVERIFY(QDir().rmdir(m_log));
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
    QCOMPARE(fileBytes(m_log).count('\n'), count);
}

void ShellTest::manyThreadsWriteWholeLines()
{
    std::vector<std::unique_ptr<QThread>> workers;
    for (int t = 0; t < 4; ++t) {
        workers.emplace_back(QThread::create([t] {
            for (int i = 0; i < 2000; ++i) {
                qDebug("thread %d message %d end", t, i);
            }
        }));
        workers.back()->start();
    }
    for (const auto &worker : workers) {
        QVERIFY(worker->wait(60000));
    }
    int next[4] = {};
    const QRegularExpression pattern("^\\d\\d:\\d\\d:\\d\\d thread (\\d) message (\\d+) end\r$");
    QList<QByteArray> lines = fileBytes(m_log).split('\n');
    QVERIFY(lines.takeLast().isEmpty());
    QCOMPARE(lines.size(), 4 * 2000);
    for (const QByteArray &line : qAsConst(lines)) {
        const auto match = pattern.match(line);
        QVERIFY2(match.hasMatch(), line.constData());
        QCOMPARE(match.captured(2).toInt(), next[match.captured(1).toInt()]++);
    }
}

void ShellTest::settings()
{
    const std::tuple<const char *, QByteArray, const char *> cases[] = {
        {"set", "[DEBUG]\nENABLE=true\n", "true"},
        {"CRLF, other sections", "[A]\r\nENABLE=1\r\n[DEBUG]\r\nENABLE=True\r\n", "True"},
        {"empty value", "[DEBUG]\nENABLE=\n", ""},
        {"missing key", "[DEBUG]\n", ""},
        {"junk", QByteArray("\0\xff[[=\n", 6), ""},
        {"empty file", "", ""},
    };
    for (const auto &[name, file, value] : cases) {
        QFile::remove(appPath("/setting.ini"));
        COMPARE_CASE(name, getSetting("DEBUG/ENABLE"), "");
        putFile(appPath("/setting.ini"), file);
        COMPARE_CASE(name, getSetting("DEBUG/ENABLE"), value);
        COMPARE_CASE(name, fileBytes(appPath("/setting.ini")), file); // never written
    }
    QFile::remove(appPath("/setting.ini"));
}

QTEST_MAIN(ShellTest)
#include "ShellTest.moc"
