// SPDX-License-Identifier: MIT

#ifndef VIEWS_PROGRAMMING_BUTTONS_FORM_H_
#define VIEWS_PROGRAMMING_BUTTONS_FORM_H_

#include <QWidget>
#include <array>

#include "views/programming/button_page.h"
#include "views/programming/inactive_note.h"
#include "views/programming/operation_options.h"
#include "views/programming/opto_page.h"
#include "views/programming/station_finder.h"
#include "views/programming/station_heading.h"
#include "views/programming/station_navigator.h"
#include "views/programming/target_boxes.h"

class QAction;
class QBoxLayout;
class QTabWidget;

namespace views {

// What the programming view is made of: the navigation and the fields of the station, and under
// them the tabs.  It shows what it is told to and stores nothing, except for the page of the optos.
class ButtonsForm : public QWidget {
  Q_OBJECT

 private:
  static constexpr int kButtonPages = 4;

 public:
  // The tabs behind the pages of buttons.
  static constexpr int kEditTab = kButtonPages;
  static constexpr int kRelayTab = kEditTab + 1;
  static constexpr int kOptoTab = kRelayTab + 1;

  // `station` must outlive the form.
  explicit ButtonsForm(ShownStation& station, QWidget* parent = nullptr);

  // The page of a button (from 1).
  ButtonPage& PageOf(int button) const;

  // Of the buttons in sight, the one that has the focus, from 1; 0 when none has.
  int FocusedButton() const;

  // The first button of the page in sight; 0 while that is none of buttons.
  int FirstInSight() const;

  // What stands over the tabs while this one is chosen (from 0).
  void ShowTab(int tab);

  // In a `room` that is too narrow for both, the fields stand under the navigation.
  void PlaceFields(int room);

  // Adds the button of a command beside the finder, under the tabs.
  void AddCommand(QAction& command);

  // The parts; they belong to the form.
  OptoPage& optos;
  StationNavigator& navigator;
  StationFinder& finder;
  StationHeading& heading;
  QTabWidget& tabs;
  OperationOptions& options;  // of the selected button
  InactiveNote& inactive;
  TargetBoxes& targets;
  TargetBoxes& relays;

 Q_SIGNALS:
  // A button (from 1) was pressed on its page.
  void ButtonPressed(int button);

 private:
  void AddTabs(const model::SystemModel& model);

  QBoxLayout* top_;   // the navigation and the fields
  QBoxLayout* aids_;  // the finder and the buttons beside it
  std::array<ButtonPage*, kButtonPages> pages_{};
};

}  // namespace views

#endif  // VIEWS_PROGRAMMING_BUTTONS_FORM_H_
