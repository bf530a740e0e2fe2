#pragma once

#include <QCoreApplication>
#include <QString>

/// Why something can not be had. The log and the engine tell it in English, the window in the person's language.
struct Refusal
{
    const char *text = nullptr; ///< a text of the translations' context "RootPart", or none
    QString name;               ///< what stands for its %1, where it has one

    bool isEmpty() const { return text == nullptr; }
    QString english() const { return filled(QString::fromUtf8(text)); }
    QString translated() const { return filled(QCoreApplication::translate("RootPart", text)); }

private:
    QString filled(const QString &words) const { return name.isEmpty() ? words : words.arg(name); }
};
