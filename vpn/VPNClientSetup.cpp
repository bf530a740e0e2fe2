#include "vpn/VPNClient.h"

#include "common/Wait.h"
#include "platform/RootPart.h"
#include "platform/Tool.h"
#include "vpn/HelperArguments.h"
#include "vpn/HelperOutput.h"
#include "vpn/HelperStart.h"
#include "vpn/VPNTables.h"

/// The service's IPsec key: public knowledge among its subscribers, the account's password is the secret.
static constexpr char kL2TPKey[] = "mellowfinch";

bool VPNClient::setup(SETUP s)
{
    switch (s.type) {
    case OPENVPN:
        emit message(QStringLiteral("Checking installed tap/tun driver..."));
        emit message(QStringLiteral("Install tap/tun driver done."));
        return true;
    case SSTP:
        emit message(QStringLiteral("Setup local driver done."));
        return true;
    case L2TP:
        s.c = QLatin1String(kL2TPKey);
        break;
    case PPTP:
    case IKEV2:
        break;
    default:
        return false;
    }
    const std::optional<QString> output =
        runSetupHelper(s.type, setupArguments(s), QStringLiteral("Checking local settings..."));
    if (!output) {
        emit message(QLatin1String(kErrorPrefix) + QStringLiteral("Compose is not exist."));
        return false;
    }
    if (classifyService(*output) == ServiceOutput::Success) {
        emit message(QStringLiteral("Setup local driver done."));
        return true;
    }
    emit message(QLatin1String(kErrorPrefix) + tr("Setup local driver failed."));
    setState(VPNERROR);
    return false;
}

bool VPNClient::unsetup(SETUP s)
{
    if (s.type == OPENVPN) {
        if (!hasRoot()) {
            emit message(QLatin1String(kErrorPrefix) +
                         tr("Secure failed, you must run me as root at least one time"));
            setState(VPNERROR);
            return false;
        }
        emit message(QStringLiteral("Unload tap driver success."));
        emit message(QStringLiteral("Unload tun driver success."));
        return true;
    }
    if (!isValidType(s.type)) {
        return false;
    }
    const std::optional<QString> output =
        runSetupHelper(s.type, unsetupArguments(s.type), QStringLiteral("Remove local driver..."));
    if (!output) {
        return false;
    }
    if (classifyService(*output) == ServiceOutput::Success) {
        emit message(QStringLiteral("Remove local driver done."));
        return true;
    }
    emit message(QLatin1String(kErrorPrefix) + tr("Remove local driver failed."));
    setState(VPNERROR);
    return false;
}

/// Runs the setup helper, telling `note` once it runs, and returns its output, which has been passed on as a message;
/// nothing when it did not start. A helper that outlasts the time limit is killed.
std::optional<QString> VPNClient::runSetupHelper(TYPE type, const QStringList &arguments, const QString &note)
{
    const std::unique_ptr<HelperProcess> helper = newHelper();
    startHelper(*helper, SETUPCOMPOSE[type], arguments);
    if (!helper->waitForStarted(kToolLimitMs)) {
        return std::nullopt;
    }
    emit message(note);
    Wait wait;
    wait.until(helper.get(), qOverload<int, QProcess::ExitStatus>(&QProcess::finished));
    if (!wait.run(m_timeout)) {
        helper->kill();
        helper->waitForFinished();
    }
    const QString output = outputMessage(helper->readAll());
    emit message(output);
    return output;
}
