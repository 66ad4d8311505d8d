// SPDX-License-Identifier: MIT

#include "gateway/ember/takes.h"

#include <algorithm>
#include <utility>

namespace ember {

namespace {

bool IsInvocation(const Wanted& wanted) {
  return wanted.act == Wanted::Act::Call || wanted.act == Wanted::Act::PriorityListen;
}

}  // namespace

Takes::Outcome Takes::Add(int peer, const Wanted& wanted, std::optional<int> invocation) {
  const TakePlan plan =
      PlanTake(services_.model, services_.knownMap, services_.locks, services_.texts, wanted);
  if (plan.refusal) return {.refusal = plan.refusal};
  if (plan.Stands()) return {.stands = true};
  if (Open(peer) >= kMostOpen) return {.refusal = Refusal::TooMany};
  open_.push_back({.peer = peer,
                   .wanted = wanted,
                   .invocation = invocation,
                   .deadline = services_.now() + kPatience});
  SendOn();
  Wait();
  return {};
}

void Takes::SendGain(int input, int step) {
  gains_[input] = step;
  SendOn();
  Wait();
}

std::set<int> Takes::RowReported(int output) {
  std::set<int> answered;
  Queue done;
  for (auto take = open_.begin(); take != open_.end();) {
    const auto next = std::next(take);
    if (take->wanted.output == output) {
      const bool isInvocation = IsInvocation(take->wanted);
      if (!isInvocation) {
        take->isAnswered = true;
        answered.insert(take->peer);
      }
      const bool isOver =
          isInvocation ? IsAsWanted(services_.model, take->wanted) : !take->IsUnsent();
      if (isOver) done.splice(done.end(), open_, take);
    }
    take = next;
  }
  for (const OpenTake& take : done) {
    if (IsInvocation(take.wanted)) {
      services_.answers.AnswerInvocation(take.peer, take.invocation, true);
    }
  }
  Wait();
  return answered;
}

void Takes::Forget(int peer) {
  open_.remove_if([&](const OpenTake& take) { return take.peer == peer; });
  Wait();
}

std::size_t Takes::Open(int peer) const {
  return static_cast<std::size_t>(std::count_if(
      open_.begin(), open_.end(), [&](const OpenTake& take) { return take.peer == peer; }));
}

void Takes::SendOn() {
  while (services_.line.HasRoom() && (SendOneGain() || SendOneTake())) {
  }
}

bool Takes::SendOneGain() {
  if (gains_.empty()) return false;
  const auto gain = gains_.extract(gains_.begin());
  // A failure has been reported, and the next one is sent all the same.
  (void)services_.commands.SendGain(gain.key(), gain.mapped());
  return true;
}

// The first take of the next consumer that has one; of a turn that is over, of the first.
Takes::Queue::iterator Takes::NextUnsent() {
  auto next = open_.end();
  const auto waits = [&](int peer) { return peer > turn_ ? peer : peer + (1 << 16); };
  for (auto take = open_.begin(); take != open_.end(); ++take) {
    if (!take->IsUnsent()) continue;
    if (next == open_.end() || waits(take->peer) < waits(next->peer)) next = take;
  }
  return next;
}

bool Takes::SendOneTake() {
  const auto take = NextUnsent();
  if (take == open_.end()) return false;
  turn_ = take->peer;
  if (!take->isPlanned) {
    // The row, a lock or an inhibit may be another one than when it was asked for.
    TakePlan plan = PlanTake(services_.model, services_.knownMap, services_.locks, services_.texts,
                             take->wanted);
    if (plan.refusal || plan.Stands()) {
      const OpenTake over = TakeOut(take);
      if (plan.refusal) {
        services_.answers.RefuseLater(over.peer, over.wanted, over.invocation, *plan.refusal);
      } else {
        End(over);
      }
      return true;
    }
    take->isPlanned = true;
    take->commands.assign(plan.commands.begin(), plan.commands.end());
  }
  SendCommand(take);
  return true;
}

void Takes::SendCommand(Queue::iterator take) {
  const switcher::Take command = take->commands.front();
  take->commands.pop_front();
  const int peer = take->peer;
  if (services_.commands.SendTake(command.destination, command.source, command.action)) {
    services_.answers.CommandSent(peer, command);
  } else {
    // The line has failed, which was reported.
    take->commands.clear();
  }
}

Takes::OpenTake Takes::TakeOut(Queue::iterator take) {
  OpenTake taken = std::move(*take);
  open_.erase(take);
  return taken;
}

void Takes::EndOverdue() {
  const Time now = services_.now();
  const auto overdue = [&] {
    return std::find_if(open_.begin(), open_.end(),
                        [&](const OpenTake& take) { return take.deadline <= now; });
  };
  for (auto take = overdue(); take != open_.end(); take = overdue()) {
    const OpenTake over = TakeOut(take);
    if (over.IsUnsent()) {
      services_.answers.RefuseLater(over.peer, over.wanted, over.invocation, Refusal::LineBusy);
    } else {
      End(over);
    }
  }
}

void Takes::End(const OpenTake& take) {
  if (IsInvocation(take.wanted)) {
    services_.answers.AnswerInvocation(take.peer, take.invocation,
                                       IsAsWanted(services_.model, take.wanted));
  } else if (!take.isAnswered) {
    services_.answers.AnswerRow(take.peer, take.wanted.output);
  }
}

void Takes::Wait() {
  if (open_.empty() && gains_.empty()) return services_.timer.Stop();
  const bool isUnsent = !gains_.empty() || NextUnsent() != open_.end();
  std::chrono::milliseconds pause = kLook;
  if (!isUnsent) {
    // All have the same patience, so the first is the next.
    const auto left = open_.front().deadline - services_.now();
    pause =
        std::max(std::chrono::ceil<std::chrono::milliseconds>(left), std::chrono::milliseconds(1));
  }
  services_.timer.Start(pause, [this] {
    EndOverdue();
    SendOn();
    Wait();
  });
}

}  // namespace ember
