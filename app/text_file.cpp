// SPDX-License-Identifier: MIT

#include "app/text_file.h"

#include <utility>

#include "db/file_status.h"
#include "files/whole_file.h"

namespace app {
namespace {

constexpr int kSecond = 1000;

}  // namespace

TextFile::TextFile(std::filesystem::path path, std::function<std::string()> text)
    : path_(std::move(path)), text_(std::move(text)) {
  timer_.setSingleShot(true);
  timer_.setInterval(kSecond);
  connect(&timer_, &QTimer::timeout, this, &TextFile::Begin);
}

model::Status TextFile::Read(std::uint64_t most, std::string* text) {
  text->clear();
  const files::Outcome read = files::ReadWhole(path_, most, text);
  written_ = read.ok() ? *text : std::string();
  if (read.error == std::errc::no_such_file_or_directory) return {};
  return db::StatusOf(read);
}

void TextFile::Update() {
  if (!timer_.isActive()) timer_.start();
}

void TextFile::Begin() {
  if (writing_ > 0) {
    timer_.start();
  } else {
    Write();
  }
}

void TextFile::Write() {
  const std::string text = text_();
  if (writing_ == 0 && text == written_) return;
  ++writing_;
  writer_.Begin([path = path_, text] { return db::StatusOf(files::Replace(path, text)); },
                [this, text](const model::Status& status) { Done(text, status); });
}

void TextFile::Done(const std::string& text, const model::Status& status) {
  --writing_;
  if (!status.ok()) {
    Q_EMIT Failed(QString::fromStdString(status.Description()));
    return;
  }
  written_ = text;
  Q_EMIT Written();
}

void TextFile::Finish(QDeadlineTimer patience) {
  timer_.stop();
  Write();
  writer_.Finish(patience);
}

}  // namespace app
