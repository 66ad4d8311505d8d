// SPDX-License-Identifier: MIT

#ifndef GATEWAY_EMBER_NEWS_H_
#define GATEWAY_EMBER_NEWS_H_

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <utility>
#include <vector>

#include "gateway/ember/glow.h"
#include "gateway/ember/peers.h"
#include "gateway/ember/tree.h"
#include "gateway/pause_timer.h"
#include "model/system_model.h"
#include "stations/change.h"
#include "stations/channel_texts.h"
#include "switcher/known_map.h"

namespace ember {

// Tells consumers what changes of that which they have asked for, and nothing else.
class News {
 public:
  // A consumer has news of so many elements at most; subscribing to a further one changes nothing.
  static constexpr std::size_t kMostSubscriptions = 8192;

  // News of the records are gathered so long: a table of the switcher changes many.
  static constexpr std::chrono::milliseconds kGather{50};

  // So many values are told in one message at most.
  static constexpr std::size_t kMostTogether = 32;

  // All must outlive the object.
  struct Services {
    const model::SystemModel& model;
    const switcher::KnownMap& knownMap;
    stations::ChannelTexts& texts;
    Tree& tree;
    Peers& peers;
    gateway::PauseTimer& timer;
    std::function<Peers::Time()> now;
  };
  explicit News(Services services) : services_(std::move(services)) {}
  News(const News&) = delete;
  News& operator=(const News&) = delete;

  // The first consumer is there; the last one has gone.
  void Begin();
  void End() { rows_.clear(); }

  // A consumer wants news of the element at a path: of a parameter, of the parameters straight
  // below a node, or of the matrix.  Nothing for any other path.
  void Subscribe(int peer, const Path& path);
  void Unsubscribe(int peer, const Path& path);
  void Forget(int peer);

  // A consumer is told all rows.
  void RowsTold();

  // The switcher has reported a row: to those who want news of it, and to these in any case.
  void RowReported(int output, std::set<int> receivers);

  // Gains, tally, link or map may be others.
  void LevelsChanged();

  // The gain of an input (from 0) was set for a consumer, who is told in any case.
  void GainSet(int input, int peer);

  // Records were changed.
  void RecordsChanged(std::span<const stations::Change> changes);

  // The message of a row (output from 1).
  Bytes RowMessage(int output, Disposition disposition) const;

 private:
  // What consumers were last told, or would have been, of what is compared.
  struct Levels {
    std::array<std::int16_t, model::kLevelCount> gains{};
    std::array<std::int16_t, model::kLevelCount> tally{};
    bool link = false;
    bool mapComplete = false;
  };

  struct KnownRow {
    bool isKnown = false;
    std::vector<std::uint8_t> sources;
    std::uint8_t status = 0;
  };

  // What is told of the records, and how far that is: which consumer's turn it is, and what it was
  // told, or did not want to know, last.
  struct Changed {
    std::vector<Path> labels;
    std::map<int, stations::ChannelTexts::Difference> inhibits;  // by target
  };
  struct Progress {
    int peer = 1;
    std::size_t label = 0;
    Path inhibit = {};
    std::optional<std::pair<int, int>> crosspoint = {};
  };

  // So many are looked at between two looks at the clock.
  static constexpr int kMostLooks = 256;

  KnownRow& RowOf(int output) { return rows_[static_cast<std::size_t>(output - 1)]; }
  bool NoteRow(int output);
  void GatherLater();
  void GatherTexts();
  void TellTexts();
  bool TellSome();
  bool AddLabels(int peer, std::vector<Bytes>* elements);
  bool AddInhibits(int peer, std::vector<Bytes>* elements);
  void AddValue(const Path& path, std::vector<Bytes>* elements);
  void TellValue(const Path& path, int always = 0);
  bool IsSubscribed(int peer, const Path& parameter) const;

  const Services services_;
  std::array<std::set<Path>, Peers::kMost> subscriptions_;  // by consumer - 1
  Levels told_;
  std::vector<KnownRow> rows_;  // by output - 1; none while nobody is connected
  bool areTextsDue_ = false;    // others have changed than are being told
  bool isTelling_ = false;      // in turns, of which one is to come
  Changed changed_;
  Progress progress_;
};

}  // namespace ember

#endif  // GATEWAY_EMBER_NEWS_H_
