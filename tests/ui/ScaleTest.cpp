#include "platform/DesktopScale.h"
#include "ui/Look.h"

#include <QApplication>
#include <QProcess>
#include <QScreen>
#include <QTest>
#include <QWidget>

#include <memory>

/// The scale that a desktop asks for and its screen allows. The screen is scripts/with-screen.sh's, 1280 x 800.
class ScaleTest : public QObject
{
    Q_OBJECT

private slots:
    void screens()
    {
        const std::tuple<double, QSize, double> cases[] = {
            {1.25, {1366, 768}, 1.25}, {1.5, {1366, 768}, 1.32}, {2, {1366, 768}, 1.32}, {2, {1760, 1160}, 2},
            {1, {800, 600}, 1},        {1.5, {800, 600}, 1},     {0.9, {800, 600}, 0.9}, {1.75, {}, 1.75}};
        for (const auto &[wanted, room, factor] : cases) {
            QCOMPARE(DesktopScale::fitting(wanted, kWindowSize, room), factor);
        }
    }

    /// No more fits on the screen than 137 %.
    void desktop()
    {
        QCOMPARE(qApp->devicePixelRatio(), s_expected);
        const QSize window = tightened(std::make_unique<QWidget>().get(), qApp->primaryScreen()->availableSize());
        const QSize screen = qApp->primaryScreen()->availableSize();
        QVERIFY(window.width() <= screen.width() && window.height() <= screen.height());
        QVERIFY2(!qEnvironmentVariableIsSet("QT_SCALE_FACTOR"), "programs that are started follow the desktop too");
    }

public:
    static double s_expected;
};

double ScaleTest::s_expected = 1;

int main(int argc, char **argv)
{
    // The library reads the scale once in a process: one process a scale.
    const QByteArray dpi = argc > 1 ? argv[1] : "";
    if (!dpi.isEmpty()) {
        QProcess setter;
        setter.start("xrdb", {"-merge"});
        setter.write("Xft.dpi: " + dpi + '\n');
        setter.closeWriteChannel();
        setter.waitForFinished();
        ScaleTest::s_expected = qMin(dpi.toDouble() / 96, 1.37);
    }
    const DesktopScale scale(kWindowSize);
    QApplication application(argc, argv);
    scale.restoreEnvironment();
    ScaleTest test;
    return QTest::qExec(&test);
}

#include "ScaleTest.moc"
