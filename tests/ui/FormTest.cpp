#include "tests/window/WindowFixture.h"
#include "ui/FocusRing.h"
#include "ui/Palette.h"
#include "ui/StatePicture.h"

#include <QAccessible>
#include <QRegularExpression>

#include <cmath>

static const QString kLongName = QStringLiteral("Examplia-Long-Distance-Server-Number-040");
static constexpr int kLoginPage = -1;

/// What the form owes to the eye, the keyboard and the screen reader.
class FormTest : public WindowFixture
{
    Q_OBJECT

private slots:
    void init() override;
    void everyControlHasANameForScreenReaders();
    void everyStateHasItsPicture();
    void tabKeyWalksInReadingOrder();
    void nothingIsClipped();
    void ringFollowsTheKeyboardOnly();
    void statusColoursTextAndBar();
    void enterLogsIn();
    void headerDragsAWindowWithoutFrame();
    void textsAreReadable();

private:
    void showPage(int page) const;
    void checkShown(const QByteArray &page) const;
};

void FormTest::init()
{
    WindowFixture::init();
    startLoggedIn({"Examplia-1", kLongName});
    showPage(kLoginPage);
    QVERIFY(QTest::qWaitForWindowActive(m_window));
}

void FormTest::showPage(int page) const
{
    find<QStackedWidget>("stack")->setCurrentWidget(find(page == kLoginPage ? "pageLogin" : "pageMain"));
    find<KvRetinaTabBar>("tab")->setCurrentIndex(qMax(page, 0));
    find(page == kLoginPage ? "edUser" : "tab")->setFocus();
}

void FormTest::everyControlHasANameForScreenReaders()
{
    const auto controls =
        m_window->findChildren<QWidget *>(QRegularExpression("^((pb|cb|rb|cm|ed|pg).*|tab|tbPing)$"));
    QVERIFY(controls.size() > 40);
    for (QWidget *control : controls) {
        QAccessibleInterface *face = QAccessible::queryAccessibleInterface(control);
        QVERIFY2(face && !face->text(QAccessible::Name).isEmpty(), qPrintable(control->objectName()));
    }
}

/// Also at two pixels a point.
void FormTest::everyStateHasItsPicture()
{
    QStringList families;
    for (int tab = 0; tab < 5; ++tab) {
        families << find<KvRetinaTabBar>("tab")->tabData(tab).toString();
    }
    for (const QAbstractButton *button : m_window->findChildren<QAbstractButton *>()) {
        const QString family = button->property("images").toString();
        families << family << (button->isCheckable() ? family.arg("checked_%1") : family);
    }
    families.removeAll(QString()); // of the scroll bars and the like
    QVERIFY(families.removeDuplicates() > 0 && families.size() >= 32);
    for (const QString &family : qAsConst(families)) {
        QList<QImage> seen;
        for (const char *state : {"release", "press", "hover", "disable"}) {
            const QPixmap once = loadPicture(family.arg(QLatin1String(state)), 1);
            QVERIFY2(!once.isNull() && !seen.contains(once.toImage()), qPrintable(family));
            COMPARE_CASE(family.toUtf8(), loadPicture(family.arg(QLatin1String(state)), 2).size(), once.size() * 2);
            seen << once.toImage();
        }
    }
    for (const char *name :
         {"images/icon_status_connect_disconnected", "images/icon_status_connect_connected", "img/connect",
          "img/connectc", "img/reconnect", "img/reconnectc", "img/disconnect", "img/disconnectc", "img/changeuser",
          "img/settings", "img/proxy", "img/close", "img/korvan", "img/tray.disconnect", "img/macnotify"}) {
        const QString path = QString(":/%1.png").arg(name);
        QVERIFY2(!loadPicture(path, 1).isNull(), name);
        COMPARE_CASE(name, loadPicture(path, 2).size(), 2 * loadPicture(path, 1).size());
    }
}

void FormTest::tabKeyWalksInReadingOrder()
{
    const std::pair<int, const char *> pages[] = {
        {kLoginPage, "edUser edPass cbRember pbLogin pbExist"},
        {0, "tab cmProto cmServer pbConnect pbReconnect pbChangeUser pbUpAccount pbFAQ pbHelpSupport pbResetStat"},
        {1, "tab edLog pbCopyLog"},
        {2, "tab cbConnectOnBoot cmBootServer cbHideConnection cbLockDown cbNoSound cmUpdate pbUpdate pbUpApp "
            "pbReset pbSave"},
        {3, "tab rbNone edProxyAddr edProxyPort cbProxyAuth edProxyUser edProxyPass pbSaveProxy"},
        {4, "tab tbPing pbPingAll pbPingDet pbSpeedTest pbTestCancel"}};
    for (QWidget *control : m_window->findChildren<QWidget *>()) {
        control->setEnabled(true);
    }
    for (const auto &[page, controls] : pages) {
        showPage(page);
        QStringList walked;
        const QWidget *start = m_window->focusWidget();
        do {
            walked << m_window->focusWidget()->objectName();
            QTest::keyClick(m_window->focusWidget(), Qt::Key_Tab);
        } while (m_window->focusWidget() != start && walked.size() < 50);
        QCOMPARE(walked.join(' '), QLatin1String(controls) + " pbHelp pbMinimize pbClose");
    }
}

void FormTest::checkShown(const QByteArray &page) const
{
    QTest::qWait(0);
    for (const QWidget *widget :
         m_window->findChildren<QWidget *>(QRegularExpression("^(pb|cb|rb|cm|ed|lb|pg|tab)"))) {
        if (!widget->isVisible()) {
            continue;
        }
        const auto *box = qobject_cast<const ElidingComboBox *>(widget);
        const auto *label = qobject_cast<const QLabel *>(widget);
        const QSize least = widget->minimumSizeHint();
        const bool isWhole =
            widget->parentWidget()->rect().contains(widget->geometry()) &&
            widget->size().expandedTo(least) == widget->size() && (!box || !box->isShortened()) &&
            (!label || label->wordWrap() || label->width() >= label->fontMetrics().horizontalAdvance(label->text()));
        QVERIFY2(isWhole, (page + ": " + widget->objectName().toUtf8()).constData());
    }
}

void FormTest::nothingIsClipped()
{
    for (const char *list : {"cmServer", "cmBootServer"}) {
        combo(list)->setCurrentText(kLongName);
    }
    find<QLabel>("lbExpired")->setText("Dec 31 23:59:59 2027");
    for (const char *total : {"lbTotalRecv", "lbTotalSend", "lbTotalRD", "lbTotalSD"}) {
        find<QLabel>(total)->setText("48213MB");
    }
    checkShown("login");
    for (const KORVANSTATUS status : {STATUS_READY, STATUS_CONNECTING, STATUS_CONNECTED}) {
        m_window->setStatus(status);
        showPage(0);
        for (const char *address : {"lbServerIP", "lbPublicIP"}) {
            find<QLabel>(address)->setText("203.0.113.121");
        }
        checkShown("status " + QByteArray::number(status));
    }
    for (int page = 1; page < 5; ++page) {
        showPage(page);
        checkShown("page " + QByteArray::number(page));
    }
}

void FormTest::ringFollowsTheKeyboardOnly()
{
    const auto ringIsAround = [this](const char *name) {
        const auto *ring = m_window->findChild<FocusRing *>();
        return ring && ring->isVisible() &&
               ring->geometry().contains(QRect(find(name)->mapTo(m_window, {}), find(name)->size()));
    };
    QVERIFY(ringIsAround("edUser"));
    QTest::mouseClick(find("edPass"), Qt::LeftButton);
    QVERIFY(ringIsAround("edPass"));
    QTest::keyClick(find("edPass"), Qt::Key_Tab);
    QVERIFY(ringIsAround("cbRember"));
    QTest::mouseClick(find("cbRember"), Qt::LeftButton);
    QVERIFY(!m_window->findChild<FocusRing *>()->isVisible());

    showPage(0);
    auto *tab = find<KvRetinaTabBar>("tab");
    for (const auto &[key, index] : {std::pair(Qt::Key_Left, 0), std::pair(Qt::Key_Right, 1),
                                     std::pair(Qt::Key_Right, 2), std::pair(Qt::Key_Left, 1)}) {
        QTest::keyClick(tab, key);
        QCOMPARE(tab->currentIndex(), index);
        const QRect ring = m_window->findChild<FocusRing *>()->geometry();
        QVERIFY(tab->tabRect(index).translated(tab->mapTo(m_window, {})).contains(ring));
    }
}

void FormTest::statusColoursTextAndBar()
{
    showPage(0);
    for (const auto &[status, text, bar] : {std::tuple(STATUS_CONNECTING, palette::kInk, palette::kAction),
                                            std::tuple(STATUS_CONNECTED, palette::kConnected, palette::kConnected),
                                            // The bar is still full, but nothing is connected.
                                            std::tuple(STATUS_RECONNECTING, palette::kInk, palette::kAction)}) {
        m_window->setStatus(status);
        if (status == STATUS_CONNECTING) {
            find<QProgressBar>("pgLinkState")->setValue(34);
        }
        QCOMPARE(find("lbStatusT")->palette().color(QPalette::WindowText).rgb(), text);
        QCOMPARE(find("pgLinkState")->grab().toImage().pixelColor(10, 3).rgb(), bar);
    }
}

void FormTest::enterLogsIn()
{
    button("pbLogin")->disconnect();
    int logins = 0;
    connect(button("pbLogin"), &QAbstractButton::clicked, [&logins] { ++logins; });
    for (const bool enabled : {true, false}) {
        button("pbLogin")->setEnabled(enabled);
        QTest::keyClick(find("edUser"), Qt::Key_Return);
        QTest::keyClick(find("edPass"), Qt::Key_Return);
        QCOMPARE(logins, 2);
    }
}

/// Without a window manager the header moves the window itself.
void FormTest::headerDragsAWindowWithoutFrame()
{
    QVERIFY(m_window->windowFlags().testFlag(Qt::FramelessWindowHint));
    auto *header = m_window->findChild<WindowHeader *>();
    const QPoint before = m_window->pos();
    const auto moved = [&](const QPoint &place) {
        QMouseEvent move(QEvent::MouseMove, place, header->mapToGlobal(place), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(header, &move);
        return m_window->pos() - before;
    };
    QTest::mousePress(header, Qt::LeftButton, Qt::NoModifier, QPoint(300, 20));
    QCOMPARE(moved(QPoint(340, 45)), QPoint(40, 25));
    QTest::mouseRelease(header, Qt::LeftButton);
    QCOMPARE(moved(QPoint(10, 10)), QPoint(40, 25));
}

/// The contrast of two colours as WCAG 2 defines it.
static double contrast(QRgb a, QRgb b)
{
    const auto luminance = [](QRgb colour) {
        const auto part = [](int value) {
            const double share = value / 255.0;
            return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * part(qRed(colour)) + 0.7152 * part(qGreen(colour)) + 0.0722 * part(qBlue(colour));
    };
    const auto [dark, light] = std::minmax({luminance(a), luminance(b)});
    return (light + 0.05) / (dark + 0.05);
}

void FormTest::textsAreReadable()
{
    using namespace palette;
    for (const auto &[text, ground] :
         {std::pair(kBody, kPaper), std::pair(kBody, kActionSoft), std::pair(kAction, kWhite),
          std::pair(kDisabled, kInk), std::pair(kWhite, kAction), std::pair(kWhite, kDanger),
          std::pair(kConnected, kWhite)}) {
        QVERIFY2(contrast(text, ground) >= 4.5, qPrintable(QString("%1 on %2").arg(text, 0, 16).arg(ground, 0, 16)));
    }
}

WINDOW_TEST_MAIN(FormTest)
#include "FormTest.moc"
