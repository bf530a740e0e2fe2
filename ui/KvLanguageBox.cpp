#include "ui/KvLanguageBox.h"

#include "ui/Language.h"

KvLanguageBox::KvLanguageBox(QWidget *parent) : KvElidingComboBox(parent)
{
    QStringList names{tr("As the desktop")};
    QStringList codes{QString()};
    for (const Language &language : kLanguages) {
        names += QString::fromUtf8(language.name);
        codes += QLatin1String(language.code);
    }
    setItems(names, codes);
    setCurrentIndex(codes.indexOf(chosenLanguage()));
    connect(this, qOverload<int>(&QComboBox::activated), this, [this] { chooseLanguage(currentData().toString()); });
}
