// SPDX-License-Identifier: MIT

#include "tools/tesksim/transmitter.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "switcher/wire/frame.h"

namespace tesksim {

namespace {

// The most that one call of Take() gives, for a line without a pace.
constexpr std::size_t kMostAtOnce = 4096;

// Noise that a held-up line catches up with.
constexpr std::size_t kMostNoise = 1000;

}  // namespace

Transmitter::Transmitter(int baud, std::uint32_t seed, MessageSource source, Log log)
    : pacer_(baud),
      faults_(seed),
      random_(seed + 1),
      source_(std::move(source)),
      log_(std::move(log)) {}

void Transmitter::Send(Outgoing message) {
  if (waitingBytes_ + message.bytes.size() > kLimit) {
    ++messagesDropped_;
    return;
  }
  waitingBytes_ += message.bytes.size();
  waiting_.push_back(std::move(message));
}

void Transmitter::SendLinkAnswer() {
  if (linkAnswers_ < kLimit) ++linkAnswers_;
}

void Transmitter::Clear() {
  linkAnswers_ = 0;
  noiseBytes_ = 0;
  gapBytes_ = 0;
  waiting_.clear();
  waitingBytes_ = 0;
  current_.clear();
  position_ = 0;
  pacer_.End();
}

Bytes Transmitter::Take(Time now) {
  MakeNoise(now);
  if (!HasOutput()) {
    pacer_.End();
    return {};
  }
  pacer_.Begin(now);
  Bytes bytes;
  while (bytes.size() < kMostAtOnce && HasOutput() && pacer_.Take(now, 1) == 1) {
    bytes.push_back(NextByte());
  }
  if (!HasOutput()) pacer_.End();
  bytesSent_ += bytes.size();
  return bytes;
}

std::optional<Time> Transmitter::NextTime() const {
  if (!HasOutput()) return nextNoise_;
  if (!pacer_.Busy()) return kNow;
  return Earlier(pacer_.When(Portion()), nextNoise_);
}

void Transmitter::SetFault(const FaultSetting& setting, int value, Time now) {
  faults_.Set(setting, value);
  nextNoise_.reset();
  ScheduleNoise(now);
}

bool Transmitter::HasOutput() const {
  return linkAnswers_ > 0 || noiseBytes_ > 0 || gapBytes_ > 0 || !InGap() || !waiting_.empty() ||
         source_.hasNext();
}

bool Transmitter::MayInterrupt() const { return !inOnePiece_ || InGap(); }

std::size_t Transmitter::Portion() const {
  if (!waiting_.empty() || source_.hasNext()) return pacer_.Portion();
  const std::size_t left = linkAnswers_ + noiseBytes_ + gapBytes_ + (current_.size() - position_);
  return std::min(left, pacer_.Portion());
}

std::uint8_t Transmitter::NextByte() {
  if (linkAnswers_ > 0 && MayInterrupt()) {
    --linkAnswers_;
    Write("tx link answer");
    return switcher::kLinkAnswer;
  }
  if (noiseBytes_ > 0) {
    --noiseBytes_;
    return NoiseByte();
  }
  if (gapBytes_ > 0 && InGap()) {
    --gapBytes_;
    return static_cast<std::uint8_t>(random_.Below(128));
  }
  if (InGap()) StartMessage();
  return current_[position_++];
}

void Transmitter::StartMessage() {
  Outgoing next;
  if (!waiting_.empty()) {
    next = std::move(waiting_.front());
    waiting_.pop_front();
    waitingBytes_ -= next.bytes.size();
  } else {
    next = source_.next();
  }
  std::string harm;
  if (next.mayBeHarmed) harm = faults_.Harm(&next.bytes);
  ++messagesSent_;
  Write("tx " + next.text + harm);
  inOnePiece_ = next.inOnePiece;
  current_ = std::move(next.bytes);
  position_ = 0;
}

void Transmitter::MakeNoise(Time now) {
  while (nextNoise_.has_value() && *nextNoise_ <= now) {
    const int loud = Settings().noise + Settings().dataNoise;
    std::size_t& waiting =
        random_.Below(loud + Settings().gapNoise) < loud ? noiseBytes_ : gapBytes_;
    if (waiting < kMostNoise) ++waiting;
    ScheduleNoise(*nextNoise_);
  }
}

// The gaps between the bytes are those of a chance that has no memory.
void Transmitter::ScheduleNoise(Time from) {
  const int rate = Settings().noise + Settings().dataNoise + Settings().gapNoise;
  if (rate == 0) return;
  const double seconds = -std::log(random_.Fraction()) / rate;
  nextNoise_ = from + std::chrono::nanoseconds(static_cast<std::int64_t>(seconds * 1e9));
}

std::uint8_t Transmitter::NoiseByte() {
  const int rate = std::max(1, Settings().noise + Settings().dataNoise);
  const bool anyByte = random_.Below(rate) < Settings().noise;
  return static_cast<std::uint8_t>(random_.Below(anyByte ? 256 : 128));
}

void Transmitter::Write(const std::string& line) const {
  if (log_) log_(line);
}

}  // namespace tesksim
