// Writes the state with which the demo starts: a remembered login and "connect automatically after start".

#include "account/SavedLogin.h"
#include "common/AppPath.h"
#include "common/StateFile.h"
#include "controller/Options.h"

#include <QCoreApplication>
#include <QDir>

#include <cstdio>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 4) {
        std::fputs("usage: prepare_state USER PASSWORD SERVER [PROXY:PORT] [lock-down] [reconnect] [stay]\n"
                   "\"reconnect\" connects again after a break; \"stay\" does not connect after the start.\n"
                   "Run by root from the application folder, whose \"cfg\" it fills; by others for themselves.\n",
                   stderr);
        return 1;
    }
    QDir().mkpath(appPath("/cfg"));
    writeSavedLogin({arguments.at(1), arguments.at(2)});
    Options options;
    const QStringList choices = arguments.mid(4);
    const QStringList proxy = choices.value(0).split(QLatin1Char(':'));
    options.proxy.none = proxy.size() != 2;
    options.proxy.http = proxy.size() == 2;
    options.proxy.address = proxy.at(0);
    options.proxy.port = proxy.value(1);
    options.connectOnBoot = options.proxy.none && !choices.contains(QStringLiteral("stay"));
    options.noSound = !choices.isEmpty();
    options.autoReconnect = choices.contains(QStringLiteral("reconnect"));
    options.lockDown = choices.contains(QStringLiteral("lock-down"));
    options.bootServer = arguments.at(3);
    options.updateFrequency = 1;
    options.protocol = QStringLiteral("OpenVPN");
    return writeWhole(appPath("/cfg/option"), optionBytes(options)) ? 0 : 1;
}
