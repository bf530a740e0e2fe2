#include "helpers/tools/RouteJournal.h"

#include "helpers/system/Journal.h"
#include "names/Names.h"

#include <algorithm>
#include <iterator>
#include <sstream>

bool RouteJournal::add(const std::vector<RouteWords> &newRoutes, const std::set<std::string> &newSwitches)
{
    const size_t known = routes.size() + markSwitches.size();
    std::vector<RouteWords> all = newRoutes;
    std::copy_if(routes.begin(), routes.end(), std::back_inserter(all), [&newRoutes](const RouteWords &route) {
        return std::find(newRoutes.begin(), newRoutes.end(), route) == newRoutes.end();
    });
    routes = std::move(all);
    markSwitches.insert(newSwitches.begin(), newSwitches.end());
    return routes.size() + markSwitches.size() != known;
}

RouteJournal loadRouteJournal()
{
    const JournalText stored = readJournal(kRouteJournal);
    RouteJournal journal;
    journal.problem = stored.state == JournalText::State::Refused ? stored.reason : std::string();
    std::istringstream lines(stored.text);
    std::string line;
    while (std::getline(lines, line)) {
        RouteWords words = splitWords(line);
        if (words.size() > 1 && words[0] == "route") {
            journal.routes.emplace_back(words.begin() + 1, words.end());
        } else if (words.size() == 2 && words[0] == "src_valid_mark") {
            journal.markSwitches.insert(words[1]);
        }
    }
    return journal;
}

std::string storeRouteJournal(const RouteJournal &journal)
{
    std::string text;
    for (const RouteWords &route : journal.routes) {
        text += "route " + joinWords(route) + "\n";
    }
    for (const std::string &interface : journal.markSwitches) {
        text += "src_valid_mark " + interface + "\n";
    }
    return writeJournal(kRouteJournal, text);
}

std::string removeRouteJournal()
{
    return removeJournal(kRouteJournal);
}
