#include "tests/lab/LabWindow.h"

#include "common/AppPath.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QStackedWidget>

static constexpr int kLimitMs = 60000;

LabWindow::LabWindow()
{
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

void LabWindow::login(const QString &user, const QString &password) const
{
    find<QLineEdit>("edUser")->setText(user);
    find<QLineEdit>("edPass")->setText(password);
    QVERIFY(press("pbLogin"));
}

bool LabWindow::shows(const char *name, const QString &text) const
{
    return QTest::qWaitFor([&] { return label(name) == text; }, kLimitMs);
}

bool LabWindow::isLoggedIn() const
{
    return find<QStackedWidget>("stack")->currentWidget()->objectName() == "pageMain";
}

bool LabWindow::logHas(const QByteArray &text)
{
    return fileBytes(appPath("/log.txt")).contains(text);
}

void LabWindow::order(const QString &page, const QString &parameters, const QByteArray &body)
{
    inHome("curl -sSf -T - \"$LAB_CONTROL/answer" + page.toUtf8() + '?' + parameters.toUtf8() + '"', body);
}

QByteArray LabWindow::lastRequest(const QString &page)
{
    const QByteArray request = inHome("curl -sS \"$LAB_CONTROL/seen" + page.toUtf8() + '"');
    return request == "not seen yet" ? QByteArray() : request;
}

void LabWindow::reset()
{
    inHome("curl -sSf -d '' \"$LAB_CONTROL/reset\"");
}

QByteArray inHome(const QByteArray &command, const QByteArray &input)
{
    QProcess shell;
    shell.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    shell.start("bash", {"-c", command});
    shell.write(input);
    shell.closeWriteChannel();
    if (!shell.waitForFinished(kLimitMs)) {
        qFatal("no end of: %s", command.constData());
    }
    return shell.readAllStandardOutput().trimmed();
}
