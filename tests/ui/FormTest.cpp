#include "tests/window/WindowFixture.h"
#include "ui/KvFocusRing.h"
#include "ui/KvL2TPBox.h"
#include "ui/KvNotice.h"
#include "ui/KvUnaskedBox.h"
#include "ui/Look.h"
#include "ui/Theme.h"

#include <QAccessible>
#include <QMessageBox>
#include <QSignalSpy>

#include <algorithm>
#include <cmath>

static constexpr int kLoginPage = -1;

/// What the form owes to the eye, the keyboard and the screen reader.
class FormTest : public WindowFixture
{
    Q_OBJECT

private slots:
    void init() override
    {
        WindowFixture::init();
        startLoggedIn({"Examplia-Long-Distance-Server-Number-040"});
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    /// The tab key walks in reading order with a visible ring, and a screen reader has a name for every control.
    void keyboardAndScreenReader()
    {
        const char *const pages[] = {
            "edUser edPass cbRember pbLogin pbExist",
            "tab cmProto cmServer pbConnect pbReconnect pbChangeUser pbUpAccount pbFAQ pbHelpSupport pbResetStat",
            "tab edLog pbCopyLog",
            ("tab cbConnectOnBoot cmBootServer cbHideConnection cbLockDown cbNoSound cmTheme cmLanguage cmUpdate "
             "pbUpdate "
             "pbUpApp "
             "pbReset pbSave"),
            "tab rbNone edProxyAddr edProxyPort cbProxyAuth edProxyUser edProxyPass pbSaveProxy",
            "tab tbPing pbPingAll pbPingDet pbSpeedTest pbTestCancel"};
        for (QWidget *control : m_window->findChildren<QWidget *>()) {
            control->setEnabled(true);
        }
        const auto *ring = m_window->findChild<KvFocusRing *>();
        int page = kLoginPage;
        for (const char *controls : pages) {
            showPage(page++);
            QStringList walked;
            const QWidget *start = m_window->focusWidget();
            do {
                QWidget *control = m_window->focusWidget();
                walked << control->objectName();
                const QRect place(control->mapTo(m_window.get(), {}), control->size());
                const QString name = QAccessible::queryAccessibleInterface(control)->text(QAccessible::Name);
                const auto *button = qobject_cast<QAbstractButton *>(control);
                const QString words = button ? button->text().remove('&') : QString();
                QVERIFY2(ring->isVisible() && ring->geometry().intersects(place) && !name.isEmpty() &&
                             name.contains(words, Qt::CaseInsensitive),
                         qPrintable(control->objectName()));
                QTest::keyClick(control, Qt::Key_Tab);
            } while (m_window->focusWidget() != start && walked.size() < 50);
            QCOMPARE(walked.join(' '), QLatin1String(controls) + " pbHelp pbMinimize pbClose");
        }
        QTest::mouseClick(m_window->focusWidget(), Qt::LeftButton);
        QVERIFY2(!ring->isVisible(), "only the keyboard needs it");
        showPage(3);
        QTest::keyClick(m_window->focusWidget(),
                        Qt::Key(button("rbSocks")->text().section('&', 1).at(0).toUpper().unicode()),
                        Qt::AltModifier);
        QTRY_VERIFY2(button("rbSocks")->isChecked(), "every button has a letter");
    }

    /// What a screen reader reads out by itself: notifications, and what gets the focus.
    void news()
    {
        const auto readOut = [this](const char *name) {
            const QAccessibleInterface *label = QAccessible::queryAccessibleInterface(find(name));
            return label->role() == QAccessible::Notification ? label->text(QAccessible::Name) : "nothing";
        };
        m_window->setStatus(STATUS_CONNECTING);
        QCOMPARE(readOut("lbStatusT"), QString("NOT CONNECTED Connecting..."));
        QCOMPARE(readOut("lbSignInHint"), QString("Use the name and password of your subscription."));
        KvNotice notice(find("centralwidget"), find("pageLogin"));
        const std::pair<int, const char *> pages[] = {{0, "pbPortal"}, {kLoginPage, "edUser"}};
        for (const auto &[page, focus] : pages) { // a person may be typing in the field
            showPage(page);
            notice.tell(focus, true, true);
            QCOMPARE(m_window->focusWidget()->objectName() + readOut("lbNotice"), QString(focus) + focus);
            QCOMPARE(find("pbLastProfile")->accessibleDescription(), QString(focus));
        }
        QSignalSpy portal(&notice, &KvNotice::portalWanted);
        QTest::keyClick(find("pbPortal"), Qt::Key_Return);
        QCOMPARE(portal.size(), 1);
    }

    /// A text of two lines once took what all others got.
    void aBoxShowsAllOfItsText()
    {
        for (const QString &informative : {QString(), QString("One\nTwo\nThree")}) {
            QMessageBox box(QMessageBox::Information, "Version", "One\nTwo\nThree\nFour\nFive\nSix\nSeven");
            box.setInformativeText(informative);
            box.show();
            QVERIFY2(box.button(QMessageBox::Ok)->icon().isNull(), "words are enough");
            for (const QLabel *label : box.findChildren<QLabel *>()) {
                const int lines = label->text().count('\n') + 1;
                QVERIFY2(label->text().isEmpty() || label->height() >= lines * label->fontMetrics().height(),
                         qPrintable(label->objectName()));
            }
        }
    }

    /// What is being typed when a box comes is no answer to it; the same key is one after a pause.
    void aBoxThatNobodyAskedFor()
    {
        KvUnaskedBox box(QMessageBox::Critical, "Error", "Text", m_window.get());
        box.setModal(false);
        box.show();
        QVERIFY(QTest::qWaitForWindowActive(&box));
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Escape}) {
            QTest::keyClick(box.button(QMessageBox::Ok), key);
            QVERIFY(box.isVisible());
        }
        QTRY_VERIFY(box.heedsKeys());
        QTest::keyClick(box.button(QMessageBox::Ok), Qt::Key_Space);
        QVERIFY(!box.isVisible());
        QApplication::setActiveWindow(nullptr);
        KvUnaskedBox inBackground(QMessageBox::Critical, "Error", "Text", m_window.get());
        QVERIFY2(inBackground.testAttribute(Qt::WA_ShowWithoutActivating), "another program has the focus");
        boxes.expect("Error", "Text");
        boxes.whileOpen = [this, &inBackground] {
            QVERIFY(QTest::qWaitForWindowExposed(&inBackground));
            QVERIFY2(QGuiApplication::modalWindow() == nullptr, "Qt would have activated it");
            QTest::mouseClick(button("pbChangeUser"), Qt::LeftButton);
            QTest::keyClick(button("pbChangeUser"), Qt::Key_Return);
            QKeyEvent copy(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier); // Qt's, for a screen reader
            QCoreApplication::sendEvent(button("pbChangeUser"), &copy);
        };
        inBackground.exec();
        boxes.whileOpen = nullptr;
        QCOMPARE(page(), QString("pageMain"));
        KvL2TPBox password(nullptr);
        when([&password] { return password.isVisible(); },
             [this, &password] {
                 QVERIFY2(QGuiApplication::modalWindow() == nullptr, "what is typed elsewhere is no password");
                 QTest::mouseClick(button("pbChangeUser"), Qt::LeftButton);
                 password.reject();
             });
        password.exec();
        QCOMPARE(page(), QString("pageMain"));
    }

    /// What can be read has a contrast of 4.5 : 1, what can be seen or is only read again 3 : 1.
    void contrast()
    {
        using P = Palette;
        const std::tuple<double, QRgb P::*, QVector<QRgb P::*>> pairs[] = {
            {4.5, &P::ink, {&P::card, &P::paper, &P::field, &P::actionSoft}},
            {4.5, &P::body, {&P::card, &P::paper, &P::actionSoft}},
            {4.5, &P::link, {&P::card, &P::actionSoft}},
            {4.5, &P::onAction, {&P::action, &P::actionHover, &P::actionPress, &P::danger}},
            {4.5, &P::connectedText, {&P::card}},
            {4.5, &P::dangerText, {&P::card}},
            {4.5, &P::onHeader, {&P::header, &P::tip}},
            {4.5, &P::softOnHeader, {&P::header}},
            {3, &P::edge, {&P::card, &P::paper}},
            {3, &P::ring, {&P::card, &P::paper}},
            {3, &P::action, {&P::card}},
            {3, &P::danger, {&P::card}},
            {3, &P::onAction, {&P::connected}},
            {3, &P::connected, {&P::card}},
            {3, &P::connectedText, {&P::softLine}},
            {3, &P::link, {&P::softLine, &P::paper}},
            {3, &P::disabled, {&P::card, &P::paper, &P::field, &P::disabledBody}}};
        for (const Palette &palette : {kLightPalette, kDarkPalette}) {
            for (const auto &[least, above, grounds] : pairs) {
                for (QRgb P::*ground : grounds) {
                    const double measured = contrastOf(palette.*above, palette.*ground);
                    QVERIFY2(measured >= least,
                             qPrintable(QColor(palette.*above).name() + " on " + QColor(palette.*ground).name() +
                                        QString::number(measured)));
                }
            }
        }
    }

    /// The choice is shown at once, in every picture too, and kept.
    void lightAndDark()
    {
        showPage(2);
        for (const auto &[choice, isLight] :
             {std::pair(Qt::Key_End, false), {Qt::Key_Up, true}, {Qt::Key_Down, false}}) {
            QTest::keyClick(find("cmTheme"), choice);
            const QImage shown = m_window->grab().toImage();
            QCOMPARE(shown.pixelColor(8, 120).lightness() > 128, isLight);
            QCOMPARE(button("pbReset")->grab().toImage().pixelColor(20, 6).lightness() > 128, isLight);
            QVERIFY(!log().contains("no picture"));
        }
        end();
        setDark(false);
        start();
        QVERIFY2(isDark() && combo("cmTheme")->currentIndex() == 2, "kept");
        QTest::keyClick(find("cmTheme"), Qt::Key_Home);
        QVERIFY2(!isDark(), "as the desktop, which tells nothing here");
    }

private:
    /// By the rule of the web's accessibility guidelines.
    static double contrastOf(QRgb one, QRgb other)
    {
        const auto luminance = [](QRgb colour) {
            const auto linear = [](int part) {
                return part <= 10 ? part / 255.0 / 12.92 : std::pow((part / 255.0 + 0.055) / 1.055, 2.4);
            };
            return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) + 0.0722 * linear(qBlue(colour));
        };
        const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
        return (light + 0.05) / (dark + 0.05);
    }

    void showPage(int page) const
    {
        find<QStackedWidget>("stack")->setCurrentWidget(find(page == kLoginPage ? "pageLogin" : "pageMain"));
        find<KvRetinaTabBar>("tab")->setCurrentIndex(qMax(page, 0));
        find(page == kLoginPage ? "edUser" : "tab")->setFocus();
    }
};

QTEST_MAIN(FormTest)
#include "FormTest.moc"
