// SPDX-License-Identifier: MIT

#ifndef SWITCHER_DECODER_H_
#define SWITCHER_DECODER_H_

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>
#include <utility>

#include "db/jet/database.h"
#include "model/error_reporter.h"
#include "model/observers.h"
#include "model/status.h"
#include "model/system_model.h"
#include "stations/change.h"
#include "switcher/store_tables.h"
#include "switcher/switcher_events.h"
#include "switcher/wire/decode_status.h"

namespace switcher {

// Checks whole messages from the switcher and writes what they carry into the model (map, gains,
// tally) or into the configuration database (labels, inhibits, relays, buttons, optos).
//
// Of what fails its checks nothing is written, except a row of the map: that is there before its
// checksum and end byte are judged, and the map is asked for again when they fail.  Of a table that
// the database cannot take nothing is written either.  A station without a record is passed over in
// silence, except by the labels.
class Decoder {
 public:
  // The open database; null when there is none.
  using Database = std::function<jet::Database*()>;

  // What the decoder works on.  All must outlive it.
  struct Services {
    model::SystemModel& model;
    Database database;
    model::ErrorReporter& reporter;
    stations::Changes& changes;                  // what is stored is announced there
    model::Observers<SwitcherEvents> observers;  // told in this order
  };
  explicit Decoder(Services services) : services_(std::move(services)) {}

  // Who is told of each message while RetrieveActive is set; null for nobody.
  void SetHistory(MessageHistory* history) { history_ = history; }

  // Tells `history` no more; does nothing when another has taken its place.
  void EndHistory(const MessageHistory* history) {
    if (history_ == history) history_ = nullptr;
  }

  // Decodes one message, code to end byte, by its code.  A message that fails its checks is
  // told to the history, announced and otherwise dropped.  A failure of the database, and labels
  // for a station that has no record, are reported to the operator, once per message.  A message
  // with another code does nothing.
  using Message = std::span<const std::uint8_t>;
  void Decode(Message message);

 private:
  using StoreTable = std::function<model::Status(jet::Database& database, Stored* stored)>;

  // What came of a table, and how much of it reached the database.
  struct Outcome {
    DecodeStatus status = DecodeStatus::Ok;
    Stored stored = Stored::Nothing;
  };

  void DecodeCrosspointRow(Message message);
  void DecodeGainReport(Message message);
  void DecodeTally(Message message);
  void DecodeLabels(Message message);
  void DecodeInhibitRow(Message message);
  void DecodeRelayRow(Message message);
  void DecodeButtonData(Message message);
  void DecodeOptoData(Message message);

  // Stores a table when its checks came to Ok.  A failure is reported under `failureLine`.
  Outcome Store(DecodeStatus checked, std::string_view failureLine, const StoreTable& store);

  stations::Author Switcher() const { return {services_.changes, stations::Origin::Switcher}; }

  // Tells the history of a message, and the observers if it was not accepted.
  void Tell(Message message, DecodeStatus status);

  // The same of a table, which is announced when some of it was stored.
  template <typename Event, typename... Values>
  void Tell(Message message, const Outcome& outcome, Event event, Values... values) {
    Tell(message, outcome.status);
    if (outcome.stored != Stored::Nothing) services_.observers.Tell(event, values...);
    TellEnd(message, outcome.stored == Stored::All ? &SwitcherEvents::TableAccepted
                                                   : &SwitcherEvents::TableRefused);
  }
  using TableEvent = void (SwitcherEvents::*)(const TablePart& part);
  void TellEnd(Message message, TableEvent event);

  const Services services_;
  MessageHistory* history_ = nullptr;
};

}  // namespace switcher

#endif  // SWITCHER_DECODER_H_
