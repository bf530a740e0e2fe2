#include "platform/HelperProcess.h"

#include "common/AppPath.h"
#include "names/Names.h"
#include "platform/RootPart.h"
#include "platform/Tool.h"

#include <QFile>

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

/// A helper as the root part knows it.
struct Helper
{
    QString name; ///< empty: no helper
    QStringList arguments;
};

/// Which helper a command line means.
Helper helperOf(const QString &program, const QStringList &arguments)
{
    if (!usesRootPart()) {
        return {};
    }
    for (const char *name : {"/compose", "/compose4", "/composec"}) {
        if (program == appPath(name)) {
            return {QString::fromLatin1(name + 1), arguments};
        }
    }
    if (program == QLatin1String("route")) {
        return {program, arguments};
    }
    if (program == QLatin1String("bash") && arguments.value(0) == appPath("/down.sh")) {
        return {QStringLiteral("down"), arguments.mid(1)};
    }
    return {};
}

/// Whether the helper takes its arguments, which may hold secrets, from standard input.
bool takesArgumentsOnInput(const QString &program)
{
    QFile file(program);
    return (program == appPath("/compose4") || program == appPath("/composec")) && file.open(QIODevice::ReadOnly) &&
           file.readAll().contains(kArgumentsOnInput);
}

} // namespace

void HelperProcess::start(const QString &program, const QStringList &arguments, OpenMode mode)
{
    if (!takesArgumentsOnInput(program)) {
        startPlainly(program, arguments, mode);
        return;
    }
    startPlainly(program, {QStringLiteral("-")}, mode);
    for (const QString &argument : arguments) {
        const QByteArray bytes = QFile::encodeName(argument);
        write(bytes.constData(), static_cast<qint64>(qstrlen(bytes.constData())) + 1);
    }
    closeWriteChannel();
}

void HelperProcess::startPlainly(const QString &program, const QStringList &arguments, OpenMode mode)
{
    const Helper helper = helperOf(program, arguments);
    if (helper.name.isEmpty()) {
        QProcess::start(program, arguments, mode);
        return;
    }
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) {
        QProcess::start(QString(), QStringList());
        return;
    }
    const bool requested = requestHelper(helper.name, helper.arguments, ends[1]);
    ::close(ends[1]);
    if (requested) {
        m_channel = ends[0];
        QProcess::start(appPath("/standin"), {QString::number(m_channel)}, mode);
        m_channel = -1;
    } else {
        QProcess::start(QString(), QStringList()); // fails
    }
    ::close(ends[0]);
}

bool HelperProcess::startDetached(const QString &program, const QStringList &arguments)
{
    const Helper helper = helperOf(program, arguments);
    if (!helper.name.isEmpty()) {
        return requestHelper(helper.name, helper.arguments);
    }
    QProcess process;
    process.setProcessEnvironment(childEnvironment());
    process.setProgram(program);
    process.setArguments(arguments);
    return process.startDetached();
}

/// In the child, before it becomes the stand-in.
void HelperProcess::setupChildProcess()
{
    if (m_channel >= 0) {
        fcntl(m_channel, F_SETFD, 0);
    }
}
