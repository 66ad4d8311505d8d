// SPDX-License-Identifier: MIT

#include "tools/teskpanel/panel.h"

#include <QCoreApplication>
#include <algorithm>
#include <chrono>
#include <cstdio>

namespace teskpanel {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kPollInterval{5000};
constexpr milliseconds kFirstRetry{500};
constexpr milliseconds kLongestRetry{30'000};

// Doubles with every failure, from 1.
milliseconds RetryDelay(int failures) {
  constexpr int kDoublings = 6;  // to beyond the longest
  return std::min(kFirstRetry * (1 << std::min(failures - 1, kDoublings)), kLongestRetry);
}

}  // namespace

Panel::Panel(const Options& options, Task& task, Printer& printer)
    : options_(options), task_(task), printer_(printer) {
  for (QTimer* const timer : {&deadline_, &poll_, &retry_}) {
    timer->setTimerType(Qt::PreciseTimer);  // others may be early
    timer->setSingleShot(timer != &poll_);
  }
  deadline_.setInterval(options.timeout);
  poll_.setInterval(std::min(kPollInterval, milliseconds(options.timeout) / 2));
  connect(&deadline_, &QTimer::timeout, this, &Panel::TimeIsOver);
  connect(&poll_, &QTimer::timeout, this, &Panel::PollLink);
  connect(&retry_, &QTimer::timeout, this, &Panel::Connect);
  connect(&socket_, &QTcpSocket::readyRead, this, &Panel::CarryIn);
  connect(&socket_, &QTcpSocket::errorOccurred, this, [this] {
    CarryIn();  // the answer may have come before the end of the connection
    Lose(ExitCode::NoConnection, socket_.errorString().toStdString());
  });
}

void Panel::Start() { QMetaObject::invokeMethod(this, &Panel::Connect, Qt::QueuedConnection); }

void Panel::Connect() {
  session_ = std::make_unique<Session>(options_.type, task_);
  wasServed_ = false;
  deadline_.start();
  socket_.connectToHost(QString::fromStdString(options_.host), static_cast<quint16>(options_.port));
}

void Panel::CarryIn() {
  if (ended_ || session_ == nullptr || socket_.bytesAvailable() == 0) return;
  const QByteArray bytes = socket_.readAll();
  const auto* const data = reinterpret_cast<const std::uint8_t*>(bytes.constData());
  const bool sound = session_->Receive({data, static_cast<std::size_t>(bytes.size())});
  if (!PrintOut()) return;
  CheckProgress();
  if (ended_) return;
  if (sound) {
    CarryOut();
  } else {
    Lose(ExitCode::NoConnection, "this is no console: " + session_->Problem());
  }
}

void Panel::CarryOut() {
  const Bytes bytes = session_->TakeOutput();
  socket_.write(reinterpret_cast<const char*>(bytes.data()), static_cast<qint64>(bytes.size()));
}

void Panel::CheckProgress() {
  if (const auto& result = task_.Result(); result.has_value()) {
    End(result->code, result->problem);
    return;
  }
  if (!session_->IsServed()) return;
  if (!wasServed_) {
    wasServed_ = true;
    failures_ = 0;
    if (task_.Stays()) {
      poll_.start();
    } else {
      deadline_.start();  // now for the answer
    }
  }
  if (task_.Stays()) deadline_.stop();  // something came, so the console is there
}

void Panel::PollLink() {
  session_->PollLink();
  CarryOut();
  if (!deadline_.isActive()) deadline_.start();
}

void Panel::TimeIsOver() {
  if (socket_.state() != QAbstractSocket::ConnectedState) {
    Lose(ExitCode::NoConnection, "no connection in time");
  } else if (!session_->IsAsked()) {
    Lose(ExitCode::NoConnection, "this is no console: it does not ask who is there");
  } else if (!session_->IsServed()) {
    Lose(ExitCode::NotServed,
         "the console does not serve panels of type " + std::to_string(options_.type));
  } else {
    const Outcome outcome = task_.TimeIsOver();
    Lose(outcome.code, outcome.problem);
  }
}

void Panel::Lose(ExitCode code, const std::string& problem) {
  if (ended_ || session_ == nullptr) return;
  session_.reset();
  deadline_.stop();
  poll_.stop();
  socket_.abort();
  ++failures_;
  if (!task_.Stays() || failures_ == options_.tries) {
    End(code, options_.host + ":" + std::to_string(options_.port) + ": " + problem);
    return;
  }
  const milliseconds delay = RetryDelay(failures_);
  printer_.Disconnected(problem, static_cast<int>(delay.count()));
  if (PrintOut()) retry_.start(delay);
}

void Panel::End(ExitCode code, const std::string& problem) {
  if (ended_) return;
  ended_ = true;
  if (!problem.empty()) std::fprintf(stderr, "teskpanel: %s\n", problem.c_str());
  QCoreApplication::exit(static_cast<int>(code));
}

bool Panel::PrintOut() {
  const std::string text = printer_.TakeText();
  if (text.empty() || (std::fwrite(text.data(), 1, text.size(), stdout) == text.size() &&
                       std::fflush(stdout) == 0)) {
    return true;
  }
  End(ExitCode::NoConnection, "the output cannot be written");
  return false;
}

}  // namespace teskpanel
