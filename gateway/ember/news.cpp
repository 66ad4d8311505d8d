// SPDX-License-Identifier: MIT

#include "gateway/ember/news.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "model/flag_string.h"

namespace ember {

void News::Begin() {
  rows_.assign(static_cast<std::size_t>(services_.model.ChannelCount), {});
  for (int output = 1; output <= services_.model.ChannelCount; ++output) {
    RowOf(output).status = services_.model.ChannelStatus[output];
  }
  LevelsChanged();
}

void News::Subscribe(int peer, const Path& path) {
  const std::optional<ElementKind> kind = services_.tree.KindAt(path);
  if (!kind || kind == ElementKind::Root || kind == ElementKind::Function) return;
  std::set<Path>& subscriptions = subscriptions_[static_cast<std::size_t>(peer - 1)];
  if (subscriptions.size() < kMostSubscriptions) subscriptions.insert(path);
}

void News::Unsubscribe(int peer, const Path& path) {
  subscriptions_[static_cast<std::size_t>(peer - 1)].erase(path);
}

void News::Forget(int peer) { subscriptions_[static_cast<std::size_t>(peer - 1)].clear(); }

// The answer shows rows as they are now.  A row counts as told only if the switcher has reported it
// so: else its next report is news.
void News::RowsTold() {
  for (int output = 1; output <= services_.model.ChannelCount; ++output) {
    KnownRow& row = RowOf(output);
    row.isKnown =
        row.isKnown && std::ranges::equal(row.sources, services_.model.CrosspointMap.Row(output));
  }
}

// Whether the sources of the row are others than were last told.
bool News::NoteRow(int output) {
  KnownRow& known = RowOf(output);
  const auto row = services_.model.CrosspointMap.Row(output);
  if (known.isKnown && std::ranges::equal(known.sources, row)) return false;
  known.isKnown = true;
  known.sources.assign(row.begin(), row.end());
  return true;
}

void News::RowReported(int output, std::set<int> receivers) {
  if (rows_.empty()) return;
  const bool isNews = NoteRow(output);
  const std::uint8_t status = services_.model.ChannelStatus[output];
  const bool hasStatusChanged = std::exchange(RowOf(output).status, status) != status;
  for (int peer = 1; isNews && peer <= services_.peers.Highest(); ++peer) {
    if (subscriptions_[static_cast<std::size_t>(peer - 1)].contains(MatrixPath())) {
      receivers.insert(peer);
    }
  }
  if (!receivers.empty()) {
    const Bytes frames = Packets(RowMessage(output, Disposition::Modified));
    for (const int peer : receivers) services_.peers.SendFrames(peer, frames);
  }
  if (hasStatusChanged) TellValue(PriorityPath(output - 1));
}

void News::LevelsChanged() {
  const model::SystemModel& model = services_.model;
  const bool isMapComplete = model.XmapComplete && services_.knownMap.IsKnown();
  const Levels before = std::exchange(
      told_, {model.InputGains, model.QdvTally, model.LinkStatus[0] == 1, isMapComplete});
  for (std::size_t i = 0; i < model::kLevelCount; ++i) {
    const auto number = static_cast<int>(i);
    if (before.gains[i] != told_.gains[i]) TellValue(GainPath(number));
    if ((before.tally[i] != 0) != (told_.tally[i] != 0)) TellValue(TallyPath(number));
  }
  if (before.link != told_.link) TellValue(LinkPath());
  if (before.mapComplete != told_.mapComplete) TellValue(MapCompletePath());
}

void News::GainSet(int input, int peer) {
  const auto index = static_cast<std::size_t>(input);
  told_.gains[index] = services_.model.InputGains[index];
  TellValue(GainPath(input), peer);
}

void News::RecordsChanged(std::span<const stations::Change> changes) {
  if (!services_.texts.Forget(changes) || services_.peers.Count() == 0) return;
  // What changes on and on does not put off what is known by now.
  if (std::exchange(areTextsDue_, true) || isTelling_) return;
  GatherLater();
}

void News::GatherLater() {
  services_.timer.Start(kGather, [this] {
    areTextsDue_ = false;
    GatherTexts();
    TellTexts();
  });
}

void News::GatherTexts() {
  using Kind = stations::ChannelTexts::Kind;
  changed_ = {};
  for (const auto& label : services_.texts.TakeDifferences(Kind::Label)) {
    changed_.labels.push_back(TargetLabelPath(label.channel - 1));
  }
  for (const auto& label : services_.texts.TakeDifferences(Kind::InLabel)) {
    changed_.labels.push_back(SourceLabelPath(label.channel - 1));
  }
  for (auto& row : services_.texts.TakeDifferences(Kind::Inhibits)) {
    const int target = row.channel - 1;
    changed_.inhibits.emplace(target, std::move(row));
  }
  progress_ = {};
}

// In turns of the event loop: thousands may have changed, and twenty want to know.
void News::TellTexts() {
  const Peers::Time end = services_.now() + Peers::kTurn;
  isTelling_ = true;
  while (progress_.peer <= services_.peers.Highest()) {
    if (services_.now() >= end) {
      services_.timer.Start(Peers::kRest, [this] { TellTexts(); });
      return;
    }
    if (!TellSome()) progress_ = {.peer = progress_.peer + 1};
  }
  isTelling_ = false;
  changed_ = {};
  if (areTextsDue_) GatherLater();
}

// One message with a few of the values that a consumer wants to know.  False when it knows all.
bool News::TellSome() {
  const int peer = progress_.peer;
  if (!services_.peers.IsThere(peer)) return false;
  std::vector<Bytes> elements;
  const bool isMore = AddLabels(peer, &elements) || AddInhibits(peer, &elements);
  if (!elements.empty()) services_.peers.Send(peer, GlowMessage(elements));
  return isMore;
}

// True when there are more of them to look at.
bool News::AddLabels(int peer, std::vector<Bytes>* elements) {
  for (int looks = 0; progress_.label < changed_.labels.size(); ++looks) {
    if (looks == kMostLooks || elements->size() == kMostTogether) return true;
    const Path& path = changed_.labels[progress_.label++];
    if (IsSubscribed(peer, path)) AddValue(path, elements);
  }
  return false;
}

// The same.  Few inhibits of a row are asked for, and many may have changed: so it looks at what is
// asked for.
bool News::AddInhibits(int peer, std::vector<Bytes>* elements) {
  if (changed_.inhibits.empty()) return false;
  const std::set<Path>& subscriptions = subscriptions_[static_cast<std::size_t>(peer - 1)];
  auto at = progress_.inhibit.empty() ? subscriptions.lower_bound(InhibitedRowPath(0))
                                      : subscriptions.upper_bound(progress_.inhibit);
  for (int looks = 0; at != subscriptions.end(); ++at, ++looks) {
    if (looks == kMostLooks || elements->size() == kMostTogether) return true;
    progress_.inhibit = *at;
    const auto crosspoint = CrosspointOfInhibited(*at);
    // Who asked for the node and for the parameter, which is the next one, is told once.
    if (!crosspoint || crosspoint == progress_.crosspoint) continue;
    progress_.crosspoint = crosspoint;
    const auto& [target, source] = *crosspoint;
    const auto row = changed_.inhibits.find(target);
    if (row == changed_.inhibits.end() || model::FlagIsSet(row->second.before, source + 1) ==
                                              model::FlagIsSet(row->second.after, source + 1)) {
      continue;
    }
    AddValue(InhibitedPath(target, source), elements);
  }
  return false;
}

void News::AddValue(const Path& path, std::vector<Bytes>* elements) {
  if (services_.tree.KindAt(path) != ElementKind::Parameter) return;
  elements->push_back(ParameterValue(path, services_.tree.ValueAt(path)));
}

// Tells all who want news of the parameter, and consumer `always` in any case.
void News::TellValue(const Path& path, int always) {
  if (services_.tree.KindAt(path) != ElementKind::Parameter) return;
  Bytes frames;
  for (int peer = 1; peer <= services_.peers.Highest(); ++peer) {
    if (!services_.peers.IsThere(peer)) continue;
    if (peer != always && !IsSubscribed(peer, path)) continue;
    if (frames.empty()) {
      const std::vector<Bytes> elements{ParameterValue(path, services_.tree.ValueAt(path))};
      frames = Packets(GlowMessage(elements));
    }
    services_.peers.SendFrames(peer, frames);
  }
}

bool News::IsSubscribed(int peer, const Path& parameter) const {
  const std::set<Path>& subscriptions = subscriptions_[static_cast<std::size_t>(peer - 1)];
  if (subscriptions.contains(parameter)) return true;
  const Path node(parameter.begin(), std::prev(parameter.end()));
  return subscriptions.contains(node);
}

Bytes News::RowMessage(int output, Disposition disposition) const {
  const Connection row = services_.tree.Row(output - 1, disposition);
  const std::vector<Bytes> elements{MatrixConnections(MatrixPath(), std::span(&row, 1))};
  return GlowMessage(elements);
}

}  // namespace ember
