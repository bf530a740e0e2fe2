#include "account/SavedLogin.h"
#include "controller/EngineMessage.h"
#include "controller/Options.h"
#include "controller/TunnelProxy.h"

#include <QTest>
#include <QtEndian>

/// The controller's knowledge that needs no window.
class ControllerDataTest : public QObject
{
    Q_OBJECT

private slots:
    void optionFileByteForByte();
    void optionFileCutAnywhere();
    void messages_data();
    void messages();
    void serverAddresses_data();
    void serverAddresses();
    void proxyParameters_data();
    void proxyParameters();
};

static Options someOptions()
{
    Options o;
    o.server = 3;
    o.proxyType = 2;
    o.proxyAddress = "proxy.example";
    o.proxyPort = "8080x";
    o.proxyAuth = true;
    o.proxyUser = QString::fromUtf8("Zoë");
    o.proxyPassword = "p w";
    o.hideConnection = true;
    o.noSound = true;
    o.bootServer = "Examplia-1";
    o.updateFrequency = 4;
    o.protocol = "L2TP";
    o.lockDown = true;
    return o;
}

static QByteArray int32(qint32 value)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(value, bytes.data());
    return bytes;
}

static QByteArray text(const QString &value)
{
    QByteArray bytes = int32(2 * value.size());
    for (const QChar character : value) {
        bytes += static_cast<char>(character.unicode() >> 8);
        bytes += static_cast<char>(character.unicode() & 0xff);
    }
    return bytes;
}

static QByteArray flag(bool value)
{
    return QByteArray(1, value ? '\1' : '\0');
}

void ControllerDataTest::optionFileByteForByte()
{
    const QByteArray expected = int32(3) + int32(2) + text("proxy.example") + text("8080x") + flag(true) +
                                text(encode(QString::fromUtf8("Zoë"))) + text(encode("p w")) + flag(false) +
                                flag(false) + flag(true) + flag(false) + flag(true) + text("Examplia-1") + int32(4) +
                                text("L2TP") + flag(false) + flag(true);
    QCOMPARE(optionBytes(someOptions()), expected);
    QCOMPARE(optionBytes(optionsOf(expected)), expected);
}

void ControllerDataTest::optionFileCutAnywhere()
{
    const QByteArray whole = optionBytes(someOptions());
    for (int length = 0; length < whole.size(); ++length) {
        const Options cut = optionsOf(whole.left(length));
        QVERIFY2(!cut.lockDown, "the last field is the last to be there");
        QCOMPARE(cut.server, length < 4 ? 0 : 3);
    }
    optionsOf(QByteArray(64, '\xff')); // lengths beyond the file's end
    optionsOf(int32(1) + int32(1) + int32(0x7ffffffe));
}

void ControllerDataTest::messages_data()
{
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("protocol");
    QTest::addColumn<int>("meaning");
    const auto row = [](const char *message, const char *protocol, EngineMessage meaning) {
        QTest::newRow(qPrintable(QString("%1 / %2").arg(message, protocol)))
            << QString(message) << QString(protocol) << int(meaning);
    };
    row("[ERROR]openvpn error, please check log", "OpenVPN", EngineMessage::TunnelFailed);
    row("[ERROR]openvpn error, 691", "L2TP", EngineMessage::TunnelFailed);
    row("[ERROR]openvpn compose is missed.", "OpenVPN", EngineMessage::Error);
    row("[ERROR]Error 691", "L2TP", EngineMessage::L2TPLoginFailed);
    row("[ERROR]Error 691", "OpenVPN", EngineMessage::Error);
    row("[ERROR]Error 691", "l2tp", EngineMessage::Error);
    row("Error 691", "L2TP", EngineMessage::Progress);
    row("[error]", "OpenVPN", EngineMessage::Progress);
    row("", "", EngineMessage::Progress);
}

void ControllerDataTest::messages()
{
    QFETCH(QString, message);
    QFETCH(QString, protocol);
    QTEST(int(classifyMessage(message, protocol)), "meaning");
}

void ControllerDataTest::serverAddresses_data()
{
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("address");
    QTest::newRow("UDP") << "UDPv4 link remote: [AF_INET]10.1.2.3:1194"
                         << "10.1.2.3";
    QTest::newRow("TCP") << "TCPv4_CLIENT link remote: [AF_INET]10.1.2.3:443"
                         << "10.1.2.3";
    QTest::newRow("stamped, one of several lines")
        << "2026-11-22 10:00:01 UDPv4 link local: (not bound)\n"
           "2026-11-22 10:00:01 UDPv4 link remote: [AF_INET]198.51.100.7:1194\n"
           "2026-11-22 10:00:02 [server] Peer Connection Initiated with [AF_INET]198.51.100.7:1194\n"
        << "198.51.100.7";
    QTest::newRow("no port") << "UDPv4 link remote: 10"
                             << "10";
    QTest::newRow("no marker") << "UDPv6 link remote: [AF_INET6]::1:1194" << QString();
}

void ControllerDataTest::serverAddresses()
{
    QFETCH(QString, message);
    QFETCH(QString, address);
    const QString found = serverAddressOf(message);
    QCOMPARE(found, address);
    QCOMPARE(found.isNull(), address.isNull());
}

void ControllerDataTest::proxyParameters_data()
{
    QTest::addColumn<bool>("http");
    QTest::addColumn<bool>("socks");
    QTest::addColumn<QString>("credentials");
    QTest::addColumn<QString>("parameters");
    QTest::newRow("none") << false << false << ""
                          << "|--cd|/f/";
    QTest::newRow("HTTP") << true << false << ""
                          << "|--http-proxy|h|1|"
                             "|--cd|/f/";
    QTest::newRow("HTTP with credentials") << true << false << "/p"
                                           << "|--http-proxy|h|1|/p|--cd|/f/";
    QTest::newRow("SOCKS") << false << true << ""
                           << "|--socks-proxy|h|1|--cd|/f/";
    QTest::newRow("both: SOCKS") << true << true << "/p"
                                 << "|--socks-proxy|h|1|--cd|/f/";
}

void ControllerDataTest::proxyParameters()
{
    QFETCH(bool, http);
    QFETCH(bool, socks);
    QFETCH(QString, credentials);
    TunnelProxy proxy;
    proxy.http = http;
    proxy.socks = socks;
    proxy.address = "h";
    proxy.port = "1";
    proxy.credentials = credentials;
    QTEST(openVPNParameters(proxy, "/f/"), "parameters");
}

QTEST_GUILESS_MAIN(ControllerDataTest)
#include "ControllerDataTest.moc"
