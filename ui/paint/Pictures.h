#pragma once

#include "ui/Palette.h"

#include <QString>

#include <functional>
#include <vector>

class QPainter;

/// One picture of the resource: its name without ".png" ("images/button_login_press"), its size in device-independent
/// pixels, and what paints it at that size.
struct Picture
{
    QString name;
    int width;
    int height;
    std::function<void(QPainter &)> paint;
};

/// The bodies of the controls, four or more states each, in the colours of a look.
std::vector<Picture> controlPictures(const Palette &look);

/// Everything that does not change with a control's state: the status shields, the icons of tray, menu, message boxes
/// and application, and the instruction picture.
std::vector<Picture> iconPictures(const Palette &look);
