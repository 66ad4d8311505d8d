// SPDX-License-Identifier: MIT

#ifndef VIEWS_PROGRAMMING_STATION_HEADING_H_
#define VIEWS_PROGRAMMING_STATION_HEADING_H_

#include <QWidget>

class QGridLayout;
class QLabel;
class QLineEdit;

namespace views {

// Which station the programming view shows: its output label, its input label and its number,
// to be read only.
class StationHeading : public QWidget {
  Q_OBJECT

 public:
  explicit StationHeading(QWidget* parent = nullptr);

  void ShowStation(const QString& label, const QString& inputLabel, const QString& number);

  // The caption over the number, and whether the labels are shown.
  void ShowFor(const QString& portCaption, bool withLabels);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  struct Field {
    QLabel* caption;
    QLineEdit* text;
  };

  Field AddField(QGridLayout& grid, const char* name, const char* captionName, const char* caption,
                 const char* text, const char* tip);

  // No caption is cut, whatever the room.
  void FitCaptions();

  void ShowReadOnly();

  Field label_;
  Field inputLabel_;
  Field port_;
};

}  // namespace views

#endif  // VIEWS_PROGRAMMING_STATION_HEADING_H_
