// SPDX-License-Identifier: MIT

#include "app/launch.h"

#include <QCoreApplication>
#include <utility>

namespace app {

namespace {

using Icon = model::ErrorReporter::Icon;

constexpr int kAgainMilliseconds = 1000;

}  // namespace

Launch::Launch(QString programFolder, QString userFolder)
    : programFolder_(std::move(programFolder)),
      userFolder_(std::move(userFolder)),
      boxes_(std::make_unique<MessageBoxes>()) {
  again_.setInterval(kAgainMilliseconds);
  connect(&again_, &QTimer::timeout, this, &Launch::TryFolder);
  connect(
      boxes_.get(), &MessageBoxes::Emptied, qApp, [] { QCoreApplication::exit(1); },
      Qt::QueuedConnection);
}

void Launch::Begin() { TryFolder(); }

void Launch::TryFolder() {
  AppFolder folder;
  if (const model::Status status = ChooseAppFolder(programFolder_, userFolder_, &folder);
      !status.ok()) {
    again_.start();
    if (status.Description() != said_) SayFailure("Opening Program Folder", status);
    said_ = status.Description();
    return;
  }
  again_.stop();
  switch (lock_.Take(folder.path)) {
    case InstanceLock::Result::HeldByAnother:
      boxes_->Show(Icon::Exclamation, "Orvo Intercom Control",
                   "Orvo Intercom Control is already running in this folder.");
      boxes_->ShowOver(nullptr);
      return;
    case InstanceLock::Result::Failed:
      SayFailure("Starting In This Folder", {model::kFileAccess, lock_.Reason()});
      return;
    case InstanceLock::Result::Taken:
      break;
  }
  boxes_.reset();
  PrepareAppFolder(&folder);
  console_ = std::make_unique<Console>(folder);
  console_->Start();
}

void Launch::SayFailure(const char* context, const model::Status& status) {
  model::ReportError(*boxes_, context, status);
  boxes_->ShowOver(nullptr);
}

}  // namespace app
