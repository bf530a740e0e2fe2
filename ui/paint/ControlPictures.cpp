#include "ui/Palette.h"
#include "ui/paint/Brush.h"
#include "ui/paint/Pictures.h"

#include <QPainter>

namespace {

struct Shade
{
    QColor fill;
    QColor border;
};

// One kind of button body: how it looks in each of the four states.
struct Body
{
    Shade release;
    Shade hover;
    Shade press;
    Shade disable;
};

// The kinds of bodies in the colours of one look.
struct Bodies
{
    Body primary, red, outline, link, header, headerClose;
};

Body filled(QRgb colour, const Palette &look)
{
    return {{colour, Qt::transparent},
            {mixed(colour, kLightPalette.ink, 0.18), Qt::transparent},
            {mixed(colour, kLightPalette.ink, 0.38), Qt::transparent},
            {look.disabledBody, Qt::transparent}};
}

Bodies bodiesOf(const Palette &look)
{
    Bodies bodies{
        filled(look.action, look),
        filled(look.danger, look),
        {{look.card, look.edge}, {look.field, look.edge}, {look.softLine, look.body}, {look.disabledBody, look.line}},
        // A link has no body until it is touched.
        {{Qt::transparent, Qt::transparent},
         {mixed(look.card, look.action, 0.08), Qt::transparent},
         {mixed(look.card, look.action, 0.18), Qt::transparent},
         {Qt::transparent, Qt::transparent}},
        {{Qt::transparent, Qt::transparent},
         {mixed(look.header, look.onHeader, 0.14), Qt::transparent},
         {mixed(look.header, look.onHeader, 0.26), Qt::transparent},
         {mixed(look.header, look.onHeader, 0.05), Qt::transparent}},
        {}};
    bodies.headerClose = {bodies.header.release, bodies.red.release, bodies.red.press, bodies.header.disable};
    return bodies;
}

struct Button
{
    const char *name;
    Body Bodies::*body;
    const char *glyph = nullptr;
};

constexpr Button kButtons[] = {
    {"login", &Bodies::primary},
    {"useexisting", &Bodies::outline},
    {"column_download", &Bodies::header, "minimize"},
    {"column_help", &Bodies::header, "help"},
    {"column_close", &Bodies::headerClose, "close"},
    {"help_and_support", &Bodies::link},
    {"faq", &Bodies::link},
    {"connect", &Bodies::primary},
    {"disconnect", &Bodies::red},
    {"reconnect", &Bodies::outline},
    {"reset", &Bodies::outline},
    {"reset_all_statistics", &Bodies::outline},
    {"update", &Bodies::primary},
    {"update_configuration", &Bodies::outline},
    {"refresh", &Bodies::link},
    {"change_user", &Bodies::link},
    {"save_options", &Bodies::primary},
    {"ping_all_servers", &Bodies::outline},
    {"detailed_ping", &Bodies::outline},
    {"run_speed_test", &Bodies::outline},
    {"cancel", &Bodies::outline},
    {"save_proxy_settings", &Bodies::primary},
    {"copy_log", &Bodies::outline},
};

struct State
{
    const char *name;
    Shade Body::*shade;
};

constexpr State kStates[] = {
    {"release", &Body::release}, {"hover", &Body::hover}, {"press", &Body::press}, {"disable", &Body::disable}};

QString fileName(const char *kind, const char *family, const char *state)
{
    return QStringLiteral("images/%1%2_%3").arg(QLatin1String(kind), QLatin1String(family), QLatin1String(state));
}

void addButtons(std::vector<Picture> &pictures, const Palette &look)
{
    const Bodies bodies = bodiesOf(look);
    for (const Button &button : kButtons) {
        const int side = button.glyph ? 32 : 24;
        for (const State &state : kStates) {
            const Shade shade = bodies.*button.body.*state.shade;
            const QColor glyphColour = state.shade == &Body::disable ? kLightPalette.body : look.onHeader;
            const char *sign = button.glyph;
            pictures.push_back({fileName("button_", button.name, state.name), side, side, [=](QPainter &painter) {
                                    drawBox(painter, QRectF(0, 0, side, side), 8, shade.fill, shade.border);
                                    if (sign) {
                                        drawGlyph(painter, sign, QRectF(8, 8, 16, 16), glyphColour, 1.4);
                                    }
                                }});
        }
    }
}

// The mark of a check box (square) or radio box (round), 18 x 18.
void drawMark(QPainter &painter, bool round, const Shade &shade, const QColor &sign)
{
    const QRectF box(0, 0, 18, 18);
    drawBox(painter, box, round ? 9 : 5, shade.fill, shade.border);
    if (sign.alpha() == 0) {
        return;
    }
    if (round) {
        drawDisc(painter, QRectF(5.5, 5.5, 7, 7), sign);
    } else {
        drawGlyph(painter, "check", QRectF(3.5, 3.5, 11, 11), sign, 1.4);
    }
}

void addMarks(std::vector<Picture> &pictures, const Palette &look)
{
    const Body primary = filled(look.action, look);
    struct Mark
    {
        const char *state;
        Shade shade;
        QColor sign;
    };
    const Shade unusable{look.field, look.line};
    const Mark marks[] = {
        {"release", {look.card, look.edge}, Qt::transparent},
        {"hover", {look.actionSoft, look.link}, Qt::transparent},
        {"press", {look.actionSoft, look.ink}, Qt::transparent},
        {"disable", unusable, Qt::transparent},
        {"checked_release", primary.release, look.onAction},
        {"checked_hover", primary.hover, look.onAction},
        {"checked_press", primary.press, look.onAction},
        {"checked_disable", unusable, look.disabled},
    };
    for (const char *family : {"checkbox_remember", "radio"}) {
        const bool round = qstrcmp(family, "radio") == 0;
        for (const Mark &mark : marks) {
            pictures.push_back({fileName("", family, mark.state), 18, 18,
                                [=](QPainter &painter) { drawMark(painter, round, mark.shade, mark.sign); }});
        }
    }
}

// The progress bar: its groove, the part that is done, the part of a bar that is full for good, and the glint that
// runs along it.
void addProgress(std::vector<Picture> &pictures, const Palette &look)
{
    const std::pair<const char *, QColor> parts[] = {{"track", look.softLine},
                                                     {"fill", look.link},
                                                     {"done", look.connectedText},
                                                     {"glint", mixed(kLightPalette.card, look.link, 0.45)}};
    for (const auto &[name, colour] : parts) {
        pictures.push_back({fileName("link_status", "", name), 8, 6,
                            [fill = colour](QPainter &painter) { drawBox(painter, QRectF(0, 0, 8, 6), 3, fill); }});
    }
}

void addTabs(std::vector<Picture> &pictures, const Palette &look)
{
    const std::pair<const char *, const char *> tabs[] = {{"dashboard", "dashboard"},
                                                          {"vpn_log", "lines"},
                                                          {"settings", "gear"},
                                                          {"proxy_settings", "arrows"},
                                                          {"service_status", "activity"}};
    const std::pair<const char *, QRgb> states[] = {
        {"release", look.body}, {"hover", look.ink}, {"press", look.link}, {"disable", look.disabled}};
    for (const auto &[tab, sign] : tabs) {
        for (const auto &[state, colour] : states) {
            pictures.push_back(
                {fileName("top_menu_", tab, state), 16, 16, [name = sign, pen = colour](QPainter &painter) {
                     drawGlyph(painter, name, QRectF(0, 0, 16, 16), pen, 1.6);
                 }});
        }
    }
}

} // namespace

std::vector<Picture> controlPictures(const Palette &look)
{
    std::vector<Picture> pictures;
    addButtons(pictures, look);
    addMarks(pictures, look);
    addProgress(pictures, look);
    addTabs(pictures, look);
    return pictures;
}
