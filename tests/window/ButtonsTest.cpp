#include "stats/TransferTotals.h"
#include "tests/window/WindowFixture.h"

#include <QClipboard>
#include <QDir>

/// Buttons, the entries of the tray's menu and a click on the tray do what they are for. Those of the login, of the
/// options and of the servers' tests have tests of their own.
class ButtonsTest : public WindowFixture
{
    Q_OBJECT

private slots:
    void ofTheTunnelAndTheTotals()
    {
        QDir().mkpath(appPath("/cfg"));
        UpdateTotalDataTransfer(3 << 10, 1 << 10); // earlier today
        startLoggedIn({"Examplia-1", "Proxied-Samplonia"});
        putScript(appPath("/compose"), "echo up >> '" + appPath("/fake/ups").toUtf8() +
                                           "'; echo 'Initialization Sequence Completed'; exec sleep 600");
        const auto seen = [this] {
            const QByteArrayList ups = fileBytes(appPath("/fake/ups")).split('\n');
            return QStringList({QString::number(ups.size() - 1), combo("cmServer")->currentText(),
                                label("lbStatusT").trimmed(), label("lbTotalRecv"),
                                QFile::exists(appPath("/cfg/transfer")) ? "kept" : "gone"})
                .join(' ');
        };
        walk(seen, {{"pbConnect", "1 Examplia-1 CONNECTED 3KB kept"},
                    {"pbReconnect", "2 Examplia-1 CONNECTED 3KB kept"},
                    {"pbReset", "2 Examplia-1 CONNECTED 0B gone"},
                    {"pbDisconnect", "2 Examplia-1 NOT CONNECTED 0B kept"},
                    {"Proxied-Samplonia", "3 Proxied-Samplonia CONNECTED 0B kept"},
                    {"Reconnect", "4 Proxied-Samplonia CONNECTED 0B kept"},
                    {"pbResetStat", "4 Proxied-Samplonia CONNECTED 0B kept"}, // the file's are back at the next start
                    {"Disconnect", "4 Proxied-Samplonia NOT CONNECTED 0B kept"}});
        QCOMPARE(find("lbPublicIP")->toolTip(), QString()); // which was about that server
    }

    void ofThePages()
    {
        startLoggedIn({"Examplia-1"});
        const auto seen = [this] {
            const QString tab = find<QStackedWidget>("tabPage")->currentWidget()->objectName();
            return (m_opened + QStringList{page(), tab}).join(' ');
        };
        walk(seen, {{"pbHelp", "https://help.korvan.example/ pageMain pageDash"},
                    {"pbHelpSupport", "https://help.korvan.example/anonymous_requests/new pageMain pageDash"},
                    {"pbFAQ", "http://www.korvan.example/faqs.php pageMain pageDash"},
                    {"Proxy Settings...", "pageMain pageProxy"},
                    {"Update Config...", "pageMain pageSet"},
                    {"Change User...", "pageLogin pageSet"},
                    {"Proxy Settings...", "pageMain pageProxy"}, // it may be what the login needs
                    {"Update Config...", "pageMain pageSet"},
                    {"Change User...", "pageLogin pageSet"},
                    {"pbExist", "pageMain pageSet"},
                    {"pbChangeUser", "pageLogin pageDash"}});
    }

    void others()
    {
        startLoggedIn({"Examplia-1"});
        for (int tab = 5; tab-- > 0;) {
            QTest::keyClick(m_window.get(), Qt::Key(Qt::Key_1 + tab), Qt::ControlModifier);
            QCOMPARE(find<QStackedWidget>("tabPage")->currentIndex(), tab);
        }
        QVERIFY(press("pbCopyLog"));
        QCOMPARE(QApplication::clipboard()->text(), find<QTextEdit>("edLog")->toPlainText());
        button("pbUpApp")->setEnabled(true); // though no update was announced
        boxes.expect("Update", "Update url is not valid.");
        QVERIFY(press("pbUpApp") && boxes.left() == 0);
        boxes.expect("Exit", "Are you sure you wish to quit Korvan?", QMessageBox::Yes | QMessageBox::No,
                     QMessageBox::No);
        QString warning;
        boxes.whileOpen = [&] {
            warning = qobject_cast<QMessageBox *>(qApp->activeModalWidget())->informativeText();
        };
        QVERIFY(press("pbClose") && boxes.left() == 0 && warning.isEmpty());
        QVERIFY(press("pbMinimize"));
        QTRY_VERIFY2(m_window->isMinimized(), "without a tray there would be no way back");
        QVERIFY(press("Open Korvan") && m_window->isVisible() && !m_window->isMinimized());
        button("cbRunOnBoot")->setChecked(true);
        QVERIFY(press("cbLockDown") && press("pbSave")); // a change that can be saved
        QVERIFY(press("cbLockDown"));
        boxes.expect("Exit", "Are you sure you wish to quit Korvan?", QMessageBox::Yes | QMessageBox::No,
                     QMessageBox::No);
        QVERIFY(press("pbClose") && boxes.left() == 0);
        QCOMPARE(warning, QString("The changes of the options are not saved."));
        boxes.whileOpen = nullptr;
        // Outside of a bundle the login item is the beginning of the folder's path.
        QCOMPARE(loginItems(), "({Hide = 0; Path = \"" + appPath("").left(9).toUtf8() + "\";})");
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

private:
    /// Presses one control after the other and waits for what is to be seen then.
    void walk(const std::function<QString()> &seen, const QVector<std::pair<QString, QString>> &steps)
    {
        for (const auto &[control, expected] : steps) {
            m_opened.clear();
            QVERIFY2(press(qPrintable(control)), qPrintable(control));
            QTRY_COMPARE_WITH_TIMEOUT(control + ": " + seen(), control + ": " + expected, 30000);
        }
    }
};

QTEST_MAIN(ButtonsTest)
#include "ButtonsTest.moc"
