#pragma once

#include <QtGlobal>

class QMessageLogContext;
class QString;
class QTextEdit;

/// Path of a second log file, which every start deletes: "/log" until the start-up prefixes the application folder.
extern QString PATH_LOG;

/// The log view of the main window; null until the window exists. Log lines are appended to it while it is set. Set
/// on the GUI thread, while no other one logs.
extern QTextEdit *g_edLog;

/// The number of lines that the log view keeps; the file keeps all.
constexpr int kLogViewLines = 10000;

/// The process-wide Qt message handler. A debug message becomes one line of "/log.txt" ("HH:mm:ss", a blank, the text
/// without double quotes, CR LF), a copy on standard output and, in batches, a paragraph of g_edLog. All other
/// message types are dropped. Callable from any thread; lines appear in the order of arrival. A file that can not be
/// written, or that is a symbolic link, loses the line silently.
void debugFilter(QtMsgType type, const QMessageLogContext &context, const QString &message);
