// SPDX-License-Identifier: MIT

#ifndef VIEWS_PROGRAMMING_BUTTONS_VIEW_H_
#define VIEWS_PROGRAMMING_BUTTONS_VIEW_H_

#include <array>
#include <functional>
#include <string_view>

#include "stations/navigation.h"
#include "views/main_view.h"
#include "views/one_report.h"
#include "views/programming/button_page.h"
#include "views/services.h"
#include "views/updating_flag.h"

class QBoxLayout;
class QTabWidget;

namespace views {

class InactiveNote;
class OperationOptions;
class OptoPage;
class StationFields;
class StationNavigator;
class TargetBoxes;
class ToolBand;

// The programming view "frmButtons": what each button of a station's panel does, which relays
// belong to the station, and what each opto input does.  The station is the current record of
// the shared record set; edits go to the database at once, and to the switcher by the tools.
//
// Each Update operation reads the current record and goes back to it.  A failure is reported once
// for each thing that the operator does, however many refreshes it takes.
class ButtonsView : public MainView {
  Q_OBJECT

 public:
  explicit ButtonsView(const Services& services, QWidget* parent = nullptr);

  // Captions every button with the label of its first target, or "NONE".
  void UpdateButtonLabels();

  // Shows every button's operation.
  void UpdateButtonTypes();

  // Captions the target boxes for the operation of the selected button.
  void UpdateCheckboxLabels();

  // Ticks the target boxes of the selected button.
  void UpdateCheckboxSelections();

  // Ticks the relay boxes of the station.
  void UpdateRelaySelections();

  // Selects the option of the selected button's operation.  Unless the view is updating, the
  // handler of the option follows, as if it had been clicked.
  void UpdateOptionButtons();

  // The same for the page of the optos.
  void UpdateOptoCheckboxLabels();
  void UpdateOptoSelections();
  void UpdateOptoOptionButtons();

  // Fills the opto's channel selector anew, keeping its channel.
  void UpdateOptoChannels();

  // Stores the selected button as inactive when it has no target.
  void CheckForInactive();

  // Shows the current record from scratch, its labels included: the database was written from
  // elsewhere.  Stores nothing.
  void UpdateStation();

  QSize minimumSizeHint() const override;
  QWidget& FirstFocus() override;

 Q_SIGNALS:
  // The tool that sends all button programming was clicked.
  void SendButtonDataRequested();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  static constexpr int kButtonPages = 4;
  // The tabs behind the pages of buttons.
  static constexpr int kEditTab = kButtonPages;
  static constexpr int kRelayTab = kEditTab + 1;
  static constexpr int kOptoTab = kRelayTab + 1;

  void AddTools();
  void AddPages();
  void AddKeys();
  void LayOut();
  void Open();

  // Works on the current record; a failure is reported under `line`.  True for a success.
  bool WithRecord(std::string_view line, const std::function<model::Status(jet::RecordSet&)>& work);
  // The same for reading; `work` may move, it is gone back to the record.
  bool Read(const std::function<model::Status(jet::RecordSet&)>& work);

  int Button() const { return selectedButton_ < 1 ? 1 : selectedButton_; }
  ButtonPage& PageOf(int button) const;
  // What is stored as the selected button's operation; what it was shown as when that cannot be
  // read.
  int StoredType();
  // The number of the current station; 0 without one.
  int CurrentStation();

  void ShowStation();
  void ShowSelectedButton();
  // The desktop's font, as far as the form has room for it: at its first size everything is in
  // sight, whatever that font is.
  void FitFont();
  // Shows the operation of the selected button wherever it is shown.
  void ShowType(int type);
  void ShowTab(int tab);
  void LoadStation();
  // Says that the selected button was stored as inactive: in passing, and beside its options for as
  // long as these show another operation.
  void NoteInactive();

  void Move(stations::Movement movement);
  void ChangeTab(int tab);
  void StepTab(int step);
  void SelectButton(int button);
  void EditButton(int button);
  void ToggleTarget(int target, bool set);
  void ChooseType(int type);
  void ToggleRelay(int relay, bool set);
  void SendSingleStation();
  void SendOptos();
  // The operator or the view itself has changed this table of the current station.
  void NoteEdited(switcher::Table table);

  OneReport report_;
  const Services services_;  // reports go through report_
  UpdatingFlag updating_;
  int selectedButton_ = 1;
  int shownType_ = 0;  // of the selected button; what is stored may be another since
  bool wasButtonSelected_ = false;

  ToolBand* tools_ = nullptr;
  QBoxLayout* station_ = nullptr;  // the navigation and the fields
  StationNavigator* navigator_ = nullptr;
  StationFields* fields_ = nullptr;
  QTabWidget* tabs_ = nullptr;
  std::array<ButtonPage*, kButtonPages> pages_{};
  OperationOptions* options_ = nullptr;
  InactiveNote* inactive_ = nullptr;
  TargetBoxes* targets_ = nullptr;
  TargetBoxes* relays_ = nullptr;
  OptoPage* optos_ = nullptr;
};

}  // namespace views

#endif  // VIEWS_PROGRAMMING_BUTTONS_VIEW_H_
