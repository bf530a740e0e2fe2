#pragma once

#include "lab/service/Account.h"
#include "lab/service/Orders.h"

#include <string>
#include <utility>
#include <vector>

/// What the service knows of the world.
struct Site
{
    Accounts accounts;
    std::string certificate;                                    ///< PEM file of the web server
    std::string key;                                            ///< PEM file of its key
    std::vector<std::pair<std::string, std::string>> countries; ///< beginning of an address, name of its country
    std::string version;                                        ///< of the program, as it is offered without archives
    std::string archives;                                       ///< folder of its updates; empty when there are none
};

/// Serves the pages on ports 80 and 443 and the control requests on port 9090, on all addresses. Prints "ready" once
/// all ports answer. Returns only on failure, after one line on standard error.
void serveSite(const Site &site);

/// Serves the speed-test file on port 8080, likewise.
void serveSpeedTest();
