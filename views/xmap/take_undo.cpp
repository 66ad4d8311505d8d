// SPDX-License-Identifier: MIT

#include "views/xmap/take_undo.h"

#include "views/widgets/question.h"
#include "views/xmap/xmap_words.h"

namespace views {

using rules::TakeBack;

TakeUndo::TakeUndo(const Services& services, const rules::XmapGrid& grid, QWidget& view)
    : QObject(&view), services_(services), grid_(grid), view_(view), last_(services.model) {}

QString TakeUndo::Refusal(const TakeBack& back) const {
  if (back.kind != TakeBack::Kind::Possible) return TakeBackRefusal(grid_, back);
  // What the map shows then is not what the switcher has.
  if (services_.model.DemoMode == 1) return tr("Take not undone: this is the demo mode");
  if (services_.model.LinkStatus[0] != 1) return tr("Take not undone: not connected");
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
                    .run = [this, output = back.output] { SendBack(output); }}}});
}

// The row may have changed while the question stood.
void TakeUndo::SendBack(int output) {
  const TakeBack back = last_.Decide(grid_);
  if (back.output != output) return;
  if (const QString refusal = Refusal(back); !refusal.isEmpty()) {
    Q_EMIT NoteRequested(refusal);
    return;
  }
  if (services_.commands.RefusesTake(output)) return;
  last_.Forget();
  for (const TakeBack::Step& step : back.steps) {
    const auto action = static_cast<std::uint8_t>(step.action);
    if (!services_.commands.SendTake(output, step.input, action)) return;
    Q_EMIT CommandSent(output, step.input, action);
  }
}

}  // namespace views
