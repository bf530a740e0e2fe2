#include "tests/lab/LabWindow.h"

#include "common/AppPath.h"

#include <QProcess>

LabWindow::LabWindow()
{
    prepareApplication(*qApp);
    static const QByteArray systemPath = qgetenv("PATH");
    inHome("cp -au '" KORVAN_BUNDLE "'/{compose7,tools,version} '" + appPath("/").toUtf8() + "'");
    qputenv("PATH", QFile::encodeName(appPath("/tools")) + ':' + systemPath);
    QCoreApplication::setApplicationVersion(QString::fromUtf8(fileBytes(appPath("/version"))));
    reset();
}

LabWindow::~LabWindow()
{
    end();
    reset(); // also ends what still stalls
    QCOMPARE(boxes.takeFailures(), QString());
    QCOMPARE(boxes.left(), 0);
}

QByteArray inHome(const QByteArray &command, const QByteArray &input)
{
    QProcess shell;
    shell.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    shell.start("bash", {"-c", command});
    shell.write(input);
    shell.closeWriteChannel();
    if (!shell.waitForFinished(60000)) {
        qFatal("no end of: %s", command.constData());
    }
    return shell.readAllStandardOutput().trimmed();
}
