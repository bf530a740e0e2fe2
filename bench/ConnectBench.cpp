// How long it takes from the press of the button to "CONNECTED", and what the same OpenVPN takes when it is started
// by hand, ten times each in turn. Runs in a lab: lab/lab run -- build/release/bench/connect_bench/connect_bench

#include "common/AppPath.h"
#include "tests/lab/ClientLab.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QRegularExpression>

#include <algorithm>
#include <cstdio>

static constexpr int kRounds = 10;
static constexpr qint64 kLimitMs = 50;

/// The command line of Korvan's own OpenVPN, with files for what it gets in open descriptors.
static QString openVPNCommand()
{
    QString line = inHome(QStringLiteral("xargs -0 printf '%q ' </proc/%1/cmdline").arg(openVPN()));
    line.replace(QRegularExpression("^\\S+"), "/usr/sbin/openvpn");
    line.replace(QRegularExpression("--config \\S+"), "--config '" + appPath("/cfg/OpenVPN/temp") + "'");
    return line.replace(QRegularExpression("--askpass \\S+"), "--askpass <(echo -)");
}

/// How many milliseconds the command takes to the tunnel.
static qint64 timeByHand(const QString &command)
{
    return inHome("start=${EPOCHREALTIME/./}; exec 3< <(exec " + command + "); " +
                  "grep -q -m 1 'Initialization Sequence Completed' <&3; "
                  "echo $(((${EPOCHREALTIME/./} - start) / 1000)); kill $!; wait $!")
        .toLongLong();
}

static qint64 medianOf(const char *what, QVector<qint64> times)
{
    std::sort(times.begin(), times.end());
    const qint64 median = times.at(times.size() / 2);
    std::printf("%s: %lld ms, the median of %d (%lld to %lld)\n", what, static_cast<long long>(median), times.size(),
                static_cast<long long>(times.first()), static_cast<long long>(times.last()));
    return median;
}

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    ClientLab client;
    client.startLoggedIn(QStringLiteral("Examplia-1"));
    QVector<qint64> pressed;
    QVector<qint64> byHand;
    for (int round = 0; round < kRounds; ++round) {
        QElapsedTimer timer;
        timer.start();
        if (!client.connects()) {
            qFatal("no connection");
        }
        pressed += timer.elapsed();
        const QString command = openVPNCommand();
        if (!client.breakTunnel()) {
            qFatal("no disconnection");
        }
        byHand += timeByHand(command);
    }
    const qint64 own = medianOf("from the button to CONNECTED", pressed) - medianOf("OpenVPN by hand", byHand);
    std::printf("of its own: %lld ms (limit %lld ms)\n", static_cast<long long>(own),
                static_cast<long long>(kLimitMs));
    return own <= kLimitMs ? 0 : 1;
}
