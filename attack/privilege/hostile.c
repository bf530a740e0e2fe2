// A library, and with main() a program, that notes with whose rights it runs: in the folder GAINED, by a file that is
// named after the user.
#include <stdio.h>
#include <unistd.h>

__attribute__((constructor)) static void note(void)
{
    char path[200];
    snprintf(path, sizeof path, GAINED "/%d-%d", geteuid(), getpid());
    FILE *file = fopen(path, "w");
    if (file) {
        fclose(file);
    }
}

int main(void)
{
    return 0;
}
