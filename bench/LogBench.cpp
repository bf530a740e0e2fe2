// How long the event loop is blocked at most while two threads log 100,000 lines each and the log view is open, and
// whether every line reached the file whole.

#include "base/DebugLog.h"
#include "common/AppPath.h"

#include <QApplication>
#include <QDebug>
#include <QElapsedTimer>
#include <QFile>
#include <QTextEdit>
#include <QThread>
#include <QTimer>

#include <cstdio>
#include <memory>
#include <vector>

static constexpr int kThreads = 2;
static constexpr int kLines = 100000;

/// Writes to the terminal even while standard output, which takes a copy of the log, goes elsewhere.
static int report(qint64 longestBlockMs, qint64 totalMs, int wholeLines)
{
    const bool good = longestBlockMs <= 100 && wholeLines == kThreads * kLines;
    std::fprintf(stderr,
                 "log flood: %d of %d lines whole in the file, %lld ms in all, event loop blocked for at most %lld "
                 "ms (limit 100 ms)\n",
                 wholeLines, kThreads * kLines, static_cast<long long>(totalMs),
                 static_cast<long long>(longestBlockMs));
    return good ? 0 : 1;
}

static int countWholeLines()
{
    QFile file(appPath("/log.txt"));
    if (!file.open(QIODevice::ReadOnly)) {
        return 0;
    }
    int whole = 0;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine();
        whole += line.endsWith(" end\r\n") && line.mid(9).startsWith("thread ") ? 1 : 0;
    }
    return whole;
}

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QFile::remove(appPath("/log.txt"));
    if (std::freopen("/dev/null", "w", stdout) == nullptr) {
        return 1;
    }
    QTextEdit view;
    view.setReadOnly(true);
    view.resize(800, 400);
    view.show();
    g_edLog = &view;
    qInstallMessageHandler(debugFilter);

    qint64 longestBlock = 0;
    QElapsedTimer sinceTick;
    QTimer tick;
    QObject::connect(&tick, &QTimer::timeout, [&] { longestBlock = qMax(longestBlock, sinceTick.restart() - 1); });
    tick.start(1);
    sinceTick.start();

    QElapsedTimer total;
    total.start();
    std::vector<std::unique_ptr<QThread>> threads;
    int running = kThreads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back(QThread::create([t] {
            for (int i = 0; i < kLines; ++i) {
                qDebug("thread %d line %d end", t, i);
            }
        }));
        QObject::connect(threads.back().get(), &QThread::finished, &application, [&running] {
            if (--running == 0) {
                QTimer::singleShot(2000, [] { QCoreApplication::quit(); }); // the view catches up
            }
        });
        threads.back()->start();
    }
    QApplication::exec();
    g_edLog = nullptr;
    return report(longestBlock, total.elapsed() - 2000, countWholeLines());
}
