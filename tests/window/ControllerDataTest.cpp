#include "controller/EngineMessage.h"
#include "controller/Options.h"
#include "tests/support/Cases.h"

/// The controller's knowledge that needs no window.
class ControllerDataTest : public QObject
{
    Q_OBJECT

private slots:
    void optionFileByteForByte()
    {
        // clang-format off
        const Options options{3, 2, "host", "8080x", true, QString::fromUtf8("ë"), "p", false, false, true, false, true,
                              "Ex", 4, "L2TP", false, true};
        const QByteArray expected = "00000003" "00000002" "00000008" "0068006f00730074" "0000000a" "00380030003800300078" "01"
                                    "00000008" "0052004200530036" "00000004" "00300070" "00" "00" "01" "00" "01"
                                    "00000004" "00450078" "00000004" "00000008" "004c003200540050" "00" "01";
        // clang-format on
        QCOMPARE(optionBytes(options).toHex(), expected);
        QCOMPARE(optionBytes(optionsOf(QByteArray::fromHex(expected))).toHex(), expected);
    }

    void messages()
    {
        const std::tuple<const char *, const char *, EngineMessage> cases[] = {
            {"[ERROR]openvpn error, please check log", "OpenVPN", EngineMessage::TunnelFailed},
            {"[ERROR]openvpn error, 691", "L2TP", EngineMessage::TunnelFailed},
            {"[ERROR]openvpn compose is missed.", "OpenVPN", EngineMessage::Error},
            {"[ERROR]Error 691", "L2TP", EngineMessage::L2TPLoginFailed},
            {"[ERROR]Error 691", "OpenVPN", EngineMessage::Error},
            {"[ERROR]Error 691", "l2tp", EngineMessage::Error},
            {"Error 691", "L2TP", EngineMessage::Progress},
            {"[error]", "OpenVPN", EngineMessage::Progress},
            {"", "", EngineMessage::Progress}};
        for (const auto &[message, protocol, meaning] : cases) {
            COMPARE_CASE(message, classifyMessage(message, protocol), meaning);
        }
    }

    void serverAddresses()
    {
        const std::pair<const char *, const char *> cases[] = {
            {"UDPv4 link remote: [AF_INET]10.1.2.3:1194", "10.1.2.3"},
            {"TCPv4_CLIENT link remote: [AF_INET]10.1.2.3:443", "10.1.2.3"},
            {"2026-11-22 10:00:01 UDPv4 link local: (not bound)\n"
             "2026-11-22 10:00:01 UDPv4 link remote: [AF_INET]198.51.100.7:1194\n"
             "2026-11-22 10:00:02 [server] Peer Connection Initiated with [AF_INET]198.51.100.7:1194\n",
             "198.51.100.7"},
            {"UDPv4 link remote: 10", "10"}, // no port
            {"UDPv6 link remote: [AF_INET6]::1:1194", nullptr}};
        for (const auto &[message, address] : cases) {
            COMPARE_CASE(message, serverAddressOf(message), address);
            COMPARE_CASE(message, serverAddressOf(message).isNull(), address == nullptr);
        }
    }
};

QTEST_GUILESS_MAIN(ControllerDataTest)
#include "ControllerDataTest.moc"
