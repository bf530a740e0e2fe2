#include "controller/Appearance.h"

#include "common/AppPath.h"
#include "common/StateFile.h"
#include "names/StateFiles.h"
#include "ui/Look.h"
#include "ui/Theme.h"

#include <QApplication>
#include <QDir>

Appearance::Appearance()
{
    const int stored = readWhole(appPath(kThemeFile)).left(1).toInt();
    m_choice = stored == Light || stored == Dark ? static_cast<Choice>(stored) : AsDesktop;
    QObject::connect(&m_desktop, &DesktopColours::changed, &m_desktop, [this] { show(); });
}

void Appearance::choose(Choice choice)
{
    m_choice = choice;
    QDir().mkpath(appPath(kCfgFolder));
    writeWhole(appPath(kThemeFile), QByteArray::number(choice));
    show();
}

bool Appearance::isDarkWanted() const
{
    return m_choice == AsDesktop ? m_desktop.prefersDark().value_or(isDesktopDark()) : m_choice == Dark;
}

void Appearance::show() const
{
    if (isDark() != isDarkWanted() || qApp->styleSheet().isEmpty()) {
        setDark(isDarkWanted());
        showTheme();
    }
}
