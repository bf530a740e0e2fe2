#include "ui/Theme.h"

#include <QApplication>
#include <QFile>
#include <QPalette>

static void registerSheet()
{
    Q_INIT_RESOURCE(look);
}

static bool s_dark = false;

const Palette &colours()
{
    return s_dark ? kDarkPalette : kLightPalette;
}

bool isDark()
{
    return s_dark;
}

void setDark(bool dark)
{
    s_dark = dark;
}

QString themedPicture(const QString &resource)
{
    // The program's own sign is the same in both.
    return s_dark && !resource.startsWith(QLatin1String(":/icon/")) ? QLatin1String(":/dark") + resource.mid(1)
                                                                    : resource;
}

static QString styleSheet()
{
    registerSheet();
    QFile file(QStringLiteral(":/look/korvan.qss"));
    file.open(QIODevice::ReadOnly);
    QString sheet = QString::fromUtf8(file.readAll());
    for (const Role &role : kRoles) {
        sheet.replace(QLatin1Char('@') + QLatin1String(role.name) + QLatin1Char(';'),
                      QColor(colours().*role.value).name() + QLatin1Char(';'));
    }
    return sheet.replace(QLatin1String("url(:/"), QLatin1String("url(") + themedPicture(QStringLiteral(":/")));
}

/// For what the style sheet does not reach.
static QPalette qtPalette()
{
    const Palette &now = colours();
    QPalette palette(QColor(now.card), QColor(now.paper));
    palette.setColor(QPalette::WindowText, now.ink);
    palette.setColor(QPalette::Base, now.card);
    palette.setColor(QPalette::Text, now.ink);
    palette.setColor(QPalette::ButtonText, now.ink);
    palette.setColor(QPalette::Highlight, now.action);
    palette.setColor(QPalette::HighlightedText, now.onAction);
    palette.setColor(QPalette::Link, now.link);
    palette.setColor(QPalette::ToolTipBase, now.tip);
    palette.setColor(QPalette::ToolTipText, kDarkPalette.ink);
    palette.setColor(QPalette::PlaceholderText, now.disabled);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, now.disabled);
    }
    return palette;
}

void showTheme()
{
    QApplication::setPalette(qtPalette());
    qApp->setStyleSheet(styleSheet());
}
