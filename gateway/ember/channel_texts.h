// SPDX-License-Identifier: MIT

#ifndef GATEWAY_EMBER_CHANNEL_TEXTS_H_
#define GATEWAY_EMBER_CHANNEL_TEXTS_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "db/jet/database.h"
#include "model/system_model.h"

namespace ember {

// The labels and the inhibits of the channels, as the database has them.  Those of a kind are read
// when one is asked for, and kept until they may have changed; what could not be read is tried
// again each time.
class ChannelTexts {
 public:
  enum class Kind : std::uint8_t { Label, InLabel, Inhibits };
  static constexpr std::array<Kind, 3> kKinds{Kind::Label, Kind::InLabel, Kind::Inhibits};

  // What is referred to must outlive the object.
  struct Services {
    const model::SystemModel& model;
    std::function<jet::Database*()> database;  // the open one; null when there is none
  };
  explicit ChannelTexts(Services services) : services_(std::move(services)) {}

  // The field of a kind.
  static const char* FieldOf(Kind kind);

  // The label of an output or an input (both from 1); empty for one that cannot be read.
  const std::string& Label(int output) { return Text(Kind::Label, output); }
  const std::string& InLabel(int input) { return Text(Kind::InLabel, input); }

  // Whether a crosspoint (both from 1) is inhibited; nothing where that cannot be read.
  std::optional<bool> IsInhibited(int output, int input);

  // Texts of a kind may have changed: they are read again when they are asked for.
  void Forget(Kind kind);

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
    bool isRead = false;
    List ofChannels;
    std::optional<List> before;  // those that were forgotten first
  };

  Texts& Of(Kind kind) { return texts_[static_cast<std::size_t>(kind)]; }
  const Texts& Read(Kind kind);
  const std::string& Text(Kind kind, int channel);

  const Services services_;
  std::array<Texts, kKinds.size()> texts_;
};

}  // namespace ember

#endif  // GATEWAY_EMBER_CHANNEL_TEXTS_H_
