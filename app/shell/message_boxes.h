// SPDX-License-Identifier: MIT

#ifndef APP_SHELL_MESSAGE_BOXES_H_
#define APP_SHELL_MESSAGE_BOXES_H_

#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QString>
#include <deque>
#include <functional>
#include <vector>

#include "model/error_reporter.h"

namespace app {

// Shows reports as message boxes, one at a time and in their order, without ever holding up
// whoever reports; each stays until it was read.  A report that equals one which shows or waits is
// folded into it and counted, so that no storm of reports can bury the operator.
class MessageBoxes : public QObject, public model::ErrorReporter {
  Q_OBJECT

 public:
  explicit MessageBoxes(QObject* parent = nullptr);
  // A box that shows goes away unread.
  ~MessageBoxes() override;

  // Begins to show what was and will be reported, over `window` or over the modal dialog that
  // is open then; null when there is no window (any more).
  void ShowOver(QWidget* window);

  void Show(Icon icon, std::string_view title, std::string_view text) override;

  // Something that can be done about what a box reports.
  struct Offer {
    QString name;  // the object name of its button
    QString caption;
    std::function<void()> action;
    QString tip = {};  // what it does, where the caption does not say all
  };
  // The same with a button for each offer beside OK.  The box closes before the action is run.
  void ShowOffering(Icon icon, std::string_view title, std::string_view text,
                    std::vector<Offer> offers);

  // Nothing shows and nothing waits.
  bool IsEmpty() const { return reports_.empty(); }

 Q_SIGNALS:
  // Something was reported, also when its box waits or is folded into another.
  void Reported(const QString& title, const QString& text);
  // The operator has closed the box of this report.
  void Closed(const QString& title, const QString& text);
  // The last box was closed.
  void Emptied();

 private:
  struct Report {
    QMessageBox::Icon icon;
    QString title;
    QString text;
    std::vector<Offer> offers;
    int count = 1;
  };

  void ShowNext();
  void OnClosed();
  void ShowCount();

  std::deque<Report> reports_;  // the first one shows as soon as boxes are shown at all
  QPointer<QWidget> window_;
  QPointer<QMessageBox> box_;
  bool started_ = false;
};

}  // namespace app

#endif  // APP_SHELL_MESSAGE_BOXES_H_
