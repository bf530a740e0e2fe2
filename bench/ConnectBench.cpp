// How long it takes from the press of the button to the tunnel's route and to "CONNECTED", and what OpenVPN with the
// same profile takes to the route when it is started by hand, ten times each in turn. Runs in a lab: lab/lab run --
// build/release/bench/connect_bench/connect_bench

#include "common/AppPath.h"
#include "tests/lab/ClientLab.h"

#include <QApplication>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <chrono>
#include <cstdio>

static constexpr int kRounds = 10;
static constexpr int kRestMs = 300;
static constexpr double kLimit = 2;

/// Tells when a tunnel's route appears.
class RouteWatch
{
public:
    RouteWatch()
    {
        m_monitor.start("bash",
                        {"-c", "ip -4 monitor route | { echo; grep -qm1 '^0.0.0.0/1 '; echo ${EPOCHREALTIME/./}; }"});
        m_monitor.waitForReadyRead();
        m_monitor.readLine();
        inHome("sleep 0.1"); // until it listens
        m_start = now();
    }

    /// Milliseconds from the making of this to the route.
    double elapsed()
    {
        while (!m_monitor.canReadLine() && m_monitor.waitForReadyRead(30000)) {
        }
        return (m_monitor.readLine().trimmed().toDouble() - m_start) / 1000;
    }

    static double now()
    {
        using namespace std::chrono;
        return static_cast<double>(duration_cast<microseconds>(system_clock::now().time_since_epoch()).count());
    }

private:
    QProcess m_monitor;
    double m_start = 0;
};

/// The command line of Korvan's own OpenVPN, with files for what it gets in open descriptors, and without Korvan's
/// part in it.
static QString openVPNCommand()
{
    QString line = inHome(QStringLiteral("xargs -0 printf '%q ' </proc/%1/cmdline").arg(openVPN()));
    line.replace(QRegularExpression("^\\S+"), "/usr/sbin/openvpn");
    line.replace(QRegularExpression("--config \\S+"), "--config '" + appPath("/cfg/OpenVPN/temp") + "'");
    line.remove(QRegularExpression("--(mark|script-security) \\S+|--(up|down|route-up) .*?(?= --|$)"));
    return line.replace(QRegularExpression("--askpass \\S+"), "--askpass <(echo -)");
}

/// How many milliseconds the command takes to the route.
static double timeByHand(const QString &command)
{
    RouteWatch route;
    QProcess openVpn;
    openVpn.start("bash", {"-c", "exec " + command});
    const double taken = route.elapsed();
    openVpn.terminate();
    openVpn.waitForFinished();
    return taken;
}

static double medianOf(const char *what, QVector<double> times)
{
    std::sort(times.begin(), times.end());
    const double median = (times.at(times.size() / 2) + times.at((times.size() - 1) / 2)) / 2;
    std::printf("%s: %.1f ms, the median of %d (%.1f to %.1f)\n", what, median, times.size(), times.first(),
                times.last());
    return median;
}

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    ClientLab client;
    client.startLoggedIn(QStringLiteral("Examplia-1"));
    QVector<double> routed;
    QVector<double> connected;
    QVector<double> byHand;
    for (int round = 0; round < kRounds; ++round) {
        QTest::qWait(kRestMs); // a person does not press in the midst of what the last disconnection left to do
        RouteWatch route;
        const double start = RouteWatch::now();
        if (!client.connects()) {
            qFatal("no connection");
        }
        connected += (RouteWatch::now() - start) / 1000;
        routed += route.elapsed();
        const QString command = openVPNCommand();
        if (!client.breakTunnel()) {
            qFatal("no disconnection");
        }
        byHand += timeByHand(command);
    }
    medianOf("from the button to CONNECTED", connected);
    const double ratio = medianOf("from the button to the route", routed) / medianOf("OpenVPN by hand", byHand);
    std::printf("ratio: %.2f (limit %.1f)\n", ratio, kLimit);
    return ratio <= kLimit ? 0 : 1;
}
