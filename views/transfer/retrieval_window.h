// SPDX-License-Identifier: MIT

#ifndef VIEWS_TRANSFER_RETRIEVAL_WINDOW_H_
#define VIEWS_TRANSFER_RETRIEVAL_WINDOW_H_

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <functional>

#include "model/error_reporter.h"
#include "model/system_model.h"
#include "switcher/decoder.h"
#include "switcher/poll_switch.h"
#include "switcher/retrieval.h"
#include "switcher/serial_port.h"
#include "views/transfer/message_list.h"

namespace views {

// What the retrieval window works with; all must outlive the window.
struct RetrievalServices {
  model::SystemModel& model;
  switcher::Decoder& decoder;
  switcher::SerialPort& port;
  switcher::PollSwitch& poll;
  model::ErrorReporter& reporter;
  std::function<void()> closeViews;  // closes the three main views
};

// frmSysInfo: asks, then shows each message that the switcher sends of its tables.  Closing the
// window is cancelling: it ends the wait for the switcher, or closes when there is none.
class RetrievalWindow : public QDialog, private switcher::RetrievalDisplay {
  Q_OBJECT

 public:
  explicit RetrievalWindow(const RetrievalServices& services, QWidget* parent = nullptr);

  // Ends the wait, if there is one, and closes.
  void CancelNow();

  void reject() override { retrieval_.Cancel(); }

 Q_SIGNALS:
  // The operator has confirmed: the tables are asked for.
  void Begun();
  // The last table has come; `refused` tells whether one did not pass its checks.
  void Finished(bool refused);
  // The wait was ended before.
  void Cancelled();
  // All tables have come, and none was refused.
  void Retrieved();

 private:
  void LayOut();
  void MakeTimers();

  void CloseViews() override { closeViews_(); }
  void ShowHistory() override;
  void SetWaiting(bool waiting) override;
  void AddMessage(std::string_view description, int byteCount,
                  switcher::DecodeStatus status) override;
  void ShowCaption(std::string_view caption) override;
  void ShowSilence(int seconds) override;
  void StartDelayTimer() override { delayTimer_.start(); }
  void StopDelayTimer() override { delayTimer_.stop(); }
  void Close() override;

  const std::function<void()> closeViews_;
  QLabel* text_;
  MessageList* history_;
  QLabel* silence_;
  QPushButton* ok_;
  QPushButton* cancel_;
  QTimer delayTimer_;
  QTimer secondTimer_;
  switcher::Retrieval retrieval_;
};

}  // namespace views

#endif  // VIEWS_TRANSFER_RETRIEVAL_WINDOW_H_
