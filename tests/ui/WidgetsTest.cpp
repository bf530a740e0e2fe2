#include "ui/KvImageBox.h"
#include "ui/KvRetinaButton.h"
#include "ui/KvRetinaCheckBox.h"
#include "ui/KvRetinaLabel.h"
#include "ui/KvRetinaTabBar.h"
#include "ui/StatePicture.h"
#include "ui/TextLine.h"

#include <QDialogButtonBox>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>

#include <set>

class WidgetsTest : public QObject
{
    Q_OBJECT

private slots:
    void everySinglePictureIsThereTwice();
    void buttonShowsItsState();
    void bodyKeepsItsCorners();
    void checkBoxTogglesByItsText();
    void tabBarTellsItsIndex();
    void textLineGivesWayToItsCaption();
    void imageBoxShowsItsPicture();
};

void WidgetsTest::everySinglePictureIsThereTwice()
{
    const QString names = "images/icon_status_connect_disconnected images/icon_status_connect_connected img/connect "
                          "img/connectc img/reconnect img/reconnectc img/disconnect img/disconnectc img/changeuser "
                          "img/settings img/proxy img/close img/korvan img/tray.disconnect img/macnotify";
    for (const QString &name : names.split(' ')) {
        const QPixmap once = loadPicture(":/" + name + ".png", 1);
        QVERIFY2(!once.isNull() && loadPicture(":/" + name + ".png", 2).size() == 2 * once.size(), qPrintable(name));
    }
}

void WidgetsTest::buttonShowsItsState()
{
    KvRetinaButton button;
    button.setText("Connect");
    button.setImages(":/images/button_connect_%1.png");
    button.resize(button.sizeHint());
    const auto middle = [&button] { return button.grab().toImage().pixel(12, 4); };
    std::set<QRgb> seen{middle()};
    button.setAttribute(Qt::WA_UnderMouse);
    seen.insert(middle());
    button.setDown(true);
    seen.insert(middle());
    button.setEnabled(false);
    seen.insert(middle());
    QCOMPARE(seen.size(), size_t(4));
}

void WidgetsTest::bodyKeepsItsCorners()
{
    KvRetinaButton button;
    button.setImages(":/images/button_reset_%1.png");
    button.resize(300, 60);
    const QImage shown = button.grab().toImage();
    const QPixmap picture = loadPicture(button.images().arg("release"), 1);
    QImage natural(picture.size(), shown.format());
    natural.fill(shown.pixelColor(0, 0)); // the window shines through outside the corner
    QPainter(&natural).drawPixmap(0, 0, picture);
    QCOMPARE(shown.copy(0, 0, 8, 8), natural.copy(0, 0, 8, 8));
    QCOMPARE(shown.copy(292, 52, 8, 8), natural.copy(natural.width() - 8, natural.height() - 8, 8, 8));
}

void WidgetsTest::checkBoxTogglesByItsText()
{
    KvRetinaCheckBox box;
    box.setImages(":/images/checkbox_remember_%1.png");
    box.setText("Remember login");
    box.resize(400, 22);
    const QImage clear = box.grab().toImage();
    QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier, QPoint(80, 10));
    QVERIFY(box.isChecked());
    QVERIFY(box.grab().toImage() != clear);
    QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier, QPoint(390, 10));
    QVERIFY2(box.isChecked(), "the blank behind the text is not the box");
}

void WidgetsTest::tabBarTellsItsIndex()
{
    KvRetinaTabBar bar;
    for (const QString page : {"dashboard", "vpn_log", "settings"}) {
        bar.addItem(":/images/top_menu_" + page + "_%1.png", page);
    }
    bar.resize(bar.sizeHint());
    QSignalSpy spy(&bar, &KvRetinaTabBar::indexChanged);
    QTest::mouseClick(&bar, Qt::LeftButton, Qt::NoModifier, bar.tabRect(2).center());
    for (int presses = 0; presses < 3; ++presses) {
        QTest::keyClick(&bar, Qt::Key_Left);
    }
    bar.setCurrentIndex(1);
    bar.setCurrentIndex(1);
    QList<int> told;
    for (const auto &arguments : spy) {
        told << arguments.first().toInt();
    }
    QCOMPARE(told, (QList<int>{2, 1, 0, 1}));
}

void WidgetsTest::textLineGivesWayToItsCaption()
{
    TextLine line;
    line.setCaption("Public IP address");
    line.resize(294, 34);
    const auto inkIn = [&line](const QRect &part) {
        const QImage image = line.grab(part).toImage();
        QImage blank = image.copy();
        blank.fill(image.pixelColor(0, 0));
        return image != blank;
    };
    const QRect left(0, 0, 60, 34);
    const QRect right(160, 0, 134, 34);
    line.setText("203.0.113.5");
    QVERIFY(inkIn(left) && inkIn(right));
    line.setText("Public IP Address*");
    QVERIFY(inkIn(left) && !inkIn(right));
    line.setText(QString());
    QVERIFY2(inkIn(left) && inkIn(right), "nothing is shown as a dash");
}

void WidgetsTest::imageBoxShowsItsPicture()
{
    KvImageBox box(":/img/macnotify.png", "Korvan Help", nullptr);
    box.show();
    const auto *image = box.findChild<KvRetinaLabel *>();
    QCOMPARE(image->size(), loadPicture(":/img/macnotify.png", 1).size());
    QTest::mouseClick(box.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Close), Qt::LeftButton);
    QVERIFY(!box.isVisible());
}

QTEST_MAIN(WidgetsTest)
#include "WidgetsTest.moc"
