/* For the coverage build: how a process writes what it has counted. The linker has all calls of the wrapped functions come
   here (--wrap).

   All processes add their counts to the same files. One that is killed while it does so, or that may write less than there
   is, leaves half a file, to which no other can add any more. So a process of its own writes, which no signal meant for the
   first one reaches and from which the limits are taken. One that leaves without its goodbye (_exit), as a copy of another does,
   writes as well.

   What the library that counts has to say goes to a file (MIRELO_UNCOUNTED): the standard error is what tests read. */

#define _GNU_SOURCE
#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#define OURS __attribute__((visibility("hidden")))

void __real___gcov_exit(void);
void __real__exit(int status) __attribute__((noreturn));
OURS void __wrap___gcov_dump(void);
OURS void __wrap___gcov_exit(void);
OURS void __wrap__exit(int status) __attribute__((noreturn));

/* More than the counts of any source. */
static const rlim_t kEnough = 64 << 20;

static int may_write_all(void) {
  const struct rlimit all = {RLIM_INFINITY, RLIM_INFINITY};
  if (setrlimit(RLIMIT_FSIZE, &all) == 0) return 1;
  struct rlimit limit;
  if (getrlimit(RLIMIT_FSIZE, &limit) != 0) return 0;
  limit.rlim_cur = limit.rlim_max;
  return setrlimit(RLIMIT_FSIZE, &limit) == 0 && limit.rlim_max >= kEnough;
}

static void write_counts(void) {
  setsid();
  close_range(0, UINT_MAX, 0); /* nobody is to wait for an end that is kept open here */
  for (int stream = 0; stream < 3; ++stream) open("/dev/null", O_RDWR);
  if (may_write_all() && setenv("GCOV_ERROR_FILE", MIRELO_UNCOUNTED, 1) == 0) __real___gcov_exit();
}

void __wrap___gcov_dump(void) {
  const int error = errno;
  sigset_t all, before;
  sigfillset(&all);
  sigprocmask(SIG_SETMASK, &all, &before);
  const pid_t writer = fork();
  if (writer == 0) {
    write_counts();
    __real__exit(0);
  }
  if (writer > 0) {
    while (waitpid(writer, NULL, 0) < 0 && errno == EINTR) {
    }
  }
  sigprocmask(SIG_SETMASK, &before, NULL);
  errno = error;
}

/* Each source calls it when the process ends. */
void __wrap___gcov_exit(void) {
  static int once = 0;
  if (once++ == 0) __wrap___gcov_dump();
}

void __wrap__exit(int status) {
  __wrap___gcov_dump();
  __real__exit(status);
}
