// SPDX-License-Identifier: MIT

#ifndef VIEWS_PROGRAMMING_OPTO_PAGE_H_
#define VIEWS_PROGRAMMING_OPTO_PAGE_H_

#include <QWidget>
#include <string_view>

#include "views/programming/station_event.h"

class QComboBox;

namespace views {

class InactiveNote;
class OperationOptions;
class TargetBoxes;

// The last page of the programming view: what an opto input does when it is activated, on which
// targets, and the switcher channel it is associated with.  The opto is that of the current
// record of the stations.
//
// What cannot be read is shown as in an opto without a program, and nothing is stored by showing
// it.
class OptoPage : public QWidget {
  Q_OBJECT

 public:
  // `station` must outlive the page.
  explicit OptoPage(ShownStation& station, QWidget* parent = nullptr);

  // The channel selector "cmbOptoChan".  It belongs to the page, hidden, until the view has
  // placed it in its own navigation frame and shows it there.
  QComboBox* ChannelSelector() const { return channel_; }

  // The following draw from an event's look at the station.

  // Shows all of the opto, with the caption of the targets as it is when the view opens.
  void Show(StationEvent& event);

  // Fills the channel selector for the opto's operation and selects its channel.
  void FillChannelList(StationEvent& event);

  // Selects the opto's channel, or none when it is not in the list.
  void SelectChannel(StationEvent& event);

  // Captions the target boxes for the opto's operation.
  void UpdateOptoCheckboxLabels(StationEvent& event);

  // Ticks the target boxes.
  void UpdateOptoSelections(StationEvent& event);

  // Selects the option of the opto's operation, or none for a code outside the table; the captions
  // and the channel list follow, as after a click on it.
  void UpdateOptoOptionButtons(StationEvent& event);

 Q_SIGNALS:
  void NoteRequested(const QString& note);

 private:
  static stations::OptoProgram Read(StationEvent& event);
  void ShowFrameCaption(std::string_view caption);
  // The option alone, and what follows a click on it.
  void ShowOption(StationEvent& event);
  void ShowOperation(StationEvent& event);

  // Each stores what the operator did, and shows what comes of it.
  void StoreTarget(int target, bool selected);
  void StoreOperation(int code);
  void StoreChannel(int channel);

  ShownStation& shown_;
  QComboBox* channel_;
  OperationOptions* operation_;
  InactiveNote* inactive_;
  TargetBoxes* targets_;
};

}  // namespace views

#endif  // VIEWS_PROGRAMMING_OPTO_PAGE_H_
