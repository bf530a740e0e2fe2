#include "ui/Look.h"

#include "ui/KvFocusRing.h"
#include "ui/Palette.h"
#include "ui/StatePicture.h"

#include <QApplication>
#include <QFile>
#include <QFontDatabase>
#include <QIcon>
#include <QStyleFactory>

static void registerSheet()
{
    Q_INIT_RESOURCE(look);
}

namespace {

constexpr int kTextSize = 13;

QString styleSheet()
{
    registerSheet();
    QFile file(QStringLiteral(":/look/korvan.qss"));
    file.open(QIODevice::ReadOnly);
    QString sheet = QString::fromUtf8(file.readAll());
    for (const palette::Named &colour : palette::kAll) {
        sheet.replace(QLatin1Char('@') + QLatin1String(colour.name) + QLatin1Char(';'),
                      QColor(colour.value).name() + QLatin1Char(';'));
    }
    return sheet;
}

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
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setFont(textFont());
    application.setStyleSheet(styleSheet());
    QApplication::setWindowIcon(applicationIcon());
    KvFocusRing::install(application);
}
