// SPDX-License-Identifier: MIT

#ifndef VIEWS_PROGRAMMING_TARGET_BOXES_H_
#define VIEWS_PROGRAMMING_TARGET_BOXES_H_

#include <QGroupBox>
#include <string>
#include <string_view>
#include <vector>

class QCheckBox;
class QLabel;

namespace views {

// A frame of check boxes in rows of eight, one per target, that says how many are ticked.  The
// arrow keys go from box to box, Space toggles; Tab comes to the box that was used last, and
// leaves the frame.  The boxes are in "Courier New" or what comes closest, smaller than the font of
// the frame where eight letters are too wide for the room.
class TargetBoxes : public QGroupBox {
  Q_OBJECT

 public:
  // `name` is the fixed name of the frame; the boxes are named `boxName`_0 and on.
  TargetBoxes(const QString& name, const QString& boxName, int count, QWidget* parent = nullptr);

  int Count() const { return static_cast<int>(boxes_.size()); }

  // Captions of all boxes, as UTF-8, of up to eight characters; a box without one keeps what it
  // had.  Where characters are wider than letters the font of all boxes becomes smaller.
  void SetCaptions(const std::vector<std::string>& captions);

  // What a screen reader says before the caption: `pattern` with the number of the box, from 1,
  // in the place of %1 ("Target %1 of button 5").
  void SetSpokenName(const QString& pattern);

  // Ticks box k when character k + 1 of `flags` is "1".  Emits nothing.
  void SetFlags(std::string_view flags);

 Q_SIGNALS:
  // The operator has ticked or cleared box `index` (from 0).
  void Toggled(int index, bool checked);

 protected:
  void initStyleOption(QStyleOptionGroupBox* option) const override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void FitFont();
  QString WidestCaption(const QFont& font) const;
  void SpeakOf(int index);
  void ShowCount();
  void PlaceCount();

  std::vector<QCheckBox*> boxes_;
  QLabel* count_;
  QString spokenName_;
};

}  // namespace views

#endif  // VIEWS_PROGRAMMING_TARGET_BOXES_H_
