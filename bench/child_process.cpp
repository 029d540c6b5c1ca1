#include "bench/child_process.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>
#include <utility>

namespace hushpane::bench {

ChildProcess::ChildProcess(const std::vector<std::string>& command) {
  std::vector<char*> words;
  for (const auto& word : command) words.push_back(const_cast<char*>(word.c_str()));
  words.push_back(nullptr);
  pid_ = fork();
  if (pid_ < 0) throw std::runtime_error("cannot start " + command.front());
  if (pid_ > 0) return;
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  dup2(STDERR_FILENO, STDOUT_FILENO);  // the table is on the standard output
  execvp(words.front(), words.data());
  _exit(127);
}

bool ChildProcess::isRunning() const {
  siginfo_t found{};
  return waitid(P_PID, static_cast<id_t>(pid_), &found, WEXITED | WNOHANG | WNOWAIT) == 0 && found.si_pid == 0;
}

void ChildProcess::end(int signal) {
  if (pid_ <= 0) return;
  kill(pid_, signal);
  waitpid(std::exchange(pid_, 0), nullptr, 0);
}

void ChildProcess::end() {
  end(SIGTERM);
}

std::string clientProgram(const std::string& name) {
  return std::string(BENCH_CLIENTS "/") + name;
}

}  // namespace hushpane::bench
