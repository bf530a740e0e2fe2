#include "stats/TransferTotals.h"
#include "tests/window/WindowFixture.h"

#include <QClipboard>
#include <QDir>

/// Every button, every entry of the tray's menu and a click on the tray do what they are for. Those of the options
/// and of the servers' tests have tests of their own.
class ButtonsTest : public WindowFixture
{
    Q_OBJECT

private slots:
    void everyButton()
    {
        QDir().mkpath(appPath("/cfg"));
        UpdateTotalDataTransfer(3 << 10, 1 << 10); // earlier today
        startLoggedIn({"Examplia-1", "Proxied-Samplonia"});
        putScript(appPath("/compose"), "echo up >> '" + appPath("/fake/ups").toUtf8() +
                                           "'; echo 'Initialization Sequence Completed'; exec sleep 600");
        putFile(appPath("/cfg/login"), "");
        button("cbRunOnBoot")->setChecked(true);
        button("pbUpApp")->setEnabled(true); // though no update was announced
        boxes.expect("Warning", "Update of new configuration failed.\nPlease try again later.\n"
                                "Korvan-GUI will use existing keys and configurations.");
        boxes.expect("Update", "Update url is not valid.");
        boxes.expect("Exit", "Are you sure you wish to quit Korvan?", QMessageBox::Yes | QMessageBox::No,
                     QMessageBox::No);

        const auto opened = [this] { return m_opened.join(' '); };
        const auto copied = [this] {
            return QApplication::clipboard()->text() == find<QTextEdit>("edLog")->toPlainText() ? "all" : "not all";
        };
        const auto tunnel = [this] {
            return QString::number(fileBytes(appPath("/fake/ups")).count("up")) + ' ' +
                   combo("cmServer")->currentText() + ' ' + label("lbStatusT") + ' ' + label("lbTotalRecv");
        };
        const auto totals = [this] {
            return label("lbTotalRecv") + (QFile::exists(appPath("/cfg/transfer")) ? ", kept" : ", gone");
        };
        const auto shown = [this] {
            return page() + ' ' + find<QStackedWidget>("tabPage")->currentWidget()->objectName();
        };
        const auto login = [] { return QFile::exists(appPath("/cfg/login")) ? "kept" : "gone"; };
        const auto asked = [this] { return QString("%1 boxes left").arg(boxes.left()); };
        const auto window = [this] {
            return m_window->isHidden() ? "hidden" : m_window->isMinimized() ? "minimised" : "shown";
        };
        const std::tuple<QString, std::function<QString()>, QString> steps[] = {
            {"pbHelp", opened, "https://help.korvan.example/"},
            {"pbHelpSupport", opened, "https://help.korvan.example/anonymous_requests/new"},
            {"pbFAQ", opened, "http://www.korvan.example/faqs.php"},
            {"pbCopyLog", copied, "all"},
            {"pbConnect", tunnel, "1 Examplia-1  CONNECTED 3KB"},
            {"pbReconnect", tunnel, "2 Examplia-1  CONNECTED 3KB"},
            {"pbReset", totals, "0B, gone"},
            {"pbDisconnect", tunnel, "2 Examplia-1 NOT CONNECTED 3KB"}, // what this run knows
            {"Proxied-Samplonia", tunnel, "3 Proxied-Samplonia  CONNECTED 3KB"},
            {"Reconnect", tunnel, "4 Proxied-Samplonia  CONNECTED 3KB"},
            {"pbResetStat", totals, "0B, kept"}, // what the file holds shows up again with the next start
            {"Disconnect", tunnel, "4 Proxied-Samplonia NOT CONNECTED 0B"},
            {"Proxy Settings...", shown, "pageMain pageProxy"},
            {"Update Config...", shown, "pageMain pageSet"},
            {"Change User...", shown, "pageLogin pageSet"},
            {"pbExist", shown, "pageMain pageSet"},
            {"pbChangeUser", shown, "pageLogin pageDash"},
            {"cbRember", login, "kept"},
            {"cbRember", login, "gone"},
            {"pbLogin", shown, "pageMain pageDash"}, // the service does not answer
            {"pbUpdate", shown, "pageLogin pageSet"},
            {"pbExist", shown, "pageMain pageSet"},
            {"pbUpAccount", shown, "pageLogin pageDash"},
            {"pbExist", shown, "pageMain pageDash"},
            {"pbUpApp", asked, "1 boxes left"},
            {"pbClose", asked, "0 boxes left"},
            {"pbMinimize", window, "minimised"}, // without a tray there would be no way back
            {"Open Korvan", window, "shown"},
            {"cbLockDown", shown, "pageMain pageSet"}, // a change that can be saved
            // Outside of a bundle the login item is the beginning of the folder's path.
            {"pbSave", loginItems, "({Hide = 0; Path = \"" + appPath("").left(9) + "\";})"},
        };
        for (const auto &[control, effect, expected] : steps) {
            m_opened.clear();
            QVERIFY2(press(qPrintable(control)), qPrintable(control));
            QTRY_COMPARE_WITH_TIMEOUT(control + ": " + effect(), control + ": " + expected, 30000);
        }
    }

    void clicksOnTheTray()
    {
        start();
        for (int reason = QSystemTrayIcon::Unknown; reason <= QSystemTrayIcon::MiddleClick; ++reason) {
            m_window->hide();
            emit m_window->findChild<QSystemTrayIcon *>()->activated(QSystemTrayIcon::ActivationReason(reason));
            QCoreApplication::processEvents();
            QCOMPARE(m_window->isVisible(), reason >= QSystemTrayIcon::Trigger);
        }
    }
};

QTEST_MAIN(ButtonsTest)
#include "ButtonsTest.moc"
