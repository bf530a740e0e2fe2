// Shows every page and status of the window, and a few of its boxes, and takes a picture of each: what a designer
// looks at. Nothing is connected. See pictures.sh.

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

#include <QDir>
#include <QScreen>
#include <QTableWidget>

#include <cstdio>

namespace {

class Tour : public ClientWindow
{
public:
    Tour(const QString &folder, int pauseMs) : m_folder(folder), m_pauseMs(pauseMs) {}

    void walk(bool dark)
    {
        logIn(dark);
        signInPages();
        statuses();
        serverPages();
        optionPages();
        showBoxes();
        end();
    }

private:
    /// The window of somebody who has four servers.
    void logIn(bool dark)
    {
        putFile(appPath("/setting.ini"),
                "[LOGIN]\nVER=http://127.0.0.1:1/api\n[UPDATE]\nURL=http://127.0.0.1:1/update.xml\n");
        putFile(appPath("/cfg/theme"), dark ? "2" : "1");
        for (const char *server :
             {"Examplia-1", "Freedonia-Routed", "Proxied-Utopia-TCP", "Examplia-Long-Distance-Server-Number-040"}) {
            putFile(appPath("/cfg/OpenVPN/%1.ovpn").arg(server), "client\nremote 203.0.113.21 1194\n");
        }
        putFile(appPath("/cfg/OpenVPN/alice.crt"), "            Not After : Dec 31 23:59:59 2099 GMT\n");
        QCursor::setPos(QGuiApplication::primaryScreen()->geometry().bottomRight());
        start();
        find<QAbstractButton>("cbNoSound")->setChecked(true);
        find<QLineEdit>("edUser")->setText("alice");
        press("pbExist");
        m_window->move(m_window->screen()->availableGeometry().center() - m_window->rect().center());
    }

    void signInPages()
    {
        find<QStackedWidget>("stack")->setCurrentWidget(find("pageLogin"));
        picture("sign-in");
        KvNotice notice(find("centralwidget"), find("pageLogin"));
        notice.tell(
            Korvan::tr("A web page came in place of your configuration. Hotels, trains and cafés do that until "
                       "you have signed in to their network. Sign in there, then try again."),
            true, true);
        picture("sign-in-notice");
        find<QStackedWidget>("stack")->setCurrentWidget(find("pageMain"));
    }

    void statuses()
    {
        find<KvRetinaTabBar>("tab")->setCurrentIndex(0);
        picture("ready");
        m_window->setStatus(STATUS_CONNECTING);
        find<QProgressBar>("pgLinkState")->setValue(40);
        picture("connecting");
        m_window->setStatus(STATUS_CONNECTED);
        QTest::qWait(500); // until nobody has told the address
        for (const auto &[label, text] : {std::pair("lbServerIP", "203.0.113.21"),
                                          {"lbPublicIP", "203.0.113.121"},
                                          {"lbCountry", "Examplia"},
                                          {"lbDownload", "41KB/s"},
                                          {"lbUpload", "9KB/s"},
                                          {"lbSessionRecv", "3MB"},
                                          {"lbSessionSend", "812KB"},
                                          {"lbTotalRD", "1303MB"},
                                          {"lbTotalSD", "96MB"}}) {
            find<QLabel>(label)->setText(text);
        }
        picture("connected");
        m_window->setStatus(STATUS_DISCONNECTING);
        picture("disconnecting");
        m_window->setStatus(STATUS_BUSY);
        picture("busy");
        m_window->setStatus(STATUS_DISCONNECTED);
        picture("disconnected");
        m_window->setStatus(STATUS_RECONNECTING); // nothing but an attempt leads out of it
        picture("reconnecting");
    }

    void serverPages()
    {
        find<KvRetinaTabBar>("tab")->setCurrentIndex(1);
        picture("log");
        find<KvRetinaTabBar>("tab")->setCurrentIndex(4);
        auto *table = find<QTableWidget>("tbPing");
        for (int row = 0; row < table->rowCount(); ++row) {
            for (int column = 1; column < table->columnCount() && row < 2; ++column) {
                table->setItem(row, column, new QTableWidgetItem(QString::number(17 * (row + 2) * column)));
            }
        }
        table->setCurrentCell(1, 0);
        picture("status");
    }

    void optionPages()
    {
        find<KvRetinaTabBar>("tab")->setCurrentIndex(2);
        picture("settings");
        for (const char *option : {"cbLockDown", "rbNone"}) {
            find<QAbstractButton>(option)->click();
        }
        find<QProgressBar>("pgUpdate")->setValue(60);
        picture("settings-changed");
        find<KvRetinaTabBar>("tab")->setCurrentIndex(3);
        picture("proxy");
        find<QAbstractButton>("rbSocks")->click();
        find<QLineEdit>("edProxyAddr")->setText("192.0.2.7");
        picture("proxy-socks");
    }

    void showBoxes()
    {
        boxes.whileOpen = [this] { picture("box-" + QString::number(++m_box)); };
        boxes.expect(Korvan::tr("Exit"), Korvan::tr("Are you sure you wish to quit Korvan?"),
                     QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
        m_window->close();
        const QString cut = Korvan::tr("Internet connection has been terminated for your security.\n"
                                       "Please press OK to resume your regular internet connection "
                                       "and reconnect to the VPN if needed.");
        boxes.expect(Korvan::tr("Error"), cut);
        KvUnaskedBox::tell(m_window.get(), QMessageBox::Critical, Korvan::tr("Error"), cut);
        KvL2TPBox password(m_window.get());
        password.show();
        picture("box-l2tp");
    }

    /// The part of the screen where the window is, with all that lies over it.
    void picture(const QString &name)
    {
        find("lbTitle")->setFocus();
        QTest::qWait(m_pauseMs);
        const QRect place = m_window->frameGeometry();
        const QPixmap seen = m_window->screen()->grabWindow(0, place.x(), place.y(), place.width(), place.height());
        seen.save(m_folder + '/' + name + ".png");
    }

    QString m_folder;
    int m_pauseMs;
    int m_box = 0;
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
    Tour(arguments.at(1), arguments.at(4).toInt()).walk(arguments.at(3) == "dark");
    return 0;
}
