#include "controller/Options.h"

#include "account/SavedLogin.h"
#include "common/StateFile.h"

#include <QDataStream>

QByteArray optionBytes(const Options &o)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(kStreamVersion);
    stream << o.server << o.proxy.type() << o.proxy.address << o.proxy.port << o.proxy.authenticated
           << encode(o.proxy.user) << encode(o.proxy.password) << o.connectOnBoot << o.runOnBoot << o.hideConnection
           << o.autoReconnect << o.noSound << o.bootServer << o.updateFrequency << o.protocol << o.dnsLeak
           << o.lockDown;
    return bytes;
}

Options optionsOf(const QByteArray &bytes)
{
    Options o;
    QDataStream stream(bytes);
    stream.setVersion(kStreamVersion);
    int proxyType = 0;
    stream >> o.server >> proxyType >> o.proxy.address >> o.proxy.port >> o.proxy.authenticated >> o.proxy.user >>
        o.proxy.password >> o.connectOnBoot >> o.runOnBoot >> o.hideConnection >> o.autoReconnect >> o.noSound >>
        o.bootServer >> o.updateFrequency >> o.protocol >> o.dnsLeak >> o.lockDown;
    o.proxy.setType(proxyType);
    o.proxy.user = decode(o.proxy.user);
    o.proxy.password = decode(o.proxy.password);
    return o;
}
