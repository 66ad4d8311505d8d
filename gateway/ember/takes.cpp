// SPDX-License-Identifier: MIT

#include "gateway/ember/takes.h"

#include <algorithm>
#include <bitset>
#include <utility>

namespace ember {

PlanServices Takes::PlanWith() const {
  return {services_.model, services_.knownMap, services_.locks, services_.texts};
}

// Whether a take of the output has commands left, which later ones must not overtake.
bool Takes::IsHeldUp(int output) const {
  return std::any_of(open_.begin(), open_.end(), [&](const OpenTake& take) {
    return take.wanted.output == output && !take.isSent;
  });
}

Takes::Outcome Takes::Add(const PeerName& peer, const Wanted& wanted,
                          std::optional<int> invocation) {
  rows_.Expire(services_.now());
  if (!IsHeldUp(wanted.output)) {
    const TakePlan plan = PlanTake(PlanWith(), rows_.At(wanted.output), wanted);
    if (plan.refusal) return {.refusal = plan.refusal};
    if (plan.Stands()) return {.stands = true};
  }
  if (Open(peer.number) >= kMostOpen) return {.refusal = Refusal::TooMany};
  open_.push_back({.id = ++lastId_,
                   .peer = peer,
                   .wanted = wanted,
                   .invocation = invocation,
                   .deadline = services_.now() + kPatience});
  GoOn();
  return {};
}

void Takes::SendGain(const PeerName& peer, int input, int step) {
  if (const auto waiting = gains_.extract(input);
      !waiting.empty() && waiting.mapped().peer != peer) {
    services_.answers.GainRefused(waiting.mapped().peer, input, Refusal::Replaced);
  }
  gains_[input] = {peer, step, services_.now() + kPatience};
  GoOn();
}

bool Takes::IsOver(const OpenTake& take) const {
  if (take.wanted.IsFunction()) return IsAsWanted(services_.model, take.wanted);
  return take.isSent &&
         (take.isLate || take.reports >= take.sent || IsAsWanted(services_.model, take.wanted));
}

std::set<int> Takes::RowReported(int output) {
  rows_.Reported(output);
  std::set<int> answered;
  Queue done;
  for (auto take = open_.begin(); take != open_.end();) {
    const auto next = std::next(take);
    if (take->wanted.output == output) {
      take->isWaiting = false;
      if (take->sent > 0) {
        ++take->reports;
        if (!take->wanted.IsFunction() && !take->isGone) {
          take->isAnswered = true;
          answered.insert(take->peer.number);
        }
        if (IsOver(*take)) done.splice(done.end(), open_, take);
      }
    }
    take = next;
  }
  for (const OpenTake& take : done) {
    if (take.wanted.IsFunction() && !take.isGone) {
      services_.answers.AnswerInvocation(take.peer.number, take.invocation, true);
    }
  }
  return answered;
}

void Takes::GoOn() {
  SendOn();
  Wait();
}

void Takes::LinkLost() {
  RefuseGains(Refusal::LinkDown, [](const Gain&) { return true; });
}

void Takes::Forget(int peer) {
  open_.remove_if([&](const OpenTake& take) {
    return take.peer.number == peer && (take.sent == 0 || take.isSent);
  });
  for (OpenTake& take : open_) take.isGone = take.isGone || take.peer.number == peer;
  std::erase_if(gains_, [&](const auto& gain) { return gain.second.peer.number == peer; });
  Wait();
}

void Takes::Clear() {
  gains_.clear();
  for (const OpenTake& take : std::exchange(open_, {})) {
    if (take.sent > 0 && !take.isSent) {
      services_.answers.TakeStopped(take.peer, take.wanted, Refusal::Closing);
    }
  }
  Wait();
}

std::size_t Takes::Open(int peer) const {
  return static_cast<std::size_t>(std::count_if(
      open_.begin(), open_.end(),
      [&](const OpenTake& take) { return take.peer.number == peer && !take.isGone; }));
}

// In turns: thousands that have waited may be as the row is by now.
void Takes::SendOn() {
  const Time end = services_.now() + kTurn;
  while (services_.line.HasRoom() && (SendOneGain() || SendOneTake())) {
    if (services_.now() >= end) return;
  }
}

bool Takes::SendOneGain() {
  if (gains_.empty()) return false;
  const auto next = gains_.extract(gains_.begin());
  const Gain& gain = next.mapped();
  if (services_.commands.SendGain(next.key(), gain.step)) {
    services_.answers.GainSent(gain.peer, next.key(), gain.step);
  } else {
    // The line has failed, which was reported; the next one is tried all the same.
    services_.answers.GainRefused(gain.peer, next.key(), Refusal::LineFailed);
  }
  return true;
}

// The first take of the next consumer that has one; of a turn that is over, of the first.
Takes::Queue::iterator Takes::NextUnsent() {
  auto next = open_.end();
  std::bitset<model::kMaxChannelCount + 1> isHeldUp;  // outputs, by what stands before
  const auto waits = [&](int peer) { return peer > turn_ ? peer : peer + (1 << 16); };
  for (auto take = open_.begin(); take != open_.end(); ++take) {
    const auto output = static_cast<std::size_t>(take->wanted.output);
    if (take->isSent || isHeldUp[output]) continue;
    isHeldUp.set(output);
    if (take->isWaiting) continue;
    if (next == open_.end() || waits(take->peer.number) < waits(next->peer.number)) next = take;
  }
  return next;
}

Takes::Queue::iterator Takes::Find(std::uint64_t id) {
  return std::find_if(open_.begin(), open_.end(),
                      [&](const OpenTake& take) { return take.id == id; });
}

bool Takes::SendOneTake() {
  const auto take = NextUnsent();
  if (take == open_.end()) return false;
  turn_ = take->peer.number;
  // The row, a lock or an inhibit may be another one than before the last command.
  const TakePlan plan = PlanTake(PlanWith(), rows_.At(take->wanted.output), take->wanted);
  if (plan.refusal) {
    Stop(take, *plan.refusal);
  } else if (!plan.commands.empty()) {
    SendCommand(take->id, plan.commands.front(), plan.commands.size() == 1);
  } else if (take->sent > 0) {
    take->isSent = true;
    if (IsOver(*take)) End(TakeOut(take));
  } else if (plan.isAwaited) {
    take->isWaiting = true;
  } else {
    End(TakeOut(take));
  }
  return true;
}

// Sending may tell of a failure, and whoever is told of it, to its end: the take is looked up again
// afterwards.
void Takes::SendCommand(std::uint64_t id, const switcher::Take& command, bool isLast) {
  const PeerName peer = Find(id)->peer;
  const bool isSent =
      services_.commands.SendTake(command.destination, command.source, command.action);
  if (isSent) {
    rows_.Sent(command, services_.now());
    services_.answers.CommandSent(peer, command);
  }
  const auto take = Find(id);
  if (take == open_.end()) return;
  if (!isSent) return Stop(take, Refusal::LineFailed);
  ++take->sent;
  take->isSent = isLast;
  if (take->isSent && (take->isLate || take->isGone)) TakeOut(take);
}

Takes::OpenTake Takes::TakeOut(Queue::iterator take) {
  OpenTake taken = std::move(*take);
  open_.erase(take);
  return taken;
}

// A take that may not go on is over.
void Takes::Stop(Queue::iterator take, Refusal why) {
  const OpenTake over = TakeOut(take);
  if (over.sent > 0) {
    services_.answers.TakeStopped(over.peer, over.wanted, why);
  } else {
    services_.answers.TakeRefused(over.peer, over.wanted, why);
  }
  if (over.isGone || over.isLate) return;
  services_.answers.AnswerRefusal(over.peer.number, over.wanted, over.invocation);
}

// All have the same patience, so the first that is not answered is the next.
Takes::Queue::iterator Takes::NextOverdue(Time now) {
  const auto next =
      std::find_if(open_.begin(), open_.end(), [](const OpenTake& take) { return !take.isLate; });
  return next != open_.end() && next->deadline <= now ? next : open_.end();
}

// In turns: thousands may be overdue at once.
void Takes::EndOverdue() {
  const Time now = services_.now();
  const Time end = now + kTurn;
  for (auto take = NextOverdue(now); take != open_.end() && services_.now() < end;
       take = NextOverdue(now)) {
    if (take->sent > 0 && !take->isSent) {
      take->isLate = true;
      const OpenTake answered = *take;
      End(answered);
    } else if (take->isSent || take->isWaiting) {
      End(TakeOut(take));
    } else {
      Stop(take, Refusal::LineBusy);
    }
  }
  RefuseGains(Refusal::LineBusy, [&](const Gain& gain) { return gain.deadline <= now; });
}

void Takes::End(const OpenTake& take) {
  if (take.isGone) return;
  if (take.wanted.IsFunction()) {
    services_.answers.AnswerInvocation(take.peer.number, take.invocation,
                                       IsAsWanted(services_.model, take.wanted));
  } else if (!take.isAnswered) {
    services_.answers.AnswerRow(take.peer.number, take.wanted.output);
  }
}

void Takes::RefuseGains(Refusal why, const std::function<bool(const Gain&)>& which) {
  std::map<int, Gain> refused;
  for (auto gain = gains_.begin(); gain != gains_.end();) {
    const auto next = std::next(gain);
    if (which(gain->second)) refused.insert(gains_.extract(gain));
    gain = next;
  }
  for (const auto& [input, gain] : refused) services_.answers.GainRefused(gain.peer, input, why);
}

// Starts the timer for what is due next.  One that runs is never put off: of reports that come one
// behind the other, each would put it off again.
void Takes::Wait() {
  if (open_.empty() && gains_.empty()) {
    wakesUp_.reset();
    return services_.timer.Stop();
  }
  const std::chrono::milliseconds pause = UntilNext();
  const Time next = services_.now() + pause;
  if (wakesUp_ && *wakesUp_ <= next) return;
  wakesUp_ = next;
  services_.timer.Start(pause, [this] { WakeUp(); });
}

// REQUIRES: something waits
std::chrono::milliseconds Takes::UntilNext() {
  const Time now = services_.now();
  if (NextOverdue(now) != open_.end()) return kRest;
  if (!gains_.empty() || NextUnsent() != open_.end()) return kLook;
  Time next = open_.front().deadline;
  if (const std::optional<Time> expiry = rows_.NextExpiry()) next = std::min(next, *expiry);
  return std::max(std::chrono::ceil<std::chrono::milliseconds>(next - now),
                  std::chrono::milliseconds(1));
}

void Takes::WakeUp() {
  wakesUp_.reset();
  const Time now = services_.now();
  EndOverdue();
  if (const std::optional<Time> expiry = rows_.NextExpiry(); expiry && *expiry <= now) {
    rows_.Expire(now);
    for (OpenTake& take : open_) take.isWaiting = false;
  }
  GoOn();
}

}  // namespace ember
