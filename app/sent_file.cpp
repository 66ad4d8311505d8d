// SPDX-License-Identifier: MIT

#include "app/sent_file.h"

#include <utility>

namespace app {
namespace {

constexpr int kSecond = 1000;

}  // namespace

SentFile::SentFile(std::filesystem::path path, const switcher::HeldMessages& messages)
    : path_(std::move(path)), messages_(messages) {
  timer_.setSingleShot(true);
  timer_.setInterval(kSecond);
  writer_.setMaxThreadCount(1);
  connect(&timer_, &QTimer::timeout, this, &SentFile::Begin);
}

SentFile::~SentFile() { writer_.waitForDone(); }

switcher::HeldMessages SentFile::Read() {
  // Without it nothing is known, which is no error.
  if (!files::ReadWhole(path_, switcher::kMostHeldText, &written_).ok()) written_.clear();
  return switcher::ReadHeld(written_);
}

void SentFile::Update() {
  if (!timer_.isActive()) timer_.start();
}

void SentFile::Begin() {
  if (isWriting_) {
    timer_.start();
    return;
  }
  writing_ = switcher::WriteHeld(messages_);
  if (writing_ == written_) return;
  isWriting_ = true;
  writer_.start([this, path = path_, text = writing_] {
    const files::Outcome outcome = files::Replace(path, text);
    QMetaObject::invokeMethod(
        this, [this, outcome] { Done(outcome); }, Qt::QueuedConnection);
  });
}

void SentFile::Done(const files::Outcome& outcome) {
  if (!std::exchange(isWriting_, false)) return;  // it was finished meanwhile
  if (!outcome.ok()) {
    Q_EMIT Failed(QString::fromStdString(outcome.text));
    return;
  }
  written_ = writing_;
  Q_EMIT Written();
}

void SentFile::Finish() {
  timer_.stop();
  writer_.waitForDone();
  isWriting_ = false;
  writing_ = switcher::WriteHeld(messages_);
  if (writing_ == written_) return;
  const files::Outcome outcome = files::Replace(path_, writing_);
  if (outcome.ok()) {
    written_ = writing_;
  } else {
    Q_EMIT Failed(QString::fromStdString(outcome.text));
  }
}

}  // namespace app
