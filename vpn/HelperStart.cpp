#include "vpn/HelperStart.h"

#include "common/AppPath.h"
#include "platform/HelperProcess.h"
#include "platform/Tool.h"
#include "vpn/VPNTables.h"

std::unique_ptr<HelperProcess> newHelper()
{
    auto helper = std::make_unique<HelperProcess>();
    helper->setProcessChannelMode(QProcess::MergedChannels);
    helper->setProcessEnvironment(childEnvironment());
    return helper;
}

void startHelper(HelperProcess &helper, const QString &program, const QStringList &arguments)
{
    helper.start(helperPath(program), arguments, QIODevice::ReadWrite);
}

bool startDownScript()
{
    return HelperProcess::startDetached(QStringLiteral("bash"), {appPath("/down.sh")});
}
