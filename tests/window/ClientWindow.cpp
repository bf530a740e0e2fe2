#include "tests/window/ClientWindow.h"

#include "app/shell/DebugLog.h"
#include "common/AppPath.h"
#include "tests/support/TestFiles.h"
#include "ui/Look.h"

#include <QDir>
#include <QTextCodec>

void prepareApplication(QApplication &application)
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    QApplication::setQuitOnLastWindowClosed(false);
    applyLook(application);
}

ClientWindow::ClientWindow()
{
    qInstallMessageHandler(debugFilter); // the test runner has put its own in place
    for (const char *state : {"/cfg", "/l2tp", "/defgate", "/log.txt", "/update", "/setting.ini"}) {
        QDir(appPath(state)).removeRecursively();
        QFile::remove(appPath(state));
    }
}

Korvan &ClientWindow::start()
{
    end();
    const int before = fileBytes(appPath("/log.txt")).size();
    m_window = std::make_unique<Korvan>();
    m_window->show();
    const auto isDone = [before] {
        const QByteArray log = fileBytes(appPath("/log.txt")).mid(before);
        // The update check is the last step of the start; it leaves one of these lines.
        return log.contains("[WARNING]Can not load from") || log.contains("bytes update information to local.");
    };
    if (!QTest::qWaitFor(isDone, 30000)) {
        qFatal("the start did not end");
    }
    return *m_window;
}

bool ClientWindow::press(const char *button) const
{
    auto *widget = find<QAbstractButton>(button);
    if (!widget->isVisibleTo(m_window.get()) || !widget->isEnabled()) {
        return false;
    }
    widget->click();
    return true;
}
