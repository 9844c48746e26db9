// A browser for tests: appends what it was started with to a file, and ends.
//
// Usage: recording-browser FILE ARGUMENT...
//
// One record is a sequence of fields "name=value", each ended by a zero byte; an empty field ends it. It is
// written at once, so that records of browsers that run at the same time do not mix.

#define _GNU_SOURCE
#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>
#include <unistd.h>

extern char **environ;

static void field(FILE *record, const char *format, ...) {
    va_list values;
    va_start(values, format);
    vfprintf(record, format, values);
    va_end(values);
    fputc('\0', record);
}

static void descriptors(FILE *record) {
    DIR *folder = opendir("/proc/self/fd");
    for (struct dirent *entry = folder ? readdir(folder) : NULL; entry; entry = readdir(folder)) {
        char target[4096] = "";
        if (entry->d_name[0] == '.' || atoi(entry->d_name) == dirfd(folder))
            continue;
        if (readlinkat(dirfd(folder), entry->d_name, target, sizeof target - 1) >= 0)
            field(record, "fd=%s:%s", entry->d_name, target);
    }
    if (folder)
        closedir(folder);
}

static void blockedAndIgnoredSignals(FILE *record) {
    sigset_t blocked;
    sigprocmask(SIG_SETMASK, NULL, &blocked);
    for (int number = 1; number < NSIG; ++number) {
        struct sigaction action;
        if (sigismember(&blocked, number) == 1)
            field(record, "blocked=%d", number);
        if (sigaction(number, NULL, &action) == 0 && action.sa_handler == SIG_IGN)
            field(record, "ignored=%d", number);
    }
}

static void writeAtOnce(const char *path, const char *bytes, size_t length) {
    const int file = open(path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    if (file < 0 || write(file, bytes, length) != (ssize_t)length)
        _exit(127);
    close(file);
}

int main(int count, char **arguments) {
    struct timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    if (count < 2)
        return 127;
    char *bytes = NULL;
    size_t length = 0;
    FILE *record = open_memstream(&bytes, &length);
    char folder[4096] = "";
    field(record, "nanoseconds=%lld", (long long)now.tv_sec * 1000000000 + now.tv_nsec);
    field(record, "pid=%d", (int)getpid());
    field(record, "session=%d", (int)getsid(0));
    field(record, "folder=%s", getcwd(folder, sizeof folder) ? folder : "");
    descriptors(record);
    blockedAndIgnoredSignals(record);
    for (int index = 2; index < count; ++index)
        field(record, "argument=%s", arguments[index]);
    for (char **variable = environ; *variable; ++variable)
        field(record, "variable=%s", *variable);
    fputc('\0', record);
    fclose(record);
    writeAtOnce(arguments[1], bytes, length);
    free(bytes);
    return 0;
}
