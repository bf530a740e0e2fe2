#pragma once

#include <QRgb>

/// The colours of the whole look, by what they are for. The painter, the widgets and the style sheet (as "@ink;" and
/// so on) take them here, so that each look, light or dark, is one row of values.
struct Palette
{
    QRgb ink;          ///< text
    QRgb body;         ///< text that matters less, and signs
    QRgb line;         ///< round a card, which also stands out without it
    QRgb edge;         ///< round what can be used: fields, boxes, buttons
    QRgb softLine;     ///< between the rows of a card
    QRgb paper;        ///< behind the cards
    QRgb card;         ///< behind texts and fields
    QRgb header;       ///< the window's own title bar
    QRgb onHeader;     ///< text on it
    QRgb softOnHeader; ///< text on it that matters less
    QRgb action;       ///< the body of what is to be pressed
    QRgb actionHover;
    QRgb actionPress;
    QRgb onAction;      ///< text on action, connected and danger
    QRgb link;          ///< text that can be pressed, and what is chosen
    QRgb connected;     ///< the body of what says that the tunnel is up
    QRgb connectedText; ///< text that says so
    QRgb connectedSoft; ///< round the former
    QRgb danger;        ///< the body of what ends something
    QRgb dangerText;    ///< text that warns
    QRgb disabled;      ///< text that can not be used now
    QRgb disabledBody;  ///< a button that can not be used now
    QRgb field;         ///< a field that can not be used now
    QRgb actionSoft;    ///< a row that is chosen
    QRgb ring;          ///< round a field with the focus
    QRgb tip;           ///< behind a tool tip
};

constexpr Palette kLightPalette{0xff101828, 0xff475467, 0xffd0d5dd, 0xff858d9d, 0xffeaecf0, 0xfff8fafc, 0xffffffff,
                                0xff101828, 0xffffffff, 0xff98a2b3, 0xff2457d6, 0xff204cb4, 0xff1d4092, 0xffffffff,
                                0xff2457d6, 0xff067647, 0xff067647, 0xffecfdf3, 0xffb42318, 0xffb42318, 0xff6b7486,
                                0xffeaecf0, 0xfff2f4f7, 0xffeff4ff, 0xff6586e8, 0xff101828};

constexpr Palette kDarkPalette{0xfff2f4f7, 0xffb4bdcb, 0xff2b3547, 0xff6b778c, 0xff263042, 0xff0c111d, 0xff161d2b,
                               0xff090d16, 0xfff2f4f7, 0xff98a2b3, 0xff2f62e0, 0xff2a57c8, 0xff244bac, 0xffffffff,
                               0xff84a9ff, 0xff12875a, 0xff47cd89, 0xff0d2e22, 0xffc4321f, 0xfff97066, 0xff7f8aa0,
                               0xff232c3c, 0xff1d2635, 0xff1b2a4d, 0xff4f7de8, 0xff344054};

struct Role
{
    const char *name;
    QRgb Palette::*value;
};

/// The names under which the style sheet knows the colours.
constexpr Role kRoles[] = {
    {"ink", &Palette::ink},
    {"body", &Palette::body},
    {"line", &Palette::line},
    {"edge", &Palette::edge},
    {"softline", &Palette::softLine},
    {"paper", &Palette::paper},
    {"card", &Palette::card},
    {"header", &Palette::header},
    {"onheader", &Palette::onHeader},
    {"softonheader", &Palette::softOnHeader},
    {"action", &Palette::action},
    {"actionhover", &Palette::actionHover},
    {"actionpress", &Palette::actionPress},
    {"onaction", &Palette::onAction},
    {"link", &Palette::link},
    {"connectedtext", &Palette::connectedText},
    {"dangertext", &Palette::dangerText},
    {"disabled", &Palette::disabled},
    {"field", &Palette::field},
    {"actionsoft", &Palette::actionSoft},
    {"tip", &Palette::tip},
};
