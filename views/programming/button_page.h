// SPDX-License-Identifier: MIT

#ifndef VIEWS_PROGRAMMING_BUTTON_PAGE_H_
#define VIEWS_PROGRAMMING_BUTTON_PAGE_H_

#include <QString>
#include <QWidget>
#include <functional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "stations/operations.h"

class QLabel;
class QPushButton;

namespace views {

// A page of sixteen buttons of a station's panel in two rows, each with its number over it and
// its operation under it.  Buttons that no station has are drawn, but do nothing.
class ButtonPage : public QWidget {
  Q_OBJECT

 public:
  static constexpr int kButtons = 16;

  // Buttons `first` and on, counted from 1; a station has `buttonCount`.
  ButtonPage(int first, int buttonCount, QWidget* parent = nullptr);

  // Captions a button of this page, counted from 1 over all pages.
  void SetCaption(int button, const QString& caption);
  // Captions all buttons that a station has on this page, in their order.
  void SetCaptions(std::span<const std::string> captions);

  // Shows the operation of a button of this page.
  void SetOperation(int button, const stations::Operation& operation);

  // Asks for the tip of a button (from 1) when the pointer rests on it.
  void SetTips(std::function<QString(int button)> tipOf) { tipOf_ = std::move(tipOf); }

  // The button of this page that has the focus, from 1; 0 when none has.
  int FocusedButton() const;

 Q_SIGNALS:
  void Clicked(int button);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Key {
    QLabel* number;
    QPushButton* button;
    QLabel* type;
    int width = 0;  // of the caption in the page's font
  };

  Key MakeKey(int button, bool isThere);
  void AddNotes(int buttonCount);
  // Captions a button, in whatever font; false when it has that caption already.
  bool ChangeCaption(int button, const QString& caption);
  // All captions in one font: smaller than the page's where they are too wide for the room.
  void FitFont();
  void Speak(int button);
  Key& KeyOf(int button) { return keys_[static_cast<std::size_t>(button - first_)]; }
  const Key& KeyOf(int button) const { return keys_[static_cast<std::size_t>(button - first_)]; }

  const int first_;
  std::vector<Key> keys_;
  std::function<QString(int button)> tipOf_;
};

}  // namespace views

#endif  // VIEWS_PROGRAMMING_BUTTON_PAGE_H_
