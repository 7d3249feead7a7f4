#include "fault_shim.h"

#include <dirent.h>
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <stdarg.h>
#include <stdio.h>
#include <string.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#define EXPORTED __attribute__((visibility("default")))
#define MAX_DESCRIPTORS 1024

static const struct FaultPlan* plan;
static long calls;
static const char* failed_name = "";
static char counted[MAX_DESCRIPTORS]; /* descriptors that were opened below the root */

/* The function behind ours: the sanitizer's or the C library's. */
#define REAL(name) (__extension__(__typeof__(&name)) dlsym(RTLD_NEXT, #name))

EXPORTED void fault_begin(const struct FaultPlan* new_plan)
{
    memset(counted, 0, sizeof counted);
    calls = 0;
    failed_name = "";
    plan = new_plan;
}

EXPORTED long fault_end(void)
{
    plan = NULL;
    return calls;
}

EXPORTED const char* fault_name(void)
{
    return failed_name;
}

static int below_root(const char* path)
{
    const size_t length = strlen(plan->root);
    return path && strncmp(path, plan->root, length) == 0;
}

static int is_counted(int descriptor)
{
    return descriptor >= 0 && descriptor < MAX_DESCRIPTORS && counted[descriptor];
}

static int note_descriptor(int descriptor)
{
    if (descriptor >= 0 && descriptor < MAX_DESCRIPTORS)
        counted[descriptor] = 1;
    return descriptor;
}

/* Counts a call. True when it must fail: errno is then set. */
static int goes_wrong(const char* name, int needs_room)
{
    ++calls;
    if (plan->kind == FAULT_FULL ? calls < plan->at || !needs_room : calls != plan->at)
        return 0;
    failed_name = name;
    switch (plan->kind) {
    case FAULT_KILL:
        kill(getpid(), SIGKILL);
        return 1;
    case FAULT_VANISH:
        REAL(rename)(plan->victim, plan->away);
        return 0;
    case FAULT_ERROR:
    case FAULT_FULL:
        errno = plan->error;
        return 1;
    default:
        return 0;
    }
}

static int path_fails(const char* name, const char* path, int needs_room)
{
    return plan && below_root(path) && goes_wrong(name, needs_room);
}

static int descriptor_fails(const char* name, int descriptor, int needs_room)
{
    return plan && is_counted(descriptor) && goes_wrong(name, needs_room);
}

/* A function of a path, and one of a descriptor, that answers -1. */
#define PATH_CALL(name, needs_room, parameters, path, arguments)                                             \
    EXPORTED int name parameters                                                                             \
    {                                                                                                        \
        return path_fails(#name, path, needs_room) ? -1 : REAL(name) arguments;                              \
    }
#define DESCRIPTOR_CALL(name, needs_room, parameters, descriptor, arguments)                                 \
    EXPORTED int name parameters                                                                             \
    {                                                                                                        \
        return descriptor_fails(#name, descriptor, needs_room) ? -1 : REAL(name) arguments;                  \
    }

PATH_CALL(stat, 0, (const char* path, struct stat* status), path, (path, status))
PATH_CALL(lstat, 0, (const char* path, struct stat* status), path, (path, status))
PATH_CALL(mkdir, 1, (const char* path, mode_t mode), path, (path, mode))
PATH_CALL(rmdir, 0, (const char* path), path, (path))
PATH_CALL(chmod, 0, (const char* path, mode_t mode), path, (path, mode))
PATH_CALL(unlink, 0, (const char* path), path, (path))
PATH_CALL(remove, 0, (const char* path), path, (path))
PATH_CALL(rename, 0, (const char* from, const char* to), to, (from, to))
PATH_CALL(link, 1, (const char* from, const char* to), to, (from, to))
PATH_CALL(truncate, 0, (const char* path, off_t size), path, (path, size))
DESCRIPTOR_CALL(fstat, 0, (int descriptor, struct stat* status), descriptor, (descriptor, status))
DESCRIPTOR_CALL(fchmod, 0, (int descriptor, mode_t mode), descriptor, (descriptor, mode))
DESCRIPTOR_CALL(ftruncate, 0, (int descriptor, off_t size), descriptor, (descriptor, size))
DESCRIPTOR_CALL(flock, 0, (int descriptor, int operation), descriptor, (descriptor, operation))

/* Processes are killed here and machines are not: nothing is really flushed, which would take its time. */
#define FLUSH_CALL(name)                                                                                     \
    EXPORTED int name(int descriptor)                                                                        \
    {                                                                                                        \
        if (!plan || !is_counted(descriptor))                                                                \
            return REAL(name)(descriptor);                                                                   \
        return goes_wrong(#name, 1) ? -1 : 0;                                                                \
    }
FLUSH_CALL(fsync)
FLUSH_CALL(fdatasync)

/* A descriptor is closed whatever close() answers. */
EXPORTED int close(int descriptor)
{
    const int fails = descriptor_fails("close", descriptor, 0);
    const int error = errno;
    if (descriptor >= 0 && descriptor < MAX_DESCRIPTORS)
        counted[descriptor] = 0;
    const int result = REAL(close)(descriptor);
    if (!fails)
        return result;
    errno = error;
    return -1;
}

EXPORTED ssize_t read(int descriptor, void* bytes, size_t size)
{
    return descriptor_fails("read", descriptor, 0) ? -1 : REAL(read)(descriptor, bytes, size);
}

/* Bytes that no more than half got written, with room left or not, are what a killed writer leaves. */
EXPORTED ssize_t write(int descriptor, const void* bytes, size_t size)
{
    const int next = plan && is_counted(descriptor) && calls + 1 == plan->at;
    if (next && (plan->kind == FAULT_KILL || plan->kind == FAULT_FULL))
        (void)!REAL(write)(descriptor, bytes, size / 2);
    return descriptor_fails("write", descriptor, 1) ? -1 : REAL(write)(descriptor, bytes, size);
}

#define OPEN_CALL(name)                                                                                      \
    EXPORTED int name(const char* path, int flags, ...)                                                      \
    {                                                                                                        \
        va_list arguments;                                                                                   \
        va_start(arguments, flags);                                                                          \
        const mode_t mode = flags & (O_CREAT | O_TMPFILE) ? va_arg(arguments, mode_t) : 0;                   \
        va_end(arguments);                                                                                   \
        if (!plan || !below_root(path))                                                                      \
            return REAL(name)(path, flags, mode);                                                            \
        return goes_wrong(#name, flags & O_CREAT) ? -1 : note_descriptor(REAL(name)(path, flags, mode));     \
    }
OPEN_CALL(open)
OPEN_CALL(open64)

#define CHECKED_OPEN_CALL(name)                                                                              \
    int name(const char* path, int flags);                                                                   \
    EXPORTED int name(const char* path, int flags)                                                           \
    {                                                                                                        \
        if (!plan || !below_root(path))                                                                      \
            return REAL(name)(path, flags);                                                                  \
        return goes_wrong(#name, 0) ? -1 : note_descriptor(REAL(name)(path, flags));                         \
    }
CHECKED_OPEN_CALL(__open_2)
CHECKED_OPEN_CALL(__open64_2)

#define TEMPORARY_CALL(name)                                                                                 \
    EXPORTED int name(char* pattern, int flags)                                                              \
    {                                                                                                        \
        if (!plan || !below_root(pattern))                                                                   \
            return REAL(name)(pattern, flags);                                                               \
        return goes_wrong(#name, 1) ? -1 : note_descriptor(REAL(name)(pattern, flags));                      \
    }
TEMPORARY_CALL(mkostemp)
TEMPORARY_CALL(mkostemp64)

EXPORTED DIR* opendir(const char* path)
{
    if (!plan || !below_root(path))
        return REAL(opendir)(path);
    if (goes_wrong("opendir", 0))
        return NULL;
    DIR* directory = REAL(opendir)(path);
    if (directory)
        note_descriptor(dirfd(directory));
    return directory;
}

EXPORTED struct dirent* readdir(DIR* directory)
{
    return descriptor_fails("readdir", dirfd(directory), 0) ? NULL : REAL(readdir)(directory);
}

EXPORTED int closedir(DIR* directory)
{
    const int descriptor = dirfd(directory);
    const int fails = descriptor_fails("closedir", descriptor, 0);
    if (descriptor >= 0 && descriptor < MAX_DESCRIPTORS)
        counted[descriptor] = 0;
    const int result = REAL(closedir)(directory);
    return fails ? -1 : result;
}
