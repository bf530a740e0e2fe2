#include "vpn/VPNTables.h"

#include "common/AppPath.h"

const QString VPNCOMPOSE[kVPNTypes] = {QStringLiteral("/compose"), QStringLiteral("/compose4"),
                                       QStringLiteral("/compose4"), QStringLiteral("/composec"),
                                       QStringLiteral("/compose4")};

const QString SETUPCOMPOSE[kVPNTypes] = {QStringLiteral("/drv/x${SYSTEM_TYPE}/tapinstall.exe"),
                                         QStringLiteral("/compose4"), QStringLiteral("/compose4"),
                                         QStringLiteral("/compose4"), QStringLiteral("/compose4")};

const QString TYPESTRING[kVPNTypes] = {QStringLiteral("OPENVPN"), QStringLiteral("PPTP"), QStringLiteral("L2TP"),
                                       QStringLiteral("SSTP"), QStringLiteral("IKEV2")};

const QString DISPLAYSTRING[kVPNTypes] = {QStringLiteral("Korvan"), QStringLiteral("Korvan-PPTP"),
                                          QStringLiteral("Korvan-L2TP"), QStringLiteral("Korvan-SSTP"),
                                          QStringLiteral("Korvan-IKEv2")};

bool isValidType(int type)
{
    return type >= 0 && type < kVPNTypes;
}

QString FormatCompose(QString path)
{
    return path;
}

QString helperPath(const QString &entry)
{
    return FormatCompose(appPath(entry));
}
