#include "tests/window/ClientWindow.h"

#include "base/DebugLog.h"
#include "common/AppPath.h"
#include "names/StateFiles.h"
#include "tests/support/TestFiles.h"
#include "ui/Look.h"
#include "ui_Korvan.h"

#include <QDir>
#include <QMenu>
#include <QTextCodec>

void prepareApplication(QApplication &application)
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    QApplication::setQuitOnLastWindowClosed(false);
    applyLook(application);
}

void ClientWindow::clear()
{
    qInstallMessageHandler(debugFilter); // the test runner has put its own in place
    for (const StateFile &state : kStateFiles) {
        QDir(appPath(state.path)).removeRecursively();
        QFile::remove(appPath(state.path));
    }
}

void ClientWindow::start()
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
}

QStringList ClientWindow::items(const char *name, int column) const
{
    const auto *model = find(name)->findChild<QAbstractItemModel *>();
    QStringList texts;
    for (int row = 0; row < model->rowCount(); ++row) {
        texts += model->index(row, column).data().toString();
    }
    return texts;
}

QString ClientWindow::enabled(const QString &controls) const
{
    QString letters;
    for (const QString &control : controls.split(' ')) {
        letters += find(qPrintable(control.mid(2)))->isEnabled() ? control.at(0) : '-';
    }
    return letters;
}

QAction *ClientWindow::trayEntry(const QString &text) const
{
    for (const QMenu *menu : m_window->findChildren<QMenu *>()) {
        for (QAction *action : menu->actions()) {
            if (action->text() == text) {
                return action;
            }
        }
    }
    return nullptr;
}

bool ClientWindow::press(const char *control) const
{
    if (QAction *entry = trayEntry(control)) {
        entry->trigger(); // does nothing when it is not enabled
        return true;
    }
    auto *button = find<QAbstractButton>(control);
    auto *tab = find<KvRetinaTabBar>("tab");
    const auto *pages = find<QStackedWidget>("tabPage");
    for (int page = 0; page < pages->count(); ++page) {
        if (page != pages->currentIndex() && pages->widget(page)->isAncestorOf(button)) {
            QTest::mouseClick(tab, Qt::LeftButton, {}, tab->tabRect(page).center());
        }
    }
    if (!button->isVisibleTo(m_window.get()) || !button->isEnabled()) {
        return false;
    }
    button->click();
    return true;
}

void ClientWindow::when(const std::function<bool()> &condition, const std::function<void()> &action) const
{
    QTimer::singleShot(5, m_window.get(), [=] { condition() ? action() : when(condition, action); });
}

QDialog *ClientWindow::openDialog()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (auto *dialog = qobject_cast<QDialog *>(widget); dialog != nullptr && dialog->isVisible()) {
            return dialog;
        }
    }
    return nullptr;
}
