#include "ui/Language.h"

#include "common/AppPath.h"
#include "common/StateFile.h"
#include "names/StateFiles.h"

#include <QApplication>
#include <QDir>
#include <QLayout>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <QWidget>

#include <algorithm>
#include <clocale>
#include <iterator>

static void registerLanguages()
{
    Q_INIT_RESOURCE(languages);
}

namespace {

/// Qt's own texts, but only those of widgets: the reasons of its files, processes and sockets go into the log.
class WidgetTexts : public QTranslator
{
public:
    using QTranslator::QTranslator;

    QString translate(const char *context, const char *text, const char *note, int number) const override
    {
        static constexpr const char *kContexts[] = {"QPlatformTheme",     "QDialogButtonBox", "QMessageBox",
                                                    "QWidgetTextControl", "QLineEdit",        "QShortcut",
                                                    "QComboBox",          "QScrollBar",       "QTabBar"};
        const bool isWidget = std::any_of(std::begin(kContexts), std::end(kContexts),
                                          [context](const char *one) { return qstrcmp(one, context) == 0; });
        return isWidget ? QTranslator::translate(context, text, note, number) : QString();
    }
};

bool isSpoken(const QString &code)
{
    return std::any_of(std::begin(kLanguages), std::end(kLanguages),
                       [&code](const Language &one) { return code == QLatin1String(one.code); });
}

} // namespace

QString chosenLanguage()
{
    const QString code = QString::fromLatin1(readWhole(appPath(kLanguageFile)));
    return isSpoken(code) ? code : QString();
}

bool chooseLanguage(const QString &code)
{
    QDir().mkpath(appPath(kCfgFolder));
    return writeWhole(appPath(kLanguageFile), code.toLatin1());
}

QString languageFor(const QStringList &desktopLanguages)
{
    for (const QString &name : desktopLanguages) {
        const QLocale wanted(name);
        for (const Language &one : kLanguages) {
            const QLocale spoken(QLatin1String(one.code));
            if (spoken.language() == wanted.language() && spoken.script() == wanted.script()) {
                return QLatin1String(one.code);
            }
        }
    }
    return QLatin1String(kLanguages[0].code);
}

void useLanguage(const QString &code)
{
    static QTranslator *own = nullptr;
    static QTranslator *qt = nullptr;
    registerLanguages();
    delete own; // takes itself from the application
    delete qt;
    qt = new WidgetTexts(qApp);
    own = new QTranslator(qApp);
    if (qt->load(QLatin1String("qtbase_") + code, QLibraryInfo::location(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(qt);
    }
    if (own->load(code, QStringLiteral(":/languages"))) {
        QCoreApplication::installTranslator(own);
    }
    QGuiApplication::setLayoutDirection(QLocale(code).textDirection());
}

void mirrorMargins(const QWidget &form)
{
    if (!form.isRightToLeft()) {
        return;
    }
    for (QLayout *layout : form.findChildren<QLayout *>()) {
        if (!layout->parentWidget()->isRightToLeft()) {
            continue; // the log's
        }
        const QMargins margins = layout->contentsMargins();
        layout->setContentsMargins(margins.right(), margins.top(), margins.left(), margins.bottom());
    }
}

void applyLanguage()
{
    std::setlocale(LC_MESSAGES, "C"); // the system's reasons, which the log tells
    const QString chosen = chosenLanguage();
    useLanguage(chosen.isEmpty() ? languageFor(QLocale::system().uiLanguages()) : chosen);
}
