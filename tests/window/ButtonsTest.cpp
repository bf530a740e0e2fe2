#include "stats/TransferTotals.h"
#include "tests/window/WindowFixture.h"

#include <QClipboard>
#include <QDir>

/// Every button and every entry of the tray's menu does what it is for. Those of the options and of the servers'
/// tests have tests of their own.
class ButtonsTest : public WindowFixture
{
    Q_OBJECT

private slots:
    /// Earlier runs have received 3 KB and sent 1 KB, all of it today.
    void init() override
    {
        WindowFixture::init();
        QDir().mkpath(appPath("/cfg"));
        UpdateTotalDataTransfer(3 << 10, 1 << 10);
        startLoggedIn({"Examplia-1", "Proxied-Samplonia"});
    }

    void everyButton()
    {
        putScript(appPath("/compose"), "echo up >> '" + appPath("/fake/ups").toUtf8() +
                                           "'; echo 'Initialization Sequence Completed'; exec sleep 600");
        putFile(appPath("/cfg/login"), "");
        button("cbRunOnBoot")->setChecked(true);
        button("pbUpApp")->setEnabled(true); // though no update was announced
        boxes().expect("Warning", "Update of new configuration failed.\nPlease try again later.\n"
                                  "Korvan-GUI will use existing keys and configurations.");
        boxes().expect("Update", "Update url is not valid.");
        boxes().expect("Exit", "Are you sure you wish to quit Korvan?", QMessageBox::Yes | QMessageBox::No,
                       QMessageBox::No);

        const auto opened = [this] { return m_opened.join(' '); };
        const auto copied = [this] {
            const auto *log = find<QTextEdit>("edLog");
            const bool whole = QApplication::clipboard()->text() == log->toPlainText();
            return QString(whole && log->textCursor().hasSelection() ? "the whole log" : "not all");
        };
        const auto tunnel = [this] {
            return QString::number(fileBytes(appPath("/fake/ups")).count("up")) + ' ' +
                   combo("cmServer")->currentText() + ' ' + label("lbStatusT");
        };
        const auto shown = [this] {
            return page() + ' ' + find<QStackedWidget>("tabPage")->currentWidget()->objectName();
        };
        const auto login = [] { return QString(QFile::exists(appPath("/cfg/login")) ? "kept" : "gone"); };
        const auto asked = [this] { return QString("%1 boxes left").arg(boxes().left()); };
        const auto window = [this] {
            return QString(m_window->isVisible() ? "visible" : "hidden") +
                   (m_window->isMinimized() ? ", minimised" : "");
        };
        const auto items = [] { return QString::fromUtf8(loginItems()); };
        const std::tuple<QString, std::function<QString()>, QString> steps[] = {
            {"pbHelp", opened, "https://help.korvan.example/"},
            {"pbHelpSupport", opened, "https://help.korvan.example/anonymous_requests/new"},
            {"pbFAQ", opened, "http://www.korvan.example/faqs.php"},
            {"pbCopyLog", copied, "the whole log"},
            {"pbConnect", tunnel, "1 Examplia-1  CONNECTED"},
            {"pbReconnect", tunnel, "2 Examplia-1  CONNECTED"},
            {"pbDisconnect", tunnel, "2 Examplia-1 NOT CONNECTED"},
            {"Proxied-Samplonia", tunnel, "3 Proxied-Samplonia  CONNECTED"},
            {"Reconnect", tunnel, "4 Proxied-Samplonia  CONNECTED"},
            {"Disconnect", tunnel, "4 Proxied-Samplonia NOT CONNECTED"},
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
            {"pbMinimize", window, "visible, minimised"}, // without a tray there would be no way back
            {"Open Korvan", window, "visible"},
            {"cbLockDown", shown, "pageMain pageSet"}, // a change that can be saved
            // Outside of a bundle the login item is the beginning of the folder's path.
            {"pbSave", items, "({Hide = 0; Path = \"" + appPath("").left(9) + "\";})"},
        };
        for (const auto &[control, effect, expected] : steps) {
            m_opened.clear();
            QVERIFY2(press(qPrintable(control)), qPrintable(control));
            QTRY_COMPARE_WITH_TIMEOUT(control + ": " + effect(), control + ": " + expected, 30000);
        }
    }

    void clicksOnTheTray()
    {
        auto *icon = m_window->findChild<QSystemTrayIcon *>();
        for (const auto reason : {QSystemTrayIcon::Unknown, QSystemTrayIcon::Context, QSystemTrayIcon::DoubleClick,
                                  QSystemTrayIcon::Trigger, QSystemTrayIcon::MiddleClick}) {
            m_window->hide();
            emit icon->activated(reason);
            QCoreApplication::processEvents();
            COMPARE_CASE(QByteArray::number(reason), m_window->isVisible(),
                         reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::MiddleClick);
        }
    }

    void resets()
    {
        const QString kept = "0B 3KB 1KB 3KB 1KB";
        const QString nothing = "0B 0B 0B 0B 0B";
        QCOMPARE(totalsAtEnd(), kept);
        QVERIFY(press("pbResetStat"));
        QCOMPARE(totals(), nothing);
        QCOMPARE(totalsAtEnd(), nothing);
        start();
        QCOMPARE(totalsAtEnd(), kept); // what the file holds shows up again with the next start
        button("pbReset")->click();
        QVERIFY(!QFile::exists(appPath("/cfg/transfer")));
        QCOMPARE(totals(), nothing);
        QCOMPARE(totalsAtEnd(), kept); // what this run knows, with the next traffic
        start();
        QCOMPARE(totalsAtEnd(), nothing);
    }

private:
    /// What the totals come to show when the connection ends.
    QString totalsAtEnd()
    {
        m_window->setStatus(STATUS_DISCONNECTED);
        return totals();
    }

    QString totals() const
    {
        QStringList texts;
        for (const char *name : {"lbSessionRecv", "lbTotalRD", "lbTotalSD", "lbTotalRecv", "lbTotalSend"}) {
            texts += label(name);
        }
        return texts.join(' ');
    }
};

QTEST_MAIN(ButtonsTest)
#include "ButtonsTest.moc"
