// SPDX-License-Identifier: MIT

#include "tools/tesksim/kept_state.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/tesksim/small_system.h"

namespace tesksim {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  for (std::size_t first = 0, end = 0; (end = text.find('\n', first)) != text.npos;
       first = end + 1) {
    lines.push_back(text.substr(first, end - first));
  }
  return lines;
}

std::string Join(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

// What is wrong with a text; "" when it is a state.
std::string Complaint(const std::string& text) {
  std::optional<SwitcherState> state;
  const model::Status status = ReadState(text, &state);
  EXPECT_EQ(status.ok(), state.has_value());
  return status.ok() ? "" : status.Description();
}

TEST(KeptState, IsReadableText) {
  SwitcherState state(kSmall);
  state.outLabels[1] = "a\"\\\xFF\n b ";
  state.inhibits.At(3, 8) = 1;
  state.relays[8].set(63);
  state.crosspoints.At(2, 1) = Crosspoint::Ordinary;
  state.crosspoints.At(2, 8) = Crosspoint::Priority;
  state.gains[7] = 127;
  state.tally[63] = 255;
  const std::string text = WriteState(state);
  EXPECT_THAT(text, StartsWith("tesksim state 1\n"
                               "system channels 8 stations 1 labels 2\n"
                               "out 1 \"a\\\"\\\\\\xFF\\x0A b \"\n"
                               "out 2 \"{xt. 001\"\n"
                               "in 1 \"Inpt 001\"\n"
                               "in 2 \"{npt 001\"\n"
                               "output 1 inhibits 1\n"
                               "output 1 relays none\n"
                               "output 1 ordinary none\n"
                               "output 1 priority none\n"
                               "output 2 inhibits 2\n"
                               "output 2 relays none\n"
                               "output 2 ordinary 1\n"
                               "output 2 priority 8\n"
                               "output 3 inhibits 3 8\n"));
  EXPECT_THAT(text, HasSubstr("\noutput 8 relays 64\n"));
  EXPECT_THAT(text, HasSubstr("\nopto 64 type 254 channel 64 first 64 members 64\n"
                              "station 1 button 1 type 0 first 1 members 1\n"));
  EXPECT_THAT(text, HasSubstr("\ninput 8 gain 127\npoint 1 tally 0\n"));
  EXPECT_THAT(text, testing::EndsWith("\npoint 64 tally 255\nend\n"));
}

TEST(KeptState, ComesBackAsItWas) {
  for (const SystemSizes& sizes :
       {kSmall, SystemSizes{}, SystemSizes{.channels = 256, .stations = 256, .labels = 256}}) {
    SCOPED_TRACE(sizes.channels);
    SwitcherState state(sizes);
    state.outLabels[2] = std::string("\0\xFF\"\\{\r\n ", 8);
    state.inLabels[1] = "        ";
    state.inhibits.At(1, 1) = 0;
    state.inhibits.At(sizes.channels, 1) = 1;
    state.relays[sizes.channels].set();
    state.crosspoints.At(sizes.channels, 1) = Crosspoint::Priority;
    state.crosspoints.At(1, sizes.channels) = Crosspoint::Ordinary;
    state.buttons[sizes.stations][32] = {.type = 255, .first = 0, .members = Members().set()};
    state.optos[64] = {.type = 0, .channel = 255, .first = 255, .members = {}};
    state.gains[0] = 0;
    state.tally[0] = 1;

    std::optional<SwitcherState> read;
    ASSERT_TRUE(ReadState(WriteState(state), &read).ok());
    EXPECT_EQ(read->Sizes(), sizes);
    EXPECT_EQ(read->outLabels[2], state.outLabels[2]);
    EXPECT_EQ(read->inhibits.At(1, 1), 0);
    EXPECT_EQ(read->inhibits.At(sizes.channels, 1), 1);
    EXPECT_EQ(read->relays[sizes.channels].count(), 64u);
    EXPECT_EQ(read->crosspoints.At(sizes.channels, 1), Crosspoint::Priority);
    EXPECT_EQ(read->buttons[sizes.stations][32], state.buttons[sizes.stations][32]);
    EXPECT_EQ(read->optos[64], state.optos[64]);
    EXPECT_EQ(WriteState(*read), WriteState(state));
  }
}

TEST(KeptState, ATruncatedTextIsNone) {
  const std::string text = WriteState(SwitcherState(kSmall));
  for (std::size_t size = 0; size < text.size(); size += 13) {
    ASSERT_NE(Complaint(text.substr(0, size)), "") << size;
  }
  for (std::size_t missing = 1; missing < 40; ++missing) {
    ASSERT_NE(Complaint(text.substr(0, text.size() - missing)), "") << missing;
  }
}

TEST(KeptState, EveryLineIsNeeded) {
  const std::vector<std::string> lines = Lines(WriteState(SwitcherState(kSmall)));
  for (std::size_t missing = 0; missing < lines.size(); ++missing) {
    std::vector<std::string> others = lines;
    others.erase(others.begin() + static_cast<std::ptrdiff_t>(missing));
    ASSERT_THAT(Complaint(Join(others)),
                StartsWith("line " + std::to_string(missing + 1) + " must be: "));
  }
}

TEST(KeptState, EveryLineMustBeRight) {
  const std::vector<std::string> lines = Lines(WriteState(SwitcherState(kSmall)));
  for (std::size_t wrong = 0; wrong < lines.size(); ++wrong) {
    for (const std::string& line : {std::string(), lines[wrong] + " x", "x" + lines[wrong]}) {
      std::vector<std::string> others = lines;
      others[wrong] = line;
      ASSERT_THAT(Complaint(Join(others)),
                  StartsWith("line " + std::to_string(wrong + 1) + " must be: "))
          << line;
    }
  }
}

TEST(KeptState, NamesWhatIsWrong) {
  const std::vector<std::string> lines = Lines(WriteState(SwitcherState(kSmall)));
  const auto with = [&](std::size_t number, const std::string& line) {
    std::vector<std::string> changed = lines;
    changed[number - 1] = line;
    return Complaint(Join(changed));
  };
  EXPECT_EQ(Complaint(""), "line 1 must be: tesksim state 1");
  EXPECT_EQ(Complaint("\x7F"
                      "ELF\n"),
            "line 1 must be: tesksim state 1");
  EXPECT_EQ(with(1, "tesksim state 2"), "line 1 must be: tesksim state 1");
  EXPECT_EQ(with(2, "system channels 12 stations 1 labels 2"),
            "line 2 must give channels in steps of 8");
  for (const char* sizes :
       {"system channels 264 stations 1 labels 2", "system channels 0 stations 1 labels 2",
        "system channels 8 stations 0 labels 2", "system channels 8 stations 1 labels 257",
        "system channels 8 stations 1", "system stations 8"}) {
    EXPECT_EQ(with(2, sizes), "line 2 must be: system ...") << sizes;
  }
  EXPECT_EQ(with(3, "out 1 \"123456789\""), "line 3 must be: out 1 ...");
  EXPECT_EQ(with(3, "out 1 MIC"), "line 3 must be: out 1 ...");
  EXPECT_EQ(with(7, "output 1 inhibits 9"), "line 7 must be: output 1 ...");
  EXPECT_EQ(with(7, "output 1 inhibits"), "line 7 must be: output 1 ...");
  EXPECT_EQ(with(8, "output 1 relays 65"), "line 8 must be: output 1 ...");
  EXPECT_EQ(with(39, "opto 1 type 256 channel 1 first 1 members 1"), "line 39 must be: opto 1 ...");
  EXPECT_EQ(with(39, "opto 1 type 1 channel 1 first 1 members 257"), "line 39 must be: opto 1 ...");
  EXPECT_EQ(with(103, "station 1 button 1 type 0 members 1"),
            "line 103 must be: station 1 button 1 ...");
  EXPECT_EQ(with(135, "input 1 gain 128"), "line 135 must be: input 1 ...");
  EXPECT_EQ(with(143, "point 1 tally -1"), "line 143 must be: point 1 ...");
  EXPECT_EQ(Complaint(Join(lines) + "more"), "line 208 must be: nothing more");
  EXPECT_EQ(Complaint(Join(lines)), "");
}

}  // namespace
}  // namespace tesksim
