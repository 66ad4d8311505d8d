// SPDX-License-Identifier: MIT

#ifndef VIEWS_PRESETS_RECALL_WINDOW_H_
#define VIEWS_PRESETS_RECALL_WINDOW_H_

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <vector>

#include "switcher/presets/recall.h"
#include "views/differences/difference_list.h"

namespace views {

// frmRecall: what the map differs in from a preset, output by output with a tick each, and the
// recall of what is ticked.  It closes by itself when all of that is as it was wanted, and stays to
// name what is not.
class RecallWindow : public QDialog, public switcher::RecallDisplay {
  Q_OBJECT

 public:
  using Services = switcher::Recall::Services;

  // So long the operator is kept waiting for what the map is now to be kept.
  static constexpr int kKeepMilliseconds = 5000;

  // All that is referred to must outlive the window.
  RecallWindow(Services services, const QString& name, const switcher::Preset& preset,
               QWidget* parent = nullptr);

  // Recalls what is ticked; to be called for RecallRequested when what was there is kept.  Does
  // nothing the second time.
  void Go();

  // What was there cannot be kept: the operator may ask again, or Go() is called all the same.
  void AskAgain();

  // Whether it waits for what was there to be kept.  It gives up after kKeepMilliseconds: who was
  // interrupted by a slow disk is not to be surprised by takes a minute later.
  bool IsKeeping() const { return isAsked_; }

  // Ends and closes at once, for a program that ends; says what came of it.
  void CancelNow();

  // The switcher has reported a row.
  void CrosspointRowChanged(int output, int mode) { recall_.CrosspointRowChanged(output, mode); }

  void reject() override;

  void ShowRow(std::size_t row) override;
  void CommandSent(int output, int input, switcher::TakeAction action) override {
    Q_EMIT TakeSent(output, input, static_cast<int>(action));
  }
  void RequestTurn() override { turnTimer_.start(); }
  void StartAnswerTimer() override { answerTimer_.start(); }
  void StopAnswerTimer() override { answerTimer_.stop(); }
  void Ended() override;

 Q_SIGNALS:
  // The operator wants what is ticked; Go() begins it.
  void RecallRequested();
  // It has begun with so many outputs.
  void RecallBegun(int outputs);
  // A command for a crosspoint (from 1) was sent, with its action byte.
  void TakeSent(int output, int input, int action);
  // What came of it, in words: a line, and one for each output that is not as it was wanted.
  void RecallEnded(const QString& summary, const QStringList& left);

 private:
  void LayOut();
  void FillList();
  void UpdateQuestion();
  QString Question() const;
  const switcher::PresetDifference& DifferenceOf(int output) const;
  void Ask();
  void SetChoosable(bool choosable);
  void SayWhatCameOfIt();

  const Services services_;
  const std::vector<switcher::PresetDifference> differences_;
  const bool hasMisfits_;
  bool isAsked_ = false;  // what was there is being kept
  bool isOver_ = false;
  switcher::Recall recall_;
  QLabel* text_;
  DifferenceList* list_;
  QCheckBox* rest_;
  QLabel* note_;
  QProgressBar* bar_;
  QPushButton* ok_;
  QPushButton* cancel_;
  QTimer turnTimer_;
  QTimer answerTimer_;
  QTimer lookTimer_;
  QTimer keepTimer_;
  QString late_;  // what was there was not kept in time
};

}  // namespace views

#endif  // VIEWS_PRESETS_RECALL_WINDOW_H_
