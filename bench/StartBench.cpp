// How long Korvan takes from the start of the process to its first painted window, and how much memory it has then,
// in turn with an empty Qt Widgets window with a tray icon: scripts/with-screen.sh
// build/release/bench/start_bench/start_bench [PAIRS]. Run by an ordinary person it measures that person's start.

#include "tests/support/OwnNetwork.h"
#include "tests/support/TestFiles.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>
#include <vector>
#include <xcb/xcb.h>

namespace {

constexpr double kLimit = 1.5;
constexpr int kGiveUpMs = 30000;
constexpr int kSettleMs = 1500; ///< after which nothing of the start is left to do

struct Figures
{
    double ms = 0;        ///< to the first painted window
    double megaBytes = 0; ///< the process's own share
};

/// The pixel in the middle of the screen, which both windows cover; black without a window.
class Screen
{
public:
    ~Screen() { xcb_disconnect(m_server); }

    unsigned middle() const
    {
        const xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(m_server)).data;
        const auto question =
            xcb_get_image(m_server, XCB_IMAGE_FORMAT_Z_PIXMAP, screen->root, int16_t(screen->width_in_pixels / 2),
                          int16_t(screen->height_in_pixels / 2), 1, 1, ~0U);
        xcb_get_image_reply_t *image = xcb_get_image_reply(m_server, question, nullptr);
        const unsigned pixel = image ? *reinterpret_cast<const unsigned *>(xcb_get_image_data(image)) & 0xffffff : 0;
        std::free(image);
        return pixel;
    }

    bool waitUntil(bool covered) const
    {
        QElapsedTimer limit;
        limit.start();
        while ((middle() != 0) != covered && limit.elapsed() < kGiveUpMs) {
            usleep(500);
        }
        return (middle() != 0) == covered;
    }

private:
    xcb_connection_t *m_server = xcb_connect(nullptr, nullptr);
};

double ownMegaBytes(qint64 process)
{
    for (const QByteArray &line : fileBytes(QStringLiteral("/proc/%1/smaps_rollup").arg(process)).split('\n')) {
        if (line.startsWith("Pss:")) {
            return line.mid(4).simplified().split(' ').first().toDouble() / 1024;
        }
    }
    return 0;
}

Figures startOf(const QString &program, const Screen &screen)
{
    Figures figures;
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    QElapsedTimer clock;
    clock.start();
    process.start(program, QStringList());
    const bool shown = screen.waitUntil(true);
    figures.ms = double(clock.nsecsElapsed()) / 1e6;
    process.waitForFinished(kSettleMs);
    figures.megaBytes = ownMegaBytes(process.processId());
    process.kill();
    process.waitForFinished();
    if (!shown || !screen.waitUntil(false)) {
        std::fprintf(stderr, "%s did not %s\n", qPrintable(program), shown ? "leave the screen" : "show its window");
        std::exit(1);
    }
    return figures;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return (values.at(values.size() / 2) + values.at((values.size() - 1) / 2)) / 2;
}

} // namespace

int main(int argc, char *argv[])
{
    if (geteuid() == 0) {
        enterOwnNetwork(); // the start looks after default routes
    }
    const QCoreApplication application(argc, argv);
    const int pairs = argc > 1 ? std::max(1, QByteArray(argv[1]).toInt()) : 10;
    const QTemporaryDir folder;
    QProcess::execute("cp", {"-a", KORVAN_BUNDLE, folder.path()});
    const QString korvan = folder.path() + "/MacOS/Korvan";
    putFile(folder.path() + "/MacOS/setting.ini", "[UPDATE]\nURL=http://127.0.0.1:1/update.xml\n");
    putScript(folder.path() + "/MacOS/down.sh", ""); // the machine's name servers are not the bench's own

    const Screen screen;
    for (const QString &program : {korvan, QStringLiteral(EMPTY_WINDOW)}) {
        startOf(program, screen); // from the disk
    }
    std::vector<double> ratios;
    std::vector<double> memory;
    std::printf("pair   Korvan             empty window       ratio\n");
    for (int pair = 1; pair <= pairs; ++pair) {
        const Figures own = startOf(korvan, screen);
        const Figures empty = startOf(QStringLiteral(EMPTY_WINDOW), screen);
        ratios.push_back(own.ms / empty.ms);
        memory.push_back(own.megaBytes - empty.megaBytes);
        std::printf("%4d   %5.0f ms %5.1f MB   %5.0f ms %5.1f MB   %.2f\n", pair, own.ms, own.megaBytes, empty.ms,
                    empty.megaBytes, ratios.back());
    }
    std::printf("median: %.2f times (limit %.1f), %+.1f MB (limit 0)\n", median(ratios), kLimit, median(memory));
    return median(ratios) <= kLimit && median(memory) <= 0 ? 0 : 1;
}
