#include "ui/KvRetinaButton.h"
#include "ui/KvRetinaCheckBox.h"
#include "ui/StatePicture.h"
#include "ui/TextLine.h"

#include <QPainter>
#include <QTest>

#include <set>

class WidgetsTest : public QObject
{
    Q_OBJECT

private slots:
    void buttonShowsItsState();
    void bodyKeepsItsCorners();
    void checkBoxTogglesByItsText();
    void textLineGivesWayToItsCaption();
};

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
    QVERIFY(box.isChecked() && box.grab().toImage() != clear);
    QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier, QPoint(390, 10));
    QVERIFY2(box.isChecked(), "the blank behind the text is not the box");
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
    for (const auto &[text, isShown] :
         {std::pair("203.0.113.5", true), std::pair("Public IP Address*", false), std::pair("", true)}) {
        line.setText(text); // nothing is shown as a dash
        QVERIFY2(inkIn({0, 0, 60, 34}) && inkIn({160, 0, 134, 34}) == isShown, text);
    }
}

QTEST_MAIN(WidgetsTest)
#include "WidgetsTest.moc"
