#include "tests/ui/ExampleWindow.h"
#include "ui/ElidingComboBox.h"
#include "ui/FocusRing.h"
#include "ui/Look.h"
#include "ui/Palette.h"
#include "ui/WindowHeader.h"

#include <QAccessible>
#include <QTest>

#include <cmath>

namespace {

const QString kLongName = QStringLiteral("Examplia-Long-Distance-Server-Number-040");

/// The relative luminance of a colour and the contrast of two, as WCAG 2 defines them.
double luminance(QRgb colour)
{
    const auto part = [](int value) {
        const double share = value / 255.0;
        return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(qRed(colour)) + 0.7152 * part(qGreen(colour)) + 0.0722 * part(qBlue(colour));
}

double contrast(QRgb a, QRgb b)
{
    const auto [dark, light] = std::minmax({luminance(a), luminance(b)});
    return (light + 0.05) / (dark + 0.05);
}

} // namespace

Q_DECLARE_METATYPE(ExampleWindow::Status)

class FormTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void everyControlHasANameForScreenReaders();
    void tabKeyWalksInReadingOrder_data();
    void tabKeyWalksInReadingOrder();
    void nothingIsClipped_data();
    void nothingIsClipped();
    void ringFollowsTheKeyboardOnly();
    void statusColoursTextAndBar();
    void enterLogsIn();
    void headerDragsAWindowWithoutFrame();
    void textsAreReadable_data();
    void textsAreReadable();

private:
    std::unique_ptr<ExampleWindow> m_window;
};

void FormTest::init()
{
    m_window = std::make_unique<ExampleWindow>();
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void FormTest::everyControlHasANameForScreenReaders()
{
    int controls = 0;
    for (QWidget *control : m_window->findChildren<QWidget *>(
             QRegularExpression(QStringLiteral("^((pb|cb|rb|cm|ed|pg).*|tab|tbPing)$")))) {
        QAccessibleInterface *face = QAccessible::queryAccessibleInterface(control);
        QVERIFY2(face && !face->text(QAccessible::Name).isEmpty(), qPrintable(control->objectName()));
        ++controls;
    }
    QVERIFY(controls > 40);
}

void FormTest::tabKeyWalksInReadingOrder_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QString>("controls");
    const QString header = QStringLiteral(" pbHelp pbMinimize pbClose");
    QTest::newRow("login") << -1 << "edUser edPass cbRember pbLogin pbExist" + header;
    QTest::newRow("dashboard") << 0
                               << "tab cmProto cmServer pbConnect pbChangeUser pbUpAccount pbFAQ pbHelpSupport "
                                  "pbResetStat" +
                                      header;
    QTest::newRow("log") << 1 << "tab edLog pbCopyLog" + header;
    QTest::newRow("settings") << 2
                              << "tab cbConnectOnBoot cmBootServer cbHideConnection cbLockDown cbNoSound cmUpdate "
                                 "pbUpdate pbUpApp pbReset pbSave" +
                                     header;
    QTest::newRow("proxy") << 3 << "tab rbNone edProxyAddr edProxyPort cbProxyAuth pbSaveProxy" + header;
    QTest::newRow("status") << 4 << "tab tbPing pbPingAll pbPingDet pbSpeedTest pbTestCancel" + header;
}

void FormTest::tabKeyWalksInReadingOrder()
{
    QFETCH(int, page);
    QFETCH(QString, controls);
    if (page >= 0) {
        m_window->showPage(page);
        m_window->ui.tab->setFocus();
    }
    QStringList walked;
    const QWidget *start = m_window->focusWidget();
    do {
        QWidget *now = m_window->focusWidget();
        walked << now->objectName();
        QTest::keyClick(now, Qt::Key_Tab);
    } while (m_window->focusWidget() != start && walked.size() < 50);
    QCOMPARE(walked.join(QLatin1Char(' ')), controls);
}

void FormTest::nothingIsClipped_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<ExampleWindow::Status>("status");
    QTest::newRow("login") << -1 << ExampleWindow::Status::NotConnected;
    QTest::newRow("dashboard") << 0 << ExampleWindow::Status::NotConnected;
    QTest::newRow("dashboard, connecting") << 0 << ExampleWindow::Status::Connecting;
    QTest::newRow("dashboard, connected") << 0 << ExampleWindow::Status::Connected;
    QTest::newRow("log") << 1 << ExampleWindow::Status::NotConnected;
    QTest::newRow("settings") << 2 << ExampleWindow::Status::NotConnected;
    QTest::newRow("proxy") << 3 << ExampleWindow::Status::NotConnected;
    QTest::newRow("status") << 4 << ExampleWindow::Status::NotConnected;
}

void FormTest::nothingIsClipped()
{
    QFETCH(int, page);
    QFETCH(ExampleWindow::Status, status);
    m_window->addServer(kLongName);
    for (QComboBox *box :
         {static_cast<QComboBox *>(m_window->ui.cmServer), static_cast<QComboBox *>(m_window->ui.cmBootServer)}) {
        box->setCurrentText(kLongName);
    }
    m_window->showStatus(status);
    if (page >= 0) {
        m_window->showPage(page);
    }
    QTest::qWait(0);
    for (QWidget *widget :
         m_window->findChildren<QWidget *>(QRegularExpression(QStringLiteral("^(pb|cb|rb|cm|ed|lb|pg|tab)")))) {
        if (!widget->isVisible()) {
            continue;
        }
        const std::string name = widget->objectName().toStdString();
        QVERIFY2(widget->parentWidget()->rect().contains(widget->geometry()), name.c_str());
        QVERIFY2(widget->width() >= widget->minimumSizeHint().width(), name.c_str());
        QVERIFY2(widget->height() >= widget->minimumSizeHint().height(), name.c_str());
        if (const auto *box = qobject_cast<ElidingComboBox *>(widget)) {
            QVERIFY2(!box->isShortened(), name.c_str());
        }
        if (const auto *label = qobject_cast<QLabel *>(widget);
            label && !label->wordWrap() && !label->text().isEmpty()) {
            QVERIFY2(label->width() >= label->fontMetrics().horizontalAdvance(label->text()), name.c_str());
        }
    }
}

void FormTest::ringFollowsTheKeyboardOnly()
{
    const auto ringBox = [this] {
        const auto *ring = m_window->findChild<FocusRing *>();
        return ring && ring->isVisible() ? ring->geometry() : QRect();
    };
    const auto boxOf = [this](const QWidget *control) {
        return QRect(control->mapTo(m_window.get(), QPoint(0, 0)), control->size());
    };
    QVERIFY(ringBox().contains(boxOf(m_window->ui.edUser)));
    QTest::mouseClick(m_window->ui.edPass, Qt::LeftButton);
    QVERIFY(ringBox().contains(boxOf(m_window->ui.edPass)));
    QTest::keyClick(m_window->ui.edPass, Qt::Key_Tab);
    QVERIFY(ringBox().contains(boxOf(m_window->ui.cbRember)));
    QTest::mouseClick(m_window->ui.pbExist, Qt::LeftButton);
    m_window->showPage(0);
    QVERIFY(!ringBox().isValid());

    QTest::keyClick(m_window->ui.tab, Qt::Key_Right);
    const QRect settingsTab = m_window->ui.tab->tabRect(1).translated(boxOf(m_window->ui.tab).topLeft());
    QVERIFY(settingsTab.contains(ringBox()));
}

void FormTest::statusColoursTextAndBar()
{
    m_window->showPage(0);
    const auto textColour = [this] { return m_window->ui.lbStatusT->palette().color(QPalette::WindowText).rgb(); };
    const auto barColour = [this] { return m_window->ui.pgLinkState->grab().toImage().pixelColor(10, 3).rgb(); };
    m_window->showStatus(ExampleWindow::Status::Connecting);
    QCOMPARE(textColour(), palette::kInk);
    QCOMPARE(barColour(), palette::kAction);
    m_window->showStatus(ExampleWindow::Status::Connected);
    QCOMPARE(textColour(), palette::kConnected);
    QCOMPARE(barColour(), palette::kConnected);
    // While reconnecting the bar is still full, but nothing is connected.
    m_window->ui.lbStatus->setPicture(QStringLiteral(":/images/icon_status_connect_disconnected.png"));
    QCOMPARE(textColour(), palette::kInk);
    QCOMPARE(barColour(), palette::kAction);
}

void FormTest::enterLogsIn()
{
    int logins = 0;
    connect(m_window->ui.pbLogin, &QPushButton::clicked, [&logins] { ++logins; });
    QTest::keyClick(m_window->ui.edUser, Qt::Key_Return);
    QTest::keyClick(m_window->ui.edPass, Qt::Key_Return);
    m_window->ui.pbLogin->setEnabled(false);
    QTest::keyClick(m_window->ui.edPass, Qt::Key_Return);
    QCOMPARE(logins, 2);
}

void FormTest::headerDragsAWindowWithoutFrame()
{
    QVERIFY(m_window->windowFlags().testFlag(Qt::FramelessWindowHint));
    QCOMPARE(m_window->size(), QSize(880, 580));
    // Without a window manager the header moves the window itself.
    auto *header = m_window->findChild<WindowHeader *>();
    const QPoint before = m_window->pos();
    const auto dragTo = [header](const QPoint &place) {
        QMouseEvent move(QEvent::MouseMove, place, header->mapToGlobal(place), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(header, &move);
    };
    QTest::mousePress(header, Qt::LeftButton, Qt::NoModifier, QPoint(300, 20));
    dragTo(QPoint(340, 45));
    QCOMPARE(m_window->pos() - before, QPoint(40, 25));
    QTest::mouseRelease(header, Qt::LeftButton);
    dragTo(QPoint(10, 10));
    QCOMPARE(m_window->pos() - before, QPoint(40, 25));
}

void FormTest::textsAreReadable_data()
{
    using namespace palette;
    QTest::addColumn<QRgb>("text");
    QTest::addColumn<QRgb>("ground");
    QTest::newRow("body on paper") << kBody << kPaper;
    QTest::newRow("body on a selected row") << kBody << kActionSoft;
    QTest::newRow("link on white") << kAction << kWhite;
    QTest::newRow("version in the header") << kDisabled << kInk;
    QTest::newRow("primary button") << kWhite << kAction;
    QTest::newRow("red button") << kWhite << kDanger;
    QTest::newRow("connected") << kConnected << kWhite;
}

void FormTest::textsAreReadable()
{
    QFETCH(QRgb, text);
    QFETCH(QRgb, ground);
    QVERIFY(contrast(text, ground) >= 4.5);
}

int main(int argc, char **argv)
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication application(argc, argv);
    applyLook(application);
    FormTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "FormTest.moc"
