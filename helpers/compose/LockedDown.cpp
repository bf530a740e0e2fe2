#include "helpers/compose/LockedDown.h"

#include "helpers/system/Checks.h"
#include "helpers/system/Journal.h"
#include "names/Names.h"

#include <cstdlib>
#include <netdb.h>
#include <sstream>

Addresses parseAddresses(const std::string &text)
{
    Addresses addresses;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string name;
        std::string address;
        if (words >> name >> address && (isIpv4(address) || isIpv6(address))) {
            addresses[name] = address;
        }
    }
    return addresses;
}

Addresses lastAddresses()
{
    return parseAddresses(readJournal(kLastRemote).text);
}

bool canBeResolved(const std::string &name)
{
    setenv("RES_OPTIONS", "timeout:1 attempts:1", 1);
    addrinfo hints = {};
    hints.ai_socktype = SOCK_DGRAM;
    addrinfo *results = nullptr;
    if (getaddrinfo(name.c_str(), nullptr, &hints, &results) != 0) {
        return false;
    }
    freeaddrinfo(results);
    return true;
}

std::vector<std::string> replaceNames(std::vector<Directive> &directives, const Addresses &addresses,
                                      bool (*resolves)(const std::string &name))
{
    std::vector<std::string> notes;
    for (Directive &directive : directives) {
        const auto inner = replaceNames(directive.inner, addresses, resolves);
        notes.insert(notes.end(), inner.begin(), inner.end());
        if (directive.name() != "remote" || directive.words.size() < 2) {
            continue;
        }
        std::string &name = directive.words[1];
        const auto known = addresses.find(name);
        if (known == addresses.end() || resolves(name)) {
            continue;
        }
        notes.push_back(atLine(directive.line, name + " can not be resolved, its last address is used"));
        name = known->second;
    }
    return notes;
}
