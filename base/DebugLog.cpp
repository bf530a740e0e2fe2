#include "base/DebugLog.h"

#include "common/AppPath.h"
#include "names/StateFiles.h"

#include <QCoreApplication>
#include <QFile>
#include <QMutex>
#include <QScrollBar>
#include <QStringList>
#include <QTextCursor>
#include <QTextEdit>
#include <QTime>
#include <QTimer>

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

QString PATH_LOG = QStringLiteral("/log");
QTextEdit *g_edLog = nullptr;

/// Lines that wait for the view, and whether the GUI thread has been asked to fetch them.
static QMutex s_mutex;
static QStringList s_pending;
static bool s_fetchQueued = false;

/// How many lines the view takes at a time, and how often: small enough that a flood never blocks the event loop.
static constexpr int kBatchLines = 250;
static constexpr int kBatchIntervalMs = 25;

/// GUI thread: moves one batch of the waiting lines into the view.
static void fetchIntoView()
{
    QStringList batch;
    bool more = false;
    {
        const QMutexLocker lock(&s_mutex);
        batch = s_pending.mid(0, kBatchLines);
        s_pending.erase(s_pending.begin(), s_pending.begin() + batch.size());
        more = !s_pending.isEmpty();
        s_fetchQueued = more;
    }
    if (g_edLog != nullptr && !batch.isEmpty()) {
        g_edLog->document()->setMaximumBlockCount(kLogViewLines);
        QScrollBar *bar = g_edLog->verticalScrollBar();
        const bool atEnd = bar->value() == bar->maximum();
        QTextCursor cursor(g_edLog->document());
        cursor.movePosition(QTextCursor::End);
        cursor.beginEditBlock();
        if (!g_edLog->document()->isEmpty()) {
            cursor.insertBlock();
        }
        cursor.insertText(batch.join(QLatin1Char('\n')));
        cursor.endEditBlock();
        if (atEnd) {
            bar->setValue(bar->maximum());
        }
    }
    if (more) {
        QTimer::singleShot(kBatchIntervalMs, QCoreApplication::instance(), &fetchIntoView);
    }
}

/// Any thread, with the mutex held.
static void addForView(const QString &text)
{
    if (g_edLog == nullptr) {
        return;
    }
    s_pending.append(text);
    if (s_pending.size() > kLogViewLines) {
        s_pending.removeFirst();
    }
    if (!s_fetchQueued) {
        s_fetchQueued = true;
        QMetaObject::invokeMethod(QCoreApplication::instance(), &fetchIntoView, Qt::QueuedConnection);
    }
}

/// Appends one line in a single write, so that it is whole however many threads log.
static void appendToFile(const QByteArray &line)
{
    const QByteArray path = QFile::encodeName(appPath(kLogFile));
    const int file = open(path.constData(), O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (file < 0) {
        return;
    }
    const ssize_t written = write(file, line.constData(), static_cast<size_t>(line.size()));
    Q_UNUSED(written)
    close(file);
}

void debugFilter(QtMsgType type, const QMessageLogContext & /*context*/, const QString &message)
{
    if (type != QtDebugMsg) {
        return;
    }
    QString text = message;
    text = text.remove(QLatin1Char('"')).trimmed();
    const QByteArray line = text.toLocal8Bit() + "\r\n";

    const QMutexLocker lock(&s_mutex);
    appendToFile(QTime::currentTime().toString(Qt::TextDate).toLocal8Bit() + ' ' + line);
    std::fwrite(line.constData(), 1, static_cast<size_t>(line.size()), stdout);
    std::fflush(stdout);
    addForView(text);
}
