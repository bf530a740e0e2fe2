#include "tests/window/WindowFixture.h"

#include <QDesktopServices>
#include <QDir>

static const char kRoutes[] = "/routes";

void WindowFixture::init()
{
    m_client = std::make_unique<ClientWindow>();
    m_opened.clear();
    QDir(appPath("/fake")).removeRecursively();
    takeRoutes();
    // Nothing answers on port 1, so that every request of the start-up ends at once.
    putFile(appPath("/setting.ini"),
            "[LOGIN]\nVER=http://127.0.0.1:1/api\n[UPDATE]\nURL=http://127.0.0.1:1/update.xml\n");
    putScript(appPath("/fake/netstat"), "echo 'default 198.51.100.1 UG eth0'");
    putScript(appPath("/fake/route"), "echo \"$*\" >> '" + appPath(kRoutes).toUtf8() + "'; echo 'OK!'");
    putScript(appPath("/fake/defaults"), "[ $1 = read ] && echo 'does not exist' || printf %s \"$4\" > '" +
                                             appPath("/fake/items").toUtf8() + "'");
    qputenv("PATH", QFile::encodeName(appPath("/fake")) + ":/usr/bin:/bin");
    for (const char *scheme : {"http", "https"}) {
        QDesktopServices::setUrlHandler(scheme, this, "noteUrl");
    }
}

void WindowFixture::cleanup()
{
    QCOMPARE(boxes().takeFailures(), QString());
    QCOMPARE(boxes().left(), 0);
    m_client.reset();
}

void WindowFixture::putProfile(const QStringList &servers)
{
    for (const QString &server : servers) {
        putFile(appPath("/cfg/OpenVPN/") + server + ".ovpn", "client\nremote 203.0.113.21 1194\n");
    }
    putFile(appPath("/cfg/OpenVPN/alice.crt"), "            Not After : Dec 31 23:59:59 2099 GMT\n");
}

Korvan &WindowFixture::startLoggedIn(const QStringList &servers)
{
    putProfile(servers);
    start();
    button("cbNoSound")->setChecked(true);
    type("edUser", "alice");
    press("pbExist");
    return *m_window;
}

QStringList WindowFixture::items(const char *name, int column) const
{
    const auto *table = m_window->findChild<QTableWidget *>(name);
    const QAbstractItemModel *model = table != nullptr ? table->model() : combo(name)->model();
    QStringList texts;
    for (int row = 0; row < model->rowCount(); ++row) {
        texts += model->index(row, column).data().toString();
    }
    return texts;
}

QString WindowFixture::enabled(const QString &controls) const
{
    QString letters;
    for (const QString &control : controls.split(' ')) {
        letters += find(qPrintable(control.mid(2)))->isEnabled() ? control.at(0) : '-';
    }
    return letters;
}

QAction *WindowFixture::trayEntry(const QString &text) const
{
    for (QMenu *menu : m_window->findChildren<QMenu *>()) {
        for (QAction *action : menu->actions()) {
            if (action->text() == text) {
                return action;
            }
        }
    }
    return nullptr;
}

bool WindowFixture::press(const char *button) const
{
    if (QAction *entry = trayEntry(button)) {
        const bool enabled = entry->isEnabled();
        entry->trigger();
        return enabled;
    }
    auto *tab = find<KvRetinaTabBar>("tab");
    const auto *pages = find<QStackedWidget>("tabPage");
    for (int page = 0; page < pages->count(); ++page) {
        if (pages->widget(page)->isAncestorOf(find(button))) {
            QTest::mouseClick(tab, Qt::LeftButton, {}, tab->tabRect(page).center());
        }
    }
    return m_client->press(button);
}

void WindowFixture::when(const std::function<bool()> &condition, const std::function<void()> &action) const
{
    auto *timer = new QTimer(m_window);
    connect(timer, &QTimer::timeout, this, [=] {
        if (condition()) {
            timer->stop();
            timer->deleteLater();
            action();
        }
    });
    timer->start(5);
}

QByteArray WindowFixture::takeRoutes()
{
    QByteArray routes = fileBytes(appPath(kRoutes));
    QFile::remove(appPath(kRoutes));
    return routes;
}
