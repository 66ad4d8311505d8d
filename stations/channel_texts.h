// SPDX-License-Identifier: MIT

#ifndef STATIONS_CHANNEL_TEXTS_H_
#define STATIONS_CHANNEL_TEXTS_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "db/jet/database.h"
#include "model/system_model.h"
#include "stations/change.h"

namespace stations {

// The labels and the inhibits of the channels, as the database has them: those of channel n stand
// in the record of station n.  Those of a kind are read when one is asked for, and kept until they
// may have changed.  What cannot be read, or has no record, is empty.
class ChannelTexts {
 public:
  enum class Kind : std::uint8_t { Label, InLabel, Inhibits };

  // What is referred to must outlive the object.
  struct Services {
    const model::SystemModel& model;
    std::function<jet::Database*()> database;  // the open one; null when there is none
  };
  explicit ChannelTexts(Services services) : services_(std::move(services)) {}

  // The label of an output or an input (both from 1); empty for one that cannot be read.
  const std::string& Label(int output) { return Text(Kind::Label, output); }
  const std::string& InLabel(int input) { return Text(Kind::InLabel, input); }

  // Whether a crosspoint (both from 1) is inhibited, for words about it: where that cannot be read
  // it is not.
  bool ShowsInhibit(int output, int input);

  // The same for who acts on it: nothing for an output whose record is missing among the others,
  // and for all while not all inhibits can be read.  These are tried again each time.
  std::optional<bool> IsInhibited(int output, int input);

  // The texts that these changes touch are read again when they are asked for.  Whether there are
  // any.
  bool Forget(std::span<const Change> changes);

  // A text that is another one than before.
  struct Difference {
    int channel;  // from 1
    std::string before;
    std::string after;
  };

  // What has become of the texts of a kind since Forget(); nothing when nobody had asked for them,
  // and not yet when they cannot be read now.
  std::vector<Difference> TakeDifferences(Kind kind);

 private:
  using List = std::vector<std::optional<std::string>>;

  struct Texts {
    bool isRead = false;   // as far as it went
    bool isWhole = false;  // to the last channel
    List ofChannels;
    std::optional<List> before;  // those that were forgotten first
  };

  static constexpr std::array<Kind, 3> kKinds{Kind::Label, Kind::InLabel, Kind::Inhibits};

  static const char* FieldOf(Kind kind);
  void Forget(Kind kind);
  Texts& Of(Kind kind) { return texts_[static_cast<std::size_t>(kind)]; }
  const Texts& Read(Kind kind);
  const std::string& Text(Kind kind, int channel);

  const Services services_;
  std::array<Texts, kKinds.size()> texts_;
};

}  // namespace stations

#endif  // STATIONS_CHANNEL_TEXTS_H_
