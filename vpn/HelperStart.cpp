#include "vpn/HelperStart.h"

#include "common/AppPath.h"
#include "platform/Tool.h"
#include "vpn/VPNTables.h"

#include <QProcess>

std::unique_ptr<QProcess> newHelper()
{
    auto helper = std::make_unique<QProcess>();
    helper->setProcessChannelMode(QProcess::MergedChannels);
    helper->setProcessEnvironment(childEnvironment());
    return helper;
}

void startHelper(QProcess &helper, const QString &program, const QStringList &arguments)
{
    helper.start(helperPath(program), arguments, QIODevice::ReadWrite);
}

bool startDownScript()
{
    const std::unique_ptr<QProcess> script = newHelper();
    script->setProgram(QStringLiteral("bash"));
    script->setArguments({appPath("/down.sh")});
    return script->startDetached();
}
