// The one owner of the machine's network state, as OpenVPN's scripts, the program's down.sh and the guardian start
// it:
//   network up|routes|down    in the environment of OpenVPN's scripts
//   network down              without it: the program has ended its tunnels, or begins anew
//   network end               Korvan goes: ends its tunnels
//   network watch DESCRIPTOR  the guardian of the program that this process descriptor stands for

#include "helpers/network/Guardian.h"
#include "helpers/network/Network.h"
#include "names/PastTunnel.h"

#include <cstdio>
#include <cstdlib>

int main(int argc, char **argv)
{
    const std::string event = argc > 1 ? argv[1] : "";
    const std::string option = argc > 2 ? argv[2] : "";
    const Offer offer = readOffer();
    const Process openVpn = processOf(offer.process);
    Outcome outcome;
    if (event == "watch" && !option.empty()) {
        watchNetwork(int(std::strtol(option.c_str(), nullptr, 10)));
        return 0;
    }
    if (event == "up") {
        outcome = tunnelUp(offer, openVpn);
    } else if (event == "routes") {
        outcome = tunnelRouted(offer, openVpn);
        std::printf("%s%s\n", kPastTunnel, pastTunnel(offer).c_str());
    } else if (event == "down") {
        // What OpenVPN leaves when it takes its tunnel down itself is undone when it has ended.
        outcome = openVpn.start != 0 ? Outcome{true, {}} : tunnelsEnded();
    } else if (event == "end") {
        outcome = endTunnels();
    } else {
        outcome.notes = {"use up|routes|down|end|watch DESCRIPTOR"};
    }
    const std::string name = event == "up" || event == "down" ? event + ".sh" : "network";
    for (const std::string &note : outcome.notes) {
        std::fprintf(stderr, "%s: %s\n", name.c_str(), note.c_str());
    }
    return outcome.done ? 0 : 1;
}
