// SPDX-License-Identifier: MIT

#ifndef TESTS_VIEWS_PROGRAMMING_BUTTONS_CONSOLE_H_
#define TESTS_VIEWS_PROGRAMMING_BUTTONS_CONSOLE_H_

#include <gtest/gtest.h>

#include <QColor>
#include <QPointer>
#include <QString>
#include <map>
#include <string>
#include <vector>

#include "tests/views/gui_support.h"
#include "tests/views/view_console.h"
#include "views/programming/buttons_view.h"

namespace test {

// 64 flags, those of the given members set.
std::string Flags(const std::vector<int>& members);

// The programming view in its surroundings, on a new database of 128 records.
class ButtonsConsole : public ViewConsole {
 public:
  ButtonsConsole();

  // Opens the view in a sub-window of the main window.
  views::ButtonsView& Open();

  // A control of the view by its name, which must be there.
  template <typename T>
  T& Find(const QString& name) {
    return test::Find<T>(*view, name);
  }
  template <typename T>
  T& Find(const char* array, int index) {
    return Find<T>(QString::fromLatin1(array) + u'_' + QString::number(index));
  }

  // What is shown of button n, from 1.
  std::string Caption(int button);
  std::string Type(int button);
  QColor TypeColour(int button);
  // The ticked boxes of an array, from 0.
  std::vector<int> Ticked(const char* array);
  // The selected options, by code.
  std::vector<int> Options();
  std::string TargetsCaption();
  std::string StationText();  // the three fields

  // What the operator does with the mouse.
  void Press(const char* name);
  void ClickBox(const char* array, int index);
  void ChooseOption(int code);
  void GoToTab(int number);  // from 1
  int Tab();
  // Selects an item of the button selector with keys.
  void PickButton(int button);

  QPointer<views::ButtonsView> view;
  // In order: "edited buttons 5", "sent relays 5", "note ...", "send buttons", "qdv".
  std::vector<std::string> told;
};

}  // namespace test

#endif  // TESTS_VIEWS_PROGRAMMING_BUTTONS_CONSOLE_H_
