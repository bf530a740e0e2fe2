#include "platform/LoginItems.h"

#include "platform/Tool.h"

static QStringList loginItemsCommand(const char *verb)
{
    return {QString::fromLatin1(verb), QStringLiteral("loginwindow"),
            QStringLiteral("AutoLaunchedApplicationDictionary")};
}

void machelpReadLaunch(QStringList &items)
{
    QByteArray rest = runTool(QStringLiteral("defaults"), loginItemsCommand("read")).output;
    if (rest.contains("not exist")) {
        return;
    }
    for (;;) {
        const int open = rest.indexOf('{');
        const int close = rest.indexOf('}');
        if (open < 0 || close < 0) {
            return;
        }
        if (close > open) {
            items.append(QString::fromLocal8Bit(rest.mid(open, close - open + 1).constData()));
        }
        rest = rest.mid(close + 1);
    }
}

void machelpWriteLaunch(QStringList &items)
{
    const QString array = QLatin1Char('(') + items.join(QLatin1Char(',')) + QLatin1Char(')');
    runTool(QStringLiteral("defaults"), loginItemsCommand("write") << array);
}

int machelpLaunchStartup(const char *path, int add, const void *reserved)
{
    if (reserved != nullptr) {
        return -1;
    }
    const QString bundle = QString::fromLocal8Bit(path);
    QStringList items;
    machelpReadLaunch(items);
    if (add != 0) {
        items.append(QStringLiteral("{Hide = 0; Path = \"") + bundle + QStringLiteral("\";}"));
    } else {
        for (int i = 0; i < items.size(); ++i) {
            if (items.at(i).contains(bundle)) {
                items.removeAt(i);
                break;
            }
        }
    }
    machelpWriteLaunch(items);
    return 1;
}
