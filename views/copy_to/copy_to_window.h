// SPDX-License-Identifier: MIT

#ifndef VIEWS_COPY_TO_COPY_TO_WINDOW_H_
#define VIEWS_COPY_TO_COPY_TO_WINDOW_H_

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QString>

#include <vector>

#include "model/status.h"
#include "stations/copy_programming.h"
#include "views/services.h"
#include "views/widgets/station_picker.h"

namespace views {

// What the operator works at when copying is asked for.
struct CopySource {
  enum class Choice : std::uint8_t { Button, Page, All, Relays };

  int station = 0;
  int button = 1;                  // from 1
  int pageFirst = 1;               // the first button of the page that is meant
  Choice choice = Choice::Button;  // what is proposed
};

// frmCopyTo: copies programming of one station to others, which are ticked in a list that says
// what each of them would get.  It is stored as one act; nothing is sent, and nothing is stored
// that the list did not say.
class CopyToWindow : public QDialog {
  Q_OBJECT

 public:
  // What `services` refers to must outlive the window.
  CopyToWindow(const Services& services, const CopySource& source, QWidget* parent = nullptr);

 Q_SIGNALS:
  // It was stored, in words.
  void Copied(const QString& note);

 private:
  using Choice = CopySource::Choice;

  void ReadStations();
  void AddChoices();
  void LayOut();
  Choice Chosen() const;
  stations::CopyOrder Order() const;
  // What is copied: "Button 3", "Relays".
  QString What() const;
  // Plans what the order comes to for all stations, as they are now; what cannot be told is
  // reported and is a plan of nothing.
  void Plan();
  void ShowPlan();
  // What is planned for the stations that are ticked.
  std::vector<stations::Change> TickedChanges() const;
  void ShowCount();
  void Copy();

  const Services services_;
  const CopySource source_;
  model::Status read_;                     // how reading the stations went
  std::vector<PickableStation> stations_;  // all but the copied one
  QString label_;                          // of the copied one
  stations::CopyPlan plan_;
  bool isPlanned_ = false;  // else what it comes to cannot be told
  QRadioButton* button_;
  QRadioButton* page_;
  QRadioButton* all_;
  QRadioButton* relays_;
  QCheckBox* own_;
  StationPicker* picker_ = nullptr;
  QLabel* count_;
  QPushButton* ok_;
  QPushButton* cancel_;
};

}  // namespace views

#endif  // VIEWS_COPY_TO_COPY_TO_WINDOW_H_
