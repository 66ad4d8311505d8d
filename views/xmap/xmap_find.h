// SPDX-License-Identifier: MIT

#ifndef VIEWS_XMAP_XMAP_FIND_H_
#define VIEWS_XMAP_XMAP_FIND_H_

#include <optional>
#include <string>
#include <vector>

#include "views/rules/inhibit_block.h"
#include "views/rules/xmap_grid.h"
#include "views/widgets/find_field.h"

namespace views {

// The small field over the grid, for finding a channel by its label or going to a crosspoint
// by its two numbers.  It moves the current cell only when Enter is pressed, so that typing a
// letter by mistake cannot change what a tool will act on.
class XmapFind : public FindField {
  Q_OBJECT

 public:
  // `grid` must outlive the field.  The field is hidden until it is opened.
  explicit XmapFind(const rules::XmapGrid& grid, QWidget* parent = nullptr);

  // Opens for finding, beginning with `text`, and takes the focus.
  void OpenFind(const QString& text);

  // Opens for the numbers of an output and an input, with any separator between them; for a block
  // of cells each may be two, with a hyphen.
  void OpenGoTo();

 Q_SIGNALS:
  // The channels to highlight; both sets are empty when there is nothing to search for.
  void MatchesChanged(const rules::ChannelSet& outputs, const rules::ChannelSet& inputs);

  // The first match of a new search (or 0, 0 for none): exactly one of both is set.
  void FirstMatch(int output, int input);

  // Enter: move the current cell.  A channel that is 0 stays as it is.
  void Chosen(int output, int input);
  // Behind that, when it is a block of more than one cell: choose all of them.
  void BlockChosen(const rules::CellBlock& block);

 protected:
  int Highlight() override;
  void ClearHighlights() override;
  void ShowFirst() override;
  void GoToMatch(int match) override;
  void Enter(bool back) override;
  QString CountText() const override;

 private:
  struct Match {
    int output;  // 0 when the match is an input
    int input;
  };

  bool Matches(const std::string& label, int channel) const;
  std::optional<rules::CellBlock> ParseNumbers() const;

  const rules::XmapGrid& grid_;
  bool goTo_ = false;
  std::vector<Match> matches_;
};

}  // namespace views

#endif  // VIEWS_XMAP_XMAP_FIND_H_
