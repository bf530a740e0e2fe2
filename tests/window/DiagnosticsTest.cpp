#include "tests/support/OnePage.h"
#include "tests/window/WindowFixture.h"

#include <QDir>
#include <QHeaderView>
#include <QRegularExpression>
#include <QTcpSocket>

/// The page of the servers' tests, with a stand-in for "ping" and a web server on the loopback interface.
class DiagnosticsTest : public WindowFixture
{
    Q_OBJECT

private slots:
    void init() override
    {
        WindowFixture::init();
        putScript(appPath("/fake/ping"), "cd '" + appPath("/fake").toUtf8() + R"sh('
    echo "$* $$ " >> pings
    while [ "$(cat watched 2>/dev/null)" = "$2" ]; do sleep 0.02; done
    case "$2" in
    near) echo 'received, 12.5% packet loss'; echo 'stddev = 10.9/23.7/40.1/5.2 ms' ;;
    dead) echo 'received, 100.0% packet loss'; exit 1 ;;
    slow | gone) exec sleep 600 ;;
    print) cat output ;;
    esac)sh");
        startLoggedIn({});
        m_table = find<QTableWidget>("tbPing");
    }

    /// A ping of "slow" is canceled as soon as it has started, and so is that of "gone", while a login rebuilds the
    /// table. Detailed pings are for the second server.
    void ping()
    {
        const std::tuple<const char *, QStringList, QString> cases[] = {
            {"pbPingAll", {"near", "dead", "near"}, "23ms N/A 23ms, loss - - -"},
            {"pbPingAll", {"near", "nobody", "near"}, "23ms Canceled -, loss - - -"},
            {"pbPingAll", {"slow", "near", "near"}, "Canceled - -, loss - - -"},
            {"pbPingAll", {"near", "near", "slow"}, "23ms 23ms Canceled, loss - - -"},
            {"pbPingAll", {"gone", "near"}, "- -, loss - -"},
            {"pbPingDet", {"near", "near"}, "- 23ms, loss - 12.5%"},
            {"pbPingDet", {"near", "nobody"}, "- N/A, loss - -"},
            {"pbPingDet", {"near", "slow"}, "- N/A, loss - -"},
            {"pbPingDet", {"near", "gone"}, "- -, loss - -"}};
        for (const auto &[pressed, hosts, expected] : cases) {
            const QByteArray name = pressed + (' ' + hosts.join(' ')).toUtf8();
            serve(hosts);
            m_table->setItem(1, 2, new QTableWidgetItem("9%")); // of an earlier test
            m_table->setCurrentCell(1, 0);
            const bool isDetailed = name.startsWith("pbPingDet");
            // The ping of this host does not answer before the user has acted.
            const QByteArray watched = name.contains("slow") ? "slow" : hosts.at(isDetailed ? 1 : 0).toUtf8();
            putFile(appPath("/fake/watched"), watched);
            QString during;
            when([watched] { return pings().contains(' ' + watched + ' '); },
                 [&] {
                     during = (column(1).contains("Ping...") ? "Ping..." : "") + state();
                     clickHeader(0); // does nothing now
                     if (watched == "gone") {
                         m_window->updateOpenVPNServerList();
                     }
                     press(watched == "slow" || watched == "gone" ? "pbTestCancel" : "pbPingAll");
                     QFile::remove(appPath("/fake/watched"));
                 });
            QVERIFY(!press("pbTestCancel") && press(pressed));
            COMPARE_CASE(name, column(1) + ", loss " + column(2), expected);
            COMPARE_CASE(name, during + ' ' + state(), "Ping...---c ads- sorts");
            QVERIFY(pings().startsWith(isDetailed ? "-c20 " : "-c1 "));
            const QString process = pings().trimmed().split(' ').last();
            QVERIFY2(!QFile::exists("/proc/" + process), "the command goes with its test");
        }
    }

    void outputsOfPing()
    {
        const auto real = [](const char *name) {
            return fileBytes(KORVAN_SOURCE "/tests/data/diag/" + QString(name));
        };
        const std::pair<QByteArray, const char *> cases[] = {
            {real("ping-20.txt").replace("\n", "\r\n"), "23ms 25%"},
            {real("ping-dead.txt"), "N/A 100%"},
            {"2 received, 12.5% packet loss\nstddev = 1.0/2.0/3", "N/A 12.5%"}, // cut in the times
            {"stddev = 1/2/3 ms", "N/A 0%"},
            {"stddev = 0/0.99/1/0 ms", "N/A 0%"}, // below a millisecond
            {"stddev = 1/nan/1/1 ms", "N/A 0%"},
            {"stddev = 1/1e300/1/1 ms", "N/A 0%"},
            {"received, 33.33333333% packet", "N/A 33.3333%"}};
        for (const auto &[output, cells] : cases) {
            putFile(appPath("/fake/output"), output);
            serve({"print"});
            m_table->setCurrentCell(0, 0);
            QVERIFY(press("pbPingDet"));
            COMPARE_CASE(output, column(1) + ' ' + column(2), cells);
        }
    }

    /// What hangs is canceled once all is sent.
    void speed()
    {
        const QByteArray file = ok(QByteArray(4000000, 'x'));
        const std::tuple<QByteArray, QByteArray, bool, const char *> cases[] = {
            {"127.0.0.1", file, false, "- NKB/s"},
            {"127.0.0.1", file.chopped(1000), true, "- NKB/s"},
            {"127.0.0.1", "", true, "- Canceled"},
            {"127.0.0.1", "HTTP/1.1 404 No\r\nContent-Length: 0\r\n\r\n", false, "- Canceled"},
            {"nobody.example", file, false, "- Canceled"}};
        for (const auto &[host, answer, hangs, cells] : cases) {
            OnePage server(answer, hangs, 8080);
            serve({"near", host});
            m_table->setCurrentCell(1, 0);
            const auto isSent = [&server] {
                return server.request.startsWith("GET /korvantest.dat HTTP/1.1\r\n") &&
                       server.request.endsWith("\r\n\r\n") && server.findChild<QTcpSocket *>()->bytesToWrite() == 0;
            };
            if (hangs) {
                when(isSent, [this] { press("pbTestCancel"); });
            }
            QVERIFY(press("pbSpeedTest"));
            COMPARE_CASE(host + ' ' + answer.left(20), column(3).replace(QRegularExpression("\\d+"), "N"), cells);
        }
    }

    /// A connection that starts meanwhile ends the test.
    void noTestThroughTheTunnel()
    {
        serve({"slow"});
        m_table->setCurrentCell(0, 0);
        when([] { return pings().contains(" slow "); }, [this] { m_window->setStatus(STATUS_CONNECTING); });
        QVERIFY(press("pbPingDet"));
        QCOMPARE(column(1) + column(2), QString("N/A-"));
    }

    void refusals()
    {
        serve({"near"});
        for (const char *name : {"pbPingDet", "pbSpeedTest"}) {
            boxes.expect("Error", "Please select one server.");
            QVERIFY2(press(name) && boxes.left() == 0, name);
        }
        m_window->setStatus(STATUS_CONNECTING);
        for (const char *name : {"pbPingAll", "pbPingDet", "pbSpeedTest"}) {
            boxes.expect("Notify", "Please disconnect first.");
            QVERIFY2(press(name) && boxes.left() == 0, name);
        }
        QCOMPARE(column(1) + column(3) + pings(), QString("--"));
    }

    /// As text, and each column with an alternation of its own.
    void headerSorts()
    {
        serve({"near", "near", "near"});
        find<KvRetinaTabBar>("tab")->setCurrentIndex(4);
        for (int row = 0; row < 3; ++row) {
            m_table->setItem(row, 1, new QTableWidgetItem(QStringList{"114ms", "23ms", "9ms"}.at(row)));
        }
        for (const auto &[section, cells] :
             {std::pair(1, "9ms 23ms 114ms"), std::pair(1, "114ms 23ms 9ms"),
              std::pair(0, "Server 2 Server 1 Server 0"), std::pair(1, "9ms 23ms 114ms"),
              std::pair(0, "Server 0 Server 1 Server 2")}) {
            if (section == 0) {
                m_table->setCurrentCell(1, 0);
                QTest::keyClick(m_table, Qt::Key_Return);
            } else {
                clickHeader(section);
            }
            QCOMPARE(column(section), QString(cells));
        }
    }

private:
    /// Makes these hosts the servers "Server 0", "Server 1" and so on.
    void serve(const QStringList &hosts) const
    {
        QFile::remove(appPath("/fake/pings"));
        QDir(appPath("/cfg/OpenVPN")).removeRecursively();
        for (int i = 0; i < hosts.size(); ++i) {
            putFile(appPath("/cfg/OpenVPN/Server %1.ovpn").arg(i), "remote " + hosts.at(i).toUtf8() + " 1194\n");
        }
        m_window->updateOpenVPNServerList();
    }

    /// A column of the table, its cells separated by blanks.
    QString column(int number) const
    {
        return items("tbPing", number).replaceInStrings(QRegularExpression("^$"), "-").join(' ');
    }

    /// Which of ping all, detailed ping, speed test and cancel can be pressed, and whether the table sorts.
    QString state() const
    {
        return enabled("a:pbPingAll d:pbPingDet s:pbSpeedTest c:pbTestCancel") +
               (m_table->isSortingEnabled() ? " sorts" : "");
    }

    void clickHeader(int section) const
    {
        const QHeaderView *header = m_table->horizontalHeader();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, {header->sectionViewportPosition(section) + 20, 9});
    }

    static QByteArray pings() { return fileBytes(appPath("/fake/pings")); }

    QTableWidget *m_table = nullptr;
};

QTEST_MAIN(DiagnosticsTest)
#include "DiagnosticsTest.moc"
