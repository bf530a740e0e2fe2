#pragma once

#include <QProcess>

/// A process object for a program that may be a helper which needs root. It is used as any other; where this process
/// has a root part, that starts the helper, and an unprivileged program of the bundle stands in for it: it has the
/// object's streams, ends as the helper does, and takes it along when it is killed.
class HelperProcess : public QProcess
{
    Q_OBJECT

public:
    using QProcess::QProcess;

    /// Starts a program by its path or its name. A helper that the root part can not be asked for fails to start. One
    /// that can take its arguments where no other user sees them, on its standard input, gets them there and has
    /// nothing else to read.
    void start(const QString &program, const QStringList &arguments, OpenMode mode = ReadWrite);
    /// Starts the program and leaves it to itself. False when it did not start.
    static bool startDetached(const QString &program, const QStringList &arguments);

protected:
    void setupChildProcess() override;

private:
    void startPlainly(const QString &program, const QStringList &arguments, OpenMode mode);

    int m_channel = -1; ///< what the stand-in inherits
};
