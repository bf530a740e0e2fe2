#pragma once

#include <QRgb>

/// The colours of the whole look. The painter, the widgets and the style sheet (as "@ink" and so on) take them here.
namespace palette {

constexpr QRgb kInk = 0xff101828;
constexpr QRgb kBody = 0xff475467;
constexpr QRgb kLine = 0xffd0d5dd;
constexpr QRgb kSoftLine = 0xffeaecf0;
constexpr QRgb kPaper = 0xfff8fafc;
constexpr QRgb kWhite = 0xffffffff;
constexpr QRgb kAction = 0xff2457d6;
constexpr QRgb kConnected = 0xff067647;
constexpr QRgb kConnectedSoft = 0xffecfdf3;
constexpr QRgb kDanger = 0xffb42318;
constexpr QRgb kDisabled = 0xff98a2b3;
constexpr QRgb kDisabledBody = 0xffeaecf0;
// Tints of the colours above.
constexpr QRgb kActionHover = 0xff204cb4;
constexpr QRgb kActionPress = 0xff1d4092;
constexpr QRgb kField = 0xfff2f4f7;      ///< a field that can not be used now
constexpr QRgb kActionSoft = 0xffeff4ff; ///< a selected row
constexpr QRgb kHalo = 0xffd3ddf7;       ///< round a field with the focus

struct Named
{
    const char *name;
    QRgb value;
};

/// The names under which the style sheet knows the colours.
constexpr Named kAll[] = {
    {"ink", kInk},
    {"body", kBody},
    {"line", kLine},
    {"softline", kSoftLine},
    {"paper", kPaper},
    {"white", kWhite},
    {"action", kAction},
    {"actionhover", kActionHover},
    {"actionpress", kActionPress},
    {"connected", kConnected},
    {"danger", kDanger},
    {"disabled", kDisabled},
    {"disabledbody", kDisabledBody},
    {"field", kField},
    {"actionsoft", kActionSoft},
};

} // namespace palette
