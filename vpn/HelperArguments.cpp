#include "vpn/HelperArguments.h"

#include "common/AppPath.h"
#include "names/StateFiles.h"
#include "vpn/VPNTables.h"

QStringList openVPNArguments(const VPNClient::OPTION &option, const QString &port)
{
    QStringList arguments;
    if (!option.config.isEmpty()) {
        arguments << QStringLiteral("--config") << appPath(option.config);
    }
    if (!option.user.isEmpty() || !option.password.isEmpty()) {
        arguments << QStringLiteral("--auth-user-pass") << QStringLiteral("--auth-nocache");
    }
    arguments << option.params.split(QLatin1Char('|'), Qt::SkipEmptyParts);
    if (!port.isEmpty()) {
        arguments << QStringLiteral("--management") << QStringLiteral("127.0.0.1") << port;
    }
    arguments << QStringLiteral("--script-security") << QStringLiteral("2") << QStringLiteral("--up")
              << appPath("/up.sh") << QStringLiteral("--down") << appPath("/down.sh");
    return arguments;
}

QStringList serviceConnectArguments(const VPNClient::OPTION &option)
{
    return {DISPLAYSTRING[option.type], option.user, option.password};
}

QStringList serviceStatusArguments(VPNClient::TYPE type)
{
    return {QStringLiteral("CHECK"), DISPLAYSTRING[type]};
}

QStringList serviceDisconnectArguments(VPNClient::TYPE type)
{
    return {DISPLAYSTRING[type]};
}

QStringList sstpArguments(const VPNClient::OPTION &option)
{
    const QString mtu = option.params.toInt() != 0 ? option.params : QStringLiteral("1500");
    return {QStringLiteral("--user"),
            option.user,
            QStringLiteral("--password"),
            option.password,
            option.server,
            QStringLiteral("--log-level"),
            QStringLiteral("3"),
            QStringLiteral("--debug"),
            QStringLiteral("usepeerdns"),
            QStringLiteral("defaultroute"),
            QStringLiteral("refuse-pap"),
            QStringLiteral("refuse-eap"),
            QStringLiteral("noauth"),
            QStringLiteral("mtu"),
            mtu,
            QStringLiteral("logfile"),
            appPath(kSstpLogFile)};
}

QStringList setupArguments(const VPNClient::SETUP &setup)
{
    QStringList arguments = {TYPESTRING[setup.type], DISPLAYSTRING[setup.type], setup.b};
    if (setup.type == VPNClient::L2TP) {
        arguments << setup.c;
    }
    return arguments;
}

QStringList unsetupArguments(VPNClient::TYPE type)
{
    return {TYPESTRING[type], DISPLAYSTRING[type]};
}
