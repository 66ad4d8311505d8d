// SPDX-License-Identifier: MIT

#include "app/presets.h"

#include <QDateTime>
#include <chrono>
#include <numeric>
#include <utility>

#include "switcher/presets/preset_text.h"
#include "views/widgets/question.h"
#include "views/widgets/shown.h"

namespace app {
namespace {

constexpr int kLongestName = 80;

// What the state before a recall is kept as.
QString NameBefore(const QString& name) {
  return Presets::tr("Before recall of %1").arg(name).left(kLongestName).trimmed();
}

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
  const model::Status status = folder_.List(&entries);
  std::vector<views::PresetsWindow::Entry> shown;
  for (const PresetFolder::Entry& entry : entries) {
    shown.push_back({.name = QString::fromStdString(entry.name), .stored = ToTime(entry.stored)});
  }
  presets_->SetPresets(shown, name);
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
  services_.reporter.Show(model::ErrorReporter::Icon::Exclamation, "Control Error",
                          model::kConsoleLockedText);
  return true;
}

std::string Presets::TextOf(const std::vector<int>& outputs) const {
  const QString now = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
  return switcher::WritePreset(
      switcher::PresetOf(services_.recall.model, services_.facts, outputs, now.toStdString()));
}

void Presets::Store(const QString& name, const std::vector<int>& outputs) {
  if (IsRefused()) return;
  // What the map does not know yet would be recalled as silence.
  if (!services_.recall.model.XmapComplete) {
    presets_->Say(tr("Not stored: the switcher has not reported the whole map yet."));
    return;
  }
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
  writer_.Begin([folder = folder_, file = name.toStdString(),
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
  recall_ = new views::RecallWindow({.recall = services_.recall, .facts = services_.facts}, name,
                                    preset, presets_);
  recall_->setAttribute(Qt::WA_DeleteOnClose);
  connect(recall_, &views::RecallWindow::RecallRequested, this, [this, name] { KeepAndGo(name); });
  connect(recall_, &views::RecallWindow::RecallEnded, this,
          [this, name](const QString& summary, const QStringList& left) {
            const QString note = QStringLiteral("%1: %2").arg(name, summary);
            Q_EMIT NoteRequested(note);
            if (views::IsShown(presets_)) presets_->Say(note);
            for (const QString& line : left) Q_EMIT LineRequested(line);
          });
  recall_->open();
}

// What the map is now is on the disk before the first command is sent.
void Presets::KeepAndGo(const QString& name) {
  const QString before = NameBefore(name);
  std::vector<int> outputs(static_cast<std::size_t>(services_.recall.model.CrosspointMap.Size()));
  std::iota(outputs.begin(), outputs.end(), 1);
  writer_.Begin(
      [folder = folder_, file = before.toStdString(), text = TextOf(outputs)] {
        return folder.Store(file, text);
      },
      [this, name, before, window = recall_](const model::Status& status) {
        if (!views::IsShown(window)) return;  // it was cancelled meanwhile
        if (status.ok()) {
          Q_EMIT LineRequested(tr("Preset stored: %1").arg(before));
          if (views::IsShown(presets_)) ShowList(name);
          window->Go();
          return;
        }
        window->AskAgain();
        views::Ask(
            *window, *this,
            {.name = QStringLiteral("aidAskRecallUnkept"),
             .text = tr("Recall All The Same?\r\rWhat the map is now cannot be kept first: %1")
                         .arg(QString::fromStdString(status.Description())),
             .answers = {{.name = QStringLiteral("aidRecallUnkept"),
                          .caption = tr("&Recall All The Same"),
                          .run = [window] {
                            if (views::IsShown(window)) window->Go();
                          }}}});
      });
}

void Presets::CancelNow() {
  if (views::IsShown(recall_)) recall_->CancelNow();
  if (views::IsShown(presets_)) presets_->close();
}

void Presets::CrosspointRowChanged(int output, int mode) {
  if (recall_ != nullptr) recall_->CrosspointRowChanged(output, mode);
}

}  // namespace app
