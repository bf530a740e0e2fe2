#pragma once

#include <QString>
#include <QStringList>

class QWidget;

/// The languages of the window's texts. The log, the messages of the engine and whatever the program itself looks for
/// in a text are English in all of them.
struct Language
{
    const char *code; ///< as the files of languages/ are named
    const char *name; ///< in the language itself
};

inline constexpr Language kLanguages[] = {
    {"en", "English"}, {"de", "Deutsch"},     {"es", "Español"}, {"fr", "Français"},
    {"ru", "Русский"}, {"zh_CN", "简体中文"}, {"fa", "فارسی"},
};

/// The code of the language that the person has chosen; empty for the desktop's.
QString chosenLanguage();

/// Keeps the choice of a code, or of the desktop's language where it is empty, for the next start. False, with a line
/// in the log, where it can not be stored.
bool chooseLanguage(const QString &code);

/// The code of the first of these languages of a desktop ("de-AT", "zh-Hans-CN") that the window speaks; English
/// where it speaks none.
QString languageFor(const QStringList &desktopLanguages);

/// Gives the windows that are made from now on their texts, Qt's own among them, and their reading direction.
void useLanguage(const QString &code);

/// Mirrors the side margins of a form's layouts where one reads from right to left, which Qt leaves where they are.
/// To be called once.
void mirrorMargins(const QWidget &form);

/// Uses the chosen language, else the desktop's. To be called once, before the first window is made.
void applyLanguage();
