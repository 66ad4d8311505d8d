// SPDX-License-Identifier: MIT

#include "views/xmap/take_undo.h"

#include "views/widgets/question.h"
#include "views/xmap/pending_crosspoints.h"
#include "views/xmap/xmap_words.h"

namespace views {

using rules::TakeBack;

TakeUndo::TakeUndo(const Services& services, const rules::XmapGrid& grid, QWidget& view)
    : QObject(&view), services_(services), grid_(grid), view_(view), last_(services.model) {
  patience_.setSingleShot(true);
  patience_.setInterval(kLongestPending);
  connect(&patience_, &QTimer::timeout, this, &TakeUndo::Lapse);
}

void TakeUndo::Sent(int output, int input) {
  isUnderWay_ = false;
  last_.Sent(output, input, services_.knownMap.IsKnown());
  patience_.start();
}

void TakeUndo::Reported(int output) {
  last_.Reported(output);
  if (!isUnderWay_) return;
  const TakeBack back = last_.Decide(grid_);
  if (back.kind == TakeBack::Kind::NoTake) {
    isUnderWay_ = false;
  } else if (back.kind != TakeBack::Kind::Unreported) {
    isPartDone_ |= back.kind == TakeBack::Kind::Possible;
    SendStep(back);
  }
}

QString TakeUndo::Refusal(const TakeBack& back) const {
  // What the map shows then is not what the switcher has.
  if (services_.model.DemoMode == 1) return tr("Take not undone: this is the demo mode");
  if (services_.model.LinkStatus[0] != 1) return tr("Take not undone: not connected");
  if (back.kind != TakeBack::Kind::Possible) return TakeBackRefusal(grid_, back);
  if (!services_.knownMap.IsKnown()) {
    return tr("Take not undone: the map is from before the link was lost; Refresh Map");
  }
  return {};
}

void TakeUndo::AskBack() {
  const TakeBack back = last_.Decide(grid_);
  if (const QString refusal = Refusal(back); !refusal.isEmpty()) {
    Q_EMIT NoteRequested(refusal);
    return;
  }
  if (services_.commands.RefusesTake(back.output)) return;
  Ask(*view_.window(), *this,
      {.name = QStringLiteral("aidUndoTakeQuestion"),
       .text = TakeBackQuestion(grid_, back),
       .answers = {{.name = QStringLiteral("aidTakeBack"),
                    .caption = tr("&Undo Take"),
                    .run = [this, output = back.output] { Begin(output); }}}});
}

// The row may have changed while the question stood.
void TakeUndo::Begin(int output) {
  const TakeBack back = last_.Decide(grid_);
  if (back.output != output) return;
  isUnderWay_ = true;
  isPartDone_ = false;
  SendStep(back);
}

void TakeUndo::SendStep(const TakeBack& back) {
  if (const QString refusal = Refusal(back); !refusal.isEmpty()) return Stop(back, refusal);
  if (services_.commands.RefusesTake(back.output)) return Stop(back, {});
  const TakeBack::Step step = back.steps.front();
  const auto action = static_cast<std::uint8_t>(step.action);
  if (!services_.commands.SendTake(back.output, step.input, action)) return Stop(back, {});
  last_.StepSent(step);
  Q_EMIT CommandSent(back.output, step.input, action);
  patience_.start();
}

void TakeUndo::Stop(const TakeBack& back, const QString& refusal) {
  isUnderWay_ = false;
  const QString note = isPartDone_ && back.output >= 1 ? TakeBackRest(grid_, back) : refusal;
  if (!note.isEmpty()) Q_EMIT NoteRequested(note);
}

// The map itself tells of a command without a report.
void TakeUndo::Lapse() {
  last_.Lapse();
  if (isUnderWay_) Stop(last_.Decide(grid_), {});
}

}  // namespace views
