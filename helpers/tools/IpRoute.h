#pragma once

#include <string>
#include <vector>

constexpr char kIpTool[] = "/usr/sbin/ip";

/// The complaint about a route or rule that is there already.
constexpr char kAlreadyThere[] = "File exists";

/// A route in the words of "ip route", which prints what it takes: "default via 192.0.2.1 dev eth0 metric 100".
using RouteWords = std::vector<std::string>;

RouteWords splitWords(const std::string &line);
std::string joinWords(const RouteWords &words);

/// The values that follow each `key`: the gateways for "via", the interfaces for "dev". A route has several when it
/// spreads over several uplinks.
std::vector<std::string> valuesAfter(const RouteWords &route, const std::string &key);

/// The IPv4 routes of the main table, without the words that show a state and are no part of the route.
std::vector<RouteWords> mainTable();

/// Runs "ip -4" with these words. Returns the reason of a failure in ip's own words, or an empty text.
std::string changeRouting(const RouteWords &words);

/// "ip -4 route ACTION ROUTE table TABLE", run like changeRouting().
std::string changeRoute(const char *action, const RouteWords &route, const std::string &table = "main");

/// True for a route that sends packets out by default (and does not reject them).
bool isDefaultRoute(const RouteWords &route);

/// True when every interface of the route is a tunnel's or another point-to-point link.
bool leadsIntoTunnel(const RouteWords &route);

/// True when there is a default route that does not lead into a tunnel.
bool hasUplinkRoute();
