// SPDX-License-Identifier: MIT

#include "app/run/termination.h"

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <array>
#include <csignal>
#endif

namespace app {

#ifdef Q_OS_UNIX

namespace {

// A signal handler may do next to nothing; it writes into this pipe, and the event loop reads.
std::array<int, 2> wakeUp{-1, -1};

constexpr std::array kSignals{SIGTERM, SIGINT, SIGHUP};

extern "C" void OnSignal(int /*number*/) {
  const char byte = 1;
  // A full pipe already holds a request.
  [[maybe_unused]] const auto written = write(wakeUp[1], &byte, 1);
}

}  // namespace

Termination::Termination(QObject* parent) : QObject(parent) {
  if (pipe(wakeUp.data()) != 0) return;
  for (const int end : wakeUp) {
    fcntl(end, F_SETFD, FD_CLOEXEC);
    fcntl(end, F_SETFL, O_NONBLOCK);
  }
  auto* const notifier = new QSocketNotifier(wakeUp[0], QSocketNotifier::Read, this);
  connect(notifier, &QSocketNotifier::activated, this, &Termination::OnRequest);
  for (const int number : kSignals) std::signal(number, OnSignal);
}

Termination::~Termination() {
  for (const int number : kSignals) std::signal(number, SIG_DFL);
  for (int& end : wakeUp) {
    if (end >= 0) close(end);
    end = -1;
  }
}

void Termination::OnRequest() {
  std::array<char, 16> bytes{};
  while (read(wakeUp[0], bytes.data(), bytes.size()) > 0) continue;
  Q_EMIT Requested();
}

#else

Termination::Termination(QObject* parent) : QObject(parent) {}
Termination::~Termination() = default;
void Termination::OnRequest() { Q_EMIT Requested(); }

#endif

}  // namespace app
