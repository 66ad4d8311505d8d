// SPDX-License-Identifier: MIT

#include "tools/tesksim/simulator.h"

#include <utility>

#include "switcher/wire/messages/crosspoint_row.h"
#include "switcher/wire/messages/gain_report.h"
#include "switcher/wire/messages/tally.h"
#include "tools/tesksim/state_text.h"

namespace tesksim {

namespace {

std::string Count(std::size_t bytes) {
  return std::to_string(bytes) + (bytes == 1 ? " byte" : " bytes");
}

}  // namespace

Simulator::Simulator(SwitcherState state, const Options& options, Time now, Log log)
    : state_(std::move(state)),
      parser_(state_.Sizes().labels),
      log_(std::move(log)),
      transmitter_(options.baud, options.seed,
                   {.hasNext = [this] { return HasNext(); }, .next = [this] { return Next(); }},
                   [this](const std::string& line) { Note(line); }),
      retrieval_(state_, handlers_, [this](const std::string& line) { Note(line); }),
      demo_(options.seed) {
  if (options.demo) nextDemoChange_ = now + demo_.Pause();
}

void Simulator::Receive(std::span<const std::uint8_t> bytes, Time now) {
  stats_.bytesReceived += bytes.size();
  Enqueue(parser_.Feed(bytes, now), now);
  Work(now);
}

Bytes Simulator::TakeOutput(Time now) {
  Work(now);
  PlayDemo(now);
  return transmitter_.Take(now);
}

std::optional<Time> Simulator::NextTime() const {
  std::optional<Time> next = Earlier(transmitter_.NextTime(), nextDemoChange_);
  next = Earlier(next, parser_.Deadline());
  return requests_.empty() ? next : Earlier(next, requests_.front().due);
}

void Simulator::DropLine() {
  (void)parser_.GiveUp();  // it broke with the line; that is no fault of the console's
  requests_.clear();
  transmitter_.Clear();
  retrieval_.Stop();
  nextMapRow_ = 0;
  polled_ = false;
}

void Simulator::SendRow(int output) { transmitter_.Send(RowMessage(output)); }

void Simulator::SendTally() {
  int responding = 0;
  for (const std::int16_t value : state_.tally) responding += value != 0 ? 1 : 0;
  transmitter_.Send({.bytes = switcher::EncodeTally(state_.tally),
                     .text = "tally responding " + std::to_string(responding)});
}

void Simulator::SendGains() { transmitter_.Send(GainsMessage()); }

void Simulator::SendRaw(Bytes bytes) {
  std::string text = "raw " + Count(bytes.size());
  transmitter_.Send({.bytes = std::move(bytes), .text = std::move(text), .mayBeHarmed = false});
}

void Simulator::SetFault(const FaultSetting& setting, int value, Time now) {
  transmitter_.SetFault(setting, value, now);
}

void Simulator::SetSilence(bool silent) {
  silent_ = silent;
  if (!silent) return;
  transmitter_.Clear();
  retrieval_.Stop();
  nextMapRow_ = 0;
}

bool Simulator::HasNext() const { return retrieval_.HasNext() || nextMapRow_ != 0; }

Outgoing Simulator::Next() {
  if (retrieval_.HasNext()) return retrieval_.Next();
  if (nextMapRow_ > state_.ChannelCount()) {
    nextMapRow_ = 0;
    return GainsMessage();
  }
  return RowMessage(nextMapRow_++);
}

void Simulator::Work(Time now) {
  if (const auto deadline = parser_.Deadline(); deadline.has_value() && *deadline <= now) {
    Enqueue(parser_.GiveUp(), now);
  }
  while (!requests_.empty() && requests_.front().due <= now) {
    const Request request = std::move(requests_.front());
    requests_.pop_front();
    Act(request.received);
  }
}

void Simulator::Enqueue(std::vector<Received> received, Time now) {
  const Time due = now + std::chrono::milliseconds(transmitter_.Settings().delay);
  for (Received& piece : received) requests_.push_back({due, std::move(piece)});
}

void Simulator::Act(const Received& received) {
  switch (received.kind) {
    case Received::Kind::Poll:
      AnswerPoll(received.bytes.front());
      break;
    case Received::Kind::Message:
      ++stats_.messages;
      AcceptMessage(received.bytes);
      break;
    case Received::Kind::Broken:
      ++stats_.malformed;
      Note("rx broken " + std::string(MessageName(received.bytes.front())) + " " +
           Count(received.bytes.size()));
      break;
    case Received::Kind::Noise:
      stats_.noiseBytes += received.bytes.size();
      Note("rx noise " + Count(received.bytes.size()));
      break;
  }
}

void Simulator::AnswerPoll(std::uint8_t poll) {
  polled_ = true;
  Note("rx poll " + std::string(switcher::PollName(poll)));
  switch (poll) {
    case switcher::kPollMap:
      ++stats_.mapPolls;
      if (!silent_ && nextMapRow_ == 0) nextMapRow_ = 1;
      break;
    case switcher::kPollTally:
      ++stats_.tallyPolls;
      if (!silent_) SendTally();
      break;
    case switcher::kPollKeepAlive:
      ++stats_.keepAlives;
      if (!silent_) transmitter_.SendLinkAnswer();
      break;
    default:
      ++stats_.tablePolls;
      if (!silent_) retrieval_.Begin();
      break;
  }
}

void Simulator::AcceptMessage(std::span<const std::uint8_t> message) {
  const switcher::MessageKind& kind = *switcher::FindMessage(message.front());
  const std::string name(kind.name);
  const Outcome outcome = handlers_.Of(kind.code)->Accept(message);
  switch (outcome.result) {
    case Outcome::Result::Done:
      ++changes_;
      if (kind.code == switcher::kTakeCode) ++stats_.takes;
      if (kind.use == switcher::MessageUse::Table) ++stats_.tables;
      Note("rx " + name + " " + outcome.text);
      break;
    case Outcome::Result::Refused:
      ++stats_.refused;
      Note("rx " + name + " " + outcome.text + " (refused)");
      break;
    case Outcome::Result::Malformed:
      ++stats_.malformed;
      Note("rx malformed " + name + " " + Count(message.size()) +
           (outcome.text.empty() ? "" : ", " + outcome.text));
      break;
  }
  if (outcome.answerRow != 0 && !silent_) SendRow(outcome.answerRow);
}

// Somebody at the switcher changes something.  The console hears of it unless it has not asked
// for anything yet; while a map goes out nothing is changed, so that the map is what it shows.
void Simulator::PlayDemo(Time now) {
  if (!nextDemoChange_.has_value() || now < *nextDemoChange_) return;
  nextDemoChange_ = now + demo_.Pause();
  if (nextMapRow_ != 0) return;
  const std::optional<int> output = demo_.Change(state_);
  if (output.has_value()) ++changes_;
  if (output.has_value() && polled_ && !silent_) SendRow(*output);
}

Outgoing Simulator::RowMessage(int output) const {
  return {.bytes = switcher::EncodeCrosspointRow(state_.Row(output)),
          .text = "row " + DescribeRow(state_, output)};
}

Outgoing Simulator::GainsMessage() const {
  return {.bytes = switcher::EncodeGainReport(state_.gains), .text = "gains"};
}

void Simulator::Note(const std::string& line) const {
  if (logging_ && log_) log_(line);
}

}  // namespace tesksim
