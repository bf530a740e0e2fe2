#include "common/AppPath.h"
#include "stats/TransferTotals.h"
#include "tests/support/Cases.h"
#include "tests/support/TestFiles.h"
#include "tests/window/WindowFixture.h"
#include "ui/KvRetinaTabBar.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QFile>
#include <QLabel>
#include <QStackedWidget>
#include <QTextEdit>
#include <QUrl>

/// The window's other buttons: help, log, tray, pages, statistics.
class ButtonsTest : public QObject
{
    Q_OBJECT

public slots:
    void noteUrl(const QUrl &url) { m_opened += url.toString(); }

private slots:
    void init();
    void cleanup();
    void helpLinks();
    void tabsOpenTheirPages();
    void copiesTheLog();
    void trayClicks();
    void minimises();
    void changesTheUser();
    void bundleUnknown();
    void resetForgetsTheFile();
    void resetStatForgetsTheSession();

private:
    Korvan &start();
    /// Totals of earlier runs: 3 KB received and 1 KB sent, all of it today.
    static void putTotals();
    static QString storedTotals();
    QString totals() const;

    std::unique_ptr<WindowFixture> m_fixture;
    Korvan *m_window = nullptr;
    QStringList m_opened;
};

void ButtonsTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
    m_opened.clear();
    for (const char *scheme : {"http", "https"}) {
        QDesktopServices::setUrlHandler(scheme, this, "noteUrl");
    }
}

void ButtonsTest::cleanup()
{
    QCOMPARE(m_fixture->boxes.takeFailures(), QString());
    QCOMPARE(m_fixture->boxes.left(), 0);
    m_fixture.reset();
}

Korvan &ButtonsTest::start()
{
    WindowFixture::putProfile({"Examplia-1"});
    m_window = &m_fixture->start();
    m_fixture->press("pbExist");
    return *m_window;
}

void ButtonsTest::helpLinks()
{
    start();
    for (const char *button : {"pbHelp", "pbHelpSupport", "pbFAQ"}) {
        COMPARE_CASE(button, m_fixture->press(button), true);
    }
    QCOMPARE(m_opened,
             QStringList({"https://help.korvan.example/", "https://help.korvan.example/anonymous_requests/new",
                          "http://www.korvan.example/faqs.php"}));
}

void ButtonsTest::tabsOpenTheirPages()
{
    start();
    auto *tab = m_fixture->find<KvRetinaTabBar>("tab");
    int index = 0;
    for (const char *page : {"pageDash", "pageLog", "pageSet", "pageProxy", "pageStatus"}) {
        QTest::mouseClick(tab, Qt::LeftButton, {}, tab->tabRect(index++).center());
        COMPARE_CASE(page, m_fixture->find<QStackedWidget>("tabPage")->currentWidget()->objectName(), QString(page));
    }
}

void ButtonsTest::copiesTheLog()
{
    start();
    qDebug("a \"last\" line");
    auto *log = m_fixture->find<QTextEdit>("edLog");
    QTRY_VERIFY(log->toPlainText().endsWith("\na last line"));
    m_fixture->find<KvRetinaTabBar>("tab")->setCurrentIndex(1);
    QVERIFY(m_fixture->press("pbCopyLog"));
    QCOMPARE(QApplication::clipboard()->text(), log->toPlainText());
    QVERIFY2(log->textCursor().hasSelection(), "what was copied can be seen");
}

void ButtonsTest::trayClicks()
{
    start();
    auto *tray = m_window->findChild<QSystemTrayIcon *>();
    const std::pair<QSystemTrayIcon::ActivationReason, bool> reasons[] = {{QSystemTrayIcon::Unknown, false},
                                                                          {QSystemTrayIcon::Context, false},
                                                                          {QSystemTrayIcon::DoubleClick, false},
                                                                          {QSystemTrayIcon::Trigger, true},
                                                                          {QSystemTrayIcon::MiddleClick, true}};
    for (const auto &[reason, shows] : reasons) {
        m_window->hide();
        emit tray->activated(reason);
        QCoreApplication::processEvents();
        COMPARE_CASE(QByteArray::number(reason), m_window->isVisible(), shows);
    }
}

void ButtonsTest::minimises()
{
    start();
    QVERIFY(m_fixture->press("pbMinimize"));
    QTRY_VERIFY(m_window->isMinimized());
    QVERIFY2(m_window->isVisible(), "without a tray there would be no way back");
    m_window->showOnTop();
    QTRY_VERIFY(!m_window->isMinimized() && m_window->isVisible());
}

void ButtonsTest::changesTheUser()
{
    start();
    QVERIFY(m_fixture->press("pbChangeUser"));
    QCOMPARE(m_fixture->find<QStackedWidget>("stack")->currentWidget()->objectName(), QString("pageLogin"));
}

/// Outside of a bundle the login item is the beginning of the folder's path.
void ButtonsTest::bundleUnknown()
{
    putScript(appPath("/fake/defaults"),
              "[ $1 = read ] && echo '{Path = x;}' || echo \"$4\" > '" + appPath("/fake/written").toUtf8() + "'\n");
    start();
    m_window->findChild<QAbstractButton *>("cbRunOnBoot")->setChecked(true);
    m_fixture->find<QAbstractButton>("pbSave")->click();
    QCOMPARE(fileBytes(appPath("/fake/written")),
             "({Path = x;},{Hide = 0; Path = \"" + appPath("").left(9).toUtf8() + "\";})\n");
}

void ButtonsTest::putTotals()
{
    QFile::remove(appPath("/cfg/transfer"));
    QDir().mkpath(appPath("/cfg"));
    UpdateTotalDataTransfer(3 << 10, 1 << 10);
}

QString ButtonsTest::storedTotals()
{
    TransferCounters stored;
    GetTotalDataTransfer(stored.totalReceived, stored.totalSent, stored.day, stored.dayReceived, stored.daySent,
                         stored.month, stored.monthReceived, stored.monthSent);
    return QString("%1 %2 %3 %4")
        .arg(stored.totalReceived)
        .arg(stored.totalSent)
        .arg(stored.monthReceived)
        .arg(stored.daySent);
}

/// All statistics of the dashboard.
QString ButtonsTest::totals() const
{
    QStringList texts;
    for (const char *name :
         {"lbSessionRecv", "lbSessionSend", "lbTotalRD", "lbTotalSD", "lbTotalRecv", "lbTotalSend"}) {
        texts += m_fixture->find<QLabel>(name)->text();
    }
    return texts.join(' ');
}

/// What this run knows shows up again with the next traffic.
void ButtonsTest::resetForgetsTheFile()
{
    putTotals();
    start().setStatus(STATUS_DISCONNECTED);
    QCOMPARE(totals(), QString("0B 0B 3KB 1KB 3KB 1KB"));
    m_fixture->find<KvRetinaTabBar>("tab")->setCurrentIndex(2);
    QVERIFY(m_fixture->press("pbReset"));
    QVERIFY(!QFile::exists(appPath("/cfg/transfer")));
    QCOMPARE(totals(), QString("0B 0B 0B 0B 0B 0B"));
    m_window->setStatus(STATUS_DISCONNECTED);
    QCOMPARE(totals(), QString("0B 0B 3KB 1KB 3KB 1KB"));
    QCOMPARE(storedTotals(), QString("0 0 0 0"));
}

/// What the file holds shows up again with the next start.
void ButtonsTest::resetStatForgetsTheSession()
{
    putTotals();
    start().setStatus(STATUS_DISCONNECTED);
    QVERIFY(m_fixture->press("pbResetStat"));
    QCOMPARE(totals(), QString("0B 0B 0B 0B 0B 0B"));
    m_window->setStatus(STATUS_DISCONNECTED);
    QCOMPARE(totals(), QString("0B 0B 0B 0B 0B 0B"));
    QCOMPARE(storedTotals(), QString("3072 1024 3072 1024"));
    start().setStatus(STATUS_DISCONNECTED);
    QCOMPARE(totals(), QString("0B 0B 3KB 1KB 3KB 1KB"));
}

int main(int argc, char *argv[])
{
    return runWindowTest<ButtonsTest>(argc, argv);
}
#include "ButtonsTest.moc"
