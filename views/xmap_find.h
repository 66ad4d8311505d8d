// SPDX-License-Identifier: MIT

#ifndef VIEWS_XMAP_FIND_H_
#define VIEWS_XMAP_FIND_H_

#include <QFrame>
#include <QString>

#include <optional>
#include <vector>

#include "views/rules/xmap_grid.h"

class QLabel;
class QLineEdit;

namespace views {

// The small field over the grid, for finding a channel by its label or going to a crosspoint
// by its two numbers.  It moves the current cell only when Enter is pressed, so that typing a
// letter by mistake cannot change what a tool will act on.
class XmapFind : public QFrame {
  Q_OBJECT

 public:
  // `grid` must outlive the field.  The field is hidden until it is opened.
  explicit XmapFind(const rules::XmapGrid& grid, QWidget* parent = nullptr);

  // Opens for finding, beginning with `text`, and takes the focus.
  void OpenFind(const QString& text);

  // Opens for the numbers of an output and an input, with any separator between them.
  void OpenGoTo();

  // Closes and puts out the lights; does nothing when it is closed.
  void Close();

  // Lights what matches now; call after the labels have changed.  The map does not scroll.
  void LabelsChanged();

 Q_SIGNALS:
  // The channels to light; both sets are empty when there is nothing to search for.
  void MatchesChanged(const rules::ChannelSet& outputs, const rules::ChannelSet& inputs);

  // The first match of a new search (or 0, 0 for none): exactly one of both is set.
  void FirstMatch(int output, int input);

  // Enter: move the current cell.  A channel that is 0 stays as it is.
  void Chosen(int output, int input);

  // The field has closed; the focus goes back to the grid.
  void Closed();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Match {
    int output;  // 0 when the match is an input
    int input;
  };

  void Open(const QString& text, const QString& prompt);
  // A new text: lights its matches and brings the first one into sight.
  void Search();
  void LightMatches();
  void Step(int by);
  void GoTo();
  bool Matches(const std::string& label, int channel) const;
  std::optional<Match> ParseNumbers() const;
  void ShowCount();

  const rules::XmapGrid& grid_;
  QLineEdit* field_;
  QLabel* count_;
  bool goTo_ = false;
  std::vector<Match> matches_;
  int at_ = -1;  // the match that Enter went to last
};

}  // namespace views

#endif  // VIEWS_XMAP_FIND_H_
