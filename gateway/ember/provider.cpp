// SPDX-License-Identifier: MIT

#include "gateway/ember/provider.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "model/flag_string.h"

namespace ember {

namespace {

// What is read from a socket at once.
constexpr std::size_t kReadSize = std::size_t{32} << 10;

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
              .answers = *this}) {}

// A socket that has ended is deleted when another one takes its place, never in its own event.
int Provider::FreeNumber() {
  const auto free =
      std::find_if(peers_.begin(), peers_.end(), [](const Peer& peer) { return !peer.isThere; });
  if (free != peers_.end()) return static_cast<int>(free - peers_.begin()) + 1;
  if (peers_.size() >= kMostPeers) return 0;
  peers_.emplace_back();
  return static_cast<int>(peers_.size());
}

// Who has never sent a frame makes room, the longest of them first; 0 for none.
int Provider::NumberOfMute() {
  int mute = 0;
  for (int number = 1; number <= static_cast<int>(peers_.size()); ++number) {
    const Peer& peer = At(number);
    if (!peer.isThere || peer.hasSpoken) continue;
    if (mute == 0 || peer.lastHeard < At(mute).lastHeard) mute = number;
  }
  return mute;
}

void Provider::Accept(std::unique_ptr<gateway::ClientSocket> socket) {
  int number = FreeNumber();
  if (number == 0) {
    number = NumberOfMute();
    if (number != 0) Drop(number, PeerDrop::Silent);
  }
  if (number == 0) {
    services_.events.PeerTurnedAway(socket->PeerAddress());
    socket->Close();
    return;
  }
  Peer& peer = At(number);
  peer = {};
  peer.socket = std::move(socket);
  peer.address = peer.socket->PeerAddress();
  peer.isThere = true;
  peer.lastHeard = services_.now();
  peer.socket->SetEvents(this, number);
  services_.events.PeerConnected(Name(number));
  if (PeerCount() == 1) {
    rows_.assign(static_cast<std::size_t>(services_.model.ChannelCount), {});
    for (int output = 1; output <= services_.model.ChannelCount; ++output) {
      RowOf(output).status = services_.model.ChannelStatus[output];
    }
    TellLevels();
    EverySecond();
  }
}

int Provider::PeerCount() const {
  return static_cast<int>(
      std::count_if(peers_.begin(), peers_.end(), [](const Peer& peer) { return peer.isThere; }));
}

void Provider::CloseAll() {
  for (int number = 1; number <= static_cast<int>(peers_.size()); ++number) EndPeer(number);
  takes_.Clear();
}

void Provider::LinkChanged() {
  if (services_.model.LinkStatus[0] != 1) takes_.LinkLost();
  TellLevels();
}

void Provider::DataArrived(int slot, std::size_t /*byteCount*/) {
  Read(slot);
  Serve();
}

// Reads until something is to be served.
void Provider::Read(int slot) {
  Peer& peer = At(slot);
  Bytes bytes;
  while (peer.isThere && peer.requests.empty() &&
         peer.socket->Read(kReadSize, &bytes) == gateway::ClientSocket::ReadResult::Data) {
    peer.lastHeard = services_.now();
    peer.isAsked = false;
    std::vector<FrameReader::Event> events;
    const bool isWhole = peer.reader.Read(bytes, &events);
    peer.hasSpoken = peer.hasSpoken || !events.empty();
    for (const FrameReader::Event& event : events) {
      if (peer.isThere) Handle(slot, event);
    }
    if (!isWhole && peer.isThere) Drop(slot, PeerDrop::TooLong);
    bytes.clear();
  }
}

// Of many connections each is a request.
void Provider::Queue(int peer, Request request) {
  if (request.connections.size() <= 1) {
    At(peer).requests.push_back(std::move(request));
    return;
  }
  for (Connection& connection : std::exchange(request.connections, {})) {
    Request one = request;
    one.connections.push_back(std::move(connection));
    At(peer).requests.push_back(std::move(one));
  }
}

// False when the consumer has nothing to be served.
bool Provider::ServeOne(int number) {
  Peer& peer = At(number);
  if (peer.requests.empty()) return false;
  const Request request = std::move(peer.requests.front());
  peer.requests.pop_front();
  Handle(number, request);
  if (peer.requests.empty()) Read(number);
  peer.lastHeard = services_.now();
  return true;
}

// The consumers take turns.
void Provider::Serve() {
  const Time end = services_.now() + kTurn;
  for (bool isServed = true; isServed;) {
    isServed = false;
    for (int number = 1; number <= static_cast<int>(peers_.size()); ++number) {
      if (services_.now() >= end) {
        services_.workTimer.Start(std::chrono::milliseconds(1), [this] { Serve(); });
        return;
      }
      isServed = ServeOne(number) || isServed;
    }
  }
}

void Provider::PeerClosed(int slot) { EndPeer(slot); }

void Provider::Handle(int peer, const FrameReader::Event& event) {
  if (event.kind == FrameReader::Kind::KeepAliveRequest) SendFrames(peer, KeepAliveResponse());
  if (event.kind != FrameReader::Kind::Message) return;
  std::optional<std::vector<Request>> requests = ParseGlow(event.message);
  if (!requests) return;
  for (Request& request : *requests) Queue(peer, std::move(request));
}

void Provider::Handle(int peer, const Request& request) {
  switch (request.kind) {
    case Request::Kind::GetDirectory:
      return AnswerDirectory(peer, request.path);
    case Request::Kind::Subscribe:
      // Of a node, only who was told what is below it can make something of the news.
      if (tree_.KindAt(request.path) != ElementKind::Node) Subscribe(peer, request.path);
      return;
    case Request::Kind::Unsubscribe:
      At(peer).subscriptions.erase(request.path);
      return;
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
  // Rows that are told now count as told only where they were reported so.
  if (kind == ElementKind::Matrix) {
    for (int output = 1; output <= services_.model.ChannelCount; ++output) {
      KnownRow& row = RowOf(output);
      row.isKnown =
          row.isKnown && std::ranges::equal(row.sources, services_.model.CrosspointMap.Row(output));
    }
  }
  if (kind != ElementKind::Root && kind != ElementKind::Function) Subscribe(peer, path);
  Send(peer, tree_.Directory(path));
}

void Provider::Subscribe(int peer, const Path& path) {
  const std::optional<ElementKind> kind = tree_.KindAt(path);
  if (!kind || kind == ElementKind::Root || kind == ElementKind::Function) return;
  std::set<Path>& subscriptions = At(peer).subscriptions;
  if (subscriptions.size() < kMostSubscriptions) subscriptions.insert(path);
}

void Provider::SetValue(int peer, const Request& request) {
  if (tree_.KindAt(request.path) != ElementKind::Parameter) return;
  if (const std::optional<Refusal> refusal = WhyNotSet(request)) {
    return RefuseValue(Name(peer), request.path, *refusal);
  }
  takes_.SendGain(Name(peer), *SourceOfGain(request.path),
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
  told_.gains[index] = services_.model.InputGains[index];
  services_.events.PeerSetGain(peer, input + 1, step - kUnityGainStep);
  TellValue(GainPath(input), peer.number);
  services_.gainsChanged();
}

void Provider::GainRefused(const PeerName& peer, int input, Refusal why) {
  RefuseValue(peer, GainPath(input), why);
}

// Who asked is answered with what holds.
void Provider::RefuseValue(const PeerName& peer, const Path& path, Refusal why) {
  services_.events.ValueRefused(peer, path, why);
  const std::vector<Bytes> present{ParameterValue(path, tree_.ValueAt(path))};
  Send(peer.number, GlowMessage(present));
}

void Provider::Connect(int peer, const Request& request) {
  if (request.path != MatrixPath()) return;
  for (const Connection& connection : request.connections) {
    if (At(peer).isThere) Take(peer, connection);
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
    services_.events.NumbersRefused(Name(peer), wanted.act, connection.target, connection.sources);
    return;
  }
  for (const int source : connection.sources) wanted.inputs.push_back(source + 1);
  std::sort(wanted.inputs.begin(), wanted.inputs.end());
  wanted.inputs.erase(std::unique(wanted.inputs.begin(), wanted.inputs.end()), wanted.inputs.end());
  if (!services_.mayTake) return Refuse(peer, wanted, Refusal::ReadOnly);
  const Takes::Outcome outcome = takes_.Add(Name(peer), wanted);
  if (outcome.refusal) return Refuse(peer, wanted, *outcome.refusal);
  if (outcome.stands) Send(peer, RowMessage(wanted.output, Disposition::Tally));
}

void Provider::Refuse(int peer, const Wanted& wanted, Refusal why) {
  services_.events.TakeRefused(Name(peer), wanted, why);
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
    services_.events.TakeRefused(Name(peer), wanted, Refusal::BadValue);
    return false;
  }
  wanted.output = *output;
  wanted.inputs = {*input};
  wanted.on = *on;
  std::optional<Refusal> refusal;
  if (!services_.mayTake) {
    refusal = Refusal::ReadOnly;
  } else {
    const Takes::Outcome outcome = takes_.Add(Name(peer), wanted, request.invocation);
    if (outcome.stands) AnswerInvocation(peer, request.invocation, true);
    refusal = outcome.refusal;
  }
  if (refusal) services_.events.TakeRefused(Name(peer), wanted, *refusal);
  return !refusal;
}

void Provider::AnswerRow(int peer, int output) {
  Send(peer, RowMessage(output, Disposition::Modified));
}

void Provider::AnswerRefusal(int peer, const Wanted& wanted, std::optional<int> invocation) {
  if (wanted.IsFunction()) {
    AnswerInvocation(peer, invocation, false);
  } else {
    Send(peer, RowMessage(wanted.output, Disposition::Locked));
  }
}

void Provider::AnswerInvocation(int peer, std::optional<int> invocation, bool done) {
  if (!invocation) return;
  const GlowValue result = done;
  Send(peer, InvocationResult(*invocation, done, std::span(&result, 1)));
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

Bytes Provider::RowMessage(int output, Disposition disposition) {
  const Connection row = tree_.Row(output - 1, disposition);
  const std::vector<Bytes> elements{MatrixConnections(MatrixPath(), std::span(&row, 1))};
  return GlowMessage(elements);
}

// Whether the sources of the row are others than were last told.
bool Provider::NoteRow(int output) {
  KnownRow& known = RowOf(output);
  const auto row = services_.model.CrosspointMap.Row(output);
  if (known.isKnown && std::ranges::equal(known.sources, row)) return false;
  known.isKnown = true;
  known.sources.assign(row.begin(), row.end());
  return true;
}

void Provider::CrosspointRowChanged(int output, int /*mode*/) {
  std::set<int> receivers = takes_.RowReported(output);
  if (PeerCount() == 0) return takes_.GoOn();
  const bool isNews = NoteRow(output);
  const bool hasStatusChanged =
      std::exchange(RowOf(output).status, services_.model.ChannelStatus[output]) !=
      services_.model.ChannelStatus[output];
  for (int number = 1; isNews && number <= static_cast<int>(peers_.size()); ++number) {
    if (At(number).subscriptions.contains(MatrixPath())) receivers.insert(number);
  }
  if (!receivers.empty()) {
    const Bytes frames = Packets(RowMessage(output, Disposition::Modified));
    for (const int number : receivers) SendFrames(number, frames);
  }
  if (hasStatusChanged) TellValue(PriorityPath(output - 1));
  takes_.GoOn();
}

void Provider::TellLevels() {
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

void Provider::Changed(std::span<const stations::Change> changes) {
  bool isTouched = false;
  for (const ChannelTexts::Kind kind : ChannelTexts::kKinds) {
    if (!stations::Touches(changes, ChannelTexts::FieldOf(kind))) continue;
    texts_.Forget(kind);
    isTouched = true;
  }
  if (!isTouched || PeerCount() == 0) return;
  // What changes on and on does not put off what is known by now.
  if (std::exchange(isNewsDue_, true)) return;
  services_.newsTimer.Start(kGather, [this] {
    isNewsDue_ = false;
    TellTexts();
  });
}

void Provider::TellTexts() {
  using Kind = ChannelTexts::Kind;
  for (const auto& label : texts_.TakeDifferences(Kind::Label)) {
    TellValue(TargetLabelPath(label.channel - 1));
  }
  for (const auto& label : texts_.TakeDifferences(Kind::InLabel)) {
    TellValue(SourceLabelPath(label.channel - 1));
  }
  // Few are asked for, and many may have changed.
  const auto subscribed = SubscribedInhibits();
  for (const auto& row : texts_.TakeDifferences(Kind::Inhibits)) {
    for (auto at = subscribed.lower_bound({row.channel - 1, 0});
         at != subscribed.end() && at->first == row.channel - 1; ++at) {
      const int input = at->second + 1;
      if (model::FlagIsSet(row.before, input) != model::FlagIsSet(row.after, input)) {
        TellValue(InhibitedPath(at->first, at->second));
      }
    }
  }
}

// The crosspoints (target and source) whose inhibits somebody has news of.
std::set<std::pair<int, int>> Provider::SubscribedInhibits() const {
  std::set<std::pair<int, int>> crosspoints;
  for (const Peer& peer : peers_) {
    for (const Path& path : peer.subscriptions) {
      if (const auto crosspoint = CrosspointOfInhibited(path)) crosspoints.insert(*crosspoint);
    }
  }
  return crosspoints;
}

// Tells all who have asked for the parameter, and consumer `always` in any case.
void Provider::TellValue(const Path& path, int always) {
  if (tree_.KindAt(path) != ElementKind::Parameter) return;
  Bytes frames;
  for (int number = 1; number <= static_cast<int>(peers_.size()); ++number) {
    const Peer& peer = At(number);
    if (!peer.isThere || (number != always && !IsSubscribed(peer, path))) continue;
    if (frames.empty()) {
      const std::vector<Bytes> elements{ParameterValue(path, tree_.ValueAt(path))};
      frames = Packets(GlowMessage(elements));
    }
    SendFrames(number, frames);
  }
}

bool Provider::IsSubscribed(const Peer& peer, const Path& parameter) const {
  if (peer.subscriptions.contains(parameter)) return true;
  const Path node(parameter.begin(), std::prev(parameter.end()));
  return peer.subscriptions.contains(node);
}

void Provider::Send(int peer, std::span<const std::uint8_t> message) {
  SendFrames(peer, Packets(message));
}

void Provider::SendFrames(int number, std::span<const std::uint8_t> frames) {
  Peer& peer = At(number);
  if (!peer.isThere) return;
  const bool isWritten = peer.socket->Write(frames).ok();
  if (!peer.isThere) return;  // writing has found out that it has gone
  if (!isWritten || peer.socket->Unsent() > kMostUnsent) Drop(number, PeerDrop::DoesNotRead);
}

void Provider::Drop(int peer, PeerDrop why) {
  services_.events.PeerDropped(Name(peer), why);
  EndPeer(peer);
}

void Provider::EndPeer(int number) {
  Peer& peer = At(number);
  if (!peer.isThere) return;
  peer.isThere = false;
  peer.requests.clear();
  peer.subscriptions.clear();
  peer.reader = {};
  peer.socket->Close();
  takes_.Forget(number);
  if (PeerCount() == 0) rows_.clear();
  services_.events.PeerGone(Name(number));
}

// As long as there is somebody.
void Provider::EverySecond() {
  const Time now = services_.now();
  for (int number = 1; number <= static_cast<int>(peers_.size()); ++number) {
    Peer& peer = At(number);
    if (!peer.isThere) continue;
    const auto quiet = now - peer.lastHeard;
    if (quiet >= kDropAfter) {
      Drop(number, PeerDrop::Silent);
    } else if (quiet >= kAskAfter && !std::exchange(peer.isAsked, true)) {
      SendFrames(number, KeepAliveRequest());
    }
  }
  TellLevels();
  if (PeerCount() > 0)
    services_.secondTimer.Start(std::chrono::seconds(1), [this] { EverySecond(); });
}

}  // namespace ember
