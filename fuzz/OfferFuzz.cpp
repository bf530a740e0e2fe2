#include "helpers/network/Offer.h"
#include "helpers/network/State.h"
#include "helpers/system/Checks.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>

namespace {

bool isWord(const std::string &text)
{
    return !text.empty() && std::none_of(text.begin(), text.end(), [](char c) { return c <= ' ' || c > '~'; });
}

void insist(bool condition)
{
    if (!condition) {
        std::abort();
    }
}

} // namespace

// The environment of OpenVPN's scripts, "NAME=VALUE" lines: what is let through is a single word wherever it goes,
// and comes back from the journal as it was.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    std::string text(reinterpret_cast<const char *>(data), size);
    readState(text);
    clearenv();
    for (size_t from = 0, to = 0; from < text.size(); from = to + 1) {
        to = std::min(text.find('\0', from), text.size());
        const size_t equals = std::min(text.find('=', from), to);
        const std::string value = text.substr(std::min(equals + 1, to), to - std::min(equals + 1, to));
        setenv(text.substr(from, equals - from).c_str(), value.c_str(), 1);
    }
    const Offer offer = readOffer();
    insist(offer.device.empty() || isWord(offer.device));
    insist(offer.server.empty() || isIpv4(offer.server) || isIpv6(offer.server));
    insist(std::all_of(offer.nameServers.begin(), offer.nameServers.end(), isWord));
    insist(std::all_of(offer.domains.begin(), offer.domains.end(), isWord));
    insist(std::all_of(offer.names.begin(), offer.names.end(), isWord));
    insist(std::none_of(offer.problems.begin(), offer.problems.end(), hasControl));
    State state;
    state.tunnels.emplace_back();
    state.tunnels.back().offer = offer;
    insist(journalOf(readState(journalOf(state))) == journalOf(state));
    return 0;
}

#ifndef KORVAN_LIBFUZZER
/// offer_fuzz ROUNDS: environments of the names that are read and of broken values, always the same.
int main(int argc, char *argv[])
{
    constexpr const char *kNames[] = {"dev",
                                      "daemon_pid",
                                      "trusted_ip",
                                      "trusted_ip6",
                                      "remote_1",
                                      "remote_2",
                                      "foreign_option_1",
                                      "foreign_option_2",
                                      "route_network_1",
                                      "route_netmask_1",
                                      "route_gateway_1",
                                      "route_net_gateway"};
    constexpr const char *kPieces[] = {"tun0",    "1.2.3.4",      "0.0.0.0", "255.0.0.0",
                                       "fd00::1", "dhcp-option ", "DNS ",    "DOMAIN ",
                                       "a.b",     "..",           "-",       " ",
                                       "\n",      "\t",           "\xff",    "\x1b[2J",
                                       "/",       "42",           "",        "99999999999999999999"};
    std::mt19937 random(1);
    const auto pick = [&random](const auto &list) {
        return list[std::uniform_int_distribution<size_t>(0, std::size(list) - 1)(random)];
    };
    const long rounds = argc > 1 ? std::strtol(argv[1], nullptr, 10) : 100000;
    for (long round = 0; round < rounds; ++round) {
        std::string text;
        for (int lines = 0; lines < 6; ++lines) {
            text += std::string(pick(kNames)) + "=" + pick(kPieces) + pick(kPieces) + pick(kPieces);
            text += '\0';
        }
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(text.data()), text.size());
    }
    std::printf("%ld rounds without a finding\n", rounds);
    return 0;
}
#endif
