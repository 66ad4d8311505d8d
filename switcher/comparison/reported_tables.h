// SPDX-License-Identifier: MIT

#ifndef SWITCHER_COMPARISON_REPORTED_TABLES_H_
#define SWITCHER_COMPARISON_REPORTED_TABLES_H_

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "db/jet/database.h"
#include "model/error_reporter.h"
#include "model/status.h"
#include "model/system_model.h"
#include "stations/change.h"
#include "switcher/decoder.h"
#include "switcher/switcher_events.h"
#include "switcher/table.h"
#include "switcher/unsent/digest.h"

namespace switcher {

// A table that was not accepted, and why.
struct RefusedPart {
  TablePart part;
  DecodeStatus status = DecodeStatus::Ok;  // never Ok
};

// The tables as the switcher reports them, in a copy of the database: decoded as those of a
// retrieval are, by a decoder that nobody observes and that shows no boxes.
class ReportedTables {
 public:
  // Copies the database as it is now.  `model` has the counts; it must outlive the object.
  static model::Status Copy(const jet::Database& database, model::SystemModel& model,
                            std::unique_ptr<ReportedTables>* tables);

  // What a message is of, whatever else is in it.  REQUIRES: it has the code of a table
  static TablePart PartOf(std::span<const std::uint8_t> message);

  // Takes a message of a table.  Of several of the same part the last one counts that is accepted.
  void Take(std::span<const std::uint8_t> message);

  // The parts that were accepted, and those of which no message was, in the order in which they
  // came.
  const std::vector<TablePart>& Accepted() const { return accepted_; }
  const std::vector<RefusedPart>& Refused() const { return refused_; }

  // From the copied database to what was reported, by station; only fields of which a message says
  // something else now.
  std::vector<stations::Change> Differences() const;

  // The digest of the message of an accepted part as it was copied, where what was reported says
  // the same, though it may be stored in other words then; else as it was reported.  Nothing when
  // there is no such message.
  std::optional<Digest> HeldDigest(const TablePart& part) const;

  // The copy, with what was reported.
  jet::Database& Database() const { return *database_; }

 private:
  // Hears all that the decoder has to say.
  class Witness : public SwitcherEvents,
                  public stations::ChangeObserver,
                  public model::ErrorReporter {
   public:
    using ChangeObserver::ChangeObserver;

    DecodeStatus status = DecodeStatus::Ok;  // of the last message
    std::vector<stations::Change> changes;   // the same

   private:
    void MessageRefused(std::string_view description, DecodeStatus status) override;
    void Changed(std::span<const stations::Change> changes) override;
    void Show(Icon icon, std::string_view title, std::string_view text) override;
  };

  ReportedTables(std::unique_ptr<jet::Database> database, model::SystemModel& model);

  bool Differs(const TablePart& part) const;

  const model::SystemModel& model_;
  const std::unique_ptr<jet::Database> database_;
  const std::map<TablePart, MessagePrint> copied_;  // the messages as they were copied
  stations::Changes changes_;
  Witness witness_{changes_};
  Decoder decoder_;
  std::map<TablePart, std::vector<stations::Change>> stored_;  // of all messages of the part
  std::vector<TablePart> accepted_;
  std::vector<RefusedPart> refused_;
};

}  // namespace switcher

#endif  // SWITCHER_COMPARISON_REPORTED_TABLES_H_
