#pragma once

#include "common/AppPath.h"
#include "tests/support/Cases.h"
#include "tests/support/OwnNetwork.h"
#include "tests/support/TestFiles.h"
#include "tests/window/ClientWindow.h"
#include "ui_Korvan.h"

#include <QMenu>

/// A test of the window. Each of its functions begins without state, with stand-ins for the system tools first in
/// PATH, and fails unless exactly the boxes come that it expects. The machine's gateway is 198.51.100.1, nothing
/// answers in the network, and route commands are noted.
class WindowFixture : public QObject, protected ClientWindow
{
    Q_OBJECT

public:
    /// Qt Test calls it before the application and its threads are there.
    static void initMain() { enterOwnNetwork(); }

public slots:
    void noteUrl(const QUrl &url) { m_opened += url.toString(); }

protected slots:
    void initTestCase() { prepareApplication(*qApp); }
    virtual void init();
    void cleanup();

protected:
    /// The window of a user who has these servers and has logged in as "alice". It plays no sounds.
    void startLoggedIn(const QStringList &servers);

    VPNClient &engine() const { return *m_window->m_engine; }
    void useLastProfile() const { m_window->onLastProfile(); }
    QAbstractButton *button(const char *name) const { return find<QAbstractButton>(name); }
    QComboBox *combo(const char *name) const { return find<QComboBox>(name); }
    void type(const char *field, const QString &text) const { find<QLineEdit>(field)->setText(text); }
    QString page() const { return find<QStackedWidget>("stack")->currentWidget()->objectName(); }

    /// What the route command was asked so far, a line a call.
    static QByteArray routes() { return fileBytes(appPath("/fake/routes")); }

    /// The login items as they were written.
    static QByteArray loginItems() { return fileBytes(appPath("/fake/items")); }

    static QByteArray log() { return fileBytes(appPath("/log.txt")); }

    QStringList m_opened; ///< addresses that the browser was to show
};
