// SPDX-License-Identifier: MIT

#ifndef VIEWS_PRESETS_PRESETS_WINDOW_H_
#define VIEWS_PRESETS_PRESETS_WINDOW_H_

#include <QDateTime>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QString>
#include <QTreeWidget>
#include <functional>
#include <vector>

#include "model/system_model.h"

namespace views {

// frmPresets: the presets of the map that there are, and what can be done with one.  It asks for
// that to be done; it does nothing itself.
class PresetsWindow : public QDialog {
  Q_OBJECT

 public:
  // A preset that is there.
  struct Entry {
    QString name;
    QDateTime stored;
  };

  // `model` must outlive the window.
  explicit PresetsWindow(const model::SystemModel& model, QWidget* parent = nullptr);

  // Lists what is there.  What was chosen stays chosen; `name`, unless it is empty, becomes that.
  void SetPresets(const std::vector<Entry>& presets, const QString& name = QString());

  // Says something below the list; empty for what the window has to say by itself.
  void Say(const QString& text);

 Q_SIGNALS:
  // The operator wants the map of these outputs stored under a name, which may be taken.
  void StoreRequested(const QString& name, const std::vector<int>& outputs);
  // He wants to see what recalling the preset would change.
  void RecallRequested(const QString& name);
  void DeleteRequested(const QString& name);

 private:
  void LayOut();
  QString Chosen() const;
  void ShowChosen();
  void Store();
  void Recall();

  const model::SystemModel& model_;
  QTreeWidget* list_;
  QLabel* note_;
  QLineEdit* name_;
  QLineEdit* outputs_;
  QPushButton* store_;
  QPushButton* recall_;
  QPushButton* delete_;
  QPushButton* close_;
};

}  // namespace views

#endif  // VIEWS_PRESETS_PRESETS_WINDOW_H_
