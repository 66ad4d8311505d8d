// SPDX-License-Identifier: MIT

#include "gateway/ember/provider.h"

#include <algorithm>
#include <bitset>
#include <cmath>
#include <utility>

namespace ember {

namespace {

// A whole number of dB, also where it comes as a real one.
std::optional<int> DecibelsOf(const GlowValue& value) {
  std::int64_t decibels = 0;
  if (const auto* const number = std::get_if<std::int64_t>(&value)) {
    decibels = *number;
  } else if (const auto* const real = std::get_if<double>(&value)) {
    if (!(*real >= kLeastDecibels && *real <= kMostDecibels)) return std::nullopt;
    decibels = std::lround(*real);
  } else {
    return std::nullopt;
  }
  if (decibels < kLeastDecibels || decibels > kMostDecibels) return std::nullopt;
  return static_cast<int>(decibels);
}

Wanted::Act ActOf(Operation operation) {
  switch (operation) {
    case Operation::Absolute:
      break;
    case Operation::Connect:
      return Wanted::Act::Connect;
    case Operation::Disconnect:
      return Wanted::Act::Disconnect;
  }
  return Wanted::Act::Absolute;
}

}  // namespace

Provider::Provider(Services services)
    : ChangeObserver(services.changes),
      services_(std::move(services)),
      texts_({.model = services_.model, .database = services_.database}),
      tree_({.model = services_.model,
             .knownMap = services_.knownMap,
             .texts = texts_,
             .version = services_.version,
             .mayWrite = services_.mayTake}),
      takes_({.model = services_.model,
              .locks = services_.locks,
              .texts = texts_,
              .commands = services_.commands,
              .knownMap = services_.knownMap,
              .line = services_.line,
              .timer = services_.takeTimer,
              .now = services_.now,
              .answers = *this}),
      peers_({.timer = services_.workTimer,
              .now = services_.now,
              .events = services_.events,
              .serve = [this](int peer, const Request& request) { Serve(peer, request); },
              .ended = [this](int peer) { PeerEnded(peer); }}),
      news_({.model = services_.model,
             .knownMap = services_.knownMap,
             .texts = texts_,
             .tree = tree_,
             .peers = peers_,
             .timer = services_.newsTimer,
             .now = services_.now}) {}

void Provider::Accept(std::unique_ptr<gateway::ClientSocket> socket) {
  if (!peers_.Accept(std::move(socket)) || PeerCount() > 1) return;
  news_.Begin();
  EverySecond();
}

void Provider::PeerEnded(int peer) {
  news_.Forget(peer);
  takes_.Forget(peer);
  if (PeerCount() == 0) news_.End();
}

void Provider::CloseAll() {
  peers_.CloseAll();
  takes_.Clear();
}

void Provider::LinkChanged() {
  if (services_.model.LinkStatus[0] != 1) takes_.LinkLost();
  news_.LevelsChanged();
}

void Provider::Serve(int peer, const Request& request) {
  switch (request.kind) {
    case Request::Kind::GetDirectory:
      return AnswerDirectory(peer, request.path);
    case Request::Kind::Subscribe:
      // Of a node, only who was told what is below it can make something of the news.
      if (tree_.KindAt(request.path) != ElementKind::Node) news_.Subscribe(peer, request.path);
      return;
    case Request::Kind::Unsubscribe:
      return news_.Unsubscribe(peer, request.path);
    case Request::Kind::SetValue:
      return SetValue(peer, request);
    case Request::Kind::Connect:
      return Connect(peer, request);
    case Request::Kind::Invoke:
      return Invoke(peer, request);
  }
}

void Provider::AnswerDirectory(int peer, const Path& path) {
  const std::optional<ElementKind> kind = tree_.KindAt(path);
  if (!kind) return;
  if (kind == ElementKind::Matrix) news_.RowsTold();
  news_.Subscribe(peer, path);
  peers_.Send(peer, tree_.Directory(path));
}

void Provider::SetValue(int peer, const Request& request) {
  if (tree_.KindAt(request.path) != ElementKind::Parameter) return;
  if (const std::optional<Refusal> refusal = WhyNotSet(request)) {
    return RefuseValue(peers_.Name(peer), request.path, *refusal);
  }
  takes_.SendGain(peers_.Name(peer), *SourceOfGain(request.path),
                  *DecibelsOf(request.value) + kUnityGainStep);
}

std::optional<Refusal> Provider::WhyNotSet(const Request& request) const {
  if (!SourceOfGain(request.path) || !services_.mayTake) return Refusal::ReadOnly;
  if (!DecibelsOf(request.value)) return Refusal::BadValue;
  if (services_.model.LinkStatus[0] != 1) return Refusal::LinkDown;
  return std::nullopt;
}

void Provider::GainSent(const PeerName& peer, int input, int step) {
  const auto index = static_cast<std::size_t>(input);
  services_.model.InputGains[index] = static_cast<std::int16_t>(step);
  services_.events.PeerSetGain(peer, input + 1, step - kUnityGainStep);
  news_.GainSet(input, peer.number);
  services_.gainsChanged();
}

void Provider::GainRefused(const PeerName& peer, int input, Refusal why) {
  RefuseValue(peer, GainPath(input), why);
}

// Who asked is answered with what holds.
void Provider::RefuseValue(const PeerName& peer, const Path& path, Refusal why) {
  services_.events.ValueRefused(peer, path, why);
  const std::vector<Bytes> present{ParameterValue(path, tree_.ValueAt(path))};
  peers_.Send(peer.number, GlowMessage(present));
}

void Provider::Connect(int peer, const Request& request) {
  if (request.path != MatrixPath()) return;
  for (const Connection& connection : request.connections) {
    if (peers_.IsThere(peer)) Take(peer, connection);
  }
}

void Provider::Take(int peer, const Connection& connection) {
  const int channels = services_.model.ChannelCount;
  const auto isThere = [&](int number) { return number >= 0 && number < channels; };
  // An output of 0 is none: numbers may be as large as numbers go.
  Wanted wanted{.act = ActOf(connection.operation),
                .output = isThere(connection.target) ? connection.target + 1 : 0,
                .inputs = {}};
  if (wanted.output == 0 ||
      !std::all_of(connection.sources.begin(), connection.sources.end(), isThere)) {
    services_.events.NumbersRefused(peers_.Name(peer), wanted.act, connection.target,
                                    connection.sources);
    return;
  }
  // However often a source is named.
  std::bitset<model::kMaxChannelCount> sources;
  for (const int source : connection.sources) sources.set(static_cast<std::size_t>(source));
  for (int input = 1; input <= channels; ++input) {
    if (sources[static_cast<std::size_t>(input - 1)]) wanted.inputs.push_back(input);
  }
  if (!services_.mayTake) return Refuse(peer, wanted, Refusal::ReadOnly);
  const Takes::Outcome outcome = takes_.Add(peers_.Name(peer), wanted);
  if (outcome.refusal) return Refuse(peer, wanted, *outcome.refusal);
  if (outcome.stands) peers_.Send(peer, news_.RowMessage(wanted.output, Disposition::Tally));
}

void Provider::Refuse(int peer, const Wanted& wanted, Refusal why) {
  services_.events.TakeRefused(peers_.Name(peer), wanted, why);
  AnswerRefusal(peer, wanted, {});
}

void Provider::Invoke(int peer, const Request& request) {
  if (tree_.KindAt(request.path) != ElementKind::Function) return;
  if (!Call(peer, request)) AnswerInvocation(peer, request.invocation, false);
}

// False when it is answered with "not done" at once.
bool Provider::Call(int peer, const Request& request) {
  Wanted wanted{.act = request.path == CallPath() ? Wanted::Act::Call : Wanted::Act::PriorityListen,
                .output = 0,
                .inputs = {}};
  const auto channel = [&](std::size_t index) -> std::optional<int> {
    if (request.arguments.size() != 3) return std::nullopt;
    const auto* const number = std::get_if<std::int64_t>(&request.arguments[index]);
    if (number == nullptr || *number < 0 || *number >= services_.model.ChannelCount) {
      return std::nullopt;
    }
    return static_cast<int>(*number) + 1;
  };
  const std::optional<int> output = channel(0);
  const std::optional<int> input = channel(1);
  const auto* const on =
      request.arguments.size() == 3 ? std::get_if<bool>(&request.arguments[2]) : nullptr;
  if (!output || !input || on == nullptr) {
    services_.events.TakeRefused(peers_.Name(peer), wanted, Refusal::BadValue);
    return false;
  }
  wanted.output = *output;
  wanted.inputs = {*input};
  wanted.on = *on;
  std::optional<Refusal> refusal;
  if (!services_.mayTake) {
    refusal = Refusal::ReadOnly;
  } else {
    const Takes::Outcome outcome = takes_.Add(peers_.Name(peer), wanted, request.invocation);
    if (outcome.stands) AnswerInvocation(peer, request.invocation, true);
    refusal = outcome.refusal;
  }
  if (refusal) services_.events.TakeRefused(peers_.Name(peer), wanted, *refusal);
  return !refusal;
}

void Provider::AnswerRow(int peer, int output) {
  peers_.Send(peer, news_.RowMessage(output, Disposition::Modified));
}

void Provider::AnswerRefusal(int peer, const Wanted& wanted, std::optional<int> invocation) {
  if (wanted.IsFunction()) {
    AnswerInvocation(peer, invocation, false);
  } else {
    peers_.Send(peer, news_.RowMessage(wanted.output, Disposition::Locked));
  }
}

void Provider::AnswerInvocation(int peer, std::optional<int> invocation, bool done) {
  if (!invocation) return;
  const GlowValue result = done;
  peers_.Send(peer, InvocationResult(*invocation, done, std::span(&result, 1)));
}

void Provider::CommandSent(const PeerName& peer, const switcher::Take& take) {
  services_.events.PeerTook(peer, take);
}

void Provider::TakeRefused(const PeerName& peer, const Wanted& wanted, Refusal why) {
  services_.events.TakeRefused(peer, wanted, why);
}

void Provider::TakeStopped(const PeerName& peer, const Wanted& wanted, Refusal why) {
  services_.events.TakeStopped(peer, wanted, why);
}

void Provider::CrosspointRowChanged(int output, int /*mode*/) {
  news_.RowReported(output, takes_.RowReported(output));
  takes_.GoOn();
}

// As long as there is somebody.
void Provider::EverySecond() {
  peers_.LookAround();
  news_.LevelsChanged();
  if (PeerCount() == 0) return;
  services_.secondTimer.Start(std::chrono::seconds(1), [this] { EverySecond(); });
}

}  // namespace ember
