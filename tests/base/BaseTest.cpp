#include "base/DebugLog.h"
#include "common/AppPath.h"
#include "tests/support/TestFiles.h"

#include <QDebug>
#include <QRegularExpression>
#include <QTest>
#include <QTextCodec>
#include <QTextEdit>
#include <QThread>

#include <memory>
#include <vector>

class BaseTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
        QFile::remove(m_log);
        qInstallMessageHandler(debugFilter);
    }

    void cleanup() { g_edLog = nullptr; }

    void linesAreTrimmedOfBlanksAndQuotes()
    {
        qWarning("no debug message");
        qDebug("%s", " \n \"Zürich\" → 100% %s \r\n");
        QCOMPARE(fileBytes(m_log).mid(9), QByteArray("Zürich → 100% %s\r\n"));
    }

    void writesThroughNoLink()
    {
        putFile(appPath("/target"), "untouched");
        QVERIFY(QFile::link(appPath("/target"), m_log));
        qDebug("x");
        QCOMPARE(fileBytes(appPath("/target")), QByteArray("untouched"));
    }

    /// Every line is whole in the file, and the view holds the last ones, as plain text in the same order.
    void manyThreadsWriteWholeLines()
    {
        QTextEdit view;
        g_edLog = &view;
        std::vector<std::unique_ptr<QThread>> workers;
        for (int t = 0; t < 4; ++t) {
            workers.emplace_back(QThread::create([t] {
                for (int i = 0; i < kLogViewLines; ++i) {
                    qDebug("<b>%d</b> %d end", t, i);
                }
            }));
            workers.back()->start();
        }
        for (const auto &worker : workers) {
            QVERIFY(worker->wait(60000));
        }
        int next[4] = {};
        const QRegularExpression pattern("^\\d\\d:\\d\\d:\\d\\d (<b>(\\d)</b> (\\d+) end)\r$");
        QStringList texts;
        for (const QByteArray &line : fileBytes(m_log).split('\n').mid(0, 4 * kLogViewLines)) {
            const auto match = pattern.match(line);
            QVERIFY2(match.hasMatch(), line.constData());
            QCOMPARE(match.captured(3).toInt(), next[match.captured(2).toInt()]++);
            texts << match.captured(1);
        }
        QTRY_COMPARE_WITH_TIMEOUT(view.toPlainText().split('\n'), texts.mid(3 * kLogViewLines), 30000);
    }

private:
    const QString m_log = appPath("/log.txt");
};

QTEST_MAIN(BaseTest)
#include "BaseTest.moc"
