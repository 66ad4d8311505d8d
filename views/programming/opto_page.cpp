// SPDX-License-Identifier: MIT

#include "views/programming/opto_page.h"

#include <QComboBox>
#include <QVBoxLayout>
#include <vector>

#include "model/padded.h"
#include "stations/operations.h"
#include "stations/opto_program.h"
#include "views/programming/inactive_note.h"
#include "views/programming/operation_options.h"
#include "views/programming/page_metrics.h"
#include "views/programming/target_boxes.h"

namespace views {
namespace {

constexpr std::string_view kReadLine = "Error Reading Opto Programming Data";
constexpr std::string_view kStoreLine = "Error Storing Opto Programming Data";

constexpr int kChannelLetters = 10;  // as in "Channel 01"

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// The captions of the boxes before a record was read.
std::vector<std::string> DesignCaptions() {
  std::vector<std::string> captions;
  for (int target = 1; target <= stations::kOptoTargets; ++target) {
    captions.push_back("Sta. " + model::Padded(target, 2));
  }
  return captions;
}

bool Shows(const QComboBox& list, const std::vector<std::string>& items) {
  if (list.count() != static_cast<int>(items.size())) return false;
  for (int index = 0; index < list.count(); ++index) {
    if (list.itemText(index) != Text(items[static_cast<std::size_t>(index)])) return false;
  }
  return true;
}

}  // namespace

OptoPage::OptoPage(ShownStation& station, QWidget* parent)
    : QWidget(parent),
      shown_(station),
      channel_(new QComboBox(this)),
      operation_(new OperationOptions(QStringLiteral("frOptoButType"),
                                      QStringLiteral("optOptoType"), this)),
      inactive_(new InactiveNote(QStringLiteral("aidOptoInactiveNote"), this)),
      targets_(new TargetBoxes(QStringLiteral("frOptoStations"), QStringLiteral("ckOptoStationSel"),
                               stations::kOptoTargets, this)) {
  channel_->setObjectName(QStringLiteral("cmbOptoChan"));
  channel_->setToolTip(QStringLiteral(
      "Click To Select A Switcher Input Or Output Channel To Be Associated With The Current Opto"));
  channel_->setAccessibleName(QStringLiteral("Select Opto Channel"));
  channel_->setAccessibleDescription(channel_->toolTip());
  // One width for every list: the navigation frame stays as it is.
  channel_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  channel_->setMinimumContentsLength(kChannelLetters);
  channel_->hide();

  targets_->SetCaptions(DesignCaptions());

  operation_->AddNote(*inactive_);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(kPageMargin, kPageMargin, kPageMargin, 0);
  column->setSpacing(kPageMargin);
  column->addWidget(operation_);
  column->addWidget(targets_);
  column->addStretch();

  connect(targets_, &TargetBoxes::Toggled, this,
          [this](int index, bool checked) { StoreTarget(index + 1, checked); });
  connect(operation_, &OperationOptions::Chosen, this, &OptoPage::StoreOperation);
  connect(channel_, &QComboBox::currentIndexChanged, this,
          [this](int index) { StoreChannel(index + 1); });
}

stations::OptoProgram OptoPage::Read(StationEvent& event) {
  return event.Use(kReadLine, event.Station().opto);
}

void OptoPage::Show(StationEvent& event) {
  ShowFrameCaption(stations::OptoCaptionAtOpening(Read(event).type));
  FillChannelList(event);
  UpdateOptoCheckboxLabels(event);
  UpdateOptoSelections(event);
  ShowOption(event);
}

void OptoPage::FillChannelList(StationEvent& event) {
  const std::vector<std::string> captions = event.Use(
      kReadLine, stations::OptoChannelCaptions(Read(event).type, event.Station().targets));
  if (!Shows(*channel_, captions)) {
    const QSignalBlocker quietly(channel_);
    QStringList items;
    for (const std::string& caption : captions) items.append(Text(caption));
    channel_->clear();
    channel_->addItems(items);
  }
  SelectChannel(event);
}

void OptoPage::SelectChannel(StationEvent& event) {
  const int channel = Read(event).channel;
  const QSignalBlocker quietly(channel_);
  channel_->setCurrentIndex(channel >= 1 && channel <= channel_->count() ? channel - 1 : -1);
}

void OptoPage::UpdateOptoCheckboxLabels(StationEvent& event) {
  targets_->SetCaptions(event.Use(
      kReadLine, event.Station().targets.Captions(Read(event).type, stations::kOptoTargets)));
}

void OptoPage::UpdateOptoSelections(StationEvent& event) {
  const stations::OptoProgram opto = Read(event);
  targets_->SetSpokenName(
      tr("Target %1 of opto %2").arg(QStringLiteral("%1"), QString::number(opto.stationNum)));
  targets_->SetFlags(opto.targets);
}

void OptoPage::UpdateOptoOptionButtons(StationEvent& event) {
  ShowOption(event);
  ShowOperation(event);
}

void OptoPage::ShowFrameCaption(std::string_view caption) {
  // Setting it paints the frame and all in it, even when it is the same.
  if (const QString title = Text(caption); targets_->title() != title) targets_->setTitle(title);
}

void OptoPage::ShowOption(StationEvent& event) {
  operation_->Select(Read(event).type);
  inactive_->hide();
}

void OptoPage::ShowOperation(StationEvent& event) {
  inactive_->hide();
  ShowFrameCaption(stations::OperationOf(Read(event).type).optoTargets);
  UpdateOptoCheckboxLabels(event);
  FillChannelList(event);
}

void OptoPage::StoreTarget(int target, bool selected) {
  StationEvent event(shown_, StationEvent::Cause::Operator);
  stations::OptoEdit done = stations::OptoEdit::None;
  const bool isStored = event.Do(kStoreLine, [&](jet::RecordSet& stations) {
    return stations::StoreOptoTarget(stations, target, selected, shown_.services.Operator(), &done);
  });
  const stations::OptoProgram opto = Read(event);
  if (!isStored) targets_->SetFlags(opto.targets);
  if (done == stations::OptoEdit::MadeInactive) {
    if (operation_->Selected() != stations::kInactive) {
      inactive_->ShowFor(tr("Opto %1").arg(opto.stationNum));
    }
    Q_EMIT NoteRequested(tr("Opto %1 has no target left and is inactive now").arg(opto.stationNum));
  }
}

void OptoPage::StoreOperation(int code) {
  StationEvent event(shown_, StationEvent::Cause::Operator);
  stations::OptoEdit done = stations::OptoEdit::None;
  const bool isStored = event.Do(kStoreLine, [&](jet::RecordSet& stations) {
    return stations::StoreOptoType(stations, code, shown_.services.Operator(), &done);
  });
  if (isStored) {
    ShowOperation(event);
  } else {
    ShowOption(event);
  }
}

void OptoPage::StoreChannel(int channel) {
  if (channel < 1) return;  // the list has lost its selection, which is no choice
  StationEvent event(shown_, StationEvent::Cause::Operator);
  stations::OptoEdit done = stations::OptoEdit::None;
  const bool isStored = event.Do(kStoreLine, [&](jet::RecordSet& stations) {
    return stations::StoreOptoChannel(stations, channel, shown_.services.Operator(), &done);
  });
  if (!isStored) SelectChannel(event);
}

}  // namespace views
