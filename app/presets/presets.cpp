// SPDX-License-Identifier: MIT

#include "app/presets/presets.h"

#include <QDateTime>
#include <chrono>
#include <numeric>
#include <utility>

#include "switcher/presets/preset_text.h"
#include "views/presets/preset_words.h"
#include "views/widgets/question.h"
#include "views/widgets/shown.h"

namespace app {
namespace {

QDateTime ToTime(std::filesystem::file_time_type time) {
  const auto system = std::chrono::file_clock::to_sys(time);
  return QDateTime::fromSecsSinceEpoch(
      std::chrono::duration_cast<std::chrono::seconds>(system.time_since_epoch()).count());
}

}  // namespace

Presets::Presets(Services services) : services_(std::move(services)), folder_(services_.folder) {}

Presets::~Presets() {
  // Before what they work with goes.
  delete recall_;
  delete presets_;
}

void Presets::Show() {
  if (views::IsShown(presets_)) return;
  presets_ = new views::PresetsWindow(services_.recall.model, &services_.window);
  presets_->setAttribute(Qt::WA_DeleteOnClose);
  connect(presets_, &views::PresetsWindow::StoreRequested, this, &Presets::Store);
  connect(presets_, &views::PresetsWindow::RecallRequested, this, &Presets::Recall);
  connect(presets_, &views::PresetsWindow::DeleteRequested, this, &Presets::AskToDelete);
  ShowList();
  presets_->open();
}

void Presets::ShowList(const QString& name) {
  std::vector<PresetFolder::Entry> entries;
  bool hasMore = false;
  const model::Status status = folder_.List(&entries, &hasMore);
  std::vector<views::PresetsWindow::Entry> shown;
  for (const PresetFolder::Entry& entry : entries) {
    shown.push_back({.name = QString::fromStdString(entry.name), .stored = ToTime(entry.stored)});
  }
  presets_->SetPresets(shown, name);
  if (hasMore) presets_->Say(tr("Only the first %1 presets are listed.").arg(shown.size()));
  (void)Succeeds("Error Reading Presets", status);
}

bool Presets::Succeeds(std::string_view line, const model::Status& status) {
  if (status.ok()) return true;
  services_.reporter.Show(model::ErrorReporter::Icon::Critical, "Control Error",
                          model::ErrorText(line, status));
  return false;
}

bool Presets::IsRefused() {
  if (!services_.recall.locks.IsConsoleLocked()) return false;
  model::ShowConsoleLocked(services_.reporter);
  return true;
}

std::string Presets::TextOf(const std::vector<int>& outputs) const {
  const QString now = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
  return switcher::WritePreset(switcher::PresetOf(services_.recall.model, services_.recall.facts,
                                                  outputs, now.toStdString()));
}

// What the map does not know would be recalled as silence.
bool Presets::CannotStore() {
  if (IsRefused()) return true;
  const auto obstacle = switcher::Recall::WhyNot(services_.recall);
  if (!obstacle) return false;
  if (views::IsShown(presets_)) {
    presets_->Say(tr("Not stored. %1").arg(views::RecallObstacleWords(*obstacle)));
  }
  return true;
}

void Presets::Store(const QString& name, const std::vector<int>& outputs) {
  if (CannotStore()) return;
  if (!folder_.Has(name.toStdString())) {
    StoreNow(name, outputs);
    return;
  }
  views::Ask(*presets_, *this,
             {.name = QStringLiteral("aidAskReplacePreset"),
              .text = tr("Replace the preset %1?").arg(name),
              .answers = {{.name = QStringLiteral("aidReplacePreset"),
                           .caption = tr("&Replace"),
                           .run = [this, name, outputs] { StoreNow(name, outputs); }}}});
}

void Presets::StoreNow(const QString& name, const std::vector<int>& outputs) {
  if (CannotStore()) return;
  services_.writer.Begin([folder = folder_, file = name.toStdString(),
                          text = TextOf(outputs)] { return folder.Store(file, text); },
                         [this, name](const model::Status& status) {
                           if (!Succeeds("Error Storing A Preset", status)) return;
                           Q_EMIT NoteRequested(tr("Preset stored: %1").arg(name));
                           if (!views::IsShown(presets_)) return;
                           ShowList(name);
                           presets_->Say(tr("Preset stored: %1").arg(name));
                         });
}

void Presets::AskToDelete(const QString& name) {
  if (IsRefused()) return;
  views::Ask(*presets_, *this,
             {.name = QStringLiteral("aidAskDeletePreset"),
              .text = tr("Delete the preset %1? It cannot be brought back.").arg(name),
              .answers = {{.name = QStringLiteral("aidDeletePreset"),
                           .caption = tr("&Delete"),
                           .run = [this, name] { Delete(name); }}}});
}

void Presets::Delete(const QString& name) {
  if (!Succeeds("Error Deleting A Preset", folder_.Delete(name.toStdString()))) return;
  Q_EMIT NoteRequested(tr("Preset deleted: %1").arg(name));
  if (views::IsShown(presets_)) ShowList();
}

void Presets::Recall(const QString& name) {
  if (views::IsShown(recall_) || IsRefused()) return;
  switcher::Preset preset;
  if (!Succeeds("Error Reading A Preset", folder_.Read(name.toStdString(), &preset))) return;
  recall_ = new views::RecallWindow(services_.recall, name, preset, presets_);
  recall_->setAttribute(Qt::WA_DeleteOnClose);
  FollowRecall(name);
  recall_->open();
}

void Presets::FollowRecall(const QString& name) {
  connect(recall_, &views::RecallWindow::RecallRequested, this, [this, name] { KeepAndGo(name); });
  connect(recall_, &views::RecallWindow::RecallBegun, this, [this, name](int outputs) {
    Q_EMIT LineRequested(tr("Recall of %1 begun: %2 outputs").arg(name, QString::number(outputs)));
  });
  connect(recall_, &views::RecallWindow::TakeSent, this, &Presets::TakeSent);
  connect(recall_, &views::RecallWindow::RecallEnded, this,
          [this, name](const QString& summary, const QStringList& left) {
            const QString note = QStringLiteral("%1: %2").arg(name, summary);
            Q_EMIT NoteRequested(note);
            if (views::IsShown(presets_)) presets_->Say(note);
            for (const QString& line : left) Q_EMIT LineRequested(line);
          });
}

// What the map is now is on the disk before the first command is sent.
void Presets::KeepAndGo(const QString& name) {
  if (switcher::Recall::WhyNot(services_.recall)) return recall_->AskAgain();
  const QString time = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH.mm.ss"));
  const std::string before = folder_.NameBefore(name.toStdString(), time.toStdString());
  std::vector<int> outputs(static_cast<std::size_t>(services_.recall.model.CrosspointMap.Size()));
  std::iota(outputs.begin(), outputs.end(), 1);
  services_.writer.Begin(
      [folder = folder_, before, text = TextOf(outputs)] { return folder.Keep(before, text); },
      [this, name, before, keep = ++keeps_, window = recall_](const model::Status& status) {
        if (status.ok()) {
          Q_EMIT LineRequested(tr("Preset stored: %1").arg(QString::fromStdString(before)));
          if (views::IsShown(presets_)) ShowList(name);
        }
        // It was cancelled meanwhile, or has waited for too long.
        if (!views::IsShown(window) || !window->IsKeeping() || keep != keeps_) return;
        if (status.ok()) {
          window->Go();
        } else {
          AskWithoutKeeping(status);
        }
      });
}

void Presets::AskWithoutKeeping(const model::Status& status) {
  recall_->AskAgain();
  views::Ask(*recall_, *this,
             {.name = QStringLiteral("aidAskRecallUnkept"),
              .text = tr("Recall All The Same?\r\rWhat the map is now cannot be kept first: %1")
                          .arg(QString::fromStdString(status.Description())),
              .answers = {{.name = QStringLiteral("aidRecallUnkept"),
                           .caption = tr("&Recall All The Same"),
                           .run = [window = recall_] {
                             if (views::IsShown(window)) window->Go();
                           }}}});
}

void Presets::CancelNow() {
  if (views::IsShown(recall_)) recall_->CancelNow();
  if (views::IsShown(presets_)) presets_->close();
}

void Presets::CrosspointRowChanged(int output, int mode) {
  if (recall_ != nullptr) recall_->CrosspointRowChanged(output, mode);
}

}  // namespace app
