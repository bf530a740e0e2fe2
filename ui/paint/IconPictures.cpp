#include "ui/Palette.h"
#include "ui/paint/Brush.h"
#include "ui/paint/Pictures.h"

#include <QPainter>

namespace {

// The large shield of the dashboard.
void drawStatus(QPainter &painter, const QColor &halo, const QColor &disc, const char *sign, const QColor &pen)
{
    drawDisc(painter, QRectF(0, 0, 104, 104), halo);
    drawDisc(painter, QRectF(12, 12, 80, 80), disc);
    drawGlyph(painter, sign, QRectF(29, 29, 46, 46), pen, 3.6);
}

// The tray shield. A thin light rim keeps it visible on dark panels.
void drawTray(QPainter &painter, const QColor &fill, const char *sign)
{
    drawGlyph(painter, "shield", QRectF(1, 1, 30, 30), kLightPalette.onAction, 2.4);
    drawShield(painter, QRectF(1, 1, 30, 30), fill);
    drawGlyph(painter, sign, QRectF(7.5, 6.5, 17, 17), kLightPalette.onAction, 3);
}

void drawApplication(QPainter &painter, qreal side)
{
    drawBox(painter, QRectF(0, 0, side, side), side * 0.25, kLightPalette.action);
    drawShield(painter, QRectF(side * 0.1, side * 0.1, side * 0.8, side * 0.8), kLightPalette.onAction);
}

// A white sign on a coloured disc, for message boxes.
void drawNotice(QPainter &painter, const QColor &disc, const char *sign)
{
    drawDisc(painter, QRectF(0, 0, 40, 40), disc);
    drawGlyph(painter, sign, QRectF(8, 8, 24, 24), kLightPalette.onAction, 2.6);
}

// Where the desktop keeps the programs that start with the session: its list, with Korvan ticked.
void drawInstruction(QPainter &painter, const Palette &look)
{
    painter.fillRect(QRectF(0, 0, 480, 300), QColor(look.paper));
    drawBox(painter, QRectF(60, 30, 360, 240), 10, look.card, look.edge);
    drawBox(painter, QRectF(84, 52, 120, 10), 5, look.body);
    for (int row = 0; row < 4; ++row) {
        const qreal top = 82 + 44 * row;
        const bool own = row == 1;
        if (own) {
            drawBox(painter, QRectF(76, top, 328, 40), 8, look.actionSoft, look.link);
        }
        painter.save();
        painter.translate(88, top + 8);
        if (own) {
            drawApplication(painter, 24);
        } else {
            drawBox(painter, QRectF(0, 0, 24, 24), 6, look.softLine);
        }
        painter.restore();
        drawBox(painter, QRectF(124, top + 15, own ? 96 : 140 - 20 * row, 10), 5,
                own ? QColor(look.ink) : QColor(look.edge));
        drawBox(painter, QRectF(352, top + 10, 36, 20), 10, own ? look.link : look.edge);
        drawDisc(painter, QRectF(own ? 371 : 355, top + 13, 14, 14), look.card);
    }
}

void addMenu(std::vector<Picture> &pictures, const Palette &look)
{
    struct Entry
    {
        const char *name;
        const char *sign;
        QRgb colour;
    };
    const Entry entries[] = {
        {"connect", "shieldcheck", look.body},    {"connectc", "shieldcheck", look.disabled},
        {"reconnect", "reload", look.body},       {"reconnectc", "reload", look.disabled},
        {"disconnect", "shieldcross", look.body}, {"disconnectc", "shieldcross", look.disabled},
        {"changeuser", "user", look.body},        {"settings", "gear", look.body},
        {"proxy", "arrows", look.body},           {"close", "close", look.body},
        {"sort_down", "sortdown", look.body},     {"sort_up", "sortup", look.body},
        {"chevron", "chevron", look.body},        {"chevron_disable", "chevron", look.disabled},
    };
    for (const Entry &entry : entries) {
        pictures.push_back({QStringLiteral("img/") + QLatin1String(entry.name), 16, 16, [entry](QPainter &painter) {
                                drawGlyph(painter, entry.sign, QRectF(0.5, 0.5, 15, 15), entry.colour, 1.5);
                            }});
    }
}

} // namespace

std::vector<Picture> iconPictures(const Palette &look)
{
    std::vector<Picture> pictures{
        {QStringLiteral("images/icon_status_connect_disconnected"), 104, 104,
         [look](QPainter &painter) { drawStatus(painter, look.field, look.softLine, "shieldopen", look.body); }},
        {QStringLiteral("images/icon_status_connect_connected"), 104, 104,
         [look](QPainter &painter) {
             drawStatus(painter, look.connectedSoft, look.connected, "shieldcheck", look.onAction);
         }},
        {QStringLiteral("img/korvan"), 32, 32,
         [](QPainter &painter) { drawTray(painter, kLightPalette.connected, "check"); }},
        {QStringLiteral("img/tray.disconnect"), 32, 32,
         [](QPainter &painter) { drawTray(painter, kLightPalette.body, "minimize"); }},
        {QStringLiteral("img/macnotify"), 480, 300, [look](QPainter &painter) { drawInstruction(painter, look); }},
        {QStringLiteral("img/notice_information"), 40, 40,
         [](QPainter &painter) { drawNotice(painter, kLightPalette.action, "information"); }},
        {QStringLiteral("img/notice_question"), 40, 40,
         [](QPainter &painter) { drawNotice(painter, kLightPalette.action, "help"); }},
        {QStringLiteral("img/notice_warning"), 40, 40,
         [](QPainter &painter) { drawNotice(painter, kLightPalette.body, "exclamation"); }},
        {QStringLiteral("img/notice_critical"), 40, 40,
         [look](QPainter &painter) { drawNotice(painter, look.danger, "close"); }},
    };
    addMenu(pictures, look);
    for (const int side : {16, 24, 32, 48, 64, 128, 256, 512}) {
        pictures.push_back({QStringLiteral("icon/korvan-%1").arg(side), side, side,
                            [side](QPainter &painter) { drawApplication(painter, side); }});
    }
    return pictures;
}
