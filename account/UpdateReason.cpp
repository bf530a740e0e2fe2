#include "account/UpdateReason.h"

#include <QCoreApplication>
#include <QRegularExpression>

/// With %1 and %2 where a number or a version stands, in this order.
static const char *const kReasons[] = {
    QT_TRANSLATE_NOOP("Korvan", "no data"),
    QT_TRANSLATE_NOOP("Korvan", "the answer has the status %1"),
    QT_TRANSLATE_NOOP("Korvan", "the answer is no archive"),
    QT_TRANSLATE_NOOP("Korvan", "the archive can not be stored"),
    QT_TRANSLATE_NOOP("Korvan", "it can not be checked"),
    QT_TRANSLATE_NOOP("Korvan", "it is not signed"),
    QT_TRANSLATE_NOOP("Korvan", "its signature is damaged"),
    QT_TRANSLATE_NOOP("Korvan", "its signature is not right"),
    QT_TRANSLATE_NOOP("Korvan", "it is signed with a key that this program does not know"),
    QT_TRANSLATE_NOOP("Korvan", "it is signed for another program"),
    QT_TRANSLATE_NOOP("Korvan", "it is signed as version %1 and holds version %2"),
    QT_TRANSLATE_NOOP("Korvan", "its version %1 is older than the installed %2"),
    QT_TRANSLATE_NOOP("Korvan", "another update is being installed"),
    QT_TRANSLATE_NOOP("Korvan", "the program still runs"),
    QT_TRANSLATE_NOOP("Korvan", "the new version does not run, it ended at once with status %1"),
};

QString translatedReason(const QString &reason)
{
    for (const char *text : kReasons) {
        QString pattern = QRegularExpression::escape(QString::fromLatin1(text));
        for (const char *place : {"\\%1", "\\%2"}) {
            pattern.replace(QLatin1String(place), QLatin1String("(\\S+)"));
        }
        const auto match = QRegularExpression(QRegularExpression::anchoredPattern(pattern)).match(reason);
        if (match.hasMatch()) {
            QString words = QCoreApplication::translate("Korvan", text);
            for (int i = 1; i <= match.lastCapturedIndex(); ++i) {
                words.replace(QLatin1Char('%') + QString::number(i), match.captured(i));
            }
            return words;
        }
    }
    return reason;
}
