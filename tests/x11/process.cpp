#include "tests/x11/process.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace hushpane::x11_tests {
namespace {

std::string findProgram(const std::string& name, const Environment& environment) {
  if (name.find('/') != std::string::npos) return name;
  std::istringstream folders(environment.at("PATH"));
  for (std::string folder; std::getline(folders, folder, ':');) {
    if (access((folder + "/" + name).c_str(), X_OK) == 0) return folder + "/" + name;
  }
  throw std::runtime_error("the program '" + name + "' is not installed; packages.txt names what the tests need");
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
  std::vector<char*> result;
  for (std::string& text : texts) result.push_back(text.data());
  result.push_back(nullptr);
  return result;
}

}  // namespace

std::string contents(const std::filesystem::path& file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

Process::Process(const std::vector<std::string>& command, const Environment& environment,
                 const std::filesystem::path& folder)
    : name_(command.front()) {
  static int count = 0;
  const std::string number = std::to_string(++count);
  outputFile_ = folder / (number + ".out");
  errorFile_ = folder / (number + ".err");

  // setpriv becomes the program and has the kernel end it if the test dies first.
  std::vector<std::string> arguments{"setpriv", "--pdeathsig", "KILL", findProgram(name_, environment)};
  arguments.insert(arguments.end(), command.begin() + 1, command.end());
  std::vector<std::string> variables;
  for (const auto& [key, value] : environment) variables.push_back(key + "=" + value);

  int reports[2], inputs[2];
  if (pipe2(reports, O_CLOEXEC) != 0 || pipe2(inputs, O_CLOEXEC) != 0) throw std::runtime_error("no pipe can be made");
  reportPipe_ = reports[0];
  inputPipe_ = inputs[1];
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, inputs[0], STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, reports[1], reportDescriptor);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, outputFile_.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errorFile_.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  const std::string setpriv = findProgram("setpriv", environment);
  const int error =
      posix_spawn(&pid_, setpriv.c_str(), &actions, nullptr, pointers(arguments).data(), pointers(variables).data());
  posix_spawn_file_actions_destroy(&actions);
  close(reports[1]);
  close(inputs[0]);
  if (error != 0) throw std::runtime_error(name_ + " cannot be started");
}

Process::~Process() {
  terminate();
  close(reportPipe_);
  close(inputPipe_);
}

std::optional<int> Process::poll() {
  int status = 0;
  if (!status_ && waitpid(pid_, &status, WNOHANG) == pid_) {
    status_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  }
  return status_;
}

void Process::signal(int number) const {
  if (!status_) kill(pid_, number);
}

std::optional<int> Process::wait(milliseconds limit) {
  waitUntil([this] { return poll().has_value(); }, limit);
  return status_;
}

std::optional<int> Process::terminate() {
  if (poll()) return status_;
  signal(SIGTERM);
  if (!wait()) signal(SIGKILL);
  return wait();
}

void Process::tell(const std::string& line) const {
  const std::string bytes = line + '\n';
  if (write(inputPipe_, bytes.data(), bytes.size()) < 0) throw std::runtime_error(name_ + " does not listen");
}

std::string Process::output() const {
  return contents(outputFile_);
}

std::string Process::errors() const {
  return contents(errorFile_);
}

std::string Process::report() {
  std::string line;
  char letter = 0;
  for (pollfd waiting{reportPipe_, POLLIN, 0}; ::poll(&waiting, 1, patience.count()) > 0;) {
    if (read(reportPipe_, &letter, 1) != 1) break;
    if (letter == '\n') return line;
    line += letter;
  }
  throw std::runtime_error(name_ + " did not start: " + errors());
}

std::string run(const std::vector<std::string>& command, const Environment& environment,
                const std::filesystem::path& folder) {
  Process process(command, environment, folder);
  if (process.wait() != 0) throw std::runtime_error(command.front() + " failed: " + process.errors());
  return process.output();
}

}  // namespace hushpane::x11_tests
