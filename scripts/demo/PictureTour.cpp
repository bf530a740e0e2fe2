// Shows every page and status of the window, and a few of its boxes, and takes a picture of each: what a designer
// looks at. Nothing is connected. See pictures.sh.

#include "account/SavedLogin.h"
#include "common/AppPath.h"
#include "platform/DesktopScale.h"
#include "tests/support/OwnNetwork.h"
#include "tests/support/TestFiles.h"
#include "tests/window/ClientWindow.h"
#include "ui/KvL2TPBox.h"
#include "ui/KvNotice.h"
#include "ui/KvUnaskedBox.h"
#include "ui/Language.h"
#include "ui/Look.h"
#include "ui_Korvan.h"

#include <QDebug>
#include <QDir>
#include <QMenu>
#include <QScreen>
#include <QSystemTrayIcon>
#include <QTableWidget>
#include <QTimer>

#include <cstdio>

namespace {

class Tour : public ClientWindow
{
public:
    Tour(const QString &folder, int pauseMs) : m_folder(folder), m_pauseMs(pauseMs)
    {
        boxes.whileOpen = [this] {
            picture(m_box);
            if (m_box == "box-broken") {
                QApplication::activeModalWidget()->move(m_window->geometry().center());
                picture("broken");
            }
        };
    }

    /// Whether every box was there that belongs to the tour.
    bool walk(bool dark)
    {
        open(dark);
        signInPages();
        statuses();
        brokenTunnel();
        menus();
        serverPages();
        optionPages();
        showBoxes();
        end();
        const QString failures = boxes.takeFailures();
        std::fputs(qPrintable(failures), stderr);
        return failures.isEmpty() && boxes.left() == 0;
    }

private:
    /// The window of somebody who has four servers.
    void open(bool dark)
    {
        QCoreApplication::setApplicationVersion(QStringLiteral("2.4.1"));
        putFile(appPath("/setting.ini"),
                "[LOGIN]\nVER=http://127.0.0.1:1/api\n[UPDATE]\nURL=http://127.0.0.1:1/update.xml\n");
        putFile(appPath("/cfg/theme"), dark ? "2" : "1");
        for (const char *server : {"Examplia-1", "Freedonia-Routed (2)", "Proxied-Utopia-TCP",
                                   "Examplia-Long-Distance-Server-Number-040"}) {
            putFile(appPath("/cfg/OpenVPN/%1.ovpn").arg(server), "client\nremote 203.0.113.21 1194\n");
        }
        putFile(appPath("/cfg/OpenVPN/alice.crt"), "            Not After : Dec 31 23:59:59 2099 GMT\n");
        QCursor::setPos(QGuiApplication::primaryScreen()->geometry().bottomRight());
        start();
        find<QAbstractButton>("cbNoSound")->setChecked(true);
        m_window->updateOption(true);
        // Where a tray at the right of a small screen does not cover it.
        m_window->move(m_window->screen()->availableGeometry().topLeft());
    }

    void signInPages()
    {
        picture("sign-in");
        find<QLineEdit>("edUser")->setText("alice");
        find<QLineEdit>("edPass")->setText("correct horse");
        {
            KvNotice notice(find("centralwidget"), find("pageLogin"));
            notice.tell(
                Korvan::tr(
                    "A web page came in place of your configuration. Hotels, trains and cafés do that until you "
                    "have signed in to their network. Sign in there, then try again."),
                true, true);
            picture("sign-in-notice");
            notice.hide();
        }
        m_box = "box-sign-in";
        show(QMessageBox::Critical, Korvan::tr("Error"), Korvan::tr("Invalid username or password."));
        putFile(savedLoginPath(), "");
        press("pbLogin");
    }

    void statuses()
    {
        openTab(0);
        picture("ready");
        connecting();
        picture("connecting");
        m_window->setStatus(STATUS_DISCONNECTING);
        picture("cancelling");
        m_window->setStatus(STATUS_DISCONNECTED);
        connected();
        picture("connected");
        m_box = "box-first";
        boxes.expect(Korvan::tr("Notify"), Korvan::tr("Please disconnect first."));
        press("pbPingAll");
        openTab(0);
        hear("Not in the tunnel unless locked down: 192.0.2.0/24, fd00::/8");
        picture("connected-past");
        hear("Not in the tunnel unless locked down: all but 10.0.0.0/8; 10.1.0.0/16, 2001:db8:0:100::/56, "
             "fd00:1234::/32");
        picture("connected-open");
        hear("Not in the tunnel unless locked down: nothing");
        m_window->setStatus(STATUS_DISCONNECTING);
        picture("disconnecting");
        m_figures.stop();
        for (const char *rate : {"lbDownload", "lbUpload"}) {
            find<QLabel>(rate)->setText("0B/s");
        }
        m_window->setStatus(STATUS_BUSY);
        picture("busy");
        m_window->setStatus(STATUS_DISCONNECTED);
        picture("disconnected");
        m_window->setStatus(STATUS_RECONNECTING); // nothing but an attempt leads out of it
        picture("reconnecting");
    }

    void brokenTunnel()
    {
        connected();
        m_figures.stop();
        m_box = "box-broken";
        putFile(appPath("/down.sh"), "");
        boxes.expect(Korvan::tr("Error"), Korvan::tr("Internet connection has been terminated for your security.\n"
                                                     "Please press OK to resume your regular internet connection "
                                                     "and reconnect to the VPN if needed."));
        hear("[ERROR]openvpn error");
    }

    void menus()
    {
        auto *servers = find<QComboBox>("cmServer");
        servers->showPopup();
        picture("servers");
        servers->hidePopup();
        QMenu *menu = m_window->findChild<QSystemTrayIcon *>()->contextMenu();
        menu->popup(m_window->mapToGlobal(m_window->rect().center()));
        menu->setActiveAction(menu->actions().first());
        picture("tray-menu");
        menu->close();
        QTest::keyClick(m_window.get(), Qt::Key_Shift); // the ring is for those who use keys
        for (const char *control : {"cmServer", "pbConnect", "pbHelpSupport"}) {
            focusOn(control, 0);
        }
        focusOn("cbLockDown", 2);
        focusOn("tbPing", 4);
    }

    void focusOn(const char *control, int tab)
    {
        openTab(tab);
        m_focus = find(control);
        picture(QString("focus-") + control);
        m_focus = nullptr;
    }

    void serverPages()
    {
        for (int line = 0; line < 40; ++line) {
            qDebug().noquote()
                << "2026-11-23 07:24:30 [server] Peer Connection Initiated with [AF_INET]203.0.113.21:1194";
        }
        openTab(1);
        picture("log");
        openTab(4);
        auto *table = find<QTableWidget>("tbPing");
        const QStringList results[] = {
            {"23ms", "0%", "812KB/s"}, {"141ms", "5%", Korvan::tr("Canceled")}, {Korvan::tr("N/A"), "100%", ""}};
        for (int row = 0; row < 3; ++row) {
            for (int column = 0; column < 3; ++column) {
                table->setItem(row, column + 1, new QTableWidgetItem(results[row][column]));
            }
        }
        table->setCurrentCell(1, 0);
        picture("status");
        table->setItem(3, 1, new QTableWidgetItem(Korvan::tr("Ping...")));
        for (const char *button : {"pbPingAll", "pbPingDet", "pbSpeedTest", "pbTestCancel"}) {
            find(button)->setEnabled(!find(button)->isEnabled());
        }
        picture("status-testing");
    }

    void optionPages()
    {
        openTab(2);
        picture("settings");
        for (const char *option : {"cbLockDown", "rbNone"}) {
            find<QAbstractButton>(option)->click();
        }
        find<QProgressBar>("pgUpdate")->setValue(60);
        find("pbUpApp")->setEnabled(true);
        picture("settings-changed");
        openTab(3);
        picture("proxy");
        find<QAbstractButton>("rbHttp")->click();
        find<QLineEdit>("edProxyAddr")->setText("proxy.example");
        find<QLineEdit>("edProxyPort")->setText("8080");
        picture("proxy-http");
        find<QAbstractButton>("rbSocks")->click();
        picture("proxy-socks");
    }

    void showBoxes()
    {
        openTab(0);
        m_box = "box-exit";
        boxes.expect(Korvan::tr("Exit"), Korvan::tr("Are you sure you wish to quit Korvan?"),
                     QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
        m_window->close();
        m_box = "box-update";
        show(QMessageBox::Information, Korvan::tr("Update"),
             Korvan::tr("New version %1 ready, please click \"Update\".").arg("2.5.0"));
        m_box = "box-existing";
        show(QMessageBox::Warning, Korvan::tr("Warning"),
             Korvan::tr("Update of new configuration failed.\nPlease try again later.\n"
                        "Korvan-GUI will use existing keys and configurations."));
        KvL2TPBox password(m_window.get());
        password.show();
        picture("box-l2tp");
    }

    void show(QMessageBox::Icon icon, const QString &title, const QString &text)
    {
        boxes.expect(title, text);
        KvUnaskedBox::tell(m_window.get(), icon, title, text);
    }

    void connecting()
    {
        m_window->setStatus(STATUS_CONNECTING);
        find<QProgressBar>("pgLinkState")->setValue(40);
    }

    void connected()
    {
        connecting();
        m_window->setStatus(STATUS_CONNECTED);
        // Again and again, against the ticks that find no tunnel.
        QObject::connect(&m_figures, &QTimer::timeout, [this] {
            for (const auto &[label, text] : {std::pair("lbServerIP", "203.0.113.21"),
                                              {"lbPublicIP", "2001:db8:0:100::121"},
                                              {"lbCountry", "Examplia"},
                                              {"lbDownload", "41KB/s"},
                                              {"lbUpload", "9KB/s"},
                                              {"lbSessionRecv", "3MB"},
                                              {"lbSessionSend", "812KB"},
                                              {"lbTotalRD", "1303MB"},
                                              {"lbTotalSD", "96MB"},
                                              {"lbTotalRecv", "48213MB"},
                                              {"lbTotalSend", "3990MB"}}) {
                find<QLabel>(label)->setText(text);
            }
        });
        m_figures.start(20);
    }

    /// The engine says it.
    void hear(const QString &message)
    {
        QMetaObject::invokeMethod(m_window.get(), "onMessage", Q_ARG(QString, message));
    }

    void openTab(int tab) { find<KvRetinaTabBar>("tab")->setCurrentIndex(tab); }

    /// The part of the screen where the window is, with all that lies over it but the tray's messages.
    void picture(const QString &name)
    {
        (m_focus ? m_focus : find("lbTitle"))->setFocus();
        QTest::qWait(m_pauseMs);
        for (bool closed = true; closed;) { // the tray may show one late
            closed = false;
            for (QWidget *window : QApplication::topLevelWidgets()) {
                closed |= window->inherits("QBalloonTip") && window->isVisible() && window->close();
            }
            QTest::qWait(60);
        }
        const QRect place = m_window->frameGeometry();
        const QPixmap seen = m_window->screen()->grabWindow(0, place.x(), place.y(), place.width(), place.height());
        seen.save(m_folder + '/' + name + ".png");
    }

    QString m_folder;
    int m_pauseMs;
    QString m_box; ///< the picture's name of the box that comes
    QWidget *m_focus = nullptr;
    QTimer m_figures;
};

} // namespace

int main(int argc, char *argv[])
{
    enterOwnNetwork();
    const DesktopScale scale(kWindowSize);
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 5) {
        std::fputs("usage: picture_tour FOLDER LANGUAGE light|dark PAUSE-MS\n", stderr);
        return 2;
    }
    prepareApplication(application);
    useLanguage(arguments.at(2));
    QDir().mkpath(arguments.at(1));
    return Tour(arguments.at(1), arguments.at(4).toInt()).walk(arguments.at(3) == "dark") ? 0 : 1;
}
