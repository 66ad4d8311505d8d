// SPDX-License-Identifier: MIT

#include "tools/tesksim/loop.h"

#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <utility>

namespace tesksim {

namespace {

// How soon a console that opens the terminal is noticed.
constexpr std::chrono::milliseconds kLookInterval{20};

// Whoever wakes so much too late had no processor, and the console may have had none either.
constexpr std::chrono::milliseconds kHeldUp{50};

// The most that is read at a time; the pace of the line usually allows less.
constexpr std::size_t kLargestRead = 4096;

// How long after a change the state is written.
constexpr std::chrono::seconds kWriteDelay{1};

constexpr std::size_t kLongestCommand = 16384;

volatile sig_atomic_t stopSignal = 0;

void OnStopSignal(int signal) { stopSignal = signal; }

// Blocks the signals that end the program everywhere but in the wait, so that none is missed
// between a look at stopSignal and the wait.  Returns the mask for the wait.
sigset_t SetUpSignals() {
  struct sigaction stop {};
  stop.sa_handler = OnStopSignal;
  sigaction(SIGINT, &stop, nullptr);
  sigaction(SIGTERM, &stop, nullptr);
  signal(SIGPIPE, SIG_IGN);  // nobody reads the answers any more
  signal(SIGTTIN, SIG_IGN);  // in the background there are no commands
  signal(SIGTTOU, SIG_IGN);

  sigset_t blocked;
  sigset_t before;
  sigemptyset(&blocked);
  sigaddset(&blocked, SIGINT);
  sigaddset(&blocked, SIGTERM);
  sigprocmask(SIG_BLOCK, &blocked, &before);
  sigdelset(&before, SIGINT);
  sigdelset(&before, SIGTERM);
  return before;
}

void PrintLine(const std::string& line) {
  std::printf("%s\n", line.c_str());
  std::fflush(stdout);
}

}  // namespace

Loop::Loop(const Options& options, StateFile file, SwitcherState state)
    : simulator_(std::move(state), options.simulator, Clock::now(), PrintLine),
      commands_(simulator_, {.unplug = [this] { return Unplug(); },
                             .replug = [this] { return Replug(); },
                             .where = [this] { return Where(); },
                             .save = [this](const std::string& path) { return Save(path); },
                             .quit = [this] { quit_ = true; }}),
      terminal_(options.device),
      link_(options.link),
      linkPath_(options.link),
      inputPacer_(options.simulator.baud),
      stateFile_(std::move(file)) {
  for (const auto& [fault, value] : options.faults) {
    simulator_.SetFault(*fault, value, Clock::now());
  }
  for (const SpoiledMessage& spoiled : options.spoiled) simulator_.Tables().Spoil(spoiled);
  simulator_.SetSilence(options.silence);
  simulator_.SetLogging(options.log);
}

int Loop::Run() {
  const sigset_t waitMask = SetUpSignals();
  if (const model::Status status = Replug(); !status.ok()) {
    std::fprintf(stderr, "tesksim: %s\n", status.Description().c_str());
    return 1;
  }
  PrintLine("tesksim: connect to " + Where());

  while (!quit_ && stopSignal == 0) {
    const Time now = Clock::now();
    WatchForPeer(now);
    CarryIn(now);
    CarryOut(now);
    KeepState(now);
    Wait(waitMask);
  }
  return WriteState() ? 0 : 1;
}

model::Status Loop::Unplug() {
  if (!terminal_.IsOpen()) return {ENODEV, "unplugged already"};
  // The link goes first: another program's terminal may get the name that it points to.
  link_.Remove();
  terminal_.Close();
  LosePeer();
  return {};
}

model::Status Loop::Replug() {
  if (terminal_.IsOpen()) return {EBUSY, "plugged in already"};
  model::Status status = terminal_.Open();
  if (status.ok()) status = link_.PointTo(terminal_.Path());
  if (!status.ok()) terminal_.Close();
  return status;
}

std::string Loop::Where() const {
  return terminal_.Path() + (linkPath_.empty() ? "" : ", also as " + linkPath_);
}

model::Status Loop::Save(const std::string& path) {
  if (!path.empty()) return WriteStateTo(path, simulator_.State());
  if (!stateFile_.IsUsed()) return {ENOENT, "name a file; there is no --state"};
  return stateFile_.Write(simulator_.State());
}

void Loop::KeepState(Time now) {
  if (!stateFile_.IsUsed()) return;
  if (nextWrite_.has_value() && now >= *nextWrite_) {
    nextWrite_.reset();
    (void)WriteState();  // it has said what is wrong; the next change tries again
  }
  if (simulator_.Changes() == changesSeen_ && !commandsExecuted_) return;
  changesSeen_ = simulator_.Changes();
  commandsExecuted_ = false;
  if (!nextWrite_.has_value()) nextWrite_ = now + kWriteDelay;
}

bool Loop::WriteState() {
  const model::Status status = stateFile_.Write(simulator_.State());
  if (!status.ok()) std::fprintf(stderr, "tesksim: %s\n", status.Description().c_str());
  return status.ok();
}

void Loop::WatchForPeer(Time now) {
  if (hasPeer_ || !terminal_.IsOpen() || now < nextLook_) return;
  nextLook_ = now + kLookInterval;
  if (!terminal_.HasPeer()) return;
  hasPeer_ = true;
  simulator_.DropLine();
  simulator_.Note("terminal opened");
}

void Loop::CarryIn(Time now) {
  if (!inputPacer_.Busy()) return;
  std::array<std::uint8_t, kLargestRead> buffer;
  const std::size_t due = inputPacer_.Take(now, buffer.size());
  if (due == 0) return;

  std::size_t count = 0;
  const Terminal::Io result = terminal_.Read(std::span(buffer).first(due), &count);
  if (result == Terminal::Io::Gone) {
    LosePeer();
    return;
  }
  if (count < due) inputPacer_.End();
  simulator_.Receive(std::span(buffer).first(count), now);
}

void Loop::CarryOut(Time now) {
  if (unwritten_.empty()) unwritten_ = simulator_.TakeOutput(now);
  if (!hasPeer_) unwritten_.clear();
  if (unwritten_.empty()) return;

  std::size_t count = 0;
  if (terminal_.Write(unwritten_, &count) == Terminal::Io::Gone) {
    LosePeer();
    return;
  }
  unwritten_.erase(unwritten_.begin(), unwritten_.begin() + static_cast<std::ptrdiff_t>(count));
}

void Loop::LosePeer() {
  if (hasPeer_) simulator_.Note("terminal closed");
  hasPeer_ = false;
  inputPacer_.End();
  unwritten_.clear();
  simulator_.DropLine();
  if (!terminal_.IsOpen()) return;
  if (terminal_.IsDevice()) {
    terminal_.Close();
    std::fprintf(stderr, "tesksim: %s is gone; replug opens it again\n", terminal_.Path().c_str());
  } else {
    terminal_.DiscardUnread();
  }
}

void Loop::Wait(const sigset_t& mask) {
  std::array<pollfd, 2> watched{};
  pollfd& input = watched[0];
  pollfd& line = watched[1];
  input.fd = inputOpen_ ? STDIN_FILENO : -1;
  input.events = POLLIN;
  line.fd = WatchesLine() ? terminal_.Descriptor() : -1;
  line.events = static_cast<short>(POLLIN | (unwritten_.empty() ? 0 : POLLOUT));

  const std::optional<Time> next = NextTime();
  const Time now = Clock::now();
  timespec timeout{};
  if (next.has_value() && *next > now) {
    const std::chrono::nanoseconds span = *next - now;
    timeout.tv_sec = static_cast<time_t>(span / std::chrono::seconds(1));
    timeout.tv_nsec = static_cast<long>((span % std::chrono::seconds(1)).count());
  }
  const int ready =
      ppoll(watched.data(), watched.size(), next.has_value() ? &timeout : nullptr, &mask);
  if (next.has_value()) {
    const Time woken = Clock::now();
    if (woken - std::max(*next, now) > kHeldUp) simulator_.HeldUp(woken);
  }
  if (ready <= 0) return;  // it is time, or a signal came
  if ((line.revents & ~POLLOUT) != 0) inputPacer_.Begin(Clock::now());
  if (input.revents != 0) ReadInput();
}

// While bytes are coming in, the clock says when to read; that the line is readable, or that
// its peer has gone, is known.
bool Loop::WatchesLine() const { return hasPeer_ && !inputPacer_.Busy(); }

std::optional<Time> Loop::NextTime() const {
  std::optional<Time> next = nextWrite_;
  if (unwritten_.empty()) next = Earlier(next, simulator_.NextTime());
  if (inputPacer_.Busy()) next = Earlier(next, inputPacer_.When(inputPacer_.Portion()));
  if (!hasPeer_ && terminal_.IsOpen()) next = Earlier(next, nextLook_);
  return next;
}

void Loop::ReadInput() {
  std::array<char, 4096> buffer;
  const ssize_t count = read(STDIN_FILENO, buffer.data(), buffer.size());
  if (count < 0 && (errno == EINTR || errno == EAGAIN)) return;
  if (count <= 0) {
    inputOpen_ = false;
    if (!input_.empty()) input_ += '\n';  // the last line has no end
    ExecuteLines();
    return;
  }
  input_.append(buffer.data(), static_cast<std::size_t>(count));
  ExecuteLines();
}

void Loop::ExecuteLines() {
  std::size_t end = 0;
  while (!quit_ && (end = input_.find('\n')) != std::string::npos) {
    const std::string line = input_.substr(0, end);
    input_.erase(0, end + 1);
    if (line.size() > kLongestCommand || inputTooLong_) {
      PrintLine("error the line is too long");
    } else {
      PrintLine(commands_.Execute(line, Clock::now()));
      commandsExecuted_ = true;
    }
    inputTooLong_ = false;
  }
  if (input_.size() > kLongestCommand) {
    input_.clear();
    inputTooLong_ = true;
  }
}

}  // namespace tesksim
