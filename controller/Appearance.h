#pragma once

#include "platform/DesktopColours.h"

/// Light or dark: what the person has chosen and "/cfg/theme" keeps, else what the desktop prefers, followed for as
/// long as the window lives.
class Appearance
{
public:
    /// In the order of the choices on the settings page. The file holds the number as a decimal digit.
    enum Choice { AsDesktop, Light, Dark };

    /// Reads the stored choice and asks for the preference.
    Appearance();

    /// Gives all windows, and those that will be made, the colours wanted.
    void show() const;

    Choice choice() const { return m_choice; }

    /// Stores the choice and shows it at once.
    void choose(Choice choice);

private:
    bool isDarkWanted() const;

    DesktopColours m_desktop;
    Choice m_choice = AsDesktop;
};
