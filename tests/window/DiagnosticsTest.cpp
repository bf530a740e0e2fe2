#include "common/AppPath.h"
#include "tests/support/OnePage.h"
#include "tests/support/TestFiles.h"
#include "tests/window/WindowFixture.h"
#include "ui/KvRetinaTabBar.h"

#include <QHeaderView>
#include <QRegularExpression>
#include <QTableWidget>

/// The page of the servers' tests, with a stand-in for "ping" and a web server on the loopback interface.
class DiagnosticsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void pingAll_data();
    void pingAll();
    void cancelPing_data();
    void cancelPing();
    void pingInDetail_data();
    void pingInDetail();
    void refusals_data();
    void refusals();
    void survivesANewList();
    void headerSorts();
    void speed_data();
    void speed();

private:
    /// A window on the page of tests whose servers have these hosts, with names in the same order.
    void start(const QStringList &hosts);
    /// A column of the table, its cells separated by blanks.
    QString column(int number) const;
    void selectRow(int row) const { m_table->setCurrentCell(row, 0); }
    /// Which of ping all, detailed ping, speed test and cancel can be pressed, and whether the table sorts.
    QString state() const;
    /// Runs `action` once the ping of this host has started, while the button's slot waits.
    void whenPinged(const QByteArray &host, const std::function<void()> &action);

    std::unique_ptr<WindowFixture> m_fixture;
    QTableWidget *m_table = nullptr;
};

static const char kIdle[] = "ads- sorts";
static const char kRunning[] = "---c";

void DiagnosticsTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
    putScript(appPath("/fake/ping"),
              "echo \"$* $$ \" >> '" + appPath("/fake/pings").toUtf8() +
                  "'\n"
                  "while [ \"$(cat '" +
                  appPath("/fake/watched").toUtf8() +
                  "' 2>/dev/null)\" = \"$2\" ]; do sleep 0.02; done\n"
                  "case \"$2\" in\n"
                  "near) echo '20 packets transmitted, 19 packets received, 12.5% packet loss'\n"
                  "  echo 'round-trip min/avg/max/stddev = 10.9/23.7/40.1/5.2 ms' ;;\n"
                  "far) echo 'received, 0% packet loss'; echo 'stddev = 80/114.2/130/1 ms' ;;\n"
                  "dead) echo '1 packets transmitted, 0 packets received, 100.0% packet loss'; exit 1 ;;\n"
                  "slow) exec sleep 600 ;;\n"
                  "*) echo \"ping: $2: unknown host\" >&2; exit 2 ;;\n"
                  "esac\n");
}

void DiagnosticsTest::cleanup()
{
    QCOMPARE(m_fixture->boxes.takeFailures(), QString());
    QCOMPARE(m_fixture->boxes.left(), 0);
    m_fixture.reset();
}

void DiagnosticsTest::start(const QStringList &hosts)
{
    for (int i = 0; i < hosts.size(); ++i) {
        putFile(appPath("/cfg/OpenVPN/") + QString("Server %1.ovpn").arg(i),
                "remote " + hosts.at(i).toUtf8() + " 1194\n");
    }
    m_fixture->start();
    QVERIFY(m_fixture->press("pbExist"));
    m_fixture->find<KvRetinaTabBar>("tab")->setCurrentIndex(4);
    m_table = m_fixture->find<QTableWidget>("tbPing");
    QCOMPARE(m_table->rowCount(), hosts.size());
}

QString DiagnosticsTest::column(int number) const
{
    QStringList cells;
    for (int row = 0; row < m_table->rowCount(); ++row) {
        const QTableWidgetItem *item = m_table->item(row, number);
        cells += item != nullptr && !item->text().isEmpty() ? item->text() : "-";
    }
    return cells.join(' ');
}

QString DiagnosticsTest::state() const
{
    const auto sign = [this](const char *button, const char *letter) {
        return QLatin1String(m_fixture->find<QWidget>(button)->isEnabled() ? letter : "-");
    };
    return sign("pbPingAll", "a") + sign("pbPingDet", "d") + sign("pbSpeedTest", "s") + sign("pbTestCancel", "c") +
           (m_table->isSortingEnabled() ? " sorts" : "");
}

void DiagnosticsTest::whenPinged(const QByteArray &host, const std::function<void()> &action)
{
    putFile(appPath("/fake/watched"), host); // the stand-in does not answer before the action is done
    auto *timer = new QTimer(m_table);
    connect(timer, &QTimer::timeout, this, [=] {
        if (fileBytes(appPath("/fake/pings")).contains(' ' + host + ' ')) {
            timer->deleteLater();
            timer->stop();
            action();
            QFile::remove(appPath("/fake/watched"));
        }
    });
    timer->start(5);
}

void DiagnosticsTest::pingAll_data()
{
    QTest::addColumn<QStringList>("hosts");
    QTest::addColumn<QString>("times");
    QTest::newRow("all answer or not") << QStringList{"near", "dead", "far"} << "23ms N/A 114ms";
    QTest::newRow("ends at an unknown host") << QStringList{"near", "nobody", "far"} << "23ms Canceled -";
    QTest::newRow("no server") << QStringList() << "";
}

void DiagnosticsTest::pingAll()
{
    QFETCH(QStringList, hosts);
    start(hosts);
    for (int row = 0; row < hosts.size(); ++row) {
        m_table->setItem(row, 2, new QTableWidgetItem("9%")); // of an earlier test
    }
    QString during;
    whenPinged("near", [&] { during = state(); });
    QVERIFY(m_fixture->press("pbPingAll"));
    QVERIFY(hosts.isEmpty() || during == kRunning);
    QCOMPARE(state(), QString(kIdle));
    QTEST(column(1), "times");
    QVERIFY2(!column(2).contains('%'), "the loss of single probes is not shown");
    QVERIFY(hosts.isEmpty() || fileBytes(appPath("/fake/pings")).startsWith("-c1 near "));
}

void DiagnosticsTest::cancelPing_data()
{
    QTest::addColumn<QStringList>("hosts");
    QTest::addColumn<QString>("times");
    QTest::newRow("first") << QStringList{"slow", "near", "far"} << "Canceled - -";
    QTest::newRow("middle") << QStringList{"near", "slow", "far"} << "23ms Canceled -";
    QTest::newRow("last") << QStringList{"near", "far", "slow"} << "23ms 114ms Canceled";
}

void DiagnosticsTest::cancelPing()
{
    QFETCH(QStringList, hosts);
    start(hosts);
    QVERIFY2(!m_fixture->press("pbTestCancel"), "nothing runs");
    whenPinged("slow", [this] { m_fixture->press("pbTestCancel"); });
    QVERIFY(m_fixture->press("pbPingAll"));
    QTEST(column(1), "times");
    QCOMPARE(state(), QString(kIdle));
    const QByteArray process = fileBytes(appPath("/fake/pings")).trimmed().split(' ').last();
    QVERIFY2(!QFile::exists("/proc/" + QString::fromUtf8(process)), "the command goes with its test");

    whenPinged("slow", [this] { m_fixture->press("pbTestCancel"); }); // at once
    QVERIFY(m_fixture->press("pbPingAll"));
    QVERIFY(column(1).contains("Canceled"));
}

void DiagnosticsTest::pingInDetail_data()
{
    QTest::addColumn<QString>("host");
    QTest::addColumn<QString>("time");
    QTest::addColumn<QString>("loss");
    QTest::newRow("answers") << "near"
                             << "- 23ms"
                             << "- 12.5%";
    QTest::newRow("never answers") << "dead"
                                   << "- N/A"
                                   << "- 100%";
    QTest::newRow("unknown") << "nobody"
                             << "- N/A"
                             << "- 0%";
    QTest::newRow("canceled") << "slow"
                              << "- N/A"
                              << "- 0%";
}

void DiagnosticsTest::pingInDetail()
{
    QFETCH(QString, host);
    start({"far", host});
    m_fixture->boxes.expect("Error", "Please select one server.");
    QVERIFY(m_fixture->press("pbPingDet"));
    selectRow(1);
    QString during;
    whenPinged(host.toUtf8(), [&] {
        during = column(1) + ' ' + state();
        if (host == "slow") {
            m_fixture->press("pbTestCancel");
        }
    });
    QVERIFY(m_fixture->press("pbPingDet"));
    QVERIFY(during == QLatin1String("- Ping... ") + kRunning);
    QTEST(column(1), "time");
    QTEST(column(2), "loss");
    QCOMPARE(state(), QString(kIdle));
    QVERIFY(fileBytes(appPath("/fake/pings")).startsWith("-c20 " + host.toUtf8()));
}

void DiagnosticsTest::refusals_data()
{
    QTest::addColumn<QByteArray>("button");
    for (const char *button : {"pbPingAll", "pbPingDet", "pbSpeedTest"}) {
        QTest::newRow(button) << QByteArray(button);
    }
}

void DiagnosticsTest::refusals()
{
    QFETCH(QByteArray, button);
    start({"near"});
    for (const KORVANSTATUS status : {STATUS_CONNECTING, STATUS_CONNECTED}) {
        qobject_cast<Korvan *>(m_table->window())->setStatus(status);
        m_fixture->boxes.expect("Notify", "Please disconnect first.");
        QVERIFY(m_fixture->press(button.constData()));
        QCOMPARE(m_fixture->boxes.left(), 0);
    }
    QCOMPARE(column(1) + column(3), QString("--"));
    QVERIFY(!QFile::exists(appPath("/fake/pings")));
}

/// A login rebuilds the table while a test waits.
void DiagnosticsTest::survivesANewList()
{
    start({"slow", "near"});
    for (const char *button : {"pbPingAll", "pbPingDet"}) {
        QFile::remove(appPath("/fake/pings"));
        selectRow(0);
        whenPinged("slow", [this] {
            qobject_cast<Korvan *>(m_table->window())->updateOpenVPNServerList();
            m_fixture->press("pbTestCancel");
        });
        QVERIFY(m_fixture->press(button));
        QCOMPARE(column(0), QString("Server 0 Server 1"));
        QVERIFY(!column(1).contains("ms"));
        QCOMPARE(state(), QString(kIdle));
    }
}

void DiagnosticsTest::headerSorts()
{
    start({"far", "near", "slow"});
    QHeaderView *header = m_table->horizontalHeader();
    const auto click = [header](int section) {
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          {header->sectionViewportPosition(section) + 20, header->height() / 2});
    };
    const QStringList texts{"114ms", "23ms", "9ms"};
    for (int row = 0; row < texts.size(); ++row) {
        m_table->setItem(row, 1, new QTableWidgetItem(texts.at(row)));
    }
    // As text, each column with an alternation of its own.
    click(1);
    QCOMPARE(column(1), QString("9ms 23ms 114ms"));
    click(1);
    QCOMPARE(column(1), QString("114ms 23ms 9ms"));
    click(0);
    QCOMPARE(column(0), QString("Server 2 Server 1 Server 0"));
    click(1);
    QCOMPARE(column(1), QString("9ms 23ms 114ms"));
    click(0);
    QCOMPARE(column(0), QString("Server 0 Server 1 Server 2"));

    selectRow(2);
    whenPinged("slow", [&] {
        click(0);
        m_fixture->press("pbTestCancel");
    });
    QVERIFY(m_fixture->press("pbPingDet"));
    QCOMPARE(column(0), QString("Server 0 Server 1 Server 2"));
}

void DiagnosticsTest::speed_data()
{
    QTest::addColumn<QString>("host");
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<bool>("cancel");
    QTest::addColumn<QString>("cell");
    const QByteArray file = ok(QByteArray(4000000, 'x'));
    const QString number = "- \\d+KB/s";
    QTest::newRow("whole file") << "127.0.0.1" << file << false << number;
    QTest::newRow("canceled half-way") << "127.0.0.1" << file.chopped(1000) << true << number;
    QTest::newRow("canceled before any data") << "127.0.0.1" << QByteArray() << true << "- Canceled";
    QTest::newRow("empty error page") << "127.0.0.1" << QByteArray("HTTP/1.1 404 No\r\nContent-Length: 0\r\n\r\n")
                                      << false << "- Canceled";
    QTest::newRow("nothing listens") << "127.0.0.9" << file << false << "- Canceled";
    QTest::newRow("unknown host") << "nobody.example" << file << false << "- Canceled";
}

void DiagnosticsTest::speed()
{
    QFETCH(QString, host);
    QFETCH(QByteArray, answer);
    QFETCH(bool, cancel);
    QFETCH(QString, cell);
    OnePage server(answer, cancel, 8080);
    start({"near", host});
    m_fixture->boxes.expect("Error", "Please select one server.");
    QVERIFY(m_fixture->press("pbSpeedTest"));
    selectRow(1);
    QString during;
    const auto look = [&] { during = column(3) + ' ' + state(); };
    QTimer::singleShot(0, this, look);
    if (cancel) {
        QTimer::singleShot(500, this, [this] { m_fixture->press("pbTestCancel"); });
    }
    QVERIFY(m_fixture->press("pbSpeedTest"));
    QVERIFY2(QRegularExpression('^' + cell + '$').match(column(3)).hasMatch(), qPrintable(column(3)));
    QCOMPARE(during, QLatin1String("- Test... ") + kRunning);
    QCOMPARE(state(), QString(kIdle));
    QVERIFY(host != "127.0.0.1" || server.request.startsWith("GET /korvantest.dat HTTP/1.1\r\n"));
}

int main(int argc, char *argv[])
{
    return runWindowTest<DiagnosticsTest>(argc, argv);
}
#include "DiagnosticsTest.moc"
