#include "account/ServerLists.h"
#include "controller/Korvan.h"
#include "tests/support/OwnNetwork.h"
#include "tests/support/TestFiles.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QStackedWidget>
#include <QTableWidget>

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>

/// How long the rebuild of all lists may take for kServers servers, and how much longer for ten times as many.
static constexpr int kServers = 10000;
static constexpr double kLimitSeconds = 1.0;
static constexpr double kLimitRatio = 12.0;

static void makeServers(int count)
{
    QDir(profileFolder()).removeRecursively();
    QByteArray list;
    QByteArray first;
    for (int number = 0; number < count; ++number) {
        const QString name = QStringLiteral("Examplia-%1").arg(number, 6, 10, QLatin1Char('0'));
        const QString path = profileFolder() + name + QLatin1String(".ovpn");
        // Names of one file are made faster than files; a file system allows so many to each.
        if (number % kServers == 0) {
            putFile(path, "client\nremote vpn1.korvan.example 1194\n");
            first = QFile::encodeName(path);
        } else if (link(first.constData(), QFile::encodeName(path).constData()) != 0) {
            qFatal("can not make %s", qPrintable(path));
        }
        list += name.toUtf8() + "|198.51.100.7\n";
    }
    putFile(l2tpListPath(), list);
}

/// The processor time that a rebuild takes with the painting that follows, in seconds. What else runs on the machine
/// does not count.
template <typename Rebuild> static double seconds(Rebuild rebuild)
{
    const std::clock_t start = std::clock();
    rebuild();
    QApplication::processEvents();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

/// The fastest of some rounds, in seconds: those that something disturbed do not count.
template <typename Rebuild> static double fastest(Rebuild rebuild)
{
    std::array<double, 9> rounds{};
    std::generate(rounds.begin(), rounds.end(), [&] { return seconds(rebuild); });
    return *std::min_element(rounds.begin(), rounds.end());
}

/// Fills the window's lists with so many servers and then rebuilds them; returns the time of the rebuild.
static double rebuildAll(Korvan &window, int count)
{
    makeServers(count);
    auto *protocol = window.findChild<QComboBox *>(QStringLiteral("cmProto"));
    const auto openVPN = [&] { window.updateOpenVPNServerList(); };
    const auto l2tp = [&] {
        protocol->setCurrentIndex(-1);
        protocol->setCurrentText(QStringLiteral("L2TP"));
    };
    const double first = seconds(openVPN);
    const double openVPNAgain = fastest(openVPN);
    const double l2tpAgain = fastest(l2tp);
    const int rows = window.findChild<QTableWidget *>(QStringLiteral("tbPing"))->rowCount();
    const int items = window.findChild<QComboBox *>(QStringLiteral("cmServer"))->count();
    if (rows != count || items != count) {
        qFatal("%d servers gave %d rows and %d items", count, rows, items);
    }
    std::printf("%6d servers: OpenVPN lists, menu and table %.3f s (%.3f s the first time), L2TP lists %.3f s\n",
                count, openVPNAgain, first, l2tpAgain);
    return openVPNAgain + l2tpAgain;
}

int main(int argc, char **argv)
{
    enterOwnNetwork();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    Korvan window;
    window.show();
    window.findChild<QStackedWidget *>(QStringLiteral("stack"))->setCurrentIndex(1);
    window.findChild<QStackedWidget *>(QStringLiteral("tabPage"))->setCurrentIndex(4);
    window.setStatus(STATUS_INIT);

    const double once = rebuildAll(window, kServers);
    const double tenfold = rebuildAll(window, 10 * kServers);
    QDir(profileFolder()).removeRecursively();
    std::printf("both together %.3f s (limit %.1f s), ten times the servers %.1f times as long (limit %.0f)\n", once,
                kLimitSeconds, tenfold / once, kLimitRatio);
    return once < kLimitSeconds && tenfold < kLimitRatio * once ? 0 : 1;
}
