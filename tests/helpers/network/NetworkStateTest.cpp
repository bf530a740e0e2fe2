#include "helpers/network/Offer.h"
#include "helpers/network/State.h"
#include "tests/support/Cases.h"

#include <QTest>

using Environment = std::map<std::string, std::string>;

/// What a server's environment and the journal are read as, and which packets may leave then.
class NetworkStateTest : public QObject
{
    Q_OBJECT

private slots:
    void offers()
    {
        const std::pair<Environment, QByteArray> cases[] = {
            {{{"dev", "tun0"}, {"daemon_pid", "42"}, {"trusted_ip", "203.0.113.9"}}, "tun0 42 203.0.113.9"},
            {{{"dev", "tun0;reboot"}, {"daemon_pid", "-1"}, {"trusted_ip6", "2001:db8::9"}},
             "tun0;reboot -1 2001:db8::9"},
            {{{"dev", "../x"}}, " 0  !no interface name: \"../x\""},
            {{{"dev", "a b"}, {"trusted_ip", "1.2.3"}}, " 0  !no interface name: \"a b\""},
            {option("dhcp-option DNS 198.18.0.1"), "t 0  dns 198.18.0.1"},
            {option("dhcp-option DNS6 fd00::1%eth0"), "t 0  !no address: \"fd00::1%eth0\""},
            {option("dhcp-option DNS 198.18.0.1\nnameserver 1.2.3.4"),
             "t 0  !no address: \"198.18.0.1?nameserver 1.2.3.4\""},
            {option("dhcp-option DOMAIN corp.example"), "t 0  in corp.example"},
            {option("dhcp-option DOMAIN a..b"), "t 0  !no domain: \"a..b\""},
            {option("dhcp-option DOMAIN -a"), "t 0  !no domain: \"-a\""},
            {option("dhcp-option DOMAIN a b"), "t 0  !no domain: \"a b\""},
            {option("route 192.0.2.0"), "t 0 "},
            {remotes({}), "t 0 198.51.100.1 at a.example b.example"},
            {remotes({{"http_proxy_server_1", "proxy.example"}}), "t 0 198.51.100.1"},
            {remotes({{"remote_1", "198.51.100.1"}}), "t 0 198.51.100.1"},
            {remotes({{"remote_1", "a;b"}}), "t 0 198.51.100.1 at b.example"},
            {routes({{"0.0.0.0", "128.0.0.0", "198.18.0.1"}, {"128.0.0.0", "128.0.0.0", "198.18.0.1"}}),
             "t 0  routes all"},
            {routes({{"10.0.0.0", "255.0.0.0", "198.18.0.1"}}), "t 0  routes"},
            {routes({{"0.0.0.0", "0.0.0.0", "192.0.2.1"}, {"10.1.2.3", "255.255.0.0", "192.0.2.1"}}),
             "t 0  to 0.0.0.0/0 to 10.1.0.0/16 routes"},
            {routes({{"10.0.0.0", "255.0.255.0", "192.0.2.1"}}), "t 0  routes !no destination: \"10.0.0.0\""},
        };
        for (const auto &[environment, expected] : cases) {
            COMPARE_CASE(expected, shown(offerIn(environment)), expected);
        }
    }

    void journal()
    {
        State state;
        state.isLocked = true;
        state.marksBefore = "0";
        state.owner = {4711, 99};
        state.routes = {bytesOf(routeTo({}, "192.0.2.1", 3, 100)), bytesOf(routeTo("10.0.0.0/8", "192.0.2.2", 3))};
        state.services = {"10.0.0.1"};
        Tunnel tunnel;
        tunnel.process = {42, 7};
        tunnel.offer.device = "tun0";
        tunnel.link = 5;
        tunnel.isEstablished = true;
        tunnel.resolver = Resolver::File;
        tunnel.offer.nameServers = {"198.18.0.1", "fd00::1"};
        tunnel.offer.domains = {"corp.example"};
        tunnel.offer.server = "203.0.113.9";
        tunnel.offer.ordinary = {"192.0.2.0/24"};
        state.tunnels = {tunnel, Tunnel()};
        const std::string text = journalOf(state);
        QCOMPARE(journalOf(readState(text)), text);
        const Route route = readRoute(readState(text).routes.at(0));
        QVERIFY(isDefault(route) && areSameWay(route, routeTo({}, "192.0.2.1", 3, 100)));
        QVERIFY(!areSameWay(route, routeTo({}, "192.0.2.2", 3, 100)) && !readRoute({1, 2, 3}));
        QVERIFY(hasSameDestination(readRoute(state.routes.at(1)), routeTo("10.0.0.0/8", {}, 0)));
        QVERIFY(journalOf(State()).empty());
        for (const std::string &broken :
             {text.substr(0, text.size() / 2), std::string("[]"), std::string("{\"tunnels\": 1}")}) {
            QVERIFY(journalOf(readState(broken)).empty());
        }
    }

    void policies()
    {
        // takesAll, device, name servers, locked, undecided: closed, the local network is asked, ordinary ways
        const std::tuple<bool, bool, bool, bool, bool, QByteArray> cases[] = {
            {false, false, false, false, false, "open"},      {false, true, true, false, false, "open +"},
            {true, true, true, false, false, "closed +"},     {true, true, false, false, false, "closed asked +"},
            {true, false, true, false, false, "closed +"}, // OpenVPN has taken its tunnel down
            {true, true, false, true, false, "closed asked"}, {false, true, true, true, false, "closed"},
            {false, false, false, true, false, "closed"},     {false, false, false, false, true, "closed"},
        };
        for (const auto &[takesAll, device, servers, locked, undecided, expected] : cases) {
            State state;
            state.isLocked = locked;
            state.isUndecided = undecided;
            Tunnel tunnel;
            tunnel.takesAll = takesAll;
            tunnel.offer.device = device ? "tun0" : "";
            tunnel.link = 5;
            tunnel.port = 44358;
            tunnel.manager = 1000;
            tunnel.offer.nameServers.resize(servers ? 1 : 0);
            tunnel.offer.ordinary =
                device || takesAll ? std::set<std::string>{"192.0.2.0/24"} : std::set<std::string>();
            state.tunnels = {tunnel};
            Policy policy = policyOf(state);
            QByteArray came = policy["closed"].size() == 2 ? "closed" : "open";
            came += QByteArray(policy["asked"].empty() ? "" : " asked") + (policy["ordinary"].empty() ? "" : " +");
            COMPARE_CASE(expected, came, expected);
            QVERIFY(policy["ports"].count("44358") == 1 &&
                    policy["managers"] == (std::set<std::string>{"0", "1000"}));
        }
    }

    /// What the person is told.
    void pastTheTunnel()
    {
        const char *gateway = "198.18.0.1";
        Environment many = routes({});
        for (int n = 1; n < 11; ++n) {
            many["route_ipv6_network_" + std::to_string(n)] = n == 1 ? "fd00::/8 x" : "2000::/" + std::to_string(n);
        }
        Environment redirected = routes({{"192.0.2.9", "255.255.255.255", "192.0.2.1"}});
        redirected["redirect_gateway"] = "1";
        const std::pair<Environment, const char *> cases[] = {
            {routes({}), "all"}, // an IPv6 address alone, too
            {routes({{"0.0.0.0", "128.0.0.0", gateway}, {"128.0.0.0", "128.0.0.0", gateway}}), "nothing"},
            {redirected, "192.0.2.9/32"},
            {routes({{"0.0.0.0", "128.0.0.0", gateway}}), "all but 0.0.0.0/1"},
            {routes({{"10.0.0.0", "255.0.0.0", gateway}, {"10.1.0.0", "255.255.0.0", "192.0.2.1"}}),
             "all but 10.0.0.0/8; 10.1.0.0/16"},
            {many, "all but 2000::/2, 2000::/3, 2000::/4, 2000::/5, 2000::/6, 2000::/7, 2000::/8, 2000::/9, ..."},
        };
        for (const auto &[environment, told] : cases) {
            COMPARE_CASE(told, QByteArray::fromStdString(pastTunnel(offerIn(environment))), QByteArray(told));
        }
    }

private:
    using Row = std::array<const char *, 3>;

    /// OpenVPN's environment is the process'.
    static Offer offerIn(const Environment &environment)
    {
        clearenv();
        for (const auto &[name, value] : environment) {
            setenv(name.c_str(), value.c_str(), 1);
        }
        return readOffer();
    }

    static Environment option(const char *text) { return {{"dev", "t"}, {"foreign_option_1", text}}; }

    static Environment remotes(const Environment &more)
    {
        Environment environment = more;
        environment.insert({{"dev", "t"},
                            {"trusted_ip", "198.51.100.1"},
                            {"remote_1", "a.example"},
                            {"remote_2", "b.example"},
                            {"remote_3", "b.example"}});
        return environment;
    }

    static Environment routes(const std::vector<Row> &rows)
    {
        Environment environment = {
            {"dev", "t"}, {"route_net_gateway", "192.0.2.1"}, {"route_vpn_gateway", "198.18.0.1"}};
        int n = 0;
        for (const Row &row : rows) {
            const std::string number = std::to_string(++n);
            environment["route_network_" + number] = row[0];
            environment["route_netmask_" + number] = row[1];
            environment["route_gateway_" + number] = row[2];
        }
        return environment;
    }

    static QByteArray shown(const Offer &offer)
    {
        std::string text = offer.device + " " + std::to_string(offer.process) + " " + offer.server;
        const auto add = [&text](const char *what, const std::vector<std::string> &list) {
            for (const std::string &each : list) {
                text += what + each;
            }
        };
        text += offer.names.empty() ? "" : " at";
        add(" ", {offer.names.begin(), offer.names.end()});
        add(" dns ", offer.nameServers);
        add(" in ", offer.domains);
        add(" to ", {offer.ordinary.begin(), offer.ordinary.end()});
        text += std::string(offer.hasRoutes ? " routes" : "") + (offer.takesAll ? " all" : "");
        add(" !", offer.problems);
        return QByteArray::fromStdString(text);
    }
};

QTEST_GUILESS_MAIN(NetworkStateTest)
#include "NetworkStateTest.moc"
