#include "tests/support/Cases.h"
#include "tests/window/WindowFixture.h"
#include "ui/ElidingComboBox.h"
#include "ui/FocusRing.h"
#include "ui/Palette.h"
#include "ui/StatePicture.h"
#include "ui/WindowHeader.h"
#include "ui_Korvan.h"

#include <QAccessible>

#include <cmath>

static const QString kLongName = QStringLiteral("Examplia-Long-Distance-Server-Number-040");
static constexpr int kLoginPage = -1;

/// The relative luminance of a colour and the contrast of two, as WCAG 2 defines them.
static double luminance(QRgb colour)
{
    const auto part = [](int value) {
        const double share = value / 255.0;
        return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(qRed(colour)) + 0.7152 * part(qGreen(colour)) + 0.0722 * part(qBlue(colour));
}

static double contrast(QRgb a, QRgb b)
{
    const auto [dark, light] = std::minmax({luminance(a), luminance(b)});
    return (light + 0.05) / (dark + 0.05);
}

/// What the form owes to the eye, the keyboard and the screen reader.
class FormTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_fixture.reset(); }
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
    template <typename Widget> Widget *find(const char *name) const { return m_fixture->find<Widget>(name); }
    void showPage(int page) const;
    void checkShown(const QByteArray &page) const;

    std::unique_ptr<WindowFixture> m_fixture;
    Korvan *m_window = nullptr;
};

void FormTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
    m_window = &m_fixture->startLoggedIn({"Examplia-1", kLongName});
    showPage(kLoginPage);
    QVERIFY(QTest::qWaitForWindowActive(m_window));
}

void FormTest::showPage(int page) const
{
    find<QStackedWidget>("stack")->setCurrentWidget(find<QWidget>(page == kLoginPage ? "pageLogin" : "pageMain"));
    find<KvRetinaTabBar>("tab")->setCurrentIndex(qMax(page, 0));
    find<QWidget>(page == kLoginPage ? "edUser" : "tab")->setFocus();
}

void FormTest::everyControlHasANameForScreenReaders()
{
    const QRegularExpression controlNames("^((pb|cb|rb|cm|ed|pg).*|tab|tbPing)$");
    const auto controls = m_window->findChildren<QWidget *>(controlNames);
    QVERIFY(controls.size() > 40);
    for (QWidget *control : controls) {
        QAccessibleInterface *face = QAccessible::queryAccessibleInterface(control);
        QVERIFY2(face && !face->text(QAccessible::Name).isEmpty(), qPrintable(control->objectName()));
    }
}

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
        {4, "tab tbPing pbPingAll pbPingDet pbSpeedTest pbTestCancel"},
    };
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
    const QRegularExpression names("^(pb|cb|rb|cm|ed|lb|pg|tab)");
    for (const QWidget *widget : m_window->findChildren<QWidget *>(names)) {
        if (!widget->isVisible()) {
            continue;
        }
        const QByteArray name = page + ": " + widget->objectName().toUtf8();
        QVERIFY2(widget->parentWidget()->rect().contains(widget->geometry()), name.constData());
        QVERIFY2(widget->width() >= widget->minimumSizeHint().width(), name.constData());
        QVERIFY2(widget->height() >= widget->minimumSizeHint().height(), name.constData());
        const auto *box = qobject_cast<const ElidingComboBox *>(widget);
        QVERIFY2(box == nullptr || !box->isShortened(), name.constData());
        const auto *label = qobject_cast<const QLabel *>(widget);
        QVERIFY2(label == nullptr || label->wordWrap() || label->text().isEmpty() ||
                     label->width() >= label->fontMetrics().horizontalAdvance(label->text()),
                 name.constData());
    }
}

void FormTest::nothingIsClipped()
{
    for (const char *list : {"cmServer", "cmBootServer"}) {
        find<QComboBox>(list)->setCurrentText(kLongName);
    }
    find<QLabel>("lbExpired")->setText("Dec 31 23:59:59 2027");
    for (const char *total : {"lbTotalRecv", "lbTotalSend", "lbTotalRD", "lbTotalSD"}) {
        find<QLabel>(total)->setText("48213MB");
    }
    checkShown("login");
    const std::pair<const char *, KORVANSTATUS> statuses[] = {
        {"ready", STATUS_READY}, {"connecting", STATUS_CONNECTING}, {"connected", STATUS_CONNECTED}};
    for (const auto &[name, status] : statuses) {
        m_window->setStatus(status);
        showPage(0);
        for (const char *address : {"lbServerIP", "lbPublicIP"}) {
            find<QLabel>(address)->setText("203.0.113.121");
        }
        checkShown(name);
    }
    for (int page = 1; page < 5; ++page) {
        showPage(page);
        checkShown("page " + QByteArray::number(page));
    }
}

void FormTest::ringFollowsTheKeyboardOnly()
{
    const auto ringBox = [this] {
        const auto *ring = m_window->findChild<FocusRing *>();
        return ring && ring->isVisible() ? ring->geometry() : QRect();
    };
    const auto boxOf = [this](const char *name) {
        const auto *control = find<QWidget>(name);
        return QRect(control->mapTo(m_window, QPoint(0, 0)), control->size());
    };
    QVERIFY(ringBox().contains(boxOf("edUser")));
    QTest::mouseClick(find<QWidget>("edPass"), Qt::LeftButton);
    QVERIFY(ringBox().contains(boxOf("edPass")));
    QTest::keyClick(find<QWidget>("edPass"), Qt::Key_Tab);
    QVERIFY(ringBox().contains(boxOf("cbRember")));
    QTest::mouseClick(find<QWidget>("cbRember"), Qt::LeftButton);
    QVERIFY(!ringBox().isValid());

    showPage(0);
    auto *tab = find<KvRetinaTabBar>("tab");
    QTest::keyClick(tab, Qt::Key_Right);
    QVERIFY(tab->tabRect(1).translated(boxOf("tab").topLeft()).contains(ringBox()));
}

void FormTest::statusColoursTextAndBar()
{
    showPage(0);
    const auto textColour = [this] { return find<QLabel>("lbStatusT")->palette().color(QPalette::WindowText).rgb(); };
    const auto barColour = [this] { return find<QWidget>("pgLinkState")->grab().toImage().pixelColor(10, 3).rgb(); };
    m_window->setStatus(STATUS_CONNECTING);
    find<QProgressBar>("pgLinkState")->setValue(34);
    QCOMPARE(textColour(), palette::kInk);
    QCOMPARE(barColour(), palette::kAction);
    m_window->setStatus(STATUS_CONNECTED);
    QCOMPARE(textColour(), palette::kConnected);
    QCOMPARE(barColour(), palette::kConnected);
    m_window->setStatus(STATUS_RECONNECTING); // the bar is still full, but nothing is connected
    QCOMPARE(textColour(), palette::kInk);
    QCOMPARE(barColour(), palette::kAction);
}

void FormTest::enterLogsIn()
{
    auto *button = find<QAbstractButton>("pbLogin");
    button->disconnect();
    int logins = 0;
    connect(button, &QAbstractButton::clicked, [&logins] { ++logins; });
    for (const char *field : {"edUser", "edPass"}) {
        QTest::keyClick(find<QWidget>(field), Qt::Key_Return);
    }
    button->setEnabled(false);
    QTest::keyClick(find<QWidget>("edPass"), Qt::Key_Return);
    QCOMPARE(logins, 2);
}

void FormTest::headerDragsAWindowWithoutFrame()
{
    QVERIFY(m_window->windowFlags().testFlag(Qt::FramelessWindowHint));
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

void FormTest::textsAreReadable()
{
    using namespace palette;
    const struct
    {
        const char *what;
        QRgb text, ground;
    } pairs[] = {
        {"body on paper", kBody, kPaper},           {"body on a selected row", kBody, kActionSoft},
        {"link on white", kAction, kWhite},         {"version in the header", kDisabled, kInk},
        {"primary button", kWhite, kAction},        {"red button", kWhite, kDanger},
        {"connected on white", kConnected, kWhite},
    };
    for (const auto &pair : pairs) {
        QVERIFY2(contrast(pair.text, pair.ground) >= 4.5, pair.what);
    }
}

int main(int argc, char **argv)
{
    return runWindowTest<FormTest>(argc, argv);
}
#include "FormTest.moc"
