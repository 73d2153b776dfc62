/* For the coverage build: a process that leaves without its goodbye, as a copy of another does, writes what it has counted
   before. The linker has all calls of _exit come here (--wrap). */

void __gcov_dump(void);
void __real__exit(int status) __attribute__((noreturn));
void __wrap__exit(int status) __attribute__((noreturn));

void __wrap__exit(int status) {
  __gcov_dump();
  __real__exit(status);
}
