#include "controller/Options.h"

#include "account/SavedLogin.h"
#include "common/StateFile.h"

#include <QDataStream>

QByteArray optionBytes(const Options &o)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(kStreamVersion);
    stream << o.server << o.proxyType << o.proxyAddress << o.proxyPort << o.proxyAuth << encode(o.proxyUser)
           << encode(o.proxyPassword) << o.connectOnBoot << o.runOnBoot << o.hideConnection << o.autoReconnect
           << o.noSound << o.bootServer << o.updateFrequency << o.protocol << o.dnsLeak << o.lockDown;
    return bytes;
}

Options optionsOf(const QByteArray &bytes)
{
    Options o;
    QDataStream stream(bytes);
    stream.setVersion(kStreamVersion);
    stream >> o.server >> o.proxyType >> o.proxyAddress >> o.proxyPort >> o.proxyAuth >> o.proxyUser >>
        o.proxyPassword >> o.connectOnBoot >> o.runOnBoot >> o.hideConnection >> o.autoReconnect >> o.noSound >>
        o.bootServer >> o.updateFrequency >> o.protocol >> o.dnsLeak >> o.lockDown;
    o.proxyUser = decode(o.proxyUser);
    o.proxyPassword = decode(o.proxyPassword);
    return o;
}
