// SPDX-License-Identifier: MIT

#ifndef VIEWS_XMAP_PENDING_CROSSPOINTS_H_
#define VIEWS_XMAP_PENDING_CROSSPOINTS_H_

#include <QDeadlineTimer>
#include <QObject>
#include <QTimer>
#include <chrono>
#include <vector>

#include "views/xmap/xmap_painter.h"

namespace views {

// So long a command may be without a report of its row.
inline constexpr std::chrono::milliseconds kLongestPending{3000};

// The crosspoints for which a command was sent and which the switcher has not reported yet.
// Each is given up after kLongestPending.
class PendingCrosspoints : public QObject {
  Q_OBJECT

 public:
  explicit PendingCrosspoints(QObject* parent = nullptr);

  // A command for this crosspoint was sent.
  void Sent(const Crosspoint& crosspoint);

  // The switcher has reported the row of this output, or of all with model::kAll.
  void Reported(int output);

 Q_SIGNALS:
  // A crosspoint has begun or ceased to be pending.
  void Changed(const Crosspoint& crosspoint, bool pending);
  // A crosspoint of this output was given up: its row was not reported.
  void GivenUp(int output);

 private:
  struct Pending {
    Crosspoint crosspoint;
    QDeadlineTimer until;
  };

  template <typename Condition>
  void EndWhere(Condition condition);
  void Expire();

  std::vector<Pending> pending_;  // in the order of their deadlines
  QTimer timer_;                  // runs to the first deadline
};

}  // namespace views

#endif  // VIEWS_XMAP_PENDING_CROSSPOINTS_H_
