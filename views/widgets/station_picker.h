// SPDX-License-Identifier: MIT

#ifndef VIEWS_WIDGETS_STATION_PICKER_H_
#define VIEWS_WIDGETS_STATION_PICKER_H_

#include <QString>
#include <QWidget>

#include <vector>

class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace views {

// A station that can be chosen.
struct PickableStation {
  int number = 0;
  QString label = {};
};

// A list of stations with a check box each, under a field that shows only some of them: those whose
// number or label begins with or has what is typed.  Space ticks the selected rows or takes their
// ticks away, a click on a box with Shift held ticks all rows from the last one to it; two buttons
// do so with all that are shown; what is not shown keeps its tick, and the line below says how many
// have one.  A tick at a station with an obstacle waits for the obstacle to go.
class StationPicker : public QWidget {
  Q_OBJECT

 public:
  // The object names of the field and the list.  With a heading for them there is a column for
  // remarks.
  struct Names {
    QString find;
    QString list;
    QString remarks = {};
  };
  StationPicker(const Names& names, const std::vector<PickableStation>& stations,
                QWidget* parent = nullptr);

  // What is said of a station.  One with an obstacle cannot be ticked; a tick that it has does not
  // count meanwhile.
  struct Remark {
    QString text = {};
    bool isObstacle = false;
  };

  // One remark for each station, in the order in which they were given.
  void SetRemarks(const std::vector<Remark>& remarks);

  // The numbers of the ticked stations that have no obstacle, also of those that are not shown.
  std::vector<int> Ticked() const;

 Q_SIGNALS:
  // What Ticked() says has changed.
  void TicksChanged();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MakeList(const Names& names, const std::vector<PickableStation>& stations);
  void LayOut(const Names& names);
  void ShowOnly(const QString& text);
  void Tick(const QList<QTreeWidgetItem*>& items, bool ticked);
  void TickSelected();
  // The operator has clicked the box of a row: with Shift, the rows from the last such row to this
  // one get the same.
  void BoxClicked(int row, bool withShift);
  // How many ticks do not count because of an obstacle.
  int WaitingCount() const;
  QList<QTreeWidgetItem*> Shown() const;
  void Count();

  QLineEdit* find_;
  QTreeWidget* list_;
  QLabel* count_;
  int lastRow_ = -1;  // whose box was clicked; -1 when there is none to go on from
  QPushButton* tickAll_;
  QPushButton* tickNone_;
};

}  // namespace views

#endif  // VIEWS_WIDGETS_STATION_PICKER_H_
