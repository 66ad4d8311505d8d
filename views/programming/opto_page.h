// SPDX-License-Identifier: MIT

#ifndef VIEWS_PROGRAMMING_OPTO_PAGE_H_
#define VIEWS_PROGRAMMING_OPTO_PAGE_H_

#include <QWidget>
#include <functional>
#include <string_view>

#include "model/status.h"
#include "stations/opto_program.h"
#include "views/one_report.h"
#include "views/services.h"
#include "views/updating_flag.h"

class QComboBox;

namespace views {

class InactiveNote;
class OperationOptions;
class TargetBoxes;

// The last page of the programming view: what an opto input does when it is activated, on which
// targets, and the switcher channel it is associated with.  The opto is that of the current
// record of the stations.
//
// Each operation reads the current record and goes back to it; a failure is reported once.  What
// cannot be read is shown as in an opto without a program, and nothing is stored by showing it.
class OptoPage : public QWidget {
  Q_OBJECT

 public:
  // `updating` is the flag of the view that the page is part of.  Both must outlive the page.
  OptoPage(const Services& services, UpdatingFlag& updating, QWidget* parent = nullptr);

  // The channel selector "cmbOptoChan".  It belongs to the page, hidden, until the view has
  // placed it in its own navigation frame and shows it there.
  QComboBox* ChannelSelector() const { return channel_; }

  // Captions the frame of the targets as it is when the view opens.
  void CaptionFrame();

  // Fills the channel selector for the opto's operation and selects its channel.
  void FillChannelList();

  // Selects the opto's channel, or none when it is not in the list.
  void SelectChannel();

  // Captions the target boxes for the opto's operation.
  void UpdateOptoCheckboxLabels();

  // Ticks the target boxes.
  void UpdateOptoSelections();

  // Selects the option of the opto's operation, or none for a code outside the table.  Unless
  // the view is updating, the captions and the channel list follow, as after a click on it.
  void UpdateOptoOptionButtons();

 Q_SIGNALS:
  // What opto `station` (the StationNum of its record) does was stored.
  void Edited(int station);
  void NoteRequested(const QString& note);

 private:
  using Edit = std::function<model::Status(jet::RecordSet&, stations::OptoEdit*)>;

  stations::OptoProgram Read();
  void ShowFrameCaption(std::string_view caption);
  void ShowTargetCaptions(int type);
  void ShowTargets(const stations::OptoProgram& opto);
  void ShowChannelList(const stations::OptoProgram& opto);
  void ShowChannel(int channel);
  // All that follows the operation, as after a click on it.
  void ShowOperation(const stations::OptoProgram& opto);

  // Edits the record.  On a failure, which is reported, *done is OptoEdit::None.
  bool Store(const Edit& edit, stations::OptoEdit* done);
  // The same, each with what is to be seen of it afterwards.
  void StoreTarget(int target, bool selected);
  void StoreOperation(int code);
  void StoreChannel(int channel);

  OneReport report_;
  const Services services_;
  UpdatingFlag& updating_;
  QComboBox* channel_;
  OperationOptions* operation_;
  InactiveNote* inactive_;
  int shownType_ = stations::kNoType;  // what is stored may be another since
  TargetBoxes* targets_;
};

}  // namespace views

#endif  // VIEWS_PROGRAMMING_OPTO_PAGE_H_
