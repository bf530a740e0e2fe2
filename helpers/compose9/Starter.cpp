#include "helpers/compose9/Starter.h"

#include "helpers/compose9/Processes.h"
#include "helpers/system/Descriptor.h"
#include "names/Names.h"

#include <cstdlib>
#include <poll.h>
#include <unistd.h>

uid_t Starter::user() const
{
    return m_person.value_or(getuid());
}

void Starter::start(const std::string &outcome)
{
    if (isForAPerson()) {
        writeAll(STDOUT_FILENO, outcome + '\n');
    } else {
        setenv(kUpdateOutcome, outcome.c_str(), 1);
        m_process = startProgram(m_program);
    }
}

std::string Starter::watch(int watchMs) const
{
    if (!isForAPerson()) {
        return ::watch(m_process, watchMs);
    }
    pollfd answer = {STDOUT_FILENO, POLLIN, 0};
    char status[8] = {};
    if (poll(&answer, 1, watchMs) <= 0 || read(STDOUT_FILENO, status, sizeof status - 1) <= 0 ||
        std::string(status) == "0\n") {
        return {};
    }
    return "it ended at once with status " + std::string(status, std::string(status).find('\n'));
}
