// Reports the time of its own start: writes the monotonic clock, in nanoseconds, to the pipe that
// QUILLMAR_BENCH_PIPE names. Linked statically, so that it starts fast.

#include <cstdint>
#include <cstdlib>

#include <fcntl.h>
#include <time.h>
#include <unistd.h>

int main() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  const std::int64_t nanoseconds = now.tv_sec * 1'000'000'000 + now.tv_nsec;
  const char* const pipe = getenv("QUILLMAR_BENCH_PIPE");
  const int end = pipe ? open(pipe, O_WRONLY) : -1;
  return write(end, &nanoseconds, sizeof nanoseconds) == sizeof nanoseconds ? 0 : 1;
}
