#include "ui/KvImageBox.h"
#include "ui/KvL2TPBox.h"
#include "ui/KvRetinaButton.h"
#include "ui/KvRetinaCheckBox.h"
#include "ui/KvRetinaLabel.h"
#include "ui/KvRetinaTabBar.h"
#include "ui/StatePicture.h"
#include "ui/TextLine.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include <set>

class WidgetsTest : public QObject
{
    Q_OBJECT

private slots:
    void everyFamilyHasFourDifferentPictures_data();
    void everyFamilyHasFourDifferentPictures();
    void everySinglePictureIsThereTwice_data();
    void everySinglePictureIsThereTwice();
    void buttonShowsItsState();
    void bodyKeepsItsCorners();
    void checkBoxTogglesByItsText();
    void radioBoxesExcludeEachOther();
    void tabBarTellsItsIndex();
    void textLineGivesWayToItsCaption();
    void l2tpBoxKeepsItsShape_data();
    void l2tpBoxKeepsItsShape();
    void l2tpBoxAnswers();
    void imageBoxShowsItsPicture();
};

void WidgetsTest::everyFamilyHasFourDifferentPictures_data()
{
    QTest::addColumn<QString>("pattern");
    for (const char *name : {"login",
                             "useexisting",
                             "column_download",
                             "column_help",
                             "column_close",
                             "help_and_support",
                             "faq",
                             "connect",
                             "disconnect",
                             "reconnect",
                             "reset",
                             "reset_all_statistics",
                             "update",
                             "update_configuration",
                             "refresh",
                             "change_user",
                             "save_options",
                             "ping_all_servers",
                             "detailed_ping",
                             "run_speed_test",
                             "cancel",
                             "save_proxy_settings",
                             "copy_log"}) {
        QTest::newRow(name) << ":/images/button_" + QLatin1String(name) + "_%1.png";
    }
    for (const char *name :
         {"checkbox_remember", "checkbox_remember_checked", "radio", "radio_checked", "top_menu_dashboard",
          "top_menu_vpn_log", "top_menu_settings", "top_menu_proxy_settings", "top_menu_service_status"}) {
        QTest::newRow(name) << ":/images/" + QLatin1String(name) + "_%1.png";
    }
}

void WidgetsTest::everyFamilyHasFourDifferentPictures()
{
    QFETCH(QString, pattern);
    QList<QImage> seen;
    for (const char *state : {"release", "press", "hover", "disable"}) {
        const QImage once = loadPicture(pattern.arg(QLatin1String(state)), 1).toImage();
        const QImage twice = loadPicture(pattern.arg(QLatin1String(state)), 2).toImage();
        QVERIFY2(!once.isNull(), state);
        QVERIFY2(!seen.contains(once), state);
        QCOMPARE(twice.size(), once.size() * 2);
        QCOMPARE(twice.devicePixelRatio(), 2.0);
        seen << once;
    }
}

void WidgetsTest::everySinglePictureIsThereTwice_data()
{
    QTest::addColumn<QString>("resource");
    for (const char *name :
         {"images/icon_status_connect_disconnected", "images/icon_status_connect_connected", "img/connect",
          "img/connectc", "img/reconnect", "img/reconnectc", "img/disconnect", "img/disconnectc", "img/changeuser",
          "img/settings", "img/proxy", "img/close", "img/korvan", "img/tray.disconnect", "img/macnotify"}) {
        QTest::newRow(name) << ":/" + QLatin1String(name) + ".png";
    }
}

void WidgetsTest::everySinglePictureIsThereTwice()
{
    QFETCH(QString, resource);
    const QPixmap once = loadPicture(resource, 1);
    QVERIFY(!once.isNull());
    QCOMPARE(loadPicture(resource, 2).size(), once.size() * 2);
}

void WidgetsTest::buttonShowsItsState()
{
    KvRetinaButton button;
    button.setText(QStringLiteral("Connect"));
    button.setImages(QStringLiteral(":/images/button_connect_%1.png"));
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
    button.setImages(QStringLiteral(":/images/button_reset_%1.png"));
    button.resize(300, 60);
    const QImage shown = button.grab().toImage();
    const QPixmap picture = loadPicture(button.images().arg(QLatin1String("release")), 1);
    QImage natural(picture.size(), shown.format());
    natural.fill(shown.pixelColor(0, 0)); // the window shines through outside the corner
    QPainter(&natural).drawPixmap(0, 0, picture);
    QCOMPARE(shown.copy(0, 0, 8, 8), natural.copy(0, 0, 8, 8));
    QCOMPARE(shown.copy(292, 52, 8, 8), natural.copy(natural.width() - 8, natural.height() - 8, 8, 8));
}

void WidgetsTest::checkBoxTogglesByItsText()
{
    KvRetinaCheckBox box;
    box.setImages(QStringLiteral(":/images/checkbox_remember_%1.png"));
    box.setText(QStringLiteral("Remember login"));
    box.resize(400, 22);
    const QImage clear = box.grab().toImage();
    QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier, QPoint(80, 10));
    QVERIFY(box.isChecked());
    QVERIFY(box.grab().toImage() != clear);
    QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier, QPoint(390, 10));
    QVERIFY2(box.isChecked(), "the blank behind the text is not the box");
}

void WidgetsTest::radioBoxesExcludeEachOther()
{
    QWidget page;
    QVBoxLayout layout(&page);
    KvRetinaCheckBox boxes[2];
    for (KvRetinaCheckBox &box : boxes) {
        box.setAutoExclusive(true);
        layout.addWidget(&box);
    }
    boxes[0].click();
    boxes[1].click();
    QVERIFY(!boxes[0].isChecked() && boxes[1].isChecked());
}

void WidgetsTest::tabBarTellsItsIndex()
{
    KvRetinaTabBar bar;
    for (const char *page : {"dashboard", "vpn_log", "settings"}) {
        bar.addItem(":/images/top_menu_" + QLatin1String(page) + "_%1.png", QLatin1String(page));
    }
    bar.resize(bar.sizeHint());
    QSignalSpy spy(&bar, &KvRetinaTabBar::indexChanged);
    QTest::mouseClick(&bar, Qt::LeftButton, Qt::NoModifier, bar.tabRect(2).center());
    QTest::keyClick(&bar, Qt::Key_Left);
    QTest::keyClick(&bar, Qt::Key_Left);
    QTest::keyClick(&bar, Qt::Key_Left);
    bar.setCurrentIndex(1);
    bar.setCurrentIndex(1);
    QList<int> told;
    for (const auto &arguments : spy) {
        told << arguments.first().toInt();
    }
    QCOMPARE(told, (QList<int>{2, 1, 0, 1}));
    QCOMPARE(bar.currentIndex(), 1);
}

void WidgetsTest::textLineGivesWayToItsCaption()
{
    TextLine line;
    line.setCaption(QStringLiteral("Public IP address"));
    line.resize(294, 34);
    const auto inkIn = [&line](const QRect &part) {
        const QImage image = line.grab(part).toImage();
        const QRgb ground = image.pixel(0, 0);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixel(x, y) != ground) {
                    return true;
                }
            }
        }
        return false;
    };
    const QRect left(0, 0, 60, 34);
    const QRect right(160, 0, 134, 34);
    line.setText(QStringLiteral("203.0.113.5"));
    QVERIFY(inkIn(left) && inkIn(right));
    line.setText(QStringLiteral("Public IP Address*"));
    QVERIFY(inkIn(left) && !inkIn(right));
    line.setText(QString());
    QVERIFY2(inkIn(left) && inkIn(right), "nothing is shown as a dash");
}

void WidgetsTest::l2tpBoxKeepsItsShape_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QRect>("box");
    QTest::newRow("label") << "L2TP Password:" << QRect(10, 10, 101, 21);
    QTest::newRow("edPass") << "" << QRect(122, 10, 121, 22);
    QTest::newRow("ckRem") << "Remember Password" << QRect(10, 40, 231, 20);
    QTest::newRow("btnOK") << "OK" << QRect(30, 70, 81, 21);
    QTest::newRow("btnCancel") << "Cancel" << QRect(140, 70, 81, 21);
}

void WidgetsTest::l2tpBoxKeepsItsShape()
{
    QFETCH(QString, text);
    QFETCH(QRect, box);
    KvL2TPBox dialog(nullptr);
    dialog.show();
    QCOMPARE(dialog.size(), QSize(250, 100));
    const auto *part = dialog.findChild<QWidget *>(QLatin1String(QTest::currentDataTag()));
    QVERIFY(part);
    QCOMPARE(part->property("text").toString(), text);
    QCOMPARE(part->geometry(), box);
}

void WidgetsTest::l2tpBoxAnswers()
{
    KvL2TPBox dialog(nullptr);
    QCOMPARE(dialog.windowTitle(), QStringLiteral("L2TP Password"));
    dialog.show();
    auto *password = dialog.findChild<QLineEdit *>(QStringLiteral("edPass"));
    QCOMPARE(password->echoMode(), QLineEdit::Password);
    QTest::keyClicks(password, QStringLiteral("s3cret"));
    QVERIFY(!dialog.isRemember());
    QTest::mouseClick(dialog.findChild<QCheckBox *>(QStringLiteral("ckRem")), Qt::LeftButton, {}, QPoint(9, 9));
    QVERIFY(dialog.isRemember());
    QTest::keyClick(password, Qt::Key_Return);
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(dialog.password(), QStringLiteral("s3cret"));

    dialog.open();
    QTest::mouseClick(dialog.findChild<QPushButton *>(QStringLiteral("btnCancel")), Qt::LeftButton);
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
}

void WidgetsTest::imageBoxShowsItsPicture()
{
    KvImageBox box(QStringLiteral(":/img/macnotify.png"), QStringLiteral("Korvan Help"), nullptr);
    box.show();
    QCOMPARE(box.windowTitle(), QStringLiteral("Korvan Help"));
    const auto *image = box.findChild<KvRetinaLabel *>();
    QCOMPARE(image->picture(), QStringLiteral(":/img/macnotify.png"));
    QCOMPARE(image->size(), loadPicture(image->picture(), 1).size());
    QTest::mouseClick(box.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Close), Qt::LeftButton);
    QVERIFY(!box.isVisible());
}

QTEST_MAIN(WidgetsTest)
#include "WidgetsTest.moc"
