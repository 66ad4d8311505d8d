// SPDX-License-Identifier: MIT

#include "tests/support/simulator_process.h"
#include "tests/support/programs.h"

#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

#ifdef __linux__
#include <sys/prctl.h>
#endif

namespace test {

namespace {

constexpr std::string_view kConnect = "connect to ";

void CloseDescriptor(int& descriptor) {
  if (descriptor >= 0) close(std::exchange(descriptor, -1));
}

}  // namespace

SimulatorProcess::SimulatorProcess(const std::vector<std::string>& arguments) {
  Start(arguments);
  reader_ = std::thread([this] { ReadLines(); });
  if (const auto line = WaitForLine(kConnect); line.has_value()) NoteTerminal(*line);
}

SimulatorProcess::~SimulatorProcess() {
  if (pid_ > 0) kill(pid_, SIGTERM);
  if (!WaitForEnd(std::chrono::seconds(5)).has_value() && pid_ > 0) {
    kill(pid_, SIGKILL);
    (void)WaitForEnd();
  }
  CloseInput();
  reader_.join();
  CloseDescriptor(output_);
}

void SimulatorProcess::Start(const std::vector<std::string>& arguments) {
  std::string program = ProgramPath("tesksim");
  std::vector<std::string> words = arguments;
  std::vector<char*> argv{program.data()};
  for (std::string& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);

  // Sockets rather than pipes: writing to a program that has ended is then an error, not a
  // signal.
  std::array<int, 2> input{};
  std::array<int, 2> output{};
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, input.data()) != 0 ||
      socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, output.data()) != 0) {
    throw std::runtime_error("no sockets to be had");
  }
  pid_ = fork();
  if (pid_ < 0) throw std::runtime_error("no process to be had");
  if (pid_ == 0) {
#ifdef __linux__
    prctl(PR_SET_PDEATHSIG, SIGTERM);  // a test that is killed leaves no simulator behind
#endif
    dup2(input[1], STDIN_FILENO);
    dup2(output[1], STDOUT_FILENO);
    execv(argv[0], argv.data());
    _exit(127);
  }
  close(input[1]);
  close(output[1]);
  input_ = input[0];
  output_ = output[0];
}

// Runs in a thread of its own, so that the program never waits for a test to read.
void SimulatorProcess::ReadLines() {
  std::array<char, 4096> block{};
  std::string text;
  for (;;) {
    const ssize_t count = read(output_, block.data(), block.size());
    const std::lock_guard lock(mutex_);
    if (count <= 0) {
      ended_ = true;
      changed_.notify_all();
      return;
    }
    text.append(block.data(), static_cast<std::size_t>(count));
    for (std::size_t end = 0; (end = text.find('\n')) != std::string::npos;) {
      std::string line = text.substr(0, end);
      text.erase(0, end + 1);
      const bool answer = line.starts_with("ok") || line.starts_with("error");
      (answer ? answers_ : lines_).push_back(std::move(line));
    }
    changed_.notify_all();
  }
}

void SimulatorProcess::NoteTerminal(const std::string& line) {
  const std::size_t start = line.find(kConnect);
  if (start == std::string::npos) return;
  terminal_ = line.substr(start + kConnect.size());
  terminal_.resize(std::min(terminal_.size(), terminal_.find(", also as ")));
}

std::string SimulatorProcess::Command(std::string_view command) {
  const std::string line = std::string(command) + "\n";
  {
    const std::lock_guard lock(mutex_);
    answers_.clear();
  }
  if (send(input_, line.data(), line.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(line.size())) {
    return {};
  }
  std::unique_lock lock(mutex_);
  changed_.wait_for(lock, kPatience, [this] { return !answers_.empty() || ended_; });
  if (answers_.empty()) return {};
  std::string answer = std::move(answers_.front());
  answers_.pop_front();
  NoteTerminal(answer);
  return answer;
}

double SimulatorProcess::Stat(const std::string& name) {
  const std::string stats = Command("stats");
  const std::size_t at = stats.find(" " + name + " ");
  return at == std::string::npos ? 0 : std::stod(stats.substr(at + name.size() + 2));
}

std::optional<std::string> SimulatorProcess::WaitForLine(std::string_view text,
                                                         std::chrono::milliseconds within) {
  const auto deadline = std::chrono::steady_clock::now() + within;
  std::unique_lock lock(mutex_);
  for (;;) {
    while (!lines_.empty()) {
      const std::string line = std::move(lines_.front());
      lines_.pop_front();
      if (line.find(text) != std::string::npos) return line;
    }
    if (ended_) return std::nullopt;
    if (changed_.wait_until(lock, deadline) == std::cv_status::timeout && lines_.empty()) {
      return std::nullopt;
    }
  }
}

std::optional<int> SimulatorProcess::WaitForEnd(std::chrono::milliseconds within) {
  const auto deadline = std::chrono::steady_clock::now() + within;
  while (pid_ > 0) {
    int status = 0;
    if (waitpid(pid_, &status, WNOHANG) == pid_) {
      pid_ = -1;
      if (WIFEXITED(status)) exitStatus_ = WEXITSTATUS(status);
      break;
    }
    if (std::chrono::steady_clock::now() >= deadline) return std::nullopt;
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  return exitStatus_;
}

void SimulatorProcess::CloseInput() { CloseDescriptor(input_); }

}  // namespace test
