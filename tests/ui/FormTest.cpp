#include "tests/window/WindowFixture.h"
#include "ui/FocusRing.h"
#include "ui/Palette.h"
#include "ui/StatePicture.h"

#include <QAccessible>
#include <QButtonGroup>
#include <QDir>
#include <QRegularExpression>

static const QString kLongName = QStringLiteral("Examplia-Long-Distance-Server-Number-040");
static constexpr int kLoginPage = -1;

/// What the form owes to the eye, the keyboard and the screen reader.
class FormTest : public WindowFixture
{
    Q_OBJECT

private slots:
    void init() override
    {
        WindowFixture::init();
        startLoggedIn({"Examplia-1", kLongName});
        showPage(kLoginPage);
        QVERIFY(QTest::qWaitForWindowActive(m_window));
    }

    void everyControlHasANameForScreenReaders()
    {
        const auto controls =
            m_window->findChildren<QWidget *>(QRegularExpression("^((pb|cb|rb|cm|ed|pg).*|tab|tbPing)$"));
        QVERIFY(controls.size() > 40);
        for (QWidget *control : controls) {
            QAccessibleInterface *face = QAccessible::queryAccessibleInterface(control);
            QVERIFY2(face && !face->text(QAccessible::Name).isEmpty(), qPrintable(control->objectName()));
        }
    }

    void everyStateHasItsPicture()
    {
        m_window->findChild<QButtonGroup *>()->setExclusive(false);
        for (auto *button : m_window->findChildren<QAbstractButton *>(QRegularExpression("^(pb|cb|rb)"))) {
            QList<QImage> seen;
            for (int state = 0; state < (button->isCheckable() ? 8 : 4); ++state) {
                button->setChecked(state >= 4);
                button->setAttribute(Qt::WA_UnderMouse, state % 4 == 1);
                button->setDown(state % 4 == 2);
                button->setEnabled(state % 4 != 3);
                const QImage picture = button->grab().toImage();
                QVERIFY2(!seen.contains(picture), qPrintable(button->objectName()));
                seen << picture;
            }
        }
        for (const QString folder : {":/images/", ":/img/"}) {
            const QStringList names = QDir(folder).entryList();
            QVERIFY(names.size() > 20);
            for (QString path : names) { // in either size
                path = folder + path.remove("@2x");
                COMPARE_CASE(path.toUtf8(), loadPicture(path, 2).size(), 2 * loadPicture(path, 1).size());
            }
        }
        QVERIFY(!log().contains("no picture"));
    }

    void tabKeyWalksInReadingOrder()
    {
        const std::pair<int, const char *> pages[] = {
            {kLoginPage, "edUser edPass cbRember pbLogin pbExist"},
            {0,
             "tab cmProto cmServer pbConnect pbReconnect pbChangeUser pbUpAccount pbFAQ pbHelpSupport pbResetStat"},
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

    void nothingIsClipped()
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

    void ringFollowsTheKeyboardOnly()
    {
        const auto *ring = m_window->findChild<FocusRing *>();
        const auto ringIsAround = [this, ring](const char *name) {
            const QRect control(find(name)->mapTo(m_window, {}), find(name)->size());
            return ring->isVisible() && ring->geometry().contains(control);
        };
        QVERIFY(ringIsAround("edUser"));
        QTest::mouseClick(find("edPass"), Qt::LeftButton);
        QVERIFY(ringIsAround("edPass"));
        QTest::keyClick(find("edPass"), Qt::Key_Tab);
        QVERIFY(ringIsAround("cbRember"));
        QTest::mouseClick(find("cbRember"), Qt::LeftButton);
        QVERIFY(button("cbRember")->isChecked() && !ring->isVisible());
        find("cbRember")->resize(400, 22);
        QTest::mouseClick(find("cbRember"), Qt::LeftButton, {}, QPoint(390, 10));
        QVERIFY2(button("cbRember")->isChecked(), "the blank behind the text is not the box");

        showPage(0);
        auto *tab = find<KvRetinaTabBar>("tab");
        QTest::keyClick(tab, Qt::Key_Right);
        QVERIFY(tab->tabRect(1).translated(tab->mapTo(m_window, {})).contains(ring->geometry()));
        QTest::keyClick(tab, Qt::Key_Left);
        QTest::keyClick(tab, Qt::Key_Left);
        QCOMPARE(tab->currentIndex(), 0);
    }

    /// However full the bar is.
    void statusColoursTextAndBar()
    {
        showPage(0);
        for (const auto &[status, text, bar] :
             {std::tuple(STATUS_CONNECTING, palette::kInk, palette::kAction),
              std::tuple(STATUS_CONNECTED, palette::kConnected, palette::kConnected),
              std::tuple(STATUS_RECONNECTING, palette::kInk, palette::kAction)}) {
            m_window->setStatus(status);
            find<QProgressBar>("pgLinkState")->setValue(100);
            QCOMPARE(find("lbStatusT")->palette().color(QPalette::WindowText).rgb(), text);
            QCOMPARE(find("pgLinkState")->grab().toImage().pixelColor(10, 3).rgb(), bar);
        }
    }

    void enterLogsIn()
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
    void headerDragsAWindowWithoutFrame()
    {
        QVERIFY(m_window->windowFlags().testFlag(Qt::FramelessWindowHint));
        auto *header = m_window->findChild<WindowHeader *>();
        const QPoint before = m_window->pos();
        QTest::mousePress(header, Qt::LeftButton, {}, QPoint(300, 20));
        for (const QPoint &place : {QPoint(340, 45), QPoint(10, 10)}) { // the second one after the release
            QMouseEvent move(QEvent::MouseMove, place, header->mapToGlobal(place), Qt::NoButton, Qt::LeftButton, {});
            QApplication::sendEvent(header, &move);
            QTest::mouseRelease(header, Qt::LeftButton);
            QCOMPARE(m_window->pos() - before, QPoint(40, 25));
        }
    }

private:
    void showPage(int page) const
    {
        find<QStackedWidget>("stack")->setCurrentWidget(find(page == kLoginPage ? "pageLogin" : "pageMain"));
        find<KvRetinaTabBar>("tab")->setCurrentIndex(qMax(page, 0));
        find(page == kLoginPage ? "edUser" : "tab")->setFocus();
    }

    void checkShown(const QByteArray &page) const
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
            const bool isWhole = widget->parentWidget()->rect().contains(widget->geometry()) &&
                                 widget->size().expandedTo(least) == widget->size() &&
                                 (!box || !box->isShortened()) &&
                                 (!label || label->wordWrap() ||
                                  label->width() >= label->fontMetrics().horizontalAdvance(label->text()));
            QVERIFY2(isWhole, (page + ": " + widget->objectName().toUtf8()).constData());
        }
    }
};

QTEST_MAIN(FormTest)
#include "FormTest.moc"
