#include "ui/Palette.h"
#include "ui/paint/Brush.h"
#include "ui/paint/Pictures.h"

#include <QPainter>

using namespace palette;

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
    painter.setPen(QPen(QColor(kWhite), 2));
    drawGlyph(painter, "shield", QRectF(1, 1, 30, 30), kWhite, 2.4);
    drawShield(painter, QRectF(1, 1, 30, 30), fill);
    drawGlyph(painter, sign, QRectF(7.5, 6.5, 17, 17), kWhite, 3);
}

void drawApplication(QPainter &painter, qreal side)
{
    drawBox(painter, QRectF(0, 0, side, side), side * 0.25, kAction);
    drawShield(painter, QRectF(side * 0.1, side * 0.1, side * 0.8, side * 0.8), kWhite);
}

// A white sign on a coloured disc, for message boxes.
void drawNotice(QPainter &painter, const QColor &disc, const char *sign)
{
    drawDisc(painter, QRectF(0, 0, 40, 40), disc);
    drawGlyph(painter, sign, QRectF(8, 8, 24, 24), kWhite, 2.6);
}

// Where the desktop keeps the programs that start with the session: its list, with Korvan ticked.
void drawInstruction(QPainter &painter)
{
    painter.fillRect(QRectF(0, 0, 480, 300), QColor(kPaper));
    drawBox(painter, QRectF(60, 30, 360, 240), 10, kWhite, kLine);
    drawBox(painter, QRectF(84, 52, 120, 10), 5, kBody);
    for (int row = 0; row < 4; ++row) {
        const qreal top = 82 + 44 * row;
        const bool own = row == 1;
        if (own) {
            drawBox(painter, QRectF(76, top, 328, 40), 8, kActionSoft, kAction);
        }
        painter.save();
        painter.translate(88, top + 8);
        if (own) {
            drawApplication(painter, 24);
        } else {
            drawBox(painter, QRectF(0, 0, 24, 24), 6, kSoftLine);
        }
        painter.restore();
        drawBox(painter, QRectF(124, top + 15, own ? 96 : 140 - 20 * row, 10), 5, own ? QColor(kInk) : QColor(kLine));
        drawBox(painter, QRectF(352, top + 10, 36, 20), 10, own ? kAction : kLine);
        drawDisc(painter, QRectF(own ? 371 : 355, top + 13, 14, 14), kWhite);
    }
}

void addMenu(std::vector<Picture> &pictures)
{
    struct Entry
    {
        const char *name;
        const char *sign;
        QRgb colour;
    };
    const Entry entries[] = {
        {"connect", "shieldcheck", kBody},    {"connectc", "shieldcheck", kDisabled},
        {"reconnect", "reload", kBody},       {"reconnectc", "reload", kDisabled},
        {"disconnect", "shieldcross", kBody}, {"disconnectc", "shieldcross", kDisabled},
        {"changeuser", "user", kBody},        {"settings", "gear", kBody},
        {"proxy", "arrows", kBody},           {"close", "close", kBody},
        {"sort_down", "sortdown", kBody},     {"sort_up", "sortup", kBody},
        {"chevron", "chevron", kBody},        {"chevron_disable", "chevron", kDisabled},
    };
    for (const Entry &entry : entries) {
        pictures.push_back({QStringLiteral("img/") + QLatin1String(entry.name), 16, 16, [entry](QPainter &painter) {
                                drawGlyph(painter, entry.sign, QRectF(0.5, 0.5, 15, 15), entry.colour, 1.5);
                            }});
    }
}

} // namespace

std::vector<Picture> iconPictures()
{
    std::vector<Picture> pictures{
        {QStringLiteral("images/icon_status_connect_disconnected"), 104, 104,
         [](QPainter &painter) { drawStatus(painter, kField, kSoftLine, "shieldopen", kBody); }},
        {QStringLiteral("images/icon_status_connect_connected"), 104, 104,
         [](QPainter &painter) { drawStatus(painter, kConnectedSoft, kConnected, "shieldcheck", kWhite); }},
        {QStringLiteral("img/korvan"), 32, 32, [](QPainter &painter) { drawTray(painter, kConnected, "check"); }},
        {QStringLiteral("img/tray.disconnect"), 32, 32,
         [](QPainter &painter) { drawTray(painter, kBody, "minimize"); }},
        {QStringLiteral("img/macnotify"), 480, 300, drawInstruction},
        {QStringLiteral("img/notice_information"), 40, 40,
         [](QPainter &painter) { drawNotice(painter, kAction, "information"); }},
        {QStringLiteral("img/notice_question"), 40, 40,
         [](QPainter &painter) { drawNotice(painter, kAction, "help"); }},
        {QStringLiteral("img/notice_warning"), 40, 40,
         [](QPainter &painter) { drawNotice(painter, kBody, "exclamation"); }},
        {QStringLiteral("img/notice_critical"), 40, 40,
         [](QPainter &painter) { drawNotice(painter, kDanger, "close"); }},
    };
    addMenu(pictures);
    for (const int side : {16, 24, 32, 48, 64, 128, 256, 512}) {
        pictures.push_back({QStringLiteral("icon/korvan-%1").arg(side), side, side,
                            [side](QPainter &painter) { drawApplication(painter, side); }});
    }
    return pictures;
}
