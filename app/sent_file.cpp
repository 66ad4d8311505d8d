// SPDX-License-Identifier: MIT

#include "app/sent_file.h"

#include <utility>

#include "db/file_status.h"
#include "files/whole_file.h"

namespace app {
namespace {

constexpr int kSecond = 1000;

}  // namespace

SentFile::SentFile(std::filesystem::path path, const switcher::HeldMessages& messages)
    : path_(std::move(path)), messages_(messages) {
  timer_.setSingleShot(true);
  timer_.setInterval(kSecond);
  connect(&timer_, &QTimer::timeout, this, &SentFile::Begin);
}

switcher::HeldMessages SentFile::Read() {
  // Without it nothing is known, which is no error.
  if (!files::ReadWhole(path_, switcher::kMostHeldText, &written_).ok()) written_.clear();
  return switcher::ReadHeld(written_);
}

void SentFile::Update() {
  if (!timer_.isActive()) timer_.start();
}

void SentFile::Begin() {
  if (writing_ > 0) {
    timer_.start();
  } else {
    Write();
  }
}

void SentFile::Write() {
  const std::string text = switcher::WriteHeld(messages_);
  if (writing_ == 0 && text == written_) return;
  ++writing_;
  writer_.Begin([path = path_, text] { return db::StatusOf(files::Replace(path, text)); },
                [this, text](const model::Status& status) { Done(text, status); });
}

void SentFile::Done(const std::string& text, const model::Status& status) {
  --writing_;
  if (!status.ok()) {
    Q_EMIT Failed(QString::fromStdString(status.Description()));
    return;
  }
  written_ = text;
  Q_EMIT Written();
}

void SentFile::Finish(QDeadlineTimer patience) {
  timer_.stop();
  Write();
  writer_.Finish(patience);
}

}  // namespace app
