#include "helpers/compose4/ServiceLock.h"

#include "names/Names.h"

#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

bool lockService(const Service &service, LockHolder holder)
{
    constexpr int kTries = 300;
    constexpr useconds_t kPauseUs = 50000;
    const std::string path = std::string(kJournalFolder) + "/" + service.name + ".lock";
    mkdir(kJournalFolder, 0700);
    // Left open: the end of the process unlocks it. This kind of lock tells who holds it.
    const int fd = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    for (int i = 0; i < kTries && fd >= 0; ++i) {
        struct flock lock = {};
        lock.l_type = F_WRLCK;
        if (fcntl(fd, F_SETLK, &lock) == 0) {
            return true;
        }
        const bool held = fcntl(fd, F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK && lock.l_pid > 0;
        if (held && holder == LockHolder::End) {
            kill(lock.l_pid, SIGTERM);
        }
        usleep(kPauseUs);
    }
    return false;
}
