#include "lab/service/Web.h"
#include "lab/service/Wire.h"

#include <csignal>
#include <cstdio>
#include <getopt.h>

namespace {

int usage()
{
    std::fputs("usage: lab_service speedtest\n"
               "       lab_service site --users FILE --profiles FOLDER --certificate FILE --key FILE\n"
               "                        [--archives FOLDER] [--country ADDRESS-PREFIX=NAME]...\n"
               "       lab_service wire tap|tun NAMESPACE DEVICE NAMESPACE DEVICE\n",
               stderr);
    return 2;
}

/// False when there is an option that is none.
bool readOptions(int count, char **arguments, Site &site)
{
    const option options[] = {{"users", required_argument, nullptr, 'u'},
                              {"profiles", required_argument, nullptr, 'p'},
                              {"certificate", required_argument, nullptr, 'c'},
                              {"key", required_argument, nullptr, 'k'},
                              {"country", required_argument, nullptr, 'n'},
                              {"archives", required_argument, nullptr, 'a'},
                              {nullptr, 0, nullptr, 0}};
    for (int choice = 0; (choice = getopt_long(count, arguments, "", options, nullptr)) != -1;) {
        const std::string value = optarg ? optarg : "";
        switch (choice) {
        case 'u':
            site.accounts.users = value;
            break;
        case 'p':
            site.accounts.profiles = value;
            break;
        case 'c':
            site.certificate = value;
            break;
        case 'k':
            site.key = value;
            break;
        case 'a':
            site.archives = value;
            break;
        case 'n':
            site.countries.emplace_back(value.substr(0, value.find('=')), value.substr(value.find('=') + 1));
            break;
        default:
            return false;
        }
    }
    return true;
}

} // namespace

/// The web part of the service: all pages, or the speed-test file of a VPN server; or a wire between two namespaces.
/// Ends with 1 when it can not serve.
int main(int count, char **arguments)
{
    std::signal(SIGPIPE, SIG_IGN);
    if (count == 7 && arguments[1] == std::string("wire")) {
        carry(arguments[2], {arguments[3], arguments[4]}, {arguments[5], arguments[6]});
        return 1;
    }
    Site site;
    site.version = KORVAN_VERSION;
    if (!readOptions(count, arguments, site)) {
        return usage();
    }
    const std::string what = optind + 1 == count ? arguments[optind] : "";
    if (what == "site" && !site.accounts.users.empty() && !site.accounts.profiles.empty() && !site.key.empty() &&
        !site.certificate.empty()) {
        serveSite(site);
    } else if (what == "speedtest") {
        serveSpeedTest();
    } else {
        return usage();
    }
    return 1;
}
