#include "ui/Look.h"

#include "ui/KvFocusRing.h"
#include "ui/Mnemonics.h"
#include "ui/News.h"
#include "ui/StatePicture.h"
#include "ui/Theme.h"

#include <QApplication>
#include <QFontDatabase>
#include <QIcon>
#include <QPalette>
#include <QStyleFactory>
#include <QWidget>
#include <QtMath>

static bool s_desktopIsDark = false;

namespace {

constexpr int kTextSize = 13;
constexpr int kLargePart = 112; // of the form: a card or a column, which has room to spare
constexpr qreal kNarrowest = 0.9;
constexpr qreal kLowest = 0.975;

QFont textFont()
{
    const QString inter = QStringLiteral("Inter");
    QFont font = QApplication::font();
    if (QFontDatabase().hasFamily(inter)) {
        font = QFont(inter);
    }
    font.setPixelSize(kTextSize);
    return font;
}

QIcon applicationIcon()
{
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64, 128, 256}) {
        icon.addPixmap(loadPicture(QStringLiteral(":/icon/korvan-%1.png").arg(side), 1));
    }
    return icon;
}

} // namespace

void applyLook(QApplication &application)
{
    s_desktopIsDark = QApplication::palette().color(QPalette::Window).lightness() < 128;
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication::setStyle(styleWithMnemonics(QStyleFactory::create(QStringLiteral("Fusion")), application));
    QApplication::setFont(textFont());
    QApplication::setWindowIcon(applicationIcon());
    KvFocusRing::install(application);
    installNews();
}

bool isDesktopDark()
{
    return s_desktopIsDark;
}

QSize tightened(QWidget *form, const QSize &room)
{
    const qreal width = qBound(kNarrowest, qreal(room.width()) / kWindowSize.width(), qreal(1));
    const qreal height = qBound(kLowest, qreal(room.height()) / kWindowSize.height(), qreal(1));
    for (QWidget *part : form->findChildren<QWidget *>()) {
        if (part->minimumWidth() == part->maximumWidth() && part->minimumWidth() >= kLargePart) {
            part->setFixedWidth(qFloor(part->minimumWidth() * width));
        }
        if (part->minimumHeight() == part->maximumHeight() && part->minimumHeight() >= kLargePart) {
            part->setFixedHeight(qFloor(part->minimumHeight() * height));
        }
    }
    return {qFloor(kWindowSize.width() * width), qFloor(kWindowSize.height() * height)};
}
