// SPDX-License-Identifier: MIT

#include "views/programming/buttons_view.h"

#include <QComboBox>
#include <QTabWidget>

#include <string>
#include <utility>
#include <vector>

#include "db/database_files.h"
#include "db/station_fields.h"
#include "stations/button_program.h"
#include "stations/operations.h"
#include "stations/relays.h"
#include "views/programming/inactive_note.h"
#include "views/programming/operation_options.h"
#include "views/programming/opto_page.h"
#include "views/programming/station_fields.h"
#include "views/programming/station_navigator.h"
#include "views/programming/target_boxes.h"

namespace views {
namespace {

using Scope = OneReport::Scope;

constexpr auto kOperator = OneReport::Cause::Operator;

constexpr std::string_view kReadFailed = "Error Reading Station Record";
constexpr std::string_view kMoveFailed = "Error Moving To Another Station";
constexpr std::string_view kButtonFailed = "Error Storing Button Programming";
constexpr std::string_view kRelayFailed = "Error Storing Relay Assignment";

// The caption over the targets until an operation is chosen or another button or station is
// shown.  It differs from the captions that follow.
const char* FirstTargetsCaption(int type) {
  switch (type) {
    case stations::kExternal:
      return "External Channel To Be Called When OPTO Is Activated";
    case stations::kTalk:
    case stations::kListen:
    case stations::kPriorityListen:
    case stations::kGroup:
      return stations::OperationOf(type).buttonTargets;
    default:
      return "Station(s) To Be Called When Opto Is Activated";
  }
}

}  // namespace

ButtonsView::ButtonsView(const Services& services, QWidget* parent)
    : MainView(QStringLiteral("frmButtons"), QStringLiteral("Station Button Programming"),
               QStringLiteral("Butns"), services.settings, parent),
      report_(services.reporter),
      services_(WithReporter(services, report_)) {
  AddTools();
  AddPages();
  AddKeys();
  LayOut();
  Open();
}

void ButtonsView::Open() {
  const Scope scope(report_, kOperator);
  const UpdatingFlag::Scope updating(updating_);
  QComboBox& selector = navigator_->ButtonSelector();
  for (int button = 1; button <= services_.model.ButtonCount; ++button) {
    selector.addItem(QStringLiteral("Button %1").arg(button));
  }
  selector.setCurrentIndex(0);
  wasButtonSelected_ = false;
  selectedButton_ = 1;
  ShowTab(0);
  ShowStation();  // a record that cannot be read is told of as the station's, not as the opto's
  optos_->FillChannelList();
  optos_->CaptionFrame();
  targets_->setTitle(QString::fromLatin1(FirstTargetsCaption(StoredType())));
  UpdateButtonLabels();
  UpdateButtonTypes();
  UpdateCheckboxLabels();
  UpdateCheckboxSelections();
  UpdateRelaySelections();
  UpdateOptionButtons();
  UpdateOptoCheckboxLabels();
  UpdateOptoSelections();
  UpdateOptoOptionButtons();
  ShowSelectedButton();
}

bool ButtonsView::WithRecord(std::string_view line,
                             const std::function<model::Status(jet::RecordSet&)>& work) {
  jet::RecordSet* const stations = services_.stations();
  const model::Status status = stations != nullptr ? work(*stations) : db::NotOpen();
  if (!status.ok()) ShowFailure(services_, line, status);
  return status.ok();
}

bool ButtonsView::Read(const std::function<model::Status(jet::RecordSet&)>& work) {
  const model::Status status = WithStations(services_, work);
  if (!status.ok()) ShowFailure(services_, kReadFailed, status);
  return status.ok();
}

ButtonPage& ButtonsView::PageOf(int button) const {
  return *pages_[static_cast<std::size_t>((button - 1) / ButtonPage::kButtons)];
}

int ButtonsView::StoredType() {
  stations::ButtonProgram program;
  const bool isRead = Read(
      [&](jet::RecordSet& stations) { return stations::ReadButton(stations, Button(), &program); });
  return isRead ? program.type : shownType_;
}

int ButtonsView::CurrentStation() {
  jet::Value number;
  Read([&](jet::RecordSet& stations) {
    return model::Status(stations.Get(db::kStationNumField, &number));
  });
  return number.Int();
}

void ButtonsView::UpdateButtonLabels() {
  const Scope scope(report_);
  const int count = services_.model.ButtonCount;
  std::vector<std::string> captions(static_cast<std::size_t>(count), stations::kNoTarget);
  Read([&](jet::RecordSet& stations) {
    return stations::ReadButtonCaptions(stations, count, &captions);
  });
  for (int first = 1; first <= count; first += ButtonPage::kButtons) {
    const int onPage = std::min(ButtonPage::kButtons, count - first + 1);
    PageOf(first).SetCaptions(std::span(captions).subspan(static_cast<std::size_t>(first - 1),
                                                          static_cast<std::size_t>(onPage)));
  }
  ShowStation();
}

void ButtonsView::UpdateButtonTypes() {
  const Scope scope(report_);
  const int count = services_.model.ButtonCount;
  std::vector<int> types(static_cast<std::size_t>(count), stations::kNoType);
  Read(
      [&](jet::RecordSet& stations) { return stations::ReadButtonTypes(stations, count, &types); });
  for (int button = 1; button <= count; ++button) {
    PageOf(button).SetOperation(button,
                                stations::OperationOf(types[static_cast<std::size_t>(button - 1)]));
  }
}

void ButtonsView::UpdateCheckboxLabels() {
  const Scope scope(report_);
  const int type = StoredType();
  std::vector<std::string> captions;
  Read([&](jet::RecordSet& stations) {
    return stations::ReadTargetCaptions(stations, type, services_.model.ChkBoxCount, &captions);
  });
  targets_->SetCaptions(captions);
}

void ButtonsView::UpdateCheckboxSelections() {
  const Scope scope(report_);
  stations::ButtonProgram program;
  Read(
      [&](jet::RecordSet& stations) { return stations::ReadButton(stations, Button(), &program); });
  targets_->SetFlags(program.targets);
}

void ButtonsView::UpdateRelaySelections() {
  const Scope scope(report_);
  std::string relays;
  Read([&](jet::RecordSet& stations) { return stations::ReadRelays(stations, &relays); });
  relays_->SetFlags(relays);
}

void ButtonsView::UpdateOptionButtons() {
  const Scope scope(report_);
  stations::ButtonProgram program;
  const bool isRead = Read(
      [&](jet::RecordSet& stations) { return stations::ReadButton(stations, Button(), &program); });
  shownType_ = isRead ? program.type : stations::kNoType;
  options_->Select(shownType_);
  inactive_->hide();
  // What the click would store is what is stored.
  if (!updating_.IsSet()) ShowType(shownType_);
}

void ButtonsView::UpdateOptoCheckboxLabels() {
  const Scope scope(report_);
  optos_->UpdateOptoCheckboxLabels();
}

void ButtonsView::UpdateOptoSelections() {
  const Scope scope(report_);
  optos_->UpdateOptoSelections();
}

void ButtonsView::UpdateOptoOptionButtons() {
  const Scope scope(report_);
  optos_->UpdateOptoOptionButtons();
}

void ButtonsView::UpdateOptoChannels() {
  const Scope scope(report_);
  optos_->FillChannelList();
}

void ButtonsView::CheckForInactive() {
  const Scope scope(report_);
  const jet::RecordSet* const current = services_.stations();
  if (current == nullptr || !current->HasRecord()) return;
  bool changed = false;
  WithRecord(kButtonFailed, [&](jet::RecordSet& stations) {
    return stations::StoreInactive(stations, Button(), services_.Operator(), &changed);
  });
  if (!changed) return;
  NoteEdited(switcher::Table::Buttons);
  NoteInactive();
}

void ButtonsView::UpdateStation() {
  const Scope scope(report_);
  const UpdatingFlag::Scope updating(updating_);
  UpdateButtonLabels();
  UpdateButtonTypes();
  UpdateCheckboxLabels();
  UpdateCheckboxSelections();
  UpdateRelaySelections();
  UpdateOptionButtons();
  targets_->setTitle(QString::fromLatin1(stations::OperationOf(shownType_).buttonTargets));
  optos_->FillChannelList();
  optos_->CaptionFrame();
  UpdateOptoCheckboxLabels();
  UpdateOptoSelections();
  UpdateOptoOptionButtons();
}

void ButtonsView::LoadStation() {
  ShowStation();
  {
    const UpdatingFlag::Scope updating(updating_);
    UpdateButtonLabels();
    UpdateButtonTypes();
    UpdateCheckboxSelections();
    UpdateRelaySelections();
    UpdateOptoSelections();
  }
  optos_->SelectChannel();
  UpdateOptionButtons();
  UpdateOptoOptionButtons();
}

void ButtonsView::ShowStation() {
  jet::Value label;
  jet::Value inputLabel;
  jet::Value number;
  Read([&](jet::RecordSet& stations) -> model::Status {
    jet::Status status = stations.Get(db::kLabelField, &label);
    if (status.ok()) status = stations.Get(db::kInLabelField, &inputLabel);
    if (status.ok()) status = stations.Get(db::kStationNumField, &number);
    return status;
  });
  fields_->ShowStation(QString::fromStdString(label.Text()),
                       QString::fromStdString(inputLabel.Text()),
                       number.IsNull() ? QString() : QString::number(number.Int()));
}

void ButtonsView::ShowSelectedButton() {
  targets_->SetSpokenName(
      tr("Target %1 of button %2").arg(QStringLiteral("%1"), QString::number(Button())));
}

void ButtonsView::ShowType(int type) {
  std::string caption = stations::kNoTarget;
  Read([&](jet::RecordSet& stations) {
    return stations::ReadChosenCaption(stations, Button(), &caption);
  });
  const stations::Operation& operation = stations::OperationOf(type);
  shownType_ = type;
  inactive_->hide();
  ButtonPage& page = PageOf(Button());
  page.SetOperation(Button(), operation);
  targets_->setTitle(QString::fromLatin1(operation.buttonTargets));
  page.SetCaption(Button(), QString::fromStdString(caption));
  UpdateCheckboxLabels();
}

void ButtonsView::ShowTab(int tab) {
  using Selector = StationNavigator::Selector;
  if (tab == kOptoTab) {
    navigator_->Show(Selector::OptoChannel,
                     QStringLiteral("Navigation Controls [ Select Opto To Configure ]"));
  } else if (tab == kEditTab) {
    navigator_->Show(
        Selector::Button,
        QStringLiteral("Navigation Controls [ Select Station And Button To Configure ]"));
  } else {
    navigator_->Show(Selector::None,
                     QStringLiteral("Navigation Controls [ Select Station To Configure ]"));
  }
  const bool isOpto = tab == kOptoTab;
  fields_->ShowFor(isOpto ? QStringLiteral("Opto") : QStringLiteral("Port"), !isOpto);
}

void ButtonsView::NoteInactive() {
  if (shownType_ != stations::kInactive) inactive_->ShowFor(tr("Button %1").arg(Button()));
  Q_EMIT NoteRequested(tr("Button %1 of station %2 has no target and is stored as inactive")
                           .arg(Button())
                           .arg(CurrentStation()));
}

void ButtonsView::Move(stations::Movement movement) {
  const Scope scope(report_, kOperator);
  CheckForInactive();
  WithRecord(kMoveFailed, [&](jet::RecordSet& stations) {
    return stations::MoveStation(stations, movement, services_.model.StationCount);
  });
  LoadStation();
}

void ButtonsView::ChangeTab(int tab) {
  if (updating_.IsSet()) return;
  const Scope scope(report_, kOperator);
  CheckForInactive();
  ShowTab(tab);
}

void ButtonsView::StepTab(int step) {
  const int tab = tabs_->currentIndex() + step;
  if (tab >= 0 && tab < tabs_->count()) tabs_->setCurrentIndex(tab);
}

void ButtonsView::SelectButton(int button) {
  if (updating_.IsSet()) return;
  const Scope scope(report_, kOperator);
  CheckForInactive();
  selectedButton_ = button;
  UpdateCheckboxSelections();
  UpdateOptionButtons();
  ShowSelectedButton();
}

void ButtonsView::EditButton(int button) {
  const Scope scope(report_, kOperator);
  QComboBox& selector = navigator_->ButtonSelector();
  if (selector.currentIndex() == button - 1) {
    SelectButton(button);
  } else {
    selector.setCurrentIndex(button - 1);
    wasButtonSelected_ = false;  // no second signal follows
  }
  tabs_->setCurrentIndex(kEditTab);
  targets_->setFocus(Qt::OtherFocusReason);
}

void ButtonsView::ToggleTarget(int target, bool set) {
  if (updating_.IsSet()) return;
  const Scope scope(report_, kOperator);
  const int count = services_.model.ChkBoxCount;
  bool isInactive = false;
  if (!WithRecord(kButtonFailed, [&](jet::RecordSet& stations) {
        return stations::StoreTarget(stations, Button(), target, set, count, services_.Operator(),
                                     &isInactive);
      })) {
    UpdateCheckboxSelections();
    return;
  }
  std::string caption = stations::kNoTarget;
  Read([&](jet::RecordSet& stations) {
    return stations::ReadEditedCaption(stations, Button(), count, &caption);
  });
  PageOf(Button()).SetCaption(Button(), QString::fromStdString(caption));
  NoteEdited(switcher::Table::Buttons);
  if (isInactive) NoteInactive();
}

void ButtonsView::ChooseType(int type) {
  if (updating_.IsSet()) return;
  const Scope scope(report_, kOperator);
  bool changed = false;
  if (!WithRecord(kButtonFailed, [&](jet::RecordSet& stations) {
        return stations::StoreType(stations, Button(), type, services_.Operator(), &changed);
      })) {
    shownType_ = StoredType();
    inactive_->hide();
    options_->Select(shownType_);
    return;
  }
  if (changed) NoteEdited(switcher::Table::Buttons);
  ShowType(type);
}

void ButtonsView::ToggleRelay(int relay, bool set) {
  if (updating_.IsSet()) return;
  const Scope scope(report_, kOperator);
  if (!WithRecord(kRelayFailed, [&](jet::RecordSet& stations) {
        return stations::StoreRelay(stations, relay, set, services_.model.RelayCount,
                                    services_.Operator());
      })) {
    UpdateRelaySelections();
    return;
  }
  NoteEdited(switcher::Table::Relays);
}

void ButtonsView::SendSingleStation() {
  const Scope scope(report_, kOperator);
  const int station = CurrentStation();
  if (station == 0) return;
  const switcher::PollPause pause(services_.poll);
  SendTable(services_, {.table = switcher::Table::Buttons, .station = station});
  SendTable(services_, {.table = switcher::Table::Relays, .station = station});
}

void ButtonsView::SendOptos() { SendTable(services_, {.table = switcher::Table::Optos}); }

void ButtonsView::NoteEdited(switcher::Table table) {
  services_.unsent.NoteEdited({.table = table, .station = CurrentStation()});
}

}  // namespace views
