// SPDX-License-Identifier: MIT

#ifndef TESTS_VIEWS_PROGRAMMING_OPTO_CONSOLE_H_
#define TESTS_VIEWS_PROGRAMMING_OPTO_CONSOLE_H_

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QRadioButton>
#include <memory>
#include <string>
#include <vector>

#include "tests/views/programming/buttons_console.h"
#include "tests/views/view_console.h"
#include "views/programming/opto_page.h"

namespace test {

// The page of the optos in a window of its own, under its channel selector, and what the
// programming view does with it.
class OptoConsole : public ViewConsole {
 public:
  // 64 channels.  Opto 1 talks to stations 3 and 5, opto 2 listens to source 7, both on the
  // channel of their number; the others are as in a new database.
  OptoConsole();

  // Makes the page and shows the current record as at the opening of the view.
  void Open();
  // Goes to an opto as the navigation of the view does.
  void Load(int opto);
  // Brings one thing up to date, as one event.
  void Refresh(void (views::OptoPage::*update)(views::StationEvent&));

  QComboBox& Channels();
  QGroupBox& Frame();
  // By their index, from 0, and by their code.
  QCheckBox& Box(int index);
  QRadioButton& Option(int code);

  // What is seen: the codes of the options and the numbers of the boxes that are selected, and
  // the captions.
  std::vector<int> SelectedOptions();
  std::vector<int> Ticked();
  std::string BoxCaption(int target);
  std::string ChannelItem(int channel);
  std::string FrameCaption();
  // Whether the note beside the options says that the opto is stored as inactive.
  bool NoteIsShown();

  // "type|channel|first|targets" of an opto, with the numbers of the targets.
  std::string Stored(int opto);

  views::ShownStation shown{Services()};
  std::unique_ptr<QWidget> host;
  views::OptoPage* page = nullptr;
  std::vector<int> edited;  // the optos that were told of as edited
  std::vector<std::string> notes;
};

}  // namespace test

#endif  // TESTS_VIEWS_PROGRAMMING_OPTO_CONSOLE_H_
