#include "tests/lab/LabWindow.h"

#include "common/AppPath.h"

#include <QLineEdit>
#include <QProcess>

/// The output of a tool that gets `input` to read; the test fails when the tool does.
static QByteArray run(const QString &program, const QStringList &arguments, const QByteArray &input = {})
{
    QProcess process;
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(60000) || process.exitCode() != 0) {
        qFatal("%s: %s", qPrintable(program), process.readAllStandardError().constData());
    }
    return process.readAllStandardOutput();
}

static QString control(const QString &path)
{
    return qEnvironmentVariable("LAB_CONTROL") + path;
}

LabWindow::LabWindow()
{
    static const QByteArray systemPath = qgetenv("PATH");
    const QString bundle = QStringLiteral(KORVAN_BUNDLE "/");
    run(QStringLiteral("cp"), {"-au", bundle + "compose7", bundle + "tools", bundle + "version", appPath("/")});
    qputenv("PATH", QFile::encodeName(appPath("/tools")) + ':' + systemPath);
    QCoreApplication::setApplicationVersion(QString::fromUtf8(fileBytes(appPath("/version"))));
    reset();
}

LabWindow::~LabWindow()
{
    reset(); // also ends what still stalls
}

void LabWindow::login(const QString &user, const QString &password) const
{
    find<QLineEdit>("edUser")->setText(user);
    find<QLineEdit>("edPass")->setText(password);
    QVERIFY(press("pbLogin"));
}

void LabWindow::order(const QString &page, const QString &parameters, const QByteArray &body)
{
    run(QStringLiteral("curl"), {"-sSf", "-T", "-", control("/answer" + page + '?' + parameters)}, body);
}

QByteArray LabWindow::lastRequest(const QString &page)
{
    const QByteArray request = run(QStringLiteral("curl"), {"-sS", control("/seen" + page)});
    return request == "not seen yet\n" ? QByteArray() : request;
}

void LabWindow::reset()
{
    run(QStringLiteral("curl"), {"-sSf", "-d", "", control("/reset")});
}
