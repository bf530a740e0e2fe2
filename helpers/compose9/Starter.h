#pragma once

#include <optional>
#include <string>
#include <sys/types.h>

/// Who starts the program after an update. Whoever updates a program that is not their own user's leaves that to the
/// person: a process of theirs waits at the other end of standard output, a socket. It starts the program for every
/// line that comes, hands it the line, and answers with the exit status once the program has ended.
class Starter
{
public:
    /// `person` is the number of that user, if there is one.
    Starter(std::string program, std::optional<uid_t> person) : m_program(std::move(program)), m_person(person) {}

    /// The user as whom the program runs.
    uid_t user() const;
    bool isForAPerson() const { return m_person.has_value(); }

    /// Starts the program, which is told what came of the update: a line of the log.
    void start(const std::string &outcome);

    /// Watches the started program for `watchMs`: an empty text when it still runs then, or ended with status 0
    /// before, else how it ended.
    std::string watch(int watchMs) const;

private:
    std::string m_program;
    std::optional<uid_t> m_person;
    int m_process = -1;
};
