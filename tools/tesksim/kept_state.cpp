// SPDX-License-Identifier: MIT

#include "tools/tesksim/kept_state.h"

#include <cerrno>
#include <utility>

#include "tools/command_line/number.h"
#include "tools/tesksim/state_text.h"

namespace tesksim {

using command_line::ParseNumber;

namespace {

constexpr std::string_view kHeading = "tesksim state 1";
constexpr std::string_view kEnd = "end";
constexpr int kLargestGain = 127;

std::string Numbered(const char* name, int number) {
  return std::string(name) + " " + std::to_string(number);
}

std::string SourcesOf(const SwitcherState& state, int output, Crosspoint kind) {
  return ListOf(state.ChannelCount(),
                [&](int input) { return state.crosspoints.At(output, input) == kind; });
}

// Goes through the text line by line.  After the first line that is not as it must be, every
// further operation fails, too.
class Reader {
 public:
  explicit Reader(std::string_view text) : rest_(text) {}

  // Goes to the next line, which must be `expected` and nothing else.
  bool Line(std::string_view expected) {
    return Next(expected) && (line_ == expected || Fail(expected));
  }

  // Goes to the next line, which must begin with `prefix` and a blank.
  bool Begin(const std::string& prefix) {
    if (!Next(prefix + " ...")) return false;
    expected_ = prefix + " ...";
    if (!line_.starts_with(prefix + " ")) return Fail(expected_);
    line_.remove_prefix(prefix.size() + 1);
    words_ = SplitWords(line_);
    position_ = 0;
    return true;
  }

  // What the present line holds further: `name` and a number within first..last.
  bool Number(std::string_view name, int first, int last, int* number) {
    if (failed_) return false;
    const Words words = Words(words_).subspan(position_);
    if (words.size() < 2 || words[0] != name) return Fail(expected_);
    const auto value = ParseNumber(words[1], first, last);
    if (!value.has_value()) return Fail(expected_);
    *number = *value;
    position_ += 2;
    return true;
  }

  // `name` and a list of members, to the end of the line.
  bool List(std::string_view name, int count, Members* members) {
    if (failed_) return false;
    const Words words = Words(words_).subspan(position_);
    if (words.empty() || words[0] != name) return Fail(expected_);
    const auto list = ParseMembers(words.subspan(1), count);
    if (!list.has_value()) return Fail(expected_);
    *members = *list;
    position_ = words_.size();
    return true;
  }

  // The rest of the line as a label in quotes.
  bool Label(std::string* label) {
    if (failed_) return false;
    auto text = line_.starts_with('"') ? ParseLabel(line_) : std::nullopt;
    if (!text.has_value()) return Fail(expected_);
    *label = std::move(*text);
    position_ = words_.size();
    return true;
  }

  // The end of the present line.
  bool EndOfLine() { return !failed_ && (position_ == words_.size() || Fail(expected_)); }

  // The end of the text.
  bool EndOfText() { return !failed_ && (rest_.empty() || (++number_, Fail("nothing more"))); }

  model::Status Failure() const { return {EINVAL, failure_}; }

 private:
  bool Next(std::string_view expected) {
    if (failed_) return false;
    ++number_;
    const std::size_t end = rest_.find('\n');
    if (end == std::string_view::npos) return Fail(expected);  // also a last line that was cut
    line_ = rest_.substr(0, end);
    rest_.remove_prefix(end + 1);
    return true;
  }

  bool Fail(std::string_view expected) {
    failed_ = true;
    failure_ = "line " + std::to_string(number_) + " must be: " + std::string(expected);
    return false;
  }

  std::string_view rest_;
  std::string_view line_;
  std::vector<std::string_view> words_;
  std::size_t position_ = 0;  // the next of words_
  std::string expected_;      // the present line, for a complaint
  int number_ = 0;            // of the present line, from 1
  bool failed_ = false;
  std::string failure_;
};

bool ReadSizes(Reader& reader, SystemSizes* sizes) {
  return reader.Begin("system") && reader.Number("channels", 8, 256, &sizes->channels) &&
         reader.Number("stations", 1, 256, &sizes->stations) &&
         reader.Number("labels", 1, 256, &sizes->labels) && reader.EndOfLine();
}

bool ReadLabels(Reader& reader, const char* name, model::OneBasedArray<std::string>* labels) {
  for (int number = 1; number <= labels->Size(); ++number) {
    if (!reader.Begin(Numbered(name, number)) || !reader.Label(&(*labels)[number])) return false;
  }
  return true;
}

// The lists of one output: inhibits, relays, sources.
bool ReadOutput(Reader& reader, int output, SwitcherState* state) {
  const int channels = state->ChannelCount();
  const std::string prefix = Numbered("output", output);
  Members inhibits;
  Members relays;
  Members ordinary;
  Members priority;
  if (!reader.Begin(prefix) || !reader.List("inhibits", channels, &inhibits)) return false;
  if (!reader.Begin(prefix) || !reader.List("relays", kRelays, &relays)) return false;
  if (!reader.Begin(prefix) || !reader.List("ordinary", channels, &ordinary)) return false;
  if (!reader.Begin(prefix) || !reader.List("priority", channels, &priority)) return false;
  for (int input = 1; input <= channels; ++input) {
    const auto bit = static_cast<std::size_t>(input - 1);
    state->inhibits.At(output, input) = inhibits.test(bit) ? 1 : 0;
    Crosspoint& crosspoint = state->crosspoints.At(output, input);
    if (ordinary.test(bit)) crosspoint = Crosspoint::Ordinary;
    if (priority.test(bit)) crosspoint = Crosspoint::Priority;
  }
  for (std::size_t relay = 0; relay < kRelays; ++relay) {
    state->relays[output].set(relay, relays.test(relay));
  }
  return true;
}

bool ReadButton(Reader& reader, int station, int button, ButtonProgram* program) {
  return reader.Begin(Numbered("station", station) + Numbered(" button", button)) &&
         reader.Number("type", 0, kLargestByte, &program->type) &&
         reader.Number("first", 0, kLargestByte, &program->first) &&
         reader.List("members", static_cast<int>(program->members.size()), &program->members);
}

bool ReadOpto(Reader& reader, int opto, OptoProgram* program) {
  return reader.Begin(Numbered("opto", opto)) &&
         reader.Number("type", 0, kLargestByte, &program->type) &&
         reader.Number("channel", 0, kLargestByte, &program->channel) &&
         reader.Number("first", 0, kLargestByte, &program->first) &&
         reader.List("members", static_cast<int>(program->members.size()), &program->members);
}

// A line "input 3 gain 64" or "point 3 tally 0" for each of `levels`.
bool ReadLevels(Reader& reader, const char* what, const char* name, int last,
                std::span<std::int16_t> levels) {
  int number = 0;
  for (std::int16_t& level : levels) {
    int value = 0;
    if (!reader.Begin(Numbered(what, ++number)) || !reader.Number(name, 0, last, &value) ||
        !reader.EndOfLine()) {
      return false;
    }
    level = static_cast<std::int16_t>(value);
  }
  return true;
}

bool ReadEntries(Reader& reader, SwitcherState* state) {
  if (!ReadLabels(reader, "out", &state->outLabels)) return false;
  if (!ReadLabels(reader, "in", &state->inLabels)) return false;
  for (int output = 1; output <= state->ChannelCount(); ++output) {
    if (!ReadOutput(reader, output, state)) return false;
  }
  for (int opto = 1; opto <= kOptos; ++opto) {
    if (!ReadOpto(reader, opto, &state->optos[opto])) return false;
  }
  for (int station = 1; station <= state->Sizes().stations; ++station) {
    for (int button = 1; button <= kButtons; ++button) {
      if (!ReadButton(reader, station, button, &state->buttons[station][button])) return false;
    }
  }
  return ReadLevels(reader, "input", "gain", kLargestGain, state->gains) &&
         ReadLevels(reader, "point", "tally", kLargestByte, state->tally) && reader.Line(kEnd) &&
         reader.EndOfText();
}

void WriteOutput(const SwitcherState& state, int output, std::string* text) {
  const std::string prefix = Numbered("output", output);
  *text += DescribeInhibits(state, output) + "\n" + DescribeRelays(state, output) + "\n";
  *text += prefix + " ordinary " + SourcesOf(state, output, Crosspoint::Ordinary) + "\n";
  *text += prefix + " priority " + SourcesOf(state, output, Crosspoint::Priority) + "\n";
}

void WriteLevels(const char* what, const char* name, std::span<const std::int16_t> levels,
                 std::string* text) {
  int number = 0;
  for (const std::int16_t level : levels) {
    *text += Numbered(what, ++number) + " " + Numbered(name, level) + "\n";
  }
}

}  // namespace

std::string WriteState(const SwitcherState& state) {
  const SystemSizes& sizes = state.Sizes();
  std::string text = std::string(kHeading) + "\n";
  text += "system " + Numbered("channels", sizes.channels) + Numbered(" stations", sizes.stations) +
          Numbered(" labels", sizes.labels) + "\n";
  for (int label = 1; label <= sizes.labels; ++label) {
    text += Numbered("out", label) + " " + QuoteLabel(state.outLabels[label]) + "\n";
  }
  for (int label = 1; label <= sizes.labels; ++label) {
    text += Numbered("in", label) + " " + QuoteLabel(state.inLabels[label]) + "\n";
  }
  for (int output = 1; output <= sizes.channels; ++output) WriteOutput(state, output, &text);
  for (int opto = 1; opto <= kOptos; ++opto) text += DescribeOpto(state, opto) + "\n";
  for (int station = 1; station <= sizes.stations; ++station) {
    for (int button = 1; button <= kButtons; ++button) {
      text += DescribeButton(state, station, button) + "\n";
    }
  }
  WriteLevels("input", "gain", state.gains, &text);
  WriteLevels("point", "tally", state.tally, &text);
  return text + std::string(kEnd) + "\n";
}

model::Status ReadState(std::string_view text, std::optional<SwitcherState>* state) {
  Reader reader(text);
  SystemSizes sizes;
  if (!reader.Line(kHeading) || !ReadSizes(reader, &sizes)) return reader.Failure();
  if (sizes.channels % 8 != 0) return {EINVAL, "line 2 must give channels in steps of 8"};
  SwitcherState read(sizes);
  if (!ReadEntries(reader, &read)) return reader.Failure();
  *state = std::move(read);
  return {};
}

}  // namespace tesksim
