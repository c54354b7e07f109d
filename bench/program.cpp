#include "bench/program.h"

#include <cerrno>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include "bench/measure.h"

namespace {

/// The files that a program gets as its standard input and output.
class Tredirection {
 public:
  Tredirection(const std::filesystem::path& input, const std::filesystem::path& output) {
    ::posix_spawn_file_actions_init(&actions_);
    ::posix_spawn_file_actions_addopen(&actions_, 0, input.c_str(), O_RDONLY, 0);
    ::posix_spawn_file_actions_addopen(&actions_, 1, output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
  }
  Tredirection(const Tredirection&) = delete;
  Tredirection& operator=(const Tredirection&) = delete;
  ~Tredirection() { ::posix_spawn_file_actions_destroy(&actions_); }

  const posix_spawn_file_actions_t* actions() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_{};
};

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

/// Waits for a program to end and returns its status.
int statusOf(pid_t program) {
  int status = 0;
  while (::waitpid(program, &status, 0) < 0) require(errno == EINTR, "a program could not be waited for");
  return status;
}

}  // namespace

double runProgram(const std::vector<std::string>& command, const std::filesystem::path& input,
                  const std::filesystem::path& output) {
  std::vector<std::string> arguments = command;
  std::vector<std::string> environment = {"LC_ALL=C"};
  const std::vector<char*> argv = pointersTo(arguments);
  const std::vector<char*> envp = pointersTo(environment);
  const Tredirection redirection(input, output);
  return millisecondsOf([&] {
    pid_t program = 0;
    const int error = ::posix_spawnp(&program, argv[0], redirection.actions(), nullptr, argv.data(), envp.data());
    require(error == 0, command[0] + " does not start");
    require(statusOf(program) == 0, command[0] + " failed");
  });
}
