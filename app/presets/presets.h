// SPDX-License-Identifier: MIT

#ifndef APP_PRESETS_PRESETS_H_
#define APP_PRESETS_PRESETS_H_

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <functional>
#include <string>
#include <vector>

#include "app/kept/background_writer.h"
#include "app/presets/preset_folder.h"
#include "model/error_reporter.h"
#include "switcher/presets/recall.h"
#include "switcher/switcher_events.h"
#include "views/presets/presets_window.h"
#include "views/presets/recall_window.h"

namespace app {

// Stores, recalls and deletes presets of the map for the operator.
class Presets : public QObject, public switcher::SwitcherEvents {
  Q_OBJECT

 public:
  struct Services {
    QWidget& window;  // the main window
    std::filesystem::path folder;
    switcher::Recall::Services recall;
    BackgroundWriter& writer;  // what is stored is on the disk when it has finished
    model::ErrorReporter& reporter;
  };

  // All that is referred to must outlive the object.
  explicit Presets(Services services);
  ~Presets() override;

  // Opens frmPresets, modal over the main window.
  void Show();

  // Ends and closes what is open, for a program that ends, and says what came of a recall.
  void CancelNow();

  void CrosspointRowChanged(int output, int mode) override;

 Q_SIGNALS:
  // Something to say in passing, and to keep.
  void NoteRequested(const QString& note);
  // A line to be kept.
  void LineRequested(const QString& line);
  // A recall has sent a command for a crosspoint (from 1) with this action byte.
  void TakeSent(int output, int input, int action);

 private:
  // Whether nothing may be stored, deleted or recalled because the console is locked; says so.
  bool IsRefused();
  // Whether what the map is now cannot be stored; says why.
  bool CannotStore();
  void Store(const QString& name, const std::vector<int>& outputs);
  void StoreNow(const QString& name, const std::vector<int>& outputs);
  void AskToDelete(const QString& name);
  void Delete(const QString& name);
  void Recall(const QString& name);
  void FollowRecall(const QString& name);
  void KeepAndGo(const QString& name);
  void AskWithoutKeeping(const model::Status& status);
  void ShowList(const QString& name = QString());
  std::string TextOf(const std::vector<int>& outputs) const;
  bool Succeeds(std::string_view line, const model::Status& status);

  const Services services_;
  const PresetFolder folder_;
  QPointer<views::PresetsWindow> presets_;
  QPointer<views::RecallWindow> recall_;
  int keeps_ = 0;  // so often what the map is was to be kept
};

}  // namespace app

#endif  // APP_PRESETS_PRESETS_H_
