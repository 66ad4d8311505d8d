// SPDX-License-Identifier: MIT

#include "app/kept/text_file.h"

#include <algorithm>
#include <chrono>
#include <system_error>
#include <utility>

#include "db/dated_name.h"
#include "db/file_status.h"
#include "files/whole_file.h"

namespace app {
namespace {

constexpr std::chrono::milliseconds kSoon = std::chrono::seconds(1);
constexpr std::chrono::milliseconds kRarest = std::chrono::minutes(1);

}  // namespace

TextFile::TextFile(std::filesystem::path path, std::function<std::string()> text)
    : path_(std::move(path)), text_(std::move(text)), pause_(kSoon) {
  timer_.setSingleShot(true);
  connect(&timer_, &QTimer::timeout, this, &TextFile::Begin);
}

model::Status TextFile::Read(std::uint64_t most, std::string* text) {
  text->clear();
  const files::Outcome read = files::ReadWhole(path_, most, text);
  written_ = read.ok() ? *text : std::string();
  if (read.error == std::errc::no_such_file_or_directory) return {};
  return db::StatusOf(read);
}

model::Status TextFile::PutAside(std::string what, std::filesystem::path* kept) {
  written_.clear();
  aside_ = std::move(what);
  return MoveAside(kept);
}

model::Status TextFile::MoveAside(std::filesystem::path* kept) {
  if (aside_.empty()) return {};
  if (const model::Status status = db::DatedName(path_, aside_, kept); !status.ok()) return status;
  std::error_code error;
  std::filesystem::rename(path_, *kept, error);
  // What somebody else has taken away needs no other name.
  if (error && error != std::errc::no_such_file_or_directory) {
    return db::StatusOf(files::Failure("rename", path_, error));
  }
  aside_.clear();
  return {};
}

// A change does not wait as long as a failed write.
void TextFile::Update() {
  if (!timer_.isActive() || timer_.intervalAsDuration() > kSoon) timer_.start(kSoon);
}

void TextFile::TryAgain() {
  if (!timer_.isActive()) timer_.start(pause_);
  pause_ = std::min(2 * pause_, kRarest);
}

void TextFile::Begin() {
  if (writing_ > 0) {
    timer_.start(kSoon);
  } else {
    Write();
  }
}

void TextFile::Write() {
  const std::string text = text_();
  if (writing_ == 0 && text == written_) {
    if (hasFailed_) IsThere();  // what could not be written is not wanted any more
    return;
  }
  std::filesystem::path kept;
  if (const model::Status status = MoveAside(&kept); !status.ok()) return Fail(status);
  ++writing_;
  writer_.Begin([path = path_, text] { return db::StatusOf(files::Replace(path, text)); },
                [this, text](const model::Status& status) { Done(text, status); });
}

void TextFile::Done(const std::string& text, const model::Status& status) {
  --writing_;
  if (!status.ok()) return Fail(status);
  written_ = text;
  IsThere();
}

void TextFile::Fail(const model::Status& status) {
  if (!hasFailed_) Q_EMIT Failed(QString::fromStdString(status.Description()));
  hasFailed_ = true;
  TryAgain();
}

void TextFile::IsThere() {
  hasFailed_ = false;
  pause_ = kSoon;
  Q_EMIT Written();
}

void TextFile::Finish(QDeadlineTimer patience) {
  timer_.stop();
  Write();
  writer_.Finish(patience);
}

}  // namespace app
