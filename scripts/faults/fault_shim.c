// Makes one call on files fail, for scripts/faults/run_faults.py. Preloaded into the command; the environment says
// which:
//   FAULT_CALL   open read write fsync close rename mkdir unlink link, or "any"
//   FAULT_AT     the number of the call that fails, from 1
//   FAULT_WITH   EIO ENOSPC EACCES EINTR SHORT (a part of a read or write) or KILL (the process ends before the call)
//   FAULT_COUNT  a file that takes the number of calls made
// Calls on the standard streams and on what lies outside FAULT_UNDER (a folder) aren't counted where the path is known.
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

static long made, at;
static const char *call_name, *with, *under;
static int ready;

static void set_up(void) {
    if (ready) return;
    ready = 1;
    call_name = getenv("FAULT_CALL");
    with = getenv("FAULT_WITH");
    under = getenv("FAULT_UNDER");
    at = getenv("FAULT_AT") ? atol(getenv("FAULT_AT")) : 0;
}

static int lies_under(const char* path) {
    char real[4096];
    if (!under || !path) return 1;
    if (path[0] != '/') return 1;
    snprintf(real, sizeof real, "%s", path);
    return strncmp(real, under, strlen(under)) == 0;
}

/// Nonzero where this call is the one that fails; errno is set then.
static int strikes(const char* name) {
    set_up();
    if (!call_name || (strcmp(call_name, name) != 0 && strcmp(call_name, "any") != 0)) return 0;
    if (++made != at) return 0;
    if (strcmp(with, "KILL") == 0) kill(getpid(), SIGKILL);
    if (strcmp(with, "SHORT") == 0) return 2;
    errno = strcmp(with, "EIO") == 0      ? EIO
            : strcmp(with, "ENOSPC") == 0 ? ENOSPC
            : strcmp(with, "EACCES") == 0 ? EACCES
                                          : EINTR;
    return 1;
}

#define REAL(type, name, ...) ((type(*)(__VA_ARGS__))dlsym(RTLD_NEXT, name))

static int fault_open(const char* name, int folder, const char* path, int flags, mode_t mode) {
    if (lies_under(path) && strikes("open") == 1) return -1;
    return folder == AT_FDCWD ? REAL(int, name, const char*, int, mode_t)(path, flags, mode)
                              : REAL(int, name, int, const char*, int, mode_t)(folder, path, flags, mode);
}
int open(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    mode_t mode = va_arg(rest, mode_t);
    va_end(rest);
    return fault_open("open", AT_FDCWD, path, flags, mode);
}
int open64(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    mode_t mode = va_arg(rest, mode_t);
    va_end(rest);
    return fault_open("open64", AT_FDCWD, path, flags, mode);
}
ssize_t read(int file, void* to, size_t count) {
    int strike = file > 2 ? strikes("read") : 0;
    if (strike == 1) return -1;
    return REAL(ssize_t, "read", int, void*, size_t)(file, to, strike == 2 && count > 1 ? count / 2 : count);
}
ssize_t write(int file, const void* from, size_t count) {
    int strike = file > 2 ? strikes("write") : 0;
    if (strike == 1) return -1;
    return REAL(ssize_t, "write", int, const void*, size_t)(file, from, strike == 2 && count > 1 ? count / 2 : count);
}
int fsync(int file) { return strikes("fsync") == 1 ? -1 : REAL(int, "fsync", int)(file); }
int close(int file) {
    int strike = file > 2 ? strikes("close") : 0, error = errno;
    int result = REAL(int, "close", int)(file);
    if (strike != 1) return result;
    errno = error;
    return -1;
}
int rename(const char* from, const char* to) {
    return strikes("rename") == 1 ? -1 : REAL(int, "rename", const char*, const char*)(from, to);
}
int link(const char* from, const char* to) {
    return strikes("link") == 1 ? -1 : REAL(int, "link", const char*, const char*)(from, to);
}
int mkdir(const char* path, mode_t mode) {
    return strikes("mkdir") == 1 ? -1 : REAL(int, "mkdir", const char*, mode_t)(path, mode);
}
int rmdir(const char* path) { return strikes("rmdir") == 1 ? -1 : REAL(int, "rmdir", const char*)(path); }
int unlink(const char* path) { return strikes("unlink") == 1 ? -1 : REAL(int, "unlink", const char*)(path); }
int unlinkat(int folder, const char* path, int flags) {
    return strikes("unlink") == 1 ? -1 : REAL(int, "unlinkat", int, const char*, int)(folder, path, flags);
}
int chmod(const char* path, mode_t mode) {
    return strikes("chmod") == 1 ? -1 : REAL(int, "chmod", const char*, mode_t)(path, mode);
}

__attribute__((destructor)) static void tell_count(void) {
    const char* path = getenv("FAULT_COUNT");
    FILE* file = path ? fopen(path, "w") : NULL;
    if (!file) return;
    fprintf(file, "%ld\n", made);
    fclose(file);
}
