// SPDX-License-Identifier: MIT

#ifndef VIEWS_PROGRAMMING_BUTTONS_VIEW_H_
#define VIEWS_PROGRAMMING_BUTTONS_VIEW_H_

#include <QPointer>

#include <functional>

#include "stations/navigation.h"
#include "stations/where_used.h"
#include "views/main_view.h"
#include "views/programming/station_event.h"

namespace views {

class ButtonsForm;
class CopyToWindow;
class ToolBand;
class WhereUsedWindow;

// The programming view "frmButtons": what each button of a station's panel does, which relays
// belong to the station, and what each opto input does.  The station is the current record of
// the shared record set; edits go to the database at once, and to the switcher by the tools.
//
// Each thing that happens, an Update operation or what the operator does, is a StationEvent: it
// draws from one look at the station, and reports one failure.
class ButtonsView : public MainView {
  Q_OBJECT

 public:
  explicit ButtonsView(const Services& services, QWidget* parent = nullptr);
  ~ButtonsView() override;

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

  // Selects the option of the selected button's operation; the captions follow as if it had been
  // clicked.
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

  // The number of the station that is shown; 0 when there is none or it cannot be read.
  int CurrentStation() const;

  // Goes to a station, as the navigation does, and there to one of its buttons (from 1), to its
  // relays or to its opto.  Nothing is chosen of a station that cannot be gone to.
  bool GoToStation(int station);  // whether it is shown now
  void GoToButton(int station, int button);
  void GoToRelays(int station);
  void GoToOpto(int station);

  // Brings the operator to the box that goes to a station.
  void ShowFind();

  QSize minimumSizeHint() const override;
  QWidget& FirstFocus() override;

 Q_SIGNALS:
  // The tool that sends all button programming was clicked.
  void SendButtonDataRequested();
  // The operator goes from the list of Where Used to what points at the station.
  void UseRequested(const stations::Use& use);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void AddTools();
  void AddAids();
  void AddKeys();
  void Connect();
  // The desktop's font, as far as the form has room for it: at its first size everything is in
  // sight, whatever that font is.
  void FitFont();

  int Button() const { return selectedButton_ < 1 ? 1 : selectedButton_; }
  // What is stored of the selected button, and its operation.
  const stations::ButtonProgram& Selected(StationEvent& event) const;
  int SelectedType(StationEvent& event) const;
  // The number of the current station; 0 when it cannot be read.
  static int StationNumber(StationEvent& event);

  // An event of its own for what `part` does in one.
  template <typename Part>
  void Refresh(Part& part, void (Part::*draw)(StationEvent&));

  // What the Update operations do, as part of an event.
  void ShowStation(StationEvent& event);
  void ShowButtonLabels(StationEvent& event);
  void ShowButtonTypes(StationEvent& event);
  void ShowTargetCaptions(StationEvent& event);
  void ShowTargets(StationEvent& event);
  void ShowRelays(StationEvent& event);
  // The option, what follows a click on it, and both.
  void ShowOption(StationEvent& event);
  void ShowOperation(StationEvent& event);
  void ShowChosenOption(StationEvent& event);
  // Everything, except for the caption of the targets; and with it.
  void ShowAll(StationEvent& event);
  void ShowStationAnew(StationEvent& event);
  void StoreIfInactive(StationEvent& event);

  void SpeakSelectedButton();
  // Says that the selected button was stored as inactive: in passing, and beside its options for as
  // long as these show another operation.
  void NoteInactive(StationEvent& event);

  void Move(stations::Movement movement);
  // Makes another station the current record by `move`, and shows it.
  void MoveBy(const std::function<model::Status(jet::RecordSet&)>& move);
  void ChangeTab(StationEvent& event, int tab);
  void StepTab(int step);
  void SelectButton(StationEvent& event, int button);
  void EditButton(int button);
  void ToggleTarget(int target, bool set);
  void ChooseType(int type);
  void ToggleRelay(int relay, bool set);
  void SendSingleStation();
  void SendOptos();
  void CopyToStations();
  void ShowWhereUsed();
  QString TipOf(int button);

  ShownStation shown_;
  int selectedButton_ = 1;
  ToolBand* tools_ = nullptr;
  ButtonsForm* form_ = nullptr;
  QPointer<CopyToWindow> copyTo_;
  QPointer<WhereUsedWindow> whereUsed_;
};

}  // namespace views

#endif  // VIEWS_PROGRAMMING_BUTTONS_VIEW_H_
