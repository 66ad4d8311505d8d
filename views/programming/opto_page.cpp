// SPDX-License-Identifier: MIT

#include "views/programming/opto_page.h"

#include <QComboBox>
#include <QVBoxLayout>
#include <cstdio>
#include <vector>

#include "stations/operations.h"
#include "views/programming/inactive_note.h"
#include "views/programming/operation_options.h"
#include "views/programming/page_metrics.h"
#include "views/programming/target_boxes.h"
#include "views/widgets/fixed_font.h"
#include "views/widgets/scaled_font.h"

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
    char caption[16];
    std::snprintf(caption, sizeof caption, "Sta. %02d", target);
    captions.emplace_back(caption);
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

OptoPage::OptoPage(const Services& services, UpdatingFlag& updating, QWidget* parent)
    : QWidget(parent),
      report_(services.reporter),
      services_(WithReporter(services, report_)),
      updating_(updating),
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

  targets_->SetBoxFamily(FixedFont(Scaled(font(), 1).pointSizeF()));
  targets_->SetCaptions(DesignCaptions());

  operation_->AddNote(*inactive_);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(kPageMargin, kPageMargin, kPageMargin, kPageMargin);
  column->addWidget(operation_);
  column->addWidget(targets_);
  column->addStretch();

  connect(targets_, &TargetBoxes::Toggled, this,
          [this](int index, bool checked) { StoreTarget(index + 1, checked); });
  connect(operation_, &OperationOptions::Chosen, this, &OptoPage::StoreOperation);
  connect(channel_, &QComboBox::currentIndexChanged, this,
          [this](int index) { StoreChannel(index + 1); });
}

stations::OptoProgram OptoPage::Read() {
  stations::OptoProgram opto;
  const model::Status status = WithStations(
      services_, [&opto](jet::RecordSet& stations) { return stations::ReadOpto(stations, &opto); });
  if (!status.ok()) ShowFailure(services_, kReadLine, status);
  return opto;
}

void OptoPage::CaptionFrame() {
  const OneReport::Scope scope(report_);
  ShowFrameCaption(stations::OptoCaptionAtOpening(Read().type));
}

void OptoPage::FillChannelList() {
  const OneReport::Scope scope(report_);
  ShowChannelList(Read());
}

void OptoPage::SelectChannel() {
  const OneReport::Scope scope(report_);
  ShowChannel(Read().channel);
}

void OptoPage::UpdateOptoCheckboxLabels() {
  const OneReport::Scope scope(report_);
  ShowTargetCaptions(Read().type);
}

void OptoPage::UpdateOptoSelections() {
  const OneReport::Scope scope(report_);
  ShowTargets(Read());
}

void OptoPage::UpdateOptoOptionButtons() {
  const OneReport::Scope scope(report_);
  const stations::OptoProgram opto = Read();
  shownType_ = opto.type;
  inactive_->hide();
  operation_->Select(opto.type);
  if (!updating_.IsSet()) ShowOperation(opto);
}

void OptoPage::ShowFrameCaption(std::string_view caption) {
  // Setting it paints the frame and all in it, even when it is the same.
  if (const QString title = Text(caption); targets_->title() != title) targets_->setTitle(title);
}

void OptoPage::ShowTargetCaptions(int type) {
  std::vector<std::string> captions;
  const model::Status status = WithStations(services_, [&](jet::RecordSet& stations) {
    return stations::ReadOptoTargetCaptions(stations, type, &captions);
  });
  if (!status.ok()) ShowFailure(services_, kReadLine, status);
  targets_->SetCaptions(captions);
}

void OptoPage::ShowTargets(const stations::OptoProgram& opto) {
  targets_->SetSpokenName(
      tr("Target %1 of opto %2").arg(QStringLiteral("%1"), QString::number(opto.stationNum)));
  targets_->SetFlags(opto.targets);
}

void OptoPage::ShowChannelList(const stations::OptoProgram& opto) {
  std::vector<std::string> captions;
  const model::Status status = WithStations(services_, [&](jet::RecordSet& stations) {
    return stations::ReadOptoChannelCaptions(stations, opto.type, &captions);
  });
  if (!status.ok()) ShowFailure(services_, kReadLine, status);
  if (!Shows(*channel_, captions)) {
    const UpdatingFlag::Scope updating(updating_);
    QStringList items;
    for (const std::string& caption : captions) items.append(Text(caption));
    channel_->clear();
    channel_->addItems(items);
  }
  ShowChannel(opto.channel);
}

void OptoPage::ShowChannel(int channel) {
  const UpdatingFlag::Scope updating(updating_);
  channel_->setCurrentIndex(channel >= 1 && channel <= channel_->count() ? channel - 1 : -1);
}

void OptoPage::ShowOperation(const stations::OptoProgram& opto) {
  ShowFrameCaption(stations::OperationOf(opto.type).optoTargets);
  ShowTargetCaptions(opto.type);
  ShowChannelList(opto);
}

bool OptoPage::Store(const Edit& edit, stations::OptoEdit* done) {
  *done = stations::OptoEdit::None;
  const model::Status status =
      WithStations(services_, [&](jet::RecordSet& stations) { return edit(stations, done); });
  if (!status.ok()) ShowFailure(services_, kStoreLine, status);
  return status.ok();
}

void OptoPage::StoreTarget(int target, bool selected) {
  if (updating_.IsSet()) return;
  const OneReport::Scope scope(report_, OneReport::Cause::Operator);
  stations::OptoEdit done;
  const bool isStored = Store(
      [=, this](jet::RecordSet& stations, stations::OptoEdit* edit) {
        return stations::StoreOptoTarget(stations, target, selected, services_.Operator(), edit);
      },
      &done);
  const stations::OptoProgram opto = Read();
  if (!isStored) targets_->SetFlags(opto.targets);
  if (done == stations::OptoEdit::MadeInactive) {
    if (shownType_ != stations::kInactive) inactive_->ShowFor(tr("Opto %1").arg(opto.stationNum));
    Q_EMIT NoteRequested(tr("Opto %1 has no target left and is inactive now").arg(opto.stationNum));
  }
  if (done != stations::OptoEdit::None) Q_EMIT Edited(opto.stationNum);
}

void OptoPage::StoreOperation(int code) {
  if (updating_.IsSet()) return;
  const OneReport::Scope scope(report_, OneReport::Cause::Operator);
  stations::OptoEdit done;
  const bool isStored = Store(
      [=, this](jet::RecordSet& stations, stations::OptoEdit* edit) {
        return stations::StoreOptoType(stations, code, services_.Operator(), edit);
      },
      &done);
  const stations::OptoProgram opto = Read();
  shownType_ = opto.type;
  inactive_->hide();
  if (isStored) {
    ShowOperation(opto);
  } else {
    operation_->Select(opto.type);
  }
  if (done != stations::OptoEdit::None) Q_EMIT Edited(opto.stationNum);
}

void OptoPage::StoreChannel(int channel) {
  // Below 1 when the list has lost its selection, which is no choice.
  if (updating_.IsSet() || channel < 1) return;
  const OneReport::Scope scope(report_, OneReport::Cause::Operator);
  stations::OptoEdit done;
  const bool isStored = Store(
      [=, this](jet::RecordSet& stations, stations::OptoEdit* edit) {
        return stations::StoreOptoChannel(stations, channel, services_.Operator(), edit);
      },
      &done);
  const stations::OptoProgram opto = Read();
  if (!isStored) ShowChannel(opto.channel);
  if (done != stations::OptoEdit::None) Q_EMIT Edited(opto.stationNum);
}

}  // namespace views
