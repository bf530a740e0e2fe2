#pragma once

#include <utility>
#include <vector>

/// Names and scripts for runNetworkScript(), each of which prints nothing when all is well.
struct NetworkScripts
{
    const char *setUp; ///< comes before each script; $bundle is where the helpers stand
    std::vector<std::pair<const char *, const char *>> scripts;
};

/// The scripts of one test; each program that is built of NetworkScriptsTest.cpp has its own.
NetworkScripts networkScripts();
