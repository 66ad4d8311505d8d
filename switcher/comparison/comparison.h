// SPDX-License-Identifier: MIT

#ifndef SWITCHER_COMPARISON_COMPARISON_H_
#define SWITCHER_COMPARISON_COMPARISON_H_

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "db/jet/database.h"
#include "model/error_reporter.h"
#include "model/system_model.h"
#include "stations/change.h"
#include "switcher/comparison/reported_tables.h"
#include "switcher/link.h"
#include "switcher/poll_switch.h"
#include "switcher/retrieval.h"
#include "switcher/serial_port.h"
#include "switcher/table.h"
#include "switcher/unsent/digest.h"

namespace switcher {

// What came of a comparison.
struct ComparisonResult {
  bool completed = false;  // the switcher came to the end; else the operator ended it
  bool lineLost = false;   // the port was closed meanwhile
  int messages = 0;        // of tables, all that came
  int bytes = 0;           // of these
  std::vector<stations::Change> differences = {};  // from here to the switcher
  std::vector<TablePart> accepted = {};            // in the order in which they came
  std::vector<RefusedPart> refused = {};           // the same
  std::vector<TablePart> missing = {};             // did not come, in the order of a download

  // Whether all that can differ is known.
  bool IsWhole() const { return completed && refused.empty() && missing.empty(); }
};

// What a comparison shows, and its timers; the window of the comparison implements it.
class ComparisonDisplay {
 public:
  virtual ~ComparisonDisplay() = default;

  // The switcher is still sending what was asked for before: it is asked anew behind that.
  virtual void ShowHeldUp() = 0;

  // The wait for the tables begins.
  virtual void ShowWaiting() = 0;

  // So many messages of tables have come.
  virtual void ShowProgress(int messages, int bytes) = 0;

  // Says that no message has come for so many seconds; 0 says nothing.
  virtual void ShowSilence(int seconds) = 0;

  // Says how the port does; told each second while waiting.
  virtual void ShowLine(RetrievalLine line) = 0;

  // The wait has ended.
  virtual void ShowResult(const ComparisonResult& result) = 0;

  // DelayTick() is to come once, Retrieval::kDelayMilliseconds from now.
  virtual void StartDelayTimer() = 0;
  virtual void StopDelayTimer() = 0;
};

// Asks the switcher for all its tables, as a retrieval does, and finds out where they differ from
// the database, into which nothing of it goes.
//
// The tables that come belong to it from Go() to the last station's button data, also after
// Cancel(), so that a late answer never reaches the database.  Where that does not come, or comes
// before all others, the end is when none has come for kQuietSeconds on an open line.  Every event
// is a function; the timers belong to the window.
class Comparison : private TableTaker {
 public:
  static constexpr int kQuietSeconds = 3;

  // What a comparison works with.
  struct Services {
    model::SystemModel& model;
    std::function<jet::Database*()> database;  // null while it is not open
    SerialPort& port;
    Link& link;  // it hands the comparison the tables that come
    PollSwitch& poll;
    model::ErrorReporter& reporter;
    // Told of each message that the switcher is now known to hold; null for nobody.
    std::function<void(const TablePart& part, Digest digest)> noteHeld = nullptr;
  };

  // All must outlive the object.
  Comparison(Services services, ComparisonDisplay& display);
  ~Comparison() override;
  Comparison(const Comparison&) = delete;
  Comparison& operator=(const Comparison&) = delete;

  // Begins, with the database as it is now; while late answers come, as soon as they have ended.
  // Does nothing while it waits.  A database that cannot be copied is reported.
  void Go();

  // Ends the wait: what has come by then is the result.
  void Cancel();

  // The delay timer has run out: sends the request, and reports a failure to the operator.
  void DelayTick();

  // To be called once a second, whether the window is shown or not.
  void SecondTick();

  // From Go() to the end of the wait.
  bool IsWaiting() const { return state_ == State::HeldUp || state_ == State::Waiting; }
  // The switcher may still send what it was asked for.
  bool IsListening() const { return state_ != State::Idle; }

  // What has come of the last wait.
  const ComparisonResult& Result() const { return result_; }
  // The database with what was reported; null before the first wait.
  jet::Database* ReportedDatabase() const { return tables_ ? &tables_->Database() : nullptr; }

 private:
  enum class State : std::uint8_t {
    Idle,
    Waiting,    // for the tables
    Listening,  // for late ones, which are thrown away
    HeldUp,     // the same, and then a wait begins
  };

  void TakeTable(std::span<const std::uint8_t> message) override;
  void BeginWait();
  void EndWait(bool completed);
  void Listen();
  void EndListening();
  void TickOfWait();
  bool IsQuiet();
  bool AllCame() const;
  void NoteLoss();
  void NoteHeld(const TablePart& part);

  const Services services_;
  ComparisonDisplay& display_;
  State state_ = State::Idle;
  std::unique_ptr<ReportedTables> tables_;
  ComparisonResult result_;
  std::vector<TablePart> expected_;  // in the order of a download
  std::vector<TablePart> came_;      // since the tables were asked for, accepted or not
  bool endCame_ = false;             // the last station's button data is among these
  bool requestDue_ = false;          // the delay timer runs
  int silentSeconds_ = 0;
  int quietTicks_ = 0;
};

}  // namespace switcher

#endif  // SWITCHER_COMPARISON_COMPARISON_H_
