#include "ui/Palette.h"
#include "ui/paint/Brush.h"
#include "ui/paint/Pictures.h"

#include <QPainter>

using namespace palette;

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

const Shade kOff{kDisabledBody, Qt::transparent};

Body filled(QRgb colour)
{
    return {{colour, Qt::transparent},
            {mixed(colour, kInk, 0.18), Qt::transparent},
            {mixed(colour, kInk, 0.38), Qt::transparent},
            kOff};
}

const Body kPrimary = filled(kAction);
const Body kRed = filled(kDanger);
const Body kOutline{{kWhite, kLine}, {kField, kDisabled}, {kSoftLine, kBody}, kOff};
// A link has no body until it is touched.
const Body kLink{{Qt::transparent, Qt::transparent},
                 {mixed(kWhite, kAction, 0.08), Qt::transparent},
                 {mixed(kWhite, kAction, 0.18), Qt::transparent},
                 {kField, Qt::transparent}};
// Buttons of the dark header.
const Body kHeader{{Qt::transparent, Qt::transparent},
                   {mixed(kInk, kWhite, 0.14), Qt::transparent},
                   {mixed(kInk, kWhite, 0.26), Qt::transparent},
                   {mixed(kInk, kWhite, 0.05), Qt::transparent}};
const Body kHeaderClose{kHeader.release, kRed.release, kRed.press, kHeader.disable};

struct Button
{
    const char *name;
    const Body &body;
    const char *glyph = nullptr;
};

const Button kButtons[] = {
    {"login", kPrimary},
    {"useexisting", kOutline},
    {"column_download", kHeader, "minimize"},
    {"column_help", kHeader, "help"},
    {"column_close", kHeaderClose, "close"},
    {"help_and_support", kLink},
    {"faq", kLink},
    {"connect", kPrimary},
    {"disconnect", kRed},
    {"reconnect", kOutline},
    {"reset", kOutline},
    {"reset_all_statistics", kOutline},
    {"update", kPrimary},
    {"update_configuration", kOutline},
    {"refresh", kLink},
    {"change_user", kLink},
    {"save_options", kPrimary},
    {"ping_all_servers", kOutline},
    {"detailed_ping", kOutline},
    {"run_speed_test", kOutline},
    {"cancel", kOutline},
    {"save_proxy_settings", kPrimary},
    {"copy_log", kOutline},
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

void addButtons(std::vector<Picture> &pictures)
{
    for (const Button &button : kButtons) {
        const int side = button.glyph ? 32 : 24;
        for (const State &state : kStates) {
            const Shade shade = button.body.*state.shade;
            const QColor glyphColour = state.shade == &Body::disable ? kBody : kSoftLine;
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

void addMarks(std::vector<Picture> &pictures)
{
    struct Mark
    {
        const char *state;
        Shade shade;
        QColor sign;
    };
    const Mark marks[] = {
        {"release", {kWhite, kDisabled}, Qt::transparent}, {"hover", {kActionSoft, kAction}, Qt::transparent},
        {"press", {kHalo, kAction}, Qt::transparent},      {"disable", {kField, kLine}, Qt::transparent},
        {"checked_release", kPrimary.release, kWhite},     {"checked_hover", kPrimary.hover, kWhite},
        {"checked_press", kPrimary.press, kWhite},         {"checked_disable", {kField, kLine}, kDisabled},
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
void addProgress(std::vector<Picture> &pictures)
{
    const std::pair<const char *, QColor> parts[] = {
        {"track", kSoftLine}, {"fill", kAction}, {"done", kConnected}, {"glint", mixed(kWhite, kAction, 0.45)}};
    for (const auto &[name, colour] : parts) {
        pictures.push_back({fileName("link_status", "", name), 8, 6,
                            [fill = colour](QPainter &painter) { drawBox(painter, QRectF(0, 0, 8, 6), 3, fill); }});
    }
}

void addTabs(std::vector<Picture> &pictures)
{
    const std::pair<const char *, const char *> tabs[] = {{"dashboard", "dashboard"},
                                                          {"vpn_log", "lines"},
                                                          {"settings", "gear"},
                                                          {"proxy_settings", "arrows"},
                                                          {"service_status", "activity"}};
    const std::pair<const char *, QRgb> states[] = {
        {"release", kBody}, {"hover", kInk}, {"press", kAction}, {"disable", kDisabled}};
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

std::vector<Picture> controlPictures()
{
    std::vector<Picture> pictures;
    addButtons(pictures);
    addMarks(pictures);
    addProgress(pictures);
    addTabs(pictures);
    return pictures;
}
