#include "ui/Look.h"

#include "ui/KvFocusRing.h"
#include "ui/StatePicture.h"
#include "ui/Theme.h"

#include <QApplication>
#include <QFontDatabase>
#include <QIcon>
#include <QPalette>
#include <QStyleFactory>

static bool s_desktopIsDark = false;

namespace {

constexpr int kTextSize = 13;

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
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setFont(textFont());
    showTheme();
    QApplication::setWindowIcon(applicationIcon());
    KvFocusRing::install(application);
}

bool isDesktopDark()
{
    return s_desktopIsDark;
}
